#include "quillbook/topics/Topics.h"

#include <random>

#include "quillbook/base/Text.h"
#include "quillbook/frame/modMain.h"
#include "unit/topics/TopicsFixture.h"

namespace quillbook {
namespace {

class TopicsTest : public TopicsFixture {
 protected:
  static Ref<Topic> Named(std::string_view name) {
    auto topic = New<Topic>();
    topic->SetName(name);
    return topic;
  }
  static std::string Names(const Topics& topics) {
    std::string names;
    for (const auto& topic : topics) names += topic->Name();
    return names;
  }
};

TEST_F(TopicsTest, UnknownKey_GivesNothing_ButCannotBeRemoved) {
  EXPECT_FALSE(project->Topics->Item("nobody"));
  EXPECT_FALSE(project->Topics->Item(1));
  project->Topics->Remove("nobody");
  project->Topics->Remove(1);
  EXPECT_THAT(failures.Take(), ElementsAre("Topics.Remove 5", "Topics.Remove 9"));
  EXPECT_EQ(project->Topics->DeletedTopics()->Count(), 0u);
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(TopicsTest, Key_IsFoundIgnoringCase) {
  const auto topic = New<Topic>();
  project->Topics->Add(topic, "Key");
  EXPECT_EQ(project->Topics->Item("kEY"), topic);
}

TEST_F(TopicsTest, EmptyKey_GivesAMemberFoundByPositionOnly) {
  const auto topic = New<Topic>();
  project->Topics->Add(topic, "");
  EXPECT_FALSE(project->Topics->Item(""));
  EXPECT_EQ(project->Topics->Item(1), topic);
}

TEST_F(TopicsTest, Before_WinsOverAfter) {
  const auto& topics = project->Topics;
  topics->Add(Named("a"), "a");
  topics->Add(Named("b"), "b");
  topics->Add(Named("c"), "c", "a", "b");
  topics->Add(Named("d"), "d", {}, 1);
  topics->Add(Named("e"), "e", 2);
  EXPECT_EQ(Names(*topics), "cedab");
}

TEST_F(TopicsTest, KnownKey_IsReported_AndNobodyIsTold) {
  const auto topic = AddTopic("a");
  project->Topics->Add(Named("b"), topic->Key);
  EXPECT_THAT(failures.Take(), ElementsAre("Topics.Add 457"));
  EXPECT_EQ(project->Topics->Count(), 1u);
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(TopicsTest, AddAndRemove_AreTold) {
  const auto topic = NewTopic("a");
  project->Topics->Add(topic, topic->Key);
  EXPECT_THAT(log, ElementsAre("TopicAdded a", "DirtyStateChanged", "DirtyStateChanged"));
  log.clear();
  project->Topics->Remove(topic->Key);
  EXPECT_THAT(log, ElementsAre("TopicRemoved a", "DirtyStateChanged", "DirtyStateChanged"));
}

TEST_F(TopicsTest, PausedList_TellsNobody_ButKeepsDeletedTopics) {
  project->Topics->PauseEvents = true;
  const auto topic = NewTopic("a");
  project->Topics->Add(topic, topic->Key);
  project->Topics->Remove(topic->Key);
  EXPECT_THAT(log, IsEmpty());
  EXPECT_EQ(project->Topics->DeletedTopics()->Count(), 1u);
}

TEST_F(TopicsTest, TopicRemovedAndAddedAgain_StandsInBothLists) {
  const auto topic = AddTopic("a");
  project->Topics->Remove(topic->Key);
  project->Topics->Add(topic, topic->Key);
  EXPECT_EQ(project->Topics->Item(topic->Key), topic);
  EXPECT_EQ(project->Topics->DeletedTopics()->Item(1), topic);
  project->Topics->ResetDeletedTopics();
  EXPECT_EQ(project->Topics->DeletedTopics()->Count(), 0u);
}

TEST_F(TopicsTest, GetTopicIndex_GoesByIdentity) {
  const auto& topics = project->Topics;
  EXPECT_EQ(topics->GetTopicIndex(NewTopic("x")), 0);
  const auto a = AddTopic("a");
  const auto b = AddTopic("b");
  EXPECT_EQ(topics->GetTopicIndex(a), 1);
  EXPECT_EQ(topics->GetTopicIndex(b), 2);
  EXPECT_EQ(topics->GetTopicIndex(a->Clone()), 0);
  EXPECT_EQ(topics->GetTopicIndex({}), 0);
  topics->Remove(1);
  EXPECT_EQ(topics->GetTopicIndex(a), 0);
  EXPECT_EQ(topics->GetTopicIndex(b), 1);
  topics->Add(b, "second entry", 1);
  topics->Add(a, "a", 1);
  EXPECT_EQ(topics->GetTopicIndex(b), 2) << "the first of two entries";
}

TEST_F(TopicsTest, LookUpByName_FollowsRenames) {
  const auto topic = AddTopic("a:b");
  EXPECT_EQ(project->TopicByName("A:B"), topic);
  EXPECT_EQ(project->TopicByQualifiedName("a-B"), topic);
  topic->SetName("c");
  EXPECT_FALSE(project->TopicByName("a:b"));
  EXPECT_FALSE(project->TopicByQualifiedName("a-b"));
  EXPECT_EQ(project->TopicByName("C"), topic);
  topic->SetPauseEvents(true);
  topic->SetName("d");
  EXPECT_EQ(project->TopicByQualifiedName("D"), topic) << "also while the topic is paused";
  const auto record = Parse("<Topic Name='e'/>");
  topic->Load(record.DocumentElement());
  EXPECT_EQ(project->TopicByName("e"), topic);
}

TEST_F(TopicsTest, RenameOfATopicOfAnotherProject_IsFollowedToo) {
  const auto stranger = Named("a");
  project->Topics->Add(stranger, "key");
  EXPECT_EQ(project->TopicByName("a"), stranger);
  stranger->SetName("b");
  EXPECT_EQ(project->TopicByName("b"), stranger);
  project->Topics = New<Topics>();
  stranger->SetName("c");
  EXPECT_FALSE(project->TopicByName("c"));
}

/// Answers of plain walks, to hold the index to.
Ref<Topic> FirstWithName(const Topics& topics, std::string_view name) {
  for (const auto& topic : topics)
    if (EqualsIgnoringCase(topic->Name(), name)) return topic;
  return {};
}
Ref<Topic> FirstWithQualifiedName(const Topics& topics, std::string_view name) {
  for (const auto& topic : topics)
    if (EqualsIgnoringCase(topic->QualifiedName(), name)) return topic;
  return {};
}
std::int32_t IndexOf(const Topics& topics, const Topic* which) {
  std::int32_t position = 0;
  for (const auto& topic : topics) {
    ++position;
    if (topic.get() == which) return position;
  }
  return 0;
}

TEST_F(TopicsTest, LookUps_AgreeWithAWalk_OverRandomChanges) {
  std::mt19937 random(3);
  const auto pick = [&](std::size_t below) { return random() % below; };
  // Few names and two cases, so that most names are shared; ":" and "\" differ but give one qualified name.
  const auto anyName = [&] {
    auto name = std::string(1, "abAB"[pick(4)]);
    if (pick(2)) name += ":/\\-"[pick(4)];
    return name + std::to_string(pick(6));
  };
  const auto topics = New<Topics>();
  const auto other = New<Topics>();
  std::vector<Ref<Topic>> pool;
  for (int i = 0; i < 60; ++i) {
    pool.push_back(Named(anyName()));
    other->Add(pool.back());
  }
  for (int step = 0; step < 20'000; ++step) {
    const auto topic = pool[pick(pool.size())];
    switch (pick(4)) {
      case 0:
        if (topics->Count() < 200)
          topics->Add(topic, {}, topics->Count() ? KeyOrPosition(pick(topics->Count()) + 1) : KeyOrPosition());
        break;
      case 1:
        if (topics->Count()) topics->Remove(pick(topics->Count()) + 1);
        break;
      default: topic->SetName(anyName());
    }
    if (step % 3) continue;
    const auto name = anyName();
    ASSERT_EQ(topics->FirstByName(name), FirstWithName(*topics, name)) << step;
    ASSERT_EQ(topics->FirstByQualifiedName(name), FirstWithQualifiedName(*topics, name)) << step;
    ASSERT_EQ(other->FirstByName(name), FirstWithName(*other, name)) << step;
    ASSERT_EQ(topics->GetTopicIndex(topic), IndexOf(*topics, topic.get())) << step;
  }
}

TEST_F(TopicsTest, ThousandsOfTopicsOfOneName_StayQuick) {
  // Quadratic work over these counts would take minutes and run into the time limit of the test.
  constexpr int Count = 50'000;
  const auto topics = New<Topics>();
  std::vector<Ref<Topic>> all;
  for (int i = 0; i < Count; ++i) {
    all.push_back(Named("same"));
    topics->Add(all.back());
  }
  for (int i = 0; i < Count - 1; ++i) {
    ASSERT_EQ(topics->FirstByName("Same"), all[i]);
    all[i]->SetName("other");
    ASSERT_EQ(topics->FirstByName("same"), all[i + 1]);
  }
  EXPECT_EQ(topics->FirstByQualifiedName("OTHER"), all[0]);
}

TEST_F(TopicsTest, Index_OutlivesNeitherListNorTopics) {
  const auto topic = Named("a");
  {
    const auto topics = New<Topics>();
    topics->Add(topic);
    EXPECT_EQ(topics->FirstByName("a"), topic);
  }
  topic->SetName("b");
  EXPECT_EQ(topic->Name(), "b");
}

}  // namespace
}  // namespace quillbook
