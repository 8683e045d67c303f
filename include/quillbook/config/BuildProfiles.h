// The build profiles of a project.
#pragma once

#include <string_view>

#include "quillbook/config/BuildProfile.h"
#include "quillbook/frame/MemberCollection.h"

namespace quillbook {

/// The build profiles of a project in the order of adding, keyed by `BuildProfile::ID`. `Add` and `Remove` tell the
/// project and mark it dirty; `Add` doesn't set the profile's `BuildProfiles`.
class BuildProfiles final : public MemberCollection<BuildProfile> {
 public:
  [[nodiscard]] Ref<quillbook::QBProject> QBProject() const;
  void SetQBProject(const Ref<quillbook::QBProject>& value);

  // Library-internal

  /// Adds the profiles stored below `e` without telling anybody. A repeated `ID` is a failure.
  void Load(XMLElement e);
  void Save(XMLElement e);
  /// Tells the project of a changed profile and marks the project dirty.
  void BuildProfileChanged(const Ref<BuildProfile>& profile);

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 protected:
  void MemberAdded(const Ref<BuildProfile>& member, std::string_view key) override;
  void MemberRemoved(const Ref<BuildProfile>& member) override;

 private:
  WeakReference<quillbook::QBProject> mQBProject;
};

}  // namespace quillbook
