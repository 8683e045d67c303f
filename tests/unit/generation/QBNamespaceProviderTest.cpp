#include "quillbook/generation/QBNamespaceProvider.h"

#include "generation/GenerationTest.h"
#include "quillbook/host/Keywords.h"
#include "quillbook/topics/TopicLinkCategory.h"

namespace quillbook {
namespace {

class QBNamespaceProviderTest : public support::GenerationTest {
 protected:
  void SetUp() override {
    GenerationTest::SetUp();
    SetUpHost();
  }

  /// A member of each item, with "," between.
  static std::string Members(const std::vector<Ref<Object>>& list, std::string_view member) {
    std::string text;
    for (const auto& item : list) text.append(text.empty() ? "" : ",").append(item->Member(member).ToText());
    return text;
  }
  std::string Categories(const Ref<Topic>& topic, std::string_view filter = {}) {
    return Members(ItemsOf(":linkcategory", topic, filter), "Name");
  }
};

TEST_F(QBNamespaceProviderTest, OffersTheProjectAsProjectAndAsTopicSet) {
  EXPECT_EQ(ItemsOf(":qbproject"), std::vector<Ref<Object>>{project});
  EXPECT_EQ(ItemsOf(":TopicSet"), std::vector<Ref<Object>>{project});
  EXPECT_EQ(items->INamespaceProvider_Name(), "mv.quillbooklite");
}

TEST_F(QBNamespaceProviderTest, TopicsComeInProjectOrder_WithoutExcludedOnes) {
  AddTopic("b");
  AddTopic("x")->SetIncludeInHelpFile(false);
  AddTopic("a");
  EXPECT_EQ(Members(ItemsOf(":topic", project), "Name"), "b,a");
  EXPECT_EQ(Members(ItemsOf(":topic"), "Name"), "b,a");
}

TEST_F(QBNamespaceProviderTest, TopicsOfAProjectGivenAsParentAreItsOwn) {
  const auto other = New<QBProject>();
  auto topic = other->NewTopic();
  topic->SetName("other");
  other->Topics->Add(topic, topic->Key);
  AddTopic("own");
  EXPECT_EQ(Members(ItemsOf(":topic", other), "Name"), "other");
  EXPECT_EQ(Members(ItemsOf(":topic", topic), "Name"), "own");
}

TEST_F(QBNamespaceProviderTest, UnknownKindOrMissingDefinitionHasNoItems) {
  EXPECT_TRUE(ItemsOf(":nothing").empty());
  const auto none = items->INamespaceProvider_GetItems({}, project, "");
  ASSERT_TRUE(none);
  EXPECT_TRUE(CollectionServices::Items(none).empty());
  EXPECT_TRUE(
      CollectionServices::Items(items->INamespaceProvider_GetItems(New<NamespaceDef>("other:topic"), project, ""))
          .empty());
}

TEST_F(QBNamespaceProviderTest, CategoriesComeInOrderOfFirstAppearance) {
  const auto topic = AddTopic("a");
  topic->NewTopicLink(rttURL, "See", "1", "u");
  topic->NewTopicLink(rttURL, "", "2", "u");
  topic->NewTopicLink(rttURL, "Also", "3", "u");
  topic->NewTopicLink(rttURL, "SEE", "4", "u");
  EXPECT_EQ(Categories(topic), "See,,Also");
  const auto list = ItemsOf(":linkcategory", topic);
  ASSERT_EQ(list.size(), 3U);
  const auto* category = dynamic_cast<const TopicLinkCategory*>(list[0].get());
  ASSERT_TRUE(category);
  EXPECT_EQ(category->Topic, topic);
  EXPECT_EQ(Members(ItemsOf(":link", list[0]), "Title"), "1,4");
}

TEST_F(QBNamespaceProviderTest, FilterOfCategoriesLooksAtTheName) {
  const auto topic = AddTopic("a");
  topic->NewTopicLink(rttURL, "See", "1", "u");
  topic->NewTopicLink(rttURL, "", "2", "u");
  topic->NewTopicLink(rttURL, "", "3", "u");
  EXPECT_EQ(Categories(topic, "type=NotBlank"), "See");
  EXPECT_EQ(Categories(topic, "type=all"), "");
  EXPECT_TRUE(ItemsOf(":linkcategory", topic, "type=all").empty());
  const auto blank = ItemsOf(":linkcategory", topic, "type=blank");
  ASSERT_EQ(blank.size(), 1U);
  EXPECT_EQ(blank[0]->Member("Name").ToText(), "");
  EXPECT_EQ(Categories(topic, "blank"), "See,");  // a filter without "=" has no effect
}

TEST_F(QBNamespaceProviderTest, LinksWithoutCategoryGiveNoCategory_WhenNotBlankIsAskedFor) {
  const auto topic = AddTopic("a");
  topic->NewTopicLink(rttURL, "", "1", "u");
  EXPECT_TRUE(ItemsOf(":linkcategory", topic, "type=notblank").empty());
  EXPECT_EQ(ItemsOf(":linkcategory", topic, "type=blank").size(), 1U);
}

TEST_F(QBNamespaceProviderTest, NoCategoryForLinksThatLeadOnlyToExcludedTopics) {
  const auto topic = AddTopic("a");
  const auto hidden = AddTopic("hidden");
  hidden->SetIncludeInHelpFile(false);
  topic->NewTopicLink(rttTopic, "Hidden", "", "", hidden);
  topic->NewTopicLink(rttTopic, "Gone", "", "");
  topic->NewTopicLink(rttTopic, "Shown", "", "", topic);
  EXPECT_EQ(Categories(topic), "Shown");
}

TEST_F(QBNamespaceProviderTest, ParentOfTheWrongKindHasNoItems) {
  const auto topic = AddTopic("a");
  topic->NewTopicLink(rttURL, "See", "1", "u");
  EXPECT_TRUE(ItemsOf(":link", topic).empty());
  EXPECT_TRUE(ItemsOf(":linkcategory", project).empty());
  EXPECT_TRUE(ItemsOf(":keyword", topic).empty());
  EXPECT_TRUE(ItemsOf(":keywordjump", project).empty());
  AddTerm("A");
  EXPECT_TRUE(ItemsOf(":glossaryitem").empty());
  EXPECT_TRUE(ItemsOf(":glossaryitem", host).empty());
}

TEST_F(QBNamespaceProviderTest, WholeAlphabetIsOfferedForAll) {
  const auto letters = ItemsOf(":glossaryletter", {}, "type=all");
  EXPECT_EQ(Members(letters, "Name"), "A,B,C,D,E,F,G,H,I,J,K,L,M,N,O,P,Q,R,S,T,U,V,W,X,Y,Z");
  EXPECT_EQ(Members(letters, "Value"), "0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0");
  EXPECT_TRUE(ItemsOf(":glossaryletter").empty());
}

TEST_F(QBNamespaceProviderTest, LettersCountTheTermsThatBeginWithThem) {
  AddTerm("beta");
  AddTerm("  alpha");
  AddTerm("Bar");
  AddTerm("2nd");
  AddTerm("");
  AddTerm("\u00e9t\u00e9");
  const auto letters = ItemsOf(":glossaryletter");
  EXPECT_EQ(Members(letters, "Name"), "2,A,B,\u00c9");
  EXPECT_EQ(Members(letters, "Value"), "1,1,2,1");
  EXPECT_EQ(ItemsOf(":glossaryletter", {}, "type=all").size(), 28U);
}

TEST_F(QBNamespaceProviderTest, LetterWhoseCapitalIsTwoStaysAsItIs) {
  AddTerm("\u00dfharp");
  EXPECT_EQ(Members(ItemsOf(":glossaryletter"), "Name"), "\u00df");
}

TEST_F(QBNamespaceProviderTest, TermOfBlanksHasTheEmptyLetter) {
  AddTerm("   ");
  const auto letters = ItemsOf(":glossaryletter");
  ASSERT_EQ(letters.size(), 1U);
  EXPECT_EQ(letters[0]->Member("Name").ToText(), "");
  EXPECT_EQ(letters[0]->Member("Value").ToText(), "1");
  EXPECT_EQ(ItemsOf(":glossaryitem", letters[0]).size(), 1U);
}

TEST_F(QBNamespaceProviderTest, TermsOfALetterAreSorted) {
  AddTerm("beta");
  AddTerm("Bar");
  AddTerm("alpha");
  const auto letters = ItemsOf(":glossaryletter");
  EXPECT_EQ(Members(ItemsOf(":glossaryitem", letters[1]), "Term"), "Bar,beta");
}

TEST_F(QBNamespaceProviderTest, KeywordsOfferChildrenAndJumps) {
  const auto keywords = New<Keywords>();
  keywords->AddSubKeyword("a,b", "1.html");
  keywords->Add("a", "2.html");
  const auto& top = keywords->Items()->Item(1);
  const auto children = ItemsOf(":keyword", top);
  EXPECT_EQ(Members(children, "Name"), "b");
  EXPECT_EQ(Members(ItemsOf(":keywordjump", top), "Target"), "2.html");
  EXPECT_TRUE(ItemsOf(":keyword", children[0]).empty());
  EXPECT_EQ(Members(ItemsOf(":keywordjump", children[0]), "Target"), "1.html");
}

TEST_F(QBNamespaceProviderTest, FindsProjectAndTopicsByName) {
  const auto topic = AddTopic("a");
  EXPECT_EQ(items->INamespaceProvider_GetObjectFromQualifiedName(project->Filename->FullName()), project);
  EXPECT_EQ(items->INamespaceProvider_GetObjectFromQualifiedName(topic->Key), topic);
  EXPECT_FALSE(items->INamespaceProvider_GetObjectFromQualifiedName("unknown"));
}

TEST_F(QBNamespaceProviderTest, MonikersNameNothing) {
  EXPECT_FALSE(items->INamespaceProvider_GetRootItem("m", "n"));
  EXPECT_FALSE(items->INamespaceProvider_GetNamespaceDefFromObject(project, project));
  EXPECT_TRUE(items->INamespaceProvider_BrowseForMoniker("m").IsEmpty());
  EXPECT_FALSE(items->INamespaceProvider_VerifyMoniker("m", true));
  EXPECT_TRUE(items->INamespaceProvider_GetMonikerFromRootItem(project).IsEmpty());
  EXPECT_TRUE(items->INamespaceProvider_MakeMonikerRelative("m", "b").IsEmpty());
  EXPECT_TRUE(items->INamespaceProvider_MakeMonikerAbsolute("m", "b").IsEmpty());
  EXPECT_EQ(items->INamespaceProvider_GetModuleItems()->Count(), 0U);
}

TEST_F(QBNamespaceProviderTest, RootItemSetsProgressAndDefaultPage) {
  std::string progress;
  const auto connection = host->ProgressChanged.Connect([&](std::string_view stage, std::string_view message) {
    progress.append(stage).append("/").append(message).append(" ");
  });
  const auto topic = AddTopic("Start: here");
  const auto profile = AddProfile();
  project->SetCurrentBuildProfile(profile);
  host->DefaultPage = "old";
  items->INamespaceProvider_BeforeProcessRootItem(project);
  EXPECT_EQ(progress, "writing/ writing/Generating content ");
  EXPECT_EQ(host->DefaultPage, "");
  profile->SetDefaultTopic(topic);
  items->INamespaceProvider_AfterProcessRootItem(project);
  EXPECT_EQ(host->DefaultPage, "Start- here.html");
}

TEST_F(QBNamespaceProviderTest, RootItemOtherThanTheProjectKeepsTheDefaultPageAtFirst) {
  host->DefaultPage = "old";
  items->INamespaceProvider_BeforeProcessRootItem(host);
  EXPECT_EQ(host->DefaultPage, "old");
  items->INamespaceProvider_AfterProcessRootItem(host);
  EXPECT_EQ(host->DefaultPage, "");
}

TEST_F(QBNamespaceProviderTest, EveryItemNamesTheHelpProjectFile) {
  items->INamespaceProvider_AfterProcessItem(project, project);
  EXPECT_EQ(host->HelpProjectFile, folder.Stored("out/demo.hhp"));
  host->HelpVersion = "2";
  items->INamespaceProvider_AfterProcessItem(project, project);
  EXPECT_EQ(host->HelpProjectFile, folder.Stored("out/demo.hxc"));
  host->HelpVersion = "two";
  items->INamespaceProvider_AfterProcessItem(project, project);
  EXPECT_EQ(failures.Take(), Failures{"QBNamespaceProvider.INamespaceProvider_AfterProcessItem 13"});
}

TEST_F(QBNamespaceProviderTest, DumpNamesFieldsInOrder) {
  std::string names;
  items->Fields([&](std::string_view name, const Variant&) { names.append(name).append(" "); });
  EXPECT_EQ(names, "mFiles mMVProject DDP mTopicMap mTopicMapInitialised mTopicMapCount HH2 ");
}

}  // namespace
}  // namespace quillbook
