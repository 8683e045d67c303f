// Windows code pages by number.
#pragma once

#include <string>
#include <string_view>

namespace quillbook {

inline constexpr int CodePageUtf8 = 65001;
inline constexpr int CodePageWindows1252 = 1252;

/// True if text can be converted from and to the code page.
[[nodiscard]] bool IsKnownCodePage(int codePage);
/// Text of bytes in a code page. Bytes without a meaning become U+FFFD. Failure 5 for an unknown code page.
[[nodiscard]] std::string DecodeCodePage(std::string_view bytes, int codePage);
/// What becomes of a character that the code page lacks.
enum class Unmappable { QuestionMark, CharacterReference };
/// Bytes of text in a code page. Failure 5 for an unknown code page.
[[nodiscard]] std::string EncodeCodePage(std::string_view text, int codePage, Unmappable unmappable);
/// The name that HTML uses for the charset of a code page: "utf-8", "windows-1252", "shift_jis". Empty if unknown.
[[nodiscard]] std::string CharsetName(int codePage);
/// The reverse of `CharsetName`, also for the usual aliases, ignoring case; 0 if unknown.
[[nodiscard]] int CodePageFromCharset(std::string_view name);
/// The system's ANSI code page: 1252 unless the registry store names another.
[[nodiscard]] int AnsiCodePage();
void SetAnsiCodePage(int codePage);

}  // namespace quillbook
