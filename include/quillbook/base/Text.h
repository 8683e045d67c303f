// Text helpers of the whole system. Text is UTF-8.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quillbook {

/// Equality by simple Unicode case folding; the system's one meaning of "ignoring case".
[[nodiscard]] bool EqualsIgnoringCase(std::string_view left, std::string_view right) noexcept;
/// Order by the folded code points: negative, zero or positive.
[[nodiscard]] int CompareIgnoringCase(std::string_view left, std::string_view right) noexcept;
[[nodiscard]] bool StartsWithIgnoringCase(std::string_view text, std::string_view prefix) noexcept;
[[nodiscard]] bool EndsWithIgnoringCase(std::string_view text, std::string_view suffix) noexcept;
/// Position of `what` at or after `from`, or npos.
[[nodiscard]] std::size_t FindIgnoringCase(std::string_view text, std::string_view what, std::size_t from = 0);
/// Hash of the case-folded text: equal for texts that are equal ignoring case.
[[nodiscard]] std::uint64_t FoldedHash(std::string_view text) noexcept;
[[nodiscard]] std::string FoldCase(std::string_view text);
/// Full Unicode mappings in no particular language.
[[nodiscard]] std::string LowerCase(std::string_view text);
[[nodiscard]] std::string UpperCase(std::string_view text);

[[nodiscard]] std::string ReplaceAll(std::string_view text, std::string_view what, std::string_view with);
[[nodiscard]] std::string ReplaceAllIgnoringCase(std::string_view text, std::string_view what, std::string_view with);
/// Blanks (U+0020) cut at both ends; no other white space.
[[nodiscard]] std::string_view TrimBlanks(std::string_view text) noexcept;
/// The parts between separators; an empty text gives one empty part.
[[nodiscard]] std::vector<std::string_view> Split(std::string_view text, char separator);

[[nodiscard]] bool IsValidUtf8(std::string_view text) noexcept;
/// Number of UTF-16 code units.
[[nodiscard]] std::size_t Utf16Length(std::string_view text) noexcept;
/// `count` UTF-16 code units from position `from`, or what there is of them. Of a pair at a border the first
/// half decides where it belongs.
[[nodiscard]] std::string_view Utf16Part(std::string_view text, std::size_t from, std::size_t count) noexcept;
/// Reads the code point at `position` and moves behind it; U+FFFD for a malformed sequence, of which one byte is taken.
[[nodiscard]] char32_t NextCodePoint(std::string_view text, std::size_t& position) noexcept;
/// What is no character, such as half of a surrogate pair, is appended as U+FFFD.
void AppendCodePoint(std::string& text, char32_t codePoint);
/// UTF-16LE bytes without a mark, and back.
[[nodiscard]] std::string ToUtf16Bytes(std::string_view text);
[[nodiscard]] std::string FromUtf16Bytes(std::string_view bytes, bool bigEndian = false);

[[nodiscard]] inline const char* BooleanText(bool value) noexcept {
  return value ? "True" : "False";
}

}  // namespace quillbook
