// quillbook links
#pragma once

#include "cli/edit/RecordKind.h"
#include "quillbook/topics/TopicLinks.h"

namespace quillbook::cli {

/// The related links of one topic, or of all. They have neither name nor key, only a place.
class LinkKind final : public RecordKind {
 public:
  [[nodiscard]] const KindInfo& Info() const override;
  [[nodiscard]] const std::vector<Field>& Fields() const override;
  [[nodiscard]] std::vector<Record> All(const Scope& scope) const override;
  [[nodiscard]] Record Add(const Scope& scope, const std::string& name, const Place& place) const override;
  void Remove(const Scope& scope, const Record& record) const override;
  void Move(const Scope& scope, const Record& record, const Place& place) const override;
  void Complete(QBProject& project, const Record& record, std::vector<Assignment>& assignments) const override;
  [[nodiscard]] Record Refreshed(const Scope& scope, const Record& record) const override;
  [[nodiscard]] std::string Describe(QBProject& project, const Record& record) const override;
};

}  // namespace quillbook::cli
