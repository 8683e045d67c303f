#include "cli/FmtCommand.h"

#include <fmt/format.h>

#include "cli/Json.h"
#include "cli/ProjectFile.h"
#include "cli/edit/EditSession.h"
#include "cli/edit/Refusal.h"

namespace quillbook::cli {
namespace {

/// The text without what tells of the last save only.
std::string Lasting(std::string text) {
  for (const std::string name : {" SaveDateTime=\"", " Version=\""}) {
    const auto at = text.find(name);
    if (at == std::string::npos) continue;
    const auto value = at + name.size();
    text.erase(value, text.find('"', value) - value);
  }
  return text;
}

struct FmtOutcome {
  bool differs = false;
  bool saved = false;
};

int Format(const FmtOptions& options, EditSession& session, FmtOutcome& outcome) {
  if (!session.Open()) return BadInput;
  session.RequireWholeFile();
  outcome.differs = Lasting(session.Render()) != Lasting(session.FileBytes());
  if (options.check) return outcome.differs ? Findings : Done;
  if (outcome.differs && !options.dryRun) session.Save();
  outcome.saved = outcome.differs && !options.dryRun;
  return Done;
}

std::string Text(const FmtOptions& options, const FmtOutcome& outcome) {
  if (!outcome.differs) return fmt::format("{} is in the form in which it is saved\n", options.project);
  return fmt::format("{} {}\n", outcome.saved ? "formatted" : "would format", options.project);
}

std::string JsonText(const FmtOptions& options, const FmtOutcome& outcome, const std::vector<Message>& messages) {
  JsonWriter json;
  json.Member("file", AbsoluteNativePath(options.project))
      .Member("differs", outcome.differs)
      .Member("saved", outcome.saved);
  WriteMessages(json, messages);
  return std::move(json).Text();
}

}  // namespace

int RunFmt(const FmtOptions& options) {
  EditSession session(options);
  FmtOutcome outcome;
  int exitCode = BadInput;
  try {
    exitCode = Format(options, session, outcome);
  } catch (const Refusal& refusal) {
    exitCode = session.Report(refusal);
  }
  bool printed = true;
  if (options.json)
    printed = PrintOutput(JsonText(options, outcome, session.Log().Messages()));
  else if (!options.quiet && exitCode <= Findings)
    printed = PrintOutput(Text(options, outcome));
  return printed ? exitCode : NotBuilt;
}

}  // namespace quillbook::cli
