#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <sstream>

#include "quillbook/config/BuildProfile.h"
#include "quillbook/config/BuildProfiles.h"
#include "quillbook/structure/GlossaryItem.h"
#include "quillbook/structure/GlossaryItems.h"
#include "quillbook/structure/OtherFile.h"
#include "quillbook/structure/OtherFiles.h"
#include "quillbook/structure/QBNode.h"
#include "quillbook/structure/QBNodes.h"
#include "quillbook/structure/Task.h"
#include "quillbook/structure/Tasks.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/TopicCategories.h"
#include "quillbook/topics/TopicCategory.h"
#include "quillbook/topics/TopicLink.h"
#include "quillbook/topics/TopicSection.h"
#include "quillbook/topics/TopicSections.h"
#include "quillbook/topics/Topics.h"
#include "support/ProjectLog.h"
#include "support/ProjectTest.h"

namespace quillbook {
namespace {

/// Looks at every operation that reports to the project: what it raises, live and paused, and what becomes dirty.
class ProjectEventsTest : public support::ProjectTest {
 protected:
  void SetUp() override {
    ProjectTest::SetUp();
    topic = project->NewTopic();
    topic->SetName("Topic");
    topic->SetTitle("Title");
    project->Topics->Add(topic, topic->Key);
    project->SetDirty(false);
    log = std::make_unique<support::ProjectLog>(project);
  }
  void TearDown() override {
    log = nullptr;
    topic = nullptr;
    ProjectTest::TearDown();
  }

  /// Events that the call raises, and behind a bar the flags that it leaves: P(roject), T(opics), N(odes), G(lossary),
  /// (tas)K(s).
  std::string Effect(const std::function<void()>& call) {
    project->SetDirty(false);
    topic->SetDirty(false);
    (void)log->Take();
    call();
    auto effect = log->Take() + " | ";
    if (project->ProjectDirty()) effect += 'P';
    if (project->TopicsDirty()) effect += 'T';
    if (project->QBNodes->Dirty()) effect += 'N';
    if (project->GlossaryItems()->Dirty()) effect += 'G';
    if (project->Tasks->Dirty()) effect += 'K';
    return effect;
  }
  /// The same with all collections of the project paused.
  std::string PausedEffect(const std::function<void()>& call) {
    project->SetPauseEvents(true);
    auto effect = Effect(call);
    project->SetPauseEvents(false);
    return effect;
  }

  Ref<Topic> topic;
  std::unique_ptr<support::ProjectLog> log;
};

TEST_F(ProjectEventsTest, Topics_AddedAndRemoved) {
  const auto added = [this] { project->FireTopicAdded(topic); };
  EXPECT_EQ(Effect(added), "TopicAdded Dirty Dirty | PT");
  EXPECT_EQ(PausedEffect(added), "Dirty Dirty | PT");
  const auto removed = [this] { project->FireTopicRemoved(topic); };
  EXPECT_EQ(Effect(removed), "TopicRemoved Dirty Dirty | PT");
  EXPECT_EQ(PausedEffect(removed), "Dirty Dirty | PT");
}

TEST_F(ProjectEventsTest, Topics_Changed_DirtyOnlyIfTheTopicIs) {
  EXPECT_EQ(Effect([this] { project->FireTopicChanged(topic); }), "TopicChanged | ");
  EXPECT_EQ(Effect([this] { topic->SetTitle(topic->Title() + "x"); }), "TopicChanged Dirty | T");
  EXPECT_EQ(PausedEffect([this] { topic->SetTitle(topic->Title() + "x"); }), "Dirty | T");
}

TEST_F(ProjectEventsTest, Topics_Links) {
  const auto list = [this] { project->FireTopicTopicLinksChanged(topic); };
  EXPECT_EQ(Effect(list), "TopicTopicLinksChanged Dirty | T");
  EXPECT_EQ(PausedEffect(list), "Dirty | T");
  const auto link = New<TopicLink>();
  const auto one = [&] { project->FireTopicTopicLinkChanged(topic, link); };
  EXPECT_EQ(Effect(one), "TopicTopicLinkChanged Dirty | P");
  EXPECT_EQ(PausedEffect(one), "Dirty | P");
  topic->SetPauseEvents(true);
  EXPECT_EQ(Effect(one), "Dirty | P") << "the topic alone is paused";
  topic->SetPauseEvents(false);
}

TEST_F(ProjectEventsTest, Topics_Sections) {
  const auto section = topic->TopicSections->Item("BodyText");
  const auto changed = [&] { project->FireTopicSectionChanged(topic, section); };
  EXPECT_EQ(Effect(changed), "TopicSectionChanged Dirty | P");
  EXPECT_EQ(PausedEffect(changed), "Dirty | P");
  topic->SetPauseEvents(true);
  EXPECT_EQ(Effect(changed), "Dirty | P");
  topic->SetPauseEvents(false);
}

TEST_F(ProjectEventsTest, Reordering_IsAlwaysTold_AndDirtiesNothing) {
  const auto category = project->NewTopicCategory();
  const auto both = [&] {
    project->FireTopicReOrdered(topic);
    project->FireTopicCategoryReOrdered(category);
  };
  EXPECT_EQ(Effect(both), "TopicReOrdered TopicCategoryReOrdered | ");
  EXPECT_EQ(PausedEffect(both), "TopicReOrdered TopicCategoryReOrdered | ");
}

TEST_F(ProjectEventsTest, Categories) {
  const auto category = project->NewTopicCategory();
  EXPECT_EQ(Effect([&] { category->SetName("not yet added"); }), "Dirty | P");
  const auto add = [&] { project->TopicCategories->Add(category, category->Key); };
  const auto remove = [&] { project->TopicCategories->Remove(category->Key); };
  EXPECT_EQ(Effect(add), "TopicCategoryAdded Dirty | P");
  EXPECT_EQ(Effect([&] { category->SetName("a"); }), "TopicCategoryChanged Dirty | P");
  EXPECT_EQ(PausedEffect([&] { category->SetName("b"); }), "Dirty | P");
  EXPECT_EQ(Effect(remove), "TopicCategoryRemoved Dirty | P");
  EXPECT_EQ(PausedEffect([&] { project->FireTopicCategoryAdded(category); }), "Dirty | P");
  EXPECT_EQ(PausedEffect([&] { project->FireTopicCategoryRemoved(category); }), "Dirty | P");
}

TEST_F(ProjectEventsTest, OtherFiles) {
  const auto file = project->NewOtherFile("c:\\help\\a.png");
  EXPECT_EQ(Effect([&] { file->SetIncludeInOutput(false); }), "Dirty | P") << "not yet added";
  EXPECT_EQ(Effect([&] { project->OtherFiles->Add(file, file->LocalSpec()); }), "OtherFileAdded Dirty | P");
  EXPECT_EQ(Effect([&] { file->SetIncludeInOutput(true); }), "OtherFileChanged Dirty | P");
  EXPECT_EQ(PausedEffect([&] { file->SetIncludeInOutput(false); }), "Dirty | P");
  project->OtherFiles->PauseEvents = true;
  EXPECT_EQ(Effect([&] { project->FireOtherFileAdded(file); }), "Dirty | P");
  EXPECT_EQ(Effect([&] { project->FireOtherFileRemoved(file); }), "Dirty | P");
  EXPECT_EQ(Effect([&] { file->SetIncludeInOutput(true); }), "OtherFileChanged Dirty | P")
      << "a change is held back by the whole project only";
  project->OtherFiles->PauseEvents = false;
  EXPECT_EQ(Effect([&] { project->OtherFiles->Remove(file->LocalSpec()); }), "OtherFileRemoved Dirty | P");
  EXPECT_EQ(PausedEffect([&] { project->FireOtherFileCheckoutStatusChanged(file); }),
            "OtherFileCheckoutStatusChanged | ");
}

TEST_F(ProjectEventsTest, Nodes) {
  const auto node = New<QBNode>();
  const auto changed = [&] { project->FireQBNodeChanged(node); };
  EXPECT_EQ(Effect(changed), "QBNodeChanged Dirty | N");
  EXPECT_EQ(PausedEffect(changed), " | N") << "the collection's own notice is paused too";
  const auto removed = [&] { project->FireQBNodeRemoved(node); };
  EXPECT_EQ(Effect(removed), "QBNodeRemoved Dirty | N");
  EXPECT_EQ(PausedEffect(removed), " | N");
}

TEST_F(ProjectEventsTest, Glossary) {
  const auto item = project->NewGlossaryItem("API", "");
  const auto added = [&] { project->FireGlossaryItemAdded(item); };
  const auto changed = [&] { project->FireGlossaryItemChanged(item); };
  const auto removed = [&] { project->FireGlossaryItemRemoved(item); };
  EXPECT_EQ(Effect(added), "GlossaryItemAdded Dirty | G");
  EXPECT_EQ(Effect(changed), "GlossaryItemChanged Dirty | G");
  EXPECT_EQ(Effect(removed), "GlossaryItemRemoved Dirty | G");
  for (const auto& call :
       {std::function<void()>(added), std::function<void()>(changed), std::function<void()>(removed)})
    EXPECT_EQ(PausedEffect(call), "Dirty | G");
}

TEST_F(ProjectEventsTest, Tasks) {
  const auto task = project->NewTask();
  const auto added = [&] { project->FireTaskAdded(task); };
  const auto changed = [&] { project->FireTaskChanged(task); };
  const auto removed = [&] { project->FireTaskRemoved(task); };
  EXPECT_EQ(Effect(added), "TaskAdded | ");
  EXPECT_EQ(Effect(changed), "TaskChanged | ");
  EXPECT_EQ(Effect(removed), "TaskRemoved | ");
  for (const auto& call :
       {std::function<void()>(added), std::function<void()>(changed), std::function<void()>(removed)})
    EXPECT_EQ(PausedEffect(call), " | ");
}

TEST_F(ProjectEventsTest, BuildProfiles) {
  const auto profile = project->NewBuildProfile("Web");
  EXPECT_EQ(Effect([&] { project->FireBuildProfileChanged(profile); }), " | ") << "not yet added";
  EXPECT_EQ(Effect([&] { project->BuildProfiles->Add(profile, profile->ID()); }),
            "BuildProfileAdded BuildProfilesChanged Dirty | P");
  EXPECT_EQ(Effect([&] { project->FireBuildProfileChanged(profile); }), "BuildProfileChanged | ");
  EXPECT_EQ(PausedEffect([&] { project->FireBuildProfileChanged(profile); }), " | ");
  EXPECT_EQ(PausedEffect([&] { project->FireBuildProfileAdded(profile); }), " | ");
  EXPECT_EQ(PausedEffect([&] { project->FireBuildProfileRemoved(profile); }), " | ");
  EXPECT_EQ(PausedEffect([&] { project->FireBuildProfilesChanged(); }), "BuildProfilesChanged | ");
  EXPECT_EQ(Effect([&] { project->BuildProfiles->Remove(profile->ID()); }),
            "BuildProfileRemoved BuildProfilesChanged Dirty | P");
}

TEST_F(ProjectEventsTest, AProjectPaused_HoldsBackTasksAndProfiles) {
  const auto task = project->NewTask();
  project->Tasks->Add(task, task->Key());
  const auto profile = project->NewBuildProfile("Web");
  project->BuildProfiles->Add(profile, profile->ID());
  project->SetPauseEvents(true);
  (void)log->Take();
  task->SetTitle("x");
  profile->SetName("y");
  const auto told = log->Take();
  EXPECT_EQ(told.find("TaskChanged"), std::string::npos) << told;
  EXPECT_EQ(told.find("BuildProfileChanged"), std::string::npos) << told;
}

TEST_F(ProjectEventsTest, Build) {
  EXPECT_EQ(Effect([this] { project->FireBuildProgress("working"); }), "BuildProgress | ");
  EXPECT_EQ(Effect([this] { project->FireBuildMessage("text", bmError); }), "BuildMessage | ");
}

TEST_F(ProjectEventsTest, ARemovedTopic_LeavesItsNodesAsCaptions) {
  const auto other = project->NewTopic();
  project->Topics->Add(other, other->Key);
  const auto node = project->QBNodes->NewNode();
  const auto child = node->ChildNodes->NewNode(node);
  const auto bystander = node->ChildNodes->NewNode(node);
  for (const auto& each : {node, child, bystander}) each->SetQBNodeType(ntSingleTopic);
  node->SetTopicID(topic->Key);
  child->SetTopicID(topic->Key);
  bystander->SetTopicID(other->Key);
  project->Topics->PauseEvents = true;

  project->FireTopicRemoved(topic);  // paused: nothing is told, the nodes change all the same

  for (const auto& each : {node, child}) {
    EXPECT_EQ(each->QBNodeType(), ntStandard);
    EXPECT_EQ(each->CaptionText(), "Title");
    EXPECT_EQ(each->CaptionType(), ctSpecific);
    EXPECT_EQ(each->TopicID(), "");
  }
  EXPECT_EQ(bystander->QBNodeType(), ntSingleTopic);
  EXPECT_EQ(log->Take().find("TopicRemoved"), std::string::npos);
  EXPECT_TRUE(project->TopicsDirty());
  EXPECT_TRUE(project->ProjectDirty());
}

TEST_F(ProjectEventsTest, ATopicTakenOutOfTheList_LeavesItsNodesAsCaptions) {
  const auto node = project->QBNodes->NewNode();
  node->SetQBNodeType(ntSingleTopic);
  node->SetTopicID(topic->Key);
  project->Topics->Remove(topic->Key);
  EXPECT_EQ(node->QBNodeType(), ntStandard);
  EXPECT_EQ(node->CaptionText(), "Title");
}

TEST_F(ProjectEventsTest, AFailingListener_IsReportedByTheRaisingOperation) {
  const auto connection =
      project->Events.TopicAdded.Connect([](const Ref<Topic>&) { throw Failure(FailureNumber::DiskFull); });
  project->FireTopicAdded(topic);
  EXPECT_EQ(failures.Take(), Failures({"QBProject.FireTopicAdded 61"}));
}

TEST(QBProjectEvents, HaveFrozenNumbers) {
  using enum QBProjectEvents::Number;
  EXPECT_EQ(QBProjectEvents::PublishedName, "__QBProject");
  constexpr QBProjectEvents::Number numbers[] = {Changed,
                                                 BuildProfilesChanged,
                                                 BuildProfileChanged,
                                                 MVProjectChanged,
                                                 TopicAdded,
                                                 TopicRemoved,
                                                 TopicChanged,
                                                 TopicSectionChanged,
                                                 TopicReOrdered,
                                                 TopicTopicLinkChanged,
                                                 TopicTopicLinksChanged,
                                                 QBNodeChanged,
                                                 QBNodeRemoved,
                                                 TopicCategoryAdded,
                                                 TopicCategoryChanged,
                                                 TopicCategoryRemoved,
                                                 TopicCategoryReOrdered,
                                                 OtherFileAdded,
                                                 OtherFileRemoved,
                                                 OtherFileChanged,
                                                 CheckoutStatusChanged,
                                                 TopicCheckoutStatusChanged,
                                                 OtherFileCheckoutStatusChanged,
                                                 ProjectElementCheckOutStatusChanged,
                                                 BuildProgress,
                                                 TopicTemplateChanged,
                                                 GlossaryItemAdded,
                                                 GlossaryItemRemoved,
                                                 GlossaryItemChanged,
                                                 TaskAdded,
                                                 TaskChanged,
                                                 TaskRemoved,
                                                 BuildProfileAdded,
                                                 BuildProfileRemoved,
                                                 LinkCheckStartTopic,
                                                 DirtyStateChanged,
                                                 BuildErrorsOrWarnings,
                                                 BuildMessage,
                                                 LoadProgress,
                                                 MessageBox};
  int number = 0;
  for (const auto each : numbers) EXPECT_EQ(static_cast<int>(each), ++number);
  EXPECT_EQ(number, 40);
}

TEST(QBProjectEvents, HaveArgumentsOfFrozenValues) {
  EXPECT_EQ(StatusCheckedIn, 0);
  EXPECT_EQ(StatusCheckedOutWrongDirectory, 1);
  EXPECT_EQ(StatusCheckedOutToOtherUser, 2);
  EXPECT_EQ(StatusCheckedOutToCurrentUser, 3);
  EXPECT_EQ(ProjectElementTableOfContents, 1);
  EXPECT_EQ(ProjectElementManifests, 2);
  EXPECT_EQ(ProjectElementGlossary, 3);
  EXPECT_EQ(ProjectElementTasks, 4);
  EXPECT_EQ(bmWarning, 0);
  EXPECT_EQ(bmError, 1);
}

}  // namespace
}  // namespace quillbook
