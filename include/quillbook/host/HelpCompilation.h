// Compiling a help project to one help file, in this process.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

#include "quillbook/host/CompileMessage.h"

namespace quillbook::compile {

struct CompileOptions {
  std::string project;  ///< native path of the project file: .hhp, or .HxC
  std::string output;   ///< native path; empty for the project's own
  bool strict = false;  ///< warnings keep the help file from being made
  /// Asked before each file with how many are done and how many are known so far; False ends the compile.
  std::function<bool(std::size_t done, std::size_t known)> goOn = {};
};

/// How a compile went. The old output is still there unless `outcome` is `Made`.
struct CompileReport {
  enum class Outcome {
    Made,
    Failed,      ///< the messages say why
    Unreadable,  ///< the project file itself
    Cancelled,   ///< by `goOn`
  };

  Outcome outcome = Outcome::Failed;
  std::string output;  ///< native path
  MessageList messages;
  std::size_t files = 0;
  std::size_t pages = 0;
  std::size_t contentsEntries = 0;
  std::size_t keywords = 0;
  std::uint64_t bytes = 0;  ///< of the output
  double checkSeconds = 0;  ///< spent on reading the result back
};

/// Compiles, reads the result back and compares it with what went in; only then it takes the name of the output. The
/// same project gives the same bytes on every machine; the time stamp inside is that of the environment variable
/// SOURCE_DATE_EPOCH, without it 0. Raises no failure: everything is in the messages.
[[nodiscard]] CompileReport CompileHelp(const CompileOptions& options);

}  // namespace quillbook::compile
