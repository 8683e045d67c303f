#include "quillbook/platform/LinuxDesktop.h"

#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <thread>

#include "support/EnvironmentOverride.h"
#include "support/TemporaryFolder.h"

namespace quillbook {
namespace {

using support::EnvironmentOverride;

class DocumentsFolder : public testing::Test {
 protected:
  std::string Documents() const { return LinuxDesktop().SpecialFolder(Desktop::DocumentsFolder); }

  support::TemporaryFolder mHome;
  EnvironmentOverride mHomeVariable{"HOME", mHome.Path()};
  EnvironmentOverride mNoConfiguration{"XDG_CONFIG_HOME", std::nullopt};
};

TEST_F(DocumentsFolder, ComesFromTheUserDirectories) {
  mHome.Write(".config/user-dirs.dirs",
              "# comment\nXDG_DESKTOP_DIR=\"$HOME/Desk\"\nXDG_DOCUMENTS_DIR=\"$HOME/Papiere/\"\n");
  EXPECT_EQ(Documents(), mHome / "Papiere");
}

TEST_F(DocumentsFolder, MayBeAbsolute) {
  mHome.Write(".config/user-dirs.dirs", "XDG_DOCUMENTS_DIR=\"/data/docs\"\n");
  EXPECT_EQ(Documents(), "/data/docs");
}

TEST_F(DocumentsFolder, RelativeSettingDoesNotCount) {
  mHome.Write(".config/user-dirs.dirs", "XDG_DOCUMENTS_DIR=\"docs\"\n");
  EXPECT_EQ(Documents(), mHome.Path());
}

TEST_F(DocumentsFolder, IsDocumentsInTheHomeFolderElseTheHomeFolder) {
  EXPECT_EQ(Documents(), mHome.Path());
  mHome.Write("Documents/file", "");
  EXPECT_EQ(Documents(), mHome / "Documents");
}

TEST(LinuxDesktop, UnknownFolderIsEmpty) {
  EXPECT_EQ(LinuxDesktop().SpecialFolder(4711), "");
}

TEST(LinuxDesktop, UserNameIsTheAccounts) {
  EXPECT_EQ(LinuxDesktop().UserName(), ::getpwuid(::geteuid())->pw_name);
}

TEST(LinuxDesktop, HomeFolderWithoutVariableIsTheAccounts) {
  const EnvironmentOverride none("HOME", std::nullopt);
  EXPECT_EQ(LinuxDesktop::HomeFolder(), ::getpwuid(::geteuid())->pw_dir);
}

TEST(LinuxDesktop, TemporaryFolderFollowsTheEnvironment) {
  const EnvironmentOverride folder("TMPDIR", "/var/tmp/");
  EXPECT_EQ(LinuxDesktop().TemporaryFolder(), "/var/tmp");
  const EnvironmentOverride none("TMPDIR", std::nullopt);
  EXPECT_EQ(LinuxDesktop().TemporaryFolder(), "/tmp");
}

TEST(LinuxDesktop, OpenWithViewer_WithoutOpenerIsNoViewer) {
  EXPECT_EQ(LinuxDesktop("no-such-program-here").OpenWithViewer("a.chm"), Desktop::NoViewer);
  EXPECT_EQ(LinuxDesktop("/no/such/program").OpenWithViewer("a.chm"), 31);
}

TEST(LinuxDesktop, OpenWithViewer_HandsTheTargetOver) {
  const support::TemporaryFolder folder;
  folder.Write("opener", "#!/bin/sh\nprintf '%s' \"$1\" > \"" + (folder / "seen.part") + "\"\nmv \"" +
                             (folder / "seen.part") + "\" \"" + (folder / "seen") + "\"\n");
  ::chmod((folder / "opener").c_str(), 0755);
  const EnvironmentOverride path("PATH", folder.Path() + ":/usr/bin:/bin");
  EXPECT_EQ(LinuxDesktop("opener").OpenWithViewer("-a file; rm.html"), Desktop::Opened);
  for (int i = 0; i < 500 && !folder.Has("seen"); ++i) std::this_thread::sleep_for(std::chrono::milliseconds(10));
  EXPECT_EQ(folder.Read("seen"), "./-a file; rm.html");
}

TEST(LinuxDesktop, StartProgram_WithoutTheProgramIsNoViewer) {
  EXPECT_EQ(LinuxDesktop().StartProgram("no-such-program-here", "/x"), Desktop::NoViewer);
}

TEST(LinuxDesktop, StartProgram_SplitsItsParameters) {
  const support::TemporaryFolder folder;
  folder.Write("program", "#!/bin/sh\nprintf '<%s>' \"$@\" > \"" + (folder / "seen.part") + "\"\nmv \"" +
                              (folder / "seen.part") + "\" \"" + (folder / "seen") + "\"\n");
  ::chmod((folder / "program").c_str(), 0755);
  const EnvironmentOverride path("PATH", folder.Path() + ":/usr/bin:/bin");
  EXPECT_EQ(LinuxDesktop().StartProgram("program", "/helpcol  \"ms-help://My Help\" a\"b c\"d \"\""), Desktop::Opened);
  for (int i = 0; i < 500 && !folder.Has("seen"); ++i) std::this_thread::sleep_for(std::chrono::milliseconds(10));
  EXPECT_EQ(folder.Read("seen"), "</helpcol><ms-help://My Help><ab cd><>");
}

TEST(LinuxDesktop, ClipboardFormatsHaveStableNumbers) {
  LinuxDesktop desktop;
  const int data = desktop.RegisterClipboardFormat("#Quillbook.Data#");
  const int type = desktop.RegisterClipboardFormat("#Quillbook.Type#");
  EXPECT_NE(data, type);
  EXPECT_GE(data, 0xC000);
  EXPECT_EQ(LinuxDesktop().RegisterClipboardFormat("#QUILLBOOK.DATA#"), data);
}

}  // namespace
}  // namespace quillbook
