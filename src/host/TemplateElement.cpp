#include "quillbook/host/TemplateElement.h"

namespace quillbook {

TemplateElement::TemplateElement(std::string_view ElementType) : mElementType(ElementType) {
  AddAttribute("type", ElementType);
}

void TemplateElement::AddAttribute(std::string_view Name, std::string_view Value) {
  if (!mAttributes.Contains(Name)) mAttributes.AddKeyed(std::string(Value), Name);
}

const TypeInfo& TemplateElement::StaticType() {
  static const TypeInfo type = Describe<TemplateElement>("TemplateElement")
                                   .Field<&TemplateElement::mElementType>("mElementType")
                                   .Field<&TemplateElement::mAttributes>("mAttributes")
                                   .Field<&TemplateElement::mSource>("mSource")
                                   .Field<&TemplateElement::mNotBlankText>("mNotBlankText")
                                   .Field<&TemplateElement::mBlankText>("mBlankText")
                                   .ReadOnly<&TemplateElement::Source>("Source")
                                   .Done();
  return type;
}

}  // namespace quillbook
