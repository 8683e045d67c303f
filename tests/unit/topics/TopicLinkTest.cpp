#include "quillbook/topics/TopicLinkCategory.h"
#include "unit/topics/TopicsFixture.h"

namespace quillbook {
namespace {

class TopicLinkTest : public TopicsFixture {
 protected:
  static std::vector<std::string> TitlesIn(const Ref<Topic>& topic, std::string_view category) {
    const auto group = New<TopicLinkCategory>();
    group->Name = category;
    group->Topic = topic;
    std::vector<std::string> titles;
    const auto links = group->Links();
    for (const auto& link : *links) titles.push_back(link->Title());
    return titles;
  }
};

TEST_F(TopicLinkTest, NewTopicLink_IsHeardOnlyAsTheAddition) {
  const auto topic = AddTopic("a");
  const auto target = AddTopic("b");
  const auto link = topic->NewTopicLink(rttTopic, "See also", "Title", "", target);
  EXPECT_THAT(log, ElementsAre("TopicTopicLinksChanged a", "DirtyStateChanged", "TopicChanged a", "DirtyStateChanged"));
  EXPECT_EQ(link->ChildTopicKey, target->Key);
  EXPECT_EQ(link->ChildTopic(), target);
  EXPECT_EQ(link->ParentTopic(), topic);
  EXPECT_EQ(link->Category(), "See also");
  EXPECT_EQ(link->Title(), "Title");
  EXPECT_EQ(topic->TopicLinks()->Item(1), link);
  EXPECT_TRUE(topic->Dirty());
}

TEST_F(TopicLinkTest, NewTopicLink_TakesTheGivenCategory_AlsoAnEmptyOne) {
  const auto topic = AddTopic("a");
  const auto target = AddTopic("b");
  target->SetTopicCategory(AddCategory("Group"));
  EXPECT_EQ(topic->NewTopicLink(rttTopic, "", "", "", target)->Category(), "");
}

TEST_F(TopicLinkTest, NewTopicLink_ToAnURL_HasNoTarget) {
  const auto topic = AddTopic("a");
  const auto link = topic->NewTopicLink(rttURL, "", "Web", "http://example.org/", AddTopic("b"));
  EXPECT_EQ(link->ChildTopicKey, "");
  EXPECT_FALSE(link->ChildTopic());
  EXPECT_EQ(link->URL(), "http://example.org/");
  const auto plain = topic->NewTopicLink();
  EXPECT_EQ(plain->TopicLinkType(), rttTopic);
  EXPECT_EQ(plain->Title(), "");
}

TEST_F(TopicLinkTest, NewTopicLink_EndsAPauseOfTheCaller) {
  const auto topic = AddTopic("a");
  topic->SetPauseEvents(true);
  topic->NewTopicLink();
  EXPECT_FALSE(topic->PauseEvents());
  EXPECT_TRUE(topic->Dirty());
}

TEST_F(TopicLinkTest, Setters_TellOfARealChange) {
  const auto topic = AddTopic("a");
  const auto link = topic->NewTopicLink();
  const auto other = AddTopic("b");
  const auto expectTold = [&](const std::function<void()>& change, const std::string& parent) {
    log.clear();
    change();
    EXPECT_THAT(log, ElementsAre("TopicTopicLinkChanged " + parent + " " + link->Title(), "DirtyStateChanged",
                                 "TopicChanged " + parent, "DirtyStateChanged"));
    log.clear();
    change();
    EXPECT_THAT(log, IsEmpty());
  };
  expectTold([&] { link->SetTitle("T"); }, "a");
  expectTold([&] { link->SetCategory("c"); }, "a");
  expectTold([&] { link->SetURL("u"); }, "a");
  expectTold([&] { link->SetTopicLinkType(rttURL); }, "a");
  expectTold([&] { link->SetParentTopic(other); }, "b");
  log.clear();
  link->ChildTopicKey = "k";
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(TopicLinkTest, LinkOfAPausedTopic_ChangesInSilence) {
  const auto topic = AddTopic("a");
  const auto link = topic->NewTopicLink();
  topic->SetDirty(false);
  topic->SetPauseEvents(true);
  log.clear();
  link->SetTitle("T");
  topic->TopicLinks()->Remove(1);
  EXPECT_THAT(log, IsEmpty());
  EXPECT_FALSE(topic->Dirty());
}

TEST_F(TopicLinkTest, AddAndRemove_RaiseEvents_AndReachTheProject) {
  const auto topic = AddTopic("a");
  const auto links = topic->TopicLinks();
  EXPECT_EQ(links->Topic(), topic);
  const auto added =
      links->Events.ItemAdded.Connect([&](const auto& link) { log.push_back("ItemAdded " + link->Title()); });
  const auto removed =
      links->Events.ItemRemoved.Connect([&](const auto& link) { log.push_back("ItemRemoved " + link->Title()); });
  const auto link = New<TopicLink>();
  link->SetTitle("T");
  links->Add(link);
  EXPECT_THAT(log, ElementsAre("TopicTopicLinksChanged a", "DirtyStateChanged", "TopicChanged a", "DirtyStateChanged",
                               "ItemAdded T"));
  log.clear();
  links->Remove(1);
  EXPECT_THAT(log, ElementsAre("TopicTopicLinksChanged a", "DirtyStateChanged", "TopicChanged a", "DirtyStateChanged",
                               "ItemRemoved T"));
  links->Remove(1);
  EXPECT_THAT(failures.Take(), ElementsAre("TopicLinks.Remove 9"));
}

TEST_F(TopicLinkTest, LoadedList_HasNoTopic_ButItsTopicHearsOfIt) {
  const auto topic = Loaded("<Topic Key='1' Name='a'><r t='x' cat='c'/></Topic>");
  EXPECT_FALSE(topic->TopicLinks()->Topic());
  EXPECT_EQ(topic->TopicLinks()->Item(1)->ParentTopic(), topic);
  topic->TopicLinks()->Remove(1);
  EXPECT_TRUE(topic->Dirty());
  EXPECT_FALSE(Loaded("<Topic Key='1'/>")->TopicLinks()->Topic());
}

TEST_F(TopicLinkTest, Record_ComesBack_AndAURLLinkKeepsAnEmptyTarget) {
  const auto topic = AddTopic("a");
  topic->NewTopicLink(rttURL, "See also", "Web", "http://example.org/");
  const auto document = SavedDocument(*topic);
  const auto record = ChildNamed(document.DocumentElement(), "r").Attributes();
  EXPECT_EQ(record.Item("t").Value(), "");
  EXPECT_EQ(record.Item("rt").Value(), "1");
  EXPECT_EQ(record.Item("cat").Value(), "See also");
  EXPECT_EQ(record.Item("Title").Value(), "Web");
  EXPECT_EQ(record.Item("URL").Value(), "http://example.org/");
}

TEST_F(TopicLinkTest, RecordWithoutTargetOrCategory_IsReported_AndAddedAllTheSame) {
  const auto topic = Loaded("<Topic Key='1'><r cat='c' Title='1'/><r t='x' Title='2'/><r t='y' cat='c'/></Topic>");
  EXPECT_THAT(failures.Take(), ElementsAre("TopicLink.Load 5", "TopicLink.Load 5"));
  ASSERT_EQ(topic->TopicLinks()->Count(), 3u);
  EXPECT_EQ(topic->TopicLinks()->Item(1)->Category(), "");
  EXPECT_EQ(topic->TopicLinks()->Item(2)->ChildTopicKey, "x");
  EXPECT_EQ(topic->TopicLinks()->Item(2)->Title(), "");
  EXPECT_EQ(topic->TopicLinks()->Item(3)->Title(), "") << "later attributes may be missing";
}

TEST_F(TopicLinkTest, RecordWithABadType_KeepsTheDefault) {
  const auto topic = Loaded("<Topic Key='1'><r t='' cat='' rt='x' URL='u'/></Topic>");
  EXPECT_EQ(topic->TopicLinks()->Item(1)->TopicLinkType(), rttTopic);
  EXPECT_EQ(topic->TopicLinks()->Item(1)->URL(), "u");
}

TEST_F(TopicLinkTest, RemovedTarget_IsNothing_AndTheLinkIsNotShownButSaved) {
  const auto topic = AddTopic("a");
  const auto target = AddTopic("b");
  const auto link = topic->NewTopicLink(rttTopic, "c", "T", "", target);
  EXPECT_THAT(TitlesIn(topic, "c"), ElementsAre("T"));
  project->Topics->Remove(target->Key);
  EXPECT_FALSE(link->ChildTopic());
  EXPECT_THAT(TitlesIn(topic, "c"), IsEmpty());
  EXPECT_EQ(SavedAndLoaded(*topic)->TopicLinks()->Item(1)->ChildTopicKey, target->Key);
}

TEST_F(TopicLinkTest, Links_LeaveOutALinkOfAnUnknownType_WhichIsKept) {
  const auto topic = Loaded("<Topic Key='1'><r t='1' cat='c' Title='odd' rt='7'/></Topic>");
  project->Topics->Add(topic, topic->Key);
  EXPECT_THAT(TitlesIn(topic, "c"), IsEmpty());
  const auto saved = SavedAndLoaded(*topic)->TopicLinks()->Item(1);
  EXPECT_EQ(static_cast<int>(saved->TopicLinkType()), 7);
}

TEST_F(TopicLinkTest, ChildTopic_NeedsAParentWithAProject) {
  const auto link = New<TopicLink>();
  link->ChildTopicKey = "1";
  EXPECT_FALSE(link->ChildTopic());
  link->SetParentTopic(New<Topic>());  // gone at once
  EXPECT_FALSE(link->ChildTopic());
  const auto lonely = New<Topic>();
  link->SetParentTopic(lonely);
  EXPECT_FALSE(link->ChildTopic());
  EXPECT_THAT(failures.Take(),
              ElementsAre("TopicLink.ChildTopic 91", "TopicLink.ChildTopic 91", "TopicLink.ChildTopic 91"));
}

TEST_F(TopicLinkTest, Links_AreThoseOfTheCategory_ThatGoIntoTheHelpFile_InOrder) {
  const auto topic = AddTopic("a");
  const auto target = AddTopic("b");
  const auto hidden = AddTopic("c");
  hidden->SetIncludeInHelpFile(false);
  topic->NewTopicLink(rttURL, "SEE", "1", "u");
  topic->NewTopicLink(rttTopic, "see", "2", "", hidden);
  topic->NewTopicLink(rttTopic, "See", "3", "", target);
  topic->NewTopicLink(rttTopic, "other", "4", "", target);
  EXPECT_THAT(TitlesIn(topic, "see"), ElementsAre("1", "3"));
  EXPECT_THAT(TitlesIn(topic, ""), IsEmpty());
}

}  // namespace
}  // namespace quillbook
