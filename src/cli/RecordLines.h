// Where in a project file a record stands.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace quillbook::cli {

/// The lines of the records of a project file, by element name and key, and the keys that are there twice. The object
/// model doesn't keep lines; this reads the text once more, and only far enough to tell elements and attributes.
class RecordLines {
 public:
  struct Repeated {
    std::string element;
    std::string key;
    std::size_t line;
  };

  explicit RecordLines(std::string_view text);

  /// Line, from 1, of the first element of this name (in lower case) with this key; 0 if there is none.
  [[nodiscard]] std::size_t Find(std::string_view element, std::string_view key) const;
  /// Later records with a key that a record of the same name has, in the order of the file.
  [[nodiscard]] const std::vector<Repeated>& RepeatedKeys() const noexcept { return mRepeated; }

 private:
  void Add(std::string element, std::string_view key, std::size_t line);

  std::unordered_map<std::string, std::size_t> mLines;
  std::vector<Repeated> mRepeated;
};

}  // namespace quillbook::cli
