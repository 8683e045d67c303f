// quillbook variables
#pragma once

#include "cli/edit/CollectionKind.h"
#include "quillbook/host/VariableValue.h"

namespace quillbook::cli {

/// The values that a project gives to the variables of its template.
class VariableKind final : public CollectionKind<VariableValue, VariableValues> {
 public:
  [[nodiscard]] const KindInfo& Info() const override;
  [[nodiscard]] const std::vector<Field>& Fields() const override;
  void Verify(QBProject& project, const Record& record) const override;

 protected:
  [[nodiscard]] Ref<VariableValues> Members(const Scope& scope) const override { return scope.project.VariableValues; }
  [[nodiscard]] Ref<VariableValue> Make(const Scope& scope, const std::string& name) const override;
  [[nodiscard]] std::string MemberKey(const VariableValue& variable) const override { return variable.Name; }
};

}  // namespace quillbook::cli
