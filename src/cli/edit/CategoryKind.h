// quillbook categories
#pragma once

#include "cli/edit/CollectionKind.h"
#include "quillbook/topics/TopicCategories.h"

namespace quillbook::cli {

class CategoryKind final : public CollectionKind<TopicCategory, TopicCategories> {
 public:
  [[nodiscard]] const KindInfo& Info() const override;
  [[nodiscard]] const std::vector<Field>& Fields() const override;

 protected:
  [[nodiscard]] Ref<TopicCategories> Members(const Scope& scope) const override {
    return scope.project.TopicCategories;
  }
  [[nodiscard]] Ref<TopicCategory> Make(const Scope& scope, const std::string& name) const override;
  [[nodiscard]] std::string MemberKey(const TopicCategory& category) const override { return category.Key; }
};

}  // namespace quillbook::cli
