#include "quillbook/host/CommonProvider.h"

#include <gtest/gtest.h>

#include "Toy.h"
#include "quillbook/host/ParserServices.h"
#include "quillbook/host/TemplateElement.h"

namespace quillbook {
namespace {

class CommonProviderTest : public testing::Test {
 protected:
  std::string Provide(std::string_view type) {
    Ref<FileSystemObject> noFile;
    return provider->DataProvider_ProvideData(New<TemplateElement>(type), noFile);
  }

  Ref<MVProject> project = New<MVProject>();
  Ref<CommonProvider> provider = New<CommonProvider>();
};

TEST_F(CommonProviderTest, UnknownName_IsEmptyAsElementAndMarkedAsProperty) {
  EXPECT_EQ(Provide("nosuchname"), "");
  EXPECT_EQ(provider->DataProvider_GetProperty("NoSuchName"), "!UNCRECOGNISED ELEMENT 'NoSuchName'!");
}

TEST_F(CommonProviderTest, KnownNameWithoutValue_IsEmptyBothWays) {
  EXPECT_EQ(Provide("defaultpage"), "");
  EXPECT_EQ(provider->DataProvider_GetProperty("DefaultPage"), "");
}

TEST_F(CommonProviderTest, ReplaceInQuotes_AsksForNothingToBePutOut) {
  EXPECT_EQ(Provide("replaceinquotes"), CommonProvider::Discard);
}

TEST_F(CommonProviderTest, RootPath_LeadsUpFromThePage) {
  provider->SetMVProject(project);
  EXPECT_EQ(Provide("rootpath"), "");
  project->SetCurrentPage("a/b/c.html");
  EXPECT_EQ(Provide("rootpath"), "../../");
  EXPECT_EQ(Provide("OutputFileName"), "c.html");
}

TEST_F(CommonProviderTest, ItemTypeName_FallsBackToTheItemsOwn) {
  const auto item = New<toy::Item>("x");
  provider->DataProvider_SetCurrentItem(New<NamespaceDef>("toy:page"), item, "", nullptr);
  EXPECT_EQ(Provide("itemtypename"), "ToyItem");
  EXPECT_EQ(Provide("itemkind"), "toy:page");
  provider->SetDataProvider_CurrentItemType("Page");
  EXPECT_EQ(Provide("itemtypename"), "Page");
}

TEST_F(CommonProviderTest, Project_IsHeldWeaklyAndForgottenByReset) {
  provider->DataProvider_Initialise(project);
  provider->DataProvider_SetCurrentItem(nullptr, New<toy::Item>("x"), "ToyItem", nullptr);
  EXPECT_EQ(provider->MVProject(), project);
  provider->Reset();
  EXPECT_FALSE(provider->MVProject());
  EXPECT_FALSE(provider->DataProvider_CurrentItem());
  provider->DataProvider_Initialise(project);
  project = nullptr;
  EXPECT_FALSE(provider->MVProject());
  EXPECT_EQ(Provide("helpversion"), "");
}

TEST_F(CommonProviderTest, Clone_KnowsProjectAndItem) {
  project->HelpVersion = "2";
  provider->SetMVProject(project);
  provider->DataProvider_SetCurrentItem(nullptr, nullptr, "Page", nullptr);
  const auto clone = provider->DataProvider_Clone();
  EXPECT_EQ(clone->DataProvider_ParseForProperties("%%helpversion%% %%itemtypename%%"), "2 Page");
}

}  // namespace
}  // namespace quillbook
