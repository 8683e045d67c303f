// A help file that isn't what went in is found out, whatever the difference.
#include "host/compile/ChmCheck.h"

#include <gtest/gtest.h>

#include "host/compile/ChmSystem.h"
#include "host/compile/CodePageText.h"
#include "host/compile/ContentsIndex.h"
#include "host/compile/HelpOutput.h"
#include "support/TemporaryFolder.h"

namespace quillbook::compile {
namespace {

/// What goes into a small help file.
struct Input {
  std::string title = "Help";
  std::string defaultTopic = "a.htm";
  std::string contentsFile = "t.hhc";
  std::string indexFile = "t.hhk";
  std::vector<std::string> topics{"a.htm", "b.htm"};
  std::vector<std::pair<int, std::string>> contents{{0, "Book"}, {1, "Page"}};  ///< levels and names
  std::vector<std::string> contentsPages{"a.htm", "b.htm"};
  std::vector<KeywordEntry> keywords{{{"key"}, {0}, {}}, {{"key", "sub"}, {0, 1}, {}}};
  std::string page = "the page";
};

/// The parts of a help file that has been made from an input.
class Made {
 public:
  explicit Made(const Input& input) : mKeywords(input.keywords) {
    for (const auto& topic : input.topics) (void)mTopics.Add(topic);
    for (std::size_t i = 0; i < input.contents.size(); ++i) {
      auto& entry = mContents.entries.emplace_back();
      entry.level = input.contents[i].first;
      entry.name = input.contents[i].second;
      entry.targets.push_back({entry.name, input.contentsPages[i]});
    }
    const auto contents = BuildContentsIndex(mContents, mTopics, mStrings, mEncode);
    std::size_t truncated = 0;
    mOutput.AddFile("/a.htm", input.page);
    mOutput.AddTable("/#TOCIDX", contents);
    mOutput.AddTable("/$WWKeywordLinks/BTree", BuildKeywordIndex(mKeywords, 1252, 0x409, truncated).tree);
    mOutput.AddTable("/#TOPICS", mTopics.TopicsBytes());
    mOutput.AddTable("/#URLTBL", mTopics.UrlTableBytes());
    mOutput.AddTable("/#URLSTR", mTopics.UrlStringsBytes());
    mOutput.AddTable("/#STRINGS", mStrings.Bytes());
    HelpProject project;
    project.title = input.title;
    SystemFacts facts;
    facts.defaultTopic = input.defaultTopic;
    facts.contentsFile = input.contentsFile;
    facts.indexFile = input.indexFile;
    mOutput.Storage().AddStored("/#SYSTEM", BuildSystem(project, facts, std::string(4096, '\0'), CodePageText(1252)));
    mOutput.Finish(StorageReader::Format::HtmlHelp1, 0, 0x409);
    mExpected = {.codePage = 1252,
                 .title = input.title,
                 .defaultTopic = input.defaultTopic,
                 .contentsFile = input.contentsFile,
                 .indexFile = input.indexFile,
                 .contents = &mContents,
                 .keywords = &mKeywords,
                 .topics = &mTopics,
                 .encode = mEncode};
  }

  /// Messages when this is what went in and `other` what came out.
  [[nodiscard]] std::string ComparedWith(const Made& other) const {
    MessageList messages;
    const StorageReader result(other.mOutput.Bytes());
    mOutput.CheckFiles(result, messages);
    CheckChm(result, mExpected, messages);
    std::string text;
    for (const auto& message : messages.All()) {
      EXPECT_EQ(message.level, MessageLevel::Error);
      EXPECT_EQ(message.code, "HC5001");
      text += message.text.substr(message.text.find(": ") + 2) + "\n";
    }
    return text;
  }

 private:
  std::function<std::string(std::string_view)> mEncode = [](std::string_view text) { return std::string(text); };
  support::TemporaryFolder mFolder;
  HelpOutput mOutput{mFolder / "out.chm"};
  ChmTopics mTopics;
  ChmStrings mStrings;
  Sitemap mContents;
  std::vector<KeywordEntry> mKeywords;
  ChmExpectation mExpected;
};

/// Messages when one thing is not as it went in.
std::string Found(const std::function<void(Input& input)>& tamper) {
  Input input;
  const Made honest(input);
  tamper(input);
  return honest.ComparedWith(Made(input));
}

TEST(ChmCheck, WhatWentIn_IsRight) {
  EXPECT_EQ(Found([](Input&) {}), "");
}

TEST(ChmCheck, OtherBytesOfAPage_AreFound) {
  EXPECT_EQ(Found([](Input& input) { input.page = "the pagf"; }), "'/a.htm' has other bytes\n");
  EXPECT_EQ(Found([](Input& input) { input.page += " "; }), "'/a.htm' has other bytes\n");
}

TEST(ChmCheck, OtherBytesOfAHelp2File_AreFound) {
  const support::TemporaryFolder folder;
  const auto pack = [&](HelpOutput& output, const char* bytes) {
    output.AddFile("/c.HxC", bytes);
    output.Finish(StorageReader::Format::Help2, 0, 0x409);
  };
  HelpOutput honest(folder / "a.hxs");
  HelpOutput other(folder / "b.hxs");
  pack(honest, "<HelpCollection Title=\"A\"/>");
  pack(other, "<HelpCollection Title=\"B\"/>");
  MessageList messages;
  honest.CheckFiles(StorageReader(honest.Bytes()), messages);
  EXPECT_EQ(messages.Errors(), 0u);
  honest.CheckFiles(StorageReader(other.Bytes()), messages);
  ASSERT_EQ(messages.Errors(), 1u);
  EXPECT_NE(messages.All()[0].text.find("'/c.HxC' has other bytes"), std::string::npos);
}

TEST(ChmCheck, OtherTitleAndDefaultTopic_AreFound) {
  EXPECT_EQ(Found([](Input& input) { input.title = "Held"; }), "the title is 'Held'\n");
  EXPECT_EQ(Found([](Input& input) { input.defaultTopic = "b.htm"; }), "the default topic is 'b.htm'\n");
  EXPECT_EQ(Found([](Input& input) { input.defaultTopic = ""; }), "the default topic is ''\n");
  EXPECT_EQ(Found([](Input& input) { input.contentsFile = "x.hhc"; }), "the contents file is 'x.hhc'\n");
  EXPECT_EQ(Found([](Input& input) { input.indexFile = "x.hhk"; }), "the index file is 'x.hhk'\n");
}

TEST(ChmCheck, OtherTopics_AreFound) {
  EXPECT_EQ(Found([](Input& input) { input.topics.push_back("c.htm"); }), "the number of topics\n");
  EXPECT_EQ(Found([](Input& input) {
              input.topics[1] = "c.htm";
              input.contentsPages[1] = "c.htm";
            }),
            "topic 1 is 'c.htm'\nthe contents entry 'Page'\n");
}

TEST(ChmCheck, OtherContents_AreFound) {
  EXPECT_EQ(Found([](Input& input) { input.contents[1].second = "Pane"; }), "the contents entry 'Page'\n");
  EXPECT_EQ(Found([](Input& input) { input.contents[1].first = 0; }), "the contents entry 'Page'\n");
  EXPECT_EQ(Found([](Input& input) { input.contentsPages[1] = "a.htm"; }),
            "the number of topics\nthe contents entry 'Page'\n");
  EXPECT_NE(Found([](Input& input) { input.contents.pop_back(); }).find("the number of contents entries"),
            std::string::npos);
}

TEST(ChmCheck, OtherKeywords_AreFound) {
  EXPECT_EQ(Found([](Input& input) { input.keywords[1].path[1] = "sup"; }), "the keyword 'sub'\n");
  EXPECT_EQ(Found([](Input& input) { input.keywords[1].topics = {1, 0}; }), "the keyword 'sub'\n");
  EXPECT_EQ(Found([](Input& input) { input.keywords[1].topics = {0}; }), "the keyword 'sub'\n");
  EXPECT_EQ(Found([](Input& input) { input.keywords[1].path = {"sub"}; }), "the keyword 'sub'\n");
  EXPECT_EQ(Found([](Input& input) { input.keywords[0] = {{"key"}, {}, "sub"}; }), "the keyword 'key'\n");
  EXPECT_EQ(Found([](Input& input) { input.keywords.pop_back(); }), "the number of keywords\n");
}

}  // namespace
}  // namespace quillbook::compile
