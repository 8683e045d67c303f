#include <gtest/gtest.h>

#include "quillbook/frame/Picture.h"
#include "quillbook/frame/Root.h"
#include "support/EnvironmentOverride.h"
#include "support/FailureLog.h"
#include "support/TemporaryFolder.h"

namespace quillbook {
namespace {

using support::EnvironmentOverride;

/// A desktop whose shared data stand in a folder of the test's own.
class FileToIconTest : public testing::Test {
 protected:
  void AddType(const std::string& type, const std::string& pattern, const std::string& content) {
    mGlobs += "50:" + type + ":" + pattern + "\n";
    mData.Write("mime/globs2", mGlobs);
    mData.Write("mime/" + type + ".xml", "<mime-type type='" + type + "'>" + content + "</mime-type>");
  }
  void AddTheme() const {
    mData.Write("icons/hicolor/index.theme",
                "[Icon Theme]\nDirectories=16x16/m,32x32/m\n[16x16/m]\nSize=16\n[32x32/m]\nSize=32\n");
  }
  std::string TypeOf(std::string_view filename) const {
    std::string type = "before";
    (void)root->FileToIcon(filename, true, 0, &type);
    return type;
  }

  support::TemporaryFolder mData;
  support::TemporaryFolder mFiles;
  EnvironmentOverride mHome{"HOME", mData / "home"};
  EnvironmentOverride mConfiguration{"XDG_CONFIG_HOME", std::nullopt};
  EnvironmentOverride mOwnData{"XDG_DATA_HOME", std::nullopt};
  EnvironmentOverride mSharedData{"XDG_DATA_DIRS", mData.Path()};
  EnvironmentOverride mLocale{"LC_ALL", "C"};
  std::string mGlobs;
  support::FailureLog failures;
  Ref<Root> root = New<Root>();
};

TEST_F(FileToIconTest, GivesTheDesktopsIconAndTypeName) {
  AddType("text/html", "*.htm", "<comment> HTML document </comment>");
  AddTheme();
  mData.Write("icons/hicolor/16x16/m/text-html.png", "small");
  mData.Write("icons/hicolor/32x32/m/text-html.png", "large");
  std::string type;
  const auto small = root->FileToIcon("c:\\help\\A.HTM", true, 0x123456, &type, 0x654321);
  EXPECT_EQ(type, "HTML document") << "without blanks around it";
  EXPECT_EQ(small->Width(), 16);
  EXPECT_EQ(small->Height(), 16);
  EXPECT_EQ(small->MaskColor(), 0x123456);
  EXPECT_EQ(small->BackColor(), 0x654321);
  EXPECT_EQ(small->Image(), "small");
  EXPECT_EQ(small->Filename(), mData.Stored("icons/hicolor/16x16/m/text-html.png"));
  const auto large = root->FileToIcon("a.htm", false);
  EXPECT_EQ(large->Width(), 32);
  EXPECT_EQ(large->Image(), "large");
  EXPECT_EQ(large->MaskColor(), 16711935);
  EXPECT_EQ(large->BackColor(), -2147483643);
  EXPECT_EQ(large->Member("Width").ToLong(), 32);
}

TEST_F(FileToIconTest, TypeName_ComesInTheUsersLanguage) {
  const EnvironmentOverride locale("LC_ALL", "de_AT.UTF-8");
  AddType("text/html", "*.htm", "<comment>HTML document</comment><comment xml:lang='de'>HTML-Dokument</comment>");
  EXPECT_EQ(TypeOf("a.htm"), "HTML-Dokument");
}

TEST_F(FileToIconTest, WithoutData_ThePictureIsEmpty_AndTheTypeIsCalledByTheEnding) {
  const auto picture = root->FileToIcon("topics\\a.txt", false);
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture->Width(), 32);
  EXPECT_EQ(picture->Image(), "");
  EXPECT_EQ(picture->Filename(), "");
  EXPECT_EQ(TypeOf("topics\\a.txt"), "TXT file");
  EXPECT_EQ(TypeOf("a.b.\u00E9t\u00E9"), "\u00C9T\u00C9 file");
  EXPECT_EQ(TypeOf("README"), "File");
  EXPECT_EQ(TypeOf("dot."), "File");
  EXPECT_EQ(TypeOf("some.folder\\file"), "File") << "the ending of the folder is none of the file";
  EXPECT_EQ(failures.Take(), std::vector<std::string>());
}

TEST_F(FileToIconTest, AnEmptyName_HasNoType) {
  EXPECT_EQ(TypeOf(""), "");
  EXPECT_EQ(root->FileToIcon("")->Width(), 16);
}

TEST_F(FileToIconTest, ATypeWithoutADescription_IsCalledByTheEnding) {
  mData.Write("mime/globs2", "50:text/x-thing:*.thing\n");
  AddTheme();
  mData.Write("icons/hicolor/16x16/m/text-x-generic.png", "generic");
  EXPECT_EQ(TypeOf("a.thing"), "THING file");
  EXPECT_EQ(root->FileToIcon("a.thing")->Image(), "generic");
}

TEST_F(FileToIconTest, AFolder_HasTheIconOfFolders_WhateverItIsCalled) {
  AddType("text/html", "*.htm", "<comment>HTML document</comment>");
  mFiles.Write("folder.htm/file", "");
  EXPECT_EQ(TypeOf(mFiles.Stored("folder.htm")), "Folder");
  EXPECT_EQ(TypeOf(mFiles.Stored("missing\\")), "Folder");
  AddType("inode/directory", "none", "<comment>folder</comment><generic-icon name='folder'/>");
  AddTheme();
  mData.Write("icons/hicolor/16x16/m/folder.png", "folder icon");
  root = nullptr;
  root = New<Root>();
  EXPECT_EQ(TypeOf(mFiles.Stored("folder.htm")), "folder");
  EXPECT_EQ(root->FileToIcon(mFiles.Stored("folder.htm"))->Image(), "folder icon");
}

TEST_F(FileToIconTest, WhatTheDesktopKnows_IsKeptUntilTheLastRootGoes) {
  EXPECT_EQ(TypeOf("a.htm"), "HTM file");
  AddType("text/html", "*.htm", "<comment>HTML document</comment>");
  EXPECT_EQ(TypeOf("a.htm"), "HTM file");
  root = nullptr;
  root = New<Root>();
  EXPECT_EQ(TypeOf("a.htm"), "HTML document");
}

TEST_F(FileToIconTest, ThemeOfTheUser_GoesBeforeHicolor) {
  const EnvironmentOverride configuration("XDG_CONFIG_HOME", mData / "config");
  mData.Write("config/gtk-3.0/settings.ini", "[Settings]\ngtk-icon-theme-name=mine\n");
  AddType("text/html", "*.htm", "");
  AddTheme();
  mData.Write("icons/hicolor/16x16/m/text-html.png", "hicolor");
  mData.Write("icons/mine/index.theme", "[Icon Theme]\nDirectories=s\n[s]\nSize=48\nType=Scalable\nMinSize=8\n");
  mData.Write("icons/mine/s/text-html.svg", "<svg/>");
  const auto picture = root->FileToIcon("a.htm");
  EXPECT_EQ(picture->Image(), "<svg/>");
  EXPECT_EQ(picture->Width(), 16) << "the canvas has the size that was asked for";
}

TEST_F(FileToIconTest, APictureThatCantBeRead_IsAsGoodAsMissing) {
  AddType("text/html", "*.htm", "<comment>HTML document</comment>");
  AddTheme();
  std::filesystem::create_directories(mData.Native("icons/hicolor/16x16/m/text-html.png"));
  const auto picture = root->FileToIcon("a.htm");
  EXPECT_EQ(picture->Image(), "");
  EXPECT_EQ(picture->Filename(), "");
  EXPECT_EQ(failures.Take(), std::vector<std::string>());
}

}  // namespace
}  // namespace quillbook
