// The start tag of an element: its text, and the attributes in it.
#pragma once

#include <string>
#include <string_view>

#include "frame/documents/Node.h"

namespace quillbook::html {

/// The attribute of that name, ignoring case; null if there is none.
[[nodiscard]] const Attribute* FindAttribute(const Node& element, std::string_view name) noexcept;
/// Sets or adds an attribute in the tag's text, the rest of which stays. Failure 5 for what can't be a name.
void SetAttribute(Node& element, std::string_view name, std::string_view value);
/// Writes the tag of an element `name` anew, as `element.attributes` say.
void ComposeStartTag(Node& element, std::string_view name);
/// Takes the "/" out of a tag that closes itself, so that there is room for content.
void OpenStartTag(Node& element);

/// Text as it is written in an element, and in an attribute between double quotes.
[[nodiscard]] std::string EscapeText(std::string_view text);
[[nodiscard]] std::string EscapeValue(std::string_view value);

[[nodiscard]] constexpr bool IsSpace(char c) noexcept {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f';
}
/// Small letters for capitals of ASCII, the only ones that HTML folds in names.
[[nodiscard]] std::string FoldName(std::string_view name);

}  // namespace quillbook::html
