#include "cli/edit/ProjectKind.h"

#include <fmt/format.h>

#include "cli/edit/Refusal.h"
#include "cli/edit/StoredValues.h"
#include "quillbook/host/PageTemplate.h"

namespace quillbook::cli {
namespace {

/// Stands between the words in the project file.
constexpr char kBetweenWords = '|';

Field IgnoredWordsField() {
  return {"ignored-words", "Words that spelling ignores", FieldType::List,
          [](QBProject& project, const Record&) {
            const auto& words = *project.SpellIgnoreAllWordList;
            return Values{words.begin(), words.end()};
          },
          [](QBProject& project, const Record&, const Values& values) {
            project.SpellIgnoreAllWordList->Clear();
            for (const auto& word : values) project.SpellAddIgnoreAllWord(word);
          }};
}

}  // namespace

const KindInfo& ProjectKind::Info() const {
  static const KindInfo info = [] {
    KindInfo project{"project", "project", "Show and set the settings of the project itself", ""};
    project.nameField = "title";
    project.actions = {Action::Show, Action::Set};
    project.uniqueNames = false;
    project.single = true;
    return project;
  }();
  return info;
}

const std::vector<Field>& ProjectKind::Fields() const {
  static const std::vector<Field> fields = {
      TextField("title", "Title", &QBProject::Title, &QBProject::SetTitle),
      TextField("template", "Template that makes the pages", &QBProject::TemplateName, &QBProject::SetTemplateName),
      PathField("output", "Folder for the pages of profiles without one", "mOutputDirectory",
                &QBProject::SetOutputDirectory),
      DefaultTopicField<QBProject>("First page"),
      BooleanField("auto-index", "Index entries made from topics' titles", &QBProject::AutoGenerateIndexEntries,
                   &QBProject::SetAutoGenerateIndexEntries),
      BooleanField("category-index", "Index entries made from categories", &QBProject::AutoGenerateCategoryIndex,
                   &QBProject::SetAutoGenerateCategoryIndex),
      PathField("companion", "Related project of the companion generator", "mMVPFileName", &QBProject::SetMVPFileName),
      BooleanField("build-companion", "Build the related project too", &QBProject::BuildMVProject,
                   &QBProject::SetBuildMVProject),
      DateField("spelling-checked", "Time of the last spelling check", FieldType::Moment,
                &QBProject::SpellLastCheckDateTime, &QBProject::SetSpellLastCheckDateTime),
      IgnoredWordsField(),
  };
  return fields;
}

std::vector<Record> ProjectKind::All(const Scope& scope) const {
  return {{Ref<Object>(&scope.project)}};
}

void ProjectKind::Complete(QBProject&, const Record&, std::vector<Assignment>& assignments) const {
  const auto* words = FindAssignment(assignments, "ignored-words");
  for (const auto& word : words ? words->values : Values())
    if (word.find(kBetweenWords) != std::string::npos)
      throw Refusal("value.bad", fmt::format("'{}' is no value for ignored-words", word),
                    fmt::format("give a word without '{}'", kBetweenWords));
}

std::string ProjectKind::Warning(QBProject& project, const Record&) const {
  return project.Template() ? std::string() : fmt::format("there is no template '{}'", project.TemplateName());
}

std::string ProjectKind::Describe(QBProject& project, const Record&) const {
  return fmt::format("project \"{}\"", project.Title());
}

}  // namespace quillbook::cli
