#include "quillbook/frame/documents/HtmlDocument.h"

#include "frame/documents/Address.h"
#include "frame/documents/PageParser.h"
#include "frame/documents/PageWriter.h"
#include "frame/documents/StartTag.h"
#include "frame/documents/Tree.h"
#include "quillbook/frame/documents/HtmlElement.h"
#include "quillbook/frame/documents/HtmlElements.h"

namespace quillbook {

namespace {

html::Node* ChildElement(const html::Node* parent, std::string_view name) noexcept {
  for (auto* child = parent ? parent->firstChild : nullptr; child; child = child->next)
    if (child->IsHtml(name)) return child;
  return nullptr;
}

}  // namespace

HtmlDocument::HtmlDocument() : mTree(std::make_unique<html::Tree>()) {}
HtmlDocument::~HtmlDocument() = default;

void HtmlDocument::Load(std::string_view HTML) {
  auto& parsed = html::ParsePage(*mTree, HTML);
  auto& root = mTree->Root();
  while (root.firstChild) mTree->Remove(*root.firstChild);
  html::MoveChildren(parsed, root, nullptr);
  mTree->Remove(parsed);
  mComplete = true;
}

Ref<HtmlElement> HtmlDocument::ElementOf(html::Node* node) const {
  if (!node) return {};
  if (node->handle) return Ref<HtmlElement>(node->handle);
  return New<HtmlElement>(Ref<HtmlDocument>(const_cast<HtmlDocument*>(this)), *node);  // elements may change it
}

Ref<HtmlElements> HtmlDocument::All() const {
  return New<HtmlElements>(Ref<HtmlDocument>(const_cast<HtmlDocument*>(this)));
}

Ref<HtmlElements> HtmlDocument::ElementsByTag(std::string_view name) const {
  std::vector<Ref<HtmlElement>> elements;
  for (auto* node : mTree->Tagged(html::FoldName(name))) elements.push_back(ElementOf(node));
  return New<HtmlElements>(std::move(elements));
}

Ref<HtmlElements> HtmlDocument::anchors() const {
  std::vector<Ref<HtmlElement>> elements;
  for (auto* node : mTree->Tagged("a")) {
    const auto* name = html::FindAttribute(*node, "name");
    if (name && !name->value.empty()) elements.push_back(ElementOf(node));
  }
  return New<HtmlElements>(std::move(elements));
}

Ref<HtmlElement> HtmlDocument::documentElement() const {
  return ElementOf(ChildElement(&mTree->Root(), "html"));
}

Ref<HtmlElement> HtmlDocument::body() const {
  const auto* page = ChildElement(&mTree->Root(), "html");
  auto* body = ChildElement(page, "body");
  return ElementOf(body ? body : ChildElement(page, "frameset"));
}

std::string HtmlDocument::ToString() const {
  return html::InnerMarkup(mTree->Root());
}

std::string HtmlDocument::Resolve(std::string_view reference) const {
  return html::Absolute(mTree->Base(), reference);
}

const TypeInfo& HtmlDocument::StaticType() {
  using D = HtmlDocument;
  static const TypeInfo type = Describe<D>("HtmlDocument")
                                   .ReadOnly<&D::readyState>("readyState")
                                   .ReadOnly<&D::All>("All")
                                   .ReadOnly<&D::anchors>("anchors")
                                   .ReadOnly<&D::documentElement>("documentElement")
                                   .ReadOnly<&D::body>("body")
                                   .Done();
  return type;
}

}  // namespace quillbook
