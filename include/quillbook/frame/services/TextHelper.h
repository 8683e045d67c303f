// Small tasks on texts, lists and the user's surroundings.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

#include "quillbook/base/Collection.h"
#include "quillbook/base/KeyOrPosition.h"

namespace quillbook {

class TextHelper {
 public:
  /// True if the key exists in a `Collection`, or in a class whose `Item` gives nothing for an unknown key; either may
  /// come by reference. Never fails.
  template <class List>
  [[nodiscard]] static bool InCollection(KeyOrPosition Key, List&& list) {
    if constexpr (detail::IsRef<std::remove_cvref_t<List>>::value) {
      return list && InCollection(Key, *list);
    } else if constexpr (requires { list.Contains(Key); }) {
      return list.Contains(Key);
    } else {
      try {
        return static_cast<bool>(list.Item(Key));
      } catch (...) {  // "not there" is the only answer such a list has
        return false;
      }
    }
  }

  /// The items with the delimiter between them; an empty list gives an empty text.
  [[nodiscard]] static std::string Join(const Collection<std::string>& Items, std::string_view Delimiter);
  /// The part with this number, from 1, of the text between delimiters; empty if there is none.
  [[nodiscard]] static std::string Token(std::string_view Text, std::string_view Delimiter, std::int32_t Index);
  /// Path of a system folder in Windows form without "\" at its end: 5 is the user's documents. Empty for others.
  [[nodiscard]] static std::string SpecialFolder(int Id);
  [[nodiscard]] static std::string UserName();
};

}  // namespace quillbook
