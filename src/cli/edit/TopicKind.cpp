#include "cli/edit/TopicKind.h"

#include <fmt/format.h>

#include "cli/edit/Refusal.h"
#include "cli/edit/StoredValues.h"
#include "quillbook/base/Text.h"
#include "quillbook/config/BuildProfiles.h"
#include "quillbook/frame/modMain.h"
#include "quillbook/topics/TopicCategories.h"

namespace quillbook::cli {
namespace {

constexpr std::string_view kBody = "BodyText";

Values Files(const Topic::FileList& list) {
  return {list.begin(), list.end()};
}

void ReplaceStyleSheets(QBProject&, const Record& record, const Values& values) {
  auto& topic = record.As<Topic>();
  if (!values.empty()) topic.SetAllStylesheets(false);
  for (const auto& file : Files(*topic.StyleSheets())) topic.RemoveStyleSheet(file);
  for (const auto& file : values) topic.AddStyleSheet(file);
}

void ReplaceScripts(QBProject&, const Record& record, const Values& values) {
  auto& topic = record.As<Topic>();
  if (!values.empty()) topic.SetAllScripts(false);
  for (const auto& file : Files(*topic.Scripts())) topic.RemoveScript(file);
  for (const auto& file : values) topic.AddScript(file);
}

Field CategoryField() {
  return {"category", "Category of the topic", FieldType::Category,
          [](QBProject&, const Record& record) {
            const auto category = record.As<Topic>().TopicCategory();
            return Values{category ? category->Name() : std::string()};
          },
          [](QBProject& project, const Record& record, const Values& values) {
            record.As<Topic>().SetTopicCategory(project.TopicCategories->Item(values.front()));
          }};
}

Field BodyField() {
  return {"body", "Content, as HTML", FieldType::Text,
          [](QBProject&, const Record& record) { return Values{record.As<Topic>().TopicSectionData(kBody)}; },
          [](QBProject&, const Record& record, const Values& values) {
            record.As<Topic>().SetTopicSectionData(kBody, values.front());
          }};
}

void RefuseBoth(std::vector<Assignment>& assignments, std::string_view all, std::string_view list) {
  const auto* whole = FindAssignment(assignments, all);
  const auto* part = FindAssignment(assignments, list);
  if (whole && part && whole->values.front() == "yes" && !part->values.empty())
    throw Refusal("value.conflict", fmt::format("{}=yes leaves no room for {}", all, list), "give one of them");
}

/// Where the topic was the first page, the usual one is again.
void ForgetDefault(QBProject& project, const Topic& topic) {
  // The properties tell what is in effect, which may be another topic.
  constexpr std::string_view stored = "mDefaultTopicID";
  if (EqualsIgnoringCase(StoredText(project, stored), topic.Key)) project.SetDefaultTopic({});
  for (const auto& profile : *project.BuildProfiles)
    if (EqualsIgnoringCase(StoredText(*profile, stored), topic.Key)) profile->SetDefaultTopic({});
}

}  // namespace

const KindInfo& TopicKind::Info() const {
  static const KindInfo info{"topics", "topic", "List, show and edit topics", "name or key of a topic"};
  return info;
}

const std::vector<Field>& TopicKind::Fields() const {
  static const std::vector<Field> fields = {
      KeyField<Topic>([](const Topic& topic) -> const std::string& { return topic.Key; }),
      TextField("name", "Name, also of the page's file", &Topic::Name, &Topic::SetName).Listed().Required(),
      TextField("title", "Title of the page; a new topic gets its name", &Topic::Title, &Topic::SetTitle).Listed(),
      TextField("contents-title", "Title in the contents; empty for the title", &Topic::InternalContentsTitle,
                &Topic::SetContentsTitle),
      TextField("status", "Step of the workflow", &Topic::Status, &Topic::SetStatus).Listed().Required(),
      CategoryField().Listed(),
      BodyField(),
      TextField("notes", "Notes for authors", &Topic::Notes, &Topic::SetNotes),
      TextField("layout", "Layout; empty for the template's usual one", &Topic::LayoutName, &Topic::SetLayoutName),
      BooleanField("in-help", "Take the topic into the help", &Topic::IncludeInHelpFile, &Topic::SetIncludeInHelpFile),
      BooleanField("auto-index", "Index entry made from the title", &Topic::AutoGenerateIndexEntry,
                   &Topic::SetAutoGenerateIndexEntry),
      BooleanField("all-stylesheets", "Use all style sheets of the project", &Topic::AllStylesheets,
                   &Topic::SetAllStylesheets),
      {"stylesheets", "Style sheets to use instead", FieldType::List,
       [](QBProject&, const Record& record) { return Files(*record.As<Topic>().StyleSheets()); }, ReplaceStyleSheets},
      BooleanField("all-scripts", "Use all scripts of the project", &Topic::AllScripts, &Topic::SetAllScripts),
      {"scripts", "Scripts to use instead; none or as many as style sheets", FieldType::List,
       [](QBProject&, const Record& record) { return Files(*record.As<Topic>().Scripts()); }, ReplaceScripts},
      DateField("created", "Day of making", FieldType::Day, &Topic::CreatedOn, &Topic::SetCreatedOn).Required(),
      // Last, as each change before it sets the day to today.
      DateField("modified", "Day of the last change; every change sets it", FieldType::Day, &Topic::ModifiedOn,
                &Topic::SetModifiedOn)
          .Required(),
  };
  return fields;
}

Ref<Topic> TopicKind::Make(const Scope& scope, const std::string& name) const {
  auto topic = scope.project.NewTopic();
  topic->SetName(name);
  topic->SetTitle(name);
  return topic;
}

void TopicKind::Remove(const Scope& scope, const Record& record) const {
  const Ref<Topic> topic(&record.As<Topic>());
  bool cancelled = false;
  bool asked = false;
  modMain::BeforeDeleteTopic(topic, cancelled, asked);
  if (cancelled) throw Refusal("edit.cancelled", "the topic stays", "nothing was changed", NotBuilt);
  ForgetDefault(scope.project, *topic);
  CollectionKind::Remove(scope, record);
}

void TopicKind::Move(const Scope& scope, const Record& record, const Place& place) const {
  auto& topics = *scope.project.Topics;
  // A topic that is told to leave loses its contents nodes.
  topics.PauseEvents = true;
  CollectionKind::Move(scope, record, place);
  topics.PauseEvents = false;
  scope.project.FireTopicReOrdered(Ref<Topic>(&record.As<Topic>()));
}

void TopicKind::Complete(QBProject&, const Record&, std::vector<Assignment>& assignments) const {
  RefuseBoth(assignments, "all-stylesheets", "stylesheets");
  RefuseBoth(assignments, "all-scripts", "scripts");
}

void TopicKind::Verify(QBProject&, const Record& record) const {
  const auto& topic = record.As<Topic>();
  const auto sheets = topic.StyleSheets()->Count();
  const auto scripts = topic.Scripts()->Count();
  // The file form writes as many scripts as there are style sheets, and it stays so for the programs that read it.
  if (!topic.AllScripts() && scripts != 0 && scripts != sheets)
    throw Refusal("topic.scripts",
                  fmt::format("topic '{}' would have scripts: {}, style sheets: {}", topic.Name(), scripts, sheets),
                  "a project file holds as many scripts as style sheets, or none");
}

}  // namespace quillbook::cli
