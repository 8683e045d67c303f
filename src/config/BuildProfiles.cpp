#include "quillbook/config/BuildProfiles.h"

#include "quillbook/frame/services/XMLElement.h"
#include "quillbook/project/QBProject.h"

namespace quillbook {

Ref<quillbook::QBProject> BuildProfiles::QBProject() const {
  return mQBProject.Target();
}

void BuildProfiles::SetQBProject(const Ref<quillbook::QBProject>& value) {
  mQBProject.SetTarget(value);
}

void BuildProfiles::MemberAdded(const Ref<BuildProfile>& member, std::string_view /*key*/) {
  const auto project = QBProject();
  if (!project) return;
  project->FireBuildProfileAdded(member);
  project->FireBuildProfilesChanged();
  project->SetDirty(true);
}

void BuildProfiles::MemberRemoved(const Ref<BuildProfile>& member) {
  const auto project = QBProject();
  if (!project) return;
  project->FireBuildProfileRemoved(member);
  project->FireBuildProfilesChanged();
  project->SetDirty(true);
}

void BuildProfiles::BuildProfileChanged(const Ref<BuildProfile>& profile) {
  Procedure(*this, "BuildProfileChanged", [&](auto& p) { p("profile", profile); }).Run([&] {
    const auto project = QBProject();
    if (!project) return;
    project->FireBuildProfileChanged(profile);
    project->SetDirty(true);
  });
}

void BuildProfiles::Load(XMLElement e) {
  Procedure(*this, "Load", [&](auto& p) { p("e", e); }).Run([&] {
    for (const auto& child : e.ChildElements()) {
      const auto profile = New<BuildProfile>();
      profile->SetBuildProfiles(Ref<BuildProfiles>(this));
      profile->Load(child);
      mCol.AddKeyed(profile, profile->ID());
    }
  });
}

void BuildProfiles::Save(XMLElement e) {
  Procedure(*this, "Save", [&](auto& p) { p("e", e); }).Run([&] {
    for (const auto& profile : *this) profile->Save(e.AddChild("BuildProfile"));
  });
}

const TypeInfo& BuildProfiles::StaticType() {
  static const TypeInfo type = Describe<BuildProfiles>("BuildProfiles")
                                   .Field<&BuildProfiles::mQBProject>("mQBProject")
                                   .Field<&BuildProfiles::mCol>("mCol")
                                   .Property<&BuildProfiles::QBProject, &BuildProfiles::SetQBProject>("QBProject")
                                   .ReadOnly<&BuildProfiles::Count>("Count")
                                   .Done();
  return type;
}

}  // namespace quillbook
