// The files that a style sheet names.
#pragma once

#include <string_view>
#include <vector>

#include "host/compile/PageScan.h"

namespace quillbook::compile {

/// Addresses of `url(...)` and `@import`, quoted or not, outside of comments, in the order in which they stand;
/// escapes are resolved. Offsets are those of the addresses in `style`, which is UTF-8.
[[nodiscard]] std::vector<PageReference> ScanStyle(std::string_view style);

}  // namespace quillbook::compile
