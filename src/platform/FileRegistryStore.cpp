#include "quillbook/platform/FileRegistryStore.h"

#include <unistd.h>

#include <array>
#include <cstdlib>

#include "platform/RegistryText.h"
#include "platform/SystemFailure.h"
#include "quillbook/base/Failure.h"
#include "quillbook/platform/LinuxDesktop.h"
#include "quillbook/platform/Platform.h"

namespace quillbook {

namespace {

std::string FullKey(RegistryHive hive, std::string_view key) {
  const std::string root = hive == RegistryHive::CurrentUser ? "HKEY_CURRENT_USER" : "HKEY_LOCAL_MACHINE";
  return key.empty() ? root : root + "\\" + std::string(key);
}

/// `$QUILLBOOK_REGISTRY`, or empty.
std::string OverridingFolder() {
  const char* folder = std::getenv("QUILLBOOK_REGISTRY");
  return folder ? folder : "";
}

std::string ProgramFolder() {
  std::array<char, 4096> path{};
  const auto size = ::readlink("/proc/self/exe", path.data(), path.size());
  return size > 0 ? detail::FolderOf(std::string(path.data(), static_cast<std::size_t>(size))) : ".";
}

std::string ReadIfThere(const std::string& path) {
  auto& files = Platform::Current().Files();
  return files.GetStatus(path).exists ? files.ReadFile(path) : std::string();
}

/// What stands in a file, as far as it can be read.
RegistryText ReadForLookup(const std::string& path) {
  try {
    return RegistryText(ReadIfThere(path));
  } catch (const Failure&) {  // values that can't be read are as good as missing
    return RegistryText({});
  }
}

}  // namespace

std::string FileRegistryStore::DefaultUserFile() {
  const auto folder = OverridingFolder();
  return (folder.empty() ? LinuxDesktop::ConfigurationFolder() + "/quillbook" : folder) + "/registry.reg";
}

std::string FileRegistryStore::DefaultMachineFile() {
  const auto folder = OverridingFolder();
  return (folder.empty() ? detail::FolderOf(ProgramFolder()) + "/share/quillbook" : folder) + "/machine.reg";
}

std::optional<std::string> FileRegistryStore::GetValue(RegistryHive hive, std::string_view key,
                                                       std::string_view valueName) const {
  return ReadForLookup(FileOf(hive)).GetValue(FullKey(hive, key), valueName);
}

bool FileRegistryStore::HasKey(RegistryHive hive, std::string_view key) const {
  return ReadForLookup(FileOf(hive)).HasKey(FullKey(hive, key));
}

void FileRegistryStore::CreateKey(RegistryHive hive, std::string_view key) {
  Change(hive, [&](RegistryText& text) { return text.CreateKey(FullKey(hive, key)); });
}

void FileRegistryStore::SetValue(RegistryHive hive, std::string_view key, std::string_view valueName,
                                 std::string_view value, Type type) {
  Change(hive, [&](RegistryText& text) { return text.SetValue(FullKey(hive, key), valueName, value, type); });
}

const std::string& FileRegistryStore::FileOf(RegistryHive hive) const {
  return hive == RegistryHive::CurrentUser ? mUserFile : mMachineFile;
}

void FileRegistryStore::Change(RegistryHive hive, const std::function<bool(RegistryText&)>& change) {
  auto& files = Platform::Current().Files();
  const auto& path = FileOf(hive);
  files.CreateDirectories(detail::FolderOf(path));
  const auto lock = files.WaitForLock(path + ".lock");
  RegistryText text(ReadIfThere(path));  // a file that can't be read fails here and stays as it is
  if (change(text)) files.ReplaceFileWith(path, text.Text());
}

}  // namespace quillbook
