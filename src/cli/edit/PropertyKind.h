// quillbook properties
#pragma once

#include "cli/edit/CollectionKind.h"
#include "quillbook/config/ProjectProperties.h"

namespace quillbook::cli {

class PropertyKind final : public CollectionKind<ProjectProperty, ProjectProperties> {
 public:
  [[nodiscard]] const KindInfo& Info() const override;
  [[nodiscard]] const std::vector<Field>& Fields() const override;

 protected:
  [[nodiscard]] Ref<ProjectProperties> Members(const Scope& scope) const override {
    return scope.project.ProjectProperties();
  }
  [[nodiscard]] Ref<ProjectProperty> Make(const Scope& scope, const std::string& name) const override;
  [[nodiscard]] std::string MemberKey(const ProjectProperty& property) const override { return property.ID(); }
};

}  // namespace quillbook::cli
