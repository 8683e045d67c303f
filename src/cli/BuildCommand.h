// quillbook build
#pragma once

#include "cli/Options.h"

namespace quillbook::cli {

/// Builds a project and reports. Gives the exit code.
[[nodiscard]] int RunBuild(const BuildOptions& options);

}  // namespace quillbook::cli
