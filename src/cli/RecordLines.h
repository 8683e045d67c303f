// Where in a project file a record stands.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>

namespace quillbook::cli {

/// The lines of the records of a project file, by element name and key. The object model doesn't keep lines; this
/// reads the text once more, and only far enough to tell elements and attributes.
class RecordLines {
 public:
  explicit RecordLines(std::string_view text);

  /// Line, from 1, of the first element of this name (in lower case) with this key; 0 if there is none.
  [[nodiscard]] std::size_t Find(std::string_view element, std::string_view key) const;

 private:
  std::unordered_map<std::string, std::size_t> mLines;
};

}  // namespace quillbook::cli
