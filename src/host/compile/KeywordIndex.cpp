#include "host/compile/KeywordIndex.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "host/compile/Bytes.h"
#include "quillbook/base/Collation.h"
#include "quillbook/base/Text.h"

namespace quillbook::compile {

namespace {

constexpr std::size_t BlockSize = 2048;
constexpr std::size_t ListingHeader = 12;
constexpr std::size_t IndexHeader = 8;
constexpr std::uint32_t NoBlock = 0xFFFFFFFF;
constexpr std::size_t DataRecord = 13;  // of each keyword in the stream "Data"; its content is of no use to a viewer

/// Compares paths level by level in the order of a language.
class PathOrder {
 public:
  explicit PathOrder(std::uint32_t localeId) : mCollation(localeId) {}

  [[nodiscard]] int Compare(const std::vector<std::string>& left, const std::vector<std::string>& right) const {
    const auto common = std::min(left.size(), right.size());
    for (std::size_t i = 0; i < common; ++i)
      if (const int compared = mCollation.Compare(left[i], right[i])) return compared;
    return left.size() == right.size() ? 0 : left.size() < right.size() ? -1 : 1;
  }

 private:
  Collation mCollation;
};

void PutUtf16(std::string& output, std::string_view text) {
  output += ToUtf16Bytes(text);
  PutWord(output, 0);
}

/// At most `LongestKeyword` UTF-16 code units, never half a character.
std::string Shortened(std::string_view text) {
  if (Utf16Length(text) <= LongestKeyword) return std::string(text);
  std::size_t at = 0;
  std::size_t units = 0;
  while (at < text.size()) {
    auto next = at;
    units += NextCodePoint(text, next) > 0xFFFF ? 2 : 1;
    if (units > LongestKeyword) break;
    at = next;
  }
  return std::string(text.substr(0, at));
}

std::string JoinedPath(const KeywordEntry& entry) {
  std::string text;
  for (const auto& part : entry.path) text += text.empty() ? part : ", " + part;
  return Shortened(text);
}

std::string StoredName(const KeywordEntry& entry) {
  std::size_t above = 0;
  for (std::size_t i = 0; i + 1 < entry.path.size(); ++i) above += entry.path[i].size() + 2;
  const auto whole = JoinedPath(entry);
  return above < whole.size() ? whole.substr(above) : std::string();
}

/// Where in the joined path the last keyword begins.
std::size_t StartOfLast(const KeywordEntry& entry) {
  std::size_t start = 0;
  for (std::size_t i = 0; i + 1 < entry.path.size(); ++i) start += Utf16Length(entry.path[i]) + 2;
  return std::min(start, LongestKeyword);
}

/// How many targets fit a block behind the joined path.
std::size_t StoredTopics(const KeywordEntry& entry, std::string_view whole) {
  constexpr std::size_t numbers = 2 + 2 + 2 + 4 + 4 + 4 + 16;  // with the end of the path, and room behind the targets
  const auto room = (BlockSize - ListingHeader - Utf16Length(whole) * 2 - numbers) / 4;
  return std::min(entry.topics.size(), room);
}

/// What a keyword's record begins with in listing and index blocks alike.
std::string RecordOf(const KeywordEntry& entry, std::size_t& truncated) {
  const auto whole = JoinedPath(entry);
  std::string record;
  PutUtf16(record, whole);
  PutWord(record, entry.seeAlso.empty() ? 0 : 2);
  PutWord(record, entry.path.size() - 1);
  PutDword(record, StartOfLast(entry));
  PutDword(record, 0);
  if (!entry.seeAlso.empty()) {
    PutDword(record, 1);
    PutUtf16(record, Shortened(entry.seeAlso));
    return record;
  }
  const auto count = StoredTopics(entry, whole);
  truncated += count < entry.topics.size();
  PutDword(record, count);
  for (std::size_t i = 0; i < count; ++i) PutDword(record, entry.topics[i]);
  return record;
}

struct Block {
  std::string records;
  std::size_t count = 0;
  std::size_t firstEntry = 0;  ///< number of the first keyword below it
  std::string firstRecord;     ///< for the level above
};

/// A level of blocks over the blocks of the level below, which are numbered from `firstBelow`.
std::vector<Block> IndexLevel(const std::vector<Block>& below, std::size_t firstBelow) {
  std::vector<Block> level;
  for (std::size_t i = 0; i < below.size(); ++i) {
    std::string child;
    PutDword(child, firstBelow + i);
    const auto record = below[i].firstRecord + child;
    // The first block below needs no keyword: what comes before the first record lies there.
    if (level.empty() || IndexHeader + level.back().records.size() + record.size() > BlockSize) {
      level.push_back({child, 0, below[i].firstEntry, below[i].firstRecord});
      continue;
    }
    level.back().records += record;
    ++level.back().count;
  }
  return level;
}

std::string FinishedIndexBlock(const Block& block) {
  std::string bytes;
  PutWord(bytes, BlockSize - 4 - block.records.size());
  PutWord(bytes, block.count);
  bytes += block.records;
  bytes.resize(BlockSize);
  return bytes;
}

std::string FinishedListingBlock(const Block& block, std::size_t number, std::size_t count) {
  std::string bytes;
  PutWord(bytes, BlockSize - ListingHeader - block.records.size());
  PutWord(bytes, block.count);
  PutDword(bytes, number == 0 ? NoBlock : number - 1);
  PutDword(bytes, number + 1 == count ? NoBlock : number + 1);
  bytes += block.records;
  bytes.resize(BlockSize);
  return bytes;
}

std::vector<Block> ListingBlocks(const std::vector<KeywordEntry>& entries, std::size_t& truncated) {
  std::vector<Block> blocks;
  for (std::size_t i = 0; i < entries.size(); ++i) {
    auto record = RecordOf(entries[i], truncated);
    const auto first = record;
    PutDword(record, 1);
    PutDword(record, i * DataRecord);
    if (blocks.empty() || ListingHeader + blocks.back().records.size() + record.size() > BlockSize)
      blocks.push_back({{}, 0, i, first});
    blocks.back().records += record;
    ++blocks.back().count;
  }
  return blocks;
}

std::string TreeHeader(std::size_t lastListing, std::size_t root, std::size_t blocks, std::size_t depth,
                       std::size_t keywords, std::uint32_t codePage, std::uint32_t localeId) {
  std::string header;
  PutWord(header, 0x293B);
  PutWord(header, 2);
  PutWord(header, BlockSize);
  header += "X44";
  header.resize(0x16);
  PutDword(header, 0);
  PutDword(header, lastListing);
  PutDword(header, root);
  PutDword(header, NoBlock);
  PutDword(header, blocks);
  PutWord(header, depth);
  PutDword(header, keywords);
  PutDword(header, codePage);
  PutDword(header, localeId);
  PutDword(header, 1);
  PutDword(header, 10031);
  for (int i = 0; i < 3; ++i) PutDword(header, 0);
  return header;
}

}  // namespace

StoredKeyword StoredPartOf(const KeywordEntry& entry) {
  if (!entry.seeAlso.empty()) return {StoredName(entry), 0, Shortened(entry.seeAlso)};
  return {StoredName(entry), StoredTopics(entry, JoinedPath(entry)), {}};
}

std::vector<KeywordEntry> SortKeywords(std::vector<KeywordEntry> entries, std::uint32_t localeId) {
  const PathOrder order(localeId);
  std::stable_sort(entries.begin(), entries.end(), [&](const KeywordEntry& left, const KeywordEntry& right) {
    return order.Compare(left.path, right.path) < 0;
  });
  std::vector<KeywordEntry> sorted;
  sorted.reserve(entries.size());
  std::unordered_map<std::uint32_t, std::size_t> lastOwner;  // the entry that got a topic last, by its number from 1
  for (auto& entry : entries) {
    if (!sorted.empty() && order.Compare(sorted.back().path, entry.path) == 0 && entry.seeAlso.empty() &&
        sorted.back().seeAlso.empty()) {
      for (const auto topic : entry.topics)
        if (std::exchange(lastOwner[topic], sorted.size()) != sorted.size()) sorted.back().topics.push_back(topic);
      continue;
    }
    // Sub-keywords need the keywords above them, of which the one before in the list may bring some.
    for (std::size_t depth = 1; depth < entry.path.size(); ++depth) {
      const std::vector<std::string> above(entry.path.begin(), entry.path.begin() + static_cast<std::ptrdiff_t>(depth));
      const auto& last = sorted.empty() ? std::vector<std::string>{} : sorted.back().path;
      const bool known = last.size() >= depth &&
                         order.Compare({last.begin(), last.begin() + static_cast<std::ptrdiff_t>(depth)}, above) == 0;
      if (!known) sorted.push_back({above, {}, {}});
    }
    sorted.push_back(std::move(entry));
    for (const auto topic : sorted.back().topics) lastOwner[topic] = sorted.size();
  }
  return sorted;
}

KeywordStreams BuildKeywordIndex(const std::vector<KeywordEntry>& entries, std::uint32_t codePage,
                                 std::uint32_t localeId, std::size_t& truncated) {
  KeywordStreams streams;
  streams.properties.resize(32);
  if (entries.empty()) return streams;
  const auto listing = ListingBlocks(entries, truncated);
  std::string blocks;
  PutWord(streams.map, listing.size());
  for (std::size_t i = 0; i < listing.size(); ++i) {
    blocks += FinishedListingBlock(listing[i], i, listing.size());
    PutDword(streams.map, listing[i].firstEntry);
    PutDword(streams.map, i);
  }
  auto level = listing;
  std::size_t count = listing.size();
  std::size_t firstOfLevel = 0;
  std::size_t depth = 1;
  while (level.size() > 1) {
    const auto above = IndexLevel(level, firstOfLevel);
    firstOfLevel = count;
    for (const auto& block : above) blocks += FinishedIndexBlock(block);
    count += above.size();
    ++depth;
    level = above;
  }
  streams.tree = TreeHeader(listing.size() - 1, count - 1, count, depth, entries.size(), codePage, localeId) + blocks;
  streams.data.resize(entries.size() * DataRecord);
  return streams;
}

}  // namespace quillbook::compile
