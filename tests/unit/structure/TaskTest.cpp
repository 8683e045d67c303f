#include "quillbook/structure/Task.h"

#include <sys/stat.h>

#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/frame/services/TextHelper.h"
#include "quillbook/structure/Tasks.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/Topics.h"
#include "support/ProjectLog.h"
#include "support/ProjectTest.h"
#include "support/TemporaryFolder.h"

namespace quillbook {
namespace {

constexpr const char* Record =
    "<Task Key='k' Priority='High' Title='t' AssignedTo='a' TopicID='i' Status='s' "
    "CreatedOn='01-02-2005 13:05:09' CreatedBy='c' ModifiedOn='30-12-1899 00:00:00' ModifiedBy='m'>notes</Task>";

std::string With(std::string name, const std::string& value) {
  std::string record = Record;
  name += "='";
  const auto start = record.find(" " + name) + name.size() + 1;
  return record.replace(start, record.find('\'', start) - start, value);
}

class TaskTest : public support::ProjectTest {
 protected:
  void SetUp() override {
    ProjectTest::SetUp();
    project->Filename->SetFullName(folder.Stored("p.qbp"));
    task = project->NewTask();
  }
  void TearDown() override {
    task = nullptr;
    ProjectTest::TearDown();
  }
  Ref<Task> Loaded(const std::string& text) {
    const auto loaded = New<Task>();
    loaded->Load(Parse(text).DocumentElement());
    return loaded;
  }

  support::TemporaryFolder folder;
  Ref<Task> task;
};

TEST_F(TaskTest, ANewTask_HasItsDefaults_AndStandsNowhere) {
  EXPECT_EQ(task->Key().size(), 38u);
  EXPECT_EQ(task->Priority(), "Medium");
  EXPECT_EQ(task->Status(), "Not Started");
  EXPECT_EQ(task->CreatedBy(), TextHelper::UserName());
  EXPECT_NE(task->CreatedBy(), "");
  EXPECT_EQ(task->ModifiedBy(), "");
  EXPECT_EQ(task->ModifiedOn(), Date());
  EXPECT_LE(task->CreatedOn(), Date::Now());
  EXPECT_GT(task->CreatedOn().Days(), Date::Now().Days() - 1);
  EXPECT_FALSE(task->PauseEvents());
  EXPECT_EQ(project->Tasks->Count(), 0u);
}

TEST_F(TaskTest, AChange_IsTold_AndStampedAfterwards) {
  Date seen(1);
  const auto listener = project->Events.TaskChanged.Connect([&](const Ref<Task>& changed) {
    seen = changed->ModifiedOn();
    EXPECT_EQ(changed->Title(), "new");
  });
  support::ProjectLog log(project);
  task->SetTitle("new");
  EXPECT_EQ(log.Take(), "TaskChanged Dirty");
  EXPECT_EQ(seen, Date());
  EXPECT_GT(task->ModifiedOn(), Date());
  EXPECT_EQ(task->ModifiedBy(), TextHelper::UserName());
  EXPECT_TRUE(project->Tasks->Dirty());
}

TEST_F(TaskTest, EverySetter_StampsARealChangeOnly) {
  const auto stamped = [&](auto change) {
    const auto fresh = project->NewTask();
    change(*fresh);
    return fresh->ModifiedOn() != Date();
  };
  EXPECT_TRUE(stamped([](Task& t) { t.SetPriority("medium"); }));
  EXPECT_TRUE(stamped([](Task& t) { t.SetTitle("x"); }));
  EXPECT_TRUE(stamped([](Task& t) { t.SetNotes("x"); }));
  EXPECT_TRUE(stamped([](Task& t) { t.SetAssignedTo("x"); }));
  EXPECT_TRUE(stamped([](Task& t) { t.SetTopicID("x"); }));
  EXPECT_TRUE(stamped([](Task& t) { t.SetStatus("x"); }));
  EXPECT_TRUE(stamped([](Task& t) { t.SetCreatedOn(Date(1)); }));
  EXPECT_TRUE(stamped([](Task& t) { t.SetCreatedBy("no one"); }));
  EXPECT_TRUE(stamped([](Task& t) { t.SetModifiedBy("no one"); }));
  EXPECT_FALSE(stamped([](Task& t) {
    t.SetPriority("Medium");
    t.SetTitle("");
    t.SetNotes("");
    t.SetAssignedTo("");
    t.SetTopicID("");
    t.SetStatus("Not Started");
    t.SetCreatedOn(t.CreatedOn());
    t.SetCreatedBy(t.CreatedBy());
    t.SetModifiedOn(Date());
    t.SetModifiedBy("");
    t.SetKey("x");
  }));
}

TEST_F(TaskTest, TheStamp_OverwritesAnAssignedOne) {
  task->SetModifiedOn(Date(1));
  EXPECT_GT(task->ModifiedOn(), Date(2));
}

TEST_F(TaskTest, ATaskWithoutProject_IsStampedToo) {
  const auto lonely = New<Task>();
  lonely->SetTitle("x");
  EXPECT_NE(lonely->ModifiedOn(), Date());
}

TEST_F(TaskTest, PauseEvents_StopsTheStampAndTheProject) {
  support::ProjectLog log(project);
  task->SetPauseEvents(true);
  task->SetTitle("x");
  task->FireChanged();
  EXPECT_EQ(task->Title(), "x");
  EXPECT_EQ(task->ModifiedOn(), Date());
  EXPECT_EQ(task->ModifiedBy(), "");
  EXPECT_EQ(log.Take(), "");
  EXPECT_FALSE(project->Dirty());
  task->SetPauseEvents(false);
  task->FireChanged();
  EXPECT_EQ(log.Take(), "TaskChanged Dirty");
  EXPECT_NE(task->ModifiedOn(), Date());
}

TEST_F(TaskTest, Topic_IsFoundByItsKey_AndNothingDetachesNothing) {
  EXPECT_FALSE(task->Topic());
  const auto topic = project->NewTopic();
  project->Topics->Add(topic, topic->Key);
  task->SetTopic(topic);
  EXPECT_EQ(task->TopicID(), topic->Key);
  EXPECT_EQ(task->Topic(), topic);
  task->SetTopic({});
  EXPECT_EQ(task->TopicID(), topic->Key);
  task->SetTopicID("stale");
  EXPECT_FALSE(task->Topic());
}

// Record.

TEST_F(TaskTest, Save_WritesItsAttributesInOrder) {
  const auto loaded = Loaded(Record);
  EXPECT_EQ(Written(*loaded),
            "<r Key=\"k\" Priority=\"2\" Title=\"t\" AssignedTo=\"a\" TopicID=\"i\" Status=\"s\" "
            "CreatedOn=\"01-02-2005 13:05:09\" CreatedBy=\"c\" ModifiedOn=\"30-12-1899 00:00:00\" ModifiedBy=\"m\">"
            "notes</r>");
}

TEST_F(TaskTest, Dates_AreStoredWithTheDayFirst_AndZeroComesBack) {
  const auto loaded = Loaded(Record);
  const auto created = loaded->CreatedOn().ToParts();
  EXPECT_EQ(created.year, 2005);
  EXPECT_EQ(created.month, 2);
  EXPECT_EQ(created.day, 1);
  EXPECT_EQ(created.hour, 13);
  EXPECT_EQ(created.minute, 5);
  EXPECT_EQ(created.second, 9);
  EXPECT_EQ(loaded->ModifiedOn(), Date());
  EXPECT_EQ(Loaded(Written(*loaded))->CreatedOn(), loaded->CreatedOn());
}

TEST_F(TaskTest, Load_TurnsThePriorityWordsIntoDigits_RegardingCase) {
  const std::pair<const char*, const char*> cases[] = {{"Low", "0"},     {"Medium", "1"},      {"High", "2"},
                                                       {"high", "high"}, {"2", "2"},           {"7", "7"},
                                                       {"", ""},         {"Urgent", "Urgent"}, {" Low", " Low"}};
  for (const auto& [stored, loaded] : cases) EXPECT_EQ(Loaded(With("Priority", stored))->Priority(), loaded);
}

TEST_F(TaskTest, ANewTask_SavedAndLoaded_HasTheNumericPriority) {
  EXPECT_EQ(Loaded(Written(*task))->Priority(), "1");
}

TEST_F(TaskTest, Load_OfATextThatIsNoDate_IsAFailure) {
  const std::pair<const char*, const char*> cases[] = {{"", "13"},
                                                       {"yesterday", "13"},
                                                       {"01-02-2005", "13"},
                                                       {"01-02-2005 13:05", "13"},
                                                       {"xx-02-2005 13:05:09", "13"},
                                                       {"01-02-0005 13:05:09", "5"}};
  for (const auto* name : {"CreatedOn", "ModifiedOn"})
    for (const auto& [text, number] : cases) {
      Loaded(With(name, text));
      EXPECT_EQ(failures.Take(), Failures{std::string("Task.Load ") + number}) << text;
    }
}

TEST_F(TaskTest, Load_TakesADateByTheCharactersAtItsPlaces_WhateverStandsBetween) {
  for (const auto* text :
       {"01/02/2005T13.05.09", "01\u201302\u20132005\u00A013\u203605\u203609", "01-02-2005 13:05:09Z"}) {
    const auto created = Loaded(With("CreatedOn", text))->CreatedOn();
    EXPECT_EQ(created.Format("dd-mm-yyyy hh:nn:ss"), "01-02-2005 13:05:09") << text;
  }
}

TEST_F(TaskTest, Load_WithoutAnAttribute_IsAFailure) {
  for (const std::string name : {"Key", "Priority", "Title", "AssignedTo", "TopicID", "Status", "CreatedOn",
                                 "CreatedBy", "ModifiedOn", "ModifiedBy"}) {
    std::string record = Record;
    record.replace(record.find(" " + name + "="), name.size() + 1, " Other" + name);
    Loaded(record);
    EXPECT_EQ(failures.Take(), Failures{"Task.Load 5"}) << name;
  }
}

TEST_F(TaskTest, Load_EndsWithEventsOn_WhateverWasBefore) {
  task->SetPauseEvents(true);
  support::ProjectLog log(project);
  task->Load(Parse(Record).DocumentElement());
  EXPECT_FALSE(task->PauseEvents());
  EXPECT_EQ(log.Take(), "");
}

TEST_F(TaskTest, AClone_HasEveryField_AndStandsNowhere) {
  const auto source = Loaded(Record);
  source->SetQBProject(project);
  Ref<QBProject> parent;
  const auto clone = source->Clone(parent);
  EXPECT_EQ(parent, project);
  EXPECT_EQ(clone->Key(), "k");
  EXPECT_EQ(clone->Priority(), "2");
  EXPECT_EQ(clone->Notes(), "notes");
  EXPECT_EQ(clone->CreatedOn(), source->CreatedOn());
  EXPECT_EQ(clone->CreatedBy(), "c");
  EXPECT_EQ(clone->ModifiedBy(), "m");
  EXPECT_EQ(clone->QBProject(), project);
  EXPECT_EQ(project->Tasks->Count(), 0u);
  auto other = New<QBProject>();
  EXPECT_EQ(source->Clone(other)->QBProject(), other);
}

TEST_F(TaskTest, AClone_OfANewTask_HasTheNumericPriority) {
  EXPECT_EQ(task->Priority(), "Medium");
  EXPECT_EQ(task->Clone()->Priority(), "1") << "it comes by way of the record";
}

// The list.

TEST_F(TaskTest, AddAndRemove_TellTheProject_AndMarkTheList) {
  support::ProjectLog log(project);
  project->Tasks->Add(task, task->Key());
  EXPECT_EQ(log.Take(), "TaskAdded Dirty");
  project->Tasks->Add(task, task->Key());
  project->Tasks->Remove("nowhere");
  EXPECT_EQ(failures.Take(), (Failures{"Tasks.Add 457", "Tasks.Remove 5"}));
  EXPECT_EQ(log.Take(), "");
  project->Tasks->Remove(task->Key());
  EXPECT_EQ(log.Take(), "TaskRemoved Dirty");
  EXPECT_FALSE(project->Tasks->Item(1));
}

TEST_F(TaskTest, WhileTheListIsPaused_NoEventIsRaised_ButItBecomesDirty) {
  project->Tasks->PauseEvents = true;
  support::ProjectLog log(project);
  project->Tasks->Add(task, task->Key());
  task->SetTitle("x");
  project->Tasks->Remove(1);
  EXPECT_EQ(log.Take(), "Dirty Dirty Dirty");
  EXPECT_TRUE(project->Tasks->Dirty());
}

TEST_F(TaskTest, SetDirty_TellsOfBothValues_AndNeedsItsProject) {
  support::ProjectLog log(project);
  project->Tasks->SetDirty(true);
  project->Tasks->SetDirty(false);
  EXPECT_EQ(log.Take(), "Dirty Dirty");
  const auto lonely = New<Tasks>();
  lonely->SetDirty(true);
  EXPECT_EQ(failures.Take(), Failures{"Tasks.Dirty 91"});
  EXPECT_TRUE(lonely->Dirty());
}

TEST_F(TaskTest, LoadOfTheList_KeepsTheFirstOfEqualKeys_Silently) {
  const auto list = std::string("<l>") + Record + With("Key", "K") + With("Key", "other") + "</l>";
  project->Tasks->Add(task, task->Key());
  project->Tasks->Load(Parse(list).DocumentElement());
  ASSERT_EQ(project->Tasks->Count(), 2u);
  EXPECT_EQ(project->Tasks->Item(1)->Key(), "k");
  EXPECT_EQ(project->Tasks->Item(2)->Key(), "other");
  EXPECT_EQ(project->Tasks->Item(2)->QBProject(), project);
  EXPECT_FALSE(project->Tasks->Dirty());
}

TEST_F(TaskTest, ASeparateFile_IsWrittenWhenMissingOrDirty_AndReadInPlaceOfTheElement) {
  EXPECT_FALSE(project->Tasks->ReadOnly());
  project->SetStorageForm(ProjectTypeSeparateFiles);
  const std::string file = "ProjectData/Tasks.xml";
  EXPECT_EQ(project->Tasks->LocalSpec(), folder.Stored(file));
  project->Tasks->Load(Parse(std::string("<l>") + Record + "</l>").DocumentElement());
  EXPECT_EQ(project->Tasks->Count(), 0u);
  EXPECT_EQ(Written(*project->Tasks), "<r/>");
  EXPECT_NE(folder.Read(file).find("<Tasks/>"), std::string::npos);

  folder.Write(file, std::string("<Any>") + Record + "</Any>");
  project->Tasks->Load(XMLDocument().DocumentElement());
  ASSERT_EQ(project->Tasks->Count(), 1u);
  Written(*project->Tasks);
  EXPECT_NE(folder.Read(file).find("<Any>"), std::string::npos);
  project->Tasks->Item(1)->SetTitle("changed");
  Written(*project->Tasks);
  EXPECT_NE(folder.Read(file).find("<Tasks>\n\t<Task Key=\"k\" Priority=\"2\" Title=\"changed\""), std::string::npos);

  EXPECT_FALSE(project->Tasks->ReadOnly());
  ASSERT_EQ(chmod(folder.Native(file).c_str(), 0444), 0);
  EXPECT_TRUE(project->Tasks->ReadOnly());
}

TEST_F(TaskTest, InASingleFile_TheTasksStandBelowTheElement) {
  task->SetKey("1");
  project->Tasks->Add(task, "1");
  EXPECT_TRUE(Written(*project->Tasks).starts_with("<r>\n\t<Task Key=\"1\" Priority=\"Medium\""));
}

}  // namespace
}  // namespace quillbook
