#include "frame/documents/PageWriter.h"

#include <algorithm>

#include "frame/documents/ElementKinds.h"
#include "frame/documents/StartTag.h"

namespace quillbook::html {

namespace {

bool BeginsWithLineBreak(const Node& element) noexcept {
  const auto* first = element.firstChild;
  return first && first->kind == Node::Kind::Text && first->source.find_first_of("\r\n") == 0;
}

/// What stands between a start tag and the first child.
void WriteFirstLineBreak(const Node& element, std::string& out) {
  if (element.lineBreak > 0)
    out.append(element.lineBreak == 2 ? "\r\n" : "\n");
  else if (element.space == Space::Html && DropsFirstLineBreak(element.name) && BeginsWithLineBreak(element))
    out += '\n';  // the parser takes one away
}

bool HasEndTag(const Node& node) noexcept {
  return node.IsElement() && !node.closesItself && (node.space != Space::Html || node.firstChild || !IsVoid(node.name));
}

void WriteEnd(const Node& node, std::string& out) {
  if (HasEndTag(node)) out.append("</").append(node.SpelledName()).append(">");
}

/// True if a text ends in what a text behind it could go on with: a reference such as "&amp", half of a line break.
bool IsOpenEnded(std::string_view source) noexcept {
  if (source.ends_with('\r')) return true;
  const auto at = source.rfind('&');
  return at != std::string_view::npos &&
         std::all_of(source.begin() + static_cast<std::ptrdiff_t>(at) + 1, source.end(), [](char c) {
           return c == '#' || (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
         });
}

void WriteStart(const Node& node, std::string& out) {
  const bool textFollows = node.next && node.next->kind == Node::Kind::Text;
  if (node.kind == Node::Kind::Text && textFollows && IsOpenEnded(node.source))
    out += EscapeText(node.Meaning());
  else
    out += node.source;
  if (node.IsElement()) WriteFirstLineBreak(node, out);
}

/// Writes what is in `root`, without a call for each level.
void WriteContent(const Node& root, std::string& out) {
  for (const auto* node = root.firstChild; node;) {
    WriteStart(*node, out);
    if (node->firstChild) {
      node = node->firstChild;
      continue;
    }
    WriteEnd(*node, out);
    while (!node->next && node->parent != &root) {
      node = node->parent;
      WriteEnd(*node, out);
    }
    node = node->next;
  }
}

}  // namespace

std::string InnerMarkup(const Node& node) {
  std::string out;
  WriteContent(node, out);
  return out;
}

std::string OuterMarkup(const Node& node) {
  std::string out;
  WriteStart(node, out);
  WriteContent(node, out);
  WriteEnd(node, out);
  return out;
}

std::string InnerText(const Node& node) {
  std::string out;
  for (auto* each = node.firstChild; each;) {
    const bool hidden = each->IsHtml("script") || each->IsHtml("style");
    if (each->kind == Node::Kind::Text) out += each->Meaning();
    each = hidden ? NextBehind(node, each) : NextWithin(node, each);
  }
  return out;
}

}  // namespace quillbook::html
