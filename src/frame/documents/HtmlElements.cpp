#include "quillbook/frame/documents/HtmlElements.h"

#include "quillbook/base/Text.h"
#include "quillbook/frame/documents/HtmlDocument.h"
#include "quillbook/frame/documents/HtmlElement.h"

namespace quillbook {

HtmlElements::HtmlElements(std::vector<Ref<HtmlElement>> elements) : mElements(std::move(elements)) {}
HtmlElements::HtmlElements(Ref<HtmlDocument> document) : mDocument(std::move(document)) {}
HtmlElements::~HtmlElements() = default;

const std::vector<Ref<HtmlElement>>& HtmlElements::List() {
  if (mDocument) {
    mElements = mDocument->ElementsByTag("*")->mElements;
    mDocument = nullptr;
  }
  return mElements;
}

Ref<HtmlElements> HtmlElements::tags(std::string_view Name) {
  if (mDocument) return mDocument->ElementsByTag(Name);
  std::vector<Ref<HtmlElement>> found;
  for (const auto& element : mElements)
    if (Name == "*" || EqualsIgnoringCase(element->tagName(), Name)) found.push_back(element);
  return New<HtmlElements>(std::move(found));
}

Ref<HtmlElement> HtmlElements::Item(KeyOrPosition Which) {
  const auto& list = List();
  if (Which.IsPosition()) {
    const auto position = Which.Position();
    const bool inside = position >= 0 && static_cast<std::size_t>(position) < list.size();
    return inside ? list[static_cast<std::size_t>(position)] : Ref<HtmlElement>();
  }
  for (const auto* attribute : {"name", "id"})
    for (const auto& element : list)
      if (element->hasAttribute(attribute) && EqualsIgnoringCase(element->getAttribute(attribute), Which.Key()))
        return element;
  return {};
}

std::size_t HtmlElements::Count() {
  return List().size();
}

void HtmlElements::ForEachItem(const std::function<void(const Variant&)>& visit) const {
  // Gathering changes nothing that a reader of a list could see.
  for (const auto& element : const_cast<HtmlElements*>(this)->List()) visit(Variant(element));
}

const TypeInfo& HtmlElements::StaticType() {
  using L = HtmlElements;
  static const TypeInfo type = Describe<L>("HtmlElements")
                                   .ReadOnly<&L::Count>("Count")
                                   .ReadOnly<&L::length>("length")
                                   .Method<&L::tags>("tags")
                                   .Done();
  return type;
}

}  // namespace quillbook
