// Text as a row of bytes.
#pragma once

#include <string>
#include <string_view>

namespace quillbook {

class UnicodeHelper {
 public:
  /// A text with one character, U+0000 to U+00FF, for each UTF-8 byte of `Text`: what a file object that writes one
  /// byte a character turns into UTF-8 in the file.
  [[nodiscard]] static std::string ToUTF8(std::string_view Text);
};

}  // namespace quillbook
