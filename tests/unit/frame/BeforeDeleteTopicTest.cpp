#include <gtest/gtest.h>

#include "quillbook/frame/modMain.h"
#include "quillbook/structure/QBNode.h"
#include "quillbook/structure/QBNodes.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/TopicLink.h"
#include "quillbook/topics/TopicLinks.h"
#include "quillbook/topics/Topics.h"
#include "support/ProjectTest.h"

namespace quillbook {
namespace {

/// A project whose topic "doomed" has two nodes, one below the other, and links to it from another topic.
class BeforeDeleteTopicTest : public support::ProjectTest {
 protected:
  void SetUp() override {
    ProjectTest::SetUp();
    doomed = AddTopic("doomed");
    other = AddTopic("other");
    outer = AddNode({}, doomed);
    inner = AddNode(outer, doomed);
    AddNode({}, other);
  }
  void TearDown() override {
    doomed = other = nullptr;
    outer = inner = nullptr;
    box = nullptr;
    ProjectTest::TearDown();
  }

  Ref<Topic> AddTopic(std::string_view name) {
    auto topic = project->NewTopic();
    topic->SetName(name);
    topic->SetTitle("Title of " + std::string(name));
    project->Topics->Add(topic, topic->Key);
    return topic;
  }
  Ref<QBNode> AddNode(const Ref<QBNode>& parent, const Ref<Topic>& topic) {
    auto node = (parent ? parent->ChildNodes : project->QBNodes)->NewNode(parent);
    node->SetQBNodeType(ntSingleTopic);
    node->SetTopicID(topic->Key);
    return node;
  }
  void Call(std::deque<int> answers, bool tickCheckBox = false) {
    box = std::make_shared<support::ScriptedMessageBox>(std::move(answers));
    box->tickCheckBox = tickCheckBox;
    const PlatformOverride<MessageBox> scripted{std::shared_ptr<MessageBox>(box)};
    modMain::BeforeDeleteTopic(doomed, cancel, noPrompt);
  }

  Ref<Topic> doomed, other;
  Ref<QBNode> outer, inner;
  std::shared_ptr<support::ScriptedMessageBox> box;
  bool cancel = false;
  bool noPrompt = false;
};

TEST_F(BeforeDeleteTopicTest, Cancel_LeavesEverythingAsItWas) {
  other->NewTopicLink(rttTopic, "", "", "", doomed);
  Call({MessageBox::Cancel});
  EXPECT_TRUE(cancel);
  EXPECT_FALSE(noPrompt);
  EXPECT_EQ(project->QBNodes->AllNodes()->Count(), 3U);
  EXPECT_EQ(outer->TopicID(), doomed->Key);
  EXPECT_EQ(other->TopicLinks()->Count(), 1U);
}

TEST_F(BeforeDeleteTopicTest, AsksOnce) {
  Call({MessageBox::No});
  EXPECT_TRUE(noPrompt);
  ASSERT_EQ(box->shown.size(), 1U);
  EXPECT_EQ(box->shown[0].Prompt,
            "There are one or more Table of Contents nodes that point to this Topic ('doomed'). Do you want to delete "
            "those too ?");
  EXPECT_EQ(box->shown[0].Buttons, 35);
  EXPECT_EQ(box->shown[0].Title, "Remove TOC Entries");
}

TEST_F(BeforeDeleteTopicTest, Yes_RemovesTheNodesFromTheirParents) {
  auto* const bystander = AddNode(outer, other).get();
  Call({MessageBox::Yes});
  EXPECT_FALSE(cancel);
  EXPECT_EQ(project->QBNodes->Count(), 1U) << "the children go with a node";
  EXPECT_EQ(outer->ChildNodes->Count(), 1U);
  EXPECT_EQ(outer->ChildNodes->Item(1).get(), bystander);
}

TEST_F(BeforeDeleteTopicTest, No_KeepsTheNodesAsPlainEntries) {
  Call({MessageBox::No});
  for (const auto& node : {outer, inner}) {
    EXPECT_EQ(node->QBNodeType(), ntStandard);
    EXPECT_EQ(node->CaptionType(), ctSpecific);
    EXPECT_EQ(node->CaptionText(), "Title of doomed");
    EXPECT_EQ(node->TopicID(), "");
  }
}

TEST_F(BeforeDeleteTopicTest, RemovesLinks_ButPassesOverTheSecondOfTwoNeighbours) {
  other->NewTopicLink(rttTopic, "", "first", "", doomed);
  other->NewTopicLink(rttTopic, "", "second", "", doomed);
  other->NewTopicLink(rttTopic, "", "stays", "", other);
  other->NewTopicLink(rttTopic, "", "third", "", doomed);
  doomed->NewTopicLink(rttTopic, "", "own", "", doomed);
  Call({MessageBox::No});
  ASSERT_EQ(other->TopicLinks()->Count(), 2U);
  EXPECT_EQ(other->TopicLinks()->Item(1)->Title(), "second");
  EXPECT_EQ(other->TopicLinks()->Item(2)->Title(), "stays");
  EXPECT_EQ(doomed->TopicLinks()->Count(), 1U) << "the topic's own links stay";
}

TEST_F(BeforeDeleteTopicTest, AsksNothing_WithoutNodes) {
  project->QBNodes->Remove(outer->Key);
  Call({});
  EXPECT_TRUE(box->shown.empty());
  EXPECT_FALSE(noPrompt);
  EXPECT_FALSE(cancel);
}

TEST_F(BeforeDeleteTopicTest, ARememberedYes_RemovesTheNodesWithoutAsking) {
  modMain::SetAppValue("RemoveTOCEntries", "6", "AutoMessages");
  Call({});
  EXPECT_TRUE(box->shown.empty());
  EXPECT_TRUE(noPrompt) << "the user was asked once and for all";
  EXPECT_FALSE(cancel);
  EXPECT_EQ(project->QBNodes->Count(), 1U);
}

TEST_F(BeforeDeleteTopicTest, ARememberedNo_KeepsTheNodesWithoutAsking) {
  modMain::SetAppValue("RemoveTOCEntries", "7", "AutoMessages");
  Call({});
  EXPECT_TRUE(box->shown.empty());
  EXPECT_TRUE(noPrompt);
  EXPECT_EQ(outer->QBNodeType(), ntStandard);
}

TEST_F(BeforeDeleteTopicTest, ATickedAnswer_IsRemembered_ButCancelIsNot) {
  Call({MessageBox::Cancel}, true);
  EXPECT_TRUE(cancel);
  EXPECT_EQ(modMain::GetAppValue("RemoveTOCEntries", "", "AutoMessages"), "");
  cancel = false;
  Call({MessageBox::No}, true);
  EXPECT_EQ(box->shown.at(0).CheckBoxCaption, "Do this automatically next time");
  EXPECT_EQ(modMain::GetAppValue("RemoveTOCEntries", "", "AutoMessages"), "7");
}

TEST_F(BeforeDeleteTopicTest, FailsForNoTopic) {
  bool ignored = false;
  modMain::BeforeDeleteTopic({}, ignored, ignored);
  EXPECT_EQ(failures.Take(), Failures({"modMain.BeforeDeleteTopic 91"}));
}

}  // namespace
}  // namespace quillbook
