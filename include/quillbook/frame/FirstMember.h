// "The first member whose text equals ..." without a walk over the list.
#pragma once

#include <string_view>

#include "quillbook/base/Collection.h"
#include "quillbook/base/Text.h"
#include "quillbook/base/TextIndex.h"

namespace quillbook {

/// The first member in list order whose `textOf` equals `text` ignoring case; nothing if there is none. `index` holds
/// these texts of all members. `keyOf` gives the key under which a member normally stands in the list.
template <class T, class TextOf, class KeyOf>
[[nodiscard]] Ref<T> FirstMember(const Collection<Ref<T>>& list, const TextIndex& index, std::string_view text,
                                 TextOf textOf, KeyOf keyOf) {
  // Equal texts are rare, so that the few candidates can be told apart by their positions. Where they are many, or a
  // member stands under another key, a walk finds the first one soon enough.
  constexpr std::size_t FewCandidates = 8;
  const auto found = index.Find(text, FewCandidates + 1);
  if (found.empty()) return {};
  if (found.size() == 1) return Ref<T>(static_cast<T*>(found.front()));
  std::size_t first = 0;
  for (auto* owner : found) {
    const auto position = list.PositionOfKey(keyOf(*static_cast<T*>(owner)));
    if (found.size() > FewCandidates || position == 0 || list.Item(position).get() != owner) {
      for (const auto& member : list)
        if (EqualsIgnoringCase(textOf(*member), text)) return member;
    }
    if (first == 0 || position < first) first = position;
  }
  return list.Item(first);
}

}  // namespace quillbook
