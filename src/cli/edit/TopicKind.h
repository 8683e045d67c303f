// quillbook topics
#pragma once

#include "cli/edit/CollectionKind.h"
#include "quillbook/topics/Topics.h"

namespace quillbook::cli {

class TopicKind final : public CollectionKind<Topic, Topics> {
 public:
  [[nodiscard]] const KindInfo& Info() const override;
  [[nodiscard]] const std::vector<Field>& Fields() const override;
  /// Asks what shall become of contents nodes that show the topic.
  void Remove(const Scope& scope, const Record& record) const override;
  void Move(const Scope& scope, const Record& record, const Place& place) const override;
  void Complete(QBProject& project, const Record& record, std::vector<Assignment>& assignments) const override;
  void Verify(QBProject& project, const Record& record) const override;

 protected:
  [[nodiscard]] Ref<Topics> Members(const Scope& scope) const override { return scope.project.Topics; }
  [[nodiscard]] Ref<Topic> Make(const Scope& scope, const std::string& name) const override;
  [[nodiscard]] std::string MemberKey(const Topic& topic) const override { return topic.Key; }
};

}  // namespace quillbook::cli
