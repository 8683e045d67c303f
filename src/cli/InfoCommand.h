// quillbook info
#pragma once

#include "cli/Options.h"

namespace quillbook::cli {

/// Tells what a project holds and what is wrong in it. Gives the exit code.
[[nodiscard]] int RunInfo(const InfoOptions& options);

}  // namespace quillbook::cli
