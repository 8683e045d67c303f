// What the commands' arguments and help pages have in common.
#pragma once

#include <string>

#include "cli/edit/EditOptions.h"

namespace CLI {
class App;
}

namespace quillbook::cli {

/// The look of a help page, and `--help`.
void SetUpHelpPage(CLI::App& app);
/// Tells what is wrong with the arguments and gives the exit code. `command` is "quillbook" and what follows it.
[[nodiscard]] int WrongUsage(const std::string& what, const std::string& command);
/// `--dry-run` and `--force`.
void AddSaveOptions(CLI::App& app, SaveOptions& options);

}  // namespace quillbook::cli
