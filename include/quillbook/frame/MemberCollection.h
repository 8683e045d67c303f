// What all public collection classes of the object library have in common.
#pragma once

#include <string_view>

#include "quillbook/base/Collection.h"
#include "quillbook/base/KeyOrPosition.h"
#include "quillbook/frame/Procedure.h"

namespace quillbook {

/// Base of a public collection class: wraps one `Collection` of owned members.
///
/// `Item` answers nothing for an unknown key instead of failing. `Add` and `Remove` run in the failure frame under
/// the name of the deriving class, which states its difference in `MemberAdded` and `MemberRemoved`, or by an
/// operation of its own that uses `AddMember` and `RemoveMember`.
template <class T>
class MemberCollection : public LibraryObject {
 public:
  /// The member with a key or at a position from 1; nothing if there is none.
  [[nodiscard]] Ref<T> Item(KeyOrPosition Key) const {
    const auto* member = mCol.Find(Key);
    return member ? *member : Ref<T>();
  }

  /// Inserts before `Before`, else after `After`, else appends. An empty `Key` adds the member unkeyed. A key that is
  /// already there is reported as failure 457; the member isn't added then and nobody is told.
  void Add(const Ref<T>& Item, std::string_view Key = {}, KeyOrPosition Before = {}, KeyOrPosition After = {}) {
    Procedure(*this, "Add", [&](auto& p) {
      p("Item", Item);
      p("Key", Key);
      p("Before", Before.ToVariant());
      p("After", After.ToVariant());
    }).Run([&] {
      AddMember(Item, Key, Before, After);
      MemberAdded(Item, Key);
    });
  }

  /// An unknown key or position is reported as a failure.
  void Remove(KeyOrPosition Key) {
    Procedure(*this, "Remove", [&](auto& p) { p("Key", Key.ToVariant()); }).Run([&] {
      const auto member = this->Item(Key);
      RemoveMember(Key);
      MemberRemoved(member);
    });
  }

  [[nodiscard]] std::size_t Count() const noexcept { return mCol.Count(); }
  auto begin() const noexcept { return mCol.begin(); }
  auto end() const noexcept { return mCol.end(); }

  [[nodiscard]] bool Enumerable() const override { return true; }
  void ForEachItem(const std::function<void(const Variant&)>& visit) const override { mCol.ForEachItem(visit); }

 protected:
  /// Called after a member has been added, inside the frame of `Add`. `key` is empty for an unkeyed member.
  virtual void MemberAdded(const Ref<T>& /*member*/, std::string_view /*key*/) {}
  /// Called after a member has been removed, inside the frame of `Remove`.
  virtual void MemberRemoved(const Ref<T>& /*member*/) {}

  /// The addition alone; raises failures.
  auto AddMember(const Ref<T>& item, std::string_view key, const KeyOrPosition& before, const KeyOrPosition& after) {
    return mCol.Add(item, key, before, after);
  }
  /// The removal alone; raises failures.
  void RemoveMember(const KeyOrPosition& key) { mCol.Remove(key); }

  /// Position from 1 of this very object; 0 if it is no member. Identity counts, not the key.
  [[nodiscard]] std::size_t PositionOfObject(const Object* object) const noexcept {
    std::size_t position = 0;
    for (const auto& member : mCol) {
      ++position;
      if (member.get() == object) return position;
    }
    return 0;
  }

  Collection<Ref<T>> mCol;
};

}  // namespace quillbook
