#include "quillbook/frame/services/FileSystemObject.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "quillbook/base/Text.h"
#include "quillbook/platform/Platform.h"
#include "support/FailureOf.h"
#include "support/FaultyFileStore.h"
#include "support/MemoryRegistryStore.h"
#include "support/TemporaryFolder.h"

namespace quillbook {
namespace {

using support::DescriptionOfFailure;
using support::NumberOfFailure;

class FileSystemObjectTest : public testing::Test {
 protected:
  Ref<FileSystemObject> File(std::string_view name) const { return New<FileSystemObject>(mFolder.Stored(name)); }
  static void OpenProject(FileSystemObject& file) { file.Open(4, 2, 3, 32767); }
  static void OpenShared(FileSystemObject& file) { file.Open(4, 2, 1, 32767); }
  void MakeReadOnly(std::string_view name) const { ::chmod((mFolder / name).c_str(), 0444); }

  support::TemporaryFolder mFolder;
};

TEST(FileSystemObject, FullName_IsInWindowsForm) {
  FileSystemObject file("/home/ann\\help/a.qbp");
  EXPECT_EQ(file.FullName(), "\\home\\ann\\help\\a.qbp");
  EXPECT_EQ(FileSystemObject().FullName(), "");
}

TEST(FileSystemObject, Parts_OfAFile) {
  const FileSystemObject file("C:\\Help\\My.Project\\a.b.qbp");
  EXPECT_EQ(file.Path(), "C:\\Help\\My.Project\\");
  EXPECT_EQ(file.BaseName(), "a.b");
  EXPECT_EQ(file.Extension(), "qbp");
  EXPECT_EQ(file.NameWithExtension(), "a.b.qbp");
}

TEST(FileSystemObject, Parts_ThatAreMissing) {
  EXPECT_EQ(FileSystemObject("\\x.y\\name").Extension(), "");
  EXPECT_EQ(FileSystemObject("\\x.y\\name").BaseName(), "name");
  EXPECT_EQ(FileSystemObject("\\x\\.css").BaseName(), "");
  EXPECT_EQ(FileSystemObject("\\x\\.css").Extension(), "css");
  EXPECT_EQ(FileSystemObject("name.htm").Path(), "");
  EXPECT_EQ(FileSystemObject("\\x\\").BaseName(), "");
  EXPECT_EQ(FileSystemObject("").Path(), "");
}

TEST(FileSystemObject, Path_OfAFileAtTheRootEndsInTheBackslash) {
  EXPECT_EQ(FileSystemObject("C:\\a.qbp").Path(), "C:\\");
  EXPECT_EQ(FileSystemObject("\\a.qbp").Path(), "\\");
  EXPECT_EQ(FileSystemObject("C:a.qbp").Path(), "C:");
}

TEST(FileSystemObject, WritingAPart_RebuildsTheWhole) {
  FileSystemObject file("\\help\\a.qbp");
  file.SetBaseName("b.c");
  EXPECT_EQ(file.FullName(), "\\help\\b.c.qbp");
  file.SetExtension("bak");
  EXPECT_EQ(file.FullName(), "\\help\\b.c.bak");
  file.SetExtension("");
  EXPECT_EQ(file.FullName(), "\\help\\b.c");
  file.SetExtension(".htm");
  EXPECT_EQ(file.FullName(), "\\help\\b.htm");
  file.SetFullName("noextension");
  file.SetExtension("qbp");
  EXPECT_EQ(file.FullName(), "noextension.qbp");
}

TEST(FileSystemObject, WritingThePath_MakesItAFolder) {
  FileSystemObject file("\\help\\a.qbp");
  file.SetPath("/other/folder");
  EXPECT_EQ(file.FullName(), "\\other\\folder\\");
  EXPECT_EQ(file.Path(), "\\other\\folder\\");
  EXPECT_EQ(file.BaseName(), "");
  file.SetPath("");
  EXPECT_EQ(file.FullName(), "");
}

TEST(FileSystemObject, WithABase_NamesAreResolvedAgainstIt) {
  const auto project = New<FileSystemObject>("\\home\\ann\\a.qbp");
  FileSystemObject file;
  file.SetRelativeTo(project);
  file.SetFullName("..\\images\\b.png");
  EXPECT_EQ(file.FullName(), "\\home\\images\\b.png");
  EXPECT_EQ(file.Path(), "\\home\\images\\");
  EXPECT_EQ(file.RelativeName(), "..\\images\\b.png");
  file.SetFullName("\\home\\ann\\images\\b.png");
  EXPECT_EQ(file.RelativeName(), "images\\b.png");
  file.SetRelativeTo(nullptr);
  EXPECT_EQ(file.RelativeName(), "\\home\\ann\\images\\b.png");
  EXPECT_EQ(file.LongName(), file.FullName());
}

TEST(FileSystemObject, BasesInACircle_DoNoHarm) {
  const auto one = New<FileSystemObject>("a\\b");
  const auto two = New<FileSystemObject>("c\\d");
  one->SetRelativeTo(two);
  two->SetRelativeTo(one);
  EXPECT_EQ(one->FullName(), "c\\a\\b");
  one->SetRelativeTo(nullptr);
}

TEST(FileSystemObject, MembersAreLateBound) {
  const Ref<Object> item = New<FileSystemObject>("\\help\\a.qbp");
  EXPECT_EQ(item->Member("fullfilename").ToText(), "\\help\\a.qbp");
  EXPECT_EQ(item->Member("BaseName").ToText(), "a");
  item->SetMember("Extension", "htm");
  EXPECT_EQ(item->Member("FullName").ToText(), "\\help\\a.htm");
  EXPECT_EQ(item->TypeName(), "FileSystemObject");
}

TEST_F(FileSystemObjectTest, ExistenceOfFilesAndFolders) {
  mFolder.Write("sub/f.htm", "");
  EXPECT_TRUE(File("sub\\f.htm")->FileExists());
  EXPECT_FALSE(File("sub\\g.htm")->FileExists());
  EXPECT_FALSE(File("sub")->FileExists());
  EXPECT_TRUE(File("sub\\g.htm")->DirectoryExists());
  EXPECT_TRUE(File("sub\\")->DirectoryExists());
  EXPECT_FALSE(File("none\\")->DirectoryExists());
  EXPECT_FALSE(File("sub\\f.htm\\")->DirectoryExists());
  EXPECT_FALSE(FileSystemObject().FileExists());
  EXPECT_FALSE(FileSystemObject().DirectoryExists());
  EXPECT_TRUE(FileSystemObject("here.htm").DirectoryExists());
}

TEST_F(FileSystemObjectTest, NamesOnDisk_AreFoundIgnoringCase) {
  mFolder.Write("Images/Größe.PNG", "x");
  const auto file = File("IMAGES\\gröSSe.png");
  EXPECT_FALSE(file->FileExists());
  file->SetFullName(mFolder.Stored("IMAGES\\größe.png"));
  EXPECT_TRUE(file->FileExists());
  EXPECT_EQ(file->ReadAll(), "x");
  EXPECT_EQ(file->NativePath(), mFolder / "Images/Größe.PNG");
  EXPECT_TRUE(File("images\\")->DirectoryExists());
}

TEST_F(FileSystemObjectTest, ExactName_WinsOverOthers) {
  mFolder.Write("A.htm", "upper");
  mFolder.Write("a.htm", "lower");
  EXPECT_EQ(File("a.htm")->ReadAll(), "lower");
  EXPECT_EQ(File("A.htm")->ReadAll(), "upper");
  EXPECT_EQ(File("a.HTM")->ReadAll(), "upper");
}

TEST_F(FileSystemObjectTest, NewFile_GoesIntoTheFolderThatIsThere) {
  mFolder.Write("Build/x", "");
  const auto file = File("build\\New.htm");
  OpenShared(*file);
  file->Close();
  EXPECT_TRUE(mFolder.Has("Build/New.htm"));
  EXPECT_FALSE(mFolder.Has("build"));
}

TEST_F(FileSystemObjectTest, DirectoryCache_ReadsAFolderOnce) {
  for (int i = 0; i < 20; ++i) mFolder.Write("Images/Image" + std::to_string(i) + ".png", "");
  const auto store = std::make_shared<support::FaultyFileStore>();
  const PlatformOverride<FileStore> files(store);
  const auto findAll = [&] {
    for (int i = 0; i < 20; ++i) EXPECT_TRUE(File("Images\\image" + std::to_string(i) + ".PNG")->FileExists());
  };
  {
    const DirectoryCacheScope cache;
    findAll();
    EXPECT_EQ(store->listings, 1U);
  }
  findAll();
  EXPECT_EQ(store->listings, 21U);
}

TEST_F(FileSystemObjectTest, DirectoryCache_SeesTheFilesOfThisLibrary) {
  mFolder.Write("a.htm", "");
  const DirectoryCacheScope cache;
  EXPECT_TRUE(File("A.htm")->FileExists());
  const auto file = File("New.htm");
  OpenShared(*file);
  file->Close();
  EXPECT_TRUE(File("NEW.HTM")->FileExists());
  File("a.htm")->CopyTo(*File("Copy.htm"));
  EXPECT_TRUE(File("COPY.htm")->FileExists());
  File("new.HTM")->Delete();
  EXPECT_FALSE(File("NEW.HTM")->FileExists());
  File("Sub\\")->CreateDirectory();
  EXPECT_TRUE(File("SUB\\")->DirectoryExists());
}

TEST_F(FileSystemObjectTest, DriveLetters_StandForFoldersOfTheRegistry) {
  const auto registry = std::make_shared<support::MemoryRegistryStore>();
  const PlatformOverride<RegistryStore> override(registry);
  registry->SetValue(RegistryHive::CurrentUser, "Software\\Corvane\\Quillbook2\\Drives", "C", mFolder.Path());
  mFolder.Write("Help/a.qbp", "x");
  EXPECT_EQ(FileSystemObject("c:\\help\\a.qbp").ReadAll(), "x");
  EXPECT_EQ(FileSystemObject("C:\\help\\a.qbp").NativePath(), mFolder / "Help/a.qbp");
  EXPECT_EQ(FileSystemObject("C:\\help\\..\\..\\..\\Help\\a.qbp").NativePath(), mFolder / "Help/a.qbp");
}

TEST_F(FileSystemObjectTest, UnknownDrive_NamesNothing) {
  const PlatformOverride<RegistryStore> registry(std::make_shared<support::MemoryRegistryStore>());
  FileSystemObject file("C:\\etc\\passwd");
  EXPECT_FALSE(file.FileExists());
  EXPECT_FALSE(file.DirectoryExists());
  EXPECT_EQ(file.NativePath(), "C:/etc/passwd");
  EXPECT_EQ(NumberOfFailure([&] { (void)file.ReadAll(); }), FailureNumber::FileNotFound);
  EXPECT_EQ(NumberOfFailure([&] { file.CreateDirectory(); }), FailureNumber::PathNotFound);
  EXPECT_EQ(NumberOfFailure([&] { file.Open(4, 2, 1, 32767); }), FailureNumber::PathNotFound);
}

TEST_F(FileSystemObjectTest, CreateDirectory_MakesParentsAndAcceptsExisting) {
  const auto file = File("a\\b\\c.htm");
  file->CreateDirectory();
  file->CreateDirectory();
  EXPECT_TRUE(mFolder.Has("a/b"));
  EXPECT_FALSE(mFolder.Has("a/b/c.htm"));
  mFolder.Write("plain", "");
  EXPECT_EQ(NumberOfFailure([&] { File("plain\\x\\")->CreateDirectory(); }), FailureNumber::PathFileAccess);
}

TEST_F(FileSystemObjectTest, ReadAll_KnowsTheEncodings) {
  const std::string text = "<a>ä€日</a>";
  const std::pair<std::string, std::string> cases[] = {
      {text, text},
      {"\xEF\xBB\xBF" + text, text},
      {"\xFF\xFE" + ToUtf16Bytes(text), text},
      {std::string("\xFE\xFF\0<\0a", 6), "<a"},
      {ToUtf16Bytes(text), text},
      {std::string("\0<\0a", 4), "<a"},
      {"<a>\xE4\x80</a>", "<a>ä€</a>"},
      {"<?xml version='1.0' encoding='iso-8859-5'?><a>\xD0</a>", "<?xml version='1.0' encoding='iso-8859-5'?><a>а</a>"},
      {"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\xE4", "<?xml version=\"1.0\" encoding=\"UTF-8\"?>ä"},
      {"<?xml encoding=\"nonsense\"?>ä", "<?xml encoding=\"nonsense\"?>ä"},
      {"", ""},
      {"\r\n \t\r\n", "\r\n \t\r\n"},
  };
  for (const auto& [bytes, expected] : cases) {
    mFolder.Write("f", bytes);
    EXPECT_EQ(File("f")->ReadAll(), expected);
  }
}

TEST_F(FileSystemObjectTest, ReadAll_FailuresNameTheFile) {
  EXPECT_EQ(NumberOfFailure([&] { (void)File("none.htm")->ReadAll(); }), FailureNumber::FileNotFound);
  EXPECT_EQ(DescriptionOfFailure([&] { (void)File("none.htm")->ReadAll(); }),
            "File not found: '" + (mFolder / "none.htm") + "'");
  EXPECT_EQ(NumberOfFailure([&] { (void)File("none\\a.htm")->ReadAll(); }), FailureNumber::PathNotFound);
  EXPECT_EQ(NumberOfFailure([&] { (void)File("")->ReadAll(); }), FailureNumber::PathFileAccess);
}

TEST_F(FileSystemObjectTest, WriteLine_EndsTheFileInALineBreak) {
  const auto file = File("a.qbp");
  OpenProject(*file);
  file->WriteLine("<QBProject/>");
  file->Close();
  EXPECT_EQ(mFolder.Read("a.qbp"), "<QBProject/>\n");
  EXPECT_EQ(mFolder.Count(), 1U);
}

TEST_F(FileSystemObjectTest, Write_AppendsALine) {
  const auto file = File("list.txt");
  OpenShared(*file);
  file->Write("one");
  file->Write("zwei ä");
  file->WriteText("three");
  file->Close();
  EXPECT_EQ(mFolder.Read("list.txt"), "one\nzwei ä\nthree");
}

TEST_F(FileSystemObjectTest, WithoutUnicode_ACharacterIsOneByte) {
  const auto file = File("f");
  OpenShared(*file);
  file->SetUnicode(false);
  file->WriteText("aä\u0080€日");
  file->Close();
  EXPECT_EQ(mFolder.Read("f"), "a\xE4\x80\x80?");
}

TEST_F(FileSystemObjectTest, Open_ReplacesTheFile) {
  mFolder.Write("f", "a long text");
  const auto file = File("f");
  OpenShared(*file);
  file->WriteText("new");
  file->Close();
  EXPECT_EQ(mFolder.Read("f"), "new");
}

TEST_F(FileSystemObjectTest, Open_OfAReadOnlyFileFailsAndLeavesIt) {
  mFolder.Write("a.qbp", "old");
  MakeReadOnly("a.qbp");
  const auto file = File("a.qbp");
  EXPECT_TRUE(file->ReadOnly());
  EXPECT_EQ(NumberOfFailure([&] { OpenProject(*file); }), FailureNumber::PermissionDenied);
  EXPECT_EQ(NumberOfFailure([&] { OpenShared(*file); }), FailureNumber::PermissionDenied);
  EXPECT_EQ(DescriptionOfFailure([&] { OpenProject(*file); }), "Permission denied: '" + (mFolder / "a.qbp") + "'");
  EXPECT_EQ(mFolder.Read("a.qbp"), "old");
  EXPECT_EQ(mFolder.Count(), 1U);
}

TEST_F(FileSystemObjectTest, Open_Failures) {
  const auto file = File("f");
  EXPECT_EQ(NumberOfFailure([&] { file->Open(8, 2, 1, 32767); }), FailureNumber::InvalidCall);
  EXPECT_EQ(NumberOfFailure([&] { file->Open(4, 2, 2, 32767); }), FailureNumber::InvalidCall);
  EXPECT_EQ(NumberOfFailure([&] { file->Open(1, 1, 1, 32767); }), FailureNumber::FileNotFound);
  EXPECT_EQ(NumberOfFailure([&] { OpenShared(*File("none\\f")); }), FailureNumber::PathNotFound);
  EXPECT_EQ(NumberOfFailure([&] { OpenShared(*File("")); }), FailureNumber::BadFileName);
  OpenShared(*file);
  EXPECT_EQ(NumberOfFailure([&] { OpenShared(*file); }), FailureNumber::FileAlreadyOpen);
  mFolder.Write("folder/x", "");
  EXPECT_EQ(NumberOfFailure([&] { OpenProject(*File("folder")); }), FailureNumber::PathFileAccess);
  EXPECT_EQ(NumberOfFailure([&] { File("g")->WriteLine("x"); }), FailureNumber::BadFileName);
}

TEST_F(FileSystemObjectTest, ProjectFile_IsReplacedOnlyByClose) {
  mFolder.Write("a.qbp", "old");
  {
    const auto file = File("a.qbp");
    OpenProject(*file);
    file->WriteText("half");
    EXPECT_EQ(mFolder.Read("a.qbp"), "old");
  }
  EXPECT_EQ(mFolder.Read("a.qbp"), "old");
  EXPECT_EQ(mFolder.Count(), 1U);
}

TEST_F(FileSystemObjectTest, ProjectFile_KeepsOtherWritersOut) {
  mFolder.Write("a.qbp", "old");
  const auto first = File("a.qbp");
  OpenProject(*first);
  EXPECT_TRUE(first->Locked());
  EXPECT_EQ(NumberOfFailure([&] { OpenProject(*File("a.qbp")); }), FailureNumber::PermissionDenied);
  first->WriteText("first");
  first->Close();
  EXPECT_FALSE(first->Locked());
  EXPECT_EQ(mFolder.Read("a.qbp"), "first");
}

TEST_F(FileSystemObjectTest, FullDisk_LeavesTheOldProjectEvenIfItIsClosed) {
  mFolder.Write("a.qbp", "old");
  const auto store = std::make_shared<support::FaultyFileStore>();
  const PlatformOverride<FileStore> files(store);
  store->space = 5;
  const auto file = File("a.qbp");
  OpenProject(*file);
  EXPECT_EQ(NumberOfFailure([&] { file->WriteLine("<QBProject/>"); }), FailureNumber::DiskFull);
  file->Close();
  EXPECT_EQ(mFolder.Read("a.qbp"), "old");
  EXPECT_EQ(mFolder.Count(), 1U);
}

TEST_F(FileSystemObjectTest, CloseThatFails_LeavesTheOldProject) {
  mFolder.Write("a.qbp", "old");
  const auto store = std::make_shared<support::FaultyFileStore>();
  const PlatformOverride<FileStore> files(store);
  store->closing = FailureNumber::DeviceError;
  const auto file = File("a.qbp");
  OpenProject(*file);
  file->WriteText("new");
  EXPECT_EQ(NumberOfFailure([&] { file->Close(); }), FailureNumber::DeviceError);
  EXPECT_EQ(mFolder.Read("a.qbp"), "old");
  EXPECT_EQ(mFolder.Count(), 1U);
}

TEST_F(FileSystemObjectTest, Delete_RemovesTheFile) {
  mFolder.Write("f", "");
  File("F")->Delete();
  EXPECT_FALSE(mFolder.Has("f"));
  EXPECT_EQ(NumberOfFailure([&] { File("f")->Delete(); }), FailureNumber::FileNotFound);
}

TEST_F(FileSystemObjectTest, CopyTo_ReplacesTheTarget) {
  mFolder.Write("from", "new");
  mFolder.Write("To", "old");
  File("from")->CopyTo(*File("to"));
  EXPECT_EQ(mFolder.Read("To"), "new");
  MakeReadOnly("To");
  EXPECT_EQ(NumberOfFailure([&] { File("from")->CopyTo(*File("to")); }), FailureNumber::PermissionDenied);
}

TEST_F(FileSystemObjectTest, FindFiles_MatchesNamesOfFilesIgnoringCase) {
  for (const char* name : {"b.QBP", "a.qbp", "c.qbpx", "d", ".qbp", "folder.qbp/x"}) mFolder.Write(name, "");
  const auto names = [&](std::string_view pattern) {
    std::string joined;
    for (const auto& file : File("")->FindFiles(pattern)) joined += file->NameWithExtension() + " ";
    return joined;
  };
  EXPECT_EQ(names("*.qbp"), ".qbp a.qbp b.QBP ");
  EXPECT_EQ(names("?.qbp"), "a.qbp b.QBP ");
  EXPECT_EQ(names("*"), ".qbp a.qbp b.QBP c.qbpx d ");
  EXPECT_EQ(names("*.*"), ".qbp a.qbp b.QBP c.qbpx d ");
  EXPECT_EQ(names("*b*p"), ".qbp a.qbp b.QBP ");
  EXPECT_EQ(names("D"), "d ");
  EXPECT_EQ(names(""), "");
  EXPECT_TRUE(File("none\\")->FindFiles("*").empty());
  EXPECT_EQ(File("")->FindFiles("a.*")[0]->FullName(), mFolder.Stored("a.qbp"));
}

TEST_F(FileSystemObjectTest, FindFiles_QuestionMarkIsOneCharacter) {
  mFolder.Write("ä.htm", "");
  EXPECT_EQ(File("")->FindFiles("?.htm").size(), 1U);
  EXPECT_EQ(File("")->FindFiles("??.htm").size(), 0U);
  EXPECT_EQ(File("")->FindFiles("Ä.*").size(), 1U);
}

TEST_F(FileSystemObjectTest, OpenInMemory_KeepsWhatIsWritten_UntilItIsTaken) {
  const auto file = File("a.txt");
  EXPECT_EQ(file->TakeText(), "");
  file->OpenInMemory();
  EXPECT_TRUE(file->IsOpen());
  file->WriteText("a");
  file->WriteLine("ä");
  EXPECT_EQ(file->TakeText(), "aä\n");
  EXPECT_EQ(file->TakeText(), "");
  EXPECT_EQ(NumberOfFailure([&] { file->OpenInMemory(); }), FailureNumber::FileAlreadyOpen);
  EXPECT_EQ(NumberOfFailure([&] { OpenShared(*file); }), FailureNumber::FileAlreadyOpen);
  file->Close();
  EXPECT_FALSE(file->IsOpen());
  EXPECT_FALSE(file->FileExists());
}

}  // namespace
}  // namespace quillbook
