// quillbook profiles
#pragma once

#include "cli/edit/CollectionKind.h"
#include "quillbook/config/BuildProfiles.h"

namespace quillbook::cli {

class ProfileKind final : public CollectionKind<BuildProfile, BuildProfiles> {
 public:
  [[nodiscard]] const KindInfo& Info() const override;
  [[nodiscard]] const std::vector<Field>& Fields() const override;
  void Complete(QBProject& project, const Record& record, std::vector<Assignment>& assignments) const override;

 protected:
  [[nodiscard]] Ref<BuildProfiles> Members(const Scope& scope) const override { return scope.project.BuildProfiles; }
  [[nodiscard]] Ref<BuildProfile> Make(const Scope& scope, const std::string& name) const override;
  [[nodiscard]] std::string MemberKey(const BuildProfile& profile) const override { return profile.ID(); }
};

}  // namespace quillbook::cli
