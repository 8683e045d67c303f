// The text of a page, made ready for the parser.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillbook::html {

/// The text with U+FFFD for each NUL and each byte that is no UTF-8.
[[nodiscard]] std::string CleanText(std::string_view text);

/// A comment that is no part of the page.
inline constexpr std::string_view TextFence = "<!--\x01-->";

/// The text that the parser gets: clean; with an end tag for each element with a prefix that closes itself (`<a:b/>`
/// becomes `<a:b/></a:b/>`), since HTML5 knows no such elements; and with a `TextFence` before each end tag of a form,
/// since the parser would put text that stands right before it behind the form. Raises failure 28 for elements that
/// nest deeper than `HtmlDocument::MaximumDepth` and 5 for a tag with more attributes than `MaximumAttributes`: both
/// would cost the parser quadratic time.
[[nodiscard]] std::string PrepareSource(std::string_view text);

inline constexpr std::size_t MaximumAttributes = 4000;

}  // namespace quillbook::html
