#include "quillbook/host/NamespaceDef.h"

#include <gtest/gtest.h>

#include "quillbook/base/Failure.h"

namespace quillbook {
namespace {

class NamespaceDefTest : public testing::Test {
 protected:
  NamespaceDefTest() {
    topics->Children()->Add(links);
    project->Children()->Add(topics);
    definitions->Add(project);
    definitions->Add(secondTopics);
  }
  Ref<NamespaceDef> project = New<NamespaceDef>("toy:project");
  Ref<NamespaceDef> topics = New<NamespaceDef>("toy:Topic");
  Ref<NamespaceDef> links = New<NamespaceDef>("toy:link", "TopicLink", "type=blank");
  Ref<NamespaceDef> secondTopics = New<NamespaceDef>("toy:topic");
  Ref<NamespaceDefs> definitions = New<NamespaceDefs>();
};

TEST_F(NamespaceDefTest, Kind_GivesNamespaceAndTypeName) {
  EXPECT_EQ(topics->Namespace(), "toy");
  EXPECT_EQ(topics->Kind(), "toy:Topic");
  EXPECT_EQ(topics->ItemType(), "Topic");
  EXPECT_EQ(links->ItemType(), "TopicLink");
  EXPECT_EQ(links->Filter(), "type=blank");
}

TEST_F(NamespaceDefTest, Find_GivesTheFirstInReadingOrderAtAnyDepth) {
  EXPECT_EQ(definitions->Find("TOY:topic"), topics);
  EXPECT_EQ(definitions->Find("toy:link"), links);
  EXPECT_EQ(definitions->Find("toy"), project);
  EXPECT_FALSE(definitions->Find("toy:nosuch"));
  EXPECT_FALSE(definitions->Find(""));
}

TEST_F(NamespaceDefTest, Matching_GivesAllInReadingOrder) {
  const auto found = definitions->Matching("toy:topic");
  ASSERT_EQ(found->Count(), 2u);
  EXPECT_EQ(found->Item(1), topics);
  EXPECT_EQ(found->Item(2), secondTopics);
  EXPECT_EQ(definitions->Matching("toy")->Count(), 4u);
  EXPECT_EQ(definitions->Matching("toy")->Item(3), links);
  EXPECT_THROW(static_cast<void>(found->Item(3)), Failure);
}

}  // namespace
}  // namespace quillbook
