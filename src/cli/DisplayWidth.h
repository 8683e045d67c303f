// How wide text is on a terminal.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillbook::cli {

/// Columns that a text takes on a terminal: two for wide characters, none for marks on others.
[[nodiscard]] std::size_t DisplayWidth(std::string_view text);
/// The text if it isn't wider than `columns`, else its beginning and "…", together not wider.
[[nodiscard]] std::string CutToWidth(std::string_view text, std::size_t columns);

}  // namespace quillbook::cli
