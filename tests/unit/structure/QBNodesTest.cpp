#include "quillbook/structure/QBNodes.h"

#include <sys/stat.h>

#include "quillbook/frame/modMain.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/Topics.h"
#include "support/ProjectLog.h"
#include "support/ProjectTest.h"
#include "support/TemporaryFolder.h"

namespace quillbook {
namespace {

class QBNodesTest : public support::ProjectTest {
 protected:
  void SetUp() override {
    ProjectTest::SetUp();
    nodes = project->QBNodes;
  }
  void TearDown() override {
    nodes = nullptr;
    ProjectTest::TearDown();
  }
  static Ref<QBNode> Keyed(const std::string& key) {
    const auto node = New<QBNode>();
    node->Key = key;
    return node;
  }
  /// A node of a level, under a key of the test's own.
  static Ref<QBNode> AddNode(const Ref<QBNodes>& level, const std::string& key) {
    const auto node = Keyed(key);
    node->SetQBNodes(level);
    node->ChildNodes->SetQBProject(level->QBProject());
    level->Add(node, key);
    return node;
  }
  static std::string Keys(const Ref<QBNodes>& level) {
    std::string keys;
    for (const auto& node : *level) keys += node->Key;
    return keys;
  }
  static std::string Record(const std::string& key, const std::string& inside = {}) {
    return "<n key='" + key + "' nt='0' ct='2' c='' i='-1' cfn='' tid='' url=''>" + inside + "</n>";
  }

  Ref<QBNodes> nodes;
};

TEST_F(QBNodesTest, NewNode_HasAllLinks_AndTellsNobody) {
  support::ProjectLog log(project);
  const auto first = nodes->NewNode();
  const auto child = first->ChildNodes->NewNode(first);
  EXPECT_EQ(first->QBNodes(), nodes);
  EXPECT_FALSE(first->ParentNode());
  EXPECT_EQ(first->ChildNodes->QBProject(), project);
  EXPECT_EQ(child->ParentNode(), first);
  EXPECT_EQ(child->QBNodes(), first->ChildNodes);
  EXPECT_EQ(nodes->Item(first->Key), first);
  EXPECT_FALSE(nodes->Dirty());
  EXPECT_EQ(log.Take(), "");
}

TEST_F(QBNodesTest, NewNode_GoesBeforeOrAfterAKey_AndBeforeWins) {
  const auto b = nodes->NewNode();
  const auto a = nodes->NewNode({}, b->Key);
  const auto d = nodes->NewNode({}, {}, b->Key);
  const auto c = nodes->NewNode({}, d->Key, a->Key);
  EXPECT_EQ(nodes->Item(1), a);
  EXPECT_EQ(nodes->Item(2), b);
  EXPECT_EQ(nodes->Item(3), c);
  EXPECT_EQ(nodes->Item(4), d);
  EXPECT_FALSE(nodes->NewNode({}, "nowhere"));
  EXPECT_EQ(failures.Take(), Failures{"QBNodes.NewNode 5"});
  EXPECT_EQ(nodes->Count(), 4u);
}

TEST_F(QBNodesTest, Item_FindsAGrandchildByKey_ButRemoveFails) {
  const auto grandchild = AddNode(AddNode(AddNode(nodes, "a")->ChildNodes, "b")->ChildNodes, "c");
  EXPECT_EQ(nodes->Item("C"), grandchild);
  nodes->Remove("c");
  EXPECT_EQ(failures.Take(), Failures{"QBNodes.Remove 5"});
  EXPECT_EQ(nodes->Item("c"), grandchild);
  EXPECT_FALSE(nodes->Item("d"));
}

TEST_F(QBNodesTest, Item_SearchesDepthFirst) {
  const auto a = AddNode(nodes, "a");
  const auto deep = AddNode(AddNode(a->ChildNodes, "aa")->ChildNodes, "x");
  AddNode(AddNode(nodes, "b")->ChildNodes, "x");
  EXPECT_EQ(nodes->Item("x"), deep);
  const auto shallow = AddNode(a->ChildNodes, "x");  // a whole level before the levels below it
  EXPECT_EQ(nodes->Item("x"), shallow);
}

TEST_F(QBNodesTest, Item_BeyondThisLevel_AlsoGoesDown) {
  const auto a = AddNode(nodes, "a");
  AddNode(a->ChildNodes, "b");
  const auto second = AddNode(a->ChildNodes, "c");
  EXPECT_EQ(nodes->Item(1), a);
  EXPECT_EQ(nodes->Item(2), second);
  EXPECT_FALSE(nodes->Item(3));
  EXPECT_FALSE(nodes->Item(0));
}

TEST_F(QBNodesTest, Add_OfAKnownKey_WithoutPosition_ChangesNothing_ButTheDirtyFlag) {
  const auto a = AddNode(nodes, "a");
  nodes->SetDirty(false);
  support::ProjectLog log(project);
  nodes->Add(Keyed("a"), "A");
  EXPECT_EQ(nodes->Count(), 1u);
  EXPECT_EQ(nodes->Item("a"), a);
  EXPECT_TRUE(nodes->Dirty());
  EXPECT_EQ(log.Take(), "Dirty");
}

TEST_F(QBNodesTest, Add_OfAKnownKey_WithAPosition_IsAFailure) {
  AddNode(nodes, "a");
  nodes->SetDirty(false);
  nodes->Add(Keyed("a"), "a", 1);
  nodes->Add(Keyed("a"), "a", {}, 1);
  EXPECT_EQ(failures.Take(), (Failures{"QBNodes.Add 457", "QBNodes.Add 457"}));
  EXPECT_FALSE(nodes->Dirty());
}

TEST_F(QBNodesTest, Add_WithoutKey_AddsUnkeyed_AndSetsNoLink) {
  const auto node = Keyed("a");
  nodes->Add(node);
  nodes->Add(node, "");
  EXPECT_EQ(nodes->Count(), 2u);
  EXPECT_FALSE(nodes->Item("a"));
  EXPECT_FALSE(node->QBNodes());
}

TEST_F(QBNodesTest, Remove_TakesTheSubtreeAlong_AndTellsTheProject) {
  const auto a = AddNode(nodes, "a");
  AddNode(a->ChildNodes, "b");
  nodes->SetDirty(false);
  support::ProjectLog log(project);
  nodes->Remove("A");
  EXPECT_EQ(log.Take(), "QBNodeRemoved Dirty Dirty");
  EXPECT_EQ(nodes->Count(), 0u);
  EXPECT_EQ(a->ChildNodes->Count(), 1u);
  EXPECT_TRUE(nodes->Dirty());
}

TEST_F(QBNodesTest, Remove_FromAChildCollection_MarksTheTopLevelToo) {
  const auto a = AddNode(nodes, "a");
  AddNode(a->ChildNodes, "b");
  nodes->SetDirty(false);
  a->ChildNodes->SetDirty(false);
  a->ChildNodes->Remove(1);
  EXPECT_TRUE(a->ChildNodes->Dirty());
  EXPECT_TRUE(nodes->Dirty());
}

TEST_F(QBNodesTest, ItemEvents_AreNeverRaised) {
  int raised = 0;
  const auto added = nodes->Events.ItemAdded.Connect([&](const Ref<QBNode>&) { ++raised; });
  const auto removed = nodes->Events.ItemRemoved.Connect([&](const Ref<QBNode>&) { ++raised; });
  AddNode(nodes, "a");
  nodes->Remove("a");
  EXPECT_EQ(raised, 0);
  EXPECT_EQ(QBNodesEvents::PublishedName, "__QBNodes");
}

TEST_F(QBNodesTest, AllNodes_ComeInTheOrderOfTheContents_InANewCollectionWithoutProject) {
  const auto a = AddNode(nodes, "a");
  AddNode(AddNode(a->ChildNodes, "b")->ChildNodes, "c");
  AddNode(a->ChildNodes, "d");
  AddNode(nodes, "e");
  const auto all = nodes->AllNodes();
  EXPECT_EQ(Keys(all), "abcde");
  EXPECT_FALSE(all->QBProject());
  EXPECT_EQ(Keys(a->ChildNodes->AllNodes(all)), "abcde");  // known keys change nothing
  const auto mine = New<QBNodes>();
  mine->Add(Keyed("x"), "x");
  EXPECT_EQ(nodes->AllNodes(mine), mine);
  EXPECT_EQ(Keys(mine), "xabcde");
}

TEST_F(QBNodesTest, NodesForTopic_FindsAMatchBelowAnotherNode_WhateverItsType) {
  const auto topic = project->NewTopic();
  topic->Key = "t";
  const auto a = AddNode(nodes, "a");
  AddNode(a->ChildNodes, "b")->SetTopicID("t");
  AddNode(a->ChildNodes, "c")->SetTopicID("T");  // another key, regarding case
  const auto d = AddNode(nodes, "d");
  d->SetTopicID("t");
  AddNode(d->ChildNodes, "e")->SetTopicID("t");
  EXPECT_EQ(Keys(nodes->NodesForTopic(topic)), "bde");
  EXPECT_FALSE(nodes->NodesForTopic({}));
  EXPECT_EQ(failures.Take(), Failures{"QBNodes.NodesForTopic 91"});
}

TEST_F(QBNodesTest, SetDirty_TellsOfTrueOnly_UnlessPausedOrWithoutProject) {
  support::ProjectLog log(project);
  nodes->SetDirty(true);
  nodes->SetDirty(true);
  EXPECT_EQ(log.Take(), "Dirty Dirty");
  nodes->SetDirty(false);
  nodes->PauseEvents = true;
  nodes->SetDirty(true);
  EXPECT_EQ(log.Take(), "");
  New<QBNodes>()->SetDirty(true);
}

// Load and save.

TEST_F(QBNodesTest, Load_KeepsTheFirstOfEqualKeys_InDocumentOrder_WhileAProjectLoads) {
  const auto text = "<QBProject><Nodes>" + Record("a", Record("b") + Record("c")) + Record("B", Record("d")) +
                    Record("d", Record("e")) + Record("A") + "</Nodes></QBProject>";
  project->Load(text);
  // "d" is met first below the second "b", which is dropped with it.
  EXPECT_EQ(Keys(project->QBNodes->AllNodes()), "abc");
  EXPECT_FALSE(modMain::LoadedNodes());
}

TEST_F(QBNodesTest, Load_KeepsTheNodesOfTheTopLevelWithoutParent_AndEndsClean) {
  AddNode(nodes, "old");
  nodes->Load(Parse("<Nodes>" + Record("a", Record("b")) + "</Nodes>").DocumentElement());
  EXPECT_EQ(Keys(nodes), "a");
  EXPECT_FALSE(nodes->Item("a")->ParentNode());
  EXPECT_EQ(nodes->Item("a")->QBNodes(), nodes);
  EXPECT_FALSE(nodes->Dirty());
}

TEST_F(QBNodesTest, Load_OfARepeatedKey_IsAFailure_OutsideAProjectsLoad) {
  nodes->Load(Parse("<Nodes>" + Record("a") + Record("a") + Record("b") + "</Nodes>").DocumentElement());
  EXPECT_EQ(failures.Take(), Failures{"QBNodes.Load 457"});
  EXPECT_EQ(Keys(nodes), "a");
}

TEST_F(QBNodesTest, Load_OfABfElementAtTheTop_IsAFailure) {
  nodes->Load(Parse("<Nodes><bf/>" + Record("a", "<bf/>") + "</Nodes>").DocumentElement());
  EXPECT_EQ(failures.Take(), Failures{"QBNode.Load 5"});
  EXPECT_EQ(nodes->Item("a")->ChildNodes->Count(), 0u);
}

TEST_F(QBNodesTest, Save_WritesTheTreeBelowTheElement) {
  AddNode(AddNode(nodes, "a")->ChildNodes, "b");
  EXPECT_EQ(Written(*nodes, "Nodes"),
            "<Nodes>\n"
            "\t<n key=\"a\" nt=\"0\" ct=\"2\" c=\"\" i=\"-1\" cfn=\"\" tid=\"\" url=\"\">\n"
            "\t\t<n key=\"b\" nt=\"0\" ct=\"2\" c=\"\" i=\"-1\" cfn=\"\" tid=\"\" url=\"\"/>\n"
            "\t</n>\n"
            "</Nodes>");
  EXPECT_TRUE(nodes->Dirty());
  EXPECT_FALSE(nodes->ReadOnly());
}

class QBNodesFileTest : public QBNodesTest {
 protected:
  void SetUp() override {
    QBNodesTest::SetUp();
    project->Filename->SetFullName(folder.Stored("p.qbp"));
    project->SetStorageForm(ProjectTypeSeparateFiles);
  }
  support::TemporaryFolder folder;
  const std::string file = "ProjectData/TableOfContents.xml";
};

TEST_F(QBNodesFileTest, LocalSpec_LiesInTheDataFolder) {
  EXPECT_EQ(nodes->LocalSpec(), folder.Stored(file));
}

TEST_F(QBNodesFileTest, Save_WritesTheFile_AndLeavesTheElementEmpty) {
  AddNode(nodes, "a");
  EXPECT_EQ(Written(*nodes, "Nodes"), "<Nodes/>");
  const auto text = folder.Read(file);
  EXPECT_NE(text.find("<Glossary>\n\t<n key=\"a\""), std::string::npos) << text;
  EXPECT_TRUE(text.ends_with("</Glossary>\n"));
  EXPECT_TRUE(nodes->Dirty());
}

TEST_F(QBNodesFileTest, Save_LeavesAFileThatIsThere_WhenNothingChanged) {
  folder.Write(file, "mine");
  Written(*nodes);
  EXPECT_EQ(folder.Read(file), "mine");
  nodes->SetDirty(true);
  Written(*nodes);
  EXPECT_NE(folder.Read(file).find("<Glossary/>"), std::string::npos);
}

TEST_F(QBNodesFileTest, Save_OfAnUnchangedTree_WritesAMissingFile) {
  Written(*nodes);
  EXPECT_TRUE(folder.Has(file));
}

TEST_F(QBNodesFileTest, Load_TakesTheFileInPlaceOfTheElement_WhateverItsRootIsCalled) {
  folder.Write(file, "<Whatever>" + Record("a", Record("b")) + "</Whatever>");
  nodes->Load(Parse("<Nodes>" + Record("x") + "</Nodes>").DocumentElement());
  EXPECT_EQ(Keys(nodes->AllNodes()), "ab");
}

TEST_F(QBNodesFileTest, Load_WithoutAFile_GivesAnEmptyTree) {
  AddNode(nodes, "old");
  nodes->Load(Parse("<Nodes>" + Record("x") + "</Nodes>").DocumentElement());
  EXPECT_EQ(nodes->Count(), 0u);
  EXPECT_FALSE(nodes->Dirty());
}

TEST_F(QBNodesFileTest, Load_OfAFileWithABfElementAtTheTop_IsAFailure) {
  folder.Write(file, "<Glossary><bf/></Glossary>");
  nodes->Load(XMLDocument().DocumentElement());
  EXPECT_EQ(failures.Take(), Failures{"QBNode.Load 5"});
}

TEST_F(QBNodesFileTest, ReadOnly_IsTheFilesAttribute) {
  folder.Write(file, "");
  EXPECT_FALSE(nodes->ReadOnly());
  ASSERT_EQ(chmod(folder.Native(file).c_str(), 0444), 0);
  EXPECT_TRUE(nodes->ReadOnly());
  nodes->SetDirty(true);
  Written(*nodes);
  EXPECT_EQ(failures.Take(), Failures{"QBNodes.Save 70"});
  EXPECT_EQ(folder.Read(file), "");
  project->SetStorageForm(ProjectTypeSingleFile);
  EXPECT_FALSE(nodes->ReadOnly());
}

}  // namespace
}  // namespace quillbook
