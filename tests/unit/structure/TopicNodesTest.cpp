// Nodes that name a topic, while topics and nodes come and go.
#include <algorithm>
#include <functional>
#include <random>

#include "quillbook/structure/QBNodes.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/Topics.h"
#include "support/ProjectLog.h"
#include "support/ProjectTest.h"

namespace quillbook {
namespace {

class TopicNodesTest : public support::ProjectTest {
 protected:
  Ref<Topic> AddTopic(const std::string& key) {
    const auto topic = project->NewTopic();
    topic->Key = key;
    topic->SetTitle("Title of " + key);
    project->Topics->Add(topic, key);
    return topic;
  }
  static Ref<QBNode> NodeFor(const Ref<QBNodes>& level, const std::string& topicID) {
    const auto node = level->NewNode();
    node->SetQBNodeType(ntSingleTopic);
    node->SetTopicID(topicID);
    return node;
  }
};

TEST_F(TopicNodesTest, ARemovedTopic_LeavesItsNodesAsPlainCaptions) {
  const auto topic = AddTopic("t");
  AddTopic("other");
  const auto parent = NodeFor(project->QBNodes, "other");
  const auto node = NodeFor(parent->ChildNodes, "t");
  const auto link = project->QBNodes->NewNode();
  link->SetTopicID("t");  // names the topic, but is of another type
  support::ProjectLog log(project);
  project->Topics->Remove("t");
  EXPECT_EQ(node->QBNodeType(), ntStandard);
  EXPECT_EQ(node->CaptionText(), topic->ContentsTitle());
  EXPECT_EQ(node->CaptionText(), "Title of t");
  EXPECT_EQ(node->CaptionType(), ctSpecific);
  EXPECT_EQ(node->TopicID(), "");
  EXPECT_EQ(link->TopicID(), "t");
  EXPECT_EQ(parent->QBNodeType(), ntSingleTopic);
  EXPECT_TRUE(log.Take().starts_with("TopicRemoved QBNodeChanged"));
}

TEST_F(TopicNodesTest, EveryTopicRemovedOneByOne_IsFollowedByItsNodes) {
  constexpr int Count = 5'000;
  std::vector<Ref<QBNode>> nodes;
  auto level = project->QBNodes;
  for (int i = 0; i < Count; ++i) {
    AddTopic("t" + std::to_string(i));
    nodes.push_back(NodeFor(level, "T" + std::to_string(i)));
    if (i % 100 == 0) level = nodes.back()->ChildNodes;
  }
  while (project->Topics->Count() > 0) project->Topics->Remove(1);
  EXPECT_TRUE(std::all_of(nodes.begin(), nodes.end(), [](auto& node) { return node->QBNodeType() == ntStandard; }));
}

TEST_F(TopicNodesTest, ANodeThatComesBetweenTwoRemovals_IsSeen) {
  for (const auto* key : {"a", "b", "c", "d"}) AddTopic(key);
  NodeFor(project->QBNodes, "a");
  NodeFor(project->QBNodes, "b");
  project->Topics->Remove("a");
  project->Topics->Remove("b");
  const auto late = NodeFor(project->QBNodes, "c");
  project->Topics->Remove("c");
  EXPECT_EQ(late->QBNodeType(), ntStandard);
  EXPECT_EQ(late->CaptionText(), "Title of c");
}

TEST_F(TopicNodesTest, NodesNaming_AgreesWithAWalk_OverRandomOperations) {
  std::mt19937 random(3);
  const auto pick = [&](std::size_t below) { return std::uniform_int_distribution<std::size_t>(0, below - 1)(random); };
  const auto topicID = [&] { return std::string(1, "aAbBcC"[pick(6)]); };
  const auto top = project->QBNodes;
  std::vector<Ref<QBNode>> removed;
  for (int step = 0; step < 2'500; ++step) {
    auto level = top;
    while (level->Count() > 0 && pick(3) != 0) level = level->At(pick(level->Count()) + 1)->ChildNodes;
    const auto action = pick(12);
    const auto any = [&] { return pick(level->Count()) + 1; };
    if (level->Count() == 0 || action == 0) {
      level->NewNode()->SetTopicID(pick(2) ? topicID() : "");
    } else if (action == 1 && top->AllNodes()->Count() > 60) {
      const auto position = any();
      removed.push_back(level->At(position));
      level->Remove(position);
    } else if (action == 2 && !removed.empty()) {
      // Comes back with its subtree, unkeyed and without a link, at any place.
      level->Add(removed.back());
      removed.pop_back();
    } else if (action == 3) {
      level->At(any())->SetTopicID(topicID());
    } else if (action < 6) {
      level->At(any())->SetTopicID("");
    }
    const auto wanted = topicID();
    std::vector<Ref<QBNode>> expected;
    const std::function<void(const QBNodes&)> walk = [&](const QBNodes& nodes) {
      for (const auto& node : nodes) {
        if (!node->TopicID().empty() && (node->TopicID()[0] | 0x20) == (wanted[0] | 0x20)) expected.push_back(node);
        walk(*node->ChildNodes);
      }
    };
    walk(*top);
    ASSERT_EQ(top->NodesNaming(wanted), expected) << step;
  }
}

TEST_F(TopicNodesTest, ASearch_KeepsNoNodeAlive) {
  AddTopic("a");
  auto node = NodeFor(project->QBNodes, "a");
  for (int i = 0; i < 3; ++i) EXPECT_EQ(project->QBNodes->NodesNaming("a").size(), 1u);
  project->QBNodes->Remove(node->Key);
  WeakReference<QBNode> weak;
  weak.SetTarget(node);
  node = nullptr;
  EXPECT_FALSE(weak.Target());
  EXPECT_TRUE(project->QBNodes->NodesNaming("a").empty());
}

}  // namespace
}  // namespace quillbook
