#include "unit/topics/TopicsFixture.h"

namespace quillbook {
namespace {

using TopicKeywordTest = TopicsFixture;

TEST_F(TopicKeywordTest, SameTextTwice_IsKeptAndSavedTwice) {
  const auto topic = AddTopic("a");
  topic->AddKeyword("word");
  topic->AddKeyword("word");
  EXPECT_EQ(topic->Keywords()->Count(), 2u);
  const auto loaded = SavedAndLoaded(*topic);
  ASSERT_EQ(loaded->Keywords()->Count(), 2u);
  EXPECT_EQ(loaded->Keywords()->Item(2)->Keyword(), "word");
}

TEST_F(TopicKeywordTest, KeywordExists_IgnoresCase) {
  const auto topic = AddTopic("a");
  topic->AddKeyword("\xC3\x89tude");
  EXPECT_TRUE(topic->Keywords()->KeywordExists("\xC3\xA9TUDE"));
  EXPECT_FALSE(topic->Keywords()->KeywordExists("etude"));
}

TEST_F(TopicKeywordTest, Add_IsToldAndMarksTheTopic_ButRemoveDoesNot) {
  const auto topic = AddTopic("a");
  const auto added = topic->Keywords()->Events.TopicKeywordAdded.Connect(
      [&](const auto& keyword) { log.push_back("TopicKeywordAdded " + keyword->Keyword()); });
  const auto removed = topic->Keywords()->Events.TopicKeywordRemoved.Connect(
      [&](const auto& keyword) { log.push_back("TopicKeywordRemoved " + keyword->Keyword()); });
  const auto keyword = topic->AddKeyword("word");
  EXPECT_THAT(log, ElementsAre("TopicKeywordAdded word", "TopicChanged a", "DirtyStateChanged"));
  EXPECT_TRUE(topic->Dirty());
  EXPECT_EQ(topic->Keywords()->Item(keyword->ID()), keyword);

  topic->SetDirty(false);
  log.clear();
  topic->Keywords()->Remove("unknown");
  EXPECT_THAT(log, IsEmpty());
  topic->Keywords()->Remove(keyword->ID());
  EXPECT_THAT(log, ElementsAre("TopicKeywordRemoved word"));
  EXPECT_FALSE(topic->Dirty());
  EXPECT_EQ(topic->Keywords()->Count(), 0u);
}

TEST_F(TopicKeywordTest, AddToAPausedTopic_MarksNothing) {
  const auto topic = AddTopic("a");
  topic->SetPauseEvents(true);
  topic->AddKeyword("word");
  EXPECT_FALSE(topic->Dirty());
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(TopicKeywordTest, KeywordSetters_TellNobody) {
  const auto topic = AddTopic("a");
  const auto keyword = topic->AddKeyword("word");
  topic->SetDirty(false);
  log.clear();
  keyword->SetKeyword("other");
  keyword->SetID("id");
  EXPECT_FALSE(topic->Dirty());
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(TopicKeywordTest, Load_RaisesNoEvent_AndClearNeither) {
  const auto topic = AddTopic("a");
  int told = 0;
  const auto added = topic->Keywords()->Events.TopicKeywordAdded.Connect([&](const auto&) { ++told; });
  const auto removed = topic->Keywords()->Events.TopicKeywordRemoved.Connect([&](const auto&) { ++told; });
  const auto record = Parse("<Topic Key='1'><K Value='a'/><K Value='b'/></Topic>");
  topic->Load(record.DocumentElement());
  EXPECT_EQ(topic->Keywords()->Count(), 2u);
  topic->Keywords()->Clear();
  EXPECT_EQ(topic->Keywords()->Count(), 0u);
  EXPECT_EQ(told, 0);
  EXPECT_FALSE(topic->Dirty());
}

TEST_F(TopicKeywordTest, ID_IsAnotherAfterASaveAndLoad) {
  const auto topic = AddTopic("a");
  const auto keyword = topic->AddKeyword("word");
  EXPECT_EQ(keyword->ID().size(), 38u);
  EXPECT_NE(SavedAndLoaded(*topic)->Keywords()->Item(1)->ID(), keyword->ID());
}

TEST_F(TopicKeywordTest, RecordWithoutValue_IsReportedAndLeftOut_AndTheLoadGoesOn) {
  const auto topic = Loaded("<Topic Key='1'><K/><K Value='b'/><s k='BodyText'>x</s></Topic>");
  EXPECT_THAT(failures.Take(), ElementsAre("TopicKeywords.LoadKeyword 5"));
  ASSERT_EQ(topic->Keywords()->Count(), 1u);
  EXPECT_EQ(topic->Keywords()->Item(1)->Keyword(), "b");
  EXPECT_EQ(topic->TopicSectionData("BodyText"), "x");
}

TEST_F(TopicKeywordTest, LoadKeyword_PassesOverOtherElements) {
  const auto keywords = New<TopicKeywords>();
  const auto record = Parse("<key Value='a'/>");
  keywords->LoadKeyword(record.DocumentElement());
  EXPECT_EQ(keywords->Count(), 0u);
}

TEST_F(TopicKeywordTest, Project_IsTheTopics_AndCannotBeSet) {
  const auto topic = AddTopic("a");
  EXPECT_EQ(topic->Keywords()->QBProject(), project);
  topic->Keywords()->SetQBProject({});
  EXPECT_EQ(topic->Keywords()->QBProject(), project);
  EXPECT_FALSE(New<TopicKeywords>()->QBProject());
}

}  // namespace
}  // namespace quillbook
