#include "cli/CompileCommand.h"

#include <fmt/format.h>

#include <chrono>
#include <string>

#include "cli/ExitCode.h"
#include "cli/Json.h"
#include "cli/ProjectFile.h"
#include "cli/Terminal.h"
#include "quillbook/host/HelpCompilation.h"

namespace quillbook::cli {
namespace {

using compile::CompileReport;
using compile::MessageLevel;

/// `FILE:LINE:COLUMN: `, without the parts that aren't known.
std::string PlaceOf(const compile::CompileMessage& message) {
  auto place = message.file;
  if (place.empty()) return place;
  if (message.line > 0) place += ":" + std::to_string(message.line);
  if (message.column > 0) place += ":" + std::to_string(message.column);
  return place + ": ";
}

const char* NameOf(MessageLevel level) {
  return level == MessageLevel::Error ? "error" : level == MessageLevel::Warning ? "warning" : "note";
}

/// Notes are for those who ask for all there is, in JSON.
void PrintMessages(const CompileReport& report, bool quiet) {
  Terminal terminal(quiet);
  for (const auto& message : report.messages.All()) {
    const auto text = fmt::format("{}{} [{}]", PlaceOf(message), message.text, message.code);
    if (message.level == MessageLevel::Error) terminal.Error(text);
    if (message.level == MessageLevel::Warning) terminal.Warning(text);
  }
}

std::string JsonReport(const CompileReport& report, double seconds) {
  const bool made = report.outcome == CompileReport::Outcome::Made;
  JsonWriter json;
  json.Member("helpFile", made ? AbsoluteNativePath(report.output) : std::string())
      .Member("files", report.files)
      .Member("pages", report.pages)
      .Member("contentsEntries", report.contentsEntries)
      .Member("keywords", report.keywords)
      .Member("bytes", made ? report.bytes : 0)
      .Member("warnings", report.messages.Warnings())
      .Member("errors", report.messages.Errors())
      .Member("seconds", seconds)
      .BeginArray("messages");
  for (const auto& message : report.messages.All())
    json.BeginObject()
        .Member("level", NameOf(message.level))
        .Member("code", message.code)
        .Member("message", message.text)
        .Member("file", message.file)
        .Member("line", message.line)
        .Member("column", message.column)
        .EndObject();
  return std::move(json.EndArray()).Text();
}

}  // namespace

int RunCompile(const CompileCommandOptions& options) {
  const auto start = std::chrono::steady_clock::now();
  const auto report = compile::CompileHelp({options.project, options.output, options.strict});
  const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  PrintMessages(report, options.quiet);
  bool printed = true;
  if (options.json)
    printed = PrintOutput(JsonReport(report, seconds));
  else if (!options.quiet && report.outcome == CompileReport::Outcome::Made)
    printed = PrintOutput(fmt::format("{}: {} pages, {} files, {} bytes ({:.1f} s)\n", report.output, report.pages,
                                      report.files, report.bytes, seconds));
  if (report.outcome == CompileReport::Outcome::Unreadable) return BadInput;
  return report.outcome == CompileReport::Outcome::Made && printed ? Done : NotBuilt;
}

}  // namespace quillbook::cli
