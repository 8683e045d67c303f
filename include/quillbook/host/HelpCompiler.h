// The place of the help compilers: a help project file in, a help file and a log out.
#pragma once

#include <string>
#include <string_view>

#include "quillbook/base/Object.h"

namespace quillbook {

/// How the compilation of a help file ended. The numbers are frozen.
enum class HelpCompileResult : int {
  None = 0,  ///< nothing was to be compiled
  Succeeded = 1,
  Warnings = 2,          ///< a help file was made; the log tells what to look at
  Failed = 3,            ///< no help file was made
  NoCompiler = 4,        ///< there is no compiler for this help version
  GenerationFailed = 5,  ///< the pages could not be written, so nothing was compiled
};

class HelpCompiler : public Object {
 public:
  struct Outcome {
    HelpCompileResult Result = HelpCompileResult::None;
    std::string Log;  ///< warnings and errors, a line each; empty if there were none
  };

  /// Compiles the project file, both paths in the form of stored paths.
  [[nodiscard]] virtual Outcome Compile(std::string_view ProjectFile, std::string_view HelpFile) = 0;
};

}  // namespace quillbook
