#include "frame/services/DiskNames.h"

#include "quillbook/base/Failure.h"
#include "quillbook/base/Text.h"
#include "quillbook/platform/Platform.h"

namespace quillbook::detail {

namespace {

/// The folder of a native path, ending in "/" or empty, and the name in it.
struct Place {
  explicit Place(const std::string& path) {
    const auto end = path.ends_with('/') ? path.size() - 1 : path.size();
    const auto slash = end == 0 ? std::string::npos : path.find_last_of('/', end - 1);
    folder = slash == std::string::npos ? "" : path.substr(0, slash + 1);
    name = path.substr(folder.size(), end - folder.size());
  }
  std::string folder;
  std::string name;
};

bool Exists(const std::string& path) {
  return Platform::Current().Files().GetStatus(path).exists;
}

}  // namespace

DiskNames& DiskNames::Current() {
  thread_local DiskNames names;
  return names;
}

std::string DiskNames::Find(const std::string& path) {
  if (Exists(path)) return path;
  std::string found(path.starts_with("//") ? "//" : path.starts_with('/') ? "/" : "");
  std::string_view rest = std::string_view(path).substr(found.size());
  while (!rest.empty()) {
    const auto end = std::min(rest.find('/'), rest.size());
    auto name = std::string(rest.substr(0, end));
    if (!Exists(found + name)) name = FindName(found, name);
    if (name.empty()) break;
    found += name;
    rest.remove_prefix(end);
    if (!rest.empty()) {
      found += '/';
      rest.remove_prefix(1);
    }
  }
  return found.append(rest);
}

std::string DiskNames::FindName(const std::string& folder, std::string_view name) {
  const auto search = [&](const Names& names) {
    const auto at = names.find(FoldCase(name));
    return at == names.end() ? std::string() : at->second;
  };
  if (mScopes == 0) return search(ReadFolder(folder));
  const auto known = mFolders.find(folder);
  return search(known != mFolders.end() ? known->second : mFolders.emplace(folder, ReadFolder(folder)).first->second);
}

DiskNames::Names DiskNames::ReadFolder(const std::string& folder) {
  Names names;
  try {
    for (auto& entry : Platform::Current().Files().ListDirectory(folder.empty() ? "." : folder))
      names.try_emplace(FoldCase(entry.name), entry.name);
  } catch (const Failure&) {  // in a folder that can't be read nothing is found
  }
  return names;
}

void DiskNames::NoteCreated(const std::string& path) {
  const Place place(path);
  const auto known = mFolders.find(place.folder);
  if (known != mFolders.end()) known->second.try_emplace(FoldCase(place.name), place.name);
}

void DiskNames::NoteRemoved(const std::string& path) {
  mFolders.erase(Place(path).folder);
}

}  // namespace quillbook::detail
