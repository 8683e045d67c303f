// Names of characters in HTML 4.
#pragma once

#include <optional>
#include <string_view>

namespace quillbook::compile {

/// The character that a reference such as "eacute" names; case matters. Source: the entity sets of HTML 4.01.
[[nodiscard]] std::optional<char32_t> CharacterNamed(std::string_view name);

}  // namespace quillbook::compile
