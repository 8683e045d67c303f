#include "quillbook/frame/modMain.h"
#include "unit/topics/TopicsFixture.h"

namespace quillbook {
namespace {

class TopicSectionTest : public TopicsFixture {
 protected:
  /// A topic in the project without any section.
  Ref<Topic> BareTopic() {
    auto topic = AddTopic("a");
    topic->TopicSections = New<TopicSections>();
    return topic;
  }
};

TEST_F(TopicSectionTest, Populate_MakesTheBody_AndASecondCallIsReported) {
  const auto definitions = New<TopicSectionDefs>();
  definitions->Populate();
  definitions->Populate();
  EXPECT_THAT(failures.Take(), ElementsAre("TopicSectionDefs.Add 457"));
  ASSERT_EQ(definitions->Count(), 1u);
  EXPECT_EQ(definitions->Item("bodytext")->Key, "BodyText");
  EXPECT_EQ(definitions->Item(1)->Caption, "Body Text");
}

TEST_F(TopicSectionTest, TopicSectionData_OfATopicWithoutSections_IsEmpty) {
  EXPECT_EQ(BareTopic()->TopicSectionData("BodyText"), "");
  EXPECT_EQ(New<Topic>()->TopicSectionData("Summary"), "");
}

TEST_F(TopicSectionTest, TopicSectionData_FindsTheSection_IgnoringCase) {
  const auto topic = BareTopic();
  topic->SetTopicSectionData("BodyText", "text");
  EXPECT_EQ(topic->TopicSectionData("bodytext"), "text");
  topic->SetTopicSectionData("BODYTEXT", "more");
  EXPECT_EQ(topic->TopicSectionData("BodyText"), "more");
  EXPECT_EQ(topic->TopicSections->Count(), 1u);
}

TEST_F(TopicSectionTest, WritingTheSameTextTwice_ChangesOnce) {
  const auto topic = AddTopic("a");
  topic->SetTopicSectionData("BodyText", "text");
  EXPECT_THAT(log, ElementsAre("TopicSectionChanged a text", "DirtyStateChanged"));
  EXPECT_TRUE(topic->Dirty());
  EXPECT_NE(topic->ModifiedOn(), Date());
  log.clear();
  topic->SetDirty(false);
  topic->SetTopicSectionData("BodyText", "text");
  EXPECT_THAT(log, IsEmpty());
  EXPECT_FALSE(topic->Dirty());
  topic->SetTopicSectionData("BodyText", "TEXT");
  EXPECT_TRUE(topic->Dirty()) << "case counts";
}

TEST_F(TopicSectionTest, TopicSectionDataChanged_IsRaised_OnlyWhenTheSectionIsMade) {
  const auto topic = BareTopic();
  const auto watch = topic->Events.TopicSectionDataChanged.Connect(
      [&](const Ref<TopicSection>& section) { log.push_back("TopicSectionDataChanged " + section->Data()); });
  topic->SetTopicSectionData("BodyText", "1");
  EXPECT_THAT(log, ElementsAre("TopicSectionChanged a 1", "DirtyStateChanged", "TopicSectionDataChanged 1"));
  log.clear();
  topic->SetTopicSectionData("BodyText", "2");
  EXPECT_THAT(log, ElementsAre("TopicSectionChanged a 2", "DirtyStateChanged"));
}

TEST_F(TopicSectionTest, PausedTopic_TakesDataInSilence) {
  const auto topic = BareTopic();
  topic->SetPauseEvents(true);
  topic->SetTopicSectionData("BodyText", "1");
  topic->SetTopicSectionData("BodyText", "2");
  topic->TopicSections->Item(1)->SetData("3");
  EXPECT_THAT(log, IsEmpty());
  EXPECT_FALSE(topic->Dirty());
  EXPECT_EQ(topic->TopicSectionData("BodyText"), "3");
}

TEST_F(TopicSectionTest, Data_SetDirectly_IsToldEvenForTheSameText_AndLeavesTheTopicClean) {
  const auto topic = AddTopic("a");
  topic->SetModifiedOn(Date(1));
  const auto section = topic->TopicSections->Item("BodyText");
  section->SetData("x");
  section->SetData("x");
  EXPECT_THAT(
      log, ElementsAre("TopicSectionChanged a x", "DirtyStateChanged", "TopicSectionChanged a x", "DirtyStateChanged"));
  EXPECT_FALSE(topic->Dirty());
  EXPECT_EQ(topic->ModifiedOn(), Date(1));
}

TEST_F(TopicSectionTest, NewTopicSection_OfAnUnknownKind_IsReported_AndGivesNothing) {
  const auto topic = BareTopic();
  EXPECT_FALSE(topic->NewTopicSection("Summary"));
  EXPECT_THAT(failures.Take(), ElementsAre("TopicSection.TopicSectionDef 91", "Topic.NewTopicSection 91"));
  EXPECT_EQ(topic->TopicSections->Count(), 0u);
}

TEST_F(TopicSectionTest, NewTopicSection_OfAKindThatIsThere_StandsInNoCollection) {
  const auto topic = AddTopic("a");
  const auto first = topic->TopicSections->Item("BodyText");
  const auto second = topic->NewTopicSection("bodytext", "x");
  EXPECT_THAT(failures.Take(), ElementsAre("TopicSections.Add 457"));
  EXPECT_EQ(second->Data(), "x");
  EXPECT_EQ(second->Topic(), topic);
  EXPECT_EQ(topic->TopicSections->Item("BodyText"), first);
  EXPECT_FALSE(topic->Dirty());
}

TEST_F(TopicSectionTest, SetTopicSectionData_OfAnUnknownKind_ReportsAndMarksTheTopic) {
  const auto topic = AddTopic("a");
  topic->SetTopicSectionData("Summary", "x");
  EXPECT_THAT(failures.Take(), ElementsAre("TopicSection.TopicSectionDef 91", "Topic.NewTopicSection 91"));
  EXPECT_EQ(topic->TopicSectionData("Summary"), "");
  EXPECT_TRUE(topic->Dirty());
}

TEST_F(TopicSectionTest, TopicSectionByCaption_IgnoresCase) {
  const auto topic = AddTopic("a");
  EXPECT_EQ(topic->TopicSections->TopicSectionByCaption("body text").ToObject(), topic->TopicSections->Item(1));
  EXPECT_TRUE(topic->TopicSections->TopicSectionByCaption("Summary").IsEmpty());
}

TEST_F(TopicSectionTest, TopicSectionDef_IsFoundAnew_AndNothingIsReported) {
  const auto section = New<TopicSection>();
  EXPECT_FALSE(section->TopicSectionDef());
  section->SetTopicSectionDef({});
  EXPECT_THAT(failures.Take(), ElementsAre("TopicSection.TopicSectionDef 91"));
  section->SetTopicSectionDef(modMain::TopicSectionDefs()->Item("BodyText"));
  EXPECT_EQ(section->TopicSectionDef(), modMain::TopicSectionDefs()->Item("BodyText"));
  root = nullptr;
  EXPECT_EQ(section->TopicSectionDef()->Caption, "Body Text") << "also while nothing is cached";
}

TEST_F(TopicSectionTest, TopicSectionUTF8_HasOneCharacterPerByte) {
  const auto topic = AddTopic("a");
  topic->SetTopicSectionData("BodyText", "\xC3\xA9");
  EXPECT_EQ(topic->TopicSectionUTF8("BodyText"), "\xC3\x83\xC2\xA9");
  EXPECT_EQ(topic->TopicSectionUTF8("Summary"), "");
}

TEST_F(TopicSectionTest, Tag_HoldsAnyValue) {
  const auto section = New<TopicSection>();
  EXPECT_TRUE(section->Tag.IsEmpty());
  section->SetMember("Tag", Variant(7));
  EXPECT_EQ(section->Tag.ToLong(), 7);
  section->Tag = Variant(project);
  EXPECT_EQ(section->Member("Tag").ToObject(), project);
  section->Tag = {};
}

}  // namespace
}  // namespace quillbook
