#include "cli/Options.h"

#include <CLI/CLI.hpp>

#include <string>

#include "cli/ExitCode.h"
#include "cli/Terminal.h"
#include "quillbook/frame/LibraryVersion.h"

namespace quillbook::cli {
namespace {

constexpr int kOptionColumn = 24;

constexpr const char* kExitCodes =
    "Exit codes:\n"
    "  0  done\n"
    "  1  done, with warnings, and --strict was given\n"
    "  2  wrong usage, or input that can't be read; nothing was written\n"
    "  3  the build failed or was cancelled";

void AddProject(CLI::App& command, std::string& project) {
  command.add_option("PROJECT", project, "The project file, *.qbp")->required()->type_name("");
}

void AddReportOptions(CLI::App& command, bool& quiet, bool& json) {
  command.add_flag("--quiet", quiet, "Print errors only");
  command.add_flag("--json", json, "Print one JSON object on standard output");
}

CLI::App* AddBuild(CLI::App& app, BuildOptions& options) {
  auto* command = app.add_subcommand("build", "Build a project into a folder of pages");
  AddProject(*command, options.project);
  command->add_option("--profile", options.profile, "Build profile; without it, the first")->type_name("NAME|ID");
  command->add_option("--template", options.templateName, "Template instead of the project's own")->type_name("NAME");
  command
      ->add_option("--output", options.output,
                   "Folder for the pages; without it, the profile's,\n"
                   "the project's, or Build/PROFILE beside the project")
      ->type_name("DIR");
  command->add_option("--format", options.format, "What to build: web, the default")
      ->check(CLI::IsMember({"web"}))
      ->type_name("FORMAT");
  command->add_flag("--yes", options.yes, "Answer every question with yes");
  AddReportOptions(*command, options.quiet, options.json);
  command->add_flag("--strict", options.strict, "End with exit code 1 after warnings");
  command->footer(kExitCodes);
  return command;
}

CLI::App* AddInfo(CLI::App& app, InfoOptions& options) {
  auto* command = app.add_subcommand("info", "Tell what a project holds and what is wrong in it");
  AddProject(*command, options.project);
  AddReportOptions(*command, options.quiet, options.json);
  return command;
}

}  // namespace

Request ParseArguments(int argc, const char* const* argv) {
  BuildOptions build;
  InfoOptions info;
  CLI::App app{"Quillbook turns a help project into help that people read.", "quillbook"};
  app.get_formatter()->column_width(kOptionColumn);
  app.get_formatter()->label("OPTIONS", "options");
  app.set_help_flag("-h,--help", "Print this help and exit");
  app.set_version_flag("--version", "quillbook " + std::string(LibraryVersion()), "Print the version and exit");
  app.require_subcommand(1);
  app.footer("quillbook COMMAND --help tells the options of a command.");
  const auto* buildCommand = AddBuild(app, build);
  AddInfo(app, info);

  try {
    app.parse(argc, argv);
  } catch (const CLI::Success& help) {
    return app.exit(help);
  } catch (const CLI::ParseError& error) {
    Terminal::PrintError(error.what(), "see quillbook --help");
    return BadInput;
  }
  if (buildCommand->parsed()) return build;
  return info;
}

}  // namespace quillbook::cli
