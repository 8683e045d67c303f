// The topic categories of a project.
#pragma once

#include <cstdint>
#include <string_view>

#include "quillbook/frame/MemberCollection.h"
#include "quillbook/topics/TopicCategory.h"

namespace quillbook {

/// A project's categories in order, each under its key. Tells the project of additions and removals unless paused.
class TopicCategories final : public MemberCollection<TopicCategory> {
 public:
  bool PauseEvents = false;

  [[nodiscard]] Ref<quillbook::QBProject> QBProject() const;
  void SetQBProject(const Ref<quillbook::QBProject>& RHS);

  /// The first category of this name, ignoring case; nothing if there is none. Two categories may share a name.
  [[nodiscard]] Ref<TopicCategory> TopicCategoryByName(std::string_view Name) const;
  /// Position from 1 of this very object; 0 if it is no member.
  [[nodiscard]] std::int32_t GetTopicCategoryIndex(const Ref<quillbook::TopicCategory>& TopicCategory) const;

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 protected:
  void MemberAdded(const Ref<TopicCategory>& member, std::string_view key) override;
  void MemberRemoved(const Ref<TopicCategory>& member) override;

 private:
  WeakReference<quillbook::QBProject> mQBProject;
};

}  // namespace quillbook
