#include <gtest/gtest.h>

#include <deque>

#include "quillbook/config/BuildProfile.h"
#include "quillbook/config/BuildProfiles.h"
#include "quillbook/config/ProjectProperties.h"
#include "quillbook/frame/modMain.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/structure/GlossaryItem.h"
#include "quillbook/structure/GlossaryItems.h"
#include "quillbook/structure/OtherFile.h"
#include "quillbook/structure/OtherFiles.h"
#include "quillbook/structure/QBNode.h"
#include "quillbook/structure/QBNodes.h"
#include "quillbook/structure/Tasks.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/TopicCategories.h"
#include "quillbook/topics/TopicCategory.h"
#include "quillbook/topics/TopicLink.h"
#include "quillbook/topics/TopicLinks.h"
#include "quillbook/topics/Topics.h"
#include "support/ProjectLog.h"
#include "support/ProjectTest.h"
#include "support/TemporaryFolder.h"

namespace quillbook {
namespace {

class ProjectFileTest : public support::ProjectTest {
 protected:
  void Load(const std::string& text) { project->Load(text); }
  void LoadWithin(const std::string& content) { project->Load("<QBProject>" + content + "</QBProject>"); }
  static std::string Topic(const std::string& key, const std::string& rest = {}) {
    return "<Topic Key=\"" + key + "\" Name=\"" + key + "\" " + rest + "/>";
  }
  static std::string Node(const std::string& key, const std::string& topic, const std::string& children = {}) {
    return "<n key=\"" + key + "\" nt=\"1\" ct=\"1\" c=\"\" i=\"-1\" cfn=\"\" tid=\"" + topic + "\" url=\"\">" +
           children + "</n>";
  }
};

// Attributes.

TEST_F(ProjectFileTest, AOneLineFile_IsAProject) {
  Load(R"(<QBProject Title="My help" TemplateName="Some template"/>)");
  EXPECT_EQ(project->Title(), "My help");
  EXPECT_EQ(project->TemplateName(), "Some template");
  EXPECT_EQ(project->Topics->Count(), 0U);
  EXPECT_TRUE(project->AutoGenerateIndexEntries());
  ASSERT_EQ(project->BuildProfiles->Count(), 1U);
  const auto profile = project->BuildProfiles->Item(1);
  EXPECT_EQ(profile->Name(), "Default");
  EXPECT_TRUE(profile->IncludeInBuild());
  EXPECT_EQ(profile->HTMLHelpVersion(), 1);
  EXPECT_EQ(profile->HelpFileName(), "");
  EXPECT_FALSE(project->Dirty());
  EXPECT_TRUE(project->LastLoadResult().Ok());
  EXPECT_EQ(project->LastLoadResult().rootName, "QBProject");
}

TEST_F(ProjectFileTest, AllAttributesAreRead_InAnyCase) {
  project->Filename->SetFullName("c:\\help\\a.qbp");
  Load(R"(<QBProject mvpfilename="code.mvp" TEMPLATENAME="T" Title="X" outputdirectory="out\" )"
       R"(AutoGenerateIndexEntries="False" AutoGenerateCategoryIndex="True" BuildMVProject="true" DefaultTopic="{1}" )"
       R"(Lite="True"><topic KEY="{1}"/></QBProject>)");
  EXPECT_EQ(project->MVPFileName(), "c:\\help\\code.mvp");
  EXPECT_EQ(project->TemplateName(), "T");
  EXPECT_EQ(project->OutputDirectory(), "c:\\help\\out\\");
  EXPECT_FALSE(project->AutoGenerateIndexEntries());
  EXPECT_TRUE(project->AutoGenerateCategoryIndex());
  EXPECT_FALSE(project->BuildMVProject()) << "only exactly \"True\" is True";
  EXPECT_EQ(project->DefaultTopic()->Key, "{1}");
  EXPECT_TRUE(project->LoadedFromLite);
}

TEST_F(ProjectFileTest, MissingAttributes_LeaveWhatWasThere) {
  Load(R"(<QBProject Title="First" AutoGenerateIndexEntries="False"/>)");
  Load(R"(<QBProject TemplateName="Second"/>)");
  EXPECT_EQ(project->Title(), "First");
  EXPECT_EQ(project->TemplateName(), "Second");
  EXPECT_FALSE(project->AutoGenerateIndexEntries());
}

TEST_F(ProjectFileTest, SeparateFilesType_IsNotedAndLoadedAsFarAsItGoes) {
  Load(R"(<QBProject ProjectType="1"><Topic Key="{1}" Name="a"/></QBProject>)");
  EXPECT_TRUE(project->InvalidLiteProjectType);
  EXPECT_EQ(project->ProjectType(), 0);
  EXPECT_EQ(project->Topics->Count(), 1U);
  EXPECT_NE(project->Save().find("ProjectType=\"0\""), std::string::npos);
  Load(R"(<QBProject ProjectType="0"/>)");
  EXPECT_TRUE(project->InvalidLiteProjectType) << "never cleared";
}

TEST_F(ProjectFileTest, WrongNumbersAndDates_AreIgnored) {
  project->SetSpellLastCheckDateTime(Date(40000));
  Load(R"(<QBProject ProjectType="x" SpellLastCheckDateTime="when the cows come home"/>)");
  EXPECT_FALSE(project->InvalidLiteProjectType);
  EXPECT_EQ(project->SpellLastCheckDateTime(), Date(40000));
}

TEST_F(ProjectFileTest, SpellLastCheckDateTime_ComesBack) {
  project->SetSpellLastCheckDateTime(*Date::FromParts({2024, 2, 29, 13, 5, 7}));
  const auto text = project->Save();
  const auto other = New<QBProject>();
  other->Load(text);
  EXPECT_EQ(other->SpellLastCheckDateTime(), project->SpellLastCheckDateTime());
}

TEST_F(ProjectFileTest, MVPFileName_OfThreeSeparators_IsEmpty) {
  Load(R"(<QBProject MVPFileName="\\\"/>)");
  EXPECT_EQ(project->MVPFileName(), "");
}

TEST_F(ProjectFileTest, TopicSet_IsTheOlderRoot) {
  Load(R"(<TopicSet Title="Old"><Topic Key="{1}"/></TopicSet>)");
  EXPECT_EQ(project->Topics->Count(), 1U);
  EXPECT_TRUE(project->LastLoadResult().Ok());
}

TEST_F(ProjectFileTest, AnotherRoot_GivesItsAttributesOnly) {
  Load(R"(<topicset Title="Stranger" OutputFileName="out\a.chm"><Topic Key="{1}"/></topicset>)");
  EXPECT_EQ(project->Title(), "Stranger");
  EXPECT_EQ(project->Topics->Count(), 0U);
  ASSERT_EQ(project->BuildProfiles->Count(), 1U);
  EXPECT_EQ(project->BuildProfiles->Item(1)->Name(), "Default");
  EXPECT_FALSE(project->Dirty());
  EXPECT_EQ(project->LastLoadResult().outcome, ProjectLoadResult::Outcome::OtherRoot);
  EXPECT_EQ(project->LastLoadResult().rootName, "topicset");
}

// Sections.

TEST_F(ProjectFileTest, Sections_AreReadInAnyOrderAndCase) {
  LoadWithin(R"(<NODES>)" + Node("{n}", "{t}") +
             R"(</NODES><TOPIC Key="{t}" Category="{c}"/>)"
             R"(<CAT Name="Cat" Key="{c}"/><Unknown/><File FileName="a.png"/>)");
  EXPECT_EQ(project->QBNodes->Item(1)->Topic(), project->Topics->Item("{t}"));
  EXPECT_EQ(project->OtherFiles->Count(), 1U);
}

TEST_F(ProjectFileTest, ATopicsCategory_MustStandBeforeIt) {
  LoadWithin(R"(<Topic Key="{1}" Category="{c}"/><cat Name="Cat" Key="{c}"/><Topic Key="{2}" Category="{c}"/>)");
  EXPECT_EQ(project->Topics->Item("{1}")->TopicCategory(), nullptr);
  EXPECT_EQ(project->Topics->Item("{2}")->TopicCategory()->Name(), "Cat");
}

TEST_F(ProjectFileTest, SpellingList_KeepsEachWordOnce) {
  LoadWithin("<SpellIgnoreAllWordList>a|b|a|A</SpellIgnoreAllWordList>");
  ASSERT_EQ(project->SpellIgnoreAllWordList->Count(), 2U);
  EXPECT_EQ(project->SpellIgnoreAllWordList->Item(2), "b");
  LoadWithin("<SpellIgnoreAllWordList/>");
  EXPECT_EQ(project->SpellIgnoreAllWordList->Count(), 0U);
}

TEST_F(ProjectFileTest, SpellingList_IsKept_WhereTheFileHasNone) {
  project->SpellAddIgnoreAllWord("word");
  LoadWithin("");
  EXPECT_EQ(project->SpellIgnoreAllWordList->Count(), 1U);
}

TEST_F(ProjectFileTest, SpecialValues_AreSettingsOfOlderFiles) {
  support::ProjectLog log(project);
  project->Filename->SetFullName("c:\\help\\a.qbp");
  LoadWithin(
      R"(<VariableValue Name="Template">Web</VariableValue><variablevalue name="HelpCompilerVersion">2.9</variablevalue>)"
      R"(<VariableValue Name="OutputFileName">out\old.chm</VariableValue>)"
      R"(<VariableValue Name="Help2Namespace">ns</VariableValue><VariableValue Name="Help2FileID">id</VariableValue>)"
      R"(<VariableValue Name="Company">Example</VariableValue>)");
  EXPECT_EQ(project->TemplateName(), "Web");
  ASSERT_EQ(project->VariableValues->Count(), 1U);
  EXPECT_EQ(project->VariableValues->Item("company")->Value, "Example");
  const auto profile = project->BuildProfiles->Item(1);
  EXPECT_EQ(profile->HTMLHelpVersion(), 2);
  EXPECT_EQ(profile->H2Namespace(), "ns");
  EXPECT_EQ(profile->H2FileID(), "id");
  EXPECT_EQ(profile->HelpFileName(), "c:\\help\\out\\old.chm");
  const auto told = log.Take();
  EXPECT_NE(told.find("TopicTemplateChanged"), std::string::npos) << told;
  EXPECT_EQ(told.find("Changed Dirty"), std::string::npos) << told;
}

TEST_F(ProjectFileTest, SettingsOfOlderRoots_FeedTheDefaultProfile) {
  project->Filename->SetFullName("c:\\help\\a.qbp");
  Load(R"(<QBProject OutputFileName="old.chm" Help2Namespace="ns" Help2fileid="id"/>)");
  const auto profile = project->BuildProfiles->Item(1);
  EXPECT_EQ(profile->HelpFileName(), "c:\\help\\old.chm");
  EXPECT_EQ(profile->HTMLHelpVersion(), 1);
  EXPECT_EQ(profile->H2Namespace(), "") << "only with a compiler version";
}

TEST_F(ProjectFileTest, HelpCompilerVersion_OutOfRange_DoesNoHarm) {
  LoadWithin(R"(<VariableValue Name="HelpCompilerVersion">1e300</VariableValue>)");
  EXPECT_GE(project->BuildProfiles->Item(1)->HTMLHelpVersion(), 1);
  LoadWithin(R"(<VariableValue Name="HelpCompilerVersion">none</VariableValue>)");
  EXPECT_EQ(project->BuildProfiles->Item(1)->HTMLHelpVersion(), 1);
}

TEST_F(ProjectFileTest, AValueWithoutName_StandsUnderTheEmptyKey_AndIsNotWritten) {
  LoadWithin(R"(<VariableValue Name="">x</VariableValue><VariableValue Name="A">y</VariableValue>)");
  ASSERT_EQ(project->VariableValues->Count(), 2U);
  EXPECT_EQ(project->VariableValues->Item("")->Value, "x");
  const auto other = New<QBProject>();
  other->Load(project->Save());
  ASSERT_EQ(other->VariableValues->Count(), 1U);
  EXPECT_EQ(other->VariableValues->Item(1)->Name, "A");
}

TEST_F(ProjectFileTest, TemplateName_ComesFromAValueInAnotherCase) {
  LoadWithin(R"(<VariableValue Name="template">Web</VariableValue>)");
  EXPECT_EQ(project->TemplateName(), "Web");
  EXPECT_EQ(project->VariableValues->Count(), 1U);
}

TEST_F(ProjectFileTest, BareGlossaryItems_AreAddedToTheGlossary) {
  LoadWithin(R"(<GlossaryItems><glossaryitem Key="{1}" Term="A">a</glossaryitem></GlossaryItems>)"
             R"(<GLOSSARYITEM key="{2}" term="B">b</GLOSSARYITEM>)");
  ASSERT_EQ(project->GlossaryItems()->Count(), 2U);
  EXPECT_EQ(project->GlossaryItems()->Item("{2}")->Definition(), "b");
  EXPECT_FALSE(project->Dirty());
}

TEST_F(ProjectFileTest, DuplicateTopics_AreDroppedSilently) {
  LoadWithin(R"(<Topic Key="{a}" Name="first"/><Topic Key="{A}" Name="second"/>)");
  ASSERT_EQ(project->Topics->Count(), 1U);
  EXPECT_EQ(project->Topics->Item(1)->Name(), "first");
}

TEST_F(ProjectFileTest, DuplicateFiles_AreOneEntry) {
  project->Filename->SetFullName("c:\\help\\a.qbp");
  LoadWithin(R"(<file FileName="a.png"/><file FileName="A.PNG"/>)");
  EXPECT_EQ(project->OtherFiles->Count(), 1U);
  EXPECT_TRUE(project->OtherFiles->Item("C:\\help\\a.png"));
}

TEST_F(ProjectFileTest, LoadedNodes_LivesOnlyDuringTheContents) {
  LoadWithin("<Nodes>" + Node("{1}", "", Node("{2}", "")) + Node("{2}", "") + "</Nodes>");
  EXPECT_EQ(modMain::LoadedNodes(), nullptr);
  EXPECT_EQ(project->QBNodes->AllNodes()->Count(), 2U);
}

TEST_F(ProjectFileTest, Progress_IsToldSectionBySection) {
  std::vector<std::string> captions;
  const auto connection =
      project->Events.LoadProgress.Connect([&](std::string_view caption) { captions.emplace_back(caption); });
  LoadWithin(
      "<Nodes/><file FileName='a'/><file FileName='b'/><SpellIgnoreAllWordList/><GlossaryItems/><Tasks/>"
      "<BuildProfiles/><ProjectProperties/>");
  EXPECT_EQ(captions,
            std::vector<std::string>({"Loading Table of Contents", "Loading Other Files List",
                                      "Loading Other Files List", "Loading Spelling Settings", "Loading Glossary",
                                      "Loading Tasks", "Loading Build Profiles", "Loading Project Properties"}));
}

TEST_F(ProjectFileTest, ALoad_TellsNoChange) {
  support::ProjectLog log(project);
  Load(R"(<QBProject Title="X" TemplateName="T"><cat Name="C" Key="{c}"/><Topic Key="{t}"/><file FileName="a"/>)"
       R"(<VariableValue Name="A">b</VariableValue></QBProject>)");
  const auto told = log.Take();
  for (const auto* name : {"TopicAdded", "TopicChanged", "TopicCategoryAdded", "OtherFileAdded", "Dirty"})
    EXPECT_EQ(told.find(name), std::string::npos) << told;
  EXPECT_FALSE(project->Dirty());
  EXPECT_FALSE(project->Topics->PauseEvents);
  EXPECT_FALSE(project->TopicCategories->PauseEvents);
  EXPECT_FALSE(project->OtherFiles->PauseEvents);
}

TEST_F(ProjectFileTest, ASecondLoad_ReplacesTheCollections_AndHearsThem) {
  LoadWithin(Topic("{1}") + "<ProjectProperties/>");
  const auto topics = project->Topics;
  LoadWithin(Topic("{2}"));
  EXPECT_NE(project->Topics, topics);
  EXPECT_EQ(project->Topics->Count(), 1U);
  project->NewProjectProperty("A", pptText);
  EXPECT_TRUE(project->ProjectDirty()) << "the new collection is heard";
}

// Numbered keys.

TEST_F(ProjectFileTest, NumberedKeys_BecomeGUIDs) {
  LoadWithin(R"(<cat Name="Cat" Key="C1"/><Topic Key="T1" Name="one" Category="C1"><r t="T2" cat=""/></Topic>)"
             R"(<Topic Key="T2" Name="two"><r t="T1" cat=""/><r t="t1" cat=""/></Topic>)"
             R"(<GlossaryItems><glossaryitem Key="G1" Term="A">a</glossaryitem></GlossaryItems><Nodes>)" +
             Node("N1", "T1", Node("N2", "t2")) + "</Nodes>");
  const auto one = project->TopicByName("one");
  const auto two = project->TopicByName("two");
  const auto isGuid = [](const std::string& key) { return key.size() == 38 && key.starts_with('{'); };
  EXPECT_TRUE(isGuid(one->Key) && isGuid(two->Key));
  EXPECT_EQ(project->Topics->Item(one->Key), one) << "filed under the new key";
  EXPECT_TRUE(isGuid(project->TopicCategories->Item(1)->Key));
  EXPECT_EQ(one->TopicCategory()->Name(), "Cat");
  EXPECT_TRUE(isGuid(project->GlossaryItems()->Item(1)->Key));
  const auto node = project->QBNodes->Item(1);
  EXPECT_TRUE(isGuid(node->Key));
  EXPECT_EQ(node->Topic(), one);
  EXPECT_EQ(node->ChildNodes->Item(1)->Topic(), two);
  EXPECT_EQ(one->TopicLinks()->Item(1)->ChildTopic(), two);
  EXPECT_EQ(two->TopicLinks()->Item(1)->ChildTopic(), one);
  EXPECT_EQ(two->TopicLinks()->Item(2)->ChildTopicKey, "t1") << "links compare their key exactly";
  EXPECT_FALSE(project->Dirty());
  EXPECT_EQ(project->Save().find("\"T1\""), std::string::npos);
}

TEST_F(ProjectFileTest, NumberedKeys_LoseTheDefaultTopic) {
  Load(R"(<QBProject DefaultTopic="T1"><Topic Key="T1" Name="one"/></QBProject>)");
  EXPECT_EQ(project->DefaultTopic(), nullptr);
}

TEST_F(ProjectFileTest, NumberedKeys_TellNoChange) {
  support::ProjectLog log(project);
  LoadWithin(R"(<Topic Key="T1" Name="one"/>)");
  EXPECT_EQ(log.Take().find("Dirty"), std::string::npos);
  project->SetTitle("now");
  EXPECT_TRUE(project->Dirty()) << "the load has ended";
}

// Files.

TEST_F(ProjectFileTest, LoadFromFile_TakesTheName_AndIsNotDirty) {
  const support::TemporaryFolder folder;
  folder.Write("a.qbp", "<QBProject Title=\"A\" OutputDirectory=\"out\"><file FileName=\"b.png\"/></QBProject>");
  project->LoadFromFile(folder.Stored("a.qbp"));
  EXPECT_EQ(project->Filename->FullName(), folder.Stored("a.qbp"));
  EXPECT_EQ(project->OutputDirectory(), folder.Stored("out\\"));
  EXPECT_EQ(project->OtherFiles->Item(1)->LocalSpec(), folder.Stored("b.png"));
  EXPECT_FALSE(project->Dirty());
}

TEST_F(ProjectFileTest, LoadFromFile_OfAMissingFile_ShowsInTheTitleOnly) {
  LoadWithin(Topic("{1}"));
  support::ProjectLog log(project);
  project->LoadFromFile("\\no\\such.qbp");
  EXPECT_EQ(project->Title(), "{Could not find file '\\no\\such.qbp'}");
  EXPECT_EQ(project->Topics->Count(), 1U);
  EXPECT_EQ(project->Filename->FullName(), "");
  EXPECT_FALSE(project->Dirty());
  EXPECT_EQ(log.Take(), "");
  EXPECT_EQ(project->LastLoadResult().outcome, ProjectLoadResult::Outcome::FileNotFound);
}

}  // namespace
}  // namespace quillbook
