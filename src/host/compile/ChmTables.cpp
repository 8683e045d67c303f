#include "host/compile/ChmTables.h"

#include <algorithm>
#include <unordered_set>

#include "host/compile/Bytes.h"
#include "host/compile/HelpProject.h"
#include "quillbook/base/Failure.h"
#include "quillbook/base/Text.h"

namespace quillbook::compile {

namespace {

constexpr std::uint32_t IsBook = 0x4;
constexpr std::uint32_t HasPage = 0x8;
constexpr std::size_t TreeHeader = 0x4C;
constexpr std::size_t ListingHeader = 12;
constexpr std::uint32_t NoBlock = 0xFFFFFFFF;
constexpr std::size_t LongestText = 0x4000;  // longer than any block in which a text must lie
constexpr std::uint64_t EntryMemory = 128;   // of an entry or a target, beside its texts

/// A text that ends with two zero bytes; false if it doesn't end in the block.
bool TakeUtf16(std::string_view block, std::size_t& at, std::string& text) {
  for (auto end = at; end + 2 <= block.size(); end += 2) {
    if (GetWord(block, end) != 0) continue;
    text = FromUtf16Bytes(block.substr(at, end - at));
    at = end + 2;
    return true;
  }
  return false;
}

/// The part of a text from the given UTF-16 code unit on.
std::string FromUnit(const std::string& text, std::size_t unit) {
  const auto bytes = ToUtf16Bytes(text);
  return unit * 2 < bytes.size() ? FromUtf16Bytes(std::string_view(bytes).substr(unit * 2)) : std::string();
}

}  // namespace

std::map<int, std::string> ReadSystemRecords(const StorageReader& reader) {
  std::map<int, std::string> records;
  const auto* entry = reader.Find("/#SYSTEM");
  if (!entry) return records;
  const auto bytes = reader.ReadAll(*entry, 1U << 20);
  for (std::size_t at = 4; at + 4 <= bytes.size();) {
    const auto length = GetWord(bytes, at + 2);
    records.emplace(GetWord(bytes, at), bytes.substr(at + 4, length));
    at += 4U + length;
  }
  return records;
}

ChmTables::ChmTables(const StorageReader& reader, int codePage, std::uint64_t mostMemory)
    : mReader(reader), mCodePage(codePage), mMemoryLeft(mostMemory) {
  mStrings = Load("/#STRINGS");
  mTopics = Load("/#TOPICS");
  mUrlTable = Load("/#URLTBL");
  mUrlStrings = Load("/#URLSTR");
}

std::string ChmTables::Load(const std::string& name) {
  const auto* entry = mReader.Find(name);
  if (!entry) return {};
  try {
    return mReader.ReadAll(*entry);
  } catch (const Failure& failure) {
    mProblems.push_back(name + ": " + failure.Description());
    return {};
  }
}

void ChmTables::Charge(std::uint64_t bytes) {
  if (mMemoryLeft == 0) return;
  mMemoryLeft -= std::min(bytes, mMemoryLeft);
  if (mMemoryLeft == 0)
    mProblems.emplace_back("contents and index are longer than they can honestly be; the rest is left out");
}

std::string ChmTables::TextAt(const std::string& table, std::size_t offset) {
  if (offset >= table.size() || IsExhausted()) return {};
  const auto text = std::string_view(table).substr(offset, LongestText);
  auto decoded = DecodeHelpText(std::string(text.substr(0, text.find('\0'))), mCodePage);
  Charge(decoded.size());
  return decoded;
}

std::string ChmTables::StringAt(std::uint32_t offset) {
  return TextAt(mStrings, offset);
}

ChmTables::Topic ChmTables::TopicAt(std::uint32_t number) {
  Topic topic;
  Charge(EntryMemory);
  if (number >= TopicCount()) return topic;
  const auto at = std::size_t{number} * 16;
  topic.title = StringAt(GetDword(mTopics, at + 4));
  const auto urlOffset = GetDword(mUrlTable, std::size_t{GetDword(mTopics, at + 8)} + 8);
  topic.local = TextAt(mUrlStrings, std::size_t{urlOffset} + 8);
  return topic;
}

Sitemap ChmTables::ReadContents() {
  Sitemap contents;
  const auto bytes = Load("/#TOCIDX");
  if (bytes.size() < 16) return contents;
  struct Pending {
    std::uint32_t offset;
    int level;
  };
  std::vector<Pending> pending{{GetDword(bytes, 0), 0}};
  std::unordered_set<std::uint32_t> seen;
  while (!pending.empty() && !IsExhausted()) {
    const auto [offset, level] = pending.back();
    pending.pop_back();
    if (offset == 0) continue;
    if (std::size_t{offset} + 20 > bytes.size() || !seen.insert(offset).second) {
      mProblems.push_back("#TOCIDX: an entry of the contents leads nowhere or back");
      continue;
    }
    Charge(EntryMemory);
    const auto flags = GetDword(bytes, offset + 4);
    const auto reference = GetDword(bytes, offset + 8);
    auto& entry = contents.entries.emplace_back();
    entry.level = level;
    if (flags & HasPage) {
      const auto topic = TopicAt(reference);
      entry.name = topic.title;
      entry.targets.push_back({topic.title, topic.local});
    } else {
      entry.name = StringAt(reference);
    }
    pending.push_back({GetDword(bytes, offset + 16), level});
    if (flags & IsBook) pending.push_back({GetDword(bytes, offset + 20), level + 1});
  }
  return contents;
}

/// Numbers of the blocks that list keywords, first to last. They are linked; the links are followed backwards from
/// the last one, which the header names.
std::vector<std::size_t> ChmTables::ListingBlocks(const std::string& tree, std::size_t blockSize) {
  std::vector<std::size_t> blocks;
  const auto count = (tree.size() - TreeHeader) / blockSize;
  for (auto block = GetDword(tree, 0x1A); block != NoBlock;
       block = GetDword(tree, TreeHeader + block * blockSize + 4)) {
    if (block >= count || blocks.size() >= count) {
      mProblems.push_back("the blocks of the binary index are linked wrongly");
      break;
    }
    blocks.push_back(block);
  }
  std::reverse(blocks.begin(), blocks.end());
  return blocks;
}

std::vector<IndexLine> ChmTables::ReadKeywords(const std::string& folder) {
  std::vector<IndexLine> lines;
  const auto tree = Load(folder + "BTree");
  const std::size_t blockSize = GetWord(tree, 4);
  if (tree.size() < TreeHeader) return lines;
  if (blockSize < 64) {
    mProblems.push_back("the binary index has impossible sizes");
    return lines;
  }
  for (const auto block : ListingBlocks(tree, blockSize))
    if (!IsExhausted()) ReadListing(std::string_view(tree).substr(TreeHeader + block * blockSize, blockSize), lines);
  return lines;
}

void ChmTables::ReadListing(std::string_view block, std::vector<IndexLine>& lines) {
  std::size_t at = ListingHeader;
  for (auto left = GetWord(block, 2); left > 0 && !IsExhausted(); --left) {
    IndexLine line;
    std::string path;
    if (!TakeUtf16(block, at, path) || at + 16 > block.size()) break;
    const bool seeAlso = GetWord(block, at) != 0;
    line.level = GetWord(block, at + 2);
    line.name = FromUnit(path, GetDword(block, at + 4));
    const auto count = GetDword(block, at + 12);
    at += 16;
    if (seeAlso) {
      if (!TakeUtf16(block, at, line.seeAlso)) break;
    } else {
      if (count > (block.size() - at) / 4) break;
      for (std::uint32_t i = 0; i < count; ++i, at += 4) line.topics.push_back(GetDword(block, at));
    }
    at += 8;
    Charge(EntryMemory + line.name.size() + 4 * line.topics.size());
    lines.push_back(std::move(line));
    if (left == 1) return;
  }
  if (GetWord(block, 2) > 0 && !IsExhausted()) mProblems.push_back("a block of the binary index is cut");
}

}  // namespace quillbook::compile
