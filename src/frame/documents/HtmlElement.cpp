#include "quillbook/frame/documents/HtmlElement.h"

#include <array>

#include "frame/documents/ElementKinds.h"
#include "frame/documents/Node.h"
#include "frame/documents/PageParser.h"
#include "frame/documents/PageSource.h"
#include "frame/documents/PageWriter.h"
#include "frame/documents/StartTag.h"
#include "frame/documents/Tree.h"
#include "quillbook/base/Failure.h"
#include "quillbook/base/Text.h"

namespace quillbook {

namespace {

using html::Node;

/// The raw text of a script, style or the like as its one child.
Node& RawContent(html::Tree& tree, const Node& element, std::string_view text) {
  if (FindIgnoringCase(text, "</" + element.name) != std::string_view::npos)
    throw Failure(FailureNumber::InvalidCall, "The text of a '" + element.name + "' element can't hold its end tag");
  auto& holder = tree.Make(Node::Kind::Document);
  if (text.empty()) return holder;
  auto& node = tree.Make(Node::Kind::Text);
  node.source = html::CleanText(text);
  html::Append(holder, node);
  return holder;
}

Node& ParseContent(html::Tree& tree, const Node& element, std::string_view text) {
  const bool isHtml = element.space == html::Space::Html;
  if (isHtml && html::IsVoid(element.name))
    throw Failure(FailureNumber::InvalidCall, "A '" + element.name + "' element has no content");
  if (isHtml && html::HasRawText(element.name)) return RawContent(tree, element, text);
  return html::ParseFragment(tree, element, text);
}

bool IsFrame(const Node& element) noexcept {
  return element.IsHtml("html") || element.IsHtml("head") || element.IsHtml("body");
}

}  // namespace

HtmlElement::HtmlElement(Ref<HtmlDocument> document, html::Node& node) : mDocument(std::move(document)), mNode(node) {
  mNode.handle = this;
}

HtmlElement::~HtmlElement() {
  mNode.handle = nullptr;
}

std::string HtmlElement::tagName() const {
  if (mNode.space != html::Space::Html) return std::string(mNode.SpelledName());
  std::string name(mNode.name);
  for (auto& c : name)
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  return name;
}

std::string HtmlElement::getAttribute(std::string_view Name, int Flags) const {
  const auto* attribute = html::FindAttribute(mNode, Name);
  if (!attribute) return {};
  const bool refers = EqualsIgnoringCase(Name, "href") || EqualsIgnoringCase(Name, "src");
  const bool asWritten = !refers || (Flags & AsWritten) != 0 || mNode.IsHtml("base");
  return asWritten ? attribute->value : mDocument->Resolve(attribute->value);
}

bool HtmlElement::hasAttribute(std::string_view Name) const {
  return html::FindAttribute(mNode, Name) != nullptr;
}

void HtmlElement::setAttribute(std::string_view Name, std::string_view Value, int /*Flags*/) {
  html::SetAttribute(mNode, Name, Value);
  if (mNode.IsHtml("base")) mDocument->Nodes().Changed();
}

std::string HtmlElement::innerHTML() const {
  return html::InnerMarkup(mNode);
}

void HtmlElement::SetInnerHTML(std::string_view RHS) {
  auto& tree = mDocument->Nodes();
  auto& content = ParseContent(tree, mNode, RHS);
  while (mNode.firstChild) tree.Remove(*mNode.firstChild);
  html::OpenStartTag(mNode);
  mNode.lineBreak = 0;
  html::MoveChildren(content, mNode, nullptr);
  tree.Remove(content);
}

std::string HtmlElement::outerHTML() const {
  return html::OuterMarkup(mNode);
}

void HtmlElement::SetOuterHTML(std::string_view RHS) {
  auto* parent = mNode.parent;
  if (IsFrame(mNode) || !parent || !parent->IsElement())
    throw Failure(FailureNumber::InvalidCall, "This '" + mNode.name + "' element can't be replaced");
  auto& tree = mDocument->Nodes();
  auto& content = ParseContent(tree, *parent, RHS);
  html::MoveChildren(content, *parent, &mNode);
  tree.Remove(mNode);
  tree.Remove(content);
}

std::string HtmlElement::innerText() const {
  return html::InnerText(mNode);
}

Ref<HtmlElement> HtmlElement::parentElement() const {
  return mDocument->ElementOf(mNode.parent && mNode.parent->IsElement() ? mNode.parent : nullptr);
}

Ref<HtmlElements> HtmlElement::children() const {
  std::vector<Ref<HtmlElement>> elements;
  for (auto* child = mNode.firstChild; child; child = child->next)
    if (child->IsElement()) elements.push_back(mDocument->ElementOf(child));
  return New<HtmlElements>(std::move(elements));
}

const TypeInfo& HtmlElement::StaticType() {
  using E = HtmlElement;
  static const TypeInfo type = Describe<E>("HtmlElement")
                                   .ReadOnly<&E::tagName>("tagName")
                                   .Property<&E::innerHTML, &E::SetInnerHTML>("innerHTML")
                                   .Property<&E::outerHTML, &E::SetOuterHTML>("outerHTML")
                                   .ReadOnly<&E::innerText>("innerText")
                                   .ReadOnly<&E::parentElement>("parentElement")
                                   .ReadOnly<&E::children>("children")
                                   .ReadOnly<&E::document>("document")
                                   .ReadOnly<&E::hRef>("hRef")
                                   .ReadOnly<&E::name>("name")
                                   .Method<&E::getAttribute>("getAttribute")
                                   .Method<&E::setAttribute>("setAttribute")
                                   .Done();
  return type;
}

}  // namespace quillbook
