// Text on its way into a help file's code page.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace quillbook::compile {

/// Knows what a code page can hold, and encodes words quickly: they come again and again.
class CodePageText {
 public:
  explicit CodePageText(int codePage) : mCodePage(codePage) {}

  [[nodiscard]] int Number() const noexcept { return mCodePage; }
  /// Text in the code page. What it lacks becomes a question mark; line breaks and the like become blanks.
  [[nodiscard]] std::string Encode(std::string_view text) const;
  /// False if the code page lacks a character; `bytes` then has no meaning.
  [[nodiscard]] bool TryEncodeWord(std::string_view word, std::string& bytes);
  [[nodiscard]] bool Holds(char32_t character);
  /// Offset of the first character at or after `from` that the code page lacks, or npos.
  [[nodiscard]] std::size_t FindLacking(std::string_view text, std::size_t from = 0);

 private:
  enum class Known : std::uint8_t { NotYet, Held, Lacking };
  static constexpr std::size_t MaximumWords = 1U << 16;  ///< kept; more would be no vocabulary but noise

  int mCodePage;
  std::vector<Known> mKnown;
  std::unordered_map<std::string, std::string> mWords;  ///< beyond ASCII; an empty value stands for a lacking one
};

/// True if all bytes are ASCII.
[[nodiscard]] bool IsAscii(std::string_view text) noexcept;

}  // namespace quillbook::compile
