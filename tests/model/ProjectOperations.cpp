// The project's own settings, saving and loading.
#include <algorithm>
#include <charconv>

#include "World.h"
#include "quillbook/config/BuildProfiles.h"
#include "quillbook/config/ProjectProperties.h"
#include "quillbook/structure/GlossaryItems.h"
#include "quillbook/structure/OtherFiles.h"
#include "quillbook/structure/QBNodes.h"
#include "quillbook/structure/Tasks.h"
#include "quillbook/topics/TopicCategories.h"
#include "quillbook/topics/Topics.h"
#include "unit/project/Masked.h"

namespace quillbook::model {

namespace {

// Settings.

void SetTitle(World& world) {
  const auto title = world.dice.Text();
  world.project->SetTitle(title);
  if (std::exchange(world.model.title, title) != title) world.model.dirty = true;
}

void SetTemplateName(World& world) {
  const auto name = world.dice.Text();
  world.project->SetTemplateName(name);
  if (EqualsIgnoringCase(world.model.templateName, name)) return;
  world.model.templateName = name;
  world.model.dirty = true;
}

void SetFlags(World& world) {
  auto& model = world.model;
  const auto flags = [&] { return std::array{model.autoIndexEntries, model.autoCategoryIndex, model.buildMVProject}; };
  const auto before = flags();
  world.project->SetAutoGenerateIndexEntries(model.autoIndexEntries = world.dice.OneIn(2));
  world.project->SetAutoGenerateCategoryIndex(model.autoCategoryIndex = world.dice.OneIn(2));
  world.project->SetBuildMVProject(model.buildMVProject = world.dice.OneIn(2));
  if (flags() != before) model.dirty = true;
}

void SetPaths(World& world) {
  static constexpr std::string_view folders[] = {"", "p/out/", "help/x y/"};
  static constexpr std::string_view files[] = {"", "p/m.mvp", "other/n.mvp"};
  auto& model = world.model;
  const auto before = std::pair(model.outputDirectory, model.mvpFileName);
  world.project->SetOutputDirectory(model.outputDirectory = world.Path(world.dice.Of(folders)));
  model.mvpFileName = world.Path(world.dice.Of(files));
  const bool other = model.mvpFileName.empty() && world.dice.OneIn(2);
  world.project->SetMVPFileName(other ? "\\\\\\" : model.mvpFileName);  // another way to say none
  if (before != std::pair(model.outputDirectory, model.mvpFileName)) model.dirty = true;
}

void SetSpellLastCheck(World& world) {
  static constexpr double days[] = {0, 38000, 38000.5};
  const Date date(world.dice.Of(days));
  world.project->SetSpellLastCheckDateTime(date);
  if (std::exchange(world.model.spellLastCheck, date) != date) world.model.dirty = true;
}

void SetDefaultTopic(World& world) {
  const auto& topics = world.model.topics;
  const auto* topic = topics.empty() || world.dice.OneIn(4) ? nullptr : &world.dice.Of(topics);
  world.project->SetDefaultTopic(topic ? topic->object : nullptr);
  const auto key = topic ? topic->key : std::string();
  if (std::exchange(world.model.defaultTopic, key) != key) world.model.dirty = true;
}

// Flags.

void ClearFlags(Model& model) {
  model.dirty = model.topicsDirty = model.glossaryDirty = model.tasksDirty = model.contents.dirty = false;
}

void SetDirty(World& world) {
  const bool dirty = world.dice.OneIn(4);
  world.project->SetDirty(dirty);
  if (!dirty) ClearFlags(world.model);
  world.model.dirty = dirty;
}

void PauseOne(World& world) {
  const bool paused = world.dice.OneIn(3);
  auto& model = world.model;
  switch (world.dice.Below(6)) {
    case 0: world.project->Topics->PauseEvents = model.topicsPaused = paused; break;
    case 1: world.project->TopicCategories->PauseEvents = model.categoriesPaused = paused; break;
    case 2: world.project->OtherFiles->PauseEvents = model.filesPaused = paused; break;
    case 3: world.project->GlossaryItems()->PauseEvents = model.glossaryPaused = paused; break;
    case 4: world.project->Tasks->PauseEvents = model.tasksPaused = paused; break;
    default: world.project->QBNodes->PauseEvents = model.contentsPaused = paused; break;
  }
}

void SetAllPaused(Model& model, bool paused) {
  model.topicsPaused = model.categoriesPaused = model.filesPaused = paused;
  model.glossaryPaused = model.tasksPaused = model.contentsPaused = paused;
}

void PauseAll(World& world) {
  const bool paused = world.dice.OneIn(3);
  world.project->SetPauseEvents(paused);
  SetAllPaused(world.model, paused);
}

// What a file keeps.

Moment AtMidnight(Moment moment) {
  const auto parts = (moment.now ? Date::Now() : moment.value).ToParts();
  moment.value = *Date::FromParts({parts.year, parts.month, parts.day});
  moment.now = moment.value == Date();  // a date that isn't set is read as the present moment
  return moment;
}

Moment ToTheSecond(Moment moment) {
  moment.value = *Date::FromParts(moment.value.ToParts());
  return moment;
}

std::string Trimmed(std::string text) {
  text.erase(0, text.find_first_not_of(' '));
  text.erase(text.find_last_not_of(' ') + 1);
  return text == "\r\n" ? std::string() : text;
}

void LoseEmptyValues(Values& values) {
  std::erase_if(values, [](const auto& value) { return value.second.empty(); });
}

ProfileState Recorded(ProfileState profile) {
  profile.helpVersion = 2;
  if (profile.h2Namespace.empty()) profile.h2Namespace = "help";
  if (profile.h2FileID.empty()) profile.h2FileID = profile.h2Namespace;
  // Whatever the last four characters are: they need not be an extension.
  auto& file = profile.helpFileName;
  if (!file.empty() && !file.ends_with(".hxs")) file.replace(file.size() - 4, 4, ".hxs");
  LoseEmptyValues(profile.overrides);
  LoseEmptyValues(profile.propertyOverrides);
  return profile;
}

std::vector<std::string> RecordedWords(const std::vector<std::string>& words) {
  std::vector<std::string> result;
  std::string all;
  for (const auto& word : words) all.append("|").append(word);
  if (all.size() <= 1) return result;
  for (const auto word : Split(std::string_view(all).substr(1), '|'))
    if (std::none_of(result.begin(), result.end(), [&](const auto& known) { return EqualsIgnoringCase(known, word); }))
      result.emplace_back(word);
  return result;
}

void KeepFirstOfEachPath(std::vector<FileState>& files) {
  std::vector<FileState> kept;
  for (auto& file : files) {
    file.key = file.path;
    file.isNew = false;
    if (!FindByKey(kept, file.path)) kept.push_back(std::move(file));
  }
  files = std::move(kept);
}

/// Turns the model into what must come out of a file of it.
void Record(Model& model) {
  for (auto& topic : model.topics) topic = Recorded(std::move(topic), model.categories);
  for (auto& task : model.tasks) task = model::Recorded(std::move(task));
  for (auto& profile : model.profiles) profile = Recorded(std::move(profile));
  KeepFirstOfEachPath(model.files);
  std::erase_if(model.variables, [](const auto& variable) { return variable.first.empty(); });
  model.words = RecordedWords(model.words);
  model.looseTopics.clear();
  model.deletedTopics.clear();
  model.deletedFiles.clear();
  SetAllPaused(model, false);
  ClearFlags(model);
}

template <class States, class List>
void BindAll(States& states, const List& list) {
  for (std::size_t i = 0; i < states.size(); ++i) states[i].object = list.Item(i + 1);
}

/// Binds what a reload takes from the file; of the topics those behind the first `kept`.
void BindLists(World& world, std::size_t kept) {
  auto& model = world.model;
  const auto& project = world.project;
  for (auto i = kept; i < model.topics.size(); ++i)
    if (const auto topic = project->Topics->Item(i + 1)) Bind(model.topics[i], topic);
  BindAll(model.categories, *project->TopicCategories);
  BindAll(model.files, *project->OtherFiles);
  BindAll(model.properties, *project->ProjectProperties());
  if (model.profiles.empty() && project->BuildProfiles->Count() == 1) {
    ProfileState profile;
    profile.key = project->BuildProfiles->Item(1)->ID();
    profile.name = "Default";
    profile.includeInBuild = true;
    model.profiles.push_back(profile);
  }
  BindAll(model.profiles, *project->BuildProfiles);
}

void BindTo(World& world, const Ref<QBProject>& project) {
  world.project = project;
  BindLists(world, 0);
  BindAll(world.model.glossary, *project->GlossaryItems());
  BindAll(world.model.tasks, *project->Tasks);
  BindContents(world);
}

std::string Save(World& world) {
  auto text = MaskSaveDateTime(world.project->Save());
  for (auto& topic : world.model.topics) NoteSaved(world, topic);
  for (auto& file : world.model.files) file.isNew = false;
  return text;
}

void SaveTwice(World& world) {
  const auto first = Save(world);
  if (Save(world) != first) world.Fault("a second save differs from the first");
}

void SaveAndLoad(World& world) {
  const auto text = Save(world);
  const auto loaded = world.NewProject();
  loaded->Load(text);
  Record(world.model);
  BindTo(world, loaded);
}

void SaveToDisk(World& world) {
  if (!world.project->SaveToDisk()) return world.Fault("not saved");
  for (auto& topic : world.model.topics) NoteSaved(world, topic);
  for (auto& file : world.model.files) file.isNew = false;
  ClearFlags(world.model);
  world.saved = world.model;
  Record(*world.saved);
}

void LoadFromDisk(World& world) {
  if (!world.saved) return;
  const auto loaded = New<QBProject>();
  loaded->LoadFromFile(world.Path("p/help.qbp"));
  world.model = *world.saved;
  BindTo(world, loaded);
}

/// Topics of the file that the project has lost come back; its other topics stay as they are in memory, as do
/// contents, glossary and tasks.
void Reload(World& world) {
  if (!world.saved) return;
  world.project->Reload();
  auto& now = world.model;
  auto reloaded = *world.saved;
  reloaded.topics = std::move(now.topics);
  const auto kept = reloaded.topics.size();
  for (const auto& topic : world.saved->topics)
    if (!FindByKey(reloaded.topics, topic.key)) reloaded.topics.push_back(topic);
  reloaded.looseTopics = std::move(now.looseTopics);
  reloaded.deletedTopics = std::move(now.deletedTopics);
  reloaded.contents = std::move(now.contents);
  reloaded.contents.dirty = false;
  reloaded.glossary = std::move(now.glossary);
  reloaded.tasks = std::move(now.tasks);
  now = std::move(reloaded);
  BindLists(world, kept);
}

/// What has come out of a file goes into one and comes out again as it is. A default profile, which a load makes where
/// there is none, is as it will be only after the next load.
void SaveLoadedAgain(World& world) {
  SaveAndLoad(world);
  SaveAndLoad(world);
  const auto first = Save(world);
  const auto again = world.NewProject();
  again->Load(first);
  for (auto& topic : world.model.topics) NoteSaved(world, topic);
  if (const auto second = MaskSaveDateTime(again->Save()); second != first)
    world.Fault("a file loaded and saved differs:\n" + first + "\n" + second);
}

constexpr Operation Operations[] = {
    {"set the title", 2, SetTitle},
    {"set the template's name", 2, SetTemplateName},
    {"set the project's flags", 2, SetFlags},
    {"set the project's paths", 2, SetPaths},
    {"set the date of the last spelling check", 1, SetSpellLastCheck},
    {"set the default topic", 3, SetDefaultTopic},
    {"call the project dirty or not", 6, SetDirty},
    {"pause a collection or not", 3, PauseOne},
    {"pause the project or not", 2, PauseAll},
    {"save twice", 2, SaveTwice},
    {"save and load", 3, SaveAndLoad},
    {"save, load, save, load and save", 1, SaveLoadedAgain},
    {"save to disk", 3, SaveToDisk},
    {"load from disk", 1, LoadFromDisk},
    {"reload", 3, Reload},
};

}  // namespace

std::span<const Operation> ProjectOperations() {
  return Operations;
}

bool RecordIsWhole(const TopicState& topic) {
  return topic.allScripts || topic.scripts.empty() || topic.styleSheets.size() <= topic.scripts.size();
}

TopicState Recorded(TopicState topic, std::vector<CategoryState>& categories) {
  if (topic.contentsTitle == topic.title) topic.contentsTitle.clear();
  if (topic.status.empty()) topic.status = "In Progress";
  topic.createdOn = AtMidnight(topic.createdOn);
  topic.modifiedOn = AtMidnight(topic.modifiedOn);
  topic.notes = Trimmed(topic.notes);
  if (!FindByKey(categories, topic.category)) topic.category.clear();
  if (!RecordIsWhole(topic)) {
    topic.notes.clear();
    topic.category.clear();
    topic.keywords.clear();
    topic.links.clear();
    topic.body.reset();
  }
  // As many scripts are written as there are stylesheets.
  if (topic.scripts.size() > topic.styleSheets.size()) topic.scripts.resize(topic.styleSheets.size());
  if (topic.allScripts) topic.scripts.clear();
  if (topic.allStyleSheets) topic.styleSheets.clear();
  topic.isNew = topic.dirty = topic.paused = false;
  return topic;
}

TaskState Recorded(TaskState task) {
  constexpr std::string_view words[] = {"Low", "Medium", "High"};
  for (std::size_t number = 0; number < std::size(words); ++number)
    if (task.priority == words[number]) task.priority = std::to_string(number);
  task.createdOn = ToTheSecond(task.createdOn);
  task.modifiedOn = ToTheSecond(task.modifiedOn);
  task.paused = false;
  return task;
}

void NoteSaved(World& world, TopicState& topic) {
  if (!RecordIsWhole(topic)) return world.Expect("Topic.InternalSave", FailureNumber::SubscriptOutOfRange);
  topic.isNew = topic.dirty = false;
}

}  // namespace quillbook::model
