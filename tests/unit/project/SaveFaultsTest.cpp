// What is left of a project's files when a save fails at one of its steps.
#include <functional>

#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/structure/GlossaryItems.h"
#include "quillbook/structure/QBNodes.h"
#include "quillbook/structure/Tasks.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/Topics.h"
#include "support/FaultyFileStore.h"
#include "support/ProjectTest.h"
#include "support/TemporaryFolder.h"

namespace quillbook {
namespace {

/// A project that has been saved twice, as "first" and as "second", and is now called "third and last".
class SaveFaultsTest : public support::ProjectTest {
 protected:
  void SetUp() override {
    ProjectTest::SetUp();
    for (int i = 0; i < 50; ++i) {
      const auto topic = project->NewTopic();
      topic->SetTopicSectionData("BodyText", std::string(1000, 'x'));
      project->Topics->Add(topic, topic->Key);
    }
    Name("p.qbp");
  }
  void Name(const std::string& name) {
    mName = name;
    project->Filename->SetFullName(folder.Stored(name));
    project->SetTitle("first");
    EXPECT_TRUE(project->SaveToDisk());
    mFirst = folder.Read(name);
    project->SetTitle("second");
    EXPECT_TRUE(project->SaveToDisk());
    mSecond = folder.Read(name);
    project->SetTitle("third and last");
    project->SetTopicsDirty(true);
    project->QBNodes->SetDirty(true);
  }
  /// Saves on a disk with a fault. The file must be whole, and nothing else may be left in the folder.
  bool SaveWith(const std::function<void(support::FaultyFileStore&)>& fault) {
    const auto disk = std::make_shared<support::FaultyFileStore>();
    fault(*disk);
    const auto entries = folder.Count();
    const PlatformOverride<FileStore> faulty{std::shared_ptr<FileStore>(disk)};
    const bool saved = project->SaveToDisk();
    EXPECT_EQ(folder.Count(), entries);
    if (saved) return true;
    EXPECT_EQ(VersionOf(mName), "second");
    EXPECT_TRUE(project->ProjectDirty());
    EXPECT_TRUE(project->TopicsDirty());
    EXPECT_TRUE(project->QBNodes->Dirty());
    return false;
  }
  void ExpectThirdAfterAll() {
    EXPECT_TRUE(project->SaveToDisk());
    EXPECT_EQ(VersionOf(mName), "third");
    EXPECT_FALSE(project->Dirty());
  }
  /// Which of the versions a file holds, wholly.
  std::string VersionOf(const std::string& name) const {
    const auto text = folder.Read(name);
    if (text == mFirst) return "first";
    if (text == mSecond) return "second";
    return text.find("Title=\"third and last\"") != std::string::npos && text.ends_with("</QBProject>\n") ? "third"
                                                                                                          : "none";
  }
  std::string TakeMessage() {
    const auto boxes = failures.TakeBoxes();
    EXPECT_EQ(boxes.size(), 1u);
    return boxes.empty() ? std::string() : boxes[0].Title;
  }

  support::TemporaryFolder folder;

 private:
  std::string mName;
  std::string mFirst, mSecond;
};

TEST_F(SaveFaultsTest, ADeniedCopy_StopsNothing_AndLeavesTheOlderCopy) {
  EXPECT_TRUE(SaveWith([](auto& disk) { disk.copying = FailureNumber::PermissionDenied; }));
  EXPECT_EQ(VersionOf("p.bak"), "first");
  EXPECT_EQ(VersionOf("p.qbp"), "third");
  EXPECT_FALSE(project->Dirty());
}

TEST_F(SaveFaultsTest, ADeniedRemoval_HindersNoSave) {
  EXPECT_TRUE(SaveWith([](auto& disk) { disk.removing = FailureNumber::PermissionDenied; }));
  EXPECT_EQ(VersionOf("p.bak"), "second");
}

TEST_F(SaveFaultsTest, AFileThatCannotBeOpened_IsTold_AndBothFilesStay) {
  EXPECT_FALSE(SaveWith([](auto& disk) { disk.opening = FailureNumber::PermissionDenied; }));
  EXPECT_EQ(TakeMessage(), "Could not save");
  EXPECT_EQ(VersionOf("p.bak"), "first") << "the copy couldn't be opened either";
  ExpectThirdAfterAll();
  EXPECT_EQ(VersionOf("p.bak"), "second");
}

TEST_F(SaveFaultsTest, ADiskThatIsFullFromTheStart_LeavesBothFiles) {
  EXPECT_FALSE(SaveWith([](auto& disk) { disk.space = 0; }));
  EXPECT_EQ(VersionOf("p.bak"), "first");
  ExpectThirdAfterAll();
}

TEST_F(SaveFaultsTest, AWriteThatIsCutAnywhere_LeavesBothFiles_AndSaysNothing) {
  const auto size = static_cast<std::size_t>(std::filesystem::file_size(folder.Native("p.qbp")));
  // The copy fits at first, the longer new text never.
  for (const std::size_t room : {size, size / 2, std::size_t{1}}) {
    EXPECT_FALSE(SaveWith([&](auto& disk) { disk.space = room; })) << room;
    EXPECT_NE(VersionOf("p.bak"), "none") << room;
  }
  ExpectThirdAfterAll();
  EXPECT_EQ(VersionOf("p.bak"), "second");
}

TEST_F(SaveFaultsTest, AFileThatCannotBeFinished_LeavesBothFiles_AndSaysNothing) {
  for (const auto number : {FailureNumber::DiskFull, FailureNumber::PermissionDenied, FailureNumber::DeviceError}) {
    EXPECT_FALSE(SaveWith([&](auto& disk) { disk.closing = number; }));
    EXPECT_EQ(VersionOf("p.bak"), "second") << "the copy of what is still there";
  }
  ExpectThirdAfterAll();
}

TEST_F(SaveFaultsTest, AProjectCalledBakInCapitals_IsNoCopyOfItself) {
  Name("q.BAK");
  EXPECT_FALSE(SaveWith([](auto& disk) { disk.space = 100; }));
  EXPECT_FALSE(folder.Has("q.bak"));
  ExpectThirdAfterAll();
}

// Parts that have files of their own.

class PartSaveFaultsTest : public support::ProjectTest {
 protected:
  void SetUp() override {
    ProjectTest::SetUp();
    project->Filename->SetFullName(folder.Stored("p.qbp"));
    project->SetStorageForm(ProjectTypeSeparateFiles);
  }
  /// Saves a part on a disk that fills up, or that fails at the end. Its file must stay as it was.
  template <class Part>
  void CheckPart(Part& part, const std::string& file, const Failures& expected) {
    folder.Write(file, "the old text");
    part.SetDirty(true);
    for (const bool full : {true, false}) {
      const auto disk = std::make_shared<support::FaultyFileStore>();
      if (full) disk->space = 10;
      if (!full) disk->closing = FailureNumber::DiskFull;
      const PlatformOverride<FileStore> faulty{std::shared_ptr<FileStore>(disk)};
      part.Save(XMLDocument().DocumentElement());
      EXPECT_EQ(failures.Take(), expected);
      EXPECT_EQ(folder.Read(file), "the old text") << file;
      EXPECT_TRUE(part.Dirty());
    }
    part.Save(XMLDocument().DocumentElement());
    EXPECT_NE(folder.Read(file), "the old text") << file;
  }

  support::TemporaryFolder folder;
};

TEST_F(PartSaveFaultsTest, ContentsGlossaryAndTasks_KeepTheirOldFiles) {
  CheckPart(*project->QBNodes, "ProjectData/TableOfContents.xml", {"QBNodes.Save 61"});
  CheckPart(*project->GlossaryItems(), "ProjectData/Glossary.xml", {"GlossaryItems.Save 61"});
  CheckPart(*project->Tasks, "ProjectData/Tasks.xml", {"Tasks.Save 61"});
}

TEST_F(PartSaveFaultsTest, ATopic_KeepsItsOldFile_AndAsks) {
  const auto topic = project->NewTopic();
  const auto question = "Could not save to file '" + topic->LocalSpec() +
                        "'. Please ensure that you have permission to access this file and the containing directory.";
  CheckPart(*topic, "TopicData/" + topic->Key + ".xml", {question});
}

TEST_F(PartSaveFaultsTest, AnUnwritableFolder_IsAFailure_AndLosesNothing) {
  folder.Write("ProjectData", "a file where the folder should be");
  const auto item = project->NewGlossaryItem("a", "b");
  project->GlossaryItems()->Add(item, item->Key);
  project->GlossaryItems()->Save(XMLDocument().DocumentElement());
  EXPECT_EQ(failures.Take(), Failures{"GlossaryItems.Save 75"});
  EXPECT_TRUE(project->GlossaryItems()->Dirty());
  EXPECT_EQ(project->GlossaryItems()->Count(), 1u);
  EXPECT_EQ(folder.Read("ProjectData"), "a file where the folder should be");
}

}  // namespace
}  // namespace quillbook
