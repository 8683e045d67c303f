// Objects in ascending order of a key.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "quillbook/base/Failure.h"
#include "quillbook/base/Object.h"
#include "quillbook/base/Text.h"

namespace quillbook {

/// A list that is enumerated in ascending order of its keys, ignoring case; equal keys keep the order of adding.
/// With `Sorted` False a key may occur only once; every caller sets it True before use.
class SortedCollection final : public Object {
 public:
  bool Sorted = false;

  /// Constant time. The list is put in order when it is next read.
  void Add(Ref<Object> item, std::string_view key, std::source_location where = std::source_location::current());
  [[nodiscard]] std::size_t Count() const noexcept { return mMembers.size(); }
  /// Position from 1; failure 9 out of range.
  [[nodiscard]] const Ref<Object>& Item(std::size_t position,
                                        std::source_location where = std::source_location::current()) const;

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }
  [[nodiscard]] bool Enumerable() const override { return true; }
  void ForEachItem(const std::function<void(const Variant&)>& visit) const override;

 private:
  struct Member {
    std::string key;  ///< folded
    Ref<Object> item;
  };
  void PutInOrder() const;

  mutable std::vector<Member> mMembers;
  mutable bool mInOrder = true;
};

}  // namespace quillbook
