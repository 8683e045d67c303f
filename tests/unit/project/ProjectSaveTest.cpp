#include <gtest/gtest.h>

#include <filesystem>

#include "quillbook/config/BuildProfile.h"
#include "quillbook/config/BuildProfiles.h"
#include "quillbook/config/ProjectProperty.h"
#include "quillbook/frame/LibraryVersion.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/structure/GlossaryItem.h"
#include "quillbook/structure/GlossaryItems.h"
#include "quillbook/structure/QBNodes.h"
#include "quillbook/structure/Task.h"
#include "quillbook/structure/Tasks.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/Topics.h"
#include "support/FaultyFileStore.h"
#include "support/ProjectTest.h"
#include "support/TemporaryFolder.h"
#include "unit/project/Masked.h"

namespace quillbook {
namespace {

class ProjectSaveTest : public support::ProjectTest {
 protected:
  Ref<Topic> AddTopic(std::string_view name, std::string_view body) {
    auto topic = project->NewTopic();
    topic->SetName(name);
    topic->SetTopicSectionData("BodyText", body);
    project->Topics->Add(topic, topic->Key);
    return topic;
  }
  Ref<QBProject> Reloaded() const {
    auto copy = New<QBProject>();
    copy->Load(project->Save());
    EXPECT_TRUE(copy->LastLoadResult().Ok());
    return copy;
  }
  void SaveAs(const std::string& name) {
    project->Filename->SetFullName(folder.Stored(name));
    EXPECT_TRUE(project->SaveToDisk());
  }

  support::TemporaryFolder folder;
};

// Text.

TEST_F(ProjectSaveTest, AttributesAndSections_StandInTheirOrder) {
  project->SetTitle("T");
  const auto text = MaskSaveDateTime(project->Save());
  EXPECT_EQ(text,
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<QBProject ProjectType=\"0\" Version=\"" +
                std::string(LibraryVersion()) +
                "\" SaveDateTime=\"\" MVPFileName=\"\" TemplateName=\"\" SpellLastCheckDateTime=\"" +
                Date().ToLocaleText() +
                "\" Title=\"T\" SCCActivated=\"False\" SCCProject=\"\" HelpContextIDHeaderFile=\"\" "
                "OutputDirectory=\"\" AutoGenerateIndexEntries=\"True\" AutoGenerateCategoryIndex=\"False\" "
                "BuildMVProject=\"True\" DefaultTopic=\"\" Lite=\"True\">\n"
                "\t<SpellIgnoreAllWordList/>\n\t<GlossaryItems/>\n\t<Nodes/>\n\t<Tasks/>\n\t<BuildProfiles/>\n"
                "\t<ProjectProperties/>\n</QBProject>");
}

TEST_F(ProjectSaveTest, SaveDateTime_HasItsForm) {
  const auto text = project->Save();
  const auto at = text.find("SaveDateTime=\"") + 14;
  EXPECT_EQ(text.substr(at, 19), Date::Now().Format("dd/mm/yyyy hh:nn:ss").substr(0, 10) + text.substr(at + 10, 9));
  EXPECT_EQ(text[at + 13], ':');
  EXPECT_EQ(text[at + 19], '"');
}

TEST_F(ProjectSaveTest, Save_ChangesNoDirtyState) {
  AddTopic("a", "b");
  ASSERT_TRUE(project->Dirty());
  (void)project->Save();
  EXPECT_TRUE(project->ProjectDirty());
  EXPECT_TRUE(project->TopicsDirty());
}

TEST_F(ProjectSaveTest, SaveAfterLoadAfterSave_IsByteIdentical) {
  AddTopic("a", "<p>x</p>");
  const auto item = project->NewGlossaryItem("API", "def");
  project->GlossaryItems()->Add(item, item->Key);
  const auto node = project->QBNodes->NewNode();
  node->SetCaptionText("A & B");
  node->ChildNodes->NewNode(node);
  const auto task = project->NewTask();
  task->SetPriority("2");
  project->Tasks->Add(task, task->Key());
  project->VariableValues->Add(New<VariableValue>("A", "1"), "A");
  project->NewProjectProperty("P", pptText, "v");
  project->SpellAddIgnoreAllWord("w");
  const auto profile = project->NewBuildProfile("Web");
  project->BuildProfiles->Add(profile, profile->ID());
  const auto first = Reloaded();  // loads dates and profiles into the form that a file keeps
  const auto text = MaskSaveDateTime(first->Save());
  EXPECT_EQ(MaskSaveDateTime(first->Save()), text);
  const auto second = New<QBProject>();
  second->Load(text);
  EXPECT_EQ(MaskSaveDateTime(second->Save()), text);
}

TEST_F(ProjectSaveTest, AnyText_ComesBackAsItWentIn) {
  std::string all;
  for (char c = 1; c < 32; ++c) all += c;
  const std::vector<std::string> texts = {"a\r\nb\rc\nd\te",
                                          all,
                                          " leading and trailing ",
                                          "]]>",
                                          "<![CDATA[x]]>",
                                          "&amp;&#65;<>\"'",
                                          "𝄞 astral 😀",
                                          "\xEF\xBB\xBFmark",
                                          "\n",
                                          "\t",
                                          " ",
                                          std::string(1 << 20, 'x') + "<p>&nbsp;</p>"};
  for (const auto& text : texts) {
    AddTopic(text, text);
    const auto item = project->NewGlossaryItem(text, text);
    project->GlossaryItems()->Add(item, item->Key);
  }
  project->SetTitle(all);
  const auto copy = Reloaded();
  EXPECT_EQ(copy->Title(), all);
  ASSERT_EQ(copy->Topics->Count(), texts.size());
  for (std::size_t i = 0; i < texts.size(); ++i) {
    EXPECT_EQ(copy->Topics->Item(i + 1)->Name(), texts[i]) << i;
    EXPECT_TRUE(copy->Topics->Item(i + 1)->TopicSectionData("BodyText") == texts[i]) << i;
    EXPECT_EQ(copy->GlossaryItems()->Item(i + 1)->Term(), texts[i]) << i;
    EXPECT_TRUE(copy->GlossaryItems()->Item(i + 1)->Definition() == texts[i]) << i;
  }
}

// Disk.

TEST_F(ProjectSaveTest, SaveToDisk_WritesTheText_AndClearsTheFlags) {
  AddTopic("a", "b");
  SaveAs("a.qbp");
  EXPECT_FALSE(project->Dirty());
  EXPECT_EQ(MaskSaveDateTime(folder.Read("a.qbp")), MaskSaveDateTime(project->Save()) + "\n");
  EXPECT_FALSE(folder.Has("a.bak")) << "there was nothing to keep";
}

TEST_F(ProjectSaveTest, SaveToDisk_KeepsThePreviousVersion) {
  project->SetTitle("first");
  SaveAs("a.qbp");
  const auto first = folder.Read("a.qbp");
  project->SetTitle("second");
  SaveAs("a.qbp");
  EXPECT_EQ(folder.Read("a.bak"), first);
  const auto second = folder.Read("a.qbp");
  SaveAs("a.qbp");
  EXPECT_EQ(folder.Read("a.bak"), second);
  EXPECT_FALSE(folder.Has("a.qbp.bak"));
}

TEST_F(ProjectSaveTest, SaveToDisk_OfAReadOnlyFile_SaysSo_AndChangesNothing) {
  SaveAs("a.qbp");
  const auto before = folder.Read("a.qbp");
  std::filesystem::permissions(folder.Native("a.qbp"), std::filesystem::perms::owner_read);
  project->SetTitle("unsaved");
  EXPECT_FALSE(project->SaveToDisk());
  const auto boxes = failures.TakeBoxes();
  ASSERT_EQ(boxes.size(), 1U);
  EXPECT_EQ(boxes[0].Prompt, "Could not save to '" + folder.Stored("a.qbp") +
                                 "'. Please check that this file is accessible and is not read-only.");
  EXPECT_EQ(boxes[0].Buttons, 48);
  EXPECT_EQ(boxes[0].Title, "Could not save");
  EXPECT_TRUE(project->ProjectDirty());
  EXPECT_EQ(folder.Read("a.qbp"), before);
  EXPECT_EQ(folder.Read("a.bak"), before) << "the copy is made all the same";
}

TEST_F(ProjectSaveTest, SaveToDisk_WhereNothingCanBeWritten_BecomesABuildMessage_WhenSilent) {
  std::string message;
  const auto connection = project->Events.BuildMessage.Connect(
      [&](std::string_view text, BuildMessageLevel level) { message = std::string(text) + std::to_string(level); });
  project->Silent = true;
  project->Filename->SetFullName(folder.Stored("no/such/folder/a.qbp"));
  EXPECT_FALSE(project->SaveToDisk());
  EXPECT_EQ(message, "Could not save to '" + folder.Stored("no\\such\\folder\\a.qbp") +
                         "'. Please check that this file is accessible and is not read-only.1");
}

TEST_F(ProjectSaveTest, SaveToDisk_NeverGivesUpAProjectNamedBak) {
  SaveAs("a.bak");
  project->SetTitle("second");
  SaveAs("a.bak");
  EXPECT_NE(folder.Read("a.bak").find("second"), std::string::npos);
}

TEST_F(ProjectSaveTest, SaveToDisk_OnAFullDisk_FailsQuietly_AndLeavesTheFile) {
  SaveAs("a.qbp");
  const auto before = folder.Read("a.qbp");
  project->SetTitle("unsaved");
  const auto disk = std::make_shared<support::FaultyFileStore>();
  disk->space = 100;
  const PlatformOverride<FileStore> small{std::shared_ptr<FileStore>(disk)};
  EXPECT_FALSE(project->SaveToDisk());
  EXPECT_TRUE(project->ProjectDirty());
  EXPECT_EQ(folder.Read("a.qbp"), before);
}

}  // namespace
}  // namespace quillbook
