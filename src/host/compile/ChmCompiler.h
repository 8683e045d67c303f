// The compiler of HTML Help: a project in, a .chm out.
#pragma once

#include <cstdint>
#include <string>

#include "host/compile/CompileMessage.h"

namespace quillbook::compile {

struct CompileOptions {
  std::string project;  ///< native path of the .hhp
  std::string output;   ///< native path; empty for the project's own
  bool strict = false;  ///< warnings keep the help file from being made
};

/// How a compile went. The old output is still there unless `outcome` is `Made`.
struct CompileReport {
  enum class Outcome { Made, Failed, Unreadable };

  Outcome outcome = Outcome::Failed;
  std::string output;
  MessageList messages;
  std::size_t files = 0;
  std::size_t pages = 0;
  std::size_t contentsEntries = 0;
  std::size_t keywords = 0;
  std::uint64_t bytes = 0;  ///< of the output
  double checkSeconds = 0;  ///< spent on reading the result back
};

/// Compiles and checks the result. The same project gives the same bytes on every machine; the time stamp is that of
/// the environment variable SOURCE_DATE_EPOCH, without it 0. Raises no failure: everything is in the messages.
[[nodiscard]] CompileReport CompileChm(const CompileOptions& options);

}  // namespace quillbook::compile
