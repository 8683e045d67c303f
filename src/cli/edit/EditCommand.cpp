#include "cli/edit/EditCommand.h"

#include <fmt/format.h>

#include <map>

#include "cli/edit/Actions.h"
#include "cli/edit/Assignments.h"
#include "cli/edit/EditReport.h"
#include "cli/edit/EditSession.h"
#include "cli/edit/References.h"
#include "cli/edit/Refusal.h"
#include "quillbook/base/Text.h"

namespace quillbook::cli {
namespace {

/// One run of a command: opens the project, does the action in memory, saves, reports.
class Editor {
 public:
  explicit Editor(const EditOptions& options) : mOptions(options), mKind(*options.kind), mSession(options) {}

  int Run();

 private:
  int Act();
  void Change();
  void Show();
  void Add();
  void Set();
  void Remove();
  void Move();

  [[nodiscard]] Record Named() const;
  [[nodiscard]] Place GivenPlace() const;
  void RequireNewName(const std::string& name, const Object* except) const;
  std::vector<Assignment> Assignments(const Record& record);
  void Write(const Record& record, const std::vector<Assignment>& assignments);
  void Subject(const Record& record);
  [[nodiscard]] bool Report();

  QBProject& Project() const { return mScope->project; }

  const EditOptions& mOptions;
  const RecordKind& mKind;
  EditSession mSession;
  std::optional<Scope> mScope;
  EditOutcome mOutcome;
  int mExitCode = BadInput;
};

int Editor::Run() {
  try {
    mExitCode = Act();
  } catch (const Refusal& refusal) {
    mExitCode = mSession.Report(refusal);
    mOutcome = {};
  }
  return Report() ? mExitCode : NotBuilt;
}

int Editor::Act() {
  const auto& project = mSession.Open();
  if (!project) return BadInput;
  mScope.emplace(Scope{*project});
  if (!mOptions.topic.empty()) mScope->topic = FindTopic(*project, mOptions.topic);
  switch (mOptions.action) {
    case Action::List: mOutcome.records = mKind.All(*mScope); break;
    case Action::Show: Show(); break;
    default: Change();
  }
  return Done;
}

void Editor::Show() {
  if (!mOptions.field.empty() && !mKind.FindField(mOptions.field))
    throw Refusal("field.unknown", fmt::format("{} have no field '{}'", mKind.Info().name, mOptions.field),
                  fmt::format("see quillbook {} --help", mKind.Info().name));
  mOutcome.records = {Named()};
}

void Editor::Change() {
  mSession.RequireWholeFile();
  switch (mOptions.action) {
    case Action::Add: Add(); break;
    case Action::Set: Set(); break;
    case Action::Remove: Remove(); break;
    default: Move();
  }
  if (mOptions.dryRun)
    (void)mSession.Render();
  else if (mOutcome.changed)
    mSession.Save();
  mOutcome.saved = mOutcome.changed && !mOptions.dryRun;
}

void Editor::Add() {
  const auto& field = *mKind.FindField(mKind.Info().nameField);
  const auto assignments = Assignments({});
  std::string name;
  if (mKind.Info().named) {
    name = ParseValues(Project(), field, {mOptions.name}).front();
    RequireNewName(name, nullptr);
  }
  const auto record = mKind.Add(*mScope, name, GivenPlace());
  Write(record, assignments);
  mOutcome.changed = true;
  Subject(mKind.Refreshed(*mScope, record));
}

void Editor::Set() {
  const auto record = Named();
  const auto assignments = Assignments(record);
  for (const auto& one : assignments)
    if (one.field->name == mKind.Info().nameField) RequireNewName(one.values.front(), record.object.get());
  Subject(record);
  Write(record, assignments);
  mOutcome.changed = !mOutcome.fields.empty();
}

void Editor::Remove() {
  const auto record = Named();
  Subject(record);
  mKind.Remove(*mScope, record);
  mOutcome.changed = true;
}

void Editor::Move() {
  const auto record = Named();
  const auto place = GivenPlace();
  if (place.neighbour.object == record.object)
    throw Refusal("place.self", fmt::format("{} can't stand beside itself", mKind.Describe(Project(), record)),
                  "name another one");
  mKind.Move(*mScope, record, place);
  mOutcome.changed = true;
  Subject(mKind.Refreshed(*mScope, record));
}

Record Editor::Named() const {
  return mKind.Info().single ? mKind.All(*mScope).front() : mKind.Find(*mScope, mOptions.name);
}

Place Editor::GivenPlace() const {
  Place place;
  if (mOptions.first) place.where = Place::Where::First;
  if (!mOptions.before.empty()) place = {Place::Where::Before, mKind.Find(*mScope, mOptions.before)};
  if (!mOptions.after.empty()) place = {Place::Where::After, mKind.Find(*mScope, mOptions.after)};
  if (!mOptions.into.empty()) place.parent = mKind.Find(*mScope, mOptions.into);
  return place;
}

void Editor::RequireNewName(const std::string& name, const Object* except) const {
  if (!mKind.Info().uniqueNames) return;
  for (const auto& other : mKind.All(*mScope))
    if (other.object.get() != except && mKind.IsNamed(Project(), other, name))
      throw Refusal("name.taken", fmt::format("there is {} '{}' already", WithArticle(mKind.Info().singular), name),
                    "choose another name");
}

std::vector<Assignment> Editor::Assignments(const Record& record) {
  auto assignments = ReadAssignments(Project(), mKind, mOptions.assignments);
  const bool namedTwice = mOptions.action == Action::Add && mKind.Info().named;
  if (namedTwice && FindAssignment(assignments, mKind.Info().nameField))
    throw Refusal("field.twice", fmt::format("{} is given twice", mKind.Info().nameField), "give it as NAME alone");
  mKind.Complete(Project(), record, assignments);
  return assignments;
}

void Editor::Write(const Record& record, const std::vector<Assignment>& assignments) {
  std::map<const Field*, Values> before;
  for (const auto& one : assignments) before[one.field] = one.field->read(Project(), record);
  for (const auto& one : assignments) one.field->write(Project(), record, one.values);
  mKind.Verify(Project(), record);
  for (const auto& [field, values] : before)
    if (field->read(Project(), record) != values) mOutcome.fields.emplace_back(field->name);
  if (const auto warning = mKind.Warning(Project(), record); !warning.empty())
    mSession.Log().Warning("edit.notice", mOptions.project + ": " + warning);
}

void Editor::Subject(const Record& record) {
  mOutcome.subject = mKind.Describe(Project(), record);
  mOutcome.name = mKind.NameOf(Project(), record);
  mOutcome.key = mKind.KeyOf(Project(), record);
}

bool Editor::Report() {
  auto* const project = mScope ? &mScope->project : nullptr;
  if (mOptions.json) return PrintOutput(EditJson(project, mOptions, mOutcome, mSession.Log().Messages()));
  if (mOptions.quiet || mExitCode != Done) return true;
  return PrintOutput(EditText(*project, mOptions, mOutcome));
}

}  // namespace

int RunEdit(const EditOptions& options) {
  return Editor(options).Run();
}

}  // namespace quillbook::cli
