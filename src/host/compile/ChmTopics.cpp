#include "host/compile/ChmTopics.h"

#include <algorithm>
#include <functional>
#include <numeric>

#include "host/compile/Bytes.h"
#include "host/compile/Names.h"

namespace quillbook::compile {

namespace {

constexpr std::size_t TableBlock = 4096;
constexpr std::size_t TableRecord = 12;
constexpr std::size_t RecordsPerBlock = TableBlock / TableRecord;  // 341, and four bytes to spare
constexpr std::size_t UrlBlock = 0x4000;
constexpr std::uint16_t InContents = 6;
constexpr std::uint16_t NotInContents = 2;

}  // namespace

std::uint32_t ChmStrings::Add(std::string_view text) {
  if (text.empty()) return 0;
  const auto hash = std::hash<std::string_view>()(text);
  const auto known = mKnown.Find(hash, [&](std::uint32_t offset) {
    return std::string_view(mBytes).substr(offset).starts_with(text) && mBytes[offset + text.size()] == '\0';
  });
  if (known) return *known;
  const auto room = BlockSize - mBytes.size() % BlockSize;
  if (text.size() + 1 > room && text.size() + 1 <= BlockSize) mBytes.append(room, '\0');
  const auto offset = static_cast<std::uint32_t>(mBytes.size());
  mBytes.append(text).push_back('\0');
  mKnown.Add(hash, offset);
  return offset;
}

std::uint32_t ChmTopics::Add(std::string_view local, std::uint32_t title) {
  if (const auto known = Find(local); known < mTopics.size()) {
    auto& topic = mTopics[known];
    if (topic.title == NoTitle) topic.title = title;
    return static_cast<std::uint32_t>(known);
  }
  const auto number = static_cast<std::uint32_t>(mTopics.size());
  mTopics.push_back({static_cast<std::uint32_t>(mLocals.size()), title, 0, false});
  mLocals.emplace_back(local);
  mByLocal.Add(HashOfName(local), number);
  return number;
}

std::uint32_t ChmTopics::AddTitled(std::string_view local, std::uint32_t title) {
  const auto first = Add(local, title);
  if (mTopics[first].title == title) return first;
  const auto hash = HashOfName(local) ^ title * 0x9E3779B97F4A7C15ULL;
  const auto known = mByLocalAndTitle.Find(
      hash, [&](std::uint32_t number) { return mTopics[number].title == title && NameEquals(LocalOf(number), local); });
  if (known) return *known;
  const auto number = static_cast<std::uint32_t>(mTopics.size());
  mTopics.push_back({SameLocal(mTopics[first].local, local), title, 0, false});
  mByLocalAndTitle.Add(hash, number);
  return number;
}

std::uint32_t ChmTopics::SameLocal(std::uint32_t first, std::string_view local) {
  if (mLocals[first] == local) return first;
  mLocals.emplace_back(local);
  return static_cast<std::uint32_t>(mLocals.size() - 1);
}

void ChmTopics::SetInContents(std::uint32_t topic, std::uint32_t contentsOffset) {
  if (mTopics[topic].inContents) return;  // the first place in the contents is the one to show
  mTopics[topic].inContents = true;
  mTopics[topic].contentsOffset = contentsOffset;
}

std::size_t ChmTopics::Find(std::string_view local) const {
  return mByLocal.Find(HashOfName(local), [&](std::uint32_t number) { return NameEquals(LocalOf(number), local); })
      .value_or(static_cast<std::uint32_t>(mTopics.size()));
}

std::vector<std::uint32_t> ChmTopics::UrlTableOrder() const {
  std::vector<std::pair<std::uint32_t, std::uint32_t>> rows;
  rows.reserve(mTopics.size());
  for (std::size_t i = 0; i < mTopics.size(); ++i)
    rows.emplace_back(UrlHash(mLocals[mTopics[i].local]), static_cast<std::uint32_t>(i));
  std::sort(rows.begin(), rows.end());
  std::vector<std::uint32_t> order;
  order.reserve(rows.size());
  for (const auto& row : rows) order.push_back(row.second);
  return order;
}

std::string ChmTopics::TopicsBytes() const {
  std::vector<std::uint32_t> rowOf(mTopics.size());
  const auto order = UrlTableOrder();
  for (std::size_t row = 0; row < order.size(); ++row) rowOf[order[row]] = UrlTableOffset(row);
  std::string bytes;
  bytes.reserve(mTopics.size() * 16);
  for (std::size_t i = 0; i < mTopics.size(); ++i) {
    PutDword(bytes, mTopics[i].contentsOffset);
    PutDword(bytes, mTopics[i].title);
    PutDword(bytes, rowOf[i]);
    PutWord(bytes, mTopics[i].inContents ? InContents : NotInContents);
    PutWord(bytes, 0);
  }
  return bytes;
}

std::uint32_t ChmTopics::UrlTableOffset(std::size_t row) {
  return static_cast<std::uint32_t>(row / RecordsPerBlock * TableBlock + row % RecordsPerBlock * TableRecord);
}

std::string ChmTopics::UrlTableBytes() const {
  const auto offsets = UrlStringOffsets(nullptr);
  const auto order = UrlTableOrder();
  std::string bytes;
  bytes.reserve(mTopics.size() * TableRecord + TableBlock);
  for (std::size_t row = 0; row < order.size(); ++row) {
    if (row > 0 && row % RecordsPerBlock == 0) PutDword(bytes, TableBlock);
    PutDword(bytes, UrlHash(LocalOf(order[row])));
    PutDword(bytes, order[row]);
    PutDword(bytes, offsets[order[row]]);
  }
  return bytes;
}

std::string ChmTopics::UrlStringsBytes() const {
  std::string bytes;
  (void)UrlStringOffsets(&bytes);
  return bytes;
}

std::vector<std::uint32_t> ChmTopics::UrlStringOffsets(std::string* bytes) const {
  std::vector<std::uint32_t> offsets;
  offsets.reserve(mTopics.size());
  std::size_t at = 1;
  if (bytes) bytes->push_back('\0');
  for (const auto& topic : mTopics) {
    const auto& local = mLocals[topic.local];
    const auto length = 8 + local.size() + 1;
    const auto room = UrlBlock - at % UrlBlock;
    if (length > room) {
      at += room;
      if (bytes) bytes->append(room, '\0');
    }
    offsets.push_back(static_cast<std::uint32_t>(at));
    at += length;
    if (!bytes) continue;
    PutDword(*bytes, 0);  // neither an outside address
    PutDword(*bytes, 0);  // nor a frame
    bytes->append(local).push_back('\0');
  }
  return offsets;
}

std::uint32_t UrlHash(std::string_view local) noexcept {
  std::uint32_t hash = 0;
  for (char c : local) {
    if (c == '/') c = '\\';
    auto value = static_cast<unsigned char>(c);
    if (value >= '_' && value <= 'z') value = static_cast<unsigned char>(value - 0x20);
    hash = hash * 43 + value - 0x30;
  }
  return hash;
}

}  // namespace quillbook::compile
