// The ordered, keyed list that all lists of the system rest on.
#pragma once

#include <memory>
#include <source_location>
#include <string_view>
#include <utility>

#include "quillbook/base/CollectionCore.h"
#include "quillbook/base/Object.h"

namespace quillbook {

/// Ordered list of values, each with an optional key that is unique in the list, ignoring case.
///
/// Positions count from 1. Finding by key or position, appending and removing at either end take constant time;
/// inserting and removing elsewhere move the members on the shorter side. Enumeration is in list order; add and remove
/// nothing meanwhile.
template <class T>
class Collection final : public Object {
  struct Entry : detail::CollectionEntry {
    explicit Entry(T item) : value(std::move(item)) {}
    T value;
  };

  template <class V>
  class Iterator {
   public:
    using difference_type = std::ptrdiff_t;
    using value_type = V;
    Iterator() = default;
    explicit Iterator(detail::CollectionEntry* const* at) : mAt(at) {}
    V& operator*() const { return static_cast<Entry*>(*mAt)->value; }
    V* operator->() const { return &**this; }
    Iterator& operator++() {
      ++mAt;
      return *this;
    }
    Iterator operator++(int) { return Iterator(mAt++); }
    friend bool operator==(const Iterator&, const Iterator&) = default;

   private:
    detail::CollectionEntry* const* mAt = nullptr;
  };

 public:
  /// Names a member for as long as it stays in the list, whatever else is added or removed. Handles compare in list
  /// order.
  class Handle {
   public:
    Handle() = default;
    explicit operator bool() const noexcept { return mEntry != nullptr; }
    [[nodiscard]] const T& operator*() const noexcept { return mEntry->value; }
    [[nodiscard]] const T* operator->() const noexcept { return &mEntry->value; }
    friend bool operator==(const Handle&, const Handle&) = default;
    friend bool operator<(const Handle& left, const Handle& right) noexcept {
      return left.mEntry->order < right.mEntry->order;
    }

   private:
    friend class Collection;
    explicit Handle(const Entry* entry) : mEntry(entry) {}
    const Entry* mEntry = nullptr;
  };

  Collection() = default;
  ~Collection() override { Clear(); }

  /// Appends, or inserts before or after the member named by `before` or `after`; `before` wins. An empty `key` adds
  /// the item without a key. Failure 457 for a known key, 5 or 9 for an unknown neighbour; the list is then unchanged.
  Handle Add(T item, std::string_view key = {}, KeyOrPosition before = {}, KeyOrPosition after = {},
             std::source_location where = std::source_location::current()) {
    return AddEntry(std::move(item), key, !key.empty(), before, after, where);
  }
  /// As `Add`, but an empty key is a key too.
  Handle AddKeyed(T item, std::string_view key, std::source_location where = std::source_location::current()) {
    return AddEntry(std::move(item), key, true, {}, {}, where);
  }

  /// Failure 5 for an unknown key, 9 for a position out of range.
  [[nodiscard]] T& Item(KeyOrPosition which, std::source_location where = std::source_location::current()) {
    return static_cast<Entry*>(mCore.Require(which, where))->value;
  }
  [[nodiscard]] const T& Item(KeyOrPosition which, std::source_location where = std::source_location::current()) const {
    return static_cast<const Entry*>(mCore.Require(which, where))->value;
  }
  /// The member, or null where `Item` would fail.
  [[nodiscard]] T* Find(KeyOrPosition which) noexcept { return ValueOf(mCore.Find(which)); }
  [[nodiscard]] const T* Find(KeyOrPosition which) const noexcept { return ValueOf(mCore.Find(which)); }
  [[nodiscard]] bool Contains(KeyOrPosition which) const noexcept { return mCore.Find(which) != nullptr; }
  /// Key of the member at a position; empty for one without.
  [[nodiscard]] const std::string& KeyAt(std::size_t position,
                                         std::source_location where = std::source_location::current()) const {
    return mCore.Require(KeyOrPosition(position), where)->key;
  }
  /// Position from 1 of the member with this key; 0 if there is none.
  [[nodiscard]] std::size_t PositionOfKey(std::string_view key) const noexcept {
    const auto* entry = mCore.FindKey(key);
    return entry ? mCore.PositionOf(entry) + 1 : 0;
  }

  /// Handle of the member; empty where `Item` would fail.
  [[nodiscard]] Handle HandleOf(KeyOrPosition which) const noexcept {
    return Handle(static_cast<const Entry*>(mCore.Find(which)));
  }
  /// Position from 1 of a member of this list; logarithmic.
  [[nodiscard]] std::size_t PositionOf(Handle handle) const noexcept { return mCore.PositionOf(handle.mEntry) + 1; }

  /// Failure 5 for an unknown key, 9 for a position out of range.
  void Remove(KeyOrPosition which, std::source_location where = std::source_location::current()) {
    const std::unique_ptr<Entry> entry(static_cast<Entry*>(mCore.Require(which, where)));
    mCore.Erase(entry.get());
  }
  void Clear() noexcept {
    mCore.Release([](auto* entry) { delete static_cast<Entry*>(entry); });
  }
  void Reserve(std::size_t count) { mCore.Reserve(count); }

  [[nodiscard]] std::size_t Count() const noexcept { return mCore.Count(); }
  [[nodiscard]] bool IsEmpty() const noexcept { return mCore.Count() == 0; }

  auto begin() noexcept { return Iterator<T>(mCore.Order().data()); }
  auto end() noexcept { return Iterator<T>(mCore.Order().data() + mCore.Count()); }
  auto begin() const noexcept { return Iterator<const T>(mCore.Order().data()); }
  auto end() const noexcept { return Iterator<const T>(mCore.Order().data() + mCore.Count()); }

  static const TypeInfo& StaticType() {
    static const TypeInfo type =
        Describe<Collection>("Collection").template ReadOnly<&Collection::Count>("Count").Done();
    return type;
  }
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }
  [[nodiscard]] bool Enumerable() const override { return true; }
  void ForEachItem(const std::function<void(const Variant&)>& visit) const override {
    for (const auto& item : *this) visit(Variant(item));
  }

 private:
  Handle AddEntry(T item, std::string_view key, bool keyed, const KeyOrPosition& before, const KeyOrPosition& after,
                  std::source_location where) {
    if (keyed) mCore.RequireNewKey(key, where);
    const auto place = mCore.InsertionPlace(before, after, where);
    auto entry = std::make_unique<Entry>(std::move(item));
    entry->key = key;
    entry->keyed = keyed;
    mCore.Insert(entry.get(), place);
    return Handle(entry.release());  // the list owns it from here
  }
  static T* ValueOf(detail::CollectionEntry* entry) noexcept {
    return entry ? &static_cast<Entry*>(entry)->value : nullptr;
  }

  detail::CollectionCore mCore;
};

}  // namespace quillbook
