// quillbook inspect, quillbook extract
#pragma once

#include "cli/Options.h"

namespace quillbook::cli {

/// Tells what a compiled help file holds. Gives the exit code.
[[nodiscard]] int RunInspect(const InspectOptions& options);
/// Writes the files of a compiled help file into a folder. Gives the exit code.
[[nodiscard]] int RunExtract(const ExtractOptions& options);

}  // namespace quillbook::cli
