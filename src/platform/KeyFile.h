// Settings files of the desktop.
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace quillbook::detail {

/// A text of groups ("[Group]") with keys ("Key=Value"); lines that begin with "#" are comments. Source of the format:
/// the Desktop Entry Specification. Names regard case.
class KeyFile {
 public:
  explicit KeyFile(std::string_view text);
  /// A file that can't be read counts as empty.
  [[nodiscard]] static KeyFile Read(const std::string& path);

  [[nodiscard]] bool IsEmpty() const noexcept { return mGroups.empty(); }
  /// Empty for a key that isn't there; the last one of a name counts.
  [[nodiscard]] std::string Value(std::string_view group, std::string_view key) const;
  /// The decimal number of a key; `otherwise` where there is none.
  [[nodiscard]] int Number(std::string_view group, std::string_view key, int otherwise) const;

 private:
  using Keys = std::map<std::string, std::string, std::less<>>;
  std::map<std::string, Keys, std::less<>> mGroups;
};

}  // namespace quillbook::detail
