#include "quillbook/config/ProjectProperties.h"

#include "quillbook/frame/FirstMember.h"
#include "quillbook/frame/services/XMLElement.h"
#include "quillbook/project/QBProject.h"

namespace quillbook {

ProjectProperties::~ProjectProperties() {
  mNames.Clear();
}

Ref<quillbook::QBProject> ProjectProperties::QBProject() const {
  return mQBProject.Target();
}

void ProjectProperties::SetQBProject(const Ref<quillbook::QBProject>& value) {
  mQBProject.SetTarget(value);
}

Ref<ProjectProperty> ProjectProperties::Item(KeyOrPosition Key) const {
  return Procedure(*this, "Item", [&](auto& p) { p("Key", Key.ToVariant()); }).Run([&] {
    if (!Key.IsKey() || Key.Key().starts_with('{')) return MemberCollection::Item(Key);
    return FirstMember(
        mCol, mNames, Key.Key(),
        [](const ProjectProperty& property) -> const std::string& { return property.PropertyName(); },
        [](const ProjectProperty& property) -> const std::string& { return property.ID(); });
  });
}

void ProjectProperties::MemberAdded(const Ref<ProjectProperty>& member, std::string_view /*key*/) {
  mNames.Add(member->NameText(), member.get());
  Events.ProjectPropertyAdded.Raise(member);
}

void ProjectProperties::Remove(KeyOrPosition Key) {
  Procedure(*this, "Remove", [&](auto& p) { p("Key", Key.ToVariant()); }).Run([&] {
    const auto property = MemberCollection::Item(Key);
    if (!property) return;
    RemoveMember(Key);
    mNames.Remove(property->NameText());
    Events.ProjectPropertyRemoved.Raise(property);
  });
}

void ProjectProperties::FireProjectPropertyChanged(const Ref<quillbook::ProjectProperty>& ProjectProperty) {
  Procedure(*this, "FireProjectPropertyChanged", [&](auto& p) { p("ProjectProperty", ProjectProperty); }).Run([&] {
    Events.ProjectPropertyChanged.Raise(ProjectProperty);
  });
}

void ProjectProperties::Load(XMLElement e) {
  Procedure(*this, "Load", [&](auto& p) { p("e", e); }).Run([&] {
    for (const auto& child : e.ChildElements()) {
      if (child.Name() != "ProjectProperty") continue;
      const auto property = New<ProjectProperty>();
      property->SetProjectProperties(Ref<ProjectProperties>(this));
      property->Load(child);
      IgnoreFailures([&] {
        mCol.AddKeyed(property, property->ID());
        mNames.Add(property->NameText(), property.get());
      });
    }
  });
}

void ProjectProperties::Save(XMLElement e) {
  Procedure(*this, "Save", [&](auto& p) { p("e", e); }).Run([&] {
    for (const auto& property : *this) property->Save(e.AddChild("ProjectProperty"));
  });
}

const TypeInfo& ProjectProperties::StaticType() {
  static const TypeInfo type =
      Describe<ProjectProperties>("ProjectProperties")
          .Field<&ProjectProperties::mQBProject>("mQBProject")
          .Field<&ProjectProperties::mCol>("mCol")
          .Property<&ProjectProperties::QBProject, &ProjectProperties::SetQBProject>("QBProject")
          .ReadOnly<&ProjectProperties::Count>("Count")
          .Done();
  return type;
}

}  // namespace quillbook
