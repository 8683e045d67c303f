#include "host/compile/FullTextIndex.h"

#include <algorithm>
#include <bit>
#include <numeric>
#include <utility>

#include "host/compile/Bytes.h"
#include "host/compile/Names.h"

namespace quillbook::compile {

namespace {

constexpr std::size_t NodeSize = 4096;
constexpr std::size_t HeaderSize = 0x400;
constexpr std::size_t LeafHeader = 8;
constexpr std::size_t IndexHeader = 2;
constexpr std::size_t LongestWord = 250;
constexpr int Scale = 2;  // the only one that readers know
constexpr int TopicRoot = 3;
constexpr int CountRoot = 0;
constexpr int PositionRoot = 5;

/// Bits, most significant first, in whole bytes.
class BitPacker {
 public:
  /// A number by its size: as many ones as its length is above `root`, a zero, and its bits below the first.
  void PutScaled(std::uint32_t value, int root) {
    const int width = std::bit_width(value);
    if (width <= root) {
      PutBits(0, 1);
      PutBits(value, root);
      return;
    }
    for (int ones = width - root; ones > 0; --ones) PutBits(1, 1);
    PutBits(0, 1);
    PutBits(value & ((1U << (width - 1)) - 1), width - 1);
  }
  /// The bytes, the last one filled with zeros.
  [[nodiscard]] std::string_view Finish() {
    if (mCount > 0) PutBits(0, 8 - mCount);
    return mBytes;
  }

 private:
  void PutBits(std::uint32_t value, int count) {
    mBits = mBits << count | value;
    mCount += count;
    while (mCount >= 8) {
      mCount -= 8;
      mBytes += static_cast<char>(mBits >> mCount);
    }
  }

  std::string mBytes;
  std::uint64_t mBits = 0;
  int mCount = 0;
};

/// A number in groups of seven bits, least significant first, unlike those of the directory.
void PutLowFirst(std::string& output, std::uint32_t value) {
  for (; value >= 0x80; value >>= 7) output += static_cast<char>(value | 0x80);
  output += static_cast<char>(value);
}

std::uint64_t HashOf(std::string_view text, bool inTitle) {
  std::uint64_t hash = inTitle ? 0x84222325cbf29ce4ULL : 0xcbf29ce484222325ULL;
  for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3ULL;
  return hash ^ (hash >> 29);
}

/// Fills nodes of one level with words that are stored without the beginning they share with the word before.
class NodeFiller {
 public:
  explicit NodeFiller(std::size_t header) : mHeader(header) { Reset(); }

  /// False if the node is full; nothing was added then. `rest` follows the word.
  [[nodiscard]] bool Add(std::string_view word, std::string_view rest) {
    std::size_t shared = 0;
    while (shared < word.size() && shared < mLast.size() && word[shared] == mLast[shared]) ++shared;
    const auto tail = word.substr(shared);
    if (mNode.size() + 2 + tail.size() + rest.size() > NodeSize) return false;
    mNode += static_cast<char>(tail.size() + 1);
    mNode += static_cast<char>(shared);
    mNode.append(tail).append(rest);
    mLast = word;
    return true;
  }
  [[nodiscard]] bool IsEmpty() const noexcept { return mNode.size() == mHeader; }
  [[nodiscard]] const std::string& LastWord() const noexcept { return mLast; }
  /// The finished node of exactly `NodeSize` bytes; the number of free bytes stands in its header's last word.
  [[nodiscard]] std::string Take() {
    SetLittleEndian<2>(mNode, mHeader - 2, NodeSize - mNode.size());
    auto node = std::move(mNode);
    node.resize(NodeSize);
    Reset();
    return node;
  }

 private:
  void Reset() {
    mNode.assign(mHeader, '\0');
    mLast.clear();
  }
  std::size_t mHeader;
  std::string mNode;
  std::string mLast;
};

struct NodePlace {
  std::string lastWord;
  std::uint32_t offset = 0;
};

/// One level of index over nodes.
std::vector<NodePlace> WriteIndexLevel(const std::vector<NodePlace>& below, std::uint32_t& at, std::string& output) {
  std::vector<NodePlace> level;
  NodeFiller filler(IndexHeader);
  const auto finish = [&] {
    level.push_back({filler.LastWord(), at});
    output += filler.Take();
    at += NodeSize;
  };
  for (const auto& node : below) {
    std::string rest;
    PutDword(rest, node.offset);
    PutWord(rest, 0);
    if (!filler.Add(node.lastWord, rest)) {
      finish();
      (void)filler.Add(node.lastWord, rest);  // a single entry always fits an empty node
    }
  }
  finish();
  return level;
}

}  // namespace

std::string_view FullTextIndex::TextOf(const Word& word) const {
  return std::string_view(mText).substr(word.text, word.length);
}

void FullTextIndex::BeginPage(std::uint32_t topic) {
  mTopic = topic;
  mPosition = 0;
  mPlaces.clear();
  mPageWords.clear();
}

void FullTextIndex::AddWord(std::string_view word, bool inTitle) {
  if (word.empty()) return;
  const auto number = FindOrAdd(word.substr(0, LongestWord), inTitle);
  auto& entry = mWords[number];
  const auto place = static_cast<std::uint32_t>(mPlaces.size());
  mPlaces.push_back({mPosition++, NoPlace});
  if (entry.firstPlace == NoPlace) {
    entry.firstPlace = place;
    mPageWords.push_back(number);
  } else {
    mPlaces[entry.lastPlace].next = place;
  }
  entry.lastPlace = place;
  ++mTotalWords;
}

void FullTextIndex::EndPage() {
  for (const auto number : mPageWords) WritePlacesOfPage(mWords[number]);
  ++mPages;
  if (mChains.Size() > mMemory) MovePlacesToFile();
}

void FullTextIndex::MovePlacesToFile() {
  mRuns.BeginRun();
  for (const auto number : WordOrder()) {
    auto& word = mWords[number];
    if (word.bytesInMemory == 0) continue;
    mRuns.BeginWord(number, std::exchange(word.bytesInMemory, 0));
    mChains.Read(std::exchange(word.places, {}), [this](std::string_view piece) { mRuns.Append(piece); });
  }
  mRuns.EndRun();
  mChains = {};
}

void FullTextIndex::WritePlacesOfPage(Word& word) {
  std::uint32_t count = 0;
  for (auto place = word.firstPlace; place != NoPlace; place = mPlaces[place].next) ++count;
  BitPacker bits;
  bits.PutScaled(mTopic - word.lastTopic, TopicRoot);
  bits.PutScaled(count, CountRoot);
  std::uint32_t before = 0;
  for (auto place = word.firstPlace; place != NoPlace; place = mPlaces[place].next) {
    bits.PutScaled(mPlaces[place].position - before, PositionRoot);
    before = mPlaces[place].position;
  }
  const auto bytes = bits.Finish();
  mChains.Append(word.places, bytes);
  word.bytes += static_cast<std::uint32_t>(bytes.size());
  word.bytesInMemory += static_cast<std::uint32_t>(bytes.size());
  word.lastTopic = mTopic;
  ++word.pages;
  word.firstPlace = word.lastPlace = NoPlace;
}

std::uint32_t FullTextIndex::FindOrAdd(std::string_view text, bool inTitle) {
  if ((mWords.size() + 1) * 2 > mTable.size()) GrowTable();
  const auto mask = mTable.size() - 1;
  auto slot = HashOf(text, inTitle) & mask;
  for (; mTable[slot] != 0; slot = (slot + 1) & mask) {
    const auto& word = mWords[mTable[slot] - 1];
    if (word.inTitle == inTitle && TextOf(word) == text) return mTable[slot] - 1;
  }
  Word word;
  word.text = static_cast<std::uint32_t>(mText.size());
  word.length = static_cast<std::uint8_t>(text.size());
  word.inTitle = inTitle;
  mText += text;
  mWords.push_back(word);
  mTable[slot] = static_cast<std::uint32_t>(mWords.size());
  return mTable[slot] - 1;
}

void FullTextIndex::GrowTable() {
  mTable.assign(std::max<std::size_t>(1024, mTable.size() * 2), 0);
  const auto mask = mTable.size() - 1;
  for (std::size_t i = 0; i < mWords.size(); ++i) {
    auto slot = HashOf(TextOf(mWords[i]), mWords[i].inTitle) & mask;
    while (mTable[slot] != 0) slot = (slot + 1) & mask;
    mTable[slot] = static_cast<std::uint32_t>(i + 1);
  }
}

namespace {

struct LeafPlan {
  std::size_t end = 0;  ///< one behind its last word
  std::uint32_t offset = 0;
  std::string node;
};

}  // namespace

std::vector<std::uint32_t> FullTextIndex::WordOrder() const {
  std::vector<std::uint32_t> order(mWords.size());
  std::iota(order.begin(), order.end(), 0U);
  std::sort(order.begin(), order.end(), [&](std::uint32_t left, std::uint32_t right) {
    const auto compared = TextOf(mWords[left]).compare(TextOf(mWords[right]));
    return compared != 0 ? compared < 0 : mWords[left].inTitle < mWords[right].inTitle;
  });
  return order;
}

void FullTextIndex::Write(std::uint32_t codePage, std::uint32_t localeId,
                          const std::function<void(std::string_view)>& sink) {
  const auto order = WordOrder();
  // The places of a leaf's words stand in front of it. Only the nodes are made ahead, since the header must know
  // where the root will be.
  std::vector<LeafPlan> leaves;
  std::vector<NodePlace> level;
  NodeFiller filler(LeafHeader);
  std::uint32_t at = HeaderSize;
  const auto finishLeaf = [&](std::size_t end) {
    level.push_back({filler.LastWord(), at});
    leaves.push_back({end, at, filler.Take()});
    at += NodeSize;
  };
  for (std::size_t i = 0; i < order.size(); ++i) {
    const auto& word = mWords[order[i]];
    const auto rest = [&] {
      std::string bytes(1, word.inTitle ? '\1' : '\0');
      PutLowFirst(bytes, word.pages);
      PutDword(bytes, at);
      PutWord(bytes, 0);
      PutLowFirst(bytes, word.bytes);
      return bytes;
    };
    if (!filler.Add(TextOf(word), rest())) {
      finishLeaf(i);
      (void)filler.Add(TextOf(word), rest());
    }
    at += word.bytes;
  }
  if (!filler.IsEmpty() || leaves.empty()) finishLeaf(order.size());
  const auto lastLeaf = leaves.back().offset;
  std::string indexNodes;
  std::size_t depth = 1;
  while (level.size() > 1) {
    level = WriteIndexLevel(level, at, indexNodes);
    ++depth;
  }
  sink(Header(codePage, localeId, level.front().offset, lastLeaf, depth));
  std::size_t written = 0;
  for (std::size_t i = 0; i < leaves.size(); ++i) {
    for (; written < leaves[i].end; ++written) {
      mRuns.Read(order[written], sink);
      mChains.Read(mWords[order[written]].places, sink);
    }
    SetLittleEndian<4>(leaves[i].node, 0, i + 1 < leaves.size() ? leaves[i + 1].offset : 0);
    sink(leaves[i].node);
  }
  sink(indexNodes);
}

std::string FullTextIndex::Header(std::uint32_t codePage, std::uint32_t localeId, std::uint32_t root,
                                  std::uint32_t lastLeaf, std::size_t depth) const {
  std::uint32_t longest = 0;
  std::uint64_t unique = 0;
  for (const auto& word : mWords) {
    longest = std::max<std::uint32_t>(longest, word.length);
    unique += word.length;
  }
  std::string header;
  PutDword(header, 0x00280000);
  PutDword(header, mPages);
  PutDword(header, lastLeaf);
  PutDword(header, 0);
  PutDword(header, 0);
  PutDword(header, root);
  PutWord(header, depth);
  PutDword(header, 7);
  for (const int value : {Scale, TopicRoot, Scale, CountRoot, Scale, PositionRoot}) header += static_cast<char>(value);
  header.resize(0x2E);
  PutDword(header, NodeSize);
  PutDword(header, 0);
  PutDword(header, 0);
  PutDword(header, longest);
  PutDword(header, mTotalWords);
  PutDword(header, mWords.size());
  PutDword(header, unique);
  header.resize(0x7A);
  PutDword(header, codePage);
  PutDword(header, localeId);
  header.resize(HeaderSize);
  return header;
}

}  // namespace quillbook::compile
