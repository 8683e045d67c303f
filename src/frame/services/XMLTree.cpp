#include "frame/services/XMLTree.h"

#include "quillbook/base/Text.h"

namespace quillbook::detail {

namespace {

constexpr char LowerAscii(char c) noexcept {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

/// As `EqualsIgnoringCase`, quick to see that two ASCII names differ.
bool NamesMatch(std::string_view left, std::string_view right) noexcept {
  const auto common = left.size() < right.size() ? left.size() : right.size();
  for (std::size_t i = 0; i < common; ++i) {
    if (static_cast<unsigned char>(left[i] | right[i]) >= 0x80) return EqualsIgnoringCase(left, right);
    if (LowerAscii(left[i]) != LowerAscii(right[i])) return false;
  }
  return left.size() == right.size();
}

}  // namespace

pugi::xml_attribute AttributeIndex::Find(const pugi::xml_node& element, std::string_view name) {
  if (mElement != element) Read(element);
  for (const auto& entry : mEntries)
    if (NamesMatch(entry.name, name)) return entry.attribute;
  return {};
}

void AttributeIndex::Read(const pugi::xml_node& element) {
  mElement = {};
  mEntries.clear();
  for (auto attribute = element.first_attribute(); attribute; attribute = attribute.next_attribute())
    mEntries.push_back({attribute.name(), attribute});
  mElement = element;
}

const TypeInfo& XMLTree::StaticType() {
  static const TypeInfo type = Describe<XMLTree>("XMLDocument").Done();
  return type;
}

const char* XMLTree::Terminated(std::string_view text) {
  if (text.find('\0') == std::string_view::npos)
    mTerminated.assign(text);
  else
    mTerminated = ReplaceAll(text, std::string_view("\0", 1), "\xEF\xBF\xBD");
  contentSize += mTerminated.size();
  return mTerminated.c_str();
}

XMLContent ContentOf(const pugi::xml_node& element) {
  bool elements = false;
  bool text = false;
  bool textThatCounts = false;
  for (auto child = element.first_child(); child; child = child.next_sibling()) {
    if (!IsTextPiece(child)) {
      elements = true;
    } else {
      text = true;
      // Needed only beside child elements, so that the long text of a leaf isn't looked at.
      if (elements || child.next_sibling()) textThatCounts = textThatCounts || !IsWhiteSpace(child.value());
    }
    if (elements && textThatCounts) return XMLContent::Mixed;
  }
  if (elements) return XMLContent::Elements;
  return text ? XMLContent::Text : XMLContent::None;
}

}  // namespace quillbook::detail
