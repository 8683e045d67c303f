#include "quillbook/structure/QBNode.h"

#include "quillbook/frame/FailureReporter.h"
#include "quillbook/frame/modMain.h"
#include "quillbook/structure/QBNodes.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/Topics.h"
#include "support/ProjectLog.h"
#include "support/ProjectTest.h"

namespace quillbook {
namespace {

/// The library-wide key list, as it is while a project file is being read.
class LoadingNodes {
 public:
  LoadingNodes() { modMain::LoadedNodes() = New<Collection<std::string>>(); }
  ~LoadingNodes() { modMain::LoadedNodes() = nullptr; }
};

std::string Record(const std::string& key, const std::string& inside = {}) {
  return "<n key=\"" + key + "\" nt=\"0\" ct=\"2\" c=\"" + key + "\" i=\"-1\" cfn=\"\" tid=\"\" url=\"\">" + inside +
         "</n>";
}

class QBNodeTest : public support::ProjectTest {
 protected:
  void SetUp() override {
    ProjectTest::SetUp();
    node = project->QBNodes->NewNode();
  }
  void TearDown() override {
    node = nullptr;
    ProjectTest::TearDown();
  }
  Ref<Topic> AddTopic(const std::string& key) {
    const auto topic = project->NewTopic();
    topic->Key = key;
    project->Topics->Add(topic, key);
    return topic;
  }
  /// Loads a node of its own, outside any collection but with a project.
  Ref<QBNode> Loaded(const std::string& text) {
    const auto loaded = New<QBNode>();
    loaded->SetQBNodes(project->QBNodes);
    loaded->Load(Parse(text).DocumentElement());
    return loaded;
  }

  Ref<QBNode> node;
};

TEST_F(QBNodeTest, New_IsAStandardNodeWithoutKey) {
  const auto fresh = New<QBNode>();
  EXPECT_EQ(fresh->Key, "");
  EXPECT_EQ(fresh->QBNodeType(), ntStandard);
  EXPECT_EQ(fresh->CaptionType(), ctSpecific);
  EXPECT_EQ(fresh->Icon(), -1);
  EXPECT_EQ(fresh->ChildNodes->Count(), 0u);
  EXPECT_FALSE(fresh->ParentNode());
  EXPECT_FALSE(fresh->QBNodes());
  EXPECT_EQ(node->Key.size(), 38u);
}

TEST_F(QBNodeTest, Setters_TellTheProjectOfARealChangeOnly) {
  support::ProjectLog log(project);
  node->SetCaptionText("a");
  EXPECT_EQ(log.Take(), "QBNodeChanged Dirty Dirty");  // the project marks its top level, then the node its holder
  EXPECT_TRUE(project->QBNodes->Dirty());
  node->SetCaptionText("A");
  EXPECT_EQ(log.Take(), "QBNodeChanged Dirty Dirty");
  node->SetCaptionText("A");
  node->SetIcon(-1);
  node->SetStandardURL("");
  node->SetTopicID("");
  node->SetQBNodeType(ntStandard);
  node->SetCaptionType(ctSpecific);
  node->SetSubContentsFileName("");
  node->Key = "silent";
  EXPECT_EQ(log.Take(), "");
  node->FireChanged();
  EXPECT_EQ(log.Take(), "QBNodeChanged Dirty Dirty");
}

TEST_F(QBNodeTest, AChange_MarksTheHoldingLevelAndTheTopLevel) {
  const auto child = node->ChildNodes->NewNode(node);
  EXPECT_FALSE(node->ChildNodes->Dirty());
  child->SetIcon(3);
  EXPECT_TRUE(node->ChildNodes->Dirty());
  EXPECT_TRUE(project->QBNodes->Dirty());
}

TEST_F(QBNodeTest, AChange_IsHeldBack_WhileTheTopLevelIsPaused) {
  support::ProjectLog log(project);
  project->QBNodes->PauseEvents = true;
  node->SetIcon(3);
  EXPECT_EQ(log.Take(), "");
  EXPECT_TRUE(project->QBNodes->Dirty());
}

TEST_F(QBNodeTest, AChange_OfANodeWithoutCollection_IsToldNobody) {
  const auto lonely = New<QBNode>();
  lonely->SetIcon(3);
  EXPECT_EQ(lonely->Icon(), 3);
  lonely->SetQBNodes(New<QBNodes>());  // gone at once
  lonely->SetIcon(4);
  const auto holder = New<QBNodes>();  // without a project
  lonely->SetQBNodes(holder);
  lonely->SetIcon(5);
  EXPECT_TRUE(holder->Dirty());
}

TEST_F(QBNodeTest, SetCaptionType_ToDefault_EmptiesTheCaption) {
  node->SetCaptionText("a");
  node->SetCaptionType(ctDefault);
  EXPECT_EQ(node->CaptionText(), "");
  node->SetCaptionText("b");
  node->SetCaptionType(ctSpecific);
  EXPECT_EQ(node->CaptionText(), "b");
}

TEST_F(QBNodeTest, SetStandardURL_ToTheGlossary_TakesItsTitle_OnlyWithoutACaption) {
  node->SetStandardURL("Glossary.HTML");
  EXPECT_EQ(node->CaptionType(), ctDefault);
  const auto captioned = project->QBNodes->NewNode();
  captioned->SetCaptionText("Words");
  captioned->SetStandardURL("Glossary.HTML");
  EXPECT_EQ(captioned->CaptionType(), ctSpecific);
  EXPECT_EQ(captioned->CaptionText(), "Words");
}

TEST_F(QBNodeTest, SetQBNodeType_AwayFromStandard_EndsTheGlossaryNode) {
  for (const auto type : {ntSingleTopic, ntSubContents, ntMVContents}) {
    node->SetQBNodeType(ntStandard);
    node->SetStandardURL("glossary.html");
    node->SetQBNodeType(type);
    EXPECT_EQ(node->StandardURL(), "") << type;
  }
}

TEST_F(QBNodeTest, SetQBNodeType_FromSubContentsToStandard_KeepsTheURL) {
  node->SetQBNodeType(ntSubContents);
  node->SetStandardURL("glossary.html");
  node->SetQBNodeType(ntStandard);
  EXPECT_EQ(node->StandardURL(), "glossary.html");
  EXPECT_EQ(node->CaptionType(), ctSpecific);
}

TEST_F(QBNodeTest, SetQBNodeType_KeepsOnlyWhatTheTypeUses_AndTheCaptionText) {
  node->SetCaptionText("Caption");
  node->SetStandardURL("a.html");
  node->SetTopicID("t");
  node->SetQBNodeType(ntSingleTopic);
  EXPECT_EQ(node->StandardURL(), "");
  EXPECT_EQ(node->TopicID(), "t");
  EXPECT_EQ(node->CaptionType(), ctDefault);
  EXPECT_EQ(node->CaptionText(), "Caption");
  node->SetStandardURL("b.html");
  node->SetQBNodeType(ntMVContents);
  EXPECT_EQ(node->StandardURL(), "b.html");
  EXPECT_EQ(node->TopicID(), "");
  EXPECT_EQ(node->CaptionType(), ctDefault);
  node->SetTopicID("t");
  node->SetQBNodeType(ntSubContents);
  EXPECT_EQ(node->TopicID(), "t");
  EXPECT_EQ(node->CaptionType(), ctDefault);
  node->SetQBNodeType(ntStandard);
  EXPECT_EQ(node->TopicID(), "");
  EXPECT_EQ(node->CaptionType(), ctSpecific);
  EXPECT_EQ(node->CaptionText(), "Caption");
}

TEST_F(QBNodeTest, SetQBNodeType_TellsOnce) {
  node->SetCaptionText("Caption");
  node->SetStandardURL("a.html");
  support::ProjectLog log(project);
  node->SetQBNodeType(ntSingleTopic);
  EXPECT_EQ(log.Take(), "QBNodeChanged Dirty Dirty");
}

TEST_F(QBNodeTest, Topic_IsLookedUpAtEachRead_WhateverTheType) {
  EXPECT_FALSE(node->Topic());
  node->SetTopicID("k");
  EXPECT_FALSE(node->Topic());
  const auto topic = AddTopic("K");
  EXPECT_EQ(node->QBNodeType(), ntStandard);
  EXPECT_EQ(node->Topic(), topic);
  project->Topics->Remove("k");
  EXPECT_FALSE(node->Topic());
}

TEST_F(QBNodeTest, IncludedInBuildProfile_FollowsTheTopic) {
  EXPECT_TRUE(node->IncludedInBuildProfile({}, true));
  const auto topic = AddTopic("k");
  node->SetTopicID("k");
  EXPECT_TRUE(node->IncludedInBuildProfile({}, false));
  topic->SetIncludeInHelpFile(false);
  EXPECT_FALSE(node->IncludedInBuildProfile({}, true));
  EXPECT_FALSE(node->IncludedInBuildProfile({}, false));
}

TEST_F(QBNodeTest, ParentAndCollection_AreNotKeptAlive) {
  const auto child = node->ChildNodes->NewNode(node);
  EXPECT_EQ(child->ParentNode(), node);
  EXPECT_EQ(child->QBNodes(), node->ChildNodes);
  project->QBNodes->Remove(node->Key);
  node = nullptr;
  EXPECT_FALSE(child->ParentNode());
  EXPECT_FALSE(child->QBNodes());
}

// Record.

TEST_F(QBNodeTest, Save_WritesAllAttributesInOrder_EmptyOnesToo_AndTheChildren) {
  node->Key = "{1}";
  node->ChildNodes->NewNode(node)->Key = "{2}";
  EXPECT_EQ(Written(*node),
            "<r key=\"{1}\" nt=\"0\" ct=\"2\" c=\"\" i=\"-1\" cfn=\"\" tid=\"\" url=\"\">\n"
            "\t<n key=\"{2}\" nt=\"0\" ct=\"2\" c=\"\" i=\"-1\" cfn=\"\" tid=\"\" url=\"\"/>\n"
            "</r>");
}

TEST_F(QBNodeTest, SaveAndLoad_KeepEverything) {
  node->SetSubContentsFileName("sub.xml");
  node->SetCaptionText("a \"b\" <c> & \r\n\t d \xF0\x9F\x98\x80");
  node->SetStandardURL("a b.html?x=1&y");
  node->SetIcon(42);
  const auto loaded = Loaded(Written(*node));
  EXPECT_EQ(loaded->Key, node->Key);
  EXPECT_EQ(loaded->SubContentsFileName(), node->SubContentsFileName());
  EXPECT_EQ(loaded->CaptionText(), node->CaptionText());
  EXPECT_EQ(loaded->StandardURL(), node->StandardURL());
  EXPECT_EQ(loaded->Icon(), 42);
}

TEST_F(QBNodeTest, Load_FindsAttributesInAnyCase_AndRunsNoRuleOfASetter) {
  support::ProjectLog log(project);
  const auto loaded = Loaded(
      "<n KEY=\"k\" NT=\"0\" Ct=\"1\" C=\"kept\" I=\"7\" CFN=\"s\" Tid=\"t\" uRL=\"Glossary.html\" more=\"ignored\"/>");
  EXPECT_EQ(loaded->Key, "k");
  EXPECT_EQ(loaded->CaptionType(), ctDefault);
  EXPECT_EQ(loaded->CaptionText(), "kept");
  EXPECT_EQ(loaded->TopicID(), "t");
  EXPECT_EQ(loaded->StandardURL(), "Glossary.html");
  EXPECT_EQ(log.Take(), "");
}

TEST_F(QBNodeTest, Load_OfATopicNodeWithoutTopic_GivesAStandardNode) {
  EXPECT_EQ(Loaded("<n key='k' nt='1' ct='1' c='' i='-1' cfn='' tid='' url=''/>")->QBNodeType(), ntStandard);
  EXPECT_EQ(Loaded("<n key='k' nt='1' ct='1' c='' i='-1' cfn='' tid='t' url=''/>")->QBNodeType(), ntSingleTopic);
}

TEST_F(QBNodeTest, Load_KeepsAKeyThatIsThere) {
  const auto loaded = New<QBNode>();
  loaded->Key = "mine";
  loaded->SetQBNodes(project->QBNodes);
  loaded->Load(Parse(Record("stored")).DocumentElement());
  EXPECT_EQ(loaded->Key, "mine");
  EXPECT_EQ(loaded->CaptionText(), "stored");
}

TEST_F(QBNodeTest, Load_WithoutAnAttribute_IsAFailure) {
  for (const std::string absent : {"key", "nt", "ct", "c", "i", "cfn", "tid", "url"}) {
    std::string record = "<n";
    for (const std::string name : {"key", "nt", "ct", "c", "i", "cfn", "tid", "url"})
      if (name != absent) record.append(" ").append(name).append("=\"1\"");
    Loaded(record + "/>");
    EXPECT_EQ(failures.Take(), Failures{"QBNode.Load 5"}) << absent;
  }
}

TEST_F(QBNodeTest, Load_OfANumberThatIsNone_IsAFailure) {
  const std::pair<const char*, const char*> cases[] = {{"", "13"}, {"x", "13"}, {"99999999999", "6"}};
  for (const auto& [text, number] : cases)
    for (const auto* name : {"nt", "ct", "i"}) {
      auto record = Record("k");
      const auto start = record.find(std::string(" ") + name + "=\"") + std::string_view(name).size() + 3;
      record.replace(start, record.find('"', start) - start, text);
      Loaded(record);
      EXPECT_EQ(failures.Take(), Failures{std::string("QBNode.Load ") + number}) << name << text;
    }
}

TEST_F(QBNodeTest, Load_OfABadChild_LeavesItAsFarAsItGot_AndGoesOnWithTheNext) {
  const LoadingNodes loading;
  const auto loaded = Loaded(Record("a", "<n key='b' nt='3' ct='bad'>" + Record("lost") + "</n>" + Record("c")));
  EXPECT_EQ(failures.Take(), Failures{"QBNode.Load 13"});
  ASSERT_EQ(loaded->ChildNodes->Count(), 2u);
  EXPECT_EQ(loaded->ChildNodes->Item("b")->QBNodeType(), ntMVContents);
  EXPECT_EQ(loaded->ChildNodes->Item("b")->ChildNodes->Count(), 0u);
  EXPECT_EQ(loaded->ChildNodes->Item("b")->ParentNode(), loaded);
  EXPECT_TRUE(loaded->ChildNodes->Item("c"));
  EXPECT_FALSE(loaded->ChildNodes->PauseEvents);
}

class ChainOfReports final : public ErrorObject {
 public:
  void ErrorHandler(std::int32_t ErrorNumber, std::string_view, std::string_view Module, std::string_view Procedure,
                    std::string_view, std::int32_t, std::string_view, std::string_view) override {
    reports.push_back(std::string(Module) + "." + std::string(Procedure) + " " + std::to_string(ErrorNumber));
  }
  [[nodiscard]] std::string Action() const override { return {}; }
  std::vector<std::string> reports;
};

TEST_F(QBNodeTest, Load_WithAnErrorObject_IsReportedFromTheInsideOut_AndGivenUp) {
  const auto reports = std::make_shared<ChainOfReports>();
  const auto previous = SetErrorObject(reports);
  const LoadingNodes loading;
  const auto loaded = New<QBNode>();
  loaded->SetQBNodes(project->QBNodes);
  const auto record = Parse(Record("a", Record("b", "<n key='c'/>") + Record("d")));
  EXPECT_THROW(loaded->Load(record.DocumentElement()), Failure);
  SetErrorObject(previous);
  EXPECT_EQ(reports->reports, (Failures{"QBNode.Load 5", "QBNode.Load 65535", "QBNode.Load 65535"}));
  EXPECT_EQ(loaded->ChildNodes->Count(), 0u);
}

TEST_F(QBNodeTest, Load_SkipsBf_RegardingCase_AndTakesEveryOtherElementForANode) {
  const LoadingNodes loading;
  auto other = Record("b");
  other.replace(0, 2, "<BF").replace(other.rfind("n>"), 1, "BF");
  const auto loaded = Loaded(Record("a", "<bf>" + Record("skipped") + "</bf>" + other + Record("c")));
  ASSERT_EQ(loaded->ChildNodes->Count(), 2u);
  EXPECT_EQ(loaded->ChildNodes->Item(1)->Key, "b");
  EXPECT_EQ(loaded->ChildNodes->Item(2)->Key, "c");
}

TEST_F(QBNodeTest, Load_GivesChildrenTheirLinks) {
  const LoadingNodes loading;
  const auto loaded = Loaded(Record("a", Record("b", Record("c"))));
  const auto child = loaded->ChildNodes->Item("b");
  EXPECT_EQ(child->ParentNode(), loaded);
  EXPECT_EQ(child->QBNodes(), loaded->ChildNodes);
  EXPECT_EQ(child->ChildNodes->QBProject(), project);
  EXPECT_EQ(child->ChildNodes->Item(1)->ParentNode(), child);
}

TEST_F(QBNodeTest, Load_WhileAProjectLoads_NotesTheKeysOfADroppedSubtree) {
  const LoadingNodes loading;
  // "b" comes first below "x", whose own key is known and which is dropped with everything in it.
  const auto loaded = Loaded(Record("a", Record("x") + Record("X", Record("b")) + Record("b")));
  ASSERT_EQ(loaded->ChildNodes->Count(), 1u);
  EXPECT_TRUE(modMain::LoadedNodes()->Contains("b"));
}

// Clone.

TEST_F(QBNodeTest, Clone_IntoTheSameProject_GivesNewKeysThroughout) {
  node->SetCaptionText("top");
  const auto child = node->ChildNodes->NewNode(node);
  const auto grandchild = child->ChildNodes->NewNode(child);
  grandchild->SetCaptionText("deep");
  const auto copy = node->Clone(project, node);
  EXPECT_EQ(project->QBNodes->Item(2), copy);
  EXPECT_FALSE(copy->ParentNode());
  EXPECT_EQ(copy->CaptionText(), "top");
  const auto copiedChild = copy->ChildNodes->Item(1);
  const auto copiedGrandchild = copiedChild->ChildNodes->Item(1);
  EXPECT_EQ(copiedGrandchild->CaptionText(), "deep");
  EXPECT_NE(copy->Key, node->Key);
  EXPECT_NE(copiedChild->Key, child->Key);
  EXPECT_NE(copiedGrandchild->Key, grandchild->Key);
  EXPECT_EQ(project->QBNodes->Item(copiedGrandchild->Key), copiedGrandchild);
}

TEST_F(QBNodeTest, Clone_IntoAnotherProject_KeepsTheKeysOfDescendants_UnlessTheyCollide) {
  const auto child = node->ChildNodes->NewNode(node);
  const auto grandchild = child->ChildNodes->NewNode(child);
  const auto other = New<QBProject>();
  const auto taken = other->QBNodes->NewNode();
  other->QBNodes->Remove(taken->Key);
  taken->Key = grandchild->Key;
  const auto parent = other->QBNodes->NewNode();
  parent->ChildNodes->Add(taken, taken->Key);
  const auto copy = node->Clone(other);
  EXPECT_NE(copy->Key, node->Key);
  EXPECT_EQ(copy->ChildNodes->Item(1)->Key, child->Key);
  EXPECT_NE(copy->ChildNodes->Item(1)->ChildNodes->Item(1)->Key, grandchild->Key);
  EXPECT_EQ(copy->ChildNodes->Item(1)->ChildNodes->QBProject(), other);
}

TEST_F(QBNodeTest, Clone_OfEqualKeysBelowOneNode_GivesTheLaterOneANewKey) {
  const auto other = New<QBProject>();
  for (int i = 0; i < 2; ++i) {
    const auto child = node->ChildNodes->NewNode(node);
    child->Key = "same";
  }
  const auto copy = node->Clone(other);
  ASSERT_EQ(copy->ChildNodes->Count(), 2u);
  EXPECT_EQ(copy->ChildNodes->Item(1)->Key, "same");
  EXPECT_EQ(copy->ChildNodes->Item(2)->Key.size(), 38u);
}

TEST_F(QBNodeTest, Clone_RaisesNoEvent) {
  node->ChildNodes->NewNode(node);
  support::ProjectLog log(project);
  node->Clone(project);
  EXPECT_EQ(log.Take(), "");
  EXPECT_FALSE(project->QBNodes->Dirty());
}

// Depth.

TEST_F(QBNodeTest, ATreeOfAnyDepth_IsLoadedSavedSearchedAndCloned) {
  constexpr int Depth = 100'000;
  const auto topic = AddTopic("t");
  std::string text;
  for (int i = 0; i < Depth; ++i)
    text += "<n key=\"{" + std::to_string(i) + "}\" nt=\"1\" ct=\"1\" c=\"\" i=\"-1\" cfn=\"\" tid=\"t\" url=\"\">";
  for (int i = 0; i < Depth; ++i) text += "</n>";
  const auto nodes = project->QBNodes;
  {
    const LoadingNodes loading;
    nodes->Load(Parse("<Nodes>" + text + "</Nodes>").DocumentElement());
  }
  EXPECT_EQ(nodes->Count(), 1u);
  EXPECT_EQ(nodes->AllNodes()->Count(), static_cast<std::size_t>(Depth));
  EXPECT_EQ(nodes->NodesForTopic(topic)->Count(), static_cast<std::size_t>(Depth));
  EXPECT_EQ(nodes->Item("{99999}")->TopicID(), "t");
  EXPECT_FALSE(nodes->Item("{100000}"));

  XMLDocument document;
  document.DocumentElement().SetName("Nodes");
  nodes->Save(document.DocumentElement());
  const auto other = New<QBProject>();
  {
    const LoadingNodes loading;
    other->QBNodes->Load(Parse(document.ToString()).DocumentElement());
  }
  EXPECT_TRUE(other->QBNodes->Item("{99999}"));

  nodes->Item(1)->Clone(other);
  EXPECT_EQ(other->QBNodes->Count(), 2u);
  EXPECT_EQ(other->QBNodes->AllNodes()->Count(), 2u * Depth);
}

}  // namespace
}  // namespace quillbook
