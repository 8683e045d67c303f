// quillbook keywords
#pragma once

#include "cli/edit/CollectionKind.h"
#include "quillbook/topics/TopicKeywords.h"

namespace quillbook::cli {

/// The keywords of one topic, or of all.
class KeywordKind final : public CollectionKind<TopicKeyword, TopicKeywords> {
 public:
  [[nodiscard]] const KindInfo& Info() const override;
  [[nodiscard]] const std::vector<Field>& Fields() const override;
  [[nodiscard]] std::vector<Record> All(const Scope& scope) const override;
  [[nodiscard]] std::string Describe(QBProject& project, const Record& record) const override;

 protected:
  [[nodiscard]] Ref<TopicKeywords> Members(const Scope& scope) const override { return scope.topic->Keywords(); }
  [[nodiscard]] Ref<TopicKeyword> Make(const Scope& scope, const std::string& name) const override;
  [[nodiscard]] std::string MemberKey(const TopicKeyword& keyword) const override { return keyword.ID(); }
};

}  // namespace quillbook::cli
