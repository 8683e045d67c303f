// How the command line ends.
#pragma once

namespace quillbook::cli {

/// Exit codes. Frozen: scripts compare them.
enum ExitCode : int {
  Done = 0,
  Findings = 1,  ///< done, and it found something
  BadInput = 2,  ///< wrong usage or unreadable input; nothing was written
  NotBuilt = 3,  ///< the build failed or was cancelled
};

}  // namespace quillbook::cli
