// The parts of a path in Windows form.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillbook::detail {

/// A path taken apart: "." and ".." are worked out as far as they can be, without looking at the disk.
struct WindowsPath {
  /// "\", "C:\" or "\\server\share\"; empty for a relative path.
  std::string root;
  std::vector<std::string> names;
  /// The path ends in "\", "." or "..": it names a folder.
  bool isFolder = false;

  [[nodiscard]] static WindowsPath Parse(std::string_view text);
  [[nodiscard]] bool IsAbsolute() const noexcept { return !root.empty(); }
  /// The relative path of nothing is ".\".
  [[nodiscard]] std::string Text() const;
};

/// The text with "\" for each "/".
[[nodiscard]] std::string WithBackslashes(std::string_view text);
/// The text with "/" for each "\".
[[nodiscard]] std::string WithSlashes(std::string_view text);

/// The native path that a path in Windows form stands for, before a look at the disk; none for an empty path and for
/// one on a drive that isn't known.
[[nodiscard]] std::optional<std::string> ToNativePath(std::string_view text);

/// True if a name matches a pattern of "*" (any text) and "?" (one character), ignoring case. As in Windows, "*.*"
/// matches every name.
[[nodiscard]] bool MatchesPattern(std::string_view name, std::string_view pattern);

}  // namespace quillbook::detail
