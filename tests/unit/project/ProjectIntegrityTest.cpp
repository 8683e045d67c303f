#include "project/ProjectIntegrity.h"

#include <gtest/gtest.h>

#include "quillbook/structure/GlossaryItems.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/Topics.h"
#include "structure/NodeWalk.h"
#include "support/ProjectTest.h"

namespace quillbook {
namespace {

class ProjectIntegrityTest : public support::ProjectTest {
 protected:
  Ref<Topic> AddTopic() {
    auto topic = project->NewTopic();
    project->Topics->Add(topic, topic->Key);
    return topic;
  }
};

TEST_F(ProjectIntegrityTest, SoundProjects_HaveNoFault) {
  EXPECT_EQ(FindIntegrityFault(*project), "");
  AddTopic();
  const auto node = project->QBNodes->NewNode();
  node->ChildNodes->NewNode(node);
  EXPECT_EQ(FindIntegrityFault(*project), "");
}

TEST_F(ProjectIntegrityTest, AStrayParent_IsFound) {
  const auto topic = AddTopic();
  topic->SetQBProject({});
  EXPECT_EQ(FindIntegrityFault(*project), "a member of Topics has another project");
}

TEST_F(ProjectIntegrityTest, AChangedKey_IsFound) {
  AddTopic()->Key = "{other}";
  EXPECT_EQ(FindIntegrityFault(*project), "Topics doesn't find the key {other}");
}

TEST_F(ProjectIntegrityTest, AForeignCollection_IsFound) {
  project->GlossaryItems()->SetQBProject({});
  EXPECT_EQ(FindIntegrityFault(*project), "GlossaryItems belongs to another project");
}

TEST_F(ProjectIntegrityTest, AMisplacedNode_IsFound) {
  const auto node = project->QBNodes->NewNode();
  const auto child = node->ChildNodes->NewNode();
  child->Key = "{child}";
  EXPECT_EQ(FindIntegrityFault(*project), "the node {child} doesn't know its parent");
}

TEST_F(ProjectIntegrityTest, AWalkGoesInTheOrderOfTheContents) {
  const auto a = project->QBNodes->NewNode();
  const auto b = a->ChildNodes->NewNode(a);
  const auto c = b->ChildNodes->NewNode(b);
  const auto d = a->ChildNodes->NewNode(a);
  const auto e = project->QBNodes->NewNode();
  std::vector<Ref<QBNode>> walked;
  ForEachNode(*project->QBNodes, [&](const Ref<QBNode>& node) { walked.push_back(node); });
  EXPECT_EQ(walked, std::vector<Ref<QBNode>>({a, b, c, d, e}));
}

}  // namespace
}  // namespace quillbook
