#include "quillbook/project/QBProject.h"

#include <gtest/gtest.h>

#include "quillbook/config/BuildProfile.h"
#include "quillbook/config/BuildProfiles.h"
#include "quillbook/config/ProjectProperties.h"
#include "quillbook/config/ProjectProperty.h"
#include "quillbook/frame/Root.h"
#include "quillbook/frame/modMain.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/host/MVProject.h"
#include "quillbook/structure/GlossaryItem.h"
#include "quillbook/structure/GlossaryItems.h"
#include "quillbook/structure/OtherFile.h"
#include "quillbook/structure/OtherFiles.h"
#include "quillbook/structure/QBNodes.h"
#include "quillbook/structure/Task.h"
#include "quillbook/structure/Tasks.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/TopicCategories.h"
#include "quillbook/topics/TopicCategory.h"
#include "quillbook/topics/Topics.h"
#include "support/ProjectTest.h"
#include "support/TemporaryFolder.h"

namespace quillbook {
namespace {

class QBProjectTest : public support::ProjectTest {
 protected:
  void SetUp() override {
    ProjectTest::SetUp();
    project->Filename->SetFullName("c:\\help\\my.qbp");
  }
  Ref<Topic> AddTopic(std::string_view name) {
    auto topic = project->NewTopic();
    topic->SetName(name);
    project->Topics->Add(topic, topic->Key);
    return topic;
  }
};

TEST_F(QBProjectTest, IsEmptyWhenMade) {
  project = New<QBProject>();
  EXPECT_EQ(project->Filename->FullName(), "");
  EXPECT_EQ(project->VariableValues->Count(), 0U);
  EXPECT_EQ(project->Topics->Count(), 0U);
  EXPECT_EQ(project->TopicCategories->Count(), 0U);
  EXPECT_EQ(project->OtherFiles->Count(), 0U);
  EXPECT_EQ(project->BuildProfiles->Count(), 0U);
  EXPECT_EQ(project->Tasks->Count(), 0U);
  EXPECT_EQ(project->SpellIgnoreAllWordList->Count(), 0U);
  EXPECT_EQ(project->QBNodes->Count(), 0U);
  EXPECT_EQ(project->GlossaryItems()->Count(), 0U);
  EXPECT_EQ(project->ProjectProperties()->Count(), 0U);
  EXPECT_EQ(project->Topics->QBProject(), project);
  EXPECT_EQ(project->GlossaryItems()->QBProject(), project);
  EXPECT_FALSE(project->Silent);
  EXPECT_FALSE(project->LoadedFromLite);
  EXPECT_FALSE(project->InvalidLiteProjectType);
  EXPECT_TRUE(project->AutoGenerateIndexEntries());
  EXPECT_FALSE(project->AutoGenerateCategoryIndex());
  EXPECT_TRUE(project->BuildMVProject());
  EXPECT_EQ(project->CurrentBuildProfile(), nullptr);
  EXPECT_EQ(project->DefaultTopic(), nullptr);
  EXPECT_EQ(project->SpellLastCheckDateTime(), Date());
  EXPECT_EQ(project->OutputDirectory(), "");
  EXPECT_EQ(project->MVPFileName(), "");
  EXPECT_FALSE(project->Dirty());
}

TEST_F(QBProjectTest, RegistersTheClipboardFormats_WithoutARoot) {
  EXPECT_EQ(modMain::RootIncrement(), 0);
  EXPECT_NE(modMain::mClipboardDataFormat(), 0);
}

TEST_F(QBProjectTest, Fields_AreDumpedInDeclaredOrder) {
  std::string names;
  project->Fields([&names](std::string_view name, const Variant&) { names.append(name).append(" "); });
  EXPECT_EQ(names,
            "Filename VariableValues Topics TopicCategories OtherFiles BuildProfiles Tasks SpellIgnoreAllWordList "
            "Silent LoadedFromLite InvalidLiteProjectType IncrementingValues mCurrentBuildProfile mBuildMVProject "
            "mTitle mHelp2Namespace mHelp2FileID mGlossaryItems mDirty mMVPFileName mLoading mGeneratedFiles "
            "mDefaultTopicLayout mSpellLastCheckDateTime mTemplateName mTopicsDirty mDictionaryFileName "
            "mBuildCancelled mOutputDirectory mAutoGenerateIndexEntries mAutoGenerateCategoryIndex mDefaultTopicID "
            "QBNodes mProjectProperties mMVProject mMVProjectBuild ");
}

TEST_F(QBProjectTest, Members_AreLateBound) {
  project->SetMember("title", Variant("Late"));
  EXPECT_EQ(project->Member("Title").ToText(), "Late");
  EXPECT_EQ(project->Member("Topics").ToObject(), project->Topics);
  EXPECT_EQ(project->Member("GlossaryItems").ToObject(), project->GlossaryItems());
  EXPECT_FALSE(project->HasMember("mTitle"));
}

TEST_F(QBProjectTest, ProjectType_CannotBeChanged) {
  project->SetProjectType(ProjectTypeSeparateFiles);
  EXPECT_EQ(project->ProjectType(), 0);
  EXPECT_FALSE(project->Dirty());
}

TEST_F(QBProjectTest, DataPaths_LieBesideTheProjectFile) {
  EXPECT_EQ(project->QualifiedName(), "c:\\help\\my.qbp");
  EXPECT_EQ(project->TopicDataPath(), "c:\\help\\TopicData\\");
  EXPECT_EQ(project->ProjectDataPath(), "c:\\help\\ProjectData\\");
}

TEST_F(QBProjectTest, ReadOnly_IsTheFilesAttribute) {
  const support::TemporaryFolder folder;
  folder.Write("a.qbp", "<QBProject/>");
  project->Filename->SetFullName(folder.Stored("a.qbp"));
  EXPECT_FALSE(project->ReadOnly());
  std::filesystem::permissions(folder.Native("a.qbp"), std::filesystem::perms::owner_read);
  EXPECT_TRUE(project->ReadOnly());
}

// Paths.

TEST_F(QBProjectTest, OutputDirectory_IsAbsoluteWithASeparator) {
  project->SetOutputDirectory("c:\\help\\out");
  EXPECT_EQ(project->OutputDirectory(), "c:\\help\\out\\");
  project->SetOutputDirectory("d:\\out\\");
  EXPECT_EQ(project->OutputDirectory(), "d:\\out\\");
  project->SetOutputDirectory("");
  EXPECT_EQ(project->OutputDirectory(), "");
}

TEST_F(QBProjectTest, OutputDirectory_MovesWithTheProjectFile) {
  project->SetOutputDirectory("c:\\help\\out");
  project->Filename->SetFullName("d:\\moved\\my.qbp");
  EXPECT_EQ(project->OutputDirectory(), "d:\\moved\\out\\");
}

TEST_F(QBProjectTest, OutputDirectory_ToldTwice_IsNoChange) {
  project->SetOutputDirectory("c:\\help\\out");
  project->SetDirty(false);
  project->SetOutputDirectory("c:\\help\\out\\");
  EXPECT_FALSE(project->Dirty());
}

TEST_F(QBProjectTest, MVPFileName_IsAbsoluteWithoutSeparator) {
  project->SetMVPFileName("c:\\help\\sub\\code.mvp");
  EXPECT_EQ(project->MVPFileName(), "c:\\help\\sub\\code.mvp");
  project->Filename->SetFullName("d:\\moved\\my.qbp");
  EXPECT_EQ(project->MVPFileName(), "d:\\moved\\sub\\code.mvp");
}

TEST_F(QBProjectTest, MVPFileName_IsClearedByThreeSeparators) {
  project->SetMVPFileName("c:\\help\\code.mvp");
  project->SetMVPFileName("\\\\\\");
  EXPECT_EQ(project->MVPFileName(), "");
}

// Default topic.

TEST_F(QBProjectTest, DefaultTopic_DisappearsWhileItIsKeptOut) {
  const auto topic = AddTopic("Start");
  project->SetDefaultTopic(topic);
  EXPECT_EQ(project->DefaultTopic(), topic);
  topic->SetIncludeInHelpFile(false);
  EXPECT_EQ(project->DefaultTopic(), nullptr);
  topic->SetIncludeInHelpFile(true);
  EXPECT_EQ(project->DefaultTopic(), topic);
}

TEST_F(QBProjectTest, DefaultTopic_IsNothing_WhenItsTopicIsGone) {
  const auto topic = AddTopic("Start");
  project->SetDefaultTopic(topic);
  project->Topics->Remove(topic->Key);
  EXPECT_EQ(project->DefaultTopic(), nullptr);
}

TEST_F(QBProjectTest, DefaultTopic_IsCleared) {
  project->SetDefaultTopic(AddTopic("Start"));
  project->SetDirty(false);
  project->SetDefaultTopic({});
  EXPECT_EQ(project->DefaultTopic(), nullptr);
  EXPECT_TRUE(project->ProjectDirty());
  project->SetDirty(false);
  project->SetDefaultTopic({});
  EXPECT_FALSE(project->ProjectDirty());
}

// Factories.

TEST_F(QBProjectTest, NewTopic_SucceedsWithoutStatuses) {
  const auto before = Date::Now();
  const auto topic = project->NewTopic();
  ASSERT_TRUE(topic);
  EXPECT_EQ(topic->Status(), "");
  EXPECT_EQ(topic->TopicSectionData("BodyText"), "<p> </p>");
  EXPECT_EQ(topic->QBProject(), project);
  EXPECT_EQ(topic->Key.size(), 38U);
  EXPECT_GE(topic->CreatedOn(), before);
  EXPECT_EQ(topic->ModifiedOn(), Date());
  EXPECT_FALSE(topic->PauseEvents());
  EXPECT_FALSE(topic->Dirty());
  EXPECT_TRUE(topic->NewTopicFlag);
  EXPECT_EQ(project->Topics->Count(), 0U);
  EXPECT_FALSE(project->Dirty());
}

TEST_F(QBProjectTest, NewTopic_HasTheFirstStatus) {
  { const auto drop = New<Root>(); }
  const support::TemporaryFolder folder;
  folder.Write("configuration/statuscodes.xml",
               R"(<s><a Name="Draft" Caption="" Icon=""/><a Name="Done" Caption="" Icon=""/></s>)");
  Platform::Current().Registry().SetValue(RegistryHive::LocalMachine, "Software\\Corvane\\Quillbook2", "LiteInstallDir",
                                          folder.Stored(""));
  EXPECT_EQ(project->NewTopic()->Status(), "Draft");
  { const auto drop = New<Root>(); }
}

TEST_F(QBProjectTest, Factories_LeaveAddingToTheCaller) {
  const auto category = project->NewTopicCategory();
  EXPECT_EQ(category->QBProject(), project);
  EXPECT_EQ(category->Key.size(), 38U);
  const auto file = project->NewOtherFile("c:\\help\\a.png");
  EXPECT_EQ(file->QBProject(), project);
  EXPECT_EQ(file->Filename->FullName(), "c:\\help\\a.png");
  const auto item = project->NewGlossaryItem("API", "an interface");
  EXPECT_EQ(item->QBProject(), project);
  EXPECT_EQ(item->Key.size(), 38U);
  EXPECT_EQ(item->Term(), "API");
  EXPECT_EQ(item->Definition(), "an interface");
  const auto task = project->NewTask();
  EXPECT_EQ(task->QBProject(), project);
  EXPECT_EQ(task->Key().size(), 38U);
  EXPECT_FALSE(task->PauseEvents());
  const auto profile = project->NewBuildProfile("Web", "The title", false, 0x10002);
  EXPECT_EQ(profile->BuildProfiles(), project->BuildProfiles);
  EXPECT_EQ(profile->Name(), "Web");
  EXPECT_EQ(profile->ProjectTitle(), "The title");
  EXPECT_FALSE(profile->CompileHelpFile());
  EXPECT_EQ(profile->HTMLHelpVersion(), 2) << "narrowed to 16 bits";
  EXPECT_EQ(project->NewBuildProfile()->HTMLHelpVersion(), 1);
  EXPECT_TRUE(project->NewBuildProfile()->CompileHelpFile());

  EXPECT_EQ(project->TopicCategories->Count(), 0U);
  EXPECT_EQ(project->OtherFiles->Count(), 0U);
  EXPECT_EQ(project->GlossaryItems()->Count(), 0U);
  EXPECT_EQ(project->Tasks->Count(), 0U);
  EXPECT_EQ(project->BuildProfiles->Count(), 0U);
}

TEST_F(QBProjectTest, NewProjectProperty_IsAdded) {
  const auto property = project->NewProjectProperty("Company", pptHTML, "Example");
  EXPECT_EQ(project->ProjectProperties()->Item("company"), property);
  EXPECT_EQ(project->ProjectProperties()->Item(property->ID()), property);
  EXPECT_EQ(property->PropertyType(), pptHTML);
  EXPECT_TRUE(project->ProjectDirty());
  EXPECT_EQ(project->NewProjectProperty("Empty", pptText)->PropertyValue(), "");
}

// Lookups.

TEST_F(QBProjectTest, TopicByName_FindsTheFirstIgnoringCase) {
  const auto first = AddTopic("Intro");
  AddTopic("intro");
  EXPECT_EQ(project->TopicByName("INTRO"), first);
  EXPECT_EQ(project->TopicByName("unknown"), nullptr);
  first->SetName("other");
  EXPECT_EQ(project->TopicByName("Intro")->Name(), "intro");
}

TEST_F(QBProjectTest, TopicByQualifiedName_LooksForTheSafeName) {
  const auto topic = AddTopic("a/b: c?");
  EXPECT_EQ(project->TopicByQualifiedName("A-B- C "), topic);
  EXPECT_EQ(project->TopicByQualifiedName("a/b: c?"), nullptr);
}

TEST_F(QBProjectTest, GetTopicFromURL_TakesPagesOnly) {
  const auto topic = AddTopic("my topic");
  EXPECT_EQ(project->GetTopicFromURL("my%20topic.html"), topic);
  EXPECT_EQ(project->GetTopicFromURL("file:///c:/help/My%20Topic.html"), topic);
  EXPECT_EQ(project->GetTopicFromURL("my topic"), nullptr);
  EXPECT_EQ(project->GetTopicFromURL("my topic.htm"), nullptr);
  EXPECT_EQ(project->GetTopicFromURL("my topic.HTML"), nullptr);
  EXPECT_EQ(project->GetTopicFromURL("http://x/my topic.html"), nullptr);
  EXPECT_EQ(project->GetTopicFromURL(""), nullptr);
}

TEST_F(QBProjectTest, ParseURL_CutsTheProjectsFolder) {
  EXPECT_EQ(project->ParseURL("file:///C:/HELP/sub/a%20b.html"), "sub\\a b.html");
  EXPECT_EQ(project->ParseURL("file:///c:/other/a.html"), "c:\\other\\a.html");
  EXPECT_EQ(project->ParseURL("sub/a%20b.html"), "sub\\a b.html");
  EXPECT_EQ(project->ParseURL("http://x/a%20b"), "http://x/a%20b");
}

TEST_F(QBProjectTest, ParseURL_KnowsFoldersWithoutADrive) {
  project->Filename->SetFullName("\\home\\ann\\help\\my.qbp");
  EXPECT_EQ(project->ParseURL("file:///home/ann/help/a.html"), "a.html");
  EXPECT_EQ(project->ParseURL("file:///home/bob/a.html"), "home\\bob\\a.html");
}

TEST_F(QBProjectTest, SortedTopics_AreInOrderOfTheirNames) {
  const auto b1 = AddTopic("b");
  const auto c = AddTopic("C");
  const auto a = AddTopic("a");
  const auto b2 = AddTopic("B");
  const auto b3 = AddTopic("b");
  const auto sorted = project->SortedTopics();
  ASSERT_EQ(sorted->Count(), 5U);
  EXPECT_EQ(sorted->Item(1), a);
  EXPECT_EQ(sorted->Item(2), b1);
  EXPECT_EQ(sorted->Item(3), b2);
  EXPECT_EQ(sorted->Item(4), b3);
  EXPECT_EQ(sorted->Item(5), c);
  EXPECT_EQ(sorted->Item(a->Key), a);
  EXPECT_EQ(sorted->QBProject(), nullptr);
}

// Values.

TEST_F(QBProjectTest, RuntimeValues_ComeFromTheProject_WithoutAProfile) {
  project->VariableValues->Add(New<VariableValue>("Colour", "red"), "Colour");
  project->NewProjectProperty("Company", pptText, "Example");
  EXPECT_EQ(project->RuntimeVariableValue("colour"), "red");
  EXPECT_EQ(project->RuntimeVariableValue("unknown"), "");
  EXPECT_EQ(project->RuntimeProjectPropertyValue("COMPANY"), "Example");
  EXPECT_EQ(project->RuntimeProjectPropertyValue("unknown"), "");
  EXPECT_EQ(project->GetVariableValue("Colour", "blue"), "red");
  EXPECT_EQ(project->GetVariableValue("unknown", "blue"), "blue");
}

TEST_F(QBProjectTest, RuntimeValues_ComeFromTheProfile_WhileThereIsOne) {
  project->VariableValues->Add(New<VariableValue>("Colour", "red"), "Colour");
  const auto property = project->NewProjectProperty("Company", pptText, "Example");
  const auto profile = project->NewBuildProfile("Web");
  profile->SetVariableValue("Colour", "green");
  profile->SetProjectPropertyValue(property->ID(), "Other");
  project->SetDirty(false);
  project->SetCurrentBuildProfile(profile);
  EXPECT_FALSE(project->Dirty());
  EXPECT_EQ(project->RuntimeVariableValue("Colour"), "green");
  EXPECT_EQ(project->RuntimeProjectPropertyValue("Company"), "Other");
}

// Spelling.

TEST_F(QBProjectTest, SpellAddIgnoreAllWord_KnowsAWordOnce) {
  project->SpellAddIgnoreAllWord("qbp");
  project->SpellAddIgnoreAllWord("QBP");
  ASSERT_EQ(project->SpellIgnoreAllWordList->Count(), 1U);
  EXPECT_EQ(project->SpellIgnoreAllWordList->Item(1), "qbp");
  EXPECT_FALSE(project->Dirty());
}

TEST_F(QBProjectTest, SpellAddIgnoreAllWord_KnowsTheEmptyWordOnceToo) {
  project->SpellAddIgnoreAllWord("");
  project->SpellAddIgnoreAllWord("");
  EXPECT_EQ(project->SpellIgnoreAllWordList->Count(), 1U);
}

TEST_F(QBProjectTest, SaveSpellIgnoreAllWordListToFile_WritesWordsTermsAndEntities) {
  const support::TemporaryFolder folder;
  project->SaveSpellIgnoreAllWordListToFile(folder.Stored("sub/words.txt"));
  EXPECT_FALSE(folder.Has("sub")) << "nothing to write";
  project->SpellAddIgnoreAllWord("qbp");
  const auto item = project->NewGlossaryItem("API", "");
  project->GlossaryItems()->Add(item, item->Key);
  project->SaveSpellIgnoreAllWordListToFile(folder.Stored("sub/words.txt"));
  EXPECT_EQ(folder.Read("sub/words.txt"), "qbp\nAPI\n&nbsp;\n&gt;\n&lt;\n");
}

// End.

TEST_F(QBProjectTest, EndsWithItsLastReference_WhateverItHolds) {
  AddTopic("a");
  const auto item = project->NewGlossaryItem("API", "");
  project->GlossaryItems()->Add(item, item->Key);
  const auto node = project->QBNodes->NewNode();
  node->ChildNodes->NewNode(node);
  project->NewProjectProperty("Company", pptText);
  const auto connection = project->Events.Changed.Connect([] {});
  project = nullptr;  // the fixture counts what lives
  EXPECT_EQ(item->QBProject(), nullptr);
  EXPECT_EQ(node->QBNodes(), nullptr);
}

}  // namespace
}  // namespace quillbook
