// The place of the help compilers: a help project file in, a help file and a log out.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "quillbook/base/Object.h"
#include "quillbook/host/BuildNote.h"

namespace quillbook {

/// How the compilation of a help file ended. The numbers are frozen.
enum class HelpCompileResult : int {
  None = 0,  ///< nothing was to be compiled
  Succeeded = 1,
  Warnings = 2,          ///< a help file was made; the log tells what to look at
  Failed = 3,            ///< no help file was made
  NoCompiler = 4,        ///< there is no compiler for this help version
  GenerationFailed = 5,  ///< the pages could not be written, so nothing was compiled
  Cancelled = 6,         ///< no help file was made
};

class HelpCompiler : public Object {
 public:
  struct Outcome {
    HelpCompileResult Result = HelpCompileResult::None;
    std::string Log;               ///< warnings and errors, a line each; empty if there were none
    std::vector<BuildNote> Notes;  ///< the same, one by one
  };
  /// Asked now and then while a compiler works, with how many files it has done and of how many it knows, both 0 if
  /// it can't tell. False asks it to stop.
  using GoOn = std::function<bool(std::size_t Done, std::size_t Known)>;

  /// Compiles the project file, both paths in the form of stored paths. An old help file stays unless a new one was
  /// made.
  [[nodiscard]] virtual Outcome Compile(std::string_view ProjectFile, std::string_view HelpFile, const GoOn& goOn) = 0;
};

}  // namespace quillbook
