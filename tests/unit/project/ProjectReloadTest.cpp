#include <gtest/gtest.h>

#include "quillbook/config/BuildProfile.h"
#include "quillbook/config/BuildProfiles.h"
#include "quillbook/config/ProjectProperties.h"
#include "quillbook/config/ProjectProperty.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/structure/GlossaryItem.h"
#include "quillbook/structure/GlossaryItems.h"
#include "quillbook/structure/OtherFiles.h"
#include "quillbook/structure/QBNode.h"
#include "quillbook/structure/QBNodes.h"
#include "quillbook/structure/Task.h"
#include "quillbook/structure/Tasks.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/TopicCategories.h"
#include "quillbook/topics/TopicCategory.h"
#include "quillbook/topics/Topics.h"
#include "support/ProjectLog.h"
#include "support/ProjectTest.h"
#include "support/TemporaryFolder.h"

namespace quillbook {
namespace {

/// A project file with two topics in a category, changed by another tool while the project is in memory.
class ProjectReloadTest : public support::ProjectTest {
 protected:
  void SetUp() override {
    ProjectTest::SetUp();
    WriteFile("Before", R"(<cat Name="Old" Key="{c}"/>)",
              R"(<Topic Key="{1}" Name="one" Category="{c}"/>)"
              R"(<Topic Key="{2}" Name="two" Category="{c}"/>)");
    project->LoadFromFile(folder.Stored("a.qbp"));
  }
  void WriteFile(const std::string& title, const std::string& categories, const std::string& rest) {
    folder.Write("a.qbp", "<QBProject Title=\"" + title + "\">" + categories + rest + "</QBProject>");
  }

  support::TemporaryFolder folder;
};

TEST_F(ProjectReloadTest, ReadsTheSettingsAgain) {
  project->VariableValues->Add(New<VariableValue>("unsaved", "x"), "unsaved");
  project->NewProjectProperty("unsaved", pptText);
  const auto profile = project->NewBuildProfile("unsaved");
  project->BuildProfiles->Add(profile, profile->ID());
  const auto file = project->NewOtherFile(folder.Stored("unsaved.png"));
  project->OtherFiles->Add(file, file->LocalSpec());
  WriteFile("After", "",
            R"(<VariableValue Name="A">1</VariableValue><SpellIgnoreAllWordList>w</SpellIgnoreAllWordList>)"
            R"(<ProjectProperties><ProjectProperty PropertyName="P" PropertyType="0" PropertyValue="v" )"
            R"(ID="{p}"/></ProjectProperties><Topic Key="{1}"/><Topic Key="{2}"/>)");
  project->Reload();
  EXPECT_EQ(project->Title(), "After");
  ASSERT_EQ(project->VariableValues->Count(), 1U);
  EXPECT_EQ(project->VariableValues->Item(1)->Name, "A");
  ASSERT_EQ(project->ProjectProperties()->Count(), 1U);
  ASSERT_EQ(project->BuildProfiles->Count(), 1U);
  EXPECT_EQ(project->BuildProfiles->Item(1)->Name(), "Default") << "the profile that was never saved is gone";
  EXPECT_EQ(project->OtherFiles->Count(), 0U);
  EXPECT_EQ(project->SpellIgnoreAllWordList->Count(), 1U);
  EXPECT_FALSE(project->Dirty());
}

TEST_F(ProjectReloadTest, KeepsContentsTasksAndGlossary) {
  const auto node = project->QBNodes->NewNode();
  node->SetCaptionText("never saved");
  const auto task = project->NewTask();
  project->Tasks->Add(task, task->Key());
  const auto item = project->NewGlossaryItem("API", "");
  project->GlossaryItems()->Add(item, item->Key);
  WriteFile("After", "",
            R"(<Nodes/><Tasks/><GlossaryItems><glossaryitem Key="{g}" Term="B">b</glossaryitem></GlossaryItems>)"
            R"(<Topic Key="{1}"/><Topic Key="{2}"/>)");
  project->Reload();
  EXPECT_EQ(project->QBNodes->Item(1), node);
  EXPECT_EQ(project->Tasks->Item(1), task);
  ASSERT_EQ(project->GlossaryItems()->Count(), 1U);
  EXPECT_EQ(project->GlossaryItems()->Item(1), item);
}

TEST_F(ProjectReloadTest, AddsBareGlossaryItems_AllTheSame) {
  WriteFile("After", "", R"(<glossaryitem Key="{g}" Term="B">b</glossaryitem><Topic Key="{1}"/><Topic Key="{2}"/>)");
  project->Reload();
  EXPECT_EQ(project->GlossaryItems()->Count(), 1U);
}

TEST_F(ProjectReloadTest, KeepsTopicsWithTheirUnsavedContent_AndAddsNewOnes) {
  const auto one = project->Topics->Item("{1}");
  one->SetTitle("unsaved");
  WriteFile("After", "", R"(<Topic Key="{3}" Name="three"/><Topic Key="{1}" Title="stored"/><Topic Key="{2}"/>)");
  project->Reload();
  EXPECT_EQ(project->Topics->Item("{1}"), one);
  EXPECT_EQ(one->Title(), "unsaved");
  ASSERT_EQ(project->Topics->Count(), 3U);
  EXPECT_EQ(project->Topics->Item(3)->Name(), "three");
}

TEST_F(ProjectReloadTest, TellsOfTopicsThatLeftTheFile_AndKeepsThem) {
  std::vector<std::string> removed;
  const auto connection =
      project->Events.TopicRemoved.Connect([&](const Ref<Topic>& topic) { removed.push_back(topic->Name()); });
  const auto node = project->QBNodes->NewNode();
  node->SetQBNodeType(ntSingleTopic);
  node->SetTopicID("{2}");
  WriteFile("After", "", R"(<Topic Key="{1}"/>)");
  project->Reload();
  EXPECT_EQ(removed, std::vector<std::string>({"two"}));
  EXPECT_EQ(project->Topics->Count(), 2U);
  EXPECT_EQ(node->QBNodeType(), ntSingleTopic) << "what becomes of the topic is left to the listener";
  EXPECT_FALSE(project->Dirty());
}

TEST_F(ProjectReloadTest, TellsOfThemInOrder) {
  std::string removed;
  const auto connection =
      project->Events.TopicRemoved.Connect([&](const Ref<Topic>& topic) { removed += topic->Name() + " "; });
  WriteFile("After", "", "");
  project->Reload();
  EXPECT_EQ(removed, "one two ");
}

TEST_F(ProjectReloadTest, GivesTopicsTheNewCategoryObjects) {
  const auto old = project->Topics->Item("{1}")->TopicCategory();
  WriteFile("After", R"(<cat Name="New" Key="{c}"/>)", R"(<Topic Key="{1}"/><Topic Key="{2}"/>)");
  project->Reload();
  const auto category = project->Topics->Item("{1}")->TopicCategory();
  EXPECT_NE(category, old);
  EXPECT_EQ(category->Name(), "New");
  WriteFile("After", "", R"(<Topic Key="{1}"/><Topic Key="{2}"/>)");
  project->Reload();
  EXPECT_EQ(project->Topics->Item("{1}")->TopicCategory(), nullptr);
}

TEST_F(ProjectReloadTest, LeavesNothingPaused) {
  project->Reload();
  EXPECT_FALSE(project->Topics->PauseEvents);
  EXPECT_FALSE(project->QBNodes->PauseEvents);
  EXPECT_FALSE(project->GlossaryItems()->PauseEvents);
  EXPECT_FALSE(project->OtherFiles->PauseEvents);
  EXPECT_FALSE(project->Tasks->PauseEvents);
  EXPECT_FALSE(project->TopicCategories->PauseEvents);
}

TEST_F(ProjectReloadTest, ClearsTheDirtyState_WithoutTelling) {
  project->SetTitle("unsaved");
  project->QBNodes->SetDirty(true);
  support::ProjectLog log(project);
  project->Reload();
  EXPECT_FALSE(project->Dirty());
  EXPECT_EQ(log.Take().find("Dirty"), std::string::npos);
}

TEST_F(ProjectReloadTest, DoesNotRenewNumberedKeys) {
  WriteFile("After", "", R"(<Topic Key="{1}"/><Topic Key="{2}"/><Topic Key="T3" Name="three"/>)");
  project->Reload();
  EXPECT_EQ(project->TopicByName("three")->Key, "T3");
}

}  // namespace
}  // namespace quillbook
