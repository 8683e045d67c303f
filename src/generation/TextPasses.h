// The passes that turn the reference forms of a topic's text into plain output; what needs no provider.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace quillbook::textpasses {

/// Position of the next "%" at or after `from` that no "/" stands before, or npos.
[[nodiscard]] std::size_t AnchorInStr(std::string_view text, std::size_t from) noexcept;

/// Turns `%target%` and `%caption:target%` into links to generated pages. A pair of signs that encloses neither "~"
/// nor ":", or that encloses markup, stays as it is. Linear in the length of the text.
[[nodiscard]] std::string ParseForAnchor(std::string_view text);

/// What stands in place of one glossary reference. `term` comes with the text between the delimiters, without its
/// line breaks, and is left as the term alone where a caption stood in front of it.
using GlossaryResolver = std::function<std::string(std::string& term)>;

/// Replaces `$$...$$` by what `resolve` answers and appends to `result` as it goes on, so that a failure leaves what
/// was done. A "$$" that lies more than 32,767 characters behind the last reference, or behind its opening sign, is
/// failure 6. Linear in the length of the text.
void ParseForGlossaryItems(std::string_view text, std::string& result, const GlossaryResolver& resolve);

/// The parts of a text around its first ":"; a text without one is all before it.
[[nodiscard]] std::string_view BeforeColon(std::string_view text) noexcept;
[[nodiscard]] std::string_view AfterColon(std::string_view text) noexcept;

}  // namespace quillbook::textpasses
