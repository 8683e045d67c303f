#include "cli/InspectCommand.h"

#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <string>

#include "cli/ExitCode.h"
#include "cli/Json.h"
#include "cli/ProjectFile.h"
#include "cli/Terminal.h"
#include "quillbook/base/Failure.h"
#include "quillbook/base/Locale.h"
#include "quillbook/host/CompiledHelp.h"

namespace quillbook::cli {
namespace {

constexpr const char* kNameHelp = "name a compiled help file, *.chm or *.hxs";

/// Nothing, with the reason said, for a file that can't be read.
std::unique_ptr<CompiledHelp> Open(const std::string& path) {
  try {
    return std::make_unique<CompiledHelp>(path);
  } catch (const Failure& failure) {
    const auto named = failure.Description().starts_with(path);
    Terminal::PrintError(named ? failure.Description() : path + ": " + failure.Description(), kNameHelp);
    return {};
  }
}

const char* FormatName(const CompiledHelp& help) {
  return help.GetFormat() == CompiledHelp::Format::HtmlHelp1 ? "HTML Help 1.x" : "Microsoft Help 2.x";
}

std::string LanguageName(std::uint32_t localeId) {
  const auto locale = Locale::FromID(static_cast<std::int32_t>(localeId));
  return locale ? locale->Name() : std::string();
}

std::string JsonReport(const std::string& path, const CompiledHelp& help) {
  JsonWriter json;
  json.Member("file", AbsoluteNativePath(path))
      .Member("format", FormatName(help))
      .Member("title", help.Title())
      .Member("language", help.LocaleId())
      .Member("codePage", help.CodePage())
      .Member("defaultTopic", help.DefaultTopic())
      .Member("fullTextSearch", help.HasFullTextSearch())
      .BeginArray("files");
  for (const auto& file : help.Files())
    json.BeginObject().Member("name", file.name).Member("size", file.size).Member("table", file.isTable).EndObject();
  json.EndArray().BeginArray("contents");
  for (const auto& entry : help.Contents())
    json.BeginObject().Member("level", entry.level).Member("title", entry.title).Member("page", entry.page).EndObject();
  json.EndArray().BeginArray("index");
  for (const auto& entry : help.Index()) {
    json.BeginObject()
        .Member("level", entry.level)
        .Member("keyword", entry.keyword)
        .Member("seeAlso", entry.seeAlso)
        .BeginArray("targets");
    for (const auto& target : entry.targets)
      json.BeginObject().Member("title", target.title).Member("page", target.page).EndObject();
    json.EndArray().EndObject();
  }
  json.EndArray().BeginArray("problems");
  for (const auto& problem : help.Problems()) json.BeginObject().Member("message", problem).EndObject();
  return std::move(json.EndArray()).Text();
}

/// Text of a file that anybody may have made, without what a terminal would obey.
std::string Plain(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7f'; }, ' ');
  return text;
}

std::string Indent(int level) {
  constexpr int deepest = 40;  // a hostile file may nest without end
  return std::string(2 * static_cast<std::size_t>(std::min(level, deepest) + 1), ' ');
}

std::string TextReport(const std::string& path, const CompiledHelp& help) {
  auto text = fmt::format("{}\n{}\n\n", Plain(help.Title()), AbsoluteNativePath(path));
  text += fmt::format(
      "Format:         {}\nLanguage:       {} ({})\nCode page:      {}\nDefault topic:  {}\n"
      "Search:         {}\n",
      FormatName(help), help.LocaleId(), LanguageName(help.LocaleId()), help.CodePage(), help.DefaultTopic(),
      help.HasFullTextSearch() ? "yes" : "no");
  text += "\nFiles:\n";
  for (const auto& file : help.Files())
    if (!file.isTable) text += fmt::format("{:>10}  {}\n", file.size, Plain(file.name));
  if (!help.Contents().empty()) text += "\nContents:\n";
  for (const auto& entry : help.Contents())
    text += Indent(entry.level) + Plain(entry.title + (entry.page.empty() ? "" : " -> " + entry.page)) + "\n";
  if (!help.Index().empty()) text += "\nIndex:\n";
  for (const auto& entry : help.Index()) {
    auto line = entry.keyword;
    if (!entry.seeAlso.empty()) line += " (see " + entry.seeAlso + ")";
    for (std::size_t i = 0; i < entry.targets.size(); ++i) line += (i ? ", " : " -> ") + entry.targets[i].page;
    text += Indent(entry.level) + Plain(line) + "\n";
  }
  if (!help.Problems().empty()) text += "\nProblems:\n";
  for (const auto& problem : help.Problems()) text += "  " + Plain(problem) + "\n";
  return text;
}

}  // namespace

int RunInspect(const InspectOptions& options) {
  const auto help = Open(options.file);
  if (!help) return BadInput;
  if (options.quiet && !options.json) return Done;
  return PrintOutput(options.json ? JsonReport(options.file, *help) : TextReport(options.file, *help)) ? Done
                                                                                                       : NotBuilt;
}

int RunExtract(const ExtractOptions& options) {
  const auto help = Open(options.file);
  if (!help) return BadInput;
  try {
    const auto count = help->Extract(options.folder);
    if (options.quiet) return Done;
    return PrintOutput(fmt::format("{}: {} files\n", options.folder, count)) ? Done : NotBuilt;
  } catch (const Failure& failure) {
    Terminal::PrintError(options.file + ": " + failure.Description(), "what was written before is in the folder");
    return NotBuilt;
  }
}

}  // namespace quillbook::cli
