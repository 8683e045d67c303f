#include "cli/edit/VariableKind.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "cli/edit/Refusal.h"

namespace quillbook::cli {
namespace {

/// Names under which older project files keep other settings; a load takes them away.
constexpr std::array<std::string_view, 5> kTakenNames = {"Template", "HelpCompilerVersion", "OutputFileName",
                                                         "Help2Namespace", "Help2FileID"};

Field MemberField(std::string_view name, std::string_view help, std::string VariableValue::*member) {
  return {name, help, FieldType::Text,
          [member](QBProject&, const Record& record) { return Values{record.As<VariableValue>().*member}; },
          [member](QBProject&, const Record& record, const Values& values) {
            record.As<VariableValue>().*member = values.front();
          }};
}

}  // namespace

const KindInfo& VariableKind::Info() const {
  static const KindInfo info{"variables", "variable", "List, show and edit values for template variables",
                             "name of a variable"};
  return info;
}

const std::vector<Field>& VariableKind::Fields() const {
  static const std::vector<Field> fields = {
      MemberField("name", "Name that the template gives it", &VariableValue::Name).Listed().Required(),
      MemberField("value", "Value", &VariableValue::Value).Listed(),
  };
  return fields;
}

void VariableKind::Verify(QBProject&, const Record& record) const {
  const auto& name = record.As<VariableValue>().Name;
  if (std::find(kTakenNames.begin(), kTakenNames.end(), name) != kTakenNames.end())
    throw Refusal("name.taken", fmt::format("a variable can't be called '{}'", name), "choose another name");
}

Ref<VariableValue> VariableKind::Make(const Scope&, const std::string& name) const {
  return New<VariableValue>(name, std::string());
}

}  // namespace quillbook::cli
