// What HTML5 says of elements by their names, which are in small letters.
#pragma once

#include <algorithm>
#include <array>
#include <string_view>

namespace quillbook::html {

template <std::size_t N>
[[nodiscard]] constexpr bool IsOneOf(std::string_view name, const std::array<std::string_view, N>& names) noexcept {
  return std::find(names.begin(), names.end(), name) != names.end();
}

/// Has neither content nor end tag.
[[nodiscard]] constexpr bool IsVoid(std::string_view name) noexcept {
  constexpr std::array<std::string_view, 18> names{"area",  "base",   "basefont", "bgsound", "br",     "col",
                                                   "embed", "frame",  "hr",       "image",   "img",    "input",
                                                   "link",  "keygen", "meta",     "param",   "source", "wbr"};
  return IsOneOf(name, names) || name == "track";
}

/// Its text is taken as it stands: no tags, no references.
[[nodiscard]] constexpr bool HasRawText(std::string_view name) noexcept {
  constexpr std::array<std::string_view, 6> names{"script", "style", "xmp", "iframe", "noembed", "noframes"};
  return IsOneOf(name, names);
}

/// A line break right behind the start tag belongs to no text.
[[nodiscard]] constexpr bool DropsFirstLineBreak(std::string_view name) noexcept {
  return name == "pre" || name == "textarea" || name == "listing";
}

/// Authors may leave its end tag out: one that follows, or the end of what is around it, closes it.
[[nodiscard]] constexpr bool MayLackEndTag(std::string_view name) noexcept {
  constexpr std::array<std::string_view, 15> names{
      "html", "head", "body", "p", "li", "dt", "dd", "option", "tr", "td", "th", "tbody", "thead", "tfoot", "colgroup"};
  return IsOneOf(name, names) || name == "caption";
}

/// A second one closes the first, or isn't made.
[[nodiscard]] constexpr bool ClosesItsLike(std::string_view name) noexcept {
  constexpr std::array<std::string_view, 11> names{"a",  "nobr", "button", "form", "select", "h1",
                                                   "h2", "h3",   "h4",     "h5",   "h6"};
  return IsOneOf(name, names);
}

}  // namespace quillbook::html
