#include "host/compile/FullTextIndex.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

#include "host/compile/Bytes.h"
#include "host/compile/WordSplitter.h"

namespace quillbook::compile {
namespace {

/// Places of one word: topic, then positions.
using Places = std::map<std::uint32_t, std::vector<std::uint32_t>>;
using Index = std::map<std::pair<std::string, bool>, Places>;

/// Reads an index the way a viewer does: from the header down the tree to the first leaf, then leaf by leaf.
class IndexReader {
 public:
  explicit IndexReader(std::string bytes) : mBytes(std::move(bytes)) {}

  Index ReadAll() {
    Index index;
    std::string word;
    for (auto leaf = FindLeaf(""); leaf != 0;) {
      const auto node = Node(leaf);
      const std::size_t used = 4096U - GetWord(node, 6);
      for (std::size_t at = 8; at < used;) {
        ReadWord(node, at, word);
        const bool inTitle = node[at++] != 0;
        const auto pages = LowFirst(node, at);
        const auto offset = GetDword(node, at);
        at += 6;
        const auto length = LowFirst(node, at);
        index[{word, inTitle}] = ReadPlaces(offset, length, pages);
      }
      leaf = GetDword(node, 0);
    }
    return index;
  }

  /// Offset of the leaf in which a word stands if it is there.
  std::uint32_t FindLeaf(const std::string& wanted) {
    auto offset = GetDword(mBytes, 0x14);
    for (int depth = GetWord(mBytes, 0x18); depth > 1; --depth) {
      const auto node = Node(offset);
      const std::size_t used = 4096U - GetWord(node, 0);
      std::string word;
      offset = 0;
      for (std::size_t at = 2; at < used && offset == 0; at += 6) {
        ReadWord(node, at, word);
        if (wanted <= word) offset = GetDword(node, at);
      }
      if (offset == 0) return 0;
    }
    return offset;
  }

 private:
  std::string_view Node(std::uint32_t offset) { return std::string_view(mBytes).substr(offset, 4096); }
  static void ReadWord(std::string_view node, std::size_t& at, std::string& word) {
    const auto length = static_cast<unsigned char>(node[at]) - 1U;
    word.resize(static_cast<unsigned char>(node[at + 1]));
    word += node.substr(at + 2, length);
    at += 2 + length;
  }
  static std::uint32_t LowFirst(std::string_view bytes, std::size_t& at) {
    std::uint32_t value = 0;
    for (int shift = 0;; shift += 7) {
      const auto byte = static_cast<unsigned char>(bytes[at++]);
      value |= (byte & 0x7FU) << shift;
      if (byte < 0x80) return value;
    }
  }
  std::uint32_t Bit() {
    const auto bit = static_cast<unsigned char>(mBytes[mAt / 8]) >> (7 - mAt % 8) & 1U;
    ++mAt;
    return bit;
  }
  std::uint32_t Scaled(int root) {
    int ones = 0;
    while (Bit()) ++ones;
    const int bits = root + (ones ? ones - 1 : 0);
    std::uint32_t value = ones ? 1 : 0;
    for (int i = 0; i < bits; ++i) value = value << 1 | Bit();
    return value;
  }
  Places ReadPlaces(std::uint32_t offset, std::uint32_t length, std::uint32_t pages) {
    Places places;
    mAt = std::size_t{offset} * 8;
    std::uint32_t topic = 0;
    for (std::uint32_t page = 0; page < pages; ++page) {
      mAt = (mAt + 7) / 8 * 8;
      topic += Scaled(mBytes[0x1F]);
      const auto count = Scaled(mBytes[0x21]);
      std::uint32_t position = 0;
      for (std::uint32_t i = 0; i < count; ++i) places[topic].push_back(position += Scaled(mBytes[0x23]));
    }
    EXPECT_EQ((mAt + 7) / 8, offset + length);
    return places;
  }

  std::string mBytes;
  std::size_t mAt = 0;
};

std::string Written(FullTextIndex& index) {
  std::string bytes;
  index.Write(1252, 0x409, [&](std::string_view piece) { bytes.append(piece); });
  return bytes;
}

TEST(FullTextIndex, EveryPlaceOfEveryWord_ComesBack_OverManyNodes) {
  std::mt19937 random(2);
  FullTextIndex index(testing::TempDir());
  Index expected;
  for (std::uint32_t topic = 3; topic < 400; topic += 1 + random() % 3) {
    index.BeginPage(topic);
    for (std::uint32_t position = 0, n = random() % 300; position < n; ++position) {
      // Few words that are frequent, many that are rare.
      const auto number = random() % (random() % 3 ? 40 : 5000);
      const auto word = "w" + std::string(number % 11, static_cast<char>('a' + number % 7)) + std::to_string(number);
      const bool inTitle = position < 3;
      index.AddWord(word, inTitle);
      expected[{word, inTitle}][topic].push_back(position);
    }
    index.EndPage();
  }
  IndexReader reader(Written(index));
  EXPECT_TRUE(reader.ReadAll() == expected);
  for (const auto& [key, places] : expected) ASSERT_NE(reader.FindLeaf(key.first), 0u) << key.first;
}

/// An index of pages with words of uneven frequency.
std::string IndexOfManyPages(std::size_t memory) {
  std::mt19937 random(5);
  FullTextIndex index(testing::TempDir(), memory);
  for (std::uint32_t topic = 0; topic < 400; ++topic) {
    index.BeginPage(topic);
    for (int i = 0; i < 300; ++i) index.AddWord("w" + std::to_string(random() % (i % 2 ? 3 : 100 + topic)), i == 0);
    index.EndPage();
  }
  return Written(index);
}

TEST(FullTextIndex, HowMuchStaysInMemory_MakesNoDifference) {
  const auto inMemory = IndexOfManyPages(FullTextIndex::MemoryForPlaces);
  EXPECT_TRUE(IndexOfManyPages(0) == inMemory) << "a run for every page";
  EXPECT_TRUE(IndexOfManyPages(1U << 16) == inMemory) << "a few runs and a rest in memory";
}

TEST(FullTextIndex, WordThatIsPassedOver_KeepsItsPlace) {
  FullTextIndex index(testing::TempDir());
  index.BeginPage(0);
  index.AddWord("out", false);
  index.PassWord();
  index.AddWord("africa", false);
  index.EndPage();
  const Index expected{{{"out", false}, {{0, {0}}}}, {{"africa", false}, {{0, {2}}}}};
  EXPECT_TRUE(IndexReader(Written(index)).ReadAll() == expected);
}

TEST(FullTextIndex, WithoutWords_IsOneEmptyLeaf) {
  FullTextIndex index(testing::TempDir());
  EXPECT_TRUE(index.IsEmpty());
  const auto bytes = Written(index);
  EXPECT_EQ(bytes.size(), 0x400u + 4096u);
  EXPECT_TRUE(IndexReader(bytes).ReadAll().empty());
}

TEST(FullTextIndex, Header_CountsWordsAndPages) {
  FullTextIndex index(testing::TempDir());
  index.BeginPage(0);
  for (const auto* word : {"one", "two", "one"}) index.AddWord(word, false);
  index.EndPage();
  const auto bytes = Written(index);
  EXPECT_EQ(GetDword(bytes, 4), 1u);
  EXPECT_EQ(GetDword(bytes, 0x3A), 3u) << "longest word";
  EXPECT_EQ(GetDword(bytes, 0x3E), 3u) << "words";
  EXPECT_EQ(GetDword(bytes, 0x42), 2u) << "different words";
  EXPECT_EQ(GetDword(bytes, 0x7A), 1252u);
  EXPECT_EQ(GetDword(bytes, 0x7E), 0x409u);
}

std::string Words(std::string_view text) {
  std::string result;
  WordSplitter().Split(text, [&](std::string_view word) { result.append(word).append("|"); });
  return result;
}

TEST(WordSplitter, WordsAreLettersAndDigits_InLowerCase) {
  EXPECT_EQ(Words("Hello, World! x86_64 (a-b) 3.5"), "hello|world|x86_64|a|b|3|5|");
}

TEST(WordSplitter, LettersBeyondAscii_StayInTheirWord) {
  EXPECT_EQ(Words("\xC3\x89tude na\xC3\xAFve"), "\xC3\xA9tude|na\xC3\xAFve|");
  EXPECT_EQ(Words("\xD0\x9F\xD1\x80\xD0\xB8\xD0\xB2\xD0\xB5\xD1\x82!"),
            "\xD0\xBF\xD1\x80\xD0\xB8\xD0\xB2\xD0\xB5\xD1\x82|");
  EXPECT_EQ(Words("\xE2\x80\x9Cquoted\xE2\x80\x9D\xC2\xA0text"), "quoted|text|");
  EXPECT_EQ(Words("hy\xC2\xADphen"), "hyphen|");
}

TEST(WordSplitter, JapaneseText_IsDividedIntoWords) {
  const auto words = Words("\xE5\x8D\xB0\xE5\x88\xB7\xE3\x81\x99\xE3\x82\x8B page");  // "print" and its verb ending
  EXPECT_EQ(words.substr(0, 7), "\xE5\x8D\xB0\xE5\x88\xB7|");
  EXPECT_NE(words.find("|page|"), std::string::npos);
}

TEST(WordSplitter, EndlessWord_IsCutBetweenCharacters) {
  std::string text;
  for (int i = 0; i < 500; ++i) text += "\xC3\xA9";
  const auto word = Words(text);
  EXPECT_EQ(word.size(), WordSplitter::MaximumBytes + 1);
}

}  // namespace
}  // namespace quillbook::compile
