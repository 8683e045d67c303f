// Topics, and what hangs from them.
#include <algorithm>

#include "World.h"
#include "quillbook/topics/TopicCategories.h"
#include "quillbook/topics/TopicKeywords.h"
#include "quillbook/topics/TopicLinks.h"
#include "quillbook/topics/Topics.h"

namespace quillbook::model {

namespace {

/// A topic takes a change upon itself; `told` tells the project of it.
void Touch(World& world, TopicState& topic, bool told = true) {
  if (topic.paused) return;
  topic.dirty = true;
  topic.modifiedOn.now = true;
  if (told) world.model.topicsDirty = true;
}

/// One of the project's topics or of those that have left it; null where there is none.
TopicState* AnyTopic(World& world) {
  auto& topics = world.dice.OneIn(8) ? world.model.looseTopics : world.model.topics;
  if (topics.empty()) return nullptr;
  auto& topic = world.dice.Of(topics);
  world.Say("topic", topic.name);
  return &topic;
}

template <void (*Run)(World&, TopicState&)>
void OnTopic(World& world) {
  if (auto* topic = AnyTopic(world)) Run(world, *topic);
}

bool HasFile(const std::vector<std::string>& files, std::string_view name) {
  return std::any_of(files.begin(), files.end(), [&](const auto& file) { return EqualsIgnoringCase(file, name); });
}

void DropFile(std::vector<std::string>& files, std::string_view name) {
  std::erase_if(files, [&](const auto& file) { return EqualsIgnoringCase(file, name); });
}

// In and out of the project.

void NoteAdded(World& world) {
  if (world.model.topicsPaused) return;
  world.model.topicsDirty = true;
  world.model.dirty = true;
}

void Remove(World& world) {
  auto& model = world.model;
  auto topic = RemoveFrom(world, "Topics", *world.project->Topics, model.topics);
  if (!topic) return;
  model.deletedTopics.push_back(topic->object);
  if (!model.topicsPaused) {
    MakeNodesPlain(world, *topic);
    NoteAdded(world);
  }
  model.looseTopics.push_back(std::move(*topic));
  if (model.looseTopics.size() > 3) model.looseTopics.erase(model.looseTopics.begin());
}

void Add(World& world, TopicState topic) {
  if (AddTo(world, "Topics", *world.project->Topics, world.model.topics, std::move(topic))) NoteAdded(world);
}

void AddNew(World& world) {
  if (world.model.topics.size() >= MostMembers) return Remove(world);
  TopicState topic;
  Bind(topic, world.project->NewTopic());
  topic.status = topic.object->Status();
  Add(world, std::move(topic));
}

void AddAgain(World& world) {
  auto& loose = world.model.looseTopics;
  if (loose.empty()) return;
  auto topic = loose.back();
  loose.pop_back();
  Add(world, std::move(topic));
}

void AddTwice(World& world) {
  if (!world.model.topics.empty()) Add(world, world.dice.Of(world.model.topics));
}

void Clone(World& world, TopicState& source) {
  auto copy = Recorded(source, world.model.categories);
  Bind(copy, source.object->Clone());
  copy.isNew = copy.dirty = copy.paused = false;
  NoteSaved(world, source);
  if (world.dice.OneIn(3))
    world.Say("under the same key");
  else
    copy.object->Key = copy.key = copy.key.substr(0, 30) + std::to_string(10000000 + world.dice.Below(90000000));
  // A clone of a topic that has left may take its place.
  Add(world, std::move(copy));
}

// Properties.

void SetText(World& world, TopicState& topic) {
  if (SetOne(world, TopicTexts, topic, world.dice.Text())) Touch(world, topic);
}

void SetFlag(World& world, TopicState& topic) {
  if (SetOne(world, TopicFlags, topic, world.dice.OneIn(2))) Touch(world, topic);
}

void SetDirty(World& world, TopicState& topic) {
  const bool dirty = world.dice.OneIn(2);
  topic.object->SetDirty(dirty);
  topic.dirty = dirty;
  if (dirty) world.model.dirty = true;
}

void SetPauseEvents(World& world, TopicState& topic) {
  topic.paused = world.dice.OneIn(3);
  topic.object->SetPauseEvents(topic.paused);
}

void SetDates(World& world, TopicState& topic) {
  static constexpr double days[] = {0, 0.5, 1.25, 38000, 38000.75};
  topic.createdOn = {Date(world.dice.Of(days))};
  topic.modifiedOn = {Date(world.dice.Of(days))};
  topic.object->SetCreatedOn(topic.createdOn.value);
  topic.object->SetModifiedOn(topic.modifiedOn.value);
}

void SetCategory(World& world, TopicState& topic) {
  auto& categories = world.model.categories;
  const auto* category = categories.empty() || world.dice.OneIn(4) ? nullptr : &world.dice.Of(categories);
  topic.object->SetTopicCategory(category ? category->object : nullptr);
  const auto key = category ? category->key : std::string();
  if (topic.category != key) Touch(world, topic);
  topic.category = key;
}

void SetBody(World& world, TopicState& topic) {
  const auto text = world.dice.Text();
  world.Say("to", text);
  topic.object->SetTopicSectionData(world.dice.OneIn(2) ? "BodyText" : "bodytext", text);
  if (topic.body && *topic.body == text) return;
  topic.body = text;
  if (!topic.paused) world.model.dirty = true;
  Touch(world, topic, false);
}

void SetUnknownSection(World& world, TopicState& topic) {
  topic.object->SetTopicSectionData("Summary", "x");
  world.Expect("TopicSection.TopicSectionDef", FailureNumber::ObjectNotSet);
  world.Expect("Topic.NewTopicSection", FailureNumber::ObjectNotSet);
  if (!topic.paused) world.model.dirty = true;
  Touch(world, topic, false);
}

// Stylesheets and scripts.

void AddStyleSheet(World& world, TopicState& topic) {
  const auto name = world.dice.Text();
  topic.object->AddStyleSheet(name);
  if (!name.empty() && HasFile(topic.styleSheets, name))
    return world.Expect("Topic.AddStyleSheet", FailureNumber::KeyAlreadyExists);
  topic.styleSheets.emplace_back(name);
  Touch(world, topic);
}

void RemoveStyleSheet(World& world, TopicState& topic) {
  const auto name = world.dice.Text();
  topic.object->RemoveStyleSheet(name);
  if (!name.empty()) DropFile(topic.styleSheets, name);
  Touch(world, topic);
}

void AddScript(World& world, TopicState& topic) {
  const auto name = world.dice.Text();
  if (name.empty()) return;
  topic.object->AddScript(name);
  if (HasFile(topic.scripts, name)) return;
  topic.scripts.emplace_back(name);
  topic.allScripts = false;
  Touch(world, topic);
}

void RemoveScript(World& world, TopicState& topic) {
  const auto name = world.dice.Text();
  topic.object->RemoveScript(name);
  if (name.empty() || !HasFile(topic.scripts, name)) return;
  DropFile(topic.scripts, name);
  Touch(world, topic);
}

void SetAllFiles(World& world, TopicState& topic) {
  const bool all = world.dice.OneIn(2);
  const bool scripts = world.dice.OneIn(2);
  auto& flag = scripts ? topic.allScripts : topic.allStyleSheets;
  if (scripts)
    topic.object->SetAllScripts(all);
  else
    topic.object->SetAllStylesheets(all);
  if (flag == all) return;
  flag = all;
  if (all) (scripts ? topic.scripts : topic.styleSheets).clear();
  Touch(world, topic);
}

// Keywords.

void AddKeyword(World& world, TopicState& topic) {
  const auto text = world.dice.Text();
  if (topic.keywords.size() >= MostMembers) return;
  const auto keyword = New<TopicKeyword>();
  keyword->SetKeyword(text);
  const KeywordState state{keyword, keyword->ID(), std::string(text)};
  if (AddTo(world, "TopicKeywords", *topic.object->Keywords(), topic.keywords, state)) Touch(world, topic);
}

void AppendKeyword(World& world, TopicState& topic) {
  const auto text = world.dice.Text();
  if (topic.keywords.size() >= MostMembers) return;
  const auto keyword = topic.object->AddKeyword(text);
  topic.keywords.push_back({keyword, keyword->ID(), std::string(text)});
  Touch(world, topic);
}

void RemoveKeyword(World& world, TopicState& topic) {
  RemoveFrom(world, "TopicKeywords", *topic.object->Keywords(), topic.keywords, false);
}

void ChangeKeyword(World& world, TopicState& topic) {
  if (topic.keywords.empty()) return;
  auto& keyword = world.dice.Of(topic.keywords);
  keyword.text = world.dice.Text();
  keyword.object->SetKeyword(keyword.text);
}

void ClearKeywords(World&, TopicState& topic) {
  topic.object->Keywords()->Clear();
  topic.keywords.clear();
}

// Related links.

void NoteLinks(World& world, TopicState& topic) {
  if (topic.paused) return;
  world.model.topicsDirty = true;
  Touch(world, topic);
}

void NewLink(World& world, TopicState& topic) {
  if (topic.links.size() >= MostMembers) return;
  LinkState link{{}, {}, std::string(world.dice.Text()), std::string(world.dice.Text()), {}, rttTopic};
  if (world.dice.OneIn(3)) link.type = rttURL;
  if (link.type == rttURL) link.url = world.dice.Text();
  const auto& topics = world.model.topics;
  const auto* target = topics.empty() || world.dice.OneIn(4) ? nullptr : &world.dice.Of(topics);
  if (target && link.type == rttTopic) link.target = target->key;
  link.object =
      topic.object->NewTopicLink(link.type, link.category, link.title, link.url, target ? target->object : nullptr);
  topic.links.push_back(std::move(link));
  topic.paused = false;
  NoteLinks(world, topic);
}

void RemoveLink(World& world, TopicState& topic) {
  if (RemoveFrom(world, "TopicLinks", *topic.object->TopicLinks(), topic.links)) NoteLinks(world, topic);
}

void MoveLink(World& world, TopicState& topic) {
  auto link = RemoveFrom(world, "TopicLinks", *topic.object->TopicLinks(), topic.links);
  if (!link) return;
  NoteLinks(world, topic);
  if (AddTo(world, "TopicLinks", *topic.object->TopicLinks(), topic.links, std::move(*link))) NoteLinks(world, topic);
}

void ChangeLink(World& world, TopicState& topic) {
  if (topic.links.empty()) return;
  auto& link = world.dice.Of(topic.links);
  if (world.dice.OneIn(5)) {
    const auto type = world.dice.OneIn(2) ? rttTopic : rttURL;
    link.object->SetTopicLinkType(type);
    if (std::exchange(link.type, type) == type) return;
  } else if (!SetOne(world, LinkTexts, link, world.dice.Text())) {
    return;
  }
  if (!topic.paused) world.model.dirty = true;
  Touch(world, topic);
}

// Categories.

void AddCategory(World& world) {
  auto& model = world.model;
  if (model.categories.size() >= MostMembers) return;
  CategoryState category;
  category.object = world.project->NewTopicCategory();
  category.key = category.object->Key;
  category.name = world.dice.Text();
  category.object->SetName(category.name);
  if (!category.name.empty()) model.dirty = true;
  if (AddTo(world, "TopicCategories", *world.project->TopicCategories, model.categories, category) &&
      !model.categoriesPaused)
    model.dirty = true;
}

void AddCategoryTwice(World& world) {
  auto& categories = world.model.categories;
  if (categories.empty()) return;
  const auto category = world.dice.Of(categories);
  AddTo(world, "TopicCategories", *world.project->TopicCategories, categories, category);
}

void RemoveCategory(World& world) {
  auto& model = world.model;
  if (RemoveFrom(world, "TopicCategories", *world.project->TopicCategories, model.categories) &&
      !model.categoriesPaused)
    model.dirty = true;
}

void ChangeCategory(World& world) {
  auto& categories = world.model.categories;
  if (categories.empty()) return;
  auto& category = world.dice.Of(categories);
  const auto before = std::pair(category.name, category.autoIndex);
  if (world.dice.OneIn(3))
    category.object->SetAutoIndexEntries(category.autoIndex = world.dice.OneIn(2));
  else
    category.object->SetName(category.name = world.dice.Text());
  if (before != std::pair(category.name, category.autoIndex)) world.model.dirty = true;
}

constexpr Operation Operations[] = {
    {"add a new topic", 12, AddNew},
    {"add a topic that has left", 4, AddAgain},
    {"add a topic twice", 2, AddTwice},
    {"remove a topic", 6, Remove},
    {"clone a topic", 6, OnTopic<Clone>},
    {"set a text of a topic", 20, OnTopic<SetText>},
    {"set a flag of a topic", 6, OnTopic<SetFlag>},
    {"call a topic dirty or not", 3, OnTopic<SetDirty>},
    {"pause a topic or not", 4, OnTopic<SetPauseEvents>},
    {"set a topic's dates", 2, OnTopic<SetDates>},
    {"set a topic's category", 8, OnTopic<SetCategory>},
    {"set a topic's body", 6, OnTopic<SetBody>},
    {"set a section of no known kind", 1, OnTopic<SetUnknownSection>},
    {"add a stylesheet", 5, OnTopic<AddStyleSheet>},
    {"remove a stylesheet", 2, OnTopic<RemoveStyleSheet>},
    {"add a script", 4, OnTopic<AddScript>},
    {"remove a script", 3, OnTopic<RemoveScript>},
    {"use all stylesheets or scripts or not", 6, OnTopic<SetAllFiles>},
    {"insert a keyword", 6, OnTopic<AddKeyword>},
    {"append a keyword", 6, OnTopic<AppendKeyword>},
    {"remove a keyword", 4, OnTopic<RemoveKeyword>},
    {"change a keyword", 3, OnTopic<ChangeKeyword>},
    {"clear a topic's keywords", 1, OnTopic<ClearKeywords>},
    {"make a related link", 8, OnTopic<NewLink>},
    {"remove a related link", 3, OnTopic<RemoveLink>},
    {"move a related link", 3, OnTopic<MoveLink>},
    {"change a related link", 5, OnTopic<ChangeLink>},
    {"add a category", 6, AddCategory},
    {"add a category twice", 1, AddCategoryTwice},
    {"remove a category", 4, RemoveCategory},
    {"change a category", 4, ChangeCategory},
};

}  // namespace

std::span<const Operation> TopicOperations() {
  return Operations;
}

void Bind(TopicState& state, const Ref<Topic>& topic) {
  state.object = topic;
  state.key = topic->Key;
  for (std::size_t i = 0; i < state.keywords.size(); ++i) {
    state.keywords[i].object = topic->Keywords()->Item(i + 1);
    if (state.keywords[i].object) state.keywords[i].key = state.keywords[i].object->ID();
  }
  for (std::size_t i = 0; i < state.links.size(); ++i) state.links[i].object = topic->TopicLinks()->Item(i + 1);
}

}  // namespace quillbook::model
