// A project whose topics, contents, glossary and tasks have files of their own.
#include <sys/stat.h>

#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/structure/GlossaryItems.h"
#include "quillbook/structure/OtherFile.h"
#include "quillbook/structure/QBNodes.h"
#include "quillbook/structure/Tasks.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/Topics.h"
#include "support/FaultyFileStore.h"
#include "support/ProjectTest.h"
#include "support/TemporaryFolder.h"

namespace quillbook {
namespace {

class SeparateFilesTest : public support::ProjectTest {
 protected:
  void SetUp() override {
    ProjectTest::SetUp();
    project->Filename->SetFullName(folder.Stored("p.qbp"));
    project->SetStorageForm(ProjectTypeSeparateFiles);
    topic = project->NewTopic();
    topic->SetName("topic");
    project->Topics->Add(topic, topic->Key);
    const auto item = project->NewGlossaryItem("term", "definition");
    project->GlossaryItems()->Add(item, item->Key);
    const auto node = project->QBNodes->NewNode();
    node->SetCaptionText("top");
    node->ChildNodes->NewNode(node)->SetCaptionText("below");
    const auto task = project->NewTask();
    task->SetTitle("task");
    project->Tasks->Add(task, task->Key());
  }
  void TearDown() override {
    topic = nullptr;
    ProjectTest::TearDown();
  }
  [[nodiscard]] std::string TopicFile() const { return "TopicData/" + topic->Key + ".xml"; }
  [[nodiscard]] std::vector<std::string> Files() const { return {contentsFile, glossaryFile, tasksFile, TopicFile()}; }
  Ref<QBProject> Loaded() const {
    auto loaded = New<QBProject>();
    loaded->SetStorageForm(ProjectTypeSeparateFiles);
    loaded->LoadFromFile(folder.Stored("p.qbp"));
    return loaded;
  }
  void ChangeEverything() {
    const auto text = "changed" + std::to_string(++changes);
    topic->SetTitle(text);
    project->GlossaryItems()->Item(1)->SetTerm(text);
    project->QBNodes->Item(1)->SetCaptionText(text);
    project->Tasks->Item(1)->SetTitle(text);
  }

  const std::string contentsFile = "ProjectData/TableOfContents.xml";
  const std::string glossaryFile = "ProjectData/Glossary.xml";
  const std::string tasksFile = "ProjectData/Tasks.xml";
  int changes = 0;
  support::TemporaryFolder folder;
  Ref<Topic> topic;
};

TEST_F(SeparateFilesTest, AProject_IsSavedInParts_AndComesBack) {
  ASSERT_TRUE(project->SaveToDisk());
  for (const auto& file : Files()) EXPECT_TRUE(folder.Has(file)) << file;
  const auto text = folder.Read("p.qbp");
  for (const auto* part : {"<GlossaryItems/>", "<Nodes/>", "<Tasks/>"}) EXPECT_NE(text.find(part), text.npos) << part;
  EXPECT_NE(text.find("<Topic Key=\"" + topic->Key + "\"/>"), text.npos);
  EXPECT_FALSE(project->Dirty());
  EXPECT_FALSE(topic->Dirty());

  const auto loaded = Loaded();
  ASSERT_TRUE(loaded->Topics->Item(topic->Key));
  EXPECT_EQ(loaded->Topics->Item(topic->Key)->Name(), "topic");
  EXPECT_EQ(loaded->GlossaryItems()->Item(1)->Definition(), "definition");
  EXPECT_EQ(loaded->QBNodes->Item(1)->ChildNodes->Item(1)->CaptionText(), "below");
  EXPECT_EQ(loaded->Tasks->Item(1)->Title(), "task");
  EXPECT_FALSE(loaded->Dirty());
}

TEST_F(SeparateFilesTest, PartsThatDidNotChange_AreNotWrittenAgain) {
  ASSERT_TRUE(project->SaveToDisk());
  for (const auto& file : Files()) folder.Write(file, "untouched");
  ASSERT_TRUE(project->SaveToDisk());
  for (const auto& file : Files()) EXPECT_EQ(folder.Read(file), "untouched") << file;
  ChangeEverything();
  ASSERT_TRUE(project->SaveToDisk());
  for (const auto& file : Files()) EXPECT_NE(folder.Read(file).find("changed1\""), std::string::npos) << file;
}

TEST_F(SeparateFilesTest, MissingParts_AreEmpty_AndWrittenAtTheNextSave) {
  ASSERT_TRUE(project->SaveToDisk());
  for (const auto& file : Files()) std::filesystem::remove(folder.Native(file));
  const auto loaded = Loaded();
  EXPECT_TRUE(loaded->LastLoadResult().Ok());
  EXPECT_EQ(loaded->QBNodes->Count(), 0u);
  EXPECT_EQ(loaded->GlossaryItems()->Count(), 0u);
  EXPECT_EQ(loaded->Tasks->Count(), 0u);
  ASSERT_TRUE(loaded->Topics->Item(topic->Key)) << "its key stands in the project file";
  EXPECT_EQ(loaded->Topics->Item(topic->Key)->Name(), "");
  ASSERT_TRUE(loaded->SaveToDisk());
  for (const auto& file : Files()) EXPECT_TRUE(folder.Has(file)) << file;
}

TEST_F(SeparateFilesTest, PartsThatAreNoXML_AreEmpty) {
  ASSERT_TRUE(project->SaveToDisk());
  for (const auto& file : Files()) folder.Write(file, "<cut");
  const auto loaded = Loaded();
  EXPECT_EQ(loaded->QBNodes->Count(), 0u);
  EXPECT_EQ(loaded->GlossaryItems()->Count(), 0u);
  EXPECT_EQ(loaded->Tasks->Count(), 0u);
  EXPECT_EQ(loaded->Topics->Item(1)->Name(), "");
  for (const auto& file : Files()) EXPECT_EQ(folder.Read(file), "<cut") << "reading changes nothing";
}

TEST_F(SeparateFilesTest, PartsThatCannotBeRead_AreReported) {
  ASSERT_TRUE(project->SaveToDisk());
  const auto disk = std::make_shared<support::FaultyFileStore>();
  disk->reading = FailureNumber::PermissionDenied;
  const PlatformOverride<FileStore> unreadable{std::shared_ptr<FileStore>(disk)};
  project->QBNodes->Load({});
  project->GlossaryItems()->Load({});
  project->Tasks->Load({});
  topic->Load({});
  EXPECT_EQ(failures.Take(),
            (Failures{"QBNodes.Load 70", "GlossaryItems.Load 70", "Tasks.Load 70", "Topic.InternalLoad 70"}));
  EXPECT_TRUE(topic->PauseEvents()) << "its load came to no end";
}

TEST_F(SeparateFilesTest, ReadOnlyParts_AreReported_AndStayAsTheyWere) {
  ASSERT_TRUE(project->SaveToDisk());
  ChangeEverything();
  std::vector<std::string> before;
  for (const auto& file : Files()) {
    before.push_back(folder.Read(file));
    ASSERT_EQ(::chmod(folder.Native(file).c_str(), 0444), 0);
  }
  EXPECT_TRUE(project->QBNodes->ReadOnly());
  EXPECT_TRUE(project->GlossaryItems()->ReadOnly());
  EXPECT_TRUE(project->Tasks->ReadOnly());
  EXPECT_TRUE(topic->ReadOnly());

  project->QBNodes->Save({});
  project->GlossaryItems()->Save({});
  project->Tasks->Save({});
  EXPECT_EQ(failures.Take(), (Failures{"QBNodes.Save 70", "GlossaryItems.Save 70", "Tasks.Save 70"}));
  topic->SaveToDisk();
  const auto boxes = failures.TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].Prompt,
            "Could not save to file '" + topic->LocalSpec() +
                "'. Please ensure that you have permission to access this file and the containing directory.");
  EXPECT_EQ(boxes[0].Title, "Could not save");
  EXPECT_TRUE(project->QBNodes->Dirty());
  EXPECT_TRUE(project->GlossaryItems()->Dirty());
  EXPECT_TRUE(project->Tasks->Dirty());
  EXPECT_TRUE(topic->Dirty());
  for (std::size_t i = 0; i < before.size(); ++i) EXPECT_EQ(folder.Read(Files()[i]), before[i]) << Files()[i];
}

TEST_F(SeparateFilesTest, AProjectWithAPartThatCannotBeWritten_IsNotSaved_AndStaysDirty) {
  ASSERT_TRUE(project->SaveToDisk());
  for (const auto& file : Files()) {
    ChangeEverything();
    ASSERT_EQ(::chmod(folder.Native(file).c_str(), 0444), 0);
    EXPECT_FALSE(project->SaveToDisk()) << file;
    EXPECT_EQ(failures.Take().size(), 1u) << file;
    EXPECT_TRUE(project->Dirty()) << file;
    EXPECT_TRUE(project->QBNodes->Dirty()) << file;
    EXPECT_TRUE(project->GlossaryItems()->Dirty()) << file;
    EXPECT_TRUE(project->Tasks->Dirty()) << file;

    ASSERT_EQ(::chmod(folder.Native(file).c_str(), 0644), 0);
    EXPECT_TRUE(project->SaveToDisk()) << file;
    EXPECT_NE(folder.Read(file).find("changed" + std::to_string(changes)), std::string::npos) << file;
    EXPECT_FALSE(project->Dirty()) << file;
  }
}

TEST_F(SeparateFilesTest, ATopic_IsSavedToDiskByItself) {
  topic->SaveToDisk();
  EXPECT_FALSE(topic->Dirty());
  EXPECT_NE(folder.Read(TopicFile()).find("Name=\"topic\""), std::string::npos);
  EXPECT_FALSE(folder.Has("p.qbp"));
  project->SetStorageForm(ProjectTypeSingleFile);
  topic->SaveToDisk();
  EXPECT_EQ(failures.Take(), Failures{"Topic.InternalSave 91"}) << "nowhere to write to";
}

TEST_F(SeparateFilesTest, AnOtherFile_HasNoFileOfTheProjects_ButItsOwnAttribute) {
  folder.Write("a.png", "");
  const auto file = project->NewOtherFile(folder.Stored("a.png"));
  EXPECT_FALSE(file->ReadOnly());
  ASSERT_EQ(::chmod(folder.Native("a.png").c_str(), 0444), 0);
  EXPECT_TRUE(file->ReadOnly());
  project->SetStorageForm(ProjectTypeSingleFile);
  EXPECT_FALSE(file->ReadOnly());
}

}  // namespace
}  // namespace quillbook
