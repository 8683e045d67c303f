// quillbook fmt
#pragma once

#include "cli/edit/EditOptions.h"

namespace quillbook::cli {

/// Brings a project file into the form in which it is saved. Gives the exit code.
[[nodiscard]] int RunFmt(const FmtOptions& options);

}  // namespace quillbook::cli
