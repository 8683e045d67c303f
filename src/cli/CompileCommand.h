// quillbook compile
#pragma once

#include "cli/Options.h"

namespace quillbook::cli {

/// Compiles a help project and reports. Gives the exit code.
[[nodiscard]] int RunCompile(const CompileCommandOptions& options);

}  // namespace quillbook::cli
