#include "cli/edit/RecordKind.h"

#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>

#include "cli/edit/References.h"
#include "cli/edit/Refusal.h"
#include "quillbook/base/Text.h"

namespace quillbook::cli {

Record RecordKind::Add(const Scope&, const std::string&, const Place&) const {
  throw std::logic_error("this kind of record can't be added");
}

void RecordKind::Remove(const Scope&, const Record&) const {
  throw std::logic_error("this kind of record can't be removed");
}

void RecordKind::Move(const Scope&, const Record&, const Place&) const {
  throw std::logic_error("this kind of record can't be moved");
}

Record RecordKind::Find(const Scope& scope, std::string_view address) const {
  std::vector<Record> named;
  for (auto& record : All(scope)) {
    if (IsKey(address) && EqualsIgnoringCase(KeyOf(scope.project, record), address)) return record;
    if (IsNamed(scope.project, record, address)) named.push_back(std::move(record));
  }
  // Records without a key that have one name are alike; the first does.
  if (named.size() > 1 && FindField("key")) {
    std::vector<std::string> keys;
    for (const auto& record : named) keys.push_back(KeyOf(scope.project, record));
    RefuseAmbiguous(Info().name, address, keys);
  }
  if (named.empty()) RefuseUnknown(Info().singular, address, fmt::format("see quillbook {} list", Info().name));
  return named.front();
}

const Field* RecordKind::FindField(std::string_view name) const {
  const auto found = std::find_if(Fields().begin(), Fields().end(),
                                  [name](const Field& field) { return EqualsIgnoringCase(field.name, name); });
  return found == Fields().end() ? nullptr : &*found;
}

std::string RecordKind::NameOf(QBProject& project, const Record& record) const {
  return FindField(Info().nameField)->ReadOne(project, record);
}

std::string RecordKind::KeyOf(QBProject& project, const Record& record) const {
  const auto* field = FindField("key");
  return field ? field->ReadOne(project, record) : std::string();
}

std::string RecordKind::Describe(QBProject& project, const Record& record) const {
  return fmt::format("{} \"{}\"", Info().singular, NameOf(project, record));
}

bool RecordKind::IsNamed(QBProject& project, const Record& record, std::string_view address) const {
  return EqualsIgnoringCase(NameOf(project, record), address);
}

Assignment* FindAssignment(std::vector<Assignment>& assignments, std::string_view field) {
  const auto found = std::find_if(assignments.begin(), assignments.end(),
                                  [field](const Assignment& one) { return one.field->name == field; });
  return found == assignments.end() ? nullptr : &*found;
}

}  // namespace quillbook::cli
