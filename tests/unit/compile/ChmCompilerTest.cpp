#include "host/compile/ChmCompiler.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "host/compile/Bytes.h"
#include "host/compile/ChmTables.h"
#include "host/compile/FileBytes.h"
#include "quillbook/base/CodePage.h"
#include "quillbook/platform/Platform.h"
#include "support/FaultyFileStore.h"
#include "support/TemporaryFolder.h"

namespace quillbook::compile {
namespace {

std::string Item(const std::string& name, const std::string& local) {
  return "<LI><OBJECT type=\"text/sitemap\"><param name=\"Name\" value=\"" + name + "\">" +
         (local.empty() ? "" : "<param name=\"Local\" value=\"" + local + "\">") + "</OBJECT>\n";
}

class Compile : public testing::Test {
 protected:
  void WriteProject(const std::string& options, const std::string& rest = "[FILES]\na.htm\nsub/b.htm\n") {
    mFolder.Write("p.hhp", "[OPTIONS]\nContents file=t.hhc\nIndex file=t.hhk\nTitle=Help\nBinary TOC=Yes\n" + options +
                               "\n" + rest);
  }
  void SetUp() override {
    WriteProject("Full-text search=Yes");
    mFolder.Write("a.htm", "<html><head><title>Page A</title></head><body>alpha <a href='sub/c.htm'>c</a></body>");
    mFolder.Write("sub/b.htm", "<title>Page B</title><p>beta<script>var gamma;</script><img src=\"../pic.gif\">");
    mFolder.Write("sub/c.htm", "<title>Page C</title>delta");
    mFolder.Write("pic.gif", "GIF89a");
    mFolder.Write("t.hhc",
                  "<UL>" + Item("Start", "a.htm") + Item("Book", "") + "<UL>" + Item("B", "sub\\b.htm") + "</UL></UL>");
    mFolder.Write("t.hhk", "<UL>" + Item("key", "a.htm") + "<UL>" + Item("sub", "sub/b.htm#x") + "</UL></UL>");
  }
  CompileReport Run(bool strict = false) { return CompileChm({mFolder / "p.hhp", mFolder / "out.chm", strict}); }
  std::string Codes(const CompileReport& report) {
    std::string codes;
    for (const auto& message : report.messages.All())
      codes += message.code + ":" + std::to_string(message.line) + ":" + std::to_string(message.column) + " ";
    return codes;
  }
  std::string Output() { return mFolder.Read("out.chm"); }
  /// Content of a file inside the help file; "(none)" if it isn't there.
  std::string Inner(const std::string& name) {
    const FileSource source(mFolder / "out.chm");
    const StorageReader reader(source);
    const auto* entry = reader.Find(name);
    return entry ? reader.ReadAll(*entry) : "(none)";
  }

  support::TemporaryFolder mFolder;
};

TEST_F(Compile, Files_AreStoredWithThoseThatPagesName) {
  const auto report = Run();
  EXPECT_EQ(report.outcome, CompileReport::Outcome::Made) << Codes(report);
  EXPECT_EQ(Codes(report), "");
  EXPECT_EQ(report.pages, 3u);
  EXPECT_EQ(Inner("/sub/c.htm"), "<title>Page C</title>delta");
  EXPECT_EQ(Inner("/PIC.GIF"), "GIF89a");
  EXPECT_EQ(Inner("/t.hhc"), mFolder.Read("t.hhc"));
  EXPECT_EQ(Inner("/p.hhp"), "(none)");
}

TEST_F(Compile, Tables_TellContentsAndIndex) {
  ASSERT_EQ(Run().outcome, CompileReport::Outcome::Made);
  const FileSource source(mFolder / "out.chm");
  const StorageReader reader(source);
  ChmTables tables(reader, 1252);
  const auto contents = tables.ReadContents().entries;
  ASSERT_EQ(contents.size(), 3u);
  EXPECT_EQ(contents[0].name, "Start");
  EXPECT_EQ(contents[2].level, 1);
  EXPECT_EQ(contents[2].targets[0].local, "sub/b.htm");
  const auto index = tables.ReadKeywords("/$WWKeywordLinks/");
  ASSERT_EQ(index.size(), 2u);
  EXPECT_EQ(index[1].name, "sub");
  EXPECT_EQ(index[1].level, 1);
  EXPECT_EQ(tables.TopicAt(index[1].topics.at(0)).local, "sub/b.htm#x");
  auto records = ReadSystemRecords(reader);
  EXPECT_EQ(records[2], std::string("a.htm\0", 6)) << "the first page is the default";
  EXPECT_EQ(records[6], std::string("out\0", 4));
  EXPECT_EQ(records[13].size(), 4096u);
  EXPECT_EQ(GetDword(records[4], 8), 1u) << "full-text search";
}

TEST_F(Compile, SameProject_GivesTheSameBytes_WhateverTheOrderOfCreation) {
  ASSERT_EQ(Run().outcome, CompileReport::Outcome::Made);
  const auto first = Output();
  const support::TemporaryFolder other;
  for (const char* name : {"t.hhk", "t.hhc", "pic.gif", "sub/c.htm", "sub/b.htm", "a.htm", "p.hhp"})
    other.Write(name, mFolder.Read(name));
  ASSERT_EQ(CompileChm({other / "p.hhp", other / "out.chm", false}).outcome, CompileReport::Outcome::Made);
  EXPECT_TRUE(other.Read("out.chm") == first);
}

TEST_F(Compile, OldOutput_StaysUntilThereIsANewOne) {
  mFolder.Write("out.chm", "old");
  WriteProject("", "[FILES]\nnone.htm\n");
  const auto report = Run();
  EXPECT_EQ(report.outcome, CompileReport::Outcome::Failed);
  EXPECT_EQ(Codes(report), "HC3003:8:0 ");
  EXPECT_EQ(Output(), "old");
  EXPECT_EQ(mFolder.Count(), 7u) << "nothing else is left behind";
}

TEST_F(Compile, PathsOutsideTheProject_AreRefused) {
  mFolder.Write("a.htm", "<a href='sub/../../x.htm'>x</a>");
  WriteProject("", "[FILES]\na.htm\n..\\secret.txt\n");
  EXPECT_EQ(Codes(Run()), "HC3001:9:0 HC3001:1:1 ");
}

TEST_F(Compile, WrongCase_IsFound_WithANote) {
  WriteProject("", "[FILES]\nA.HTM\nSUB\\b.htm\n");
  const auto report = Run();
  EXPECT_EQ(report.outcome, CompileReport::Outcome::Made);
  EXPECT_EQ(Codes(report).substr(0, 22), "HC3002:8:0 HC3002:9:0 ");
  EXPECT_EQ(report.messages.Warnings(), 0u);
}

TEST_F(Compile, NamesThatDifferByCaseOnly_AreAWarning) {
  mFolder.Write("A.htm", "other");
  WriteProject("", "[FILES]\na.htm\nA.htm\n");
  const auto report = Run();
  EXPECT_EQ(Codes(report).substr(0, 12), "HC2005:9:0 ");
  EXPECT_NE(Inner("/a.htm"), "other");
}

TEST_F(Compile, LinksThatLeadNowhere_AreWarnings_AndErrorsIfStrict) {
  mFolder.Write("a.htm", "<p>\n<a href='gone.htm'>x</a> <a href='http://example.com/x'>y</a> <a href='#z'>z</a>");
  EXPECT_EQ(Codes(Run()), "HC3003:2:1 ");
  const auto strict = Run(true);
  EXPECT_EQ(strict.outcome, CompileReport::Outcome::Failed);
  EXPECT_EQ(Codes(strict), "HC3003:2:1 HC4002:0:0 ");
}

TEST_F(Compile, CharactersThatTheCodePageLacks_AreNamedWithTheirPlace) {
  WriteProject("Language=0x419");
  mFolder.Write("a.htm", "\xEF\xBB\xBF<title>ok</title>\n<p>\xD0\x96\xC3\xA9</p>\xC3\xA9 &eacute;");
  mFolder.Write("sub/b.htm", "<meta charset=utf-8>\n<title>\xE6\x97\xA5</title>");
  mFolder.Write("t.hhc", "\xEF\xBB\xBF<UL>\n" + Item("\xC3\xA9", "a.htm") + "</UL>");
  mFolder.Write("t.hhk", "<UL>\n\n" + Item("&#233;", "a.htm") + "</UL>");
  const auto report = Run();
  EXPECT_EQ(Codes(report), "HC2002:2:59 HC2003:3:59 HC2004:2:5 HC2001:2:8 ");
  EXPECT_NE(report.messages.All()[2].text.find("(U+00E9) and 1 more"), std::string::npos)
      << report.messages.All()[2].text;
}

TEST_F(Compile, TitlesThatTheCodePageLacks_AreNamedWithThePlaceOfTheCharacter) {
  mFolder.Write("p.hhp",
                "\xEF\xBB\xBF[OPTIONS]\nLanguage=0x419\nTitle=r\xC3\xA9sum\xC3\xA9\nIndex file=t.hhk\n"
                "[WINDOWS]\nw=\"\xC3\xA9\",,,,,,,,,,,,,,,,,,,\n[FILES]\na.htm\nsub/b.htm\n");
  mFolder.Write("a.htm", "\xEF\xBB\xBF<head>\n<title>ok r\xC3\xA9sum\xC3\xA9</title>");
  mFolder.Write("sub/b.htm", "<title>&eacute;</title>");
  mFolder.Write("t.hhk",
                "\xEF\xBB\xBF<UL><LI><OBJECT type=\"text/sitemap\">\n<param name=Name value=\"k\">\n"
                "<param name=Name value=\"t\xC3\xA9\">\n<param name=Local value=\"a.htm\"></OBJECT></UL>");
  EXPECT_EQ(Codes(Run()), "HC2009:3:0 HC2009:6:0 HC2003:3:25 HC2001:2:12 HC2001:1:8 ");
}

TEST_F(Compile, LanguageThatNobodyKnows_IsAWarning) {
  for (const char* language : {"0x9999", "English", "0", ""}) {
    WriteProject("Language=" + std::string(language));
    EXPECT_EQ(Codes(Run()), "HC1013:6:0 ") << language;
  }
}

TEST_F(Compile, LanguageWithoutCodePage_IsAWarning) {
  WriteProject("Language=0x439");
  EXPECT_EQ(Codes(Run()).substr(0, 10), "HC2008:6:0");
}

TEST_F(Compile, LongKeyword_IsCutWithAWarning) {
  mFolder.Write("t.hhk", "<UL>" + Item(std::string(300, 'k'), "a.htm") + "</UL>");
  const auto report = Run();
  EXPECT_EQ(Codes(report), "HC2007:1:63 ");
  EXPECT_EQ(report.outcome, CompileReport::Outcome::Made);
}

TEST_F(Compile, LongPath_IsAWarning) {
  const auto path = std::string(200, 'd') + "/" + std::string(60, 'f') + ".htm";
  mFolder.Write(path, "text");
  WriteProject("", "[FILES]\n" + path + "\n");
  EXPECT_EQ(Codes(Run()).substr(0, 11), "HC2006:8:0 ");
}

TEST_F(Compile, PagesOfContentsAndIndexThatAreMissing_AreNamedWithLineAndColumn) {
  mFolder.Write("t.hhc", "<UL>\n" + Item("Start", "gone.htm") + "</UL>");
  mFolder.Write("t.hhk", "<UL>\n\n" + Item("Start", "../out.htm") + "</UL>");
  EXPECT_EQ(Codes(Run()), "HC3001:3:93 HC3003:2:93 ");
}

TEST_F(Compile, PageThatVanishesAfterItWasFound_IsAnErrorWhereItIsNamed) {
  mFolder.Write("out.chm", "old");
  const auto store = std::make_shared<support::FaultyFileStore>();
  const PlatformOverride<FileStore> files(store);
  for (const auto& [gone, place] : {std::pair{"sub/b.htm", "HC3005:9:0 "}, {"sub/c.htm", "HC3005:1:53 "}}) {
    store->vanished = mFolder / gone;
    const auto report = Run();
    EXPECT_EQ(report.outcome, CompileReport::Outcome::Failed);
    EXPECT_EQ(Codes(report), place);
    EXPECT_NE(report.messages.All()[0].text.find(gone), std::string::npos) << report.messages.All()[0].text;
    EXPECT_EQ(Output(), "old");
  }
}

TEST_F(Compile, StopWords_AreNotFound_WhateverTheirCase) {
  mFolder.Write("s.stp", "Alpha\r\n\r\nPAGE\r\n");
  WriteProject("Full-text search=Yes\nFull text search stop list file=s.stp");
  const auto report = Run();
  EXPECT_EQ(Codes(report), "");
  const auto index = Inner("/$FIftiMain");
  EXPECT_EQ(index.find("lpha"), std::string::npos);
  EXPECT_EQ(index.find("age"), std::string::npos);
  EXPECT_NE(index.find("delta"), std::string::npos);
  EXPECT_EQ(Inner("/s.stp"), "(none)") << "a viewer has no use for it";
}

TEST_F(Compile, StopList_IsReadInTheProjectsCodePage) {
  mFolder.Write("s.stp", "\xC8\xEB\xC8\n");  // of the language 0x419: a word of three letters
  mFolder.Write("a.htm", "\xE8\xEB\xE8 \xEB\xE8\xEB");
  WriteProject("Language=0x419\nFull-text search=Yes\nFull text search stop list file=s.stp");
  EXPECT_EQ(Codes(Run()), "");
  const auto index = Inner("/$FIftiMain");
  EXPECT_EQ(index.find("\xE8\xEB\xE8"), std::string::npos);
  EXPECT_NE(index.find("\xEB\xE8\xEB"), std::string::npos);
}

TEST_F(Compile, StopListThatIsMissing_IsAnErrorIfThereIsASearch) {
  WriteProject("Full-text search=Yes\nFull text search stop list file=none.stp");
  EXPECT_EQ(Codes(Run()), "HC3003:7:0 ");
  WriteProject("Full-text search=No\nFull text search stop list file=none.stp");
  EXPECT_EQ(Codes(Run()), "");
}

TEST_F(Compile, FilesThatOnlyStyleSheetsName_AreStored) {
  mFolder.Write("a.htm",
                "<link rel=stylesheet href=css/one.css><style>\np { background: url( 'inline.gif' ) }</style>"
                "<p style=\"background:URL(&quot;attribute.gif&quot;)\">");
  mFolder.Write("css/one.css", "@import 'two.css' screen;\nb { background: url(../pic2.gif) }");
  mFolder.Write("css/two.css", "/* url(comment.gif) */\ni { background: url(\"deep.gif\"), url(gone.gif) }");
  for (const char* name : {"pic2.gif", "inline.gif", "attribute.gif", "css/deep.gif", "css/comment.gif"})
    mFolder.Write(name, "GIF");
  const auto report = Run();
  EXPECT_EQ(Codes(report), "HC3003:2:38 ");
  EXPECT_EQ(report.messages.All()[0].file, mFolder / "css/two.css");
  for (const char* name : {"/css/two.css", "/css/deep.gif", "/pic2.gif", "/inline.gif", "/attribute.gif"})
    EXPECT_NE(Inner(name), "(none)") << name;
  EXPECT_EQ(Inner("/css/comment.gif"), "(none)");
}

TEST_F(Compile, TextOfEveryCodePage_IsStoredInIt) {
  for (const auto& [language, codePage, text] :
       {std::tuple{"0x419", 1251, "\xD0\x9F\xD0\xB5\xD1\x87\xD0\xB0\xD1\x82\xD1\x8C"},
        std::tuple{"0x411", 932, "\xE5\x8D\xB0\xE5\x88\xB7"},
        std::tuple{"0x407", 1252,
                   "\xC3\x9C"
                   "bersicht"}}) {
    WriteProject(std::string("Full-text search=Yes\nLanguage=") + language);
    const auto item = EncodeCodePage(Item(text, "a.htm"), codePage, Unmappable::QuestionMark);
    mFolder.Write("t.hhc", "<UL>" + item + "</UL>");
    mFolder.Write("t.hhk", "<UL>" + item + "</UL>");
    const auto report = Run();
    EXPECT_EQ(Codes(report), "") << language;
    const FileSource source(mFolder / "out.chm");
    const StorageReader reader(source);
    ChmTables tables(reader, codePage);
    EXPECT_EQ(tables.ReadContents().entries.at(0).name, text);
    EXPECT_EQ(tables.ReadKeywords("/$WWKeywordLinks/").at(0).name, text);
  }
}

TEST_F(Compile, SearchIndex_HoldsWordsOfTheBody_NotOfScripts) {
  ASSERT_EQ(Run().outcome, CompileReport::Outcome::Made);
  const auto index = Inner("/$FIftiMain");
  // Words are stored without what they share with the word before.
  EXPECT_NE(index.find("lpha"), std::string::npos);
  EXPECT_NE(index.find("delta"), std::string::npos);
  EXPECT_EQ(index.find("gamma"), std::string::npos);
  EXPECT_EQ(Inner("/$OBJINST").size(), 2751u);
  WriteProject("");
  ASSERT_EQ(Run().outcome, CompileReport::Outcome::Made);
  EXPECT_EQ(Inner("/$FIftiMain"), "(none)");
}

TEST_F(Compile, ContextIdsWindowsAndAssociativeKeywords_AreStored) {
  mFolder.Write("sub/b.htm",
                "<object type=\"application/x-oleobject\" classid=\"clsid:1e2a7bd0-dab9-11d0-b93a-00c04fc99f9e\">"
                "<param name=\"ALink Name\" value=\"one; two\"></object>");
  WriteProject("Default Window=main",
               "[WINDOWS]\nmain=\"W\",\"t.hhc\",\"t.hhk\",\"a.htm\",\"a.htm\",,,,,0x63520,220,0x10384e,[80,60,1000,700]"
               ",0xb0000,,,,,,0\n[FILES]\na.htm\nsub/b.htm\n[ALIAS]\nX=sub\\b.htm\n[MAP]\n#define X 77\n");
  ASSERT_EQ(Run().outcome, CompileReport::Outcome::Made);
  const auto strings = Inner("/#STRINGS");
  const auto ids = Inner("/#IVB");
  ASSERT_EQ(ids.size(), 12u);
  EXPECT_EQ(GetDword(ids, 4), 77u);
  EXPECT_EQ(strings.c_str() + GetDword(ids, 8), std::string("sub/b.htm"));
  const auto windows = Inner("/#WINDOWS");
  ASSERT_EQ(windows.size(), 8u + 196u);
  EXPECT_EQ(strings.c_str() + GetDword(windows, 8 + 0x08), std::string("main"));
  EXPECT_EQ(GetDword(windows, 8 + 0x10), 0x63520u);
  EXPECT_EQ(GetDword(windows, 8 + 0x4C), 220u);
  EXPECT_EQ(strings.c_str() + GetDword(windows, 8 + 0x60), std::string("t.hhc"));
  EXPECT_EQ(GetDword(windows, 8 + 0x70), 0x10384Eu);
  const FileSource source(mFolder / "out.chm");
  const StorageReader reader(source);
  ChmTables tables(reader, 1252);
  const auto names = tables.ReadKeywords("/$WWAssociativeLinks/");
  ASSERT_EQ(names.size(), 2u);
  EXPECT_EQ(names[1].name, "two");
  EXPECT_EQ(tables.TopicAt(names[1].topics.at(0)).local, "sub/b.htm");
}

TEST_F(Compile, UnreadableProject_IsSaidSo) {
  const auto report = CompileChm({mFolder / "none.hhp", {}, false});
  EXPECT_EQ(report.outcome, CompileReport::Outcome::Unreadable);
  EXPECT_EQ(report.messages.Errors(), 1u);
}

TEST_F(Compile, OutputThatCannotBeWritten_IsAnError) {
  EXPECT_EQ(CompileChm({mFolder / "p.hhp", mFolder / "no/where/out.chm", false}).outcome,
            CompileReport::Outcome::Failed);
}

}  // namespace
}  // namespace quillbook::compile
