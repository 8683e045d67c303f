#include "frame/documents/StartTag.h"

#include <algorithm>

#include "frame/documents/PageSource.h"
#include "quillbook/base/Failure.h"
#include "quillbook/base/Text.h"

namespace quillbook::html {

namespace {

constexpr std::string_view NoBreakSpace = "\xC2\xA0";

/// Nothing for a character that stands for itself.
std::string_view ReferenceFor(char c, bool inValue) noexcept {
  switch (c) {
    case '&': return "&amp;";
    case '\r': return "&#13;";  // a bare one would be read as a line feed
    case '<': return inValue ? std::string_view() : "&lt;";
    case '>': return inValue ? std::string_view() : "&gt;";
    case '"': return inValue ? "&quot;" : std::string_view();
    default: return {};
  }
}

std::string Escape(std::string_view text, bool inValue) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text.substr(i, NoBreakSpace.size()) == NoBreakSpace) {
      result += "&nbsp;";  // or else nobody could tell it from a blank
      i += NoBreakSpace.size() - 1;
    } else if (const auto reference = ReferenceFor(text[i], inValue); !reference.empty()) {
      result += reference;
    } else {
      result += text[i];
    }
  }
  return result;
}

bool CanBeName(std::string_view name) noexcept {
  return !name.empty() && name.find_first_of(std::string_view(" \t\n\r\f\"'<>/=\0", 11)) == std::string_view::npos;
}

/// Place before the end of a tag, and before the "/" and blank of one that closes itself.
std::size_t EndOfAttributes(const Node& element) noexcept {
  std::size_t from = element.attributes.empty() ? 1 + element.name.size() : element.attributes.back().end;
  auto at = element.source.size() - 1;
  if (at > from && element.source[at - 1] == '/') --at;
  while (at > from && IsSpace(element.source[at - 1])) --at;
  return at;
}

/// Puts `text` in place of a stretch of the tag and moves what is known of the attributes behind it.
void Splice(Node& element, std::size_t start, std::size_t end, std::string_view text) {
  element.source.replace(start, end - start, text);
  for (auto& attribute : element.attributes) {
    if (attribute.start < end) continue;
    attribute.start += text.size() - (end - start);
    attribute.end += text.size() - (end - start);
  }
}

}  // namespace

const Attribute* FindAttribute(const Node& element, std::string_view name) noexcept {
  const auto found = std::find_if(element.attributes.begin(), element.attributes.end(),
                                  [&](const auto& attribute) { return EqualsIgnoringCase(attribute.name, name); });
  return found == element.attributes.end() ? nullptr : &*found;
}

void SetAttribute(Node& element, std::string_view name, std::string_view value) {
  if (!CanBeName(name))
    throw Failure(FailureNumber::InvalidCall, "'" + std::string(name) + "' can't be the name of an attribute");
  const auto clean = CleanText(value);
  const auto written = "=\"" + EscapeValue(clean) + "\"";
  if (const auto* known = FindAttribute(element, name)) {
    auto& attribute = element.attributes[static_cast<std::size_t>(known - element.attributes.data())];
    const auto nameEnd = attribute.start + attribute.name.size();
    Splice(element, nameEnd, attribute.end, written);
    attribute.value = clean;
    attribute.end = nameEnd + written.size();
    return;
  }
  const auto start = EndOfAttributes(element) + 1;
  Attribute attribute{CleanText(name), clean, start, 0};
  attribute.end = start + attribute.name.size() + written.size();
  element.source.insert(start - 1, " " + attribute.name + written);
  element.attributes.push_back(std::move(attribute));
}

void ComposeStartTag(Node& element, std::string_view name) {
  auto& tag = element.source;
  tag = "<";
  tag += name;
  for (auto& attribute : element.attributes) {
    tag += ' ';
    attribute.start = tag.size();
    tag += attribute.name;
    tag.append("=\"").append(EscapeValue(attribute.value)).append("\"");
    attribute.end = tag.size();
  }
  tag += element.closesItself ? " />" : ">";
}

void OpenStartTag(Node& element) {
  if (!element.closesItself) return;
  element.closesItself = false;
  element.source.erase(EndOfAttributes(element));
  element.source += '>';
}

std::string EscapeText(std::string_view text) {
  return Escape(text, false);
}
std::string EscapeValue(std::string_view value) {
  return Escape(value, true);
}

std::string FoldName(std::string_view name) {
  std::string folded(name);
  for (auto& c : folded)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return folded;
}

}  // namespace quillbook::html
