#include "cli/edit/ProfileKind.h"

#include <fmt/format.h>

#include <cstdint>

#include "cli/edit/References.h"
#include "cli/edit/Refusal.h"
#include "cli/edit/StoredValues.h"
#include "quillbook/base/Locale.h"
#include "quillbook/base/Text.h"
#include "quillbook/config/ProjectProperties.h"

namespace quillbook::cli {
namespace {

constexpr std::int64_t kHighestLocale = 0xFFFFF;
constexpr std::string_view kHelpFileEnding = ".hxs";

using Override = void (BuildProfile::*)(std::string_view name, std::string_view value);

/// Calls `set` with the two halves of each "NAME=VALUE".
template <class Set>
void ForEachPair(const Values& values, const Set& set) {
  for (const auto& pair : values) {
    const auto equals = pair.find('=');
    set(pair.substr(0, equals), pair.substr(equals + 1));
  }
}

/// Overrides with a value; the others aren't kept.
std::vector<const VariableValue*> Present(const VariableValues& values) {
  std::vector<const VariableValue*> present;
  for (const auto& value : values)
    if (!value->Value.empty()) present.push_back(value.get());
  return present;
}

/// Nothing given takes all overrides away.
void WriteOverrides(const VariableValues& known, const Values& values, BuildProfile& profile, Override set,
                    const std::function<std::string(const std::string&)>& keyOf) {
  if (values.empty())
    for (const auto* value : Present(known)) (profile.*set)(value->Name, "");
  ForEachPair(values, [&](const std::string& name, const std::string& value) { (profile.*set)(keyOf(name), value); });
}

Field VariablesField() {
  return {"variables", "Values of template variables; empty ones go", FieldType::Pairs,
          [](QBProject&, const Record& record) {
            Values pairs;
            for (const auto* value : Present(*record.As<BuildProfile>().VariableValues()))
              pairs.push_back(value->Name + "=" + value->Value);
            return pairs;
          },
          [](QBProject&, const Record& record, const Values& values) {
            auto& profile = record.As<BuildProfile>();
            WriteOverrides(*profile.VariableValues(), values, profile, &BuildProfile::SetVariableValue,
                           [](const std::string& name) { return name; });
          }};
}

Field PropertiesField() {
  return {"properties", "Values of project properties; empty ones go", FieldType::Pairs,
          [](QBProject& project, const Record& record) {
            Values pairs;
            for (const auto* value : Present(*record.As<BuildProfile>().ProjectPropertyValues())) {
              const auto property = project.ProjectProperties()->Item(value->Name);
              pairs.push_back((property ? property->PropertyName() : value->Name) + "=" + value->Value);
            }
            return pairs;
          },
          [](QBProject& project, const Record& record, const Values& values) {
            auto& profile = record.As<BuildProfile>();
            WriteOverrides(*profile.ProjectPropertyValues(), values, profile, &BuildProfile::SetProjectPropertyValue,
                           [&](const std::string& name) { return project.ProjectProperties()->Item(name)->ID(); });
          }};
}

Field HelpVersionField() {
  auto field = NumberField("help-version", "Form of compiled help, 2 after each load; can't be set",
                           &BuildProfile::HTMLHelpVersion, &BuildProfile::SetHTMLHelpVersion, 1, 2);
  field.write = {};
  return field;
}

}  // namespace

const KindInfo& ProfileKind::Info() const {
  static const KindInfo info{"profiles", "profile", "List, show and edit build profiles", "name or key of a profile"};
  return info;
}

const std::vector<Field>& ProfileKind::Fields() const {
  static const std::vector<Field> fields = {
      KeyField<BuildProfile>([](const BuildProfile& profile) -> const std::string& { return profile.ID(); }),
      TextField("name", "Name", &BuildProfile::Name, &BuildProfile::SetName).Listed().Required(),
      PathField("output", "Folder for the pages; empty for the project's", "mOutputDirectory",
                &BuildProfile::SetOutputDirectory)
          .Listed(),
      TextField("title", "Title; empty for the project's", &BuildProfile::ProjectTitle, &BuildProfile::SetProjectTitle)
          .Listed(),
      BooleanField("compile", "Compile the pages into a help file", &BuildProfile::CompileHelpFile,
                   &BuildProfile::SetCompileHelpFile)
          .Listed(),
      PathField("help-file", "The help file, *.hxs", "mHelpFileName", &BuildProfile::SetHelpFileName),
      HelpVersionField(),
      TextField("namespace", "Help 2 namespace; empty for the project file's name", &BuildProfile::H2Namespace,
                &BuildProfile::SetH2Namespace),
      TextField("file-id", "Help 2 file id; empty for the namespace", &BuildProfile::H2FileID,
                &BuildProfile::SetH2FileID),
      TextField("plug-in", "Help 2 namespaces to plug into, with commas", &BuildProfile::H2PlugIn,
                &BuildProfile::SetH2PlugIn),
      BooleanField("remove-output", "Remove the pages after compiling", &BuildProfile::RemoveOutputFiles,
                   &BuildProfile::SetRemoveOutputFiles),
      BooleanField("in-build", "Took part in the last build", &BuildProfile::IncludeInBuild,
                   &BuildProfile::SetIncludeInBuild),
      DefaultTopicField<BuildProfile>("First page; empty for the project's"),
      NumberField("locale", "Windows locale number; 0 for UTF-8 pages", &BuildProfile::LocaleID,
                  &BuildProfile::SetLocaleID, 0, kHighestLocale),
      VariablesField(),
      PropertiesField(),
  };
  return fields;
}

void ProfileKind::Complete(QBProject& project, const Record&, std::vector<Assignment>& assignments) const {
  if (const auto* locale = FindAssignment(assignments, "locale"); locale && locale->values.front() != "0")
    if (!Locale::FromID(std::stoi(locale->values.front())))
      throw Refusal("value.bad", fmt::format("there is no locale {}", locale->values.front()),
                    "give the number of a Windows locale, such as 1031");
  // A load gives every longer name this ending.
  if (const auto* file = FindAssignment(assignments, "help-file"); file && !file->values.front().empty())
    if (!EndsWithIgnoringCase(file->values.front(), kHelpFileEnding))
      throw Refusal("value.bad", fmt::format("'{}' is no value for help-file", file->values.front()),
                    "give a name that ends in .hxs");
  if (const auto* properties = FindAssignment(assignments, "properties"))
    ForEachPair(properties->values, [&](const std::string& name, const std::string&) {
      if (!project.ProjectProperties()->Item(name)) RefuseUnknown("property", name, "see quillbook properties list");
    });
}

Ref<BuildProfile> ProfileKind::Make(const Scope& scope, const std::string& name) const {
  return scope.project.NewBuildProfile(name);
}

}  // namespace quillbook::cli
