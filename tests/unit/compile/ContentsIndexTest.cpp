#include "host/compile/ContentsIndex.h"

#include <gtest/gtest.h>

#include <set>

#include "host/compile/Bytes.h"

namespace quillbook::compile {
namespace {

/// Reads a stream the way the format's description says, without any of the compiler's own code for it.
class ContentsReader {
 public:
  ContentsReader(std::string stream, const ChmStrings& strings, const ChmTopics& topics)
      : mStream(std::move(stream)), mStrings(strings.Bytes()), mTopics(topics) {}

  /// One line an entry: level, name, page.
  std::vector<std::string> Lines() {
    Walk(GetDword(mStream, 0), 0, 0);
    return mLines;
  }

 private:
  void Walk(std::uint32_t offset, std::uint32_t parent, int level) {
    for (; offset != 0; offset = GetDword(mStream, offset + 16)) {
      ASSERT_TRUE(mSeen.insert(offset).second) << "an entry is linked twice";
      const auto flags = GetDword(mStream, offset + 4);
      const bool isBook = (flags & 4) != 0;
      ASSERT_EQ(offset / 4096, (offset + (isBook ? 28 : 20) - 1) / 4096) << "an entry crosses the border of a block";
      ASSERT_EQ(GetDword(mStream, offset + 12), parent);
      const auto reference = GetDword(mStream, offset + 8);
      const bool hasPage = (flags & 8) != 0;
      const auto title = hasPage ? mTopics.TitleOf(reference) : reference;
      mLines.push_back(std::to_string(level) + " " + (mStrings.c_str() + title) +
                       (hasPage ? " -> " + mTopics.LocalOf(reference) : "") + (flags & 2 ? " new" : ""));
      if (isBook) Walk(GetDword(mStream, offset + 20), offset, level + 1);
    }
  }

  std::string mStream;
  std::string mStrings;
  const ChmTopics& mTopics;
  std::vector<std::string> mLines;
  std::set<std::uint32_t> mSeen;
};

SitemapEntry Entry(int level, const std::string& name, const std::string& page = {}) {
  SitemapEntry entry;
  entry.level = level;
  entry.name = name;
  if (!page.empty()) entry.targets.push_back({name, page});
  return entry;
}

class ContentsStream : public testing::Test {
 protected:
  std::string Build(const Sitemap& contents) {
    return BuildContentsIndex(contents, mTopics, mStrings, [](std::string_view text) { return std::string(text); });
  }
  std::vector<std::string> Lines(const Sitemap& contents) {
    return ContentsReader(Build(contents), mStrings, mTopics).Lines();
  }

  ChmTopics mTopics;
  ChmStrings mStrings;
};

TEST_F(ContentsStream, TreeOfSeveralLevels_ComesBack) {
  Sitemap contents;
  contents.entries = {
      Entry(0, "Start", "start.htm"), Entry(0, "Book"),          Entry(1, "First", "a.htm"), Entry(1, "Inner", "b.htm"),
      Entry(2, "Deep", "c.htm#x"),    Entry(1, "Last", "d.htm"), Entry(0, "End", "e.htm")};
  contents.entries[5].isNew = true;
  EXPECT_EQ(Lines(contents),
            (std::vector<std::string>{"0 Start -> start.htm", "0 Book", "1 First -> a.htm", "1 Inner -> b.htm",
                                      "2 Deep -> c.htm#x", "1 Last -> d.htm new", "0 End -> e.htm"}));
}

TEST_F(ContentsStream, PageUnderSeveralNames_KeepsEachName) {
  (void)mTopics.Add("a.htm", mStrings.Add("Title in the page"));
  Sitemap contents;
  contents.entries = {Entry(0, "One name", "a.htm"), Entry(0, "Other name", "a.htm")};
  EXPECT_EQ(Lines(contents), (std::vector<std::string>{"0 One name -> a.htm", "0 Other name -> a.htm"}));
  EXPECT_EQ(mStrings.Bytes().c_str() + mTopics.TitleOf(0), std::string("Title in the page"));
}

TEST_F(ContentsStream, LevelThatIsJumpedOver_HangsFromTheNearestAbove) {
  Sitemap contents;
  contents.entries = {Entry(2, "A", "a.htm"), Entry(5, "B", "b.htm"), Entry(1, "C", "c.htm")};
  EXPECT_EQ(Lines(contents), (std::vector<std::string>{"0 A -> a.htm", "1 B -> b.htm", "1 C -> c.htm"}));
}

TEST_F(ContentsStream, ManyEntries_FillBlocksWithoutCrossingTheirBorders) {
  Sitemap contents;
  for (int book = 0; book < 300; ++book) {
    contents.entries.push_back(Entry(0, "Book " + std::to_string(book)));
    for (int page = 0; page < 7; ++page)
      contents.entries.push_back(Entry(1, "Page", "p" + std::to_string(book) + "_" + std::to_string(page) + ".htm"));
  }
  EXPECT_EQ(Lines(contents).size(), 2400u);
}

TEST_F(ContentsStream, ListOfPages_IsInDocumentOrder_AndCountsThoseBelow) {
  Sitemap contents;
  contents.entries = {Entry(0, "Book", "a.htm"), Entry(1, "P", "b.htm"), Entry(1, "Q", "c.htm"), Entry(0, "Empty")};
  const auto stream = Build(contents);
  ASSERT_EQ(GetDword(stream, 8), 3u);
  const auto numbers = GetDword(stream, 4);
  const auto list = GetDword(stream, 12);
  for (std::uint32_t i = 0; i < 3; ++i) {
    EXPECT_EQ(GetDword(stream, list + 4 * i), i);
    EXPECT_EQ(GetDword(stream, numbers + 16 * i + 4), 666 + i);
    EXPECT_EQ(GetDword(stream, numbers + 16 * i + 8), list + 4 * i);
    EXPECT_EQ(GetDword(stream, numbers + 16 * i + 12), i == 0 ? 3u : 1u);
  }
}

TEST(UrlHash, IsThatOfPublishedHelpFiles) {
  EXPECT_EQ(UrlHash("toc.hhc"), 262941145u);
  EXPECT_EQ(UrlHash("index.htm"), 419420449u);
  EXPECT_EQ(UrlHash("topics/getting_started.htm"), 2364980769u);
  EXPECT_EQ(UrlHash("Topics\\Getting_Started.HTM"), 2364980769u);
  EXPECT_EQ(UrlHash("html/1e9ef356-44e6-480b-bc60-a1263fd2ee90.htm"), 0x11A40u);
}

TEST(ChmTopics, TableOfAddresses_IsInTheOrderOfTheirHashes) {
  ChmTopics topics;
  for (int i = 0; i < 800; ++i) topics.Add("dir/page" + std::to_string(i) + ".htm");
  const auto table = topics.UrlTableBytes();
  const auto records = topics.TopicsBytes();
  const auto addresses = topics.UrlStringsBytes();
  std::uint32_t last = 0;
  for (std::uint32_t row = 0; row < 800; ++row) {
    const auto at = row / 341 * 4096 + row % 341 * 12;
    EXPECT_LE(last, GetDword(table, at));
    last = GetDword(table, at);
    const auto topic = GetDword(table, at + 4);
    ASSERT_EQ(GetDword(records, topic * 16 + 8), at);
    EXPECT_EQ(addresses.c_str() + GetDword(table, at + 8) + 8, topics.LocalOf(topic));
  }
}

}  // namespace
}  // namespace quillbook::compile
