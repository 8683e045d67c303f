#include "host/compile/HelpProject.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "quillbook/base/Failure.h"

namespace quillbook::compile {
namespace {

class HelpProjectFile : public testing::Test {
 protected:
  void SetUp() override {
    mFolder = testing::TempDir() + "hhp-" + std::to_string(::getpid()) + "/";
    std::filesystem::create_directories(mFolder);
  }
  void TearDown() override { std::filesystem::remove_all(mFolder); }

  void Write(const std::string& name, const std::string& text) {
    std::ofstream(mFolder + name, std::ios::binary) << text;
  }
  HelpProject Read(const std::string& text) {
    Write("p.hhp", text);
    return ReadHelpProject(mFolder + "p.hhp", mMessages);
  }
  std::string Codes() const {
    std::string codes;
    for (const auto& message : mMessages.All()) codes += message.code + ":" + std::to_string(message.line) + " ";
    return codes;
  }

  std::string mFolder;
  MessageList mMessages;
};

TEST_F(HelpProjectFile, AllSections_AreRead_WhateverTheirCase) {
  const auto project = Read(
      "[options]\r\nCOMPATIBILITY=1.1 or later\r\nCompiled file=out.chm\r\nContents file=t.hhc\r\nIndex file=t.hhk\r\n"
      "Default topic=a.htm\r\nTitle=My title\r\nLanguage=0x419 Russian\r\nFull-text search=Yes\r\nBinary TOC=Yes\r\n"
      "Binary Index=No\r\n; remark\r\n[FILES]\r\na.htm\r\nhtml\\b.htm\r\n[MERGE "
      "FILES]\r\nother.chm\r\n[INFOTYPES]\r\n");
  EXPECT_EQ(project.compiledFile, "out.chm");
  EXPECT_EQ(project.contentsFile, "t.hhc");
  EXPECT_EQ(project.title, "My title");
  EXPECT_EQ(project.localeId, 0x419u);
  EXPECT_EQ(project.codePage, 1251);
  EXPECT_TRUE(project.fullTextSearch);
  EXPECT_TRUE(project.binaryContents);
  EXPECT_FALSE(project.binaryIndex);
  ASSERT_EQ(project.files.size(), 2u);
  EXPECT_EQ(project.files[1].path, "html\\b.htm");
  EXPECT_EQ(project.files[1].line, 15);
  EXPECT_EQ(project.mergedFiles, std::vector<std::string>{"other.chm"});
  EXPECT_EQ(Codes(), "");
}

TEST_F(HelpProjectFile, WithoutNameOfTheOutput_ItIsTheProjectsOwn) {
  EXPECT_EQ(Read("").compiledFile, "p.chm");
}

TEST_F(HelpProjectFile, Text_IsInTheCodePageOfTheLanguage) {
  EXPECT_EQ(Read("[OPTIONS]\nTitle=\xCF\xF0\nLanguage=0x419\n").title, "\xD0\x9F\xD1\x80");
  EXPECT_EQ(Read("\xEF\xBB\xBF[OPTIONS]\nTitle=\xC3\xA9\nLanguage=0x419\n").title, "\xC3\xA9");
}

TEST_F(HelpProjectFile, Window_IsReadByPosition) {
  const auto project = Read(
      "[WINDOWS]\nmain=\"A, "
      "title\",\"t.hhc\",,\"a.htm\",\"a.htm\",,,,,0x63520,220,0x10384e,[80,60,1000,700],0xb0000,,,,,,0\n");
  ASSERT_EQ(project.windows.size(), 1u);
  const auto& window = project.windows[0];
  EXPECT_EQ(window.name, "main");
  EXPECT_EQ(window.title, "A, title");
  EXPECT_EQ(window.indexFile, "");
  EXPECT_EQ(window.home, "a.htm");
  EXPECT_EQ(window.navigationStyle, 0x63520u);
  EXPECT_EQ(window.navigationWidth, 220u);
  EXPECT_EQ(window.rectangle[2], 1000);
  EXPECT_EQ(window.style, 0xb0000u);
  EXPECT_EQ(window.valid & 0x8, 0u) << "the extended style was left out";
}

TEST_F(HelpProjectFile, ContextIds_ComeFromMapAndAlias_AlsoFromHeaderFiles) {
  Write("ids.h", "// header\n#define IDH_ONE 1001 // first\n#define IDH_TWO 0x7D0\n#define IDH_LOST 5\n");
  const auto project =
      Read("[ALIAS]\nIDH_TWO=b.htm ; second\nIDH_ONE=a.htm\nIDH_NONE=c.htm\n[MAP]\n#include \"ids.h\"\n");
  ASSERT_EQ(project.contextIds.size(), 2u);
  EXPECT_EQ(project.contextIds[0].number, 1001u);
  EXPECT_EQ(project.contextIds[0].page, "a.htm");
  EXPECT_EQ(project.contextIds[1].number, 2000u);
  EXPECT_EQ(project.contextIds[1].page, "b.htm");
  EXPECT_EQ(Codes(), "HC1010:4 HC1012:4 ");
}

TEST_F(HelpProjectFile, OddLines_AreNamed_AndPassedOver) {
  (void)Read("stray\n[OPTIONS]\nno equals\nUnheard of=1\n[NOWHERE]\nx\n[MAP]\n#include missing.h\n");
  EXPECT_EQ(Codes(), "HC1001:1 HC1003:3 HC1004:4 HC1002:5 HC1008:8 ");
  EXPECT_EQ(mMessages.All()[0].ToLine(),
            mFolder + "p.hhp:1: warning HC1001: A line before the first section is passed over");
}

TEST_F(HelpProjectFile, HeadersThatIncludeThemselves_EndInAnError) {
  Write("loop.h", "#include loop.h\n");
  (void)Read("[MAP]\n#include loop.h\n");
  EXPECT_EQ(mMessages.Errors(), 1u);
}

TEST_F(HelpProjectFile, MissingFile_IsFailure53) {
  try {
    (void)ReadHelpProject(mFolder + "none.hhp", mMessages);
    FAIL();
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.Number(), FailureNumber::FileNotFound);
  }
}

}  // namespace
}  // namespace quillbook::compile
