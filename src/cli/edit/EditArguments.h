// The arguments of the editing commands.
#pragma once

#include <variant>

#include "cli/edit/EditOptions.h"

namespace quillbook::cli {

/// Reads what stands behind the kind's name, `arguments[0]` being that name. Gives the exit code where the arguments
/// were all there was to it: help is printed on standard output, what is wrong on standard error.
[[nodiscard]] std::variant<EditOptions, int> ParseEditArguments(const RecordKind& kind, int count,
                                                                const char* const* arguments);

}  // namespace quillbook::cli
