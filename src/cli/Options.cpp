#include "cli/Options.h"

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "cli/ExitCode.h"
#include "cli/OptionHelp.h"
#include "cli/edit/EditArguments.h"
#include "cli/edit/Kinds.h"
#include "quillbook/frame/LibraryVersion.h"

namespace quillbook::cli {
namespace {

constexpr const char* kExitCodes =
    "Exit codes:\n"
    "  0  done\n"
    "  1  done, with warnings, and --strict was given\n"
    "  2  wrong usage, or input that can't be read; nothing was written\n"
    "  3  the build failed or was cancelled";

constexpr const char* kCompileExitCodes =
    "Exit codes:\n"
    "  0  done\n"
    "  2  wrong usage, or a project that can't be read; nothing was written\n"
    "  3  no help file was made; an old one is as it was";

constexpr const char* kFmtExitCodes =
    "Exit codes:\n"
    "  0  done, or nothing to do\n"
    "  1  --check was given, and the file would change\n"
    "  2  wrong usage, or a project that can't be read; nothing was written\n"
    "  3  the project wasn't saved, and is as it was";

void AddProject(CLI::App& command, std::string& project) {
  command.add_option("PROJECT", project, "The project file, *.qbp")->required()->type_name("");
}

void AddReportOptions(CLI::App& command, bool& quiet, bool& json) {
  command.add_flag("--quiet", quiet, "Print errors only");
  command.add_flag("--json", json, "Print one JSON object on standard output");
}

CLI::App* AddCommand(CLI::App& app, const std::string& name, const std::string& description) {
  return app.add_subcommand(name, description)->group("Commands")->allow_extras()->footer("");
}

CLI::App* AddBuild(CLI::App& app, BuildOptions& options) {
  auto* command = AddCommand(app, "build", "Build a project into pages and compiled help");
  AddProject(*command, options.project);
  command->add_option("--profile", options.profile, "Build profile; without it, the first")->type_name("NAME|ID");
  command->add_option("--template", options.templateName, "Template instead of the project's own")->type_name("NAME");
  command
      ->add_option("--output", options.output,
                   "Folder for the pages; without it, the profile's,\n"
                   "the project's, or Build/PROFILE beside the project")
      ->type_name("DIR");
  command
      ->add_option("--format", options.format,
                   "web: pages alone; chm or hxs: compiled help\n"
                   "too; without it, what the profile says")
      ->check(CLI::IsMember({"web", "chm", "hxs"}).description(""))
      ->type_name("FORMAT");
  command
      ->add_option("--help-file", options.helpFile,
                   "The compiled help file; without it, the\n"
                   "profile's, or one in the folder of the pages")
      ->type_name("FILE");
  command->add_flag("--yes", options.yes, "Answer every question with yes");
  AddReportOptions(*command, options.quiet, options.json);
  command->add_flag("--strict", options.strict, "End with exit code 1 after warnings");
  command->footer(kExitCodes);
  return command;
}

CLI::App* AddInfo(CLI::App& app, InfoOptions& options) {
  auto* command = AddCommand(app, "info", "Tell what a project holds and what is wrong in it");
  AddProject(*command, options.project);
  AddReportOptions(*command, options.quiet, options.json);
  return command;
}

/// The editing commands, for the list of commands; they read their arguments themselves.
void ListKinds(CLI::App& app) {
  for (const auto* kind : AllKinds())
    app.add_subcommand(std::string(kind->Info().name), std::string(kind->Info().summary))->group("Editing");
}

CLI::App* AddFmt(CLI::App& app, FmtOptions& options) {
  auto* command = AddCommand(app, "fmt", "Bring a project file into the form in which it is saved")->group("Editing");
  AddProject(*command, options.project);
  command->add_flag("--check", options.check, "Only tell, by exit code 1, whether it would change");
  AddSaveOptions(*command, options);
  AddReportOptions(*command, options.quiet, options.json);
  command->footer(kFmtExitCodes);
  return command;
}

void SetUpHelp(CLI::App& app) {
  SetUpHelpPage(app);
  app.set_version_flag("--version", "quillbook " + std::string(LibraryVersion()), "Print the version and exit");
  app.footer("quillbook COMMAND --help tells the options of a command.");
}

CLI::App* AddCompile(CLI::App& app, CompileCommandOptions& options) {
  auto* command = AddCommand(app, "compile", "Compile a help project into one help file");
  command->add_option("PROJECT", options.project, "The help project, *.hhp or *.HxC")->required()->type_name("");
  command->add_option("--output", options.output, "The help file; without it, the one that the project names")
      ->type_name("FILE");
  AddReportOptions(*command, options.quiet, options.json);
  command->add_flag("--strict", options.strict, "Make no help file where there are warnings");
  command->footer(kCompileExitCodes);
  return command;
}

CLI::App* AddInspect(CLI::App& app, InspectOptions& options) {
  auto* command = AddCommand(app, "inspect", "Tell what a compiled help file holds");
  command->add_option("FILE", options.file, "The help file, *.chm or *.hxs")->required()->type_name("");
  AddReportOptions(*command, options.quiet, options.json);
  return command;
}

CLI::App* AddExtract(CLI::App& app, ExtractOptions& options) {
  auto* command = AddCommand(app, "extract", "Write the files of a compiled help file into a folder");
  command->add_option("FILE", options.file, "The help file, *.chm or *.hxs")->required()->type_name("");
  command->add_option("DIR", options.folder, "The folder, made if it isn't there")->required()->type_name("");
  command->add_flag("--quiet", options.quiet, "Print errors only");
  return command;
}

}  // namespace

Request ParseArguments(int argc, const char* const* argv) {
  if (const auto* kind = argc > 1 ? FindKind(argv[1]) : nullptr)
    return std::visit([](auto&& parsed) -> Request { return std::forward<decltype(parsed)>(parsed); },
                      ParseEditArguments(*kind, argc - 1, argv + 1));
  BuildOptions build;
  InfoOptions info;
  CompileCommandOptions compile;
  InspectOptions inspect;
  ExtractOptions extract;
  FmtOptions fmt;
  CLI::App app{"Quillbook turns a help project into help that people read.", "quillbook"};
  SetUpHelp(app);
  const auto* buildCommand = AddBuild(app, build);
  AddInfo(app, info);
  const auto* compileCommand = AddCompile(app, compile);
  const auto* inspectCommand = AddInspect(app, inspect);
  const auto* extractCommand = AddExtract(app, extract);
  ListKinds(app);
  const auto* fmtCommand = AddFmt(app, fmt);

  const CLI::App* command = nullptr;
  try {
    app.parse(argc, argv);
    if (const auto chosen = app.get_subcommands(); !chosen.empty()) command = chosen.front();
  } catch (const CLI::Success& help) {
    return app.exit(help);
  } catch (const CLI::ParseError& error) {
    const auto chosen = app.get_subcommands();
    return WrongUsage(error.what(), "quillbook" + (chosen.empty() ? "" : " " + chosen.front()->get_name()));
  }
  if (const auto left = app.remaining(); !left.empty())
    return WrongUsage("there is no command '" + left.front() + "'", "quillbook");
  if (!command) return WrongUsage("name a command", "quillbook");
  if (const auto left = command->remaining(); !left.empty())
    return WrongUsage(command->get_name() + " takes no '" + left.front() + "'", "quillbook " + command->get_name());
  if (command == buildCommand) return build;
  if (command == compileCommand) return compile;
  if (command == inspectCommand) return inspect;
  if (command == extractCommand) return extract;
  if (command == fmtCommand) return fmt;
  return info;
}

}  // namespace quillbook::cli
