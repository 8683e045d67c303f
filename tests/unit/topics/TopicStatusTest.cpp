#include "quillbook/topics/TopicStatuses.h"

#include "quillbook/frame/modMain.h"
#include "unit/topics/TopicsFixture.h"

namespace quillbook {
namespace {

class TopicStatusTest : public TopicsFixture {
 protected:
  static Ref<TopicStatuses> LoadedStatuses(std::string_view text) {
    auto statuses = New<TopicStatuses>();
    const auto document = Parse(std::string(text));
    statuses->Load(document.DocumentElement());
    return statuses;
  }
};

TEST_F(TopicStatusTest, Load_TakesEveryChildInOrder_WhateverItsName) {
  const auto statuses = LoadedStatuses(
      "<any><x Name='Draft' Caption='A draft' Icon='d.ico'/><y name='Done' caption='Finished' icon='f.ico'/></any>");
  ASSERT_EQ(statuses->Count(), 2u);
  EXPECT_EQ(statuses->Item(1)->Name, "Draft");
  EXPECT_EQ(statuses->Item("done")->Caption, "Finished");
  EXPECT_EQ(statuses->Item(2)->Icon, "f.ico");
}

TEST_F(TopicStatusTest, RepeatedName_IsReportedAndLeftOut_AndTheRestIsRead) {
  const auto statuses = LoadedStatuses(
      "<s><s Name='a' Caption='1' Icon=''/><s Name='A' Caption='2' Icon=''/><s Name='b' Caption='3' Icon=''/></s>");
  EXPECT_THAT(failures.Take(), ElementsAre("TopicStatuses.Add 457"));
  ASSERT_EQ(statuses->Count(), 2u);
  EXPECT_EQ(statuses->Item("a")->Caption, "1");
  EXPECT_EQ(statuses->Item(2)->Name, "b");
}

TEST_F(TopicStatusTest, MissingAttribute_IsReported_AndTheStatusKeepsWhatWasReadBefore) {
  const auto statuses = LoadedStatuses("<s><s Name='a' Icon='i'/></s>");
  EXPECT_THAT(failures.Take(), ElementsAre("TopicStatus.Load 5"));
  EXPECT_EQ(statuses->Item("a")->Caption, "");
  EXPECT_EQ(statuses->Item("a")->Icon, "");
}

TEST_F(TopicStatusTest, AStatusThatTheInstallationDoesNotKnow_StaysWithItsTopic) {
  EXPECT_EQ(modMain::TopicStatuses()->Count(), 0u);
  const auto topic = Loaded("<Topic Key='1' Status='Waiting for Ann'/>");
  EXPECT_EQ(topic->Status(), "Waiting for Ann");
  EXPECT_EQ(SavedAndLoaded(*topic)->Status(), "Waiting for Ann");
}

TEST_F(TopicStatusTest, NewTopic_HasNoStatus_WhereThereIsNoList) {
  EXPECT_EQ(project->NewTopic()->Status(), "");
}

}  // namespace
}  // namespace quillbook
