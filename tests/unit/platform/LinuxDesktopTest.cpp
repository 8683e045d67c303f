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

TEST(LinuxDesktop, DataFoldersFollowTheEnvironment_TheUsersOwnFirst) {
  const EnvironmentOverride own("XDG_DATA_HOME", "/own/");
  const EnvironmentOverride shared("XDG_DATA_DIRS", "/a:relative::/b/");
  EXPECT_EQ(LinuxDesktop().DataFolders(), (std::vector<std::string>{"/own", "/a", "/b"}));
}

TEST(LinuxDesktop, DataFoldersHaveUsualPlaces) {
  const EnvironmentOverride home("HOME", "/home/ann");
  const EnvironmentOverride own("XDG_DATA_HOME", "relative");
  const EnvironmentOverride shared("XDG_DATA_DIRS", "");
  EXPECT_EQ(LinuxDesktop().DataFolders(),
            (std::vector<std::string>{"/home/ann/.local/share", "/usr/local/share", "/usr/share"}));
}

class DesktopLanguages : public testing::Test {
 protected:
  using Names = std::vector<std::string>;
  Names Languages() const { return LinuxDesktop().Languages(); }

  EnvironmentOverride mList{"LANGUAGE", std::nullopt};
  EnvironmentOverride mAll{"LC_ALL", std::nullopt};
  EnvironmentOverride mMessages{"LC_MESSAGES", std::nullopt};
  EnvironmentOverride mLang{"LANG", "de_CH.UTF-8"};
};

TEST_F(DesktopLanguages, GoFromTheMostParticularToTheLanguage) {
  EXPECT_EQ(Languages(), (Names{"de_CH", "de"}));
  const EnvironmentOverride messages("LC_MESSAGES", "sr_RS.UTF-8@latin");
  EXPECT_EQ(Languages(), (Names{"sr_RS@latin", "sr_RS", "sr@latin", "sr"}));
  const EnvironmentOverride all("LC_ALL", "fr");
  EXPECT_EQ(Languages(), Names{"fr"});
}

TEST_F(DesktopLanguages, ListGoesBeforeTheLocale) {
  const EnvironmentOverride list("LANGUAGE", "pt_BR::en:fr");
  EXPECT_EQ(Languages(), (Names{"pt_BR", "pt", "en", "fr"}));
}

TEST_F(DesktopLanguages, AreNone_WithoutALocale) {
  const EnvironmentOverride list("LANGUAGE", "fr");
  for (const char* none : {"C", "C.UTF-8", "POSIX", ""}) {
    const EnvironmentOverride lang("LANG", none);
    EXPECT_EQ(Languages(), Names{}) << none;
  }
}

TEST(LinuxDesktop, IconThemeComesFromTheSettingsOfAToolkit) {
  const support::TemporaryFolder folder;
  const EnvironmentOverride configuration("XDG_CONFIG_HOME", folder.Path());
  EXPECT_EQ(LinuxDesktop().IconTheme(), "");
  folder.Write("kdeglobals", "[General]\nTheme=no\n[Icons]\nTheme=breeze\n");
  EXPECT_EQ(LinuxDesktop().IconTheme(), "breeze");
  folder.Write("gtk-3.0/settings.ini", "[Settings]\ngtk-icon-theme-name = Papirus\n");
  EXPECT_EQ(LinuxDesktop().IconTheme(), "Papirus");
  folder.Write("gtk-4.0/settings.ini", "[Settings]\ngtk-theme-name=Other\n");
  EXPECT_EQ(LinuxDesktop().IconTheme(), "Papirus") << "the newer file doesn't name one";
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

}  // namespace
}  // namespace quillbook
