#include "quillbook/generation/QBMVPlugIn.h"

#include "generation/GenerationTest.h"

namespace quillbook {
namespace {

class QBMVPlugInTest : public support::GenerationTest {
 protected:
  Ref<QBMVPlugIn> PlugInOf(const Ref<MVProject>& hostProject) {
    auto plugIn = New<QBMVPlugIn>();
    plugIn->IMVProjectPlugIn_Initialise(hostProject);
    return plugIn;
  }
};

TEST_F(QBMVPlugInTest, CountsOneBinaryRootItem_WhenThereIsAProject) {
  SetUpHost();
  const auto plugIn = PlugInOf(host);
  EXPECT_EQ(plugIn->IMVProjectPlugIn_RootItemTypeCount("Binary"), 1);
  EXPECT_EQ(plugIn->IMVProjectPlugIn_RootItemTypeCount("source"), 0);
  EXPECT_TRUE(plugIn->IMVProjectPlugIn_SomethingToDocument());
  EXPECT_EQ(plugIn->QBProject(), project);
}

TEST_F(QBMVPlugInTest, HasNothingToDocument_OnAHostProjectThatNoBuildSetUp) {
  const auto bare = modMain::NewMVProject();
  const auto plugIn = PlugInOf(bare);
  EXPECT_EQ(plugIn->IMVProjectPlugIn_RootItemTypeCount("binary"), 0);
  EXPECT_FALSE(plugIn->IMVProjectPlugIn_SomethingToDocument());
}

TEST_F(QBMVPlugInTest, ResetOfOneThatWasNeverInitialisedDoesNothing) {
  New<QBMVPlugIn>()->IMVProjectPlugIn_Reset();
  EXPECT_EQ(failures.Take(), Failures());
}

TEST_F(QBMVPlugInTest, TerminateResetsTheProviders) {
  SetUpHost();
  Select(AddTopic("A"));
  PlugInOf(host)->IMVProjectPlugIn_Terminate();
  EXPECT_FALSE(provider->MVProject());
  EXPECT_FALSE(provider->DataProvider_CurrentItem());
  EXPECT_FALSE(provider->DataProvider_CurrentParentItem());
  EXPECT_FALSE(provider->DataProvider_CurrentRootItem());
  EXPECT_FALSE(provider->DataProvider_NamespaceDef());
  EXPECT_FALSE(items->QBProject());
}

TEST_F(QBMVPlugInTest, AnswersForTheNamespaceOnly) {
  SetUpHost();
  const auto plugIn = PlugInOf(host);
  EXPECT_EQ(plugIn->IMVProjectPlugIn_ValidatePage("any"), "True");
  EXPECT_EQ(plugIn->IMVProjectPlugIn_RootItems("binary")->Count(), 0U);
  EXPECT_EQ(plugIn->IMVProjectPlugIn_NamespaceDefs(), host->CurrentTemplate()->NamespaceDefs());
  EXPECT_TRUE(plugIn->IMVProjectPlugIn_ModuleItems().IsEmpty());
  EXPECT_TRUE(plugIn->IMVProjectPlugIn_IsItemSameAsMoniker(project, "x").IsEmpty());
  EXPECT_FALSE(plugIn->IMVProjectPlugIn_GetObjectFromQualifiedName("x"));
  EXPECT_FALSE(plugIn->IMVProjectPlugIn_CreateCommentFileForMoniker("x", "y"));
  EXPECT_EQ(plugIn->IMVProjectPlugIn_DefaultOutputFolder(), "");
  EXPECT_EQ(plugIn->IMVProjectPlugIn_DefaultOutputFileName(), "");
  EXPECT_EQ(plugIn->IMVProjectPlugIn_RootItemCountForSelecter("x"), 0);
  EXPECT_FALSE(plugIn->IMVProjectPlugIn_SupportsVBSourceProjects());
}

TEST_F(QBMVPlugInTest, HostProjectsGetPlugInAndProvider) {
  const auto bare = modMain::NewMVProject();
  const auto& type = bare->DocTypes()->Item("MV.QuillbookLite");
  EXPECT_EQ(type->PlugIn()->TypeName(), "QBMVPlugIn");
  EXPECT_EQ(type->NamespaceProvider()->TypeName(), "QBNamespaceProvider");
  bare->Reset();
}

}  // namespace
}  // namespace quillbook
