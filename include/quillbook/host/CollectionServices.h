// Small helpers that data providers share.
#pragma once

#include <string_view>
#include <vector>

#include "quillbook/base/Collection.h"

namespace quillbook::CollectionServices {

/// False also for no collection.
template <class C>
[[nodiscard]] bool KeyExists(const Ref<C>& Items, std::string_view Key) {
  return Items && Items->Contains(Key);
}

/// The part before the first ":"; the whole text if there is none.
[[nodiscard]] std::string_view BeforeColon(std::string_view Text) noexcept;
/// The part behind the first ":"; empty if there is none.
[[nodiscard]] std::string_view AfterColon(std::string_view Text) noexcept;
/// The part between separators, counted from 1; empty if there is no such part.
[[nodiscard]] std::string_view Field(std::string_view Text, std::string_view Separator, std::size_t Index) noexcept;

/// The objects that an enumerable object lists, in order; none for nothing.
[[nodiscard]] std::vector<Ref<Object>> Items(const Ref<Object>& List);

}  // namespace quillbook::CollectionServices
