#include "quillbook/frame/services/PathHelper.h"

#include <gtest/gtest.h>

#include "quillbook/base/Collection.h"

namespace quillbook {
namespace {

std::string Relative(std::string_view base, std::string_view target) {
  return PathHelper::RelativePath(New<FileSystemObject>(base), New<FileSystemObject>(target));
}

std::string Absolute(std::string_view base, std::string_view target) {
  return PathHelper::AbsolutePath(New<FileSystemObject>(base), New<FileSystemObject>(target));
}

constexpr std::string_view project = "\\home\\ann\\help\\a.qbp";

TEST(PathHelper, RelativePath_GoesDownAndUp) {
  EXPECT_EQ(Relative(project, "\\home\\ann\\help\\b.htm"), "b.htm");
  EXPECT_EQ(Relative(project, "\\home\\ann\\help\\images\\b.png"), "images\\b.png");
  EXPECT_EQ(Relative(project, "\\home\\ann\\other\\b.htm"), "..\\other\\b.htm");
  EXPECT_EQ(Relative(project, "\\usr\\share\\b.htm"), "..\\..\\..\\usr\\share\\b.htm");
  EXPECT_EQ(Relative("\\a.qbp", "\\b.htm"), "b.htm");
}

TEST(PathHelper, RelativePath_OfFoldersKeepsTheirMark) {
  EXPECT_EQ(Relative(project, "\\home\\ann\\help\\Build\\Web\\"), "Build\\Web\\");
  EXPECT_EQ(Relative(project, "\\home\\ann\\help\\"), ".\\");
  EXPECT_EQ(Relative(project, "\\home\\ann\\"), "..\\");
  EXPECT_EQ(Relative(project, "\\"), "..\\..\\..\\");
}

TEST(PathHelper, RelativePath_IgnoresCaseOfFolders) {
  EXPECT_EQ(Relative(project, "\\HOME\\Ann\\HELP\\Images\\B.png"), "Images\\B.png");
  EXPECT_EQ(Relative("c:\\help\\a.qbp", "C:\\Help\\b.htm"), "b.htm");
}

TEST(PathHelper, RelativePath_OfAFileCalledLikeTheFolder) {
  EXPECT_EQ(Relative(project, "\\home\\ann\\help"), "..\\help");
}

TEST(PathHelper, RelativePath_OnAnotherDriveStaysAbsolute) {
  EXPECT_EQ(Relative(project, "C:\\help\\b.htm"), "C:\\help\\b.htm");
  EXPECT_EQ(Relative("C:\\help\\a.qbp", "D:\\help\\b.htm"), "D:\\help\\b.htm");
  EXPECT_EQ(Relative("\\\\server\\one\\a.qbp", "\\\\server\\two\\b.htm"), "\\\\server\\two\\b.htm");
  EXPECT_EQ(Relative("\\\\server\\one\\a.qbp", "\\\\SERVER\\One\\x\\b.htm"), "x\\b.htm");
}

TEST(PathHelper, RelativePath_WithoutBaseOrTarget) {
  EXPECT_EQ(Relative("", "\\home\\b.htm"), "\\home\\b.htm");
  EXPECT_EQ(Relative(project, ""), "");
  EXPECT_EQ(Relative(project, "images\\..\\b.htm"), "b.htm");
}

TEST(PathHelper, AbsolutePath_ResolvesAgainstTheFolder) {
  EXPECT_EQ(Absolute(project, "images\\b.png"), "\\home\\ann\\help\\images\\b.png");
  EXPECT_EQ(Absolute(project, "..\\b.htm"), "\\home\\ann\\b.htm");
  EXPECT_EQ(Absolute(project, "..\\..\\..\\..\\..\\b.htm"), "\\b.htm");
  EXPECT_EQ(Absolute(project, "Build\\Web\\"), "\\home\\ann\\help\\Build\\Web\\");
  EXPECT_EQ(Absolute(project, ".\\"), "\\home\\ann\\help\\");
  EXPECT_EQ(Absolute(project, ".."), "\\home\\ann\\");
  EXPECT_EQ(Absolute("C:\\help\\a.qbp", "x/y.htm"), "C:\\help\\x\\y.htm");
}

TEST(PathHelper, AbsolutePath_LeavesAbsoluteAndEmptyTargets) {
  EXPECT_EQ(Absolute(project, "\\x\\..\\y.htm"), "\\x\\..\\y.htm");
  EXPECT_EQ(Absolute(project, "C:\\x.htm"), "C:\\x.htm");
  EXPECT_EQ(Absolute(project, ""), "");
  EXPECT_EQ(Absolute("", "images\\b.png"), "images\\b.png");
}

TEST(PathHelper, RelativeAndAbsolute_AreReverse) {
  for (const std::string_view target : {"\\home\\ann\\help\\Build\\", "\\home\\ann\\help\\", "\\", "\\home\\ann\\x.htm",
                                        "\\home\\ann\\help\\a b\\c.d.e", "\\home\\", "\\other\\folder\\f"})
    EXPECT_EQ(Absolute(project, Relative(project, target)), target);
}

TEST(PathHelper, IsOfType_TestsTheClassIgnoringCase) {
  const Ref<Object> item = New<FileSystemObject>();
  EXPECT_TRUE(PathHelper::IsOfType(item, "FileSystemObject"));
  EXPECT_TRUE(PathHelper::IsOfType(item, "filesystemobject"));
  EXPECT_FALSE(PathHelper::IsOfType(item, "Topic"));
  EXPECT_FALSE(PathHelper::IsOfType(nullptr, "FileSystemObject"));
}

}  // namespace
}  // namespace quillbook
