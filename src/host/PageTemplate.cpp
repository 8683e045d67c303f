#include "quillbook/host/PageTemplate.h"

namespace quillbook {

const TypeInfo& TemplateVariable::StaticType() {
  static const TypeInfo type = Describe<TemplateVariable>("TemplateVariable")
                                   .Field<&TemplateVariable::mName>("mName")
                                   .Field<&TemplateVariable::mValueType>("mValueType")
                                   .Field<&TemplateVariable::mDefault>("mDefault")
                                   .Field<&TemplateVariable::mCaption>("mCaption")
                                   .ReadOnly<&TemplateVariable::Name>("Name")
                                   .ReadOnly<&TemplateVariable::ValueType>("Type")
                                   .ReadOnly<&TemplateVariable::Default>("Default")
                                   .ReadOnly<&TemplateVariable::Caption>("Caption")
                                   .Done();
  return type;
}

PageTemplate::PageTemplate()
    : mNamespaces(New<Collection<std::string>>()),
      mVariables(New<Collection<Ref<TemplateVariable>>>()),
      mLayouts(New<Collection<Ref<PageLayout>>>()),
      mNamespaceDefs(New<quillbook::NamespaceDefs>()) {}

const TypeInfo& PageTemplate::StaticType() {
  static const TypeInfo type = Describe<PageTemplate>("PageTemplate")
                                   .Field<&PageTemplate::mName>("mName")
                                   .Field<&PageTemplate::mSupports>("mSupports")
                                   .Field<&PageTemplate::mFolder>("mFolder")
                                   .ReadOnly<&PageTemplate::Name>("Name")
                                   .ReadOnly<&PageTemplate::Supports>("Supports")
                                   .ReadOnly<&PageTemplate::Namespaces>("Namespaces")
                                   .ReadOnly<&PageTemplate::Variables>("Variables")
                                   .ReadOnly<&PageTemplate::Layouts>("Layouts")
                                   .ReadOnly<&PageTemplate::NamespaceDefs>("NamespaceDefs")
                                   .ReadOnly<&PageTemplate::Folder>("Folder")
                                   .Done();
  return type;
}

}  // namespace quillbook
