// Finds things by what they hold, without a copy of it.
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace quillbook::compile {

/// A hash table of the numbers of things that its owner keeps in a list. Eight bytes a slot, and no text twice: tables
/// of tens of thousands of paths would otherwise need more memory than the paths.
class NumberTable {
 public:
  /// The number that was entered under `hash` and for which `isMeant` holds.
  template <typename Predicate>
  [[nodiscard]] std::optional<std::uint32_t> Find(std::uint64_t hash, Predicate isMeant) const {
    if (mSlots.empty()) return {};
    const auto mark = MarkOf(hash);
    for (auto at = mark & Mask(); mSlots[at].mark != Empty; at = (at + 1) & Mask())
      if (mSlots[at].mark == mark && isMeant(mSlots[at].number)) return mSlots[at].number;
    return {};
  }

  void Add(std::uint64_t hash, std::uint32_t number) {
    if ((mCount + 1) * 4 > mSlots.size() * 3) Grow();
    Put({MarkOf(hash), number});
    ++mCount;
  }

 private:
  static constexpr std::uint32_t Empty = 0;
  struct Slot {
    std::uint32_t mark = Empty;  ///< of the hash
    std::uint32_t number = 0;
  };

  static std::uint32_t MarkOf(std::uint64_t hash) noexcept {
    const auto mark = static_cast<std::uint32_t>(hash ^ hash >> 32);
    return mark == Empty ? 1 : mark;
  }
  [[nodiscard]] std::size_t Mask() const noexcept { return mSlots.size() - 1; }

  void Put(Slot slot) {
    auto at = slot.mark & Mask();
    while (mSlots[at].mark != Empty) at = (at + 1) & Mask();
    mSlots[at] = slot;
  }
  void Grow() {
    const auto old = std::exchange(mSlots, std::vector<Slot>(std::max<std::size_t>(64, mSlots.size() * 2)));
    for (const auto& slot : old)
      if (slot.mark != Empty) Put(slot);
  }

  std::vector<Slot> mSlots;  ///< a power of two of them
  std::size_t mCount = 0;
};

}  // namespace quillbook::compile
