#include "generation/CompilerFile.h"

#include <gtest/gtest.h>

#include <memory>

#include "quillbook/platform/Platform.h"
#include "support/MemoryRegistryStore.h"
#include "support/TemporaryFolder.h"

namespace quillbook {
namespace {

constexpr auto ShellKey = "SOFTWARE\\Classes\\hhp\\shell\\open\\command";
constexpr auto UserKey = "Software\\Corvane\\Quillbook2";

class CompilerFileTest : public testing::Test {
 protected:
  void SetUser(std::string_view name, std::string_view value) {
    store->SetValue(RegistryHive::CurrentUser, UserKey, name, value);
  }
  void SetShell(std::string_view command) { store->SetValue(RegistryHive::LocalMachine, ShellKey, "", command); }
  /// Lets drive C: stand for a folder with the usual compiler in it.
  void InstallUsual() {
    folder.Write("c/program files/html help workshop/hhc.exe", "");
    store->SetValue(RegistryHive::CurrentUser, std::string(UserKey) + "\\Drives", "C", folder.Native("c").string());
  }

  std::shared_ptr<support::MemoryRegistryStore> store = std::make_shared<support::MemoryRegistryStore>();
  PlatformOverride<RegistryStore> registry{store};
  support::TemporaryFolder folder;
};

TEST_F(CompilerFileTest, IsEmpty_WhenThereIsNone) {
  EXPECT_EQ(GetCompilerFileName(ShellKey, true), "");
  SetShell("\"" + folder.Stored("hhw.exe") + "\" \"%1\"");
  SetUser("HHCPath", folder.Stored("hhc.exe"));
  EXPECT_EQ(GetCompilerFileName(ShellKey, true), "");
}

TEST_F(CompilerFileTest, UsersChoiceComesFirst_WithTheCompilersName) {
  InstallUsual();
  folder.Write("mine/hhw.exe", "");
  SetUser("HHCPath", folder.Stored("mine/hhw.exe"));
  EXPECT_EQ(GetCompilerFileName(ShellKey, true), folder.Stored("mine/hhc.exe"));
  SetUser("HCRTFPath", folder.Stored("mine/hhw.exe"));
  EXPECT_EQ(GetCompilerFileName(ShellKey, false), folder.Stored("mine/hcrtf.exe"));
}

TEST_F(CompilerFileTest, RegisteredProgramLeadsToTheCompilerBesideIt) {
  folder.Write("shop/hhw.exe", "");
  SetShell("\"" + folder.Stored("shop/hhw.exe") + "\" \"%1\"");
  EXPECT_EQ(GetCompilerFileName(ShellKey, true), "");  // the compiler itself has to be there
  folder.Write("shop/hhc.exe", "");
  EXPECT_EQ(GetCompilerFileName(ShellKey, true), folder.Stored("shop/hhc.exe"));
}

TEST_F(CompilerFileTest, UsualPlaceWinsOverTheRegisteredProgram_AlsoForTheOlderFormat) {
  folder.Write("shop/hhc.exe", "");
  folder.Write("shop/hcrtf.exe", "");
  SetShell(folder.Stored("shop/hhc.exe"));
  EXPECT_EQ(GetCompilerFileName(ShellKey, false), folder.Stored("shop/hcrtf.exe"));
  InstallUsual();
  EXPECT_EQ(GetCompilerFileName(ShellKey, true), "c:\\program files\\html help workshop\\hhc.exe");
  EXPECT_EQ(GetCompilerFileName(ShellKey, false), "c:\\program files\\html help workshop\\hhc.exe");
}

}  // namespace
}  // namespace quillbook
