#include "cli/edit/Assignments.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdio>

#include "cli/ProjectFile.h"
#include "cli/edit/Refusal.h"
#include "quillbook/base/Failure.h"
#include "quillbook/base/Text.h"
#include "quillbook/frame/services/FileSystemObject.h"

namespace quillbook::cli {
namespace {

[[noreturn]] void RefuseSource(const std::string& source, std::string_view what) {
  throw Refusal("value.unreadable", std::string(what), "give a file with the value").About(source);
}

std::string ReadStandardInput() {
  std::string text;
  std::array<char, 65536> buffer;
  for (std::size_t count = 0; (count = std::fread(buffer.data(), 1, buffer.size(), stdin)) != 0;)
    text.append(buffer.data(), count);
  if (std::ferror(stdin)) RefuseSource("standard input", "it can't be read");
  return text;
}

std::string ReadValueFile(const std::string& path) {
  const FileSystemObject file(AbsoluteNativePath(path));
  if (!file.FileExists()) RefuseSource(path, "there is no such file");
  try {
    return file.ReadAll();
  } catch (const Failure& failure) {
    RefuseSource(path, failure.Description());
  }
}

/// The value that a text stands for.
std::string Resolve(const std::string& text) {
  if (text == "@-") return ReadStandardInput();
  if (text.starts_with("@@")) return text.substr(1);
  return text.starts_with('@') ? ReadValueFile(text.substr(1)) : text;
}

void CheckText(const Field& field, const std::string& value) {
  const bool bad = !IsValidUtf8(value) || value.find('\0') != std::string::npos;
  if (bad)
    throw Refusal("value.bad", fmt::format("the value for {} is no text", field.name), "give it in UTF-8, without NUL");
}

const Field& SettableField(const RecordKind& kind, std::string_view name) {
  const auto* field = kind.FindField(name);
  const auto remedy = fmt::format("see quillbook {} --help", kind.Info().name);
  if (!field) throw Refusal("field.unknown", fmt::format("{} have no field '{}'", kind.Info().name, name), remedy);
  if (!field->write) throw Refusal("field.read-only", fmt::format("{} can't be set", field->name), remedy);
  return *field;
}

void SortByTable(const RecordKind& kind, std::vector<Assignment>& assignments) {
  // The fields stand in one vector, so their addresses have the order of the table.
  (void)kind;
  std::sort(assignments.begin(), assignments.end(),
            [](const Assignment& left, const Assignment& right) { return left.field < right.field; });
}

}  // namespace

std::vector<Assignment> ReadAssignments(QBProject& project, const RecordKind& kind,
                                        const std::vector<std::string>& texts) {
  std::vector<Assignment> assignments;
  for (const auto& text : texts) {
    const auto equals = text.find('=');
    if (equals == std::string::npos)
      throw Refusal("field.form", fmt::format("'{}' is not of the form FIELD=VALUE", text),
                    fmt::format("see quillbook {} --help", kind.Info().name));
    const auto& field = SettableField(kind, std::string_view(text).substr(0, equals));
    auto value = Resolve(text.substr(equals + 1));
    CheckText(field, value);
    if (auto* known = FindAssignment(assignments, field.name))
      known->values.push_back(std::move(value));
    else
      assignments.push_back({&field, {std::move(value)}});
  }
  for (auto& one : assignments) one.values = ParseValues(project, *one.field, one.values);
  SortByTable(kind, assignments);
  return assignments;
}

bool IsGiven(std::vector<Assignment>& assignments, std::string_view field) {
  const auto* assigned = FindAssignment(assignments, field);
  return assigned && !assigned->values.front().empty();
}

void Imply(const RecordKind& kind, std::vector<Assignment>& assignments, std::string_view field, Values values) {
  if (FindAssignment(assignments, field)) return;
  assignments.push_back({kind.FindField(field), std::move(values)});
  SortByTable(kind, assignments);
}

}  // namespace quillbook::cli
