#include <gtest/gtest.h>

#include "quillbook/config/ProjectProperties.h"
#include "quillbook/config/ProjectProperty.h"
#include "quillbook/structure/GlossaryItems.h"
#include "quillbook/structure/OtherFiles.h"
#include "quillbook/structure/QBNodes.h"
#include "quillbook/structure/Tasks.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/TopicCategories.h"
#include "quillbook/topics/Topics.h"
#include "support/ProjectTest.h"

namespace quillbook {
namespace {

class ProjectDirtyTest : public support::ProjectTest {
 protected:
  void SetUp() override {
    ProjectTest::SetUp();
    mDirtied = project->Events.DirtyStateChanged.Connect([this] { ++notices; });
    mChanged = project->Events.Changed.Connect([this] { ++changes; });
  }

  int notices = 0;
  int changes = 0;

 private:
  Connection mDirtied;
  Connection mChanged;
};

TEST_F(ProjectDirtyTest, Title_SetToTheSame_TellsNobody) {
  project->SetTitle("Help");
  EXPECT_EQ(changes, 1);
  EXPECT_TRUE(project->ProjectDirty());
  project->SetDirty(false);
  project->SetTitle("Help");
  EXPECT_EQ(changes, 1);
  EXPECT_FALSE(project->Dirty());
  project->SetTitle("help");
  EXPECT_EQ(changes, 2) << "titles compare exactly";
}

TEST_F(ProjectDirtyTest, EverySimpleProperty_TellsOfARealChangeOnly) {
  const auto set = [this] {
    project->SetTitle("a");
    project->SetDictionaryFileName("b");
    project->SetTemplateName("c");
    project->SetSpellLastCheckDateTime(Date(40000));
    project->SetAutoGenerateIndexEntries(false);
    project->SetAutoGenerateCategoryIndex(true);
    project->SetBuildMVProject(false);
  };
  set();
  EXPECT_EQ(changes, 7);
  set();
  EXPECT_EQ(changes, 7);
}

TEST_F(ProjectDirtyTest, TemplateName_IsTold_UnlessTopicsArePaused) {
  std::vector<std::string> told;
  const auto connection =
      project->Events.TopicTemplateChanged.Connect([&](std::string_view name) { told.emplace_back(name); });
  project->SetTemplateName("Web");
  project->SetTemplateName("WEB");
  EXPECT_EQ(project->TemplateName(), "Web") << "only the case differs";
  project->Topics->PauseEvents = true;
  project->SetTemplateName("Print");
  EXPECT_EQ(told, std::vector<std::string>({"Web"}));
  EXPECT_EQ(changes, 2);
}

TEST_F(ProjectDirtyTest, Dirty_TellsAtEveryWrite) {
  project->SetDirty(true);
  project->SetDirty(true);
  EXPECT_EQ(notices, 2);
  project->SetDirty(false);
  EXPECT_EQ(notices, 3);
  project->SetDirty(false);
  EXPECT_EQ(notices, 4) << "also where nothing changed";
}

TEST_F(ProjectDirtyTest, Dirty_False_ClearsEveryFlagButTheTopicsOwn) {
  const auto topic = project->NewTopic();
  topic->SetDirty(true);
  project->SetTopicsDirty(true);
  project->QBNodes->SetDirty(true);
  project->GlossaryItems()->SetDirty(true);
  project->Tasks->SetDirty(true);
  project->SetDirty(false);
  EXPECT_FALSE(project->Dirty());
  EXPECT_FALSE(project->ProjectDirty());
  EXPECT_FALSE(project->TopicsDirty());
  EXPECT_FALSE(project->QBNodes->Dirty());
  EXPECT_FALSE(project->GlossaryItems()->Dirty());
  EXPECT_FALSE(project->Tasks->Dirty());
  EXPECT_TRUE(topic->Dirty());
}

TEST_F(ProjectDirtyTest, Dirty_SeesEveryPart_ButProjectDirtyOnlyTheProject) {
  const auto expectDirtyPart = [this](auto&& mark) {
    project->SetDirty(false);
    mark();
    EXPECT_TRUE(project->Dirty());
    EXPECT_FALSE(project->ProjectDirty());
  };
  expectDirtyPart([this] { project->SetTopicsDirty(true); });
  expectDirtyPart([this] { project->QBNodes->SetDirty(true); });
  expectDirtyPart([this] { project->GlossaryItems()->SetDirty(true); });
  expectDirtyPart([this] { project->Tasks->SetDirty(true); });
}

TEST_F(ProjectDirtyTest, AChangedTopic_DirtiesTheProjectButNotItsOwnFlag) {
  const auto topic = project->NewTopic();
  project->Topics->Add(topic, topic->Key);
  project->SetDirty(false);
  topic->SetTitle("new");
  EXPECT_TRUE(project->Dirty());
  EXPECT_TRUE(project->TopicsDirty());
  EXPECT_FALSE(project->ProjectDirty());
}

TEST_F(ProjectDirtyTest, TopicsDirty_TellsOfTrueOnly) {
  project->SetTopicsDirty(true);
  EXPECT_EQ(notices, 1);
  project->SetTopicsDirty(false);
  EXPECT_EQ(notices, 1);
}

TEST_F(ProjectDirtyTest, ChangedProperties_MarkTheProjectOnly) {
  const auto property = project->NewProjectProperty("Company", pptText);
  EXPECT_TRUE(project->ProjectDirty());
  project->SetDirty(false);
  property->SetPropertyValue("Example");
  EXPECT_TRUE(project->ProjectDirty());
  project->SetDirty(false);
  project->ProjectProperties()->Remove(property->ID());
  EXPECT_TRUE(project->ProjectDirty());
  EXPECT_EQ(changes, 0);
}

TEST_F(ProjectDirtyTest, EventsOfTheContents_MarkTheProject) {
  project->QBNodes->Events.ItemAdded.Raise({});
  EXPECT_TRUE(project->ProjectDirty());
  project->SetDirty(false);
  project->QBNodes->Events.ItemRemoved.Raise({});
  EXPECT_TRUE(project->ProjectDirty());
}

TEST_F(ProjectDirtyTest, PauseEvents_GoesToSixCollections) {
  EXPECT_FALSE(project->PauseEvents());
  project->SetPauseEvents(true);
  EXPECT_TRUE(project->Topics->PauseEvents);
  EXPECT_TRUE(project->QBNodes->PauseEvents);
  EXPECT_TRUE(project->GlossaryItems()->PauseEvents);
  EXPECT_TRUE(project->OtherFiles->PauseEvents);
  EXPECT_TRUE(project->Tasks->PauseEvents);
  EXPECT_TRUE(project->TopicCategories->PauseEvents);
  EXPECT_TRUE(project->PauseEvents());
}

TEST_F(ProjectDirtyTest, PauseEvents_ReadsTrueOnlyIfAllArePaused) {
  project->Tasks->PauseEvents = true;
  EXPECT_FALSE(project->PauseEvents());
  project->SetPauseEvents(true);
  project->TopicCategories->PauseEvents = false;
  EXPECT_FALSE(project->PauseEvents());
}

}  // namespace
}  // namespace quillbook
