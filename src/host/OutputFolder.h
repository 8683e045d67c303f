// Brings the files of an output folder up to date.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace quillbook {

class FileStore;

namespace detail {

/// Writes only what changed, and never shows half a file under its name: a new version is written beside the old one
/// and takes its place. Each folder is looked at once, so that a file which isn't there yet costs no more than
/// opening, writing and closing it. Nothing is flushed to disk: the output can be built again.
class OutputFolder {
 public:
  enum class Outcome { Written, Unchanged };

  /// `root` is a native path with "/" at its end.
  OutputFolder(FileStore& files, std::string root);

  /// `path` is relative to the root, with "/". Missing folders are made. Failures of the store are raised; 70 also
  /// where a read-only file is in the way.
  Outcome Write(const std::string& path, std::string_view bytes);

 private:
  using Names = std::unordered_set<std::string>;

  Names& FilesOf(const std::string& folder);
  void WriteNew(const std::string& path, std::string_view bytes);
  void Replace(const std::string& path, std::string_view bytes);

  FileStore& mFiles;
  std::string mRoot;
  std::unordered_map<std::string, Names> mFolders;  ///< by path relative to the root, with "/" at its end
};

}  // namespace detail
}  // namespace quillbook
