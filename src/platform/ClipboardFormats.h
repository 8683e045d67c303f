// Numbers of clipboard formats.
#pragma once

#include <string>
#include <string_view>

namespace quillbook::detail {

/// The number of a format in this process, 0xC000 to 0xFFFF: the same for the same name, ignoring case. A name ends at
/// its first NUL. 0 for an empty name, and when all numbers are taken.
[[nodiscard]] int ClipboardFormatNumber(std::string_view name);
/// The name as it was first given; empty for a number that was given to none.
[[nodiscard]] std::string ClipboardFormatName(int number);

}  // namespace quillbook::detail
