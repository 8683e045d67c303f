#include "quillbook/topics/TopicCategories.h"

#include "quillbook/base/Text.h"
#include "quillbook/project/QBProject.h"

namespace quillbook {

Ref<quillbook::QBProject> TopicCategories::QBProject() const {
  return mQBProject.Target();
}

void TopicCategories::SetQBProject(const Ref<quillbook::QBProject>& RHS) {
  mQBProject.SetTarget(RHS);
}

void TopicCategories::MemberAdded(const Ref<TopicCategory>& member, std::string_view) {
  const auto project = QBProject();
  if (project && !PauseEvents) project->FireTopicCategoryAdded(member);
}

void TopicCategories::MemberRemoved(const Ref<TopicCategory>& member) {
  const auto project = QBProject();
  if (project && !PauseEvents) project->FireTopicCategoryRemoved(member);
}

Ref<TopicCategory> TopicCategories::TopicCategoryByName(std::string_view Name) const {
  return Procedure(*this, "TopicCategoryByName", [&](auto& p) { p("Name", Name); }).Run([&]() -> Ref<TopicCategory> {
    for (const auto& category : mCol)
      if (EqualsIgnoringCase(category->Name(), Name)) return category;
    return {};
  });
}

std::int32_t TopicCategories::GetTopicCategoryIndex(const Ref<quillbook::TopicCategory>& TopicCategory) const {
  return static_cast<std::int32_t>(PositionOfObject(TopicCategory.get()));
}

const TypeInfo& TopicCategories::StaticType() {
  static const TypeInfo type = Describe<TopicCategories>("TopicCategories")
                                   .Field<&TopicCategories::mQBProject>("mQBProject")
                                   .Public<&TopicCategories::PauseEvents>("PauseEvents")
                                   .Field<&TopicCategories::mCol>("mCol")
                                   .Property<&TopicCategories::QBProject, &TopicCategories::SetQBProject>("QBProject")
                                   .ReadOnly<&TopicCategories::Count>("Count")
                                   .Done();
  return type;
}

}  // namespace quillbook
