#include "host/compile/LzxMatchFinder.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace quillbook::compile {

namespace {

/// Hash of `bytes` low bytes of a word.
template <int bytes, int bits>
std::uint32_t HashOf(std::uint32_t word) noexcept {
  return (word << (32 - 8 * bytes)) * 0x9E3779B1U >> (32 - bits);
}

std::uint32_t FourAt(const char* bytes) noexcept {
  std::uint32_t word = 0;
  std::memcpy(&word, bytes, sizeof word);
  return word;
}

}  // namespace

void LzxMatchFinder::Begin(std::string_view data) {
  mData = data;
  mLatestOfFour.fill(0);
  mLatestOfThree.fill(0);
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

LzxMatchFinder::Latest LzxMatchFinder::Enter(std::uint32_t position) noexcept {
  const auto word = FourAt(mData.data() + position);
  auto& ofFour = mLatestOfFour[HashOf<4, BitsOfFour>(word)];
  auto& ofThree = mLatestOfThree[HashOf<3, BitsOfThree>(word)];
  const Latest before{ofThree, ofFour};
  mPrevious[position] = ofFour;
  ofFour = ofThree = static_cast<std::uint16_t>(position + 1);
  return before;
}

void LzxMatchFinder::Insert(std::uint32_t position) {
  if (position + HashedLength <= mData.size()) Enter(position);
}

std::span<const LzxMatchFinder::Match> LzxMatchFinder::FindAndInsert(std::uint32_t position, std::uint32_t limit,
                                                                     std::uint32_t longerThan) {
  mFoundCount = 0;
  if (position + HashedLength > mData.size()) return {};
  const auto latest = Enter(position);
  if (limit < MinimumLength || limit <= longerThan) return {};
  if (latest.ofThree && longerThan < MinimumLength) {
    const auto at = latest.ofThree - 1;
    const auto length = CommonLength(mData.data() + position, mData.data() + at, limit);
    if (length >= MinimumLength) mFound[mFoundCount++] = {length, position - at};
    longerThan = std::max(longerThan, length);
  }
  FindLonger(position, limit, std::max(longerThan, MinimumLength), latest.ofFour);
  return std::span(mFound).first(mFoundCount);
}

void LzxMatchFinder::FindLonger(std::uint32_t position, std::uint32_t limit, std::uint32_t best,
                                std::uint32_t candidate) {
  const auto goodLength = std::min(limit, GoodLength);
  if (best >= goodLength) return;
  const char* here = mData.data() + position;
  // Few are longer than the best so far, so the bytes that would make them so are looked at first.
  auto end = FourAt(here + best - 3);
  for (auto left = MaximumChain; candidate && left > 0; --left) {
    const auto at = candidate - 1;
    const char* there = mData.data() + at;
    candidate = mPrevious[at];
    if (FourAt(there + best - 3) != end) continue;
    const auto length = CommonLength(here, there, limit);
    if (length <= best) continue;
    best = length;
    mFound[mFoundCount++] = {length, position - at};
    if (best >= goodLength) break;
    end = FourAt(here + best - 3);
  }
}

}  // namespace quillbook::compile
