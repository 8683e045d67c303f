#include "cli/edit/CategoryKind.h"

namespace quillbook::cli {

const KindInfo& CategoryKind::Info() const {
  static const KindInfo info{"categories", "category", "List, show and edit categories of topics",
                             "name or key of a category"};
  return info;
}

const std::vector<Field>& CategoryKind::Fields() const {
  static const std::vector<Field> fields = {
      KeyField<TopicCategory>([](const TopicCategory& category) -> const std::string& { return category.Key; }),
      TextField("name", "Name", &TopicCategory::Name, &TopicCategory::SetName).Listed().Required(),
      BooleanField("auto-index", "Index entry, with the category's topics below", &TopicCategory::AutoIndexEntries,
                   &TopicCategory::SetAutoIndexEntries)
          .Listed(),
  };
  return fields;
}

Ref<TopicCategory> CategoryKind::Make(const Scope& scope, const std::string& name) const {
  auto category = scope.project.NewTopicCategory();
  category->SetName(name);
  return category;
}

}  // namespace quillbook::cli
