#include <gtest/gtest.h>

#include "quillbook/config/BuildProfile.h"
#include "quillbook/config/BuildProfiles.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/structure/GlossaryItem.h"
#include "quillbook/structure/GlossaryItems.h"
#include "quillbook/structure/OtherFiles.h"
#include "quillbook/structure/QBNodes.h"
#include "quillbook/structure/Tasks.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/TopicCategories.h"
#include "quillbook/topics/Topics.h"
#include "support/FaultyFileStore.h"
#include "support/ProjectTest.h"
#include "support/TemporaryFolder.h"

namespace quillbook {
namespace {

using Outcome = ProjectLoadResult::Outcome;

/// What stands in files that no save has written: nothing of it may stop the program.
class ProjectBadInputTest : public support::ProjectTest {
 protected:
  const ProjectLoadResult& LoadFile(const std::string& content) {
    folder.Write("a.qbp", content);
    project->LoadFromFile(folder.Stored("a.qbp"));
    return project->LastLoadResult();
  }
  void ExpectEmptyProject() {
    EXPECT_EQ(project->Topics->Count(), 0U);
    ASSERT_EQ(project->BuildProfiles->Count(), 1U);
    EXPECT_EQ(project->BuildProfiles->Item(1)->Name(), "Default");
    EXPECT_FALSE(project->Dirty());
  }

  support::TemporaryFolder folder;
};

TEST_F(ProjectBadInputTest, ADirectory_IsNoFile) {
  folder.Write("a.qbp/x", "");
  project->LoadFromFile(folder.Stored("a.qbp"));
  EXPECT_EQ(project->LastLoadResult().outcome, Outcome::FileNotFound);
  EXPECT_EQ(project->Title(), "{Could not find file '" + folder.Stored("a.qbp") + "'}");
}

TEST_F(ProjectBadInputTest, NoXml_GivesAnEmptyProject) {
  for (const auto* text : {"", "help", "\x89PNG\r\n\x1A\n", "   \n"}) {
    EXPECT_EQ(LoadFile(text).outcome, Outcome::NotXml) << text;
    ExpectEmptyProject();
    EXPECT_EQ(project->Filename->FullName(), folder.Stored("a.qbp"));
  }
}

TEST_F(ProjectBadInputTest, CutXml_GivesAnEmptyProject_AndThePlace) {
  const auto& result = LoadFile("<QBProject Title=\"A\">\n<Topic Key=\"{1}\"/>\n  <Topic Key=");
  EXPECT_EQ(result.outcome, Outcome::NotXml);
  EXPECT_EQ(result.line, 3U);
  EXPECT_GT(result.column, 2U);
  EXPECT_FALSE(result.message.empty());
  ExpectEmptyProject();
  EXPECT_EQ(project->Title(), "");
}

TEST_F(ProjectBadInputTest, ACutText_TellsThePlaceToo) {
  project->Load("<QBProject>\n<Topic");
  EXPECT_EQ(project->LastLoadResult().outcome, Outcome::NotXml);
  EXPECT_EQ(project->LastLoadResult().line, 2U);
}

TEST_F(ProjectBadInputTest, AnotherRoot_IsNoProject) {
  EXPECT_EQ(LoadFile("<html><body/></html>").outcome, Outcome::OtherRoot);
  EXPECT_EQ(project->LastLoadResult().message, "the root element is 'html', not 'QBProject'");
  ExpectEmptyProject();
}

TEST_F(ProjectBadInputTest, EncodingsOfOlderMachines_AreRead) {
  const std::string text = "<QBProject Title=\"Grüße\"/>";
  EXPECT_TRUE(LoadFile("\xEF\xBB\xBF" + text).Ok());
  EXPECT_EQ(project->Title(), "Grüße");
  std::string utf16 = "\xFF\xFE";
  for (const char16_t unit : std::u16string(u"<QBProject Title=\"Grüße 😀\"/>")) {
    utf16 += static_cast<char>(unit & 0xFF);
    utf16 += static_cast<char>(unit >> 8);
  }
  EXPECT_TRUE(LoadFile(utf16).Ok());
  EXPECT_EQ(project->Title(), "Grüße 😀");
  EXPECT_TRUE(LoadFile("<QBProject Title=\"Gr\xFC\xDF"
                       "e\"/>")
                  .Ok());
  EXPECT_EQ(project->Title(), "Grüße");
}

TEST_F(ProjectBadInputTest, AnUnreadableFile_IsReported_AndChangesNothing) {
  folder.Write("a.qbp", "<QBProject Title=\"A\"/>");
  project->SetTitle("before");
  const auto disk = std::make_shared<support::FaultyFileStore>();
  disk->reading = FailureNumber::PermissionDenied;
  const PlatformOverride<FileStore> locked{std::shared_ptr<FileStore>(disk)};
  project->LoadFromFile(folder.Stored("a.qbp"));
  EXPECT_EQ(failures.Take(), Failures({"QBProject.InternalLoadFromFile 70"}));
  EXPECT_EQ(project->Title(), "before");
  EXPECT_EQ(project->LastLoadResult().outcome, Outcome::Unreadable);
  EXPECT_TRUE(project->LastLoadResult().message.starts_with("Permission denied"));
  EXPECT_EQ(project->Filename->FullName(), "");
}

TEST_F(ProjectBadInputTest, RecordsWithoutTheirAttributes_AreReported_AndTheRestIsRead) {
  EXPECT_TRUE(LoadFile("<QBProject><cat/><file/><Topic/><GlossaryItems><glossaryitem/></GlossaryItems>"
                       "<Nodes><n/></Nodes><Tasks><Task/></Tasks><BuildProfiles><BuildProfile/></BuildProfiles>"
                       "<ProjectProperties><ProjectProperty/></ProjectProperties><Topic Key=\"{1}\"/></QBProject>")
                  .Ok());
  EXPECT_FALSE(failures.Take().empty());
  EXPECT_EQ(project->Topics->Count(), 2U);
  EXPECT_FALSE(project->Dirty());
}

TEST_F(ProjectBadInputTest, WrongNumbersAndDatesInRecords_AreReported_AndTheRestIsRead) {
  EXPECT_TRUE(LoadFile(R"(<QBProject><Topic Key="{1}" CreatedOn="soon" ModifiedOn="99-99-9999 99:99"/><Nodes>)"
                       R"(<n key="{n}" nt="many" ct="" c="" i="x" cfn="" tid="" url=""/></Nodes></QBProject>)")
                  .Ok());
  EXPECT_FALSE(failures.Take().empty());
  EXPECT_GT(project->Topics->Item(1)->CreatedOn(), Date(40000));
}

TEST_F(ProjectBadInputTest, DuplicateKeys_KeepTheFirst) {
  EXPECT_TRUE(LoadFile(R"(<QBProject><cat Name="a" Key="{c}"/><cat Name="b" Key="{C}"/><Topic Key="{1}"/>)"
                       R"(<Topic Key="{1}"/><GlossaryItems><glossaryitem Key="{g}" Term="a"/>)"
                       R"(<glossaryitem Key="{g}" Term="b"/></GlossaryItems></QBProject>)")
                  .Ok());
  EXPECT_FALSE(failures.Take().empty());
  EXPECT_EQ(project->TopicCategories->Count(), 1U);
  EXPECT_EQ(project->Topics->Count(), 1U);
  EXPECT_EQ(project->GlossaryItems()->Item(1)->Term(), "a");
}

TEST_F(ProjectBadInputTest, ARepeatedValueName_EndsTheLoad_AndTheProjectStaysQuiet) {
  const auto& result = LoadFile(R"(<QBProject><VariableValue Name="A">1</VariableValue>)"
                                R"(<VariableValue Name="a">2</VariableValue><file FileName="x"/></QBProject>)");
  EXPECT_EQ(result.outcome, Outcome::Failed);
  EXPECT_FALSE(result.message.empty());
  EXPECT_EQ(failures.Take(), Failures({"QBProject.LoadXMLDocument 457"}));
  EXPECT_EQ(project->VariableValues->Count(), 1U) << "as far as it got";
  EXPECT_EQ(project->OtherFiles->Count(), 0U);
  project->SetTitle("x");
  EXPECT_FALSE(project->Dirty()) << "dirty events stay off until the next load";
  EXPECT_TRUE(LoadFile("<QBProject/>").Ok());
  project->SetTitle("y");
  EXPECT_TRUE(project->Dirty());
}

TEST_F(ProjectBadInputTest, NestingOfAnyDepth_IsNoDanger) {
  constexpr int depth = 100000;
  std::string nodes, elements;
  for (int i = 0; i < depth; ++i) {
    nodes += "<n key=\"" + std::to_string(i) + "\" nt=\"0\" ct=\"2\" c=\"\" i=\"-1\" cfn=\"\" tid=\"\" url=\"\">";
    elements += "<x>";
  }
  const auto close = [](int count, const std::string& tag) {
    std::string text;
    for (int i = 0; i < count; ++i) text += tag;
    return text;
  };
  (void)LoadFile("<QBProject><Nodes>" + nodes + close(depth, "</n>") + "</Nodes><Topic Key=\"{1}\"/></QBProject>");
  EXPECT_EQ(project->Topics->Count(), 1U);
  (void)project->Save();
  (void)LoadFile("<QBProject>" + elements + close(depth, "</x>") + "<Topic Key=\"{1}\"/></QBProject>");
  EXPECT_EQ(project->Topics->Count(), 1U);
  (void)failures.Take();
}

}  // namespace
}  // namespace quillbook
