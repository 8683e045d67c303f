#include "quillbook/host/TOCDefinition.h"
#include "quillbook/structure/QBNode.h"
#include "quillbook/structure/QBNodes.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/Topics.h"
#include "support/ProjectTest.h"

namespace quillbook {
namespace {

class CreateNodeDefTest : public support::ProjectTest {
 protected:
  void SetUp() override {
    ProjectTest::SetUp();
    connection = project->Events.BuildMessage.Connect([this](std::string_view message, BuildMessageLevel level) {
      messages.emplace_back(message);
      EXPECT_EQ(level, BuildMessageLevel::bmWarning);
    });
  }
  void TearDown() override {
    connection = {};
    contents = {};
    ProjectTest::TearDown();
  }

  Ref<Topic> AddTopic(std::string_view name, std::string_view title = {}) {
    auto topic = project->NewTopic();
    topic->SetName(name);
    topic->SetTitle(title.empty() ? name : title);
    project->Topics->Add(topic, topic->Key);
    return topic;
  }
  Ref<QBNode> AddNode(const Ref<QBNode>& parent = {}) {
    return (parent ? parent->ChildNodes : project->QBNodes)->NewNode(parent);
  }
  Ref<QBNode> AddNode(const Ref<Topic>& topic, const Ref<QBNode>& parent = {}) {
    auto node = AddNode(parent);
    node->SetQBNodeType(ntSingleTopic);
    node->SetTopicID(topic->Key);
    return node;
  }
  Ref<QBNode> AddHeading(std::string_view caption, const Ref<QBNode>& parent = {}) {
    auto node = AddNode(parent);
    node->SetCaptionText(caption);
    return node;
  }
  Ref<QBNode> AddGlossary(std::string_view url) {
    auto node = AddNode();
    node->SetStandardURL(url);
    return node;
  }
  Ref<NodeDef> Make(const Ref<QBNode>& node) { return node->CreateNodeDef({}, contents); }
  void SetGlossaryTitle(std::string_view title) {
    project->VariableValues->Add(New<VariableValue>("GlossaryTitle", std::string(title)), "GlossaryTitle");
  }
  /// The list as "caption>url", children after "/", entries with "," between.
  std::string List() const {
    std::string text;
    for (const auto& node : *contents->NodeDefs()) {
      if (!text.empty()) text += ",";
      for (auto parent = node->Parent(); parent; parent = parent->Parent()) text += "/";
      text += node->Caption + (node->URL.empty() ? "" : ">" + node->URL);
    }
    return text;
  }

  Ref<TOCDefinition> contents = New<TOCDefinition>();
  std::vector<std::string> messages;
  Connection connection;
};

TEST_F(CreateNodeDefTest, GivesTheNodeThatStandsInTheDefinition) {
  const auto made = Make(AddHeading("Part"));
  ASSERT_TRUE(made);
  EXPECT_EQ(contents->NodeDefs()->Item(made->Key()), made);
  EXPECT_EQ(made->TOCDefinition(), contents);
  EXPECT_FALSE(made->Parent());
  EXPECT_EQ(made->NodeKind, NodeDef::Entry);
  EXPECT_TRUE(made->Visible);
}

TEST_F(CreateNodeDefTest, Caption_IsTheTopicsContentsTitle_ByDefault) {
  const auto topic = AddTopic("start", "Title");
  topic->SetContentsTitle("In the contents");
  const auto node = AddNode(topic);
  EXPECT_EQ(Make(node)->Caption, "In the contents");
  node->SetCaptionType(ctSpecific);
  node->SetCaptionText("Own");
  EXPECT_EQ(Make(node)->Caption, "Own");
}

TEST_F(CreateNodeDefTest, Caption_IsTheGlossaryTitle_ForTheDefaultGlossaryNode) {
  const auto node = AddGlossary("Glossary.html");
  EXPECT_EQ(Make(node)->Caption, "Glossary");
  SetGlossaryTitle("Terms");
  EXPECT_EQ(Make(node)->Caption, "Terms");
  EXPECT_EQ(Make(node)->URL, "Glossary.html");
}

TEST_F(CreateNodeDefTest, Caption_StaysSpecific_OnAGlossaryNode) {
  SetGlossaryTitle("Terms");
  const auto node = AddHeading("My words");
  node->SetStandardURL("Glossary.html");
  EXPECT_EQ(Make(node)->Caption, "My words");
}

TEST_F(CreateNodeDefTest, Caption_IsEmpty_ForAGlossaryAddressInAnotherCase) {
  const auto node = AddGlossary("glossary.html");
  ASSERT_EQ(node->CaptionType(), ctDefault);
  EXPECT_EQ(Make(node)->Caption, "");
  EXPECT_EQ(Make(node)->URL, "glossary.html");
}

TEST_F(CreateNodeDefTest, Icon_CountsFromZero_AndMinusOneIsTheViewersOwn) {
  const auto node = AddHeading("Part");
  EXPECT_FALSE(Make(node)->CustomIcon);
  EXPECT_EQ(Make(node)->IconIndex, 0);
  node->SetIcon(1);
  EXPECT_TRUE(Make(node)->CustomIcon);
  EXPECT_EQ(Make(node)->IconIndex, 0);
  node->SetIcon(0);
  EXPECT_TRUE(Make(node)->CustomIcon);
  EXPECT_EQ(Make(node)->IconIndex, -1);
}

TEST_F(CreateNodeDefTest, Target_FollowsTheType) {
  Make(AddNode(AddTopic("a: b")));
  const auto standard = AddHeading("Web");
  standard->SetStandardURL("https://example.org/");
  Make(standard);
  const auto sub = AddHeading("Sub");
  sub->SetStandardURL("left.html");
  sub->SetQBNodeType(ntSubContents);
  Make(sub);
  EXPECT_EQ(List(), "a: b>a- b.html,Web>https://example.org/,Sub");
}

TEST_F(CreateNodeDefTest, CompanionContents_AreTheirKindWithoutTarget) {
  const auto node = AddHeading("Reference");
  node->SetStandardURL("left.html");
  node->SetQBNodeType(ntMVContents);
  const auto made = Make(node);
  EXPECT_EQ(made->NodeKind, NodeDef::CompanionContents);
  EXPECT_EQ(made->URL, "");
}

TEST_F(CreateNodeDefTest, NodeOfALostTopic_StaysWithItsChildren_WithoutMessage) {
  const auto node = AddHeading("Gone");
  node->SetQBNodeType(ntSingleTopic);
  node->SetCaptionType(ctSpecific);
  node->SetTopicID("{nothing}");
  AddHeading("Child", node);
  Make(node);
  EXPECT_EQ(List(), "Gone,/Child");
  EXPECT_TRUE(messages.empty());
}

TEST_F(CreateNodeDefTest, ParentsStandBeforeTheirChildren) {
  const auto part = AddHeading("Part");
  const auto chapter = AddHeading("Chapter", part);
  AddHeading("Page 1", chapter);
  AddHeading("Page 2", chapter);
  AddHeading("Chapter 2", part);
  Make(part);
  EXPECT_EQ(List(), "Part,/Chapter,//Page 1,//Page 2,/Chapter 2");
}

TEST_F(CreateNodeDefTest, ExcludedTopic_TakesItsBranchAlone_WithOneMessage) {
  const auto part = AddNode(AddTopic("part"));
  AddNode(AddTopic("before"), part);
  const auto hidden = AddTopic("hidden", "Hidden one");
  hidden->SetIncludeInHelpFile(false);
  const auto branch = AddNode(hidden, part);
  AddNode(hidden, branch);  // would have a message of its own
  AddHeading("Child", branch);
  AddNode(AddTopic("behind"), part);
  EXPECT_TRUE(Make(part));
  EXPECT_EQ(List(), "part>part.html,/before>before.html,/behind>behind.html");
  EXPECT_EQ(messages, std::vector<std::string>{
                          "Table of Contents node 'Hidden one' points to a Topic that is not included in the generated "
                          "output. The node and any child nodes will be excluded from the generated Table of "
                          "Contents."});
}

TEST_F(CreateNodeDefTest, ExcludedTopLevelNode_GivesNothing) {
  const auto hidden = AddTopic("hidden");
  hidden->SetIncludeInHelpFile(false);
  EXPECT_FALSE(Make(AddNode(hidden)));
  EXPECT_TRUE(contents->NodeDefs()->IsEmpty());
}

TEST_F(CreateNodeDefTest, OtherNodesOfAnExcludedTopic_Stay) {
  const auto hidden = AddTopic("hidden", "Hidden");
  hidden->SetIncludeInHelpFile(false);
  const auto node = AddNode(hidden);
  node->SetQBNodeType(ntSubContents);  // only a topic's own entry is left out
  Make(node);
  EXPECT_EQ(List(), "Hidden");
}

TEST_F(CreateNodeDefTest, DeepTree_NeedsNoDeepStack) {
  const auto top = AddHeading("0");
  auto node = top;
  constexpr std::size_t depth = 100000;
  for (std::size_t i = 1; i < depth; ++i) {
    const auto child = New<QBNode>();
    child->SetQBNodes(node->ChildNodes);
    node->ChildNodes->Add(child);
    node = child;
  }
  Make(top);
  EXPECT_EQ(contents->NodeDefs()->Count(), depth);
  // Takes the tree apart from below, as its own owner would.
  node = {};
}

}  // namespace
}  // namespace quillbook
