// The command line of Quillbook.
#include <cstdio>
#include <exception>
#include <string>
#include <type_traits>
#include <variant>

#include "cli/BuildCommand.h"
#include "cli/CompileCommand.h"
#include "cli/ExitCode.h"
#include "cli/FmtCommand.h"
#include "cli/InfoCommand.h"
#include "cli/InspectCommand.h"
#include "cli/Options.h"
#include "cli/Terminal.h"
#include "cli/edit/EditCommand.h"

namespace {

struct Run {
  int operator()(const quillbook::cli::BuildOptions& options) const { return quillbook::cli::RunBuild(options); }
  int operator()(const quillbook::cli::InfoOptions& options) const { return quillbook::cli::RunInfo(options); }
  int operator()(const quillbook::cli::CompileCommandOptions& options) const {
    return quillbook::cli::RunCompile(options);
  }
  int operator()(const quillbook::cli::InspectOptions& options) const { return quillbook::cli::RunInspect(options); }
  int operator()(const quillbook::cli::ExtractOptions& options) const { return quillbook::cli::RunExtract(options); }
  int operator()(const quillbook::cli::FmtOptions& options) const { return quillbook::cli::RunFmt(options); }
  int operator()(const quillbook::cli::EditOptions& options) const { return quillbook::cli::RunEdit(options); }
  int operator()(int exitCode) const { return exitCode; }
};

}  // namespace

int main(int argc, char** argv) {
  using namespace quillbook::cli;
  try {
    return std::visit(Run(), ParseArguments(argc, argv));
  } catch (const std::exception& error) {
    Terminal::PrintError(error.what(), "this is a fault of Quillbook; please report it");
    return NotBuilt;
  }
}
