#include <functional>

#include "quillbook/frame/FailureReporter.h"
#include "unit/topics/TopicsFixture.h"

namespace quillbook {
namespace {

using TopicTest = TopicsFixture;

struct Setting {
  const char* name;
  std::function<void(Topic&)> change;
};

const Setting Settings[] = {
    {"Name", [](Topic& topic) { topic.SetName("new"); }},
    {"Title", [](Topic& topic) { topic.SetTitle("new"); }},
    {"ContentsTitle", [](Topic& topic) { topic.SetContentsTitle("new"); }},
    {"Status", [](Topic& topic) { topic.SetStatus("new"); }},
    {"Notes", [](Topic& topic) { topic.SetNotes("new"); }},
    {"LayoutName", [](Topic& topic) { topic.SetLayoutName("new"); }},
    {"AllScripts", [](Topic& topic) { topic.SetAllScripts(false); }},
    {"AllStylesheets", [](Topic& topic) { topic.SetAllStylesheets(false); }},
    {"AutoGenerateIndexEntry", [](Topic& topic) { topic.SetAutoGenerateIndexEntry(false); }},
    {"IncludeInHelpFile", [](Topic& topic) { topic.SetIncludeInHelpFile(false); }},
};

TEST_F(TopicTest, Setter_MarksAndTells_OnlyOnARealChange) {
  for (const auto& setting : Settings) {
    SCOPED_TRACE(setting.name);
    const auto topic = AddTopic("a");
    topic->SetModifiedOn(Date());
    setting.change(*topic);
    EXPECT_TRUE(topic->Dirty());
    EXPECT_NE(topic->ModifiedOn(), Date());
    EXPECT_THAT(log, ElementsAre("TopicChanged " + topic->Name(), "DirtyStateChanged"));
    EXPECT_TRUE(project->TopicsDirty());

    log.clear();
    topic->SetDirty(false);
    setting.change(*topic);
    EXPECT_FALSE(topic->Dirty());
    EXPECT_THAT(log, IsEmpty());
  }
}

TEST_F(TopicTest, PausedTopic_ChangesButMarksAndTellsNothing) {
  for (const auto& setting : Settings) {
    SCOPED_TRACE(setting.name);
    const auto topic = AddTopic("a");
    topic->SetPauseEvents(true);
    topic->SetModifiedOn(Date());
    setting.change(*topic);
    EXPECT_FALSE(topic->Dirty());
    EXPECT_EQ(topic->ModifiedOn(), Date());
    EXPECT_THAT(log, IsEmpty());
    topic->SetPauseEvents(false);
    setting.change(*topic);
    EXPECT_FALSE(topic->Dirty()) << "the value was stored while paused";
  }
}

TEST_F(TopicTest, TopicWithoutProject_IsMarked_AndTellsNobody) {
  const auto topic = New<Topic>();
  topic->SetTitle("a");
  topic->TopicLinks()->Add(New<TopicLink>());
  topic->SetTopicSectionData("BodyText", "b");
  EXPECT_TRUE(topic->Dirty());
  EXPECT_FALSE(topic->ReadOnly());
}

TEST_F(TopicTest, Defaults_AreThoseOfANewTopic) {
  const auto topic = New<Topic>();
  EXPECT_TRUE(topic->NewTopicFlag);
  EXPECT_FALSE(topic->IsDefault());
  EXPECT_FALSE(topic->PauseEvents());
  EXPECT_FALSE(topic->Dirty());
  EXPECT_TRUE(topic->AllStylesheets());
  EXPECT_TRUE(topic->AllScripts());
  EXPECT_TRUE(topic->AutoGenerateIndexEntry());
  EXPECT_TRUE(topic->IncludeInHelpFile());
  EXPECT_TRUE(topic->RuntimeIncludeInHelpFile());
  EXPECT_EQ(topic->CreatedOn(), Date());
  EXPECT_EQ(topic->Key, "");
  EXPECT_FALSE(topic->QBProject());
  EXPECT_EQ(topic->Keywords()->Topic(), topic);
  EXPECT_EQ(topic->TopicSections->Count(), 0u);
}

TEST_F(TopicTest, Texts_AreComparedExactly) {
  const auto topic = AddTopic("name");
  topic->SetName("NAME");
  EXPECT_EQ(topic->Name(), "NAME");
  EXPECT_TRUE(topic->Dirty());
}

TEST_F(TopicTest, DatesKeysAndFlags_TellNobody) {
  const auto topic = AddTopic("a");
  topic->SetCreatedOn(Date(1));
  topic->SetModifiedOn(Date(2));
  topic->Key = "k";
  topic->NewTopicFlag = false;
  topic->SetKeywords(New<TopicKeywords>());
  EXPECT_EQ(topic->Keywords()->Topic(), topic);
  EXPECT_FALSE(topic->Dirty());
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(TopicTest, Dirty_IsNotCompared_AndReachesTheProjectOnlyWhenTrue) {
  const auto topic = AddTopic("a");
  topic->SetDirty(true);
  topic->SetDirty(true);
  EXPECT_THAT(log, ElementsAre("DirtyStateChanged", "DirtyStateChanged"));
  EXPECT_TRUE(project->ProjectDirty());
  topic->SetDirty(false);
  EXPECT_TRUE(project->ProjectDirty());

  const auto lonely = New<Topic>();
  lonely->SetDirty(true);
  EXPECT_THAT(failures.Take(), ElementsAre("Topic.Dirty 91"));
  EXPECT_TRUE(lonely->Dirty());
}

TEST_F(TopicTest, ContentsTitle_StandsInForTheTitle) {
  const auto topic = NewTopic("a");
  topic->SetTitle("Title");
  EXPECT_EQ(topic->ContentsTitle(), "Title");
  topic->SetContentsTitle("Contents");
  EXPECT_EQ(topic->ContentsTitle(), "Contents");
  EXPECT_EQ(topic->InternalContentsTitle(), "Contents");
}

TEST_F(TopicTest, Category_IsComparedByKey) {
  const auto topic = AddTopic("a");
  const auto category = AddCategory("Group");
  topic->SetTopicCategory(category);
  EXPECT_THAT(log, ElementsAre("TopicChanged a", "DirtyStateChanged"));
  log.clear();
  const auto twin = project->NewTopicCategory();
  twin->Key = category->Key;
  topic->SetTopicCategory(twin);
  EXPECT_THAT(log, IsEmpty());
  EXPECT_EQ(topic->TopicCategory(), category);
  topic->SetTopicCategory({});
  EXPECT_THAT(log, ElementsAre("TopicChanged a", "DirtyStateChanged"));
}

TEST_F(TopicTest, Names_GiveTheFileNameAndTheDisplayText) {
  const auto topic = NewTopic("a:b*c");
  topic->SetTitle("T");
  EXPECT_EQ(topic->QualifiedName(), "a-b c");
  EXPECT_EQ(topic->DisplayText(), "a:b*c (T)");
}

TEST_F(TopicTest, IncludedInBuildProfile_IsTheSameForEveryProfile) {
  const auto topic = NewTopic("a");
  EXPECT_TRUE(topic->IncludedInBuildProfile({}, true));
  topic->SetIncludeInHelpFile(false);
  EXPECT_FALSE(topic->IncludedInBuildProfile({}, false));
  EXPECT_FALSE(topic->RuntimeIncludeInHelpFile());
}

/// Records the events of a topic itself, between those of its project.
class TopicFiles : public TopicsFixture {
 protected:
  Ref<Topic> WatchedTopic() {
    auto topic = AddTopic("a");
    auto& events = topic->Events;
    const auto named = [&](Event<std::string_view>& event, std::string name) {
      watches.push_back(
          event.Connect([this, name](std::string_view file) { log.push_back(name + " " + std::string(file)); }));
    };
    named(events.TopicStyleSheetAdded, "TopicStyleSheetAdded");
    named(events.TopicStyleSheetRemoved, "TopicStyleSheetRemoved");
    named(events.TopicScriptAdded, "TopicScriptAdded");
    named(events.TopicScriptRemoved, "TopicScriptRemoved");
    watches.push_back(events.TopicStyleSheetsChanged.Connect([this] { log.emplace_back("TopicStyleSheetsChanged"); }));
    watches.push_back(events.TopicScriptsChanged.Connect([this] { log.emplace_back("TopicScriptsChanged"); }));
    return topic;
  }
};

TEST_F(TopicFiles, AddScript_TellsOnce_AndClearsAllScripts) {
  const auto topic = WatchedTopic();
  topic->AddScript("a.js");
  EXPECT_THAT(log, ElementsAre("TopicScriptAdded a.js", "TopicScriptsChanged", "TopicChanged a", "DirtyStateChanged"));
  EXPECT_FALSE(topic->AllScripts());
  log.clear();
  topic->AddScript("A.JS");
  EXPECT_THAT(log, IsEmpty());
  EXPECT_THAT(Items(*topic->Scripts()), ElementsAre("a.js"));
}

TEST_F(TopicFiles, RemoveScript_TellsOnlyOfAKnownOne) {
  const auto topic = WatchedTopic();
  topic->AddScript("a.js");
  log.clear();
  topic->RemoveScript("b.js");
  EXPECT_THAT(log, IsEmpty());
  topic->RemoveScript("A.js");
  EXPECT_THAT(log,
              ElementsAre("TopicScriptRemoved A.js", "TopicScriptsChanged", "TopicChanged a", "DirtyStateChanged"));
  EXPECT_FALSE(topic->AllScripts());
}

TEST_F(TopicFiles, AddStyleSheet_LeavesAllStylesheets_AndReportsARepetition) {
  const auto topic = WatchedTopic();
  topic->AddStyleSheet("a.css");
  EXPECT_THAT(
      log, ElementsAre("TopicStyleSheetAdded a.css", "TopicStyleSheetsChanged", "TopicChanged a", "DirtyStateChanged"));
  EXPECT_TRUE(topic->AllStylesheets());
  log.clear();
  topic->SetDirty(false);
  topic->AddStyleSheet("a.css");
  EXPECT_THAT(failures.Take(), ElementsAre("Topic.AddStyleSheet 457"));
  EXPECT_THAT(log, IsEmpty());
  EXPECT_FALSE(topic->Dirty());
}

TEST_F(TopicFiles, RemoveStyleSheet_TellsAlsoOfAnUnknownOne) {
  const auto topic = WatchedTopic();
  topic->RemoveStyleSheet("a.css");
  EXPECT_THAT(log, ElementsAre("TopicStyleSheetRemoved a.css", "TopicStyleSheetsChanged", "TopicChanged a",
                               "DirtyStateChanged"));
}

TEST_F(TopicFiles, TurningAFlagOn_EmptiesItsList) {
  const auto topic = WatchedTopic();
  topic->AddScript("a.js");
  topic->AddStyleSheet("a.css");
  topic->SetAllStylesheets(false);
  log.clear();
  topic->SetAllScripts(true);
  topic->SetAllStylesheets(true);
  EXPECT_THAT(log, ElementsAre("TopicScriptsChanged", "TopicChanged a", "DirtyStateChanged", "TopicStyleSheetsChanged",
                               "TopicChanged a", "DirtyStateChanged"));
  EXPECT_TRUE(topic->Scripts()->IsEmpty());
  EXPECT_TRUE(topic->StyleSheets()->IsEmpty());
}

TEST_F(TopicFiles, PausedTopic_ChangesItsListsInSilence) {
  const auto topic = WatchedTopic();
  topic->SetPauseEvents(true);
  topic->AddScript("a.js");
  topic->AddStyleSheet("a.css");
  topic->RemoveScript("a.js");
  topic->RemoveStyleSheet("a.css");
  topic->SetAllStylesheets(false);
  EXPECT_THAT(log, IsEmpty());
  EXPECT_FALSE(topic->Dirty());
}

TEST_F(TopicFiles, Include_FollowsTheFlagAndElseTheList) {
  const auto topic = WatchedTopic();
  EXPECT_TRUE(topic->IncludeScript("any.js"));
  EXPECT_TRUE(topic->IncludeStylesheet("any.css"));
  topic->SetAllScripts(false);
  topic->SetAllStylesheets(false);
  EXPECT_FALSE(topic->IncludeScript("a.js"));
  topic->AddScript("a.js");
  topic->AddStyleSheet("a.css");
  EXPECT_TRUE(topic->IncludeScript("A.js"));
  EXPECT_TRUE(topic->IncludeStylesheet("A.css"));
  EXPECT_FALSE(topic->IncludeStylesheet("b.css"));
}

TEST_F(TopicTest, Fields_StandInTheirOrder_AndListsAppearWhenTheyAreThere) {
  const auto topic = New<Topic>();
  const auto listFields = [&] {
    std::vector<std::string> lists;
    topic->Fields([&](std::string_view name, const Variant& value) {
      if (name == "mStyleSheets" || name == "mScripts" || name == "mTopicLinkNames")
        lists.push_back(std::string(name) + (value.ToObject() ? " made" : " nothing"));
    });
    return lists;
  };
  std::vector<std::string> names;
  topic->Fields([&](std::string_view name, const Variant&) { names.emplace_back(name); });
  EXPECT_THAT(
      names, ElementsAre("NewTopicFlag", "mIsDefault", "mLoading", "mQBProject", "mName", "mTitle", "mContentsTitle",
                         "mTopicLinkNames", "mTopicCategoryID", "mDirty", "mStatus", "mCreatedOn", "mModifiedOn",
                         "mNotes", "mLayoutName", "mStyleSheets", "mAllStylesheets", "mAutoGenerateIndexEntry",
                         "mIncludeInHelpFile", "mReadOnlyCache", "mReadOnlyCacheSet", "Key", "mKeywords", "mTopicLinks",
                         "TopicSections", "mScripts", "mAllScripts"));
  EXPECT_THAT(listFields(), ElementsAre("mTopicLinkNames made", "mStyleSheets nothing", "mScripts nothing"));
  (void)topic->Scripts();
  EXPECT_THAT(listFields(), ElementsAre("mTopicLinkNames made", "mStyleSheets nothing", "mScripts made"));
  const auto record = Parse("<Topic/>");
  topic->Load(record.DocumentElement());
  EXPECT_THAT(listFields(), ElementsAre("mTopicLinkNames made", "mStyleSheets made", "mScripts made"));
  topic->SetAllScripts(false);
  topic->SetAllScripts(true);
  EXPECT_THAT(listFields(), ElementsAre("mTopicLinkNames made", "mStyleSheets made", "mScripts nothing"));
}

TEST_F(TopicTest, Members_AreReadAndWrittenByName) {
  const auto topic = AddTopic("a");
  topic->SetMember("title", "T");
  EXPECT_EQ(topic->Member("TITLE").ToText(), "T");
  EXPECT_EQ(topic->Member("ContentsTitle").ToText(), "T");
  EXPECT_EQ(topic->Member("QBProject").ToObject(), project);
  const auto category = AddCategory("Group");
  topic->SetMember("TopicCategory", category);
  EXPECT_EQ(topic->Member("TopicCategory").ToObject(), category);
  EXPECT_THROW((void)topic->Member("mName"), Failure);
}

/// Takes every report, so that failures travel up.
class CountingErrorObject final : public ErrorObject {
 public:
  std::vector<std::string> procedures;
  void ErrorHandler(std::int32_t, std::string_view, std::string_view Module, std::string_view Procedure,
                    std::string_view, std::int32_t, std::string_view, std::string_view) override {
    procedures.push_back(std::string(Module) + "." + std::string(Procedure));
  }
  [[nodiscard]] std::string Action() const override { return {}; }
};

TEST_F(TopicTest, FailureInAListener_IsReportedByEveryProcedureOnItsWay_IfAnErrorObjectIsThere) {
  const auto topic = AddTopic("a");
  const auto listener =
      project->Events.TopicChanged.Connect([](const auto&) { throw Failure(FailureNumber::InvalidCall); });
  const auto errors = std::make_shared<CountingErrorObject>();
  const auto previous = SetErrorObject(errors);
  EXPECT_THROW(topic->SetTitle("b"), Failure);
  SetErrorObject(previous);
  EXPECT_THAT(errors->procedures, ElementsAre("QBProject.FireTopicChanged", "Topic.Changed", "Topic.Title"));
  EXPECT_EQ(topic->Title(), "b");
}

}  // namespace
}  // namespace quillbook
