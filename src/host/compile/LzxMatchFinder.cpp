#include "host/compile/LzxMatchFinder.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace quillbook::compile {

void LzxMatchFinder::Begin(std::string_view data) {
  mData = data;
  // Positions of earlier data lie below the base and so count as empty: the tables needn't be cleared each time.
  if (mBase > 0xFFF00000U) {
    mHead.fill(0);
    mBase = 0;
  }
  mBase += mBase == 0 ? 1 : 0x10000;
}

std::uint32_t LzxMatchFinder::HashAt(std::uint32_t position) const noexcept {
  std::uint32_t three = 0;
  std::memcpy(&three, mData.data() + position, 3);
  return (three * 0x9E3779B1U) >> (32 - HashBits);
}

std::uint32_t LzxMatchFinder::CommonLength(const char* left, const char* right, std::uint32_t limit) noexcept {
  std::uint32_t length = 0;
  while (length + 8 <= limit) {
    std::uint64_t a = 0;
    std::uint64_t b = 0;
    std::memcpy(&a, left + length, 8);
    std::memcpy(&b, right + length, 8);
    if (a != b) return length + static_cast<std::uint32_t>(std::countr_zero(a ^ b)) / 8;
    length += 8;
  }
  while (length < limit && left[length] == right[length]) ++length;
  return length;
}

void LzxMatchFinder::Insert(std::uint32_t position) {
  if (position + MinimumLength > mData.size()) return;
  auto& head = mHead[HashAt(position)];
  mPrevious[position] = head;
  head = position + mBase;
}

std::span<const LzxMatchFinder::Match> LzxMatchFinder::FindAndInsert(std::uint32_t position, std::uint32_t limit,
                                                                     std::uint32_t longerThan) {
  if (position + MinimumLength > mData.size()) return {};
  auto& head = mHead[HashAt(position)];
  auto candidate = head;
  mPrevious[position] = candidate;
  head = position + mBase;
  auto best = std::max(longerThan, MinimumLength - 1);
  if (limit <= best) return {};
  std::size_t count = 0;
  const char* here = mData.data() + position;
  for (auto left = MaximumChain; candidate >= mBase && left > 0; --left) {
    const auto at = candidate - mBase;
    const char* there = mData.data() + at;
    if (there[best] == here[best]) {
      const auto length = CommonLength(here, there, limit);
      if (length > best) {
        best = length;
        mFound[count++] = {length, position - at};
        if (length >= GoodLength || length == limit) break;
      }
    }
    candidate = mPrevious[at];
  }
  return std::span(mFound).first(count);
}

}  // namespace quillbook::compile
