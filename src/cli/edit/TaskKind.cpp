#include "cli/edit/TaskKind.h"

#include <array>

#include "cli/edit/StoredValues.h"
#include "quillbook/base/Text.h"

namespace quillbook::cli {
namespace {

constexpr std::array<std::string_view, 3> kPriorities = {"Low", "Medium", "High"};

/// A new task holds the word, a loaded one its number; any other text stands for itself.
std::string PriorityWord(const std::string& stored) {
  for (std::size_t number = 0; number < kPriorities.size(); ++number)
    if (stored == std::to_string(number)) return std::string(kPriorities[number]);
  return stored;
}

std::string StoredPriority(const std::string& text) {
  for (std::size_t number = 0; number < kPriorities.size(); ++number)
    if (EqualsIgnoringCase(text, kPriorities[number])) return std::to_string(number);
  return text;
}

Field PriorityField() {
  return {"priority", "Low, Medium, High, or any other text", FieldType::Text,
          [](QBProject&, const Record& record) { return Values{PriorityWord(record.As<Task>().Priority())}; },
          [](QBProject&, const Record& record, const Values& values) {
            record.As<Task>().SetPriority(StoredPriority(values.front()));
          }};
}

Field TopicField() {
  return {"topic", "Topic that it is about", FieldType::Topic,
          [](QBProject& project, const Record& record) {
            return Values{TopicNameFor(project, record.As<Task>().TopicID())};
          },
          [](QBProject&, const Record& record, const Values& values) { record.As<Task>().SetTopicID(values.front()); }};
}

/// A field that every change writes, the change of itself too.
Field Stamp(Field field) {
  field.write = [write = std::move(field.write)](QBProject& project, const Record& record, const Values& values) {
    auto& task = record.As<Task>();
    task.SetPauseEvents(true);
    write(project, record, values);
    task.SetPauseEvents(false);
  };
  return field;
}

}  // namespace

const KindInfo& TaskKind::Info() const {
  static const KindInfo info = [] {
    KindInfo tasks{"tasks", "task", "List, show and edit the to-do list", "title or key of a task"};
    tasks.nameField = "title";
    tasks.uniqueNames = false;
    return tasks;
  }();
  return info;
}

const std::vector<Field>& TaskKind::Fields() const {
  static const std::vector<Field> fields = {
      KeyField<Task>([](const Task& task) -> const std::string& { return task.Key(); }),
      TextField("title", "What is to be done", &Task::Title, &Task::SetTitle).Listed().Required(),
      PriorityField().Listed(),
      TextField("status", "How far it is; Not Started for a new one", &Task::Status, &Task::SetStatus).Listed(),
      TextField("assigned-to", "Who does it", &Task::AssignedTo, &Task::SetAssignedTo).Listed(),
      TopicField().Listed(),
      TextField("notes", "Notes", &Task::Notes, &Task::SetNotes),
      DateField("created", "Time of making", FieldType::Moment, &Task::CreatedOn, &Task::SetCreatedOn),
      TextField("created-by", "Who made it", &Task::CreatedBy, &Task::SetCreatedBy),
      // Last, as each change before them writes them.
      Stamp(DateField("modified", "Time of the last change; every change sets it", FieldType::Moment, &Task::ModifiedOn,
                      &Task::SetModifiedOn)),
      Stamp(TextField("modified-by", "Who made the last change; likewise", &Task::ModifiedBy, &Task::SetModifiedBy)),
  };
  return fields;
}

Ref<Task> TaskKind::Make(const Scope& scope, const std::string& name) const {
  auto task = scope.project.NewTask();
  task->SetTitle(name);
  return task;
}

}  // namespace quillbook::cli
