#include "cli/InfoCommand.h"

#include <fmt/format.h>

#include <memory>
#include <string>
#include <vector>

#include "cli/ExitCode.h"
#include "cli/Journal.h"
#include "cli/Json.h"
#include "cli/Problems.h"
#include "cli/ProjectFile.h"
#include "quillbook/config/BuildProfile.h"
#include "quillbook/config/BuildProfiles.h"
#include "quillbook/config/ProjectProperties.h"
#include "quillbook/frame/Root.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/host/VariableValue.h"
#include "quillbook/platform/Platform.h"
#include "quillbook/structure/GlossaryItems.h"
#include "quillbook/structure/OtherFiles.h"
#include "quillbook/structure/QBNodes.h"
#include "quillbook/structure/Tasks.h"
#include "quillbook/topics/TopicCategories.h"
#include "quillbook/topics/TopicKeywords.h"
#include "quillbook/topics/TopicLinks.h"
#include "quillbook/topics/Topics.h"

namespace quillbook::cli {
namespace {

struct Count {
  const char* member;   ///< of the JSON object
  const char* caption;  ///< for people
  std::size_t value;
};

std::vector<Count> CountRecords(QBProject& project) {
  std::size_t keywords = 0;
  std::size_t links = 0;
  for (const auto& topic : *project.Topics) {
    keywords += topic->Keywords()->Count();
    links += topic->TopicLinks()->Count();
  }
  return {{"topics", "topics", project.Topics->Count()},
          {"categories", "categories", project.TopicCategories->Count()},
          {"keywords", "keywords", keywords},
          {"relatedLinks", "related links", links},
          {"nodes", "contents nodes", project.QBNodes->AllNodes()->Count()},
          {"glossaryItems", "glossary items", project.GlossaryItems()->Count()},
          {"tasks", "tasks", project.Tasks->Count()},
          {"otherFiles", "other files", project.OtherFiles->Count()},
          {"variables", "variables", project.VariableValues->Count()},
          {"properties", "properties", project.ProjectProperties()->Count()}};
}

/// Failures that the library met while reading become problems of the project.
void AddLoadProblems(const Journal& journal, std::vector<Problem>& problems) {
  for (const auto& message : journal.Messages()) problems.push_back({message.code, message.text, 0});
}

std::string JsonReport(const std::string& file, const Ref<QBProject>& project, const std::vector<Problem>& problems) {
  JsonWriter json;
  json.Member("file", file);
  if (project) {
    json.Member("title", project->Title());
    for (const auto& count : CountRecords(*project)) json.Member(count.member, count.value);
    json.BeginArray("profiles");
    for (const auto& profile : *project->BuildProfiles)
      json.BeginObject()
          .Member("id", profile->ID())
          .Member("name", profile->Name())
          .Member("helpVersion", profile->HTMLHelpVersion())
          .Member("compile", profile->CompileHelpFile())
          .Member("outputDirectory", NativePath(profile->OutputDirectory()))
          .Member("helpFile", NativePath(profile->HelpFileName()))
          .EndObject();
    json.EndArray();
  }
  json.BeginArray("problems");
  for (const auto& problem : problems)
    json.BeginObject()
        .Member("code", problem.code)
        .Member("message", problem.message)
        .Member("line", problem.line)
        .EndObject();
  return std::move(json.EndArray()).Text();
}

std::string TextReport(const std::string& file, QBProject& project, const std::vector<Problem>& problems) {
  std::string text = fmt::format("{}\n{}\n\n", project.Title(), file);
  for (const auto& count : CountRecords(project)) text += fmt::format("{:>8}  {}\n", count.value, count.caption);
  text += "\nBuild profiles:\n";
  for (const auto& profile : *project.BuildProfiles) {
    const auto folder = NativePath(profile->OutputDirectory());
    text += fmt::format("  {}{}{}\n", profile->Name(), folder.empty() ? "" : " -> ", folder);
  }
  if (!problems.empty()) text += "\nProblems:\n";
  for (const auto& problem : problems)
    text += problem.line == 0 ? fmt::format("  {}\n", problem.message)
                              : fmt::format("  line {}: {}\n", problem.line, problem.message);
  return text;
}

}  // namespace

int RunInfo(const InfoOptions& options) {
  Journal journal(true);  // what reading finds is listed among the problems
  const auto answers = std::make_shared<Answers>(journal, "", false);
  answers->TakeFailuresAsWarnings(true);
  const PlatformOverride<MessageBox> messages(answers);
  const Root root;
  const auto file = AbsoluteNativePath(options.project);
  const auto project = OpenProject(options.project, journal);

  std::vector<Problem> problems;
  AddLoadProblems(journal, problems);
  if (project) {
    auto found = FindProblems(project, project->Filename->ReadAll());
    problems.insert(problems.end(), std::make_move_iterator(found.begin()), std::make_move_iterator(found.end()));
  }
  bool printed = true;
  if (options.json)
    printed = PrintOutput(JsonReport(file, project, problems));
  else if (project && !options.quiet)
    printed = PrintOutput(TextReport(file, *project, problems));
  if (!project) return BadInput;
  return printed ? Done : NotBuilt;
}

}  // namespace quillbook::cli
