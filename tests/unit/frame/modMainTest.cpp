#include "quillbook/frame/modMain.h"

#include <gtest/gtest.h>

#include <memory>
#include <thread>

#include "quillbook/frame/FailureReporter.h"
#include "quillbook/frame/Root.h"
#include "quillbook/host/MVProject.h"
#include "quillbook/host/TemplateStore.h"
#include "quillbook/platform/Platform.h"
#include "quillbook/project/QBProject.h"
#include "quillbook/topics/TopicSectionDefs.h"
#include "quillbook/topics/TopicStatuses.h"
#include "support/FailureLog.h"
#include "support/MemoryRegistryStore.h"
#include "support/TemporaryFolder.h"

namespace quillbook {
namespace {

constexpr auto kKey = "Software\\Corvane\\Quillbook2";

/// An installation in a temporary folder; nothing of the machine is seen.
class modMainTest : public testing::Test {
 protected:
  void TearDown() override {
    EXPECT_EQ(failures.Take(), std::vector<std::string>());
    { const auto drop = New<Root>(); }  // what is cached belongs to this installation
  }
  void Install() { store->SetValue(RegistryHive::LocalMachine, kKey, "LiteInstallDir", folder.Stored("")); }

  support::TemporaryFolder folder;
  support::FailureLog failures;
  std::shared_ptr<support::MemoryRegistryStore> store = std::make_shared<support::MemoryRegistryStore>();
  PlatformOverride<RegistryStore> registry{store};
};

TEST_F(modMainTest, TopicSectionDefs_AreNewEachTime_WithoutARoot) {
  const auto first = modMain::TopicSectionDefs();
  EXPECT_EQ(first->Count(), 1U);
  EXPECT_NE(modMain::TopicSectionDefs(), first);
}

TEST_F(modMainTest, TopicSectionDefs_AreShared_WhileARootLives) {
  auto root = New<Root>();
  const auto first = modMain::TopicSectionDefs();
  EXPECT_EQ(modMain::TopicSectionDefs(), first);
  EXPECT_EQ(root->TopicSectionDefs(), first);
  root = nullptr;
  EXPECT_NE(modMain::TopicSectionDefs(), first);
}

TEST_F(modMainTest, TopicStatuses_AreEmpty_WithoutTheirFile) {
  Install();
  EXPECT_EQ(modMain::TopicStatuses()->Count(), 0U);
}

TEST_F(modMainTest, TopicStatuses_ComeFromTheConfiguration) {
  Install();
  folder.Write("configuration/statuscodes.xml",
               R"(<s><a Name="Draft" Caption="In draft" Icon="d.ico"/><b Name="Done" Caption="" Icon=""/></s>)");
  const auto statuses = modMain::TopicStatuses();
  ASSERT_EQ(statuses->Count(), 2U);
  EXPECT_EQ(statuses->Item(1)->Name, "Draft");
  EXPECT_EQ(statuses->Item("done")->Name, "Done");
}

TEST_F(modMainTest, TopicStatuses_StayCachedWithoutARoot_UntilTheLastRootGoes) {
  const auto first = modMain::TopicStatuses();
  EXPECT_EQ(modMain::TopicStatuses(), first);
  {
    const auto outer = New<Root>();
    { const auto inner = New<Root>(); }
    EXPECT_EQ(modMain::TopicStatuses(), first);
  }
  EXPECT_NE(modMain::TopicStatuses(), first);
}

TEST_F(modMainTest, ConfigPath_FollowsTheInstallation) {
  EXPECT_EQ(modMain::ConfigPath(), "\\Configuration\\");
  store->SetValue(RegistryHive::LocalMachine, kKey, "LiteInstallDir", "c:\\qb");
  EXPECT_EQ(modMain::ConfigPath(), "c:\\qb\\Configuration\\");
  store->SetValue(RegistryHive::LocalMachine, kKey, "LiteInstallDir", "c:\\qb\\");
  EXPECT_EQ(modMain::ConfigPath(), "c:\\qb\\Configuration\\");
}

TEST_F(modMainTest, GetAppValue_GivesTheDefault_ForAMissingOrEmptyValue) {
  EXPECT_EQ(modMain::GetAppValue("Name", "default"), "default");
  store->SetValue(RegistryHive::CurrentUser, kKey, "Name", "");
  EXPECT_EQ(modMain::GetAppValue("Name", "default"), "default");
  store->SetValue(RegistryHive::CurrentUser, kKey, "Name", "value");
  EXPECT_EQ(modMain::GetAppValue("Name", "default"), "value");
}

TEST_F(modMainTest, SetAppValue_WritesUnderTheSubKey) {
  modMain::SetAppValue("Name", "value", "Sub");
  EXPECT_EQ(store->GetValue(RegistryHive::CurrentUser, std::string(kKey) + "\\Sub", "Name"), "value");
  EXPECT_EQ(modMain::GetAppValue("Name", "", "Sub"), "value");
  EXPECT_EQ(modMain::GetAppValue("Name", ""), "");
}

TEST_F(modMainTest, IsMavenscriptInstalled_AsksOnlyOnce) {
  // In an apartment of its own, since the answer stays for the life of one.
  std::thread([] {
    const auto other = std::make_shared<support::MemoryRegistryStore>();
    const PlatformOverride<RegistryStore> own(std::shared_ptr<RegistryStore>{other});
    other->SetValue(RegistryHive::LocalMachine, "Software\\Corvane\\Mavenscript4", "MVFullInstall", "True");
    EXPECT_TRUE(modMain::IsMavenscriptInstalled());
    other->SetValue(RegistryHive::LocalMachine, "Software\\Corvane\\Mavenscript4", "MVFullInstall", "False");
    EXPECT_TRUE(modMain::IsMavenscriptInstalled());
  }).join();
}

TEST_F(modMainTest, GetQBProject_FindsTheProjectOfAHostProject) {
  const auto host = modMain::NewMVProject();
  EXPECT_EQ(modMain::GetQBProject(host), nullptr);
  EXPECT_EQ(modMain::GetQBProject({}), nullptr);
  const auto project = New<QBProject>();
  host->RootItems()->Add(project, "mv.quillbooklite");
  EXPECT_EQ(modMain::GetQBProject(host), project);
}

TEST_F(modMainTest, NewMVProject_CopiesSupportFiles) {
  EXPECT_TRUE(modMain::NewMVProject()->CopySupportFiles);
}

class PageTemplatesTest : public modMainTest {
 protected:
  void SetUp() override {
    Install();
    Add("Web", "Px", {"mv.quillbooklite"});
    Add("Print", "p", {"mv.net", "MV.QuillbookLite"});
    Add("Other", "Px", {"mv.net"});
  }
  void TearDown() override {
    TemplateStore::OfApartment()->Forget();
    modMainTest::TearDown();
  }
  void Add(const std::string& name, const std::string& supports, const std::vector<std::string>& namespaces) {
    std::string text = "<template name=\"" + name + "\" supports=\"" + supports + "\">\n";
    for (const auto& each : namespaces) text += "<namespace name=\"" + each + "\"/>\n";
    folder.Write("configuration/Templates/" + name + "/template.xml", text + "</template>\n");
  }
  static std::vector<std::string> Names(const Ref<PageTemplates>& templates) {
    std::vector<std::string> names;
    for (const auto& each : *templates) names.push_back(each->Name());
    return names;
  }
  using Strings = std::vector<std::string>;
};

TEST_F(PageTemplatesTest, AreThoseOfTheNamespaceWithTheMark) {
  EXPECT_EQ(Names(modMain::QuillbookPageTemplates("Px")), Strings({"Web"}));
  EXPECT_EQ(Names(modMain::QuillbookPageTemplates("p")), Strings({"Print"})) << "marks regard case";
  EXPECT_EQ(Names(modMain::QuillbookPageTemplates("")), Strings({"Print", "Web"}));
  const auto root = New<Root>();
  EXPECT_EQ(Names(root->OnLineTemplates()), Strings({"Web"}));
  EXPECT_EQ(Names(root->PrintTemplates(true)), Strings({"Print"}));
  EXPECT_EQ(Names(root->AllTemplates()), Strings({"Print", "Web"}));
}

TEST_F(modMainTest, GlobalsAreDumpedInTheirOrder) {
  const auto root = New<Root>();
  const auto dump = fltnDumpGlobals();
  std::size_t position = 0;
  for (const auto* name :
       {"<RootIncrement>1<", "<mCacheCount>", "<mCacheTopics>", "<mClipboardDataFormat>", "<mClipboardTypeFormat>",
        "<LoadedNodes>{Nothing}", "<mBuildFlagColors>", "<mBuildFlagColorNames>", "<mSpellImagePath>", "<mData>",
        "<mSData>", "<mTypeID>", "<mReloadFlag>", "<mDOMFactory>{Nothing}", "<fltnProjectId>"}) {
    const auto at = dump.find(name, position);
    ASSERT_NE(at, std::string::npos) << name << " in\n" << dump;
    position = at;
  }
}

}  // namespace
}  // namespace quillbook
