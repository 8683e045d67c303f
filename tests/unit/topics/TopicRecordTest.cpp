#include <algorithm>

#include "unit/topics/TopicsFixture.h"

namespace quillbook {
namespace {

class TopicRecord : public TopicsFixture {
 protected:
  static std::string DateText(Date date) { return date.Format("dd-mm-yyyy hh:nn:ss"); }
  static bool IsPresent(Date date) { return std::abs(Date::Now().Days() - date.Days()) < 1.0 / 24; }
};

constexpr std::string_view FullRecord = R"(<?xml version="1.0" encoding="UTF-8"?>
<Topic Key="{1}" Name="Intro" Title="Introduction" ContentsTitle="Start here" Status="Done" CreatedOn="15-11-2026 00:00" ModifiedOn="16-12-2027 00:00" LayoutName="Wide" AllStyleSheets="False" AllScripts="False" AutoGenerateIndexEntry="False" IncludeInHelpFile="False" HelpContextIDs="" Category="{C}">
	<st>
		<f>a.css</f>
		<f>b.css</f>
	</st>
	<sc>
		<f>a.js</f>
		<f>b.js</f>
	</sc>
	<Notes>Look &amp; see</Notes>
	<K Value="first"/>
	<K Value="second"/>
	<r t="{2}" cat="See also" Title="Other" rt="0" URL=""/>
	<r t="" cat="" Title="Web" rt="1" URL="http://example.org/"/>
	<s k="BodyText">&lt;p&gt;Text&lt;/p&gt;</s>
</Topic>)";

TEST_F(TopicRecord, Load_TakesEveryAttributeAndChild) {
  const auto category = project->NewTopicCategory();
  category->Key = "{C}";
  project->TopicCategories->Add(category, category->Key);
  const auto topic = Loaded(FullRecord);
  EXPECT_EQ(topic->Key, "{1}");
  EXPECT_EQ(topic->Name(), "Intro");
  EXPECT_EQ(topic->Title(), "Introduction");
  EXPECT_EQ(topic->ContentsTitle(), "Start here");
  EXPECT_EQ(topic->InternalContentsTitle(), "Start here");
  EXPECT_EQ(topic->Status(), "Done");
  EXPECT_EQ(DateText(topic->CreatedOn()), "15-11-2026 00:00:00");
  EXPECT_EQ(DateText(topic->ModifiedOn()), "16-12-2027 00:00:00");
  EXPECT_EQ(topic->LayoutName(), "Wide");
  EXPECT_FALSE(topic->AllStylesheets());
  EXPECT_FALSE(topic->AllScripts());
  EXPECT_FALSE(topic->AutoGenerateIndexEntry());
  EXPECT_FALSE(topic->IncludeInHelpFile());
  EXPECT_EQ(topic->TopicCategory(), category);
  EXPECT_THAT(Items(*topic->StyleSheets()), ElementsAre("a.css", "b.css"));
  EXPECT_THAT(Items(*topic->Scripts()), ElementsAre("a.js", "b.js"));
  EXPECT_EQ(topic->StyleSheets()->KeyAt(2), "b.css");
  EXPECT_EQ(topic->Notes(), "Look & see");
  ASSERT_EQ(topic->Keywords()->Count(), 2u);
  EXPECT_EQ(topic->Keywords()->Item(2)->Keyword(), "second");
  ASSERT_EQ(topic->TopicLinks()->Count(), 2u);
  EXPECT_EQ(topic->TopicLinks()->Item(1)->ChildTopicKey, "{2}");
  EXPECT_EQ(topic->TopicLinks()->Item(2)->URL(), "http://example.org/");
  EXPECT_EQ(topic->TopicLinks()->Item(2)->TopicLinkType(), rttURL);
  EXPECT_EQ(topic->TopicSectionData("BodyText"), "<p>Text</p>");
}

TEST_F(TopicRecord, Save_WritesBackWhatALoadTook_ByteForByte) {
  const auto category = project->NewTopicCategory();
  category->Key = "{C}";
  project->TopicCategories->Add(category, category->Key);
  const auto topic = Loaded(FullRecord);
  EXPECT_EQ(SavedDocument(*topic).ToString(), FullRecord);
  EXPECT_EQ(SavedDocument(*topic).ToString(), FullRecord);
}

TEST_F(TopicRecord, Save_OfAPlainTopic_HasNoFileLists_AndTheTitleForTheContents) {
  const auto topic = Loaded(R"(<Topic Key="{1}" Name="Intro" Title="Introduction" CreatedOn="15-11-2026 16:25"
      ModifiedOn="15-11-2026 16:25"><s k="BodyText">&lt;p&gt;Text&lt;/p&gt;</s></Topic>)");
  topic->SetModifiedOn(Date(46341.5 + 1.0 / 1440));
  EXPECT_EQ(SavedDocument(*topic).ToString(), R"(<?xml version="1.0" encoding="UTF-8"?>
<Topic Key="{1}" Name="Intro" Title="Introduction" ContentsTitle="Introduction" Status="In Progress" CreatedOn="15-11-2026 00:00" ModifiedOn="15-11-2026 12:01" LayoutName="" AllStyleSheets="True" AllScripts="True" AutoGenerateIndexEntry="True" IncludeInHelpFile="True" HelpContextIDs="" Category="">
	<Notes/>
	<s k="BodyText">&lt;p&gt;Text&lt;/p&gt;</s>
</Topic>)");
}

TEST_F(TopicRecord, Load_AcceptsAnyLetterCaseAndOrder_AndPassesOverTheUnknown) {
  const auto topic = Loaded(R"(<TOPIC KEY="{1}" name="Intro" allstylesheets="False" ALLSCRIPTS="False">
      <S K="bodytext">Body</S><x><K Value="no"/></x><R T="{2}" CAT="c"/><k value="word"/><NOTES>n</NOTES>
      <ST><any>a.css</any></ST><SC><f>a.js</f></SC></TOPIC>)");
  EXPECT_EQ(topic->Key, "{1}");
  EXPECT_EQ(topic->Name(), "Intro");
  EXPECT_EQ(topic->TopicSectionData("BodyText"), "Body");
  EXPECT_EQ(topic->Keywords()->Count(), 1u);
  EXPECT_EQ(topic->TopicLinks()->Count(), 1u);
  EXPECT_EQ(topic->Notes(), "n");
  EXPECT_THAT(Items(*topic->StyleSheets()), ElementsAre("a.css"));
  EXPECT_THAT(Items(*topic->Scripts()), ElementsAre("a.js"));
}

TEST_F(TopicRecord, Load_WithoutKey_GivesANewOneEachTime) {
  const auto first = Loaded("<Topic Name='a'/>");
  const auto second = Loaded("<Topic Name='a'/>");
  EXPECT_EQ(first->Key.size(), 38u);
  EXPECT_NE(first->Key, second->Key);
}

TEST_F(TopicRecord, Load_WithoutStatusAndDates_TakesTheDefaults) {
  const auto topic = Loaded("<Topic Key='1' CreatedOn='' Status=''/>");
  EXPECT_EQ(topic->Status(), "In Progress");
  EXPECT_TRUE(IsPresent(topic->CreatedOn()));
  EXPECT_TRUE(IsPresent(topic->ModifiedOn()));
  EXPECT_EQ(Loaded("<Topic Key='1'/>")->Status(), "In Progress");
}

TEST_F(TopicRecord, Load_ReadsTheDayOfADate_AndNotItsTime) {
  const auto created = [&](std::string_view text) {
    return Loaded("<Topic Key='1' CreatedOn='" + std::string(text) + "'/>")->CreatedOn();
  };
  EXPECT_EQ(DateText(created("01-02-2005 13:45")), "01-02-2005 00:00:00");
  EXPECT_EQ(DateText(created("01/02/2005")), "01-02-2005 00:00:00");
  EXPECT_EQ(DateText(created(" 1- 2-2005")), "01-02-2005 00:00:00");
  EXPECT_EQ(DateText(created("01\xE2\x80\x93"
                             "02\xE2\x80\x93"
                             "2005")),
            "01-02-2005 00:00:00");
  EXPECT_EQ(DateText(created("31-13-2005 00:00")), "31-01-2006 00:00:00");
  for (const auto* text : {"1-2-2005", "yesterday", "ab-cd-efgh ij:kl", "01-02-0000"})
    EXPECT_TRUE(IsPresent(created(text))) << text;
}

TEST_F(TopicRecord, ZeroDate_IsWrittenAsDayZero_AndReadsAsThePresent) {
  const auto topic = NewTopic("a");
  topic->SetCreatedOn(Date());
  const auto document = SavedDocument(*topic);
  EXPECT_EQ(document.DocumentElement().Attributes().Item("CreatedOn").Value(), "30-12-1899 00:00");
  EXPECT_TRUE(IsPresent(Loaded(document.ToString())->CreatedOn()));
}

TEST_F(TopicRecord, Booleans_AreTrueOnlyForExactlyTrue) {
  const auto topic = Loaded(
      "<Topic Key='1' AllStyleSheets='true' AllScripts='TRUE' AutoGenerateIndexEntry='1' IncludeInHelpFile='yes'/>");
  EXPECT_FALSE(topic->AllStylesheets());
  EXPECT_FALSE(topic->AllScripts());
  EXPECT_FALSE(topic->AutoGenerateIndexEntry());
  EXPECT_FALSE(topic->IncludeInHelpFile());
  const auto plain = Loaded("<Topic Key='1' AllStylesheets='True'/>");
  EXPECT_TRUE(plain->AllStylesheets());
  EXPECT_TRUE(plain->AllScripts());
  EXPECT_TRUE(plain->AutoGenerateIndexEntry());
  EXPECT_TRUE(plain->IncludeInHelpFile());
}

TEST_F(TopicRecord, FileLists_AreIgnored_WhereTheFlagIsTrue) {
  const auto topic = Loaded("<Topic Key='1' AllStyleSheets='True'><st><f>a.css</f></st><sc><f>a.js</f></sc></Topic>");
  EXPECT_TRUE(topic->StyleSheets()->IsEmpty());
  EXPECT_TRUE(topic->Scripts()->IsEmpty());
}

TEST_F(TopicRecord, OldAndNewBody_KeepTheFirstInDocumentOrder_AndTheSecondIsReported) {
  const auto oldFirst = Loaded("<Topic Key='1'><c>old</c><s k='BodyText'>new</s><K Value='w'/></Topic>");
  EXPECT_EQ(oldFirst->TopicSectionData("BodyText"), "old");
  EXPECT_EQ(oldFirst->Keywords()->Count(), 1u);
  EXPECT_THAT(failures.Take(), ElementsAre("TopicSections.Add 457"));
  const auto newFirst = Loaded("<Topic Key='1'><s k='BodyText'>new</s><C>old</C></Topic>");
  EXPECT_EQ(newFirst->TopicSectionData("BodyText"), "new");
  EXPECT_EQ(newFirst->TopicSections->Count(), 1u);
  EXPECT_THAT(failures.Take(), ElementsAre("TopicSections.Add 457"));
}

TEST_F(TopicRecord, SectionOfAnUnknownKind_IsReportedAndDropped_AndTheLoadGoesOn) {
  for (const auto* section : {"<s k='Summary'>x</s>", "<s>x</s>"}) {
    const auto topic = Loaded("<Topic Key='1'>" + std::string(section) + "<s k='BodyText'>body</s></Topic>");
    EXPECT_THAT(failures.Take(), ElementsAre("TopicSection.TopicSectionDef 91", "Topic.NewTopicSection 91"));
    EXPECT_EQ(topic->TopicSections->Count(), 1u);
    EXPECT_EQ(topic->TopicSectionData("BodyText"), "body");
    EXPECT_FALSE(topic->PauseEvents());
  }
}

TEST_F(TopicRecord, Notes_AreTrimmed_AndALineBreakAloneIsNothing) {
  const auto notes = [&](std::string_view text) {
    return Loaded("<Topic Key='1'><Notes>" + std::string(text) + "</Notes></Topic>")->Notes();
  };
  EXPECT_EQ(notes("&#13;&#10;"), "");
  EXPECT_EQ(notes("\r\n"), "");
  EXPECT_EQ(notes("   "), "");
  EXPECT_EQ(notes("  &#13;&#10;  "), "");
  EXPECT_EQ(notes("  a b "), "a b");
  EXPECT_EQ(notes("a\r\n"), "a\r\n");
}

TEST_F(TopicRecord, ContentsTitleEqualToTheTitle_IsForgottenByALoad) {
  const auto topic = NewTopic("a");
  topic->SetTitle("Title");
  topic->SetContentsTitle("Title");
  EXPECT_EQ(topic->InternalContentsTitle(), "Title");
  const auto loaded = SavedAndLoaded(*topic);
  EXPECT_EQ(loaded->InternalContentsTitle(), "");
  loaded->SetTitle("New");
  EXPECT_EQ(loaded->ContentsTitle(), "New");
  EXPECT_EQ(Loaded("<Topic Key='1' Title='a' ContentsTitle='A'/>")->InternalContentsTitle(), "A");
}

TEST_F(TopicRecord, OnlyAsManyScriptsAsStylesheets_AreSaved) {
  const auto topic = NewTopic("a");
  for (const auto* script : {"1.js", "2.js", "3.js"}) topic->AddScript(script);
  topic->AddStyleSheet("1.css");
  topic->SetAllStylesheets(false);
  EXPECT_THAT(Items(*SavedAndLoaded(*topic)->Scripts()), ElementsAre("1.js"));

  topic->SetAllStylesheets(true);
  const auto document = SavedDocument(*topic);
  EXPECT_THAT(ChildNames(document.DocumentElement()), ElementsAre("sc", "Notes", "s"));
  EXPECT_THAT(Items(*Loaded(document.ToString())->Scripts()), IsEmpty());
}

TEST_F(TopicRecord, MoreStylesheetsThanScripts_EndTheSaveAtTheMissingScript) {
  const auto topic = AddTopic("a");
  topic->SetNotes("notes");
  topic->AddScript("1.js");
  for (const auto* sheet : {"1.css", "2.css", "3.css"}) topic->AddStyleSheet(sheet);
  topic->SetAllStylesheets(false);
  const auto document = SavedDocument(*topic);
  EXPECT_THAT(failures.Take(), ElementsAre("Topic.InternalSave 9"));
  EXPECT_THAT(ChildNames(document.DocumentElement()), ElementsAre("st", "sc"));
  EXPECT_EQ(ChildNamed(document.DocumentElement(), "sc").ChildElements().Count(), 1u);
  EXPECT_TRUE(topic->Dirty());
  EXPECT_TRUE(topic->NewTopicFlag);
}

TEST_F(TopicRecord, StylesheetsWithoutAnyScript_AreSaved) {
  const auto topic = NewTopic("a");
  topic->SetAllScripts(false);
  topic->AddStyleSheet("1.css");
  topic->SetAllStylesheets(false);
  EXPECT_THAT(ChildNames(SavedDocument(*topic).DocumentElement()), ElementsAre("st", "sc", "Notes", "s"));
}

TEST_F(TopicRecord, SaveToDisk_HasNothingToWriteTo_AndIsReported) {
  const auto topic = AddTopic("a");
  topic->SetTitle("b");
  topic->SaveToDisk();
  EXPECT_THAT(failures.Take(), ElementsAre("Topic.InternalSave 91"));
  EXPECT_TRUE(topic->Dirty());
}

TEST_F(TopicRecord, CategoryRemovedFromTheProject_IsForgotten_AndSavedAsNone) {
  const auto topic = AddTopic("a");
  const auto category = AddCategory("Group");
  topic->SetTopicCategory(category);
  const auto written = [&] {
    return std::string(SavedDocument(*topic).DocumentElement().Attributes().Item("Category").Value());
  };
  EXPECT_EQ(written(), category->Key);
  project->TopicCategories->Remove(category->Key);
  EXPECT_FALSE(topic->TopicCategory());
  project->TopicCategories->Add(category, category->Key);
  EXPECT_FALSE(topic->TopicCategory()) << "forgotten for good";
  EXPECT_EQ(written(), "");
}

TEST_F(TopicRecord, UnknownCategory_GivesNone_AlsoInATopicThatHadOne) {
  const auto topic = Loaded("<Topic Key='1' Category='{nobody}'/>");
  EXPECT_FALSE(topic->TopicCategory());
  topic->SetTopicCategory(AddCategory("Group"));
  const auto record = Parse("<Topic Key='1' Category='{nobody}'/>");
  topic->Load(record.DocumentElement());
  EXPECT_FALSE(topic->TopicCategory());
}

TEST_F(TopicRecord, Load_TellsNobody_AndLeavesDirty) {
  const auto topic = AddTopic("a");
  topic->SetTitle("old");
  log.clear();
  const auto record = Parse(std::string(FullRecord));
  topic->Load(record.DocumentElement());
  EXPECT_TRUE(topic->Dirty());
  EXPECT_FALSE(topic->NewTopicFlag);
  EXPECT_FALSE(topic->PauseEvents());
  const auto fresh = Loaded(FullRecord);
  EXPECT_FALSE(fresh->Dirty());
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(TopicRecord, Load_ReplacesAllLists_ButKeepsWhatTheRecordLacks) {
  const auto topic = Loaded(FullRecord);
  const auto keywords = topic->Keywords();
  const auto links = topic->TopicLinks();
  const auto record = Parse("<Topic Title='New'/>");
  topic->Load(record.DocumentElement());
  EXPECT_EQ(topic->Key, "{1}");
  EXPECT_EQ(topic->Name(), "Intro");
  EXPECT_EQ(topic->Title(), "New");
  EXPECT_EQ(topic->LayoutName(), "Wide");
  EXPECT_TRUE(topic->AllStylesheets()) << "both flags start from True at each load";
  EXPECT_TRUE(topic->AllScripts());
  EXPECT_EQ(topic->Keywords(), keywords);
  EXPECT_EQ(keywords->Count(), 0u);
  EXPECT_NE(topic->TopicLinks(), links);
  EXPECT_EQ(topic->TopicLinks()->Count(), 0u);
  EXPECT_EQ(topic->TopicSections->Count(), 0u);
  EXPECT_TRUE(topic->StyleSheets()->IsEmpty());
  links->Add(New<TopicLink>());
  EXPECT_FALSE(topic->Dirty()) << "the former list is no longer the topic's";
}

TEST_F(TopicRecord, Load_WithoutElement_IsReported_AndLeavesTheTopicPaused) {
  const auto topic = NewTopic("a");
  topic->Load({});
  EXPECT_THAT(failures.Take(), ElementsAre("Topic.InternalLoad 91"));
  EXPECT_TRUE(topic->PauseEvents());
  EXPECT_EQ(topic->Name(), "a");
  EXPECT_EQ(topic->TopicSections->Count(), 0u);
}

TEST_F(TopicRecord, Save_ClearsDirtyAndNew_AndTellsNobody) {
  const auto topic = AddTopic("a");
  topic->SetTitle("b");
  project->SetDirty(true);
  log.clear();
  (void)SavedDocument(*topic);
  EXPECT_FALSE(topic->Dirty());
  EXPECT_FALSE(topic->NewTopicFlag);
  EXPECT_TRUE(project->Dirty());
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(TopicRecord, TextOfAnyKind_ComesBackAsItWentIn) {
  std::string body = "a\r\nb\tc ]]> <![CDATA[ &amp; \xF0\x9F\x98\x80 \x01\x1F \n";
  body.append(1'000'000, 'x').append(" \r");
  const auto topic = NewTopic("a\tb\r\nc\"<&>'");
  topic->SetTopicSectionData("BodyText", body);
  topic->SetNotes("line 1\r\nline 2\n\x02");
  topic->AddKeyword("k\t\r\n\x03");
  const auto loaded = SavedAndLoaded(*topic);
  EXPECT_EQ(loaded->Name(), topic->Name());
  EXPECT_TRUE(loaded->TopicSectionData("BodyText") == body);
  EXPECT_EQ(loaded->Notes(), topic->Notes());
  EXPECT_EQ(loaded->Keywords()->Item(1)->Keyword(), "k\t\r\n\x03");
}

TEST_F(TopicRecord, Clone_GoesThroughTheRecord) {
  const auto topic = AddTopic("a");
  topic->SetTitle("Title");
  topic->SetContentsTitle("Title");
  topic->SetNotes("  notes ");
  topic->AddScript("1.js");
  topic->SetCreatedOn(Date(38384.75));
  topic->SetTopicSectionData("BodyText", "body");
  log.clear();
  const auto clone = topic->Clone();
  EXPECT_EQ(clone->Key, topic->Key);
  EXPECT_EQ(clone->QBProject(), project);
  EXPECT_EQ(clone->TopicSections->Count(), 1u) << "the body that new topics begin with is replaced";
  EXPECT_EQ(clone->TopicSectionData("BodyText"), "body");
  EXPECT_EQ(clone->InternalContentsTitle(), "");
  EXPECT_EQ(clone->Notes(), "notes");
  EXPECT_THAT(Items(*clone->Scripts()), IsEmpty());
  EXPECT_EQ(clone->CreatedOn(), Date(38384));
  EXPECT_FALSE(clone->Dirty());
  EXPECT_FALSE(clone->NewTopicFlag);
  EXPECT_FALSE(topic->Dirty()) << "looks saved";
  EXPECT_FALSE(topic->NewTopicFlag);
  EXPECT_EQ(project->Topics->Count(), 1u);
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(TopicRecord, Clone_FindsItsCategoryInTheTargetProject) {
  const auto topic = AddTopic("a");
  const auto category = AddCategory("Group");
  topic->SetTopicCategory(category);
  EXPECT_EQ(topic->Clone()->TopicCategory(), category);

  const auto other = New<QBProject>();
  EXPECT_FALSE(topic->Clone(other)->TopicCategory());
  const auto same = other->NewTopicCategory();
  same->Key = category->Key;
  other->TopicCategories->Add(same, same->Key);
  const auto clone = topic->Clone(other);
  EXPECT_EQ(clone->TopicCategory(), same);
  EXPECT_EQ(clone->QBProject(), other);
}

TEST_F(TopicRecord, Clone_WithoutAnyProject_IsReported) {
  const auto topic = New<Topic>();
  EXPECT_FALSE(topic->Clone());
  EXPECT_THAT(failures.Take(), ElementsAre("Topic.Clone 91"));
}

}  // namespace
}  // namespace quillbook
