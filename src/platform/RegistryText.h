// The text form of registry exports.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "quillbook/platform/RegistryStore.h"

namespace quillbook {

/// The lines of a registry file. Reading understands texts, numbers and byte rows that hold a text; every other line
/// stays as it is. Of two values with one name the later counts, as in an import.
class RegistryText {
 public:
  /// An empty text gets the heading of such files.
  explicit RegistryText(std::string_view bytes);

  /// `key` begins with the name of its hive, as in "HKEY_CURRENT_USER\Software".
  [[nodiscard]] std::optional<std::string> GetValue(std::string_view key, std::string_view valueName) const;
  [[nodiscard]] bool HasKey(std::string_view key) const;
  /// Both tell whether the text has changed. Failure 5 for a name with control characters.
  bool CreateKey(std::string_view key);
  bool SetValue(std::string_view key, std::string_view valueName, std::string_view value, RegistryStore::Type type);

  /// The whole text as UTF-8.
  [[nodiscard]] std::string Text() const;

 private:
  /// Calls `visit(position)` for each line below a heading of this key.
  template <class Visit>
  void ForEachLine(std::string_view key, Visit visit) const;
  /// The last line with a value of this name, or none.
  [[nodiscard]] std::optional<std::size_t> FindValue(std::string_view key, std::string_view valueName) const;
  /// Where a new value of the key goes; the key must be there.
  [[nodiscard]] std::size_t PlaceForValue(std::string_view key) const;

  std::vector<std::string> mLines;  ///< without line ends; a value that goes on over several lines is one line
  std::string mLineEnd = "\n";
};

}  // namespace quillbook
