#include "cli/edit/PropertyKind.h"

namespace quillbook::cli {

const KindInfo& PropertyKind::Info() const {
  static const KindInfo info{"properties", "property", "List, show and edit the properties of the project",
                             "name or key of a property"};
  return info;
}

const std::vector<Field>& PropertyKind::Fields() const {
  static const std::vector<Field> fields = {
      KeyField<ProjectProperty>([](const ProjectProperty& property) -> const std::string& { return property.ID(); }),
      TextField("name", "Name", &ProjectProperty::PropertyName, &ProjectProperty::SetPropertyName).Listed().Required(),
      ChoiceField("type", "What the value is meant to be; text for a new one",
                  {"text", "html", "number", "date", "color"}, pptText, &ProjectProperty::PropertyType,
                  &ProjectProperty::SetPropertyType)
          .Listed(),
      TextField("value", "Value, a text whatever the type says", &ProjectProperty::PropertyValue,
                &ProjectProperty::SetPropertyValue)
          .Listed(),
  };
  return fields;
}

Ref<ProjectProperty> PropertyKind::Make(const Scope& scope, const std::string& name) const {
  auto property = New<ProjectProperty>();
  property->SetProjectProperties(scope.project.ProjectProperties());
  property->SetPropertyName(name);
  return property;
}

}  // namespace quillbook::cli
