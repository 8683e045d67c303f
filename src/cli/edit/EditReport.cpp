#include "cli/edit/EditReport.h"

#include <fmt/format.h>

#include <algorithm>

#include "cli/DisplayWidth.h"
#include "cli/Json.h"
#include "cli/ProjectFile.h"
#include "cli/Table.h"
#include "cli/edit/Actions.h"
#include "quillbook/base/Text.h"

namespace quillbook::cli {
namespace {

std::string Joined(const Values& values, std::string_view between) {
  return fmt::format("{}", fmt::join(values, between));
}

std::string ListText(QBProject& project, const RecordKind& kind, const std::vector<Record>& records) {
  std::vector<const Field*> columns;
  std::vector<std::string> captions;
  for (const auto& field : kind.Fields()) {
    if (!field.listed) continue;
    columns.push_back(&field);
    captions.push_back(UpperCase(field.name));
  }
  Table table(captions);
  for (const auto& record : records) {
    std::vector<std::string> cells;
    for (const auto* column : columns) cells.push_back(Joined(column->read(project, record), ", "));
    table.Add(std::move(cells));
  }
  return table.Text(OutputWidth());
}

/// A value of more than one line goes below the field's name.
std::string FieldText(const Field& field, const Values& values, std::size_t column) {
  auto value = Joined(values, "\n");
  if (value.ends_with('\n')) value.pop_back();
  std::string text(field.name);
  if (value.find('\n') == std::string::npos) {
    text.append(column - text.size(), ' ').append(value);
    text.erase(text.find_last_not_of(' ') + 1);
    return text + "\n";
  }
  text += '\n';
  for (const auto line : Split(value, '\n')) text.append(line.empty() ? "" : "  ").append(line) += '\n';
  return text;
}

std::string RecordText(QBProject& project, const RecordKind& kind, const Record& record) {
  std::size_t column = 0;
  for (const auto& field : kind.Fields()) column = std::max(column, field.name.size() + 2);
  std::string text;
  for (const auto& field : kind.Fields()) text += FieldText(field, field.read(project, record), column);
  return text;
}

std::string ShowText(QBProject& project, const EditOptions& options, const Record& record) {
  if (options.field.empty()) {
    auto text = RecordText(project, *options.kind, record);
    return OutputGoesToTerminal() ? ForTerminal(text) : text;
  }
  const auto& field = *options.kind->FindField(options.field);
  auto text = Joined(field.read(project, record), "\n");
  if (!OutputGoesToTerminal()) return text;  // as it is, so that it may come back by FIELD=@FILE
  return ForTerminal(text) + (text.ends_with('\n') ? "" : "\n");
}

std::string ChangeText(const EditOptions& options, const EditOutcome& outcome) {
  if (!outcome.changed) return fmt::format("nothing to change in {}\n", outcome.subject);
  const auto& info = InfoOf(options.action);
  const auto verb = options.dryRun ? fmt::format("would {}", info.name) : std::string(info.past);
  const auto fields = options.action == Action::Set ? Joined(outcome.fields, ", ") + " of " : std::string();
  return fmt::format("{} {}{}\n", verb, fields, outcome.subject);
}

void WriteField(JsonWriter& json, const Field& field, const Values& values) {
  if (!field.IsOne())
    json.Member(field.name, values);
  else if (field.type == FieldType::Boolean)
    json.Member(field.name, values.front() == "yes");
  else if (field.type == FieldType::Number)
    json.Member(field.name, std::stoll(values.front()));
  else
    json.Member(field.name, values.front());
}

void WriteRecords(JsonWriter& json, QBProject* project, const EditOptions& options, const EditOutcome& outcome) {
  json.BeginArray("records");
  for (const auto& record : outcome.records) {
    json.BeginObject();
    for (const auto& field : options.kind->Fields())
      if (options.field.empty() || EqualsIgnoringCase(field.name, options.field))
        WriteField(json, field, field.read(*project, record));
    json.EndObject();
  }
  json.EndArray();
}

void WriteChange(JsonWriter& json, const EditOptions& options, const EditOutcome& outcome) {
  json.Member("name", outcome.name)
      .Member("key", outcome.key)
      .Member("fields", outcome.fields)
      .Member("changed", outcome.changed)
      .Member("saved", outcome.saved)
      .Member("dryRun", options.dryRun);
}

}  // namespace

std::string EditText(QBProject& project, const EditOptions& options, const EditOutcome& outcome) {
  switch (options.action) {
    case Action::List: return ListText(project, *options.kind, outcome.records);
    case Action::Show: return ShowText(project, options, outcome.records.front());
    default: return ForTerminal(ChangeText(options, outcome));
  }
}

std::string EditJson(QBProject* project, const EditOptions& options, const EditOutcome& outcome,
                     const std::vector<Message>& messages) {
  JsonWriter json;
  json.Member("file", AbsoluteNativePath(options.project))
      .Member("kind", options.kind->Info().name)
      .Member("action", InfoOf(options.action).name);
  if (Changes(options.action))
    WriteChange(json, options, outcome);
  else
    WriteRecords(json, project, options, outcome);
  WriteMessages(json, messages);
  return std::move(json).Text();
}

}  // namespace quillbook::cli
