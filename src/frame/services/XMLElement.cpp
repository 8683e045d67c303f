#include "quillbook/frame/services/XMLElement.h"

#include <algorithm>
#include <functional>

#include "frame/services/XMLTree.h"
#include "quillbook/base/Failure.h"
#include "quillbook/base/Text.h"

namespace quillbook {

namespace {

using detail::NodeOf;

pugi::xml_attribute AttributeOf(void* attribute) {
  return pugi::xml_attribute(static_cast<pugi::xml_attribute_struct*>(attribute));
}

constexpr char LowerAscii(char c) noexcept {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

bool IsNameStart(char c) noexcept {
  const char lower = LowerAscii(c);
  return (lower >= 'a' && lower <= 'z') || c == '_' || c == ':' || static_cast<unsigned char>(c) >= 0x80;
}

bool IsNameCharacter(char c) noexcept {
  return IsNameStart(c) || (c >= '0' && c <= '9') || c == '-' || c == '.';
}

void RequireName(std::string_view name, std::source_location where) {
  const bool good = !name.empty() && IsNameStart(name.front()) &&
                    std::all_of(name.begin(), name.end(), IsNameCharacter) && IsValidUtf8(name);
  if (!good) throw Failure(FailureNumber::InvalidCall, "'" + std::string(name) + "' can't be a name in XML", where);
}

void* NextElement(pugi::xml_node node) {
  while (node && node.type() != pugi::node_element) node = node.next_sibling();
  return node.internal_object();
}

std::string JoinPieces(const pugi::xml_node& element) {
  std::string text;
  for (auto child = element.first_child(); child; child = child.next_sibling())
    if (detail::IsTextPiece(child)) text += child.value();
  return text;
}

}  // namespace

std::string_view XMLAttribute::Name() const {
  return AttributeOf(mAttribute).name();
}

std::string_view XMLAttribute::Value() const {
  return AttributeOf(mAttribute).value();
}

XMLAttribute XMLAttributes::Item(std::string_view Name, std::source_location where) const {
  const auto attribute = mTree->attributes.Find(NodeOf(mNode), Name);
  if (!attribute)
    throw Failure(FailureNumber::InvalidCall,
                  "Element '" + std::string(NodeOf(mNode).name()) + "' has no attribute '" + std::string(Name) + "'",
                  where);
  return {mTree, attribute.internal_object()};
}

std::optional<std::string_view> XMLAttributes::Find(std::string_view Name) const {
  const auto attribute = mTree->attributes.Find(NodeOf(mNode), Name);
  if (!attribute) return std::nullopt;
  return attribute.value();
}

std::size_t XMLAttributes::Count() const {
  std::size_t count = 0;
  for (auto attribute = NodeOf(mNode).first_attribute(); attribute; attribute = attribute.next_attribute()) ++count;
  return count;
}

XMLElement XMLChildElements::Iterator::operator*() const {
  return {mTree, mNode};
}

XMLChildElements::Iterator& XMLChildElements::Iterator::operator++() {
  mNode = NextElement(NodeOf(mNode).next_sibling());
  return *this;
}

XMLChildElements::Iterator XMLChildElements::begin() const {
  return {mTree, NextElement(NodeOf(mNode).first_child())};
}

std::size_t XMLChildElements::Count() const {
  std::size_t count = 0;
  for (auto at = begin(); at != end(); ++at) ++count;
  return count;
}

void* XMLElement::Node() const {
  if (!mNode) detail::RaiseObjectNotSet();
  return mNode;
}

std::string_view XMLElement::Name() const {
  return NodeOf(Node()).name();
}

void XMLElement::SetName(std::string_view Name, std::source_location where) {
  auto node = NodeOf(Node());
  RequireName(Name, where);
  node.set_name(mTree->Terminated(Name));
}

std::string_view XMLElement::TextView() const {
  const auto node = NodeOf(Node());
  const auto first = node.first_child();
  if (!first) return {};
  if (!first.next_sibling()) return detail::IsTextPiece(first) ? first.value() : std::string_view();
  if (detail::ContentOf(node) == detail::XMLContent::Elements) return {};
  const auto [joined, isNew] = mTree->joinedTexts.try_emplace(mNode);
  if (isNew) joined->second = JoinPieces(node);
  return joined->second;
}

void XMLElement::SetText(std::string_view Text) {
  auto node = NodeOf(Node());
  const std::string kept(Text);  // it may be a view of the very text that goes away
  mTree->joinedTexts.erase(mNode);
  for (auto child = node.first_child(); child;) {
    const auto next = child.next_sibling();
    if (detail::IsTextPiece(child)) node.remove_child(child);
    child = next;
  }
  if (!kept.empty()) node.prepend_child(pugi::node_pcdata).set_value(mTree->Terminated(kept));
}

XMLAttributes XMLElement::Attributes() const {
  return {mTree, Node()};
}

XMLChildElements XMLElement::ChildElements() const {
  return {mTree, Node()};
}

XMLAttribute XMLElement::AddAttribute(std::string_view Name, std::string_view Value, std::source_location where) {
  auto node = NodeOf(Node());
  RequireName(Name, where);
  mTree->attributes.Forget(node);
  auto attribute = node.append_attribute(mTree->Terminated(Name));
  attribute.set_value(mTree->Terminated(Value));
  return {mTree, attribute.internal_object()};
}

XMLElement XMLElement::AddChild(std::string_view Name, std::string_view Text, std::source_location where) {
  auto node = NodeOf(Node());
  RequireName(Name, where);
  auto child = node.append_child(mTree->Terminated(Name));
  if (!Text.empty()) child.append_child(pugi::node_pcdata).set_value(mTree->Terminated(Text));
  return {mTree, child.internal_object()};
}

std::size_t XMLElement::SourceOffset() const {
  const auto& source = mTree->source;
  const auto* name = NodeOf(Node()).name();  // parsed in place
  const bool loaded = std::less<>()(source.data(), name) && std::less<>()(name, source.data() + source.size());
  return loaded ? static_cast<std::size_t>(name - source.data()) - 1 : 0;
}

void XMLElement::Discard() {
  auto node = NodeOf(Node());
  mTree->ForgetElements();
  auto parent = node.parent();
  const auto before = node.previous_sibling();
  if (detail::IsTextPiece(before) && detail::IsWhiteSpace(before.value())) parent.remove_child(before);
  parent.remove_child(node);
  *this = XMLElement();
}

void XMLElement::DiscardChildren() {
  mTree->ForgetElements();
  NodeOf(Node()).remove_children();
}

XMLElement::operator Variant() const {
  return mNode ? Variant(Variant::Opaque{"{XMLElement}"}) : Variant(Variant::Opaque{"{Nothing}"});
}

}  // namespace quillbook
