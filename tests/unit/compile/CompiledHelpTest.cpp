#include "quillbook/host/CompiledHelp.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "host/compile/HelpOutput.h"
#include "quillbook/base/Failure.h"
#include "quillbook/host/HelpCompilation.h"
#include "support/TemporaryFolder.h"

namespace quillbook {
namespace {

using compile::CompileHelp;
using compile::CompileReport;

class CompiledHelpFile : public testing::Test {
 protected:
  /// A container with files of any names.
  std::string Pack(const std::vector<std::pair<std::string, std::string>>& files) {
    const auto path = mFolder / "made.chm";
    compile::HelpOutput output(path);
    for (const auto& [name, bytes] : files) output.AddFile(name, bytes);
    output.Finish(compile::StorageReader::Format::HtmlHelp1, 0, 0x409);
    output.Publish();
    return path;
  }
  static FailureNumber FailureOfExtraction(const std::string& file, const std::string& folder) {
    try {
      (void)CompiledHelp(file).Extract(folder);
    } catch (const Failure& failure) {
      return failure.Number();
    }
    return FailureNumber::None;
  }

  support::TemporaryFolder mFolder;
};

TEST_F(CompiledHelpFile, Chm_TellsWhatWentIn) {
  mFolder.Write(
      "p.hhp",
      "[OPTIONS]\nTitle=\xCF\xF0\nLanguage=0x419\nContents file=t.hhc\nIndex file=t.hhk\nFull-text search=Yes\n"
      "[FILES]\nsub/a.htm\n");
  mFolder.Write("sub/a.htm", "<title>A</title>text");
  mFolder.Write("t.hhc",
                "<UL><LI><OBJECT type=\"text/sitemap\"><param name=\"Name\" value=\"Book\"></OBJECT><UL><LI><OBJECT "
                "type=\"text/sitemap\"><param name=\"Name\" value=\"\xCF\"><param name=\"Local\" value=\"sub/a.htm\">"
                "</OBJECT></UL></UL>");
  mFolder.Write(
      "t.hhk",
      "<UL><LI><OBJECT type=\"text/sitemap\"><param name=\"Name\" value=\"k\"><param name=\"Name\" value=\"T\">"
      "<param name=\"Local\" value=\"sub/a.htm#x\"></OBJECT><LI><OBJECT type=\"text/sitemap\"><param "
      "name=\"Name\" value=\"z\"><param name=\"See Also\" value=\"k\"></OBJECT></UL>");
  ASSERT_EQ(CompileHelp({mFolder / "p.hhp", {}, false}).outcome, CompileReport::Outcome::Made);
  const CompiledHelp help(mFolder / "p.chm");
  EXPECT_EQ(help.GetFormat(), CompiledHelp::Format::HtmlHelp1);
  EXPECT_EQ(help.Title(), "\xD0\x9F\xD1\x80");
  EXPECT_EQ(help.LocaleId(), 0x419u);
  EXPECT_EQ(help.CodePage(), 1251);
  EXPECT_EQ(help.DefaultTopic(), "sub/a.htm");
  EXPECT_TRUE(help.HasFullTextSearch());
  ASSERT_EQ(help.Contents().size(), 2u);
  EXPECT_EQ(help.Contents()[1].level, 1);
  EXPECT_EQ(help.Contents()[1].title, "\xD0\x9F");
  ASSERT_EQ(help.Index().size(), 2u);
  EXPECT_EQ(help.Index()[0].targets.at(0).title, "T");
  EXPECT_EQ(help.Index()[1].seeAlso, "k");
  EXPECT_TRUE(help.Problems().empty());
  EXPECT_EQ(help.Extract(mFolder / "x"), 3u);
  EXPECT_EQ(mFolder.Read("x/sub/a.htm"), "<title>A</title>text");
  EXPECT_FALSE(mFolder.Has("x/#SYSTEM"));
}

TEST_F(CompiledHelpFile, Hxs_TellsWhatWentIn) {
  mFolder.Write("c.HxC",
                "<?xml version=\"1.0\"?><HelpCollection DTDVersion=\"1.0\" LangId=\"1031\" Title=\"T &amp; U\">"
                "<CompilerOptions OutputFile=\"made\\out.HxS\"><IncludeFile File=\"c.HxF\"/></CompilerOptions>"
                "<TOCDef File=\"c.HxT\"/><KeywordIndexDef File=\"k.HxK\"/></HelpCollection>");
  mFolder.Write("c.HxF", "<HelpFileList><File Url=\"html\\*.htm\"/><File Url=\"pic.gif\"/></HelpFileList>");
  mFolder.Write("c.HxT",
                "<HelpTOC><HelpTOCNode Title=\"Book\"><HelpTOCNode Title=\"A\" Url=\"html\\a.htm\"/></HelpTOCNode>"
                "<HelpTOCNode Title=\"B\" Url=\"html\\b.htm\"/></HelpTOC>");
  mFolder.Write("k.HxK",
                "<HelpIndex Name=\"K\"><Keyword Term=\"one\"><Jump Url=\"html\\b.htm\"/></Keyword></HelpIndex>");
  mFolder.Write("html/a.htm", "page a");
  mFolder.Write("html/b.htm", "page b");
  mFolder.Write("html/c.txt", "not listed");
  mFolder.Write("pic.gif", "GIF");
  mFolder.Write("made/old", "");
  const auto report = CompileHelp({mFolder / "c.HxC", {}, false});
  ASSERT_EQ(report.outcome, CompileReport::Outcome::Made);
  EXPECT_EQ(report.pages, 2u);
  const CompiledHelp help(mFolder / "made/out.HxS");
  EXPECT_EQ(help.GetFormat(), CompiledHelp::Format::Help2);
  EXPECT_EQ(help.Title(), "T & U");
  EXPECT_EQ(help.LocaleId(), 1031u);
  ASSERT_EQ(help.Contents().size(), 3u);
  EXPECT_EQ(help.Contents()[1].level, 1);
  EXPECT_EQ(help.Contents()[2].level, 0);
  ASSERT_EQ(help.Index().size(), 1u);
  EXPECT_EQ(help.Index()[0].targets.at(0).page, "html\\b.htm");
  EXPECT_TRUE(help.Problems().empty());
  EXPECT_EQ(help.Extract(mFolder / "x"), 7u);
  EXPECT_EQ(mFolder.Read("x/html/b.htm"), "page b");
  EXPECT_FALSE(mFolder.Has("x/html/c.txt"));
}

TEST_F(CompiledHelpFile, Hxs_HoldsWhatItsPagesAndStyleSheetsName) {
  mFolder.Write("c.HxC", "<HelpCollection><TOCDef File=\"c.HxT\"/></HelpCollection>");
  mFolder.Write("c.HxT", "<HelpTOC><HelpTOCNode Title=\"A\" Url=\"html\\a.htm\"/></HelpTOC>");
  mFolder.Write("html/a.htm", "<link href=../look.css rel=stylesheet>\n <a href=b.htm>b</a> <img src=gone.gif>");
  mFolder.Write("html/b.htm", "page b <a href='http://example.com/'>far</a>");
  mFolder.Write("look.css", "p { background: url(pic.gif) }");
  mFolder.Write("pic.gif", "GIF");
  const auto report = CompileHelp({mFolder / "c.HxC", {}, false});
  ASSERT_EQ(report.outcome, CompileReport::Outcome::Made);
  EXPECT_EQ(report.files, 6u);
  EXPECT_EQ(report.pages, 2u);
  ASSERT_EQ(report.messages.Warnings(), 1u);
  EXPECT_EQ(report.messages.All()[0].ToLine(),
            (mFolder / "html/a.htm") + ":2:22: warning HC3003: There is no file 'html/gone.gif'");
  EXPECT_EQ(CompiledHelp(mFolder / "c.HxS").Extract(mFolder / "x"), 6u);
  EXPECT_EQ(mFolder.Read("x/pic.gif"), "GIF");
}

TEST_F(CompiledHelpFile, MessagesOnHxsSources_TellLineAndColumn) {
  mFolder.Write("c.HxC",
                "<HelpCollection>\n<CompilerOptions>\n<IncludeFile File=\"c.HxF\"/></CompilerOptions>\n"
                "<TOCDef File=\"c.HxT\"/><KeywordIndexDef File=\"k.HxK\"/>\n <AttributeDef File=\"gone.HxA\"/>"
                "</HelpCollection>");
  mFolder.Write("c.HxF", "<HelpFileList>\n<File Url=\"none.gif\"/><File Url=\"x\\*.gif\"/></HelpFileList>");
  mFolder.Write("c.HxT",
                "<HelpTOC>\n\n<HelpTOCNode\n Url=\"none.htm\" Title=\"\xC3\xA9\"/><HelpTOCNode Title=\"B\" "
                "Url=\"../b.htm\"/></HelpTOC>");
  mFolder.Write("k.HxK", "<HelpIndex Name=\"K\">\n<Keyword Term=\"one\"><Jump Url=\"no.htm\"/></Keyword></HelpIndex>");
  const auto report = CompileHelp({mFolder / "c.HxC", {}, false});
  std::string lines;
  for (const auto& message : report.messages.All()) lines += message.ToLine().substr(mFolder.Path().size() + 1) + "\n";
  EXPECT_EQ(lines,
            "c.HxC:5:22: error HC3003: There is no file 'gone.HxA'\n"
            "c.HxF:2:12: error HC3003: There is no file 'none.gif'\n"
            "c.HxF:2:34: warning HC3003: No file fits 'x/*.gif'\n"
            "c.HxT:4:7: warning HC3003: There is no file 'none.htm'\n"
            "c.HxT:4:56: error HC3001: '../b.htm' lies outside the project's folder\n"
            "k.HxK:2:32: warning HC3003: There is no file 'no.htm'\n");
}

TEST_F(CompiledHelpFile, HxsInALanguageThatNobodyKnows_IsMadeWithAWarning) {
  for (const char* language : {"English", "0", "-1", "39321"}) {
    mFolder.Write("c.HxC", "<HelpCollection\n LangId=\"" + std::string(language) + "\"/>");
    const auto report = CompileHelp({mFolder / "c.HxC", {}, false});
    EXPECT_EQ(report.outcome, CompileReport::Outcome::Made);
    ASSERT_EQ(report.messages.All().size(), 1u) << language;
    EXPECT_EQ(report.messages.All()[0].code, "HC1013");
    EXPECT_EQ(report.messages.All()[0].line, 2);
    EXPECT_EQ(report.messages.All()[0].column, 10);
  }
}

TEST_F(CompiledHelpFile, HxsWithMissingFile_IsNotMade) {
  mFolder.Write("c.HxC", "<HelpCollection><TOCDef File=\"gone.HxT\"/></HelpCollection>");
  const auto report = CompileHelp({mFolder / "c.HxC", {}, false});
  EXPECT_EQ(report.outcome, CompileReport::Outcome::Failed);
  EXPECT_EQ(report.messages.All().at(0).code, "HC3003");
  mFolder.Write("d.HxC", "<Other/>");
  EXPECT_EQ(CompileHelp({mFolder / "d.HxC", {}, false}).outcome, CompileReport::Outcome::Unreadable);
}

TEST_F(CompiledHelpFile, NamesThatLeadOutside_AreRefused) {
  for (const char* name : {"/../evil", "/a/../../evil", "//evil", "/..\\evil", "/./evil"}) {
    const auto file = Pack({{name, "x"}});
    EXPECT_EQ(FailureOfExtraction(file, mFolder / "x"), FailureNumber::BadFileName) << name;
  }
  EXPECT_FALSE(mFolder.Has("evil"));
  EXPECT_TRUE(std::filesystem::is_empty(mFolder.Native("x")));
}

TEST_F(CompiledHelpFile, LinksInTheTargetFolder_AreNotFollowed) {
  std::filesystem::create_directories(mFolder.Native("x"));
  std::filesystem::create_directories(mFolder.Native("outside"));
  std::filesystem::create_symlink(mFolder / "outside", mFolder.Native("x/sub"));
  EXPECT_NE(FailureOfExtraction(Pack({{"/sub/evil", "x"}}), mFolder / "x"), FailureNumber::None);
  EXPECT_TRUE(std::filesystem::is_empty(mFolder.Native("outside")));
  mFolder.Write("precious", "old");
  std::filesystem::create_symlink(mFolder / "precious", mFolder.Native("x/link"));
  EXPECT_NE(FailureOfExtraction(Pack({{"/link", "new"}}), mFolder / "x"), FailureNumber::None);
  EXPECT_EQ(mFolder.Read("precious"), "old");
}

TEST_F(CompiledHelpFile, FilesThatShareTheirBytes_AreRefused) {
  constexpr std::size_t size = 0x100000;
  const auto file = Pack({{"/a", std::string(size, 'x')}, {"/b", "y"}});
  auto bytes = mFolder.Read("made.chm");
  // In the directory: section 1, offset 0x100000, length 1 becomes offset 0, length 0x100000.
  const std::string honest("\x02/b\x01\xC0\x80\x00\x01", 8);
  const std::string lying("\x02/b\x01\x00\xC0\x80\x00", 8);
  const auto at = bytes.find(honest);
  ASSERT_NE(at, std::string::npos);
  bytes.replace(at, honest.size(), lying);
  mFolder.Write("made.chm", bytes);
  EXPECT_EQ(FailureOfExtraction(file, mFolder / "x"), FailureNumber::InvalidCall);
  EXPECT_FALSE(mFolder.Has("x/a"));
}

TEST_F(CompiledHelpFile, OtherFiles_AreRefusedWithAReason) {
  mFolder.Write("page.htm", "<html>");
  EXPECT_THROW(CompiledHelp(mFolder / "page.htm"), Failure);
  EXPECT_THROW(CompiledHelp(mFolder / "none.chm"), Failure);
  EXPECT_THROW(CompiledHelp help(mFolder.Path()), Failure);
}

}  // namespace
}  // namespace quillbook
