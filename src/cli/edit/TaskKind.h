// quillbook tasks
#pragma once

#include "cli/edit/CollectionKind.h"
#include "quillbook/structure/Tasks.h"

namespace quillbook::cli {

class TaskKind final : public CollectionKind<Task, Tasks> {
 public:
  [[nodiscard]] const KindInfo& Info() const override;
  [[nodiscard]] const std::vector<Field>& Fields() const override;

 protected:
  [[nodiscard]] Ref<Tasks> Members(const Scope& scope) const override { return scope.project.Tasks; }
  [[nodiscard]] Ref<Task> Make(const Scope& scope, const std::string& name) const override;
  [[nodiscard]] std::string MemberKey(const Task& task) const override { return task.Key(); }
};

}  // namespace quillbook::cli
