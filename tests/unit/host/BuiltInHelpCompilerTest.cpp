#include "quillbook/host/BuiltInHelpCompiler.h"

#include <gtest/gtest.h>

#include "quillbook/host/CompiledHelp.h"
#include "support/TemporaryFolder.h"

namespace quillbook {
namespace {

class BuiltInHelpCompilerTest : public testing::Test {
 protected:
  void SetUp() override {
    mFolder.Write("p.hhp", "[OPTIONS]\r\nTitle=Help\r\n[FILES]\r\na.htm\r\n");
    mFolder.Write("c.HxC", "<HelpCollection Title=\"Help\"><TOCDef File=\"c.HxT\"/></HelpCollection>");
    mFolder.Write("c.HxT", "<HelpTOC><HelpTOCNode Title=\"A\" Url=\"a.htm\"/></HelpTOC>");
    mFolder.Write("a.htm", "<title>A</title>text");
  }
  HelpCompiler::Outcome Compile(int version, const std::string& project, const std::string& output) {
    return MakeBuiltInHelpCompiler(version)->Compile(mFolder.Stored(project), output, {});
  }

  support::TemporaryFolder mFolder;
};

TEST_F(BuiltInHelpCompilerTest, ThereIsOneForEachHelpVersion_AndNoneForOthers) {
  EXPECT_TRUE(MakeBuiltInHelpCompiler(1));
  EXPECT_TRUE(MakeBuiltInHelpCompiler(2));
  for (const int version : {-1, 0, 3}) EXPECT_FALSE(MakeBuiltInHelpCompiler(version)) << version;
}

TEST_F(BuiltInHelpCompilerTest, HelpFileIsMadeAtItsStoredPath_WithoutLog) {
  for (const auto& [version, project, file] : {std::tuple{1, "p.hhp", "out.chm"}, {2, "c.HxC", "out.hxs"}}) {
    const auto outcome = Compile(version, project, mFolder.Stored(file));
    EXPECT_EQ(outcome.Result, HelpCompileResult::Succeeded) << outcome.Log;
    EXPECT_EQ(outcome.Log, "");
    const CompiledHelp help(mFolder / file);
    EXPECT_EQ(help.Title(), "Help");
    EXPECT_EQ(help.GetFormat(), version == 1 ? CompiledHelp::Format::HtmlHelp1 : CompiledHelp::Format::Help2);
  }
}

TEST_F(BuiltInHelpCompilerTest, WithoutPathOfTheHelpFile_ItIsTheProjectsOwn) {
  EXPECT_EQ(Compile(1, "p.hhp", "").Result, HelpCompileResult::Succeeded);
  EXPECT_TRUE(mFolder.Has("p.chm"));
}

TEST_F(BuiltInHelpCompilerTest, WarningsAreInTheLog_ALineEach_AndTheHelpFileIsMade) {
  mFolder.Write("a.htm", "<a href=none.htm>x</a>\n<a href=gone.htm>y</a>");
  const auto outcome = Compile(1, "p.hhp", mFolder.Stored("out.chm"));
  EXPECT_EQ(outcome.Result, HelpCompileResult::Warnings);
  EXPECT_EQ(outcome.Log, mFolder / "a.htm" + ":1:1: warning HC3003: There is no file 'none.htm'\r\n" + mFolder.Path() +
                             "/a.htm:2:1: warning HC3003: There is no file 'gone.htm'\r\n");
  EXPECT_TRUE(mFolder.Has("out.chm"));
}

TEST_F(BuiltInHelpCompilerTest, NotesAreNoWarnings) {
  mFolder.Write("p.hhp", "[OPTIONS]\nTitle=Help\n[FILES]\nA.HTM\n");
  const auto outcome = Compile(1, "p.hhp", mFolder.Stored("out.chm"));
  EXPECT_EQ(outcome.Result, HelpCompileResult::Succeeded);
  EXPECT_EQ(outcome.Log, "");
}

TEST_F(BuiltInHelpCompilerTest, ErrorsAreInTheLog_AndTheOldHelpFileStays) {
  mFolder.Write("out.chm", "old");
  mFolder.Write("p.hhp", "[OPTIONS]\nTitle=Help\n[FILES]\nnone.htm\n");
  const auto outcome = Compile(1, "p.hhp", mFolder.Stored("out.chm"));
  EXPECT_EQ(outcome.Result, HelpCompileResult::Failed);
  EXPECT_EQ(outcome.Log, mFolder / "p.hhp" + ":4: error HC3003: There is no file 'none.htm'\r\n");
  EXPECT_EQ(mFolder.Read("out.chm"), "old");
}

TEST_F(BuiltInHelpCompilerTest, MissingProjectIsAFailure_NotAnException) {
  const auto outcome = Compile(1, "none.hhp", mFolder.Stored("out.chm"));
  EXPECT_EQ(outcome.Result, HelpCompileResult::Failed);
  EXPECT_NE(outcome.Log.find("HC1000"), std::string::npos) << outcome.Log;
  EXPECT_FALSE(mFolder.Has("out.chm"));
}

}  // namespace
}  // namespace quillbook
