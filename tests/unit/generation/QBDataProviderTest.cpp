#include "quillbook/generation/QBDataProvider.h"

#include "generation/GenerationTest.h"
#include "quillbook/config/ProjectProperties.h"
#include "quillbook/host/CommonProvider.h"

namespace quillbook {
namespace {

class QBDataProviderTest : public support::GenerationTest {
 protected:
  void SetUp() override {
    GenerationTest::SetUp();
    Scrap("_GLOSSARYREFERENCE", "<i>%%GlossaryItemReference%%=%%glossaryitemrawdefinition%%</i>");
    SetUpHost();
  }
};

TEST_F(QBDataProviderTest, FifthLevelStaysAsWritten) {
  // Escaped signs come out of an evaluation as an element for the next round.
  for (const char level : {'1', '2', '3', '4', '5'})
    project->NewProjectProperty(std::string("Level") + level, pptText,
                                std::string("/%/%Level") + static_cast<char>(level + 1) + "/%/%");
  EXPECT_EQ(provider->DataProvider_ParseForProperties("%%Level2%%"), "%%Level6%%");
  EXPECT_EQ(provider->DataProvider_ParseForProperties("%%Level1%%"), "%%Level5%%");
}

TEST_F(QBDataProviderTest, TextWithoutElementsStays) {
  EXPECT_EQ(provider->DataProvider_ParseForProperties("no elements, 100%% sure"), "no elements, 100%% sure");
}

TEST_F(QBDataProviderTest, CommonProviderIsToldOfAnItemOnlyOnce) {
  const auto a = AddTopic("a");
  const auto b = AddTopic("b");
  Select(a);
  EXPECT_EQ(provider->CommonProvider()->DataProvider_CurrentItem(), a);
  EXPECT_EQ(provider->CommonProvider()->DataProvider_CurrentRootItem(), project);
  EXPECT_EQ(provider->CommonProvider()->DataProvider_CurrentParentItem(), project);
  provider->CommonProvider()->SetDataProvider_CurrentItem(b);
  EXPECT_EQ(provider->CommonProvider()->DataProvider_CurrentItem(), b);  // not told again
  Select(a);
  EXPECT_EQ(provider->CommonProvider()->DataProvider_CurrentItem(), a);
  EXPECT_EQ(provider->CommonProvider()->MVProject(), host);
}

TEST_F(QBDataProviderTest, CloneHasItemsAndForEdit_ButNotDesignTime) {
  Select(AddTopic("a"));
  provider->ForEdit = true;
  provider->DesignTime = true;
  provider->IncludeStack = New<Collection<std::string>>();
  const auto any = provider->DataProvider_Clone();
  const auto* clone = dynamic_cast<const QBDataProvider*>(any.get());
  ASSERT_TRUE(clone);
  EXPECT_TRUE(clone->ForEdit);
  EXPECT_FALSE(clone->DesignTime);
  EXPECT_FALSE(clone->IncludeStack);
  EXPECT_EQ(clone->MVProject(), host);
  EXPECT_EQ(clone->DataProvider_CurrentItem(), provider->DataProvider_CurrentItem());
  EXPECT_EQ(clone->DataProvider_CurrentItemType(), "Topic");
  EXPECT_EQ(clone->DataProvider_CurrentParentItem(), project);
  EXPECT_EQ(clone->DataProvider_CurrentRootItem(), project);
  EXPECT_EQ(clone->DataProvider_NamespaceDef(), provider->DataProvider_NamespaceDef());
}

TEST_F(QBDataProviderTest, ListProviderHasNoItemAndNoForEdit) {
  Select(AddTopic("a"));
  provider->ForEdit = true;
  const auto other = provider->ClonedDataProvider();
  EXPECT_FALSE(other->DataProvider_CurrentItem());
  EXPECT_FALSE(other->ForEdit);
  EXPECT_EQ(other->MVProject(), host);
  EXPECT_EQ(other->DataProvider_CurrentRootItem(), project);
}

TEST_F(QBDataProviderTest, RootItemRestartsTheCounters_ProjectAsItemDoesNot) {
  project->IncrementingValues->Add(7, "n");
  Select(project, "QBProject");
  EXPECT_EQ(provider->DataProvider_CurrentRootItem(), project);
  EXPECT_EQ(project->IncrementingValues->Count(), 1U);
  provider->SetDataProvider_CurrentRootItem(project);
  EXPECT_EQ(project->IncrementingValues->Count(), 0U);
}

TEST_F(QBDataProviderTest, RootItemMustBeAProject) {
  provider->SetDataProvider_CurrentRootItem(host);
  EXPECT_EQ(failures.Take(), Failures{"QBDataProvider.DataProvider_CurrentRootItem 13"});
  EXPECT_EQ(provider->DataProvider_CurrentRootItem(), project);
}

TEST_F(QBDataProviderTest, ScrapNameOrItsDefault) {
  EXPECT_EQ(provider->LinkPreProcessScrapName("given", "x"), "given");
  EXPECT_EQ(provider->LinkPreProcessScrapName("", "x"), "!MISSING SCRAP 'x'!");
}

TEST_F(QBDataProviderTest, ParseTurnsLineBreakMarksIntoMarkup) {
  EXPECT_EQ(provider->DataProvider_ParseForProperties("a<crlf>b"), "a<crlf>b");
  EXPECT_EQ(provider->Parse("a<crlf>b<CRLF>c"), "a<br>b<CRLF>c");
  EXPECT_EQ(provider->Parse(""), "");
}

TEST_F(QBDataProviderTest, GlossaryReferencesShowCaptionAndDefinition) {
  AddTerm("API", "The interface");
  const auto topic = AddTopic("t");
  Select(topic);
  EXPECT_EQ(provider->ParseForGlossaryItems("$$api$$, $$this:Api$$"),
            "<i>api=The interface</i>, <i>this=The interface</i>");
  EXPECT_EQ(provider->ParseForGlossaryItems("$$unknown$$ $$See:unknown$$"), "unknown unknown");
}

TEST_F(QBDataProviderTest, GlossaryReferenceWithAnUnknownElementStays) {
  host->CurrentDocType()->SetTemplate({});
  AddTerm("API");
  Select(AddTopic("t"));
  EXPECT_EQ(provider->ParseForGlossaryItems("$$api$$"), "!MISSING SCRAP '_GLOSSARYREFERENCE'!");
}

TEST_F(QBDataProviderTest, GlossaryReferenceTooFarBehindFails_AndKeepsWhatWasDone) {
  EXPECT_EQ(provider->ParseForGlossaryItems("$$a$$" + std::string(32767, 'x') + "$$b$$"), "a");
  EXPECT_EQ(failures.Take(), Failures{"QBDataProvider.ParseForGlossaryItems 6"});
}

TEST_F(QBDataProviderTest, MetaDataMarksGo_WhatTheyEncloseStays) {
  EXPECT_EQ(provider->RemoveMVMetaData("a<!--MVMETADATA start x-->b<!--mvmetadata END-->c"), "abc");
  EXPECT_EQ(provider->RemoveMVMetaData("a<!-- MVMETADATA -->b"), "a<!-- MVMETADATA -->b");
}

TEST_F(QBDataProviderTest, ResetForgetsEverything) {
  Select(AddTopic("a"));
  const auto common = provider->CommonProvider();
  provider->Reset();
  EXPECT_FALSE(provider->DataProvider_CurrentItem());
  EXPECT_FALSE(provider->MVProject());
  EXPECT_FALSE(common->MVProject());
  EXPECT_FALSE(common->DataProvider_CurrentItem());
}

TEST_F(QBDataProviderTest, DumpNamesFieldsInOrder) {
  std::string names;
  provider->Fields([&](std::string_view name, const Variant&) { names.append(name).append(" "); });
  EXPECT_EQ(names,
            "ForEdit DesignTime mCurrentItem mNamespaceDef mCurrentParentItem mCurrentItemType mCurrentRootItem "
            "mMVProject mCommonProvider mCommonProviderSet IncludeStack ");
}

}  // namespace
}  // namespace quillbook
