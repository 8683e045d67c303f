// Order and keys of a collection, apart from the type of its members.
#pragma once

#include <cstddef>
#include <cstdint>
#include <source_location>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "quillbook/base/KeyOrPosition.h"

namespace quillbook::detail {

/// What every member carries besides its value.
struct CollectionEntry {
  std::string key;
  std::uint64_t hash = 0;
  std::uint64_t order = 0;  ///< ascends along the list; compares two members without their positions
  bool keyed = false;
};

/// Keeps entries in order and finds them by position or case-folded key, both in constant time. Doesn't own them.
///
/// Every entry has an order number. It changes only when the numbers between two neighbours have run out, and never in
/// relation to other entries, so whoever sorts entries by it stays right whatever is added or removed.
class CollectionCore {
 public:
  [[nodiscard]] std::size_t Count() const noexcept { return mSlots.size() - mGap; }
  [[nodiscard]] std::span<CollectionEntry* const> Order() const noexcept { return std::span(mSlots).subspan(mGap); }

  /// Null if there is no such key.
  [[nodiscard]] CollectionEntry* FindKey(std::string_view key) const noexcept;
  /// Null if there is no such key or position.
  [[nodiscard]] CollectionEntry* Find(const KeyOrPosition& which) const noexcept;
  /// Failure 5 for an unknown key, 9 for a position out of range.
  [[nodiscard]] CollectionEntry* Require(const KeyOrPosition& which, std::source_location where) const;
  /// Position from 0 of an entry of this collection; logarithmic.
  [[nodiscard]] std::size_t PositionOf(const CollectionEntry* entry) const noexcept;

  /// Failure 457 if a member has this key.
  void RequireNewKey(std::string_view key, std::source_location where) const;
  /// Where a member goes that is added before or after another (from 0). `before` wins; both missing is the end.
  [[nodiscard]] std::size_t InsertionPlace(const KeyOrPosition& before, const KeyOrPosition& after,
                                           std::source_location where) const;
  /// `entry->key` and `entry->keyed` are set and the key is new.
  void Insert(CollectionEntry* entry, std::size_t place);
  void Erase(CollectionEntry* entry);
  /// Empties the list and calls `end` for each entry that was in it.
  template <class End>
  void Release(End end) noexcept {
    const auto slots = std::exchange(mSlots, {});
    const auto gap = std::exchange(mGap, 0);
    mTable.clear();
    mKeyed = 0;
    for (auto* entry : std::span(slots).subspan(gap)) end(entry);
  }
  void Reserve(std::size_t count);

 private:
  [[nodiscard]] std::uint64_t OrderAt(std::size_t place) noexcept;
  void OpenSlot(std::size_t place, CollectionEntry* entry);
  void AddToTable(CollectionEntry* entry) noexcept;
  void RemoveFromTable(const CollectionEntry* entry) noexcept;
  void Rebuild(std::size_t capacity);

  /// The entries in order, behind a gap that lets the list be emptied from its front at little cost.
  std::vector<CollectionEntry*> mSlots;
  std::size_t mGap = 0;
  std::vector<CollectionEntry*> mTable;  ///< open addressing, a power of two; empty while the collection is small
  std::size_t mKeyed = 0;
};

}  // namespace quillbook::detail
