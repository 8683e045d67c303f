#include "quillbook/base/CollectionCore.h"

#include <algorithm>

#include "quillbook/base/Failure.h"
#include "quillbook/base/Text.h"

namespace quillbook::detail {

namespace {

// Below this many keys a walk over the members is quicker than a table, and most collections stay below it.
constexpr std::size_t SmallCount = 8;

// Most collections have one to four members; growing by doubling from one would move them twice.
constexpr std::size_t FirstCapacity = 4;

// Room between the order numbers of neighbours: 32 insertions at one place before all are numbered anew.
constexpr std::uint64_t OrderStep = std::uint64_t{1} << 32;

bool Matches(const CollectionEntry* entry, std::string_view key, std::uint64_t hash) noexcept {
  return entry->keyed && entry->hash == hash && EqualsIgnoringCase(entry->key, key);
}

}  // namespace

CollectionEntry* CollectionCore::FindKey(std::string_view key) const noexcept {
  if (mKeyed == 0) return nullptr;
  const auto hash = FoldedHash(key);
  if (mTable.empty()) {
    for (auto* entry : Order())
      if (Matches(entry, key, hash)) return entry;
    return nullptr;
  }
  const auto mask = mTable.size() - 1;
  for (auto slot = hash & mask; mTable[slot]; slot = (slot + 1) & mask)
    if (Matches(mTable[slot], key, hash)) return mTable[slot];
  return nullptr;
}

CollectionEntry* CollectionCore::Find(const KeyOrPosition& which) const noexcept {
  if (which.IsKey()) return FindKey(which.Key());
  if (!which.IsPosition() || which.Position() < 1) return nullptr;
  const auto index = static_cast<std::uint64_t>(which.Position()) - 1;
  return index < Count() ? mSlots[mGap + index] : nullptr;
}

CollectionEntry* CollectionCore::Require(const KeyOrPosition& which, std::source_location where) const {
  if (auto* entry = Find(which)) return entry;
  throw Failure(which.IsPosition() ? FailureNumber::SubscriptOutOfRange : FailureNumber::InvalidCall, {}, where);
}

std::size_t CollectionCore::PositionOf(const CollectionEntry* entry) const noexcept {
  const auto order = Order();
  const auto at = std::lower_bound(order.begin(), order.end(), entry->order,
                                   [](const auto* member, std::uint64_t number) { return member->order < number; });
  return static_cast<std::size_t>(at - order.begin());
}

void CollectionCore::RequireNewKey(std::string_view key, std::source_location where) const {
  if (FindKey(key)) throw Failure(FailureNumber::KeyAlreadyExists, {}, where);
}

std::size_t CollectionCore::InsertionPlace(const KeyOrPosition& before, const KeyOrPosition& after,
                                           std::source_location where) const {
  if (!before.IsMissing()) return PositionOf(Require(before, where));
  if (!after.IsMissing()) return PositionOf(Require(after, where)) + 1;
  return Count();
}

void CollectionCore::Insert(CollectionEntry* entry, std::size_t place) {
  entry->hash = entry->keyed ? FoldedHash(entry->key) : 0;
  const auto keyed = mKeyed + (entry->keyed ? 1 : 0);
  if (keyed > 0 && Count() >= SmallCount && keyed * 2 > mTable.size()) Rebuild(keyed * 4);
  entry->order = OrderAt(place);
  OpenSlot(place, entry);
  if (entry->keyed) {
    mKeyed = keyed;
    if (!mTable.empty()) AddToTable(entry);
  }
}

void CollectionCore::Erase(CollectionEntry* entry) {
  const auto place = PositionOf(entry);
  if (entry->keyed) {
    if (!mTable.empty()) RemoveFromTable(entry);
    --mKeyed;
  }
  const auto slot = mSlots.begin() + static_cast<std::ptrdiff_t>(mGap + place);
  if (place >= Count() / 2) {
    mSlots.erase(slot);
  } else {
    std::move_backward(mSlots.begin() + static_cast<std::ptrdiff_t>(mGap), slot, slot + 1);
    ++mGap;
  }
}

/// Moves the shorter side out of the way, as far as there is a gap in front.
void CollectionCore::OpenSlot(std::size_t place, CollectionEntry* entry) {
  if (mGap > 0 && place < Count() / 2) {
    const auto first = mSlots.begin() + static_cast<std::ptrdiff_t>(mGap);
    const auto slot = std::move(first, first + static_cast<std::ptrdiff_t>(place), first - 1);
    *slot = entry;
    --mGap;
    return;
  }
  // A list used as a queue must not grow for ever.
  if (mSlots.size() == mSlots.capacity() && mGap > Count()) {
    mSlots.erase(mSlots.begin(), mSlots.begin() + static_cast<std::ptrdiff_t>(mGap));
    mGap = 0;
  }
  if (mSlots.capacity() == 0) mSlots.reserve(FirstCapacity);
  mSlots.insert(mSlots.begin() + static_cast<std::ptrdiff_t>(mGap + place), entry);
}

void CollectionCore::Reserve(std::size_t count) {
  mSlots.reserve(mGap + count);
  if (count > SmallCount && count * 2 > mTable.size()) Rebuild(count * 2);
}

std::uint64_t CollectionCore::OrderAt(std::size_t place) noexcept {
  const auto entries = Order();
  const auto before = [&] { return place == 0 ? 0 : entries[place - 1]->order; };
  if (place == entries.size()) return before() + OrderStep;
  if (entries[place]->order - before() < 2) {
    std::uint64_t order = 0;
    for (auto* entry : entries) entry->order = order += OrderStep;
  }
  return before() + (entries[place]->order - before()) / 2;
}

void CollectionCore::AddToTable(CollectionEntry* entry) noexcept {
  const auto mask = mTable.size() - 1;
  auto slot = entry->hash & mask;
  while (mTable[slot]) slot = (slot + 1) & mask;
  mTable[slot] = entry;
}

void CollectionCore::RemoveFromTable(const CollectionEntry* entry) noexcept {
  const auto mask = mTable.size() - 1;
  auto hole = entry->hash & mask;
  while (mTable[hole] != entry) hole = (hole + 1) & mask;
  // Later members of the same run move up, so that no probe stops short of them.
  for (auto slot = (hole + 1) & mask; mTable[slot]; slot = (slot + 1) & mask) {
    const auto home = mTable[slot]->hash & mask;
    if (((slot - home) & mask) >= ((slot - hole) & mask)) {
      mTable[hole] = mTable[slot];
      hole = slot;
    }
  }
  mTable[hole] = nullptr;
}

void CollectionCore::Rebuild(std::size_t capacity) {
  std::size_t size = 16;
  while (size < capacity) size *= 2;
  std::vector<CollectionEntry*> fresh(size, nullptr);
  mTable.swap(fresh);
  for (auto* entry : Order())
    if (entry->keyed) AddToTable(entry);
}

}  // namespace quillbook::detail
