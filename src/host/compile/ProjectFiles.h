// The files that go into a help file, in the order of the project.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/compile/NumberTable.h"
#include "quillbook/host/CompileMessage.h"

namespace quillbook::compile {

/// Path inside the help file that `path` means when a file in `folder` names it; `folder` is empty or ends with "/".
/// Both kinds of slashes count, "." and ".." are resolved, anchor and query fall away. None if it leads outside the
/// project's folder.
[[nodiscard]] std::optional<std::string> InnerPath(std::string_view folder, std::string_view path);
/// The part from "#" on, else empty.
[[nodiscard]] std::string_view AnchorOf(std::string_view path);
/// True for an address with a protocol, in another help file, or on a server: nothing to look for on the disk.
[[nodiscard]] bool IsOutsideAddress(std::string_view address);
/// Folder of an inner path, empty or with a slash at the end.
[[nodiscard]] std::string_view FolderOf(std::string_view path);

/// Collects files as the project, its contents and its pages name them. Each is entered once. The order is that of
/// the mentions, whatever the file system's own.
class ProjectFiles {
 public:
  ProjectFiles(std::string projectFolder, MessageList& messages)
      : mFolder(std::move(projectFolder)), mMessages(messages) {}

  enum class IfMissing { Error, Warning };
  /// Enters the file that an inner path names. Its path as stored comes out, which may differ in case; none if there
  /// is no such file, which is said at the given level.
  std::optional<std::string> Add(const std::string& path, const FileMention& mention, IfMissing level);
  /// The same without entering it, for a file that is only read.
  std::optional<std::string> Look(const std::string& path, const FileMention& mention, IfMissing level);

  /// Grows while pages are read. Stored paths.
  [[nodiscard]] const std::vector<std::string>& All() const noexcept { return mPaths; }
  /// Who asked for a file before all others, by its number in that list.
  [[nodiscard]] const FileMention& FirstMention(std::size_t number) const { return mMentions[number]; }
  [[nodiscard]] std::string NativePath(std::string_view path) const { return mFolder + std::string(path); }

 private:
  [[nodiscard]] std::optional<std::string> FindOnDisk(const std::string& path);
  [[nodiscard]] std::optional<std::string> FindIgnoringCase(const std::string& path);
  [[nodiscard]] std::optional<std::uint32_t> Find(std::string_view path) const;
  void CheckPath(const std::string& path, const FileMention& mention);

  std::string mFolder;
  MessageList& mMessages;
  std::vector<std::string> mPaths;
  std::vector<FileMention> mMentions;
  NumberTable mByName;
  /// Number of the file by path as mentioned, where that is not the stored path; none if there is no such file.
  std::unordered_map<std::string, std::optional<std::uint32_t>> mAnswers;
  std::unordered_map<std::string, std::vector<std::string>> mListings;  ///< of folders, by native path
};

}  // namespace quillbook::compile
