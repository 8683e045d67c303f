// The kinds of records that the editing commands know.
#pragma once

#include <string_view>
#include <vector>

#include "cli/edit/RecordKind.h"

namespace quillbook::cli {

/// In the order of the help.
[[nodiscard]] const std::vector<const RecordKind*>& AllKinds();
/// The kind whose command has this name; null if there is none.
[[nodiscard]] const RecordKind* FindKind(std::string_view command);

}  // namespace quillbook::cli
