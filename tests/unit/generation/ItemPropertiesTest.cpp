#include "generation/GenerationTest.h"
#include "quillbook/base/Locale.h"
#include "quillbook/config/ProjectProperties.h"
#include "quillbook/generation/GlossaryLetter.h"
#include "quillbook/host/Keywords.h"
#include "quillbook/host/VariableValue.h"

namespace quillbook {
namespace {

struct ManifestEntryTag {
  static constexpr std::string_view TypeName = "ManifestEntry", First = "RuntimeTitle", Second = "Title",
                                    Third = "Topic";
};
struct ManifestTag {
  static constexpr std::string_view TypeName = "Manifest", First = "Name", Second = "Title", Third = "Unused";
};
struct MenuLinkTag {
  static constexpr std::string_view TypeName = "MenuLink", First = "Name", Second = "Target", Third = "Unused";
};
struct LanguageTag {
  static constexpr std::string_view TypeName = "Language", First = "Caption", Second = "Other", Third = "Unused";
};
struct LowerLanguageTag {
  static constexpr std::string_view TypeName = "language", First = "Caption", Second = "Other", Third = "Unused";
};

template <class Tag>
Ref<support::ToyItem<Tag>> Toy(std::string first, std::string second = {}, const Ref<Object>& third = {}) {
  auto item = New<support::ToyItem<Tag>>();
  item->First = std::move(first);
  item->Second = std::move(second);
  item->Third = third;
  return item;
}

class ItemPropertiesTest : public support::GenerationTest {
 protected:
  void SetUp() override {
    GenerationTest::SetUp();
    variables =
        "<variable name=\"Skin\" default=\"plain\"/><variable name=\"Empty\" default=\"\"/>"
        "<variable name=\"GlossaryTitle\" default=\"\"/>";
    SetUpHost();
  }
  std::string Of(const Ref<Object>& item, std::string_view name) {
    Select(item);
    return Property(name);
  }
  Ref<GlossaryLetter> Letter(std::string_view name, std::string_view value) {
    auto letter = New<GlossaryLetter>();
    letter->Name = name;
    letter->Value = value;
    return letter;
  }
  void SetVariable(std::string_view name, std::string_view value) {
    project->VariableValues->Add(New<VariableValue>(std::string(name), std::string(value)), name);
  }
};

TEST_F(ItemPropertiesTest, TitleHasManyNames) {
  const auto topic = AddTopic("a", "", "Title \"A\"");
  for (const auto* name : {"title", "Item_Title", "itemtitle", "ITEMTITLE", "topictitle"})
    EXPECT_EQ(Of(topic, name), "Title \"A\"") << name;
  EXPECT_EQ(Of(topic, "itemtitlenoquotes"), "Title 'A'");
}

TEST_F(ItemPropertiesTest, TitleOfOtherKindsOfItem) {
  EXPECT_EQ(Of(New<Keyword>("key"), "itemtitle"), "key");
  EXPECT_EQ(Of(Toy<ManifestTag>("name", "title"), "itemtitle"), "name");
  EXPECT_EQ(Of(Toy<MenuLinkTag>("name", "target"), "itemtitle"), "name");
  EXPECT_EQ(Of(Toy<ManifestEntryTag>("runtime", "title"), "itemtitle"), "runtime");
  EXPECT_EQ(Of(project, "itemtitle"), "Demo");
}

TEST_F(ItemPropertiesTest, QualifiedNameOfAMenuLinkIsItsTarget) {
  EXPECT_EQ(Of(AddTopic("a/b"), "itemqualifiedname"), "a-b");
  EXPECT_EQ(Of(Toy<MenuLinkTag>("name", "target"), "itemqualifiedname"), "target");
}

TEST_F(ItemPropertiesTest, WithoutItemMostAreEmpty) {
  for (const auto* name :
       {"itemtitle", "itemtitlenoquotes", "itemqualifiedname", "linktarget", "linktitle", "glossaryletterlink",
        "glossaryletter", "glossaryitemterm", "glossaryitemdefinition", "indexurl", "languagecaption", "itemname"})
    EXPECT_EQ(Of({}, name), "") << name;
  EXPECT_EQ(failures.Take(), Failures());
}

TEST_F(ItemPropertiesTest, MissingMemberIsAFailure_ExceptForTheName) {
  EXPECT_EQ(Of(New<KeywordJump>("t"), "itemtitle"), "");
  EXPECT_EQ(failures.Take(), Failures{"QBDataProvider.DataProvider_GetProperty 438"});
  EXPECT_EQ(Of(New<KeywordJump>("t"), "itemname"), "");
  EXPECT_EQ(failures.Take(), Failures());
  EXPECT_EQ(Of(AddTopic("a"), "itemname"), "a");
}

TEST_F(ItemPropertiesTest, ProjectTitleIsTheProfilesOwn_IfItHasOne) {
  EXPECT_EQ(Property("projecttitle"), "Demo");
  const auto profile = AddProfile();
  project->SetCurrentBuildProfile(profile);
  EXPECT_EQ(Property("projecttitle"), "Demo");
  profile->SetProjectTitle("Special");
  EXPECT_EQ(Property("ProjectTitle"), "Special");
}

TEST_F(ItemPropertiesTest, ProjectAndBuild) {
  EXPECT_EQ(Property("crlf"), "\r\n");
  EXPECT_EQ(Property("helpfiletitle"), "Help");
  EXPECT_EQ(Property("projectgroupdescription"), "Help");
  EXPECT_EQ(Property("helpcompilerprojectfilename"), "demo");
}

TEST_F(ItemPropertiesTest, LinkToATopic) {
  const auto topic = AddTopic("a");
  const auto child = AddTopic("b: c", "", "Child");
  const auto link = topic->NewTopicLink(rttTopic, "", "", "", child);
  EXPECT_EQ(Of(link, "linktarget"), "b- c.html");
  EXPECT_EQ(Of(link, "linktitle"), "Child");
  link->SetTitle("Own");
  EXPECT_EQ(Property("linktitle"), "Own");
  link->SetTitle("{auto}");
  EXPECT_EQ(Property("linktitle"), "Child");
  link->SetTitle("  ");
  EXPECT_EQ(Property("linktitle"), "Child");
}

TEST_F(ItemPropertiesTest, LinkWhoseTopicIsGone) {
  const auto topic = AddTopic("a");
  const auto child = AddTopic("b");
  const auto link = topic->NewTopicLink(rttTopic, "", "", "", child);
  project->Topics->Remove(child->Key);
  EXPECT_EQ(Of(link, "linktarget"), "#");
  EXPECT_EQ(Of(link, "linktitle"), "{No Child Topic}");
}

TEST_F(ItemPropertiesTest, LinkToTheGlossary) {
  const auto link = AddTopic("a")->NewTopicLink();
  link->ChildTopicKey = "Glossary.html";
  EXPECT_EQ(Of(link, "linktarget"), "Glossary.html");
  EXPECT_EQ(Of(link, "linktitle"), "Glossary");
  SetVariable("GlossaryTitle", "Terms");
  EXPECT_EQ(Property("linktitle"), "Terms");
  link->ChildTopicKey = "glossary.html";
  EXPECT_EQ(Property("linktarget"), "#");
}

TEST_F(ItemPropertiesTest, LinkToAURL) {
  const auto link = AddTopic("a")->NewTopicLink(rttURL, "", "{Title}", "http://x/");
  EXPECT_EQ(Of(link, "linktarget"), "http://x/");
  EXPECT_EQ(Of(link, "linktitle"), "{Title}");
}

TEST_F(ItemPropertiesTest, LinkTargetOfOtherItems) {
  EXPECT_EQ(Of(AddTopic("a"), "linktarget"), "a.html");
  EXPECT_EQ(Property("linktitle"), "");
  EXPECT_EQ(Of(Toy<MenuLinkTag>("name", "target"), "linktarget"), "target");
}

TEST_F(ItemPropertiesTest, IndexURLIsForTopicsOnly) {
  EXPECT_EQ(Of(AddTopic("a"), "indexurl"), "a.html");
  EXPECT_EQ(Of(project, "indexurl"), "");
}

TEST_F(ItemPropertiesTest, LetterLinksOnlyWhereThereAreTerms) {
  EXPECT_EQ(Of(Letter("A", "2"), "glossaryletterlink"), "<a href=\"#A\">A</a>");
  EXPECT_EQ(Of(Letter("B", "0"), "glossaryletterlink"), "B");
  EXPECT_EQ(Property("glossaryletter"), "B");
}

TEST_F(ItemPropertiesTest, GlossaryTextsForPageAndScript) {
  const auto item = AddTerm("two\r\nlines", "a\r\n\"b\"\\c");
  EXPECT_EQ(Of(item, "glossaryitemterm"), "twolines");
  EXPECT_EQ(Property("glossaryitemdefinition"), "a &quot;b&quot;\\\\c");
  EXPECT_EQ(Property("glossaryitemrawdefinition"), "a \"b\"\\c");
}

TEST_F(ItemPropertiesTest, CharsetFollowsTheProfile_AndUtf8WhileEditing) {
  const auto profile = AddProfile();
  project->SetCurrentBuildProfile(profile);
  EXPECT_EQ(Property("charset"), "65001");
  profile->SetLocaleID(1049);
  EXPECT_EQ(Property("charset"), "1251");
  EXPECT_EQ(Property("metacharset"), "<META HTTP-EQUIV=\"Content-Type\" CONTENT=\"text/html; charset=windows-1251\">");
  provider->ForEdit = true;
  EXPECT_EQ(Property("metacharset"), "<META HTTP-EQUIV=\"Content-Type\" CONTENT=\"text/html; charset=utf-8\">");
}

TEST_F(ItemPropertiesTest, LocaleStringIsNumberAndName) {
  const auto profile = AddProfile();
  project->SetCurrentBuildProfile(profile);
  profile->SetLocaleID(0x40C);
  EXPECT_EQ(Property("localestring"), "0x40C " + Locale::FromID(0x40C)->Name());
  profile->SetLocaleID(0);
  EXPECT_TRUE(Property("localestring").ends_with(" " + Locale::Default()->Name()));
  profile->SetLocaleID(0xFFFFFF);
  EXPECT_EQ(Property("localestring"), "");
}

TEST_F(ItemPropertiesTest, LanguageCaptionRegardsCaseOfTheType) {
  EXPECT_EQ(Of(Toy<LanguageTag>("English"), "languagecaption"), "English");
  EXPECT_EQ(Of(Toy<LowerLanguageTag>("English"), "languagecaption"), "");
}

TEST_F(ItemPropertiesTest, OtherNamesAreVariablesOrProperties_OfWhichPropertiesWin) {
  project->SetCurrentBuildProfile(AddProfile());
  EXPECT_EQ(Property("skin"), "plain");
  SetVariable("Skin", "own");
  SetVariable("Unknown", "not of the template");
  EXPECT_EQ(Property("Skin"), "own");
  project->NewProjectProperty("SKIN", pptText, "property");
  EXPECT_EQ(Property("skin"), "property");
  EXPECT_EQ(Property("Unknown"), "!UNCRECOGNISED ELEMENT 'Unknown'!");
}

TEST_F(ItemPropertiesTest, EmptyPropertyHidesTheVariable_AndTheCommonProviderAnswers) {
  project->NewProjectProperty("Skin", pptText, "");
  EXPECT_EQ(Property("Skin"), "!UNCRECOGNISED ELEMENT 'Skin'!");
  EXPECT_EQ(Property("Empty"), "!UNCRECOGNISED ELEMENT 'Empty'!");
  EXPECT_EQ(Property("templatename"), "Plain");
}

}  // namespace
}  // namespace quillbook
