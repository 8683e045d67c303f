#include "host/compile/ChmTopics.h"

#include <algorithm>
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
  const auto [known, added] = mKnown.emplace(std::string(text), 0);
  if (!added) return known->second;
  const auto room = BlockSize - mBytes.size() % BlockSize;
  if (text.size() + 1 > room && text.size() + 1 <= BlockSize) mBytes.append(room, '\0');
  known->second = static_cast<std::uint32_t>(mBytes.size());
  mBytes.append(text).push_back('\0');
  return known->second;
}

std::uint32_t ChmTopics::Add(std::string_view local, std::uint32_t title) {
  const auto [known, added] = mByLocal.emplace(FoldName(local), static_cast<std::uint32_t>(mTopics.size()));
  if (added) mTopics.push_back({std::string(local), title, 0, false});
  auto& topic = mTopics[known->second];
  if (topic.title == NoTitle) topic.title = title;
  return known->second;
}

std::uint32_t ChmTopics::AddTitled(std::string_view local, std::uint32_t title) {
  const auto first = Add(local, title);
  if (mTopics[first].title == title) return first;
  const auto key = FoldName(local) + '\n' + std::to_string(title);
  const auto [known, added] = mByLocalAndTitle.emplace(key, static_cast<std::uint32_t>(mTopics.size()));
  if (added) mTopics.push_back({std::string(local), title, 0, false});
  return known->second;
}

void ChmTopics::SetInContents(std::uint32_t topic, std::uint32_t contentsOffset) {
  if (mTopics[topic].inContents) return;  // the first place in the contents is the one to show
  mTopics[topic].inContents = true;
  mTopics[topic].contentsOffset = contentsOffset;
}

std::size_t ChmTopics::Find(std::string_view local) const {
  const auto found = mByLocal.find(FoldName(local));
  return found == mByLocal.end() ? mTopics.size() : found->second;
}

std::vector<std::uint32_t> ChmTopics::UrlTableOrder() const {
  std::vector<std::pair<std::uint32_t, std::uint32_t>> rows;
  rows.reserve(mTopics.size());
  for (std::size_t i = 0; i < mTopics.size(); ++i)
    rows.emplace_back(UrlHash(mTopics[i].local), static_cast<std::uint32_t>(i));
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
    PutDword(bytes, UrlHash(mTopics[order[row]].local));
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
    const auto length = 8 + topic.local.size() + 1;
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
    bytes->append(topic.local).push_back('\0');
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
