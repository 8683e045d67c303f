// The topics of a project in their order.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "quillbook/frame/MemberCollection.h"
#include "quillbook/topics/Topic.h"

namespace quillbook {

class TopicIndex;

/// Ordered list of topics. The project files each topic under its `Key`. Tells the project, if it has one and isn't
/// paused, of additions and removals.
class Topics final : public MemberCollection<Topic> {
 public:
  Topics();
  ~Topics() override;

  bool PauseEvents = false;

  /// Nothing for a temporary list, such as the topics of a category.
  [[nodiscard]] Ref<quillbook::QBProject> QBProject() const;
  void SetQBProject(const Ref<quillbook::QBProject>& RHS);

  void Add(const Ref<Topic>& Item, std::string_view Key = {}, KeyOrPosition Before = {}, KeyOrPosition After = {});
  /// The removed topic is kept in `DeletedTopics`.
  void Remove(KeyOrPosition Key);
  /// Position from 1 of this very object, whatever its key; 0 if it is no member.
  [[nodiscard]] std::int32_t GetTopicIndex(const Ref<quillbook::Topic>& Topic) const;

  // Library-internal
  /// Topics removed since the last reset. One that was added again stays there too.
  [[nodiscard]] const Ref<Collection<Ref<Topic>>>& DeletedTopics() const noexcept { return mDeletedTopics; }
  void ResetDeletedTopics();
  /// The first topic in list order whose `Name` equals `name`, ignoring case; nothing if there is none. Costs a hash
  /// lookup, whatever was added, removed or renamed before.
  [[nodiscard]] Ref<Topic> FirstByName(std::string_view name) const;
  /// The same for `QualifiedName`.
  [[nodiscard]] Ref<Topic> FirstByQualifiedName(std::string_view name) const;

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 private:
  TopicIndex& Index() const;

  WeakReference<quillbook::QBProject> mQBProject;
  Ref<Collection<Ref<Topic>>> mDeletedTopics;
  mutable std::unique_ptr<TopicIndex> mIndex;  ///< made by the first question that needs it
};

}  // namespace quillbook
