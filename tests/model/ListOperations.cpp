// Glossary, tasks, other files, profiles, properties, variables and words.
#include <algorithm>

#include "World.h"
#include "quillbook/config/BuildProfiles.h"
#include "quillbook/config/ProjectProperties.h"
#include "quillbook/structure/GlossaryItems.h"
#include "quillbook/structure/OtherFiles.h"
#include "quillbook/structure/Tasks.h"

namespace quillbook::model {

namespace {

// Glossary.

void AddTerm(World& world, GlossaryState item) {
  if (AddTo(world, "GlossaryItems", *world.project->GlossaryItems(), world.model.glossary, std::move(item)))
    world.model.glossaryDirty = true;
}

void AddNewTerm(World& world) {
  if (world.model.glossary.size() >= MostMembers) return;
  const auto term = world.dice.Text();
  const auto definition = world.dice.Text();
  const auto item = world.project->NewGlossaryItem(term, definition);
  if (!term.empty() || !definition.empty()) world.model.glossaryDirty = true;
  AddTerm(world, {item, item->Key, std::string(term), std::string(definition)});
}

void CloneTerm(World& world) {
  auto& model = world.model;
  if (model.glossary.empty() || model.glossary.size() >= MostMembers) return;
  auto copy = world.dice.Of(model.glossary);
  copy.object = copy.object->Clone();
  if (!copy.term.empty() || !copy.definition.empty()) model.glossaryDirty = true;
  if (world.dice.OneIn(2)) copy.object->Key = copy.key = "{copy " + std::to_string(world.dice.Next()) + "}";
  AddTerm(world, std::move(copy));
}

void RemoveTerm(World& world) {
  if (RemoveFrom(world, "GlossaryItems", *world.project->GlossaryItems(), world.model.glossary))
    world.model.glossaryDirty = true;
}

void ChangeTerm(World& world) {
  auto& glossary = world.model.glossary;
  if (!glossary.empty() && SetOne(world, GlossaryTexts, world.dice.Of(glossary), world.dice.Text()))
    world.model.glossaryDirty = true;
}

// Tasks.

void AddTask(World& world, TaskState task) {
  if (AddTo(world, "Tasks", *world.project->Tasks, world.model.tasks, std::move(task))) world.model.tasksDirty = true;
}

void AddNewTask(World& world) {
  if (world.model.tasks.size() >= MostMembers) return;
  TaskState task;
  task.object = world.project->NewTask();
  task.key = task.object->Key();
  task.createdBy = task.object->CreatedBy();
  AddTask(world, std::move(task));
}

void CloneTask(World& world) {
  auto& tasks = world.model.tasks;
  if (tasks.empty() || tasks.size() >= MostMembers) return;
  auto copy = Recorded(world.dice.Of(tasks));
  copy.object = copy.object->Clone();
  if (world.dice.OneIn(2)) {
    copy.key = "{copy " + std::to_string(world.dice.Next()) + "}";
    copy.object->SetKey(copy.key);
  }
  AddTask(world, std::move(copy));
}

void RemoveTask(World& world) {
  if (RemoveFrom(world, "Tasks", *world.project->Tasks, world.model.tasks)) world.model.tasksDirty = true;
}

void NoteTask(World& world, TaskState& task) {
  if (task.paused) return;
  world.model.tasksDirty = true;
  task.modifiedOn.now = true;
  task.modifiedBy = New<Task>()->CreatedBy();  // whoever runs this
}

void ChangeTask(World& world) {
  auto& tasks = world.model.tasks;
  if (tasks.empty()) return;
  auto& task = world.dice.Of(tasks);
  if (SetOne(world, TaskTexts, task, world.dice.Text())) NoteTask(world, task);
}

void SetTaskTopic(World& world) {
  auto& tasks = world.model.tasks;
  if (tasks.empty()) return;
  auto& task = world.dice.Of(tasks);
  const auto& topics = world.model.topics;
  const auto* topic = topics.empty() || world.dice.OneIn(4) ? nullptr : &world.dice.Of(topics);
  task.object->SetTopic(topic ? topic->object : nullptr);
  if (!topic || task.topicID == topic->key) return;
  task.topicID = topic->key;
  NoteTask(world, task);
}

void PauseTask(World& world) {
  auto& tasks = world.model.tasks;
  if (tasks.empty()) return;
  auto& task = world.dice.Of(tasks);
  task.paused = world.dice.OneIn(3);
  task.object->SetPauseEvents(task.paused);
}

void SetTaskDate(World& world) {
  static constexpr double days[] = {0, 0.5, 38000.25, 38384.5451273148};
  auto& tasks = world.model.tasks;
  if (tasks.empty()) return;
  auto& task = world.dice.Of(tasks);
  const Date date(world.dice.Of(days));
  task.object->SetCreatedOn(date);
  if (task.createdOn.value == date) return;
  task.createdOn = {date};
  NoteTask(world, task);
}

// Other files.

constexpr std::string_view FileNames[] = {
    "p/a.css", "p/images/Übersicht.PNG", "p/images/übersicht.png", "p/x & y.gif", "shared/s.js", "p/b.js"};

void AddFile(World& world) {
  auto& model = world.model;
  const auto path = world.Path(world.dice.Of(FileNames));
  FileState file;
  file.object = world.project->NewOtherFile(path);
  file.path = path;
  file.key = world.dice.OneIn(5) ? "another key" : path;
  const auto choice = Choose(world, model.files);
  const auto place = PlaceBy(world, choice, model.files);
  world.project->OtherFiles->Add(file.object, file.key, place.before, place.after);
  const auto key = file.key;
  if (place.failure == FailureNumber::None && !FindByKey(model.files, key))
    model.files.insert(model.files.begin() + static_cast<std::ptrdiff_t>(place.index), std::move(file));
  if (!model.filesPaused) model.dirty = true;
  std::erase_if(model.deletedFiles, [&](const auto& deleted) { return EqualsIgnoringCase(deleted, key); });
}

void RemoveFile(World& world) {
  auto& model = world.model;
  const auto file = RemoveFrom(world, "OtherFiles", *world.project->OtherFiles, model.files);
  if (!file || model.filesPaused) return;
  model.dirty = true;
  const auto known = [&](const auto& deleted) { return EqualsIgnoringCase(deleted, file->path); };
  if (std::any_of(model.deletedFiles.begin(), model.deletedFiles.end(), known))
    world.Expect("OtherFiles.Remove", FailureNumber::KeyAlreadyExists);
  else
    model.deletedFiles.push_back(file->path);
}

void ChangeFile(World& world) {
  auto& files = world.model.files;
  if (files.empty()) return;
  auto& file = world.dice.Of(files);
  const auto before = std::pair(file.captureInfo, file.include);
  if (world.dice.OneIn(2))
    file.object->SetCaptureInfo(file.captureInfo = world.dice.Text());
  else
    file.object->SetIncludeInOutput(file.include = world.dice.OneIn(2));
  if (before != std::pair(file.captureInfo, file.include)) world.model.dirty = true;
}

// Build profiles.

void AddProfile(World& world) {
  auto& model = world.model;
  if (model.profiles.size() >= MostMembers / 2) return;
  ProfileState profile;
  profile.name = world.dice.Text();
  profile.projectTitle = world.dice.Text();
  profile.compileHelpFile = world.dice.OneIn(2);
  profile.helpVersion = world.dice.OneIn(2) ? 1 : 2;
  profile.object =
      world.project->NewBuildProfile(profile.name, profile.projectTitle, profile.compileHelpFile, profile.helpVersion);
  profile.key = profile.object->ID();
  const ProfileState blank;
  if (profile.name != blank.name || profile.projectTitle != blank.projectTitle || !profile.compileHelpFile ||
      profile.helpVersion != blank.helpVersion)
    model.dirty = true;
  if (AddTo(world, "BuildProfiles", *world.project->BuildProfiles, model.profiles, std::move(profile)))
    model.dirty = true;
}

void AddProfileTwice(World& world) {
  auto& profiles = world.model.profiles;
  if (profiles.empty()) return;
  const auto profile = world.dice.Of(profiles);
  AddTo(world, "BuildProfiles", *world.project->BuildProfiles, profiles, profile);
}

void RemoveProfile(World& world) {
  if (RemoveFrom(world, "BuildProfiles", *world.project->BuildProfiles, world.model.profiles)) world.model.dirty = true;
}

template <void (*Run)(World&, ProfileState&)>
void OnProfile(World& world) {
  if (!world.model.profiles.empty()) Run(world, world.dice.Of(world.model.profiles));
}

void SetProfileText(World& world, ProfileState& profile) {
  if (SetOne(world, ProfileTexts, profile, world.dice.Text())) world.model.dirty = true;
}

void SetProfileFlag(World& world, ProfileState& profile) {
  if (SetOne(world, ProfileFlags, profile, world.dice.OneIn(2))) world.model.dirty = true;
}

void SetProfilePaths(World& world, ProfileState& profile) {
  static constexpr std::string_view files[] = {"", "p/out/a.chm", "help/b.hxs", "p/longer"};
  static constexpr std::string_view folders[] = {"", "p/out/", "help/Größe & mehr/"};
  const auto before = std::pair(profile.helpFileName, profile.outputDirectory);
  profile.object->SetHelpFileName(profile.helpFileName = world.Path(world.dice.Of(files)));
  profile.object->SetOutputDirectory(profile.outputDirectory = world.Path(world.dice.Of(folders)));
  if (before != std::pair(profile.helpFileName, profile.outputDirectory)) world.model.dirty = true;
}

void SetProfileNumbers(World& world, ProfileState& profile) {
  const auto before = std::pair(profile.helpVersion, profile.localeID);
  profile.object->SetHTMLHelpVersion(profile.helpVersion = world.dice.OneIn(2) ? 1 : 2);
  profile.object->SetLocaleID(profile.localeID = world.dice.OneIn(2) ? 0 : 1031);
  if (before != std::pair(profile.helpVersion, profile.localeID)) world.model.dirty = true;
}

void SetProfileTopic(World& world, ProfileState& profile) {
  const auto& topics = world.model.topics;
  const auto* topic = topics.empty() || world.dice.OneIn(4) ? nullptr : &world.dice.Of(topics);
  profile.object->SetDefaultTopic(topic ? topic->object : nullptr);
  const auto key = topic ? topic->key : std::string();
  if (std::exchange(profile.defaultTopic, key) != key) world.model.dirty = true;
}

/// A first value tells nobody; a change does.
bool Override(Values& values, std::string_view name, std::string_view value) {
  for (auto& entry : values)
    if (EqualsIgnoringCase(entry.first, name)) return std::exchange(entry.second, value) != value;
  values.emplace_back(name, value);
  return false;
}

void SetOverride(World& world, ProfileState& profile) {
  const auto name = world.dice.Text();
  const auto value = world.dice.Text();
  const bool ofProperty = world.dice.OneIn(2);
  if (ofProperty)
    profile.object->SetProjectPropertyValue(name, value);
  else
    profile.object->SetVariableValue(name, value);
  if (Override(ofProperty ? profile.propertyOverrides : profile.overrides, name, value)) world.model.dirty = true;
}

void ClearOverrides(World&, ProfileState& profile) {
  profile.object->ClearVariableValues();
  profile.overrides.clear();
}

// Project properties.

void NewProperty(World& world) {
  auto& model = world.model;
  if (model.properties.size() >= MostMembers) return;
  PropertyState property;
  property.name = world.dice.Text();
  property.value = world.dice.Text();
  property.type = static_cast<ProjectPropertyTypeEnum>(world.dice.Below(5));
  property.object = world.project->NewProjectProperty(property.name, property.type, property.value);
  property.key = property.object->ID();
  model.properties.push_back(std::move(property));
  model.dirty = true;
}

void AddPropertyTwice(World& world) {
  auto& properties = world.model.properties;
  if (properties.empty()) return;
  const auto property = world.dice.Of(properties);
  AddTo(world, "ProjectProperties", *world.project->ProjectProperties(), properties, property);
}

void RemoveProperty(World& world) {
  if (RemoveFrom(world, "ProjectProperties", *world.project->ProjectProperties(), world.model.properties, false))
    world.model.dirty = true;
}

void MoveProperty(World& world) {
  auto& model = world.model;
  auto property = RemoveFrom(world, "ProjectProperties", *world.project->ProjectProperties(), model.properties, false);
  if (!property) return;
  model.dirty = true;
  AddTo(world, "ProjectProperties", *world.project->ProjectProperties(), model.properties, std::move(*property));
}

void ChangeProperty(World& world) {
  auto& properties = world.model.properties;
  if (properties.empty()) return;
  auto& property = world.dice.Of(properties);
  if (world.dice.OneIn(4)) {
    const auto type = static_cast<ProjectPropertyTypeEnum>(world.dice.Below(5));
    property.object->SetPropertyType(type);
    if (std::exchange(property.type, type) != type) world.model.dirty = true;
  } else if (SetOne(world, PropertyTexts, property, world.dice.Text())) {
    world.model.dirty = true;
  }
}

// Variables and words: plain lists that tell nobody.

void AddVariable(World& world) {
  const auto name = world.dice.Text();
  const auto value = world.dice.Text();
  auto& variables = world.model.variables;
  const bool known = std::any_of(variables.begin(), variables.end(),
                                 [&](const auto& variable) { return EqualsIgnoringCase(variable.first, name); });
  auto number = FailureNumber::None;
  try {
    world.project->VariableValues->AddKeyed(New<VariableValue>(std::string(name), std::string(value)), name);
  } catch (const Failure& failure) {
    number = failure.Number();
  }
  if ((number == FailureNumber::KeyAlreadyExists) != known) world.Fault("a variable's key was known or not");
  if (!known) variables.emplace_back(name, value);
}

void RemoveVariable(World& world) {
  auto& variables = world.model.variables;
  if (variables.empty()) return;
  const auto at = world.dice.Below(variables.size());
  world.project->VariableValues->Remove(LowerCase(variables[at].first));
  variables.erase(variables.begin() + static_cast<std::ptrdiff_t>(at));
}

void AddWord(World& world) {
  static constexpr std::string_view words[] = {"", "Quill", "quill", "Größe", "GRÖßE", "a|b", "b", "two words", " c "};
  const auto word = world.dice.Of(words);
  world.project->SpellAddIgnoreAllWord(word);
  auto& known = world.model.words;
  if (std::none_of(known.begin(), known.end(), [&](const auto& other) { return EqualsIgnoringCase(other, word); }))
    known.emplace_back(word);
}

void ClearWords(World& world) {
  world.project->SpellIgnoreAllWordList->Clear();
  world.model.words.clear();
}

constexpr Operation Operations[] = {
    {"add a new term", 6, AddNewTerm},
    {"clone a term", 3, CloneTerm},
    {"remove a term", 4, RemoveTerm},
    {"change a term", 6, ChangeTerm},
    {"add a new task", 4, AddNewTask},
    {"clone a task", 2, CloneTask},
    {"remove a task", 3, RemoveTask},
    {"change a task", 6, ChangeTask},
    {"set a task's topic", 2, SetTaskTopic},
    {"set a task's date", 2, SetTaskDate},
    {"pause a task or not", 2, PauseTask},
    {"add a file", 8, AddFile},
    {"remove a file", 5, RemoveFile},
    {"change a file", 4, ChangeFile},
    {"add a profile", 3, AddProfile},
    {"add a profile twice", 1, AddProfileTwice},
    {"remove a profile", 2, RemoveProfile},
    {"set a text of a profile", 3, OnProfile<SetProfileText>},
    {"set a flag of a profile", 2, OnProfile<SetProfileFlag>},
    {"set a profile's paths", 3, OnProfile<SetProfilePaths>},
    {"set a profile's numbers", 2, OnProfile<SetProfileNumbers>},
    {"set a profile's default topic", 2, OnProfile<SetProfileTopic>},
    {"override a value in a profile", 4, OnProfile<SetOverride>},
    {"clear a profile's overrides", 1, OnProfile<ClearOverrides>},
    {"make a property", 4, NewProperty},
    {"add a property twice", 1, AddPropertyTwice},
    {"remove a property", 2, RemoveProperty},
    {"move a property", 3, MoveProperty},
    {"change a property", 5, ChangeProperty},
    {"add a variable", 4, AddVariable},
    {"remove a variable", 2, RemoveVariable},
    {"add a word", 3, AddWord},
    {"clear the words", 1, ClearWords},
};

}  // namespace

std::span<const Operation> ListOperations() {
  return Operations;
}

}  // namespace quillbook::model
