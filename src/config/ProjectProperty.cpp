#include "quillbook/config/ProjectProperty.h"

#include "frame/Assign.h"
#include "quillbook/config/ProjectProperties.h"
#include "quillbook/frame/Procedure.h"
#include "quillbook/frame/modMain.h"
#include "quillbook/frame/services/XMLElement.h"

namespace quillbook {

ProjectProperty::ProjectProperty() : mID(modMain::CreateGUID()) {}

void ProjectProperty::SetPropertyName(std::string_view value) {
  Procedure(*this, "PropertyName", [&](auto& p) { p("RHS", value); }).Run([&] {
    if (value == mPropertyName.Value()) return;
    mPropertyName.Set(value);
    Changed();
  });
}

void ProjectProperty::SetPropertyType(ProjectPropertyTypeEnum value) {
  Assign(*this, mPropertyType, value, "PropertyType", &ProjectProperty::Changed);
}

void ProjectProperty::SetPropertyValue(std::string_view value) {
  Assign(*this, mPropertyValue, value, "PropertyValue", &ProjectProperty::Changed);
}

Ref<quillbook::ProjectProperties> ProjectProperty::ProjectProperties() const {
  return mProjectProperties.Target();
}

void ProjectProperty::SetProjectProperties(const Ref<quillbook::ProjectProperties>& value) {
  mProjectProperties.SetTarget(value);
}

void ProjectProperty::Load(XMLElement e) {
  Procedure(*this, "Load", [&](auto& p) { p("e", e); }).Run([&] {
    const auto attributes = e.Attributes();
    mPropertyName.Set(attributes.Item("PropertyName").Value());
    const Variant type = LeadingNumber(attributes.Item("PropertyType").Value());
    mPropertyType = static_cast<ProjectPropertyTypeEnum>(type.ToLong());
    mPropertyValue = attributes.Item("PropertyValue").Value();
    mID = attributes.Item("ID").Value();
  });
}

void ProjectProperty::Save(XMLElement e) {
  Procedure(*this, "Save", [&](auto& p) { p("e", e); }).Run([&] {
    e.SetName("ProjectProperty");
    e.AddAttribute("PropertyName", PropertyName());
    e.AddAttribute("PropertyType", std::to_string(mPropertyType));
    e.AddAttribute("PropertyValue", mPropertyValue);
    e.AddAttribute("ID", mID);
  });
}

void ProjectProperty::Changed() {
  Procedure(*this, "Changed").Run([&] {
    if (const auto properties = ProjectProperties()) properties->FireProjectPropertyChanged(Ref<ProjectProperty>(this));
  });
}

const TypeInfo& ProjectProperty::StaticType() {
  static const TypeInfo type =
      Describe<ProjectProperty>("ProjectProperty")
          .Field<&ProjectProperty::mID>("mID")
          .ComputedField<&ProjectProperty::PropertyName>("mPropertyName")
          .Field<&ProjectProperty::mPropertyType>("mPropertyType")
          .Field<&ProjectProperty::mPropertyValue>("mPropertyValue")
          .Field<&ProjectProperty::mProjectProperties>("mProjectProperties")
          .ReadOnly<&ProjectProperty::ID>("ID")
          .Property<&ProjectProperty::PropertyName, &ProjectProperty::SetPropertyName>("PropertyName")
          .Property<&ProjectProperty::PropertyType, &ProjectProperty::SetPropertyType>("PropertyType")
          .Property<&ProjectProperty::PropertyValue, &ProjectProperty::SetPropertyValue>("PropertyValue")
          .Property<&ProjectProperty::ProjectProperties, &ProjectProperty::SetProjectProperties>("ProjectProperties")
          .Done();
  return type;
}

}  // namespace quillbook
