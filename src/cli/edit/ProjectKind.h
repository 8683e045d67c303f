// quillbook project
#pragma once

#include "cli/edit/RecordKind.h"

namespace quillbook::cli {

/// The settings of the project itself.
class ProjectKind final : public RecordKind {
 public:
  [[nodiscard]] const KindInfo& Info() const override;
  [[nodiscard]] const std::vector<Field>& Fields() const override;
  [[nodiscard]] std::vector<Record> All(const Scope& scope) const override;
  void Complete(QBProject& project, const Record& record, std::vector<Assignment>& assignments) const override;
  [[nodiscard]] std::string Warning(QBProject& project, const Record& record) const override;
  [[nodiscard]] std::string Describe(QBProject& project, const Record& record) const override;
};

}  // namespace quillbook::cli
