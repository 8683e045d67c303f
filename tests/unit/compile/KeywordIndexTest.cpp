#include "host/compile/KeywordIndex.h"

#include <gtest/gtest.h>

#include "host/compile/Bytes.h"
#include "quillbook/base/Text.h"

namespace quillbook::compile {
namespace {

struct Line {
  std::string path;
  int level = 0;
  std::uint32_t lastStart = 0;
  std::string seeAlso;
  std::vector<std::uint32_t> topics;
};

/// Reads a tree the way the format's description says: forward along the listing blocks, or down from the root.
class TreeReader {
 public:
  explicit TreeReader(const std::string& tree) : mTree(tree) {}

  std::vector<Line> ReadAll() {
    std::vector<Line> lines;
    std::uint32_t previous = 0xFFFFFFFF;
    for (std::uint32_t block = 0; block != 0xFFFFFFFF; previous = block, block = GetDword(Block(block), 8)) {
      EXPECT_EQ(GetDword(Block(block), 4), previous);
      auto at = std::size_t{12};
      for (int left = GetWord(Block(block), 2); left > 0; --left) {
        lines.push_back(ReadRecord(Block(block), at));
        EXPECT_EQ(GetDword(Block(block), at), 1u);
        EXPECT_EQ(GetDword(Block(block), at + 4), 13 * (lines.size() - 1));
        at += 8;
      }
      EXPECT_EQ(GetWord(Block(block), 0), 2048 - at) << "free bytes";
    }
    EXPECT_EQ(previous, GetDword(mTree, 0x1A)) << "last listing block";
    EXPECT_EQ(lines.size(), GetDword(mTree, 0x2C));
    return lines;
  }

  /// The listing block to which the tree leads for a keyword, by any order of keywords.
  std::uint32_t Descend(std::size_t entry, const std::vector<std::string>& paths) {
    auto block = GetDword(mTree, 0x1E);
    for (int depth = GetWord(mTree, 0x2A); depth > 1; --depth) {
      const auto bytes = Block(block);
      auto next = GetDword(bytes, 4);
      std::size_t at = 8;
      for (int left = GetWord(bytes, 2); left > 0; --left) {
        const auto line = ReadRecord(bytes, at);
        const auto child = GetDword(bytes, at);
        at += 4;
        const auto place = std::find(paths.begin(), paths.end(), line.path) - paths.begin();
        if (static_cast<std::size_t>(place) <= entry) next = child;
      }
      block = next;
    }
    return block;
  }

 private:
  std::string_view Block(std::uint32_t number) { return std::string_view(mTree).substr(0x4C + number * 2048U, 2048); }

  static std::string Text(std::string_view bytes, std::size_t& at) {
    const auto start = at;
    while (GetWord(bytes, at) != 0) at += 2;
    at += 2;
    return FromUtf16Bytes(bytes.substr(start, at - 2 - start));
  }

  static Line ReadRecord(std::string_view bytes, std::size_t& at) {
    Line line;
    line.path = Text(bytes, at);
    const bool seeAlso = GetWord(bytes, at) == 2;
    line.level = GetWord(bytes, at + 2);
    line.lastStart = GetDword(bytes, at + 4);
    const auto count = GetDword(bytes, at + 12);
    at += 16;
    if (seeAlso) {
      line.seeAlso = Text(bytes, at);
      return line;
    }
    for (std::uint32_t i = 0; i < count; ++i, at += 4) line.topics.push_back(GetDword(bytes, at));
    return line;
  }

  const std::string& mTree;
};

KeywordStreams Build(const std::vector<KeywordEntry>& entries, std::size_t* truncated = nullptr) {
  std::size_t count = 0;
  auto streams = BuildKeywordIndex(entries, 1251, 0x419, count);
  if (truncated) *truncated = count;
  return streams;
}

TEST(KeywordIndex, Keywords_ComeBackWithSubKeywordsTargetsAndReferences) {
  const auto streams = Build({{{"\xD0\x96\xD1\x83\xD0\xBA"}, {3, 1}, {}},
                              {{"print"}, {}, {}},
                              {{"print", "margins"}, {7}, {}},
                              {{"zoom"}, {}, "view"}});
  const auto lines = TreeReader(streams.tree).ReadAll();
  ASSERT_EQ(lines.size(), 4u);
  EXPECT_EQ(lines[0].path, "\xD0\x96\xD1\x83\xD0\xBA");
  EXPECT_EQ(lines[0].topics, (std::vector<std::uint32_t>{3, 1}));
  EXPECT_EQ(lines[2].path, "print, margins");
  EXPECT_EQ(lines[2].level, 1);
  EXPECT_EQ(lines[2].lastStart, 7u);
  EXPECT_EQ(lines[3].seeAlso, "view");
  EXPECT_EQ(GetDword(streams.tree, 0x30), 1251u);
  EXPECT_EQ(GetDword(streams.tree, 0x34), 0x419u);
  EXPECT_EQ(streams.data.size(), 4u * 13);
}

TEST(KeywordIndex, ManyKeywords_MakeATree_AndTheMapNamesEachBlocksFirstKeyword) {
  std::vector<KeywordEntry> entries;
  std::vector<std::string> paths;
  for (int i = 0; i < 6000; ++i) {
    paths.push_back("keyword " + std::to_string(100000 + i));
    entries.push_back({{paths.back()}, {static_cast<std::uint32_t>(i)}, {}});
  }
  const auto streams = Build(entries);
  TreeReader reader(streams.tree);
  const auto lines = reader.ReadAll();
  ASSERT_EQ(lines.size(), entries.size());
  for (std::size_t i = 0; i < lines.size(); ++i) ASSERT_EQ(lines[i].topics, entries[i].topics);
  EXPECT_GT(GetWord(streams.tree, 0x2A), 2) << "the tree has several levels";
  const auto blockOf = [&](std::size_t entry) {
    std::uint32_t block = 0;
    for (std::size_t i = 0; i < GetWord(streams.map, 0); ++i)
      if (GetDword(streams.map, 2 + 8 * i) <= entry) block = GetDword(streams.map, 6 + 8 * i);
    return block;
  };
  for (const std::size_t entry : {0, 1, 25, 26, 999, 3000, 5999})
    EXPECT_EQ(reader.Descend(entry, paths), blockOf(entry)) << entry;
}

TEST(KeywordIndex, KeywordOfAnyLength_FitsABlock_CutBetweenCharacters) {
  std::string longest;
  for (int i = 0; i < 3000; ++i) longest += "\xF0\x9F\x98\x80";
  const auto streams = Build({{{longest}, {1}, {}}, {{longest, longest}, {2}, {}}, {{"a"}, {}, longest}});
  const auto lines = TreeReader(streams.tree).ReadAll();
  ASSERT_EQ(lines.size(), 3u);
  EXPECT_EQ(Utf16Length(lines[0].path), LongestKeyword);
  EXPECT_TRUE(longest.starts_with(lines[0].path));
  EXPECT_EQ(lines[1].topics, std::vector<std::uint32_t>{2});
  EXPECT_EQ(Utf16Length(lines[2].seeAlso), LongestKeyword);
}

TEST(KeywordIndex, KeywordWithTooManyPages_KeepsTheFirst_AndIsCounted) {
  std::vector<std::uint32_t> topics(2000);
  for (std::uint32_t i = 0; i < topics.size(); ++i) topics[i] = i;
  std::size_t truncated = 0;
  const auto lines = TreeReader(Build({{{"all"}, topics, {}}, {{"one"}, {5}, {}}}, &truncated).tree).ReadAll();
  EXPECT_EQ(truncated, 1u);
  ASSERT_EQ(lines.size(), 2u);
  ASSERT_GT(lines[0].topics.size(), 400u);
  EXPECT_EQ(lines[0].topics[400], 400u);
}

TEST(KeywordIndex, WithoutKeywords_HasNoTree) {
  EXPECT_TRUE(Build({}).tree.empty());
  EXPECT_EQ(Build({}).properties.size(), 32u);
}

std::vector<std::string> Sorted(const std::vector<KeywordEntry>& entries, std::uint32_t localeId) {
  std::vector<std::string> lines;
  for (const auto& entry : SortKeywords(entries, localeId)) {
    std::string line;
    for (const auto& part : entry.path) line += (line.empty() ? "" : ">") + part;
    for (const auto topic : entry.topics) line += " " + std::to_string(topic);
    lines.push_back(line);
  }
  return lines;
}

TEST(SortKeywords, OrderIsThatOfTheLanguage) {
  const std::string ouml = "\xC3\xB6";
  EXPECT_EQ(Sorted({{{"z"}, {}, {}}, {{ouml}, {}, {}}, {{"P"}, {}, {}}, {{"o"}, {}, {}}}, 0x407),
            (std::vector<std::string>{"o", ouml, "P", "z"}));
  EXPECT_EQ(Sorted({{{"z"}, {}, {}}, {{ouml}, {}, {}}, {{"P"}, {}, {}}, {{"o"}, {}, {}}}, 0x41D),
            (std::vector<std::string>{"o", "P", "z", ouml}));
}

TEST(SortKeywords, SamePaths_BecomeOne_AndMissingParentsAreAdded) {
  EXPECT_EQ(Sorted({{{"b", "y"}, {4}, {}}, {{"a"}, {1, 2}, {}}, {{"A"}, {2, 3}, {}}, {{"b", "x"}, {5}, {}}}, 0x409),
            (std::vector<std::string>{"a 1 2 3", "b", "b>x 5", "b>y 4"}));
}

}  // namespace
}  // namespace quillbook::compile
