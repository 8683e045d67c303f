// quillbook topics, toc, ... and the other commands that edit records.
#pragma once

#include "cli/edit/EditOptions.h"

namespace quillbook::cli {

/// Lists, shows or changes records, and reports. Gives the exit code.
[[nodiscard]] int RunEdit(const EditOptions& options);

}  // namespace quillbook::cli
