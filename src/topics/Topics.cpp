#include "quillbook/topics/Topics.h"

#include "quillbook/project/QBProject.h"
#include "topics/TopicIndex.h"

namespace quillbook {

Topics::Topics() : mDeletedTopics(New<Collection<Ref<Topic>>>()) {}

Topics::~Topics() = default;

Ref<quillbook::QBProject> Topics::QBProject() const {
  return mQBProject.Target();
}

void Topics::SetQBProject(const Ref<quillbook::QBProject>& RHS) {
  mQBProject.SetTarget(RHS);
}

void Topics::Add(const Ref<Topic>& Item, std::string_view Key, KeyOrPosition Before, KeyOrPosition After) {
  Procedure(*this, "Add", [&](auto& p) {
    p("Item", Item);
    p("Key", Key);
    p("Before", Before.ToVariant());
    p("After", After.ToVariant());
  }).Run([&] {
    const auto member = AddMember(Item, Key, Before, After);
    if (mIndex) mIndex->Add(member);
    // Removed topics are kept without keys, so a topic that comes back stays among them.
    const auto project = QBProject();
    if (project && !PauseEvents) project->FireTopicAdded(Item);
  });
}

void Topics::Remove(KeyOrPosition Key) {
  Procedure(*this, "Remove", [&](auto& p) { p("Key", Key.ToVariant()); }).Run([&] {
    const auto topic = Item(Key);
    if (const auto member = mCol.HandleOf(Key)) {
      mDeletedTopics->Add(topic);
      if (mIndex) mIndex->Remove(member);
    }
    RemoveMember(Key);
    const auto project = QBProject();
    if (project && !PauseEvents) project->FireTopicRemoved(topic);
  });
}

std::int32_t Topics::GetTopicIndex(const Ref<quillbook::Topic>& Topic) const {
  return Procedure(*this, "GetTopicIndex", [&](auto& p) { p("Topic", Topic); }).Run([&] {
    const auto member = Topic ? Index().FirstOf(*Topic) : TopicIndex::Handle();
    return member ? static_cast<std::int32_t>(mCol.PositionOf(member)) : 0;
  });
}

void Topics::ResetDeletedTopics() {
  mDeletedTopics = New<Collection<Ref<Topic>>>();
}

Ref<Topic> Topics::FirstByName(std::string_view name) const {
  const auto member = Index().FirstByName(name);
  return member ? *member : nullptr;
}

Ref<Topic> Topics::FirstByQualifiedName(std::string_view name) const {
  const auto member = Index().FirstByQualifiedName(name);
  return member ? *member : nullptr;
}

TopicIndex& Topics::Index() const {
  if (!mIndex) mIndex = std::make_unique<TopicIndex>(mCol);
  return *mIndex;
}

const TypeInfo& Topics::StaticType() {
  static const TypeInfo type = Describe<Topics>("Topics")
                                   .Field<&Topics::mQBProject>("mQBProject")
                                   .Public<&Topics::PauseEvents>("PauseEvents")
                                   .Field<&Topics::mDeletedTopics>("mDeletedTopics")
                                   .Field<&Topics::mCol>("mCol")
                                   .Property<&Topics::QBProject, &Topics::SetQBProject>("QBProject")
                                   .ReadOnly<&Topics::Count>("Count")
                                   .Done();
  return type;
}

}  // namespace quillbook
