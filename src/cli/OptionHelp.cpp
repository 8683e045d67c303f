#include "cli/OptionHelp.h"

#include <CLI/CLI.hpp>

#include "cli/ExitCode.h"
#include "cli/Terminal.h"

namespace quillbook::cli {
namespace {

constexpr int kOptionColumn = 24;

}  // namespace

void SetUpHelpPage(CLI::App& app) {
  const auto formatter = app.get_formatter();
  formatter->column_width(kOptionColumn);
  formatter->label("OPTIONS", "options");
  formatter->label("SUBCOMMAND", "COMMAND");
  formatter->label("SUBCOMMANDS", "COMMAND");
  formatter->label("Positionals", "Arguments");
  formatter->label("REQUIRED", "");
  app.set_help_flag("-h,--help", "Print this help and exit");
  app.allow_extras();  // told by us, in the user's order
}

int WrongUsage(const std::string& what, const std::string& command) {
  Terminal::PrintError(what, "see " + command + " --help");
  return BadInput;
}

void AddSaveOptions(CLI::App& app, SaveOptions& options) {
  app.add_flag("--dry-run", options.dryRun, "Tell what would be done, write nothing");
  app.add_flag("--force", options.force, "Save also what would lose parts of the file");
}

}  // namespace quillbook::cli
