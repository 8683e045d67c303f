#include "host/OutputFolder.h"

#include "quillbook/base/Failure.h"
#include "quillbook/frame/Procedure.h"
#include "quillbook/platform/FileStore.h"

namespace quillbook::detail {

OutputFolder::OutputFolder(FileStore& files, std::string root) : mFiles(files), mRoot(std::move(root)) {}

OutputFolder::Outcome OutputFolder::Write(const std::string& path, std::string_view bytes) {
  const auto nameAt = path.rfind('/') + 1;  // 0 if there is no folder
  auto& names = FilesOf(path.substr(0, nameAt));
  const auto native = mRoot + path;
  if (names.insert(path.substr(nameAt)).second) {
    WriteNew(native, bytes);
    return Outcome::Written;
  }
  if (mFiles.ReadFile(native) == bytes) return Outcome::Unchanged;
  Replace(native, bytes);
  return Outcome::Written;
}

OutputFolder::Names& OutputFolder::FilesOf(const std::string& folder) {
  const auto [known, isNew] = mFolders.try_emplace(folder);
  if (!isNew) return known->second;
  const auto native = mRoot + folder;
  if (!mFiles.GetStatus(native).isDirectory) {
    mFiles.CreateDirectories(native);
  } else {
    for (auto& entry : mFiles.ListDirectory(native)) known->second.insert(std::move(entry.name));
  }
  return known->second;
}

void OutputFolder::WriteNew(const std::string& path, std::string_view bytes) {
  try {
    mFiles.WriteFile(path, bytes);
  } catch (...) {
    IgnoreFailures([&] { mFiles.RemoveFile(path); });
    throw;
  }
}

void OutputFolder::Replace(const std::string& path, std::string_view bytes) {
  if (mFiles.GetStatus(path).readOnly)
    throw Failure(FailureNumber::PermissionDenied, "The file '" + path + "' is read-only");
  const auto beside =
      path.substr(0, path.rfind('/') + 1) + ".quillbook-new";  // as short as it can be: names have a limit
  WriteNew(beside, bytes);
  try {
    mFiles.RenameFile(beside, path);
  } catch (...) {
    IgnoreFailures([&] { mFiles.RemoveFile(beside); });
    throw;
  }
}

}  // namespace quillbook::detail
