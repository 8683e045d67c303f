#include "quillbook/structure/OtherFile.h"

#include <sys/stat.h>

#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/structure/OtherFiles.h"
#include "support/ProjectLog.h"
#include "support/ProjectTest.h"
#include "support/TemporaryFolder.h"

namespace quillbook {
namespace {

class OtherFileTest : public support::ProjectTest {
 protected:
  void SetUp() override {
    ProjectTest::SetUp();
    project->Filename->SetFullName(folder.Stored("help\\p.qbp"));
    files = project->OtherFiles;
  }
  void TearDown() override {
    files = nullptr;
    ProjectTest::TearDown();
  }
  Ref<OtherFile> Make(const std::string& name) { return project->NewOtherFile(folder.Stored(name)); }
  Ref<OtherFile> AddFile(const std::string& name) {
    const auto file = Make(name);
    files->Add(file, file->LocalSpec());
    return file;
  }

  support::TemporaryFolder folder;
  Ref<OtherFiles> files;
};

TEST_F(OtherFileTest, ANewFile_IsIncludedAndNew_AndStandsNowhere) {
  const auto file = Make("help/images/a.png");
  EXPECT_TRUE(file->IncludeInOutput());
  EXPECT_TRUE(file->NewFlag());
  EXPECT_EQ(file->CaptureInfo(), "");
  EXPECT_TRUE(file->Tag.IsEmpty());
  EXPECT_EQ(file->QBProject(), project);
  EXPECT_EQ(file->LocalSpec(), folder.Stored("help/images/a.png"));
  EXPECT_EQ(files->Count(), 0u);
}

TEST_F(OtherFileTest, RelativeFileName_IsRelativeToTheProjectFile_AndLeavesNoBase) {
  EXPECT_EQ(Make("help/images/a.png")->RelativeFileName(), "images\\a.png");
  const auto outside = Make("shared/a.png");
  EXPECT_EQ(outside->RelativeFileName(), "..\\shared\\a.png");
  EXPECT_FALSE(outside->Filename->RelativeTo());
}

TEST_F(OtherFileTest, Kinds_GoByTheExtension_IgnoringCase) {
  for (const auto* image : {"A.PNG", "a.bmp", "a.Gif", "a.jpg", "a.pcx"}) EXPECT_TRUE(Make(image)->IsImage()) << image;
  for (const auto* other : {"a.jpeg", "a.svg", "a", "png", "a.png.txt"}) EXPECT_FALSE(Make(other)->IsImage()) << other;
  EXPECT_TRUE(Make("a.CSS")->IsStyleSheet());
  EXPECT_FALSE(Make("a.csss")->IsStyleSheet());
  EXPECT_TRUE(Make("a.Js")->IsScript());
  EXPECT_FALSE(Make("a.mjs")->IsScript());
}

TEST_F(OtherFileTest, Setters_TellOfARealChange) {
  const auto file = AddFile("a.png");
  project->SetDirty(false);
  support::ProjectLog log(project);
  file->SetIncludeInOutput(false);
  EXPECT_EQ(log.Take(), "OtherFileChanged Dirty");
  file->SetCaptureInfo("window");
  EXPECT_EQ(log.Take(), "Dirty");
  EXPECT_TRUE(project->ProjectDirty());
  file->SetIncludeInOutput(false);
  file->SetCaptureInfo("window");
  file->SetNewFlag(false);
  file->Tag = 5;
  EXPECT_EQ(log.Take(), "");
}

TEST_F(OtherFileTest, ReadOnly_CountsOnlyForSeparateFiles) {
  folder.Write("a.png", "");
  ASSERT_EQ(chmod(folder.Native("a.png").c_str(), 0444), 0);
  const auto file = Make("a.png");
  EXPECT_FALSE(file->ReadOnly());
  project->SetStorageForm(ProjectTypeSeparateFiles);
  EXPECT_TRUE(file->ReadOnly());
}

// Record.

TEST_F(OtherFileTest, Save_WritesTheRelativeName_AndEndsNewness) {
  const auto file = Make("help/images/a.png");
  file->SetIncludeInOutput(false);
  EXPECT_EQ(Written(*file), "<r FileName=\"images\\a.png\" CaptureInfo=\"\" IncludeInOutput=\"False\"/>");
  EXPECT_FALSE(file->NewFlag());
}

TEST_F(OtherFileTest, Load_ResolvesTheName_AndEndsNewness) {
  const auto file = New<OtherFile>();
  file->SetQBProject(project);
  file->Load(Parse("<file filename='images\\a.png' CAPTUREINFO='c' includeinoutput='False'/>").DocumentElement());
  EXPECT_EQ(file->LocalSpec(), folder.Stored("help/images/a.png"));
  EXPECT_EQ(file->CaptureInfo(), "c");
  EXPECT_FALSE(file->IncludeInOutput());
  EXPECT_FALSE(file->NewFlag());
  EXPECT_FALSE(file->Filename->RelativeTo());
}

TEST_F(OtherFileTest, Load_OfAbsentOptionalAttributes_KeepsTheirDefaults) {
  const auto file = New<OtherFile>();
  file->SetQBProject(project);
  file->Load(Parse("<file FileName='a.png'/>").DocumentElement());
  EXPECT_EQ(file->CaptureInfo(), "");
  EXPECT_TRUE(file->IncludeInOutput());
}

TEST_F(OtherFileTest, Load_TakesExactlyTrueForTrue) {
  for (const auto* text : {"true", "TRUE", "1", "", " True"}) {
    const auto file = New<OtherFile>();
    file->SetQBProject(project);
    file->Load(Parse(std::string("<file FileName='a' IncludeInOutput='") + text + "'/>").DocumentElement());
    EXPECT_FALSE(file->IncludeInOutput()) << text;
  }
}

TEST_F(OtherFileTest, Load_WithoutItsName_IsAFailure) {
  const auto file = New<OtherFile>();
  file->SetQBProject(project);
  file->Load(Parse("<file CaptureInfo='c'/>").DocumentElement());
  EXPECT_EQ(failures.Take(), Failures{"OtherFile.Load 5"});
  EXPECT_TRUE(file->NewFlag());
  EXPECT_FALSE(file->Filename->RelativeTo());
}

TEST_F(OtherFileTest, ANameOutsideTheProjectsFolder_IsKept) {
  const auto file = New<OtherFile>();
  file->SetQBProject(project);
  file->Load(Parse("<file FileName='..\\..\\shared\\a.png'/>").DocumentElement());
  EXPECT_NE(Written(*file).find("FileName=\"..\\..\\shared\\a.png\""), std::string::npos);
}

TEST_F(OtherFileTest, ALoadedProject_HoldsARepeatedFileOnce_AndRaisesNothing) {
  support::ProjectLog log(project);
  project->Load("<QBProject><file FileName='a.png'/><file FileName='A.PNG' CaptureInfo='x'/></QBProject>");
  EXPECT_EQ(project->OtherFiles->Count(), 1u);
  EXPECT_EQ(project->OtherFiles->Item(1)->CaptureInfo(), "");
  EXPECT_EQ(log.Take().find("OtherFile"), std::string::npos);
}

// The list.

TEST_F(OtherFileTest, Add_TellsTheProject_AlsoOfAFileThatIsThereAlready) {
  support::ProjectLog log(project);
  const auto file = AddFile("a.png");
  EXPECT_EQ(log.Take(), "OtherFileAdded Dirty");
  files->Add(file, file->LocalSpec());
  EXPECT_EQ(log.Take(), "OtherFileAdded Dirty");
  EXPECT_EQ(files->Count(), 1u);
  files->Add(file, "x", "nowhere");  // an unknown neighbour is no failure either
  EXPECT_EQ(files->Count(), 1u);
}

TEST_F(OtherFileTest, Add_GoesBeforeOrAfterANeighbour) {
  const auto b = AddFile("b");
  const auto a = Make("a");
  files->Add(a, "a", 1, 1);
  const auto c = Make("c");
  files->Add(c, "", {}, b->LocalSpec());
  EXPECT_EQ(files->Item(1), a);
  EXPECT_EQ(files->Item(3), c);
}

TEST_F(OtherFileTest, Item_FindsAFileByItsPath_UnderWhateverKeyItStands) {
  const auto file = Make("Images/A.png");
  files->Add(file, "key");
  EXPECT_EQ(files->Item("KEY"), file);
  EXPECT_EQ(files->Item(folder.Stored("images/a.PNG")), file);
  EXPECT_TRUE(files->Exists(folder.Stored("images/a.PNG")));
  EXPECT_FALSE(files->Exists("key"));
  EXPECT_FALSE(files->Item("other"));
  EXPECT_FALSE(files->Item(2));
  file->Filename->SetFullName("\\moved.png");
  EXPECT_FALSE(files->Exists(folder.Stored("images/a.PNG")));
  EXPECT_EQ(files->Item("\\MOVED.png"), file);
  file->Filename = New<FileSystemObject>("\\other.png");
  EXPECT_FALSE(files->Item("\\MOVED.png"));
  EXPECT_EQ(files->Item("\\Other.png"), file);
}

TEST_F(OtherFileTest, Item_FindsTheFirstOfEqualPaths_UnlessAKeySaysOtherwise) {
  const auto first = Make("a.png");
  const auto second = Make("A.png");
  files->Add(first, "1");
  files->Add(second, "2");
  EXPECT_EQ(files->Item(folder.Stored("a.PNG")), first);
  const auto third = Make("a.png");
  files->Add(third, third->LocalSpec());
  EXPECT_EQ(files->Item(folder.Stored("a.PNG")), third);
}

TEST_F(OtherFileTest, ItemByRelativeFileName_IgnoresCase_AndFollowsMoves) {
  const auto first = AddFile("help/Images/a.png");
  files->Add(Make("help/images/A.PNG"), "2");
  EXPECT_EQ(files->ItemByRelativeFileName("images\\A.png"), first);
  EXPECT_FALSE(files->ItemByRelativeFileName("images\\..\\images\\a.png"));
  EXPECT_FALSE(files->ItemByRelativeFileName("a.png"));
  project->Filename->SetFullName(folder.Stored("help/images/p.qbp"));
  EXPECT_EQ(files->ItemByRelativeFileName("A.png"), first);
  first->Filename->SetFullName(folder.Stored("b.png"));
  EXPECT_EQ(files->ItemByRelativeFileName("..\\..\\B.png"), first);
}

TEST_F(OtherFileTest, Remove_TellsTheProject_AndRemembersTheFile) {
  const auto file = AddFile("a.png");
  support::ProjectLog log(project);
  files->Remove(file->LocalSpec());
  EXPECT_EQ(log.Take(), "OtherFileRemoved Dirty");
  EXPECT_EQ(files->DeletedFiles()->Item(folder.Stored("A.PNG")), file);
  files->Remove(file->LocalSpec());
  EXPECT_EQ(failures.Take(), Failures{"OtherFiles.Remove 5"});
  files->Add(file, file->LocalSpec());
  EXPECT_EQ(files->DeletedFiles()->Count(), 0u);
}

TEST_F(OtherFileTest, Remove_WhilePaused_LeavesDeletedFilesAlone) {
  AddFile("a.png");
  files->PauseEvents = true;
  support::ProjectLog log(project);
  files->Remove(1);
  EXPECT_EQ(log.Take(), "");
  EXPECT_EQ(files->DeletedFiles()->Count(), 0u);
}

TEST_F(OtherFileTest, AFileRemovedTwice_IsAFailure_AfterItHasGone) {
  AddFile("a.png");
  files->Add(Make("a.png"), "again");
  files->Remove(1);
  files->Remove(1);
  EXPECT_EQ(failures.Take(), Failures{"OtherFiles.Remove 457"});
  EXPECT_EQ(files->Count(), 0u);
  files->ResetDeletedFiles();
  EXPECT_EQ(files->DeletedFiles()->Count(), 0u);
}

}  // namespace
}  // namespace quillbook
