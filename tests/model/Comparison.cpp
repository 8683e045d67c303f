// Looks whether a project is as its model has it: content, order, links back, flags and look-ups.
#include <algorithm>
#include <sstream>

#include "World.h"
#include "project/ProjectIntegrity.h"
#include "quillbook/config/BuildProfiles.h"
#include "quillbook/config/ProjectProperties.h"
#include "quillbook/frame/modMain.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/structure/GlossaryItems.h"
#include "quillbook/structure/OtherFiles.h"
#include "quillbook/structure/QBNodes.h"
#include "quillbook/structure/Tasks.h"
#include "quillbook/topics/TopicCategories.h"
#include "quillbook/topics/TopicKeywords.h"
#include "quillbook/topics/TopicLinks.h"
#include "quillbook/topics/TopicSections.h"
#include "quillbook/topics/Topics.h"

namespace quillbook::model {

namespace {

/// An object for a message: only whether it is there can be told.
template <class T>
std::string Shown(const Ref<T>& object) {
  return object ? "an object" : "nothing";
}
std::string Shown(Date date) {
  return date.Format("yyyy-mm-dd hh:nn:ss");
}
template <class T>
std::string Shown(const T& value) {
  return testing::PrintToString(value);
}

class Comparison {
 public:
  explicit Comparison(World& world) : mWorld(world), mProject(*world.project), mModel(world.model) {}

  std::string Run() {
    Settings();
    Flags();
    Categories();
    TopicsAndDeleted();
    Contents(mModel.contents, mProject.QBNodes, nullptr);
    Glossary();
    Tasks();
    Files();
    Profiles();
    Properties();
    ValuesAndWords();
    if (mFault.empty()) Lookups();
    if (mFault.empty()) mFault = FindIntegrityFault(mProject);
    return mFault;
  }

 private:
  /// Notes the first difference. `where` names what is compared, from outside in.
  template <class Actual, class Expected, class... Where>
  void Same(const Actual& actual, const Expected& expected, const Where&... where) {
    if (!mFault.empty() || actual == expected) return;
    std::ostringstream text;
    ((text << where << ' '), ...);
    text << "is " << Shown(actual) << ", not " << Shown(expected);
    mFault = text.str();
  }

  template <class... Where>
  void Same(Date actual, Moment& expected, const Where&... where) {
    if (!expected.now) return Same(actual, expected.value, where...);
    Same(mWorld.IsOfThisStep(actual), true, where..., Shown(actual), "as of now");
    expected = {actual, false};
  }

  /// Count and order; false if the members can't be compared one by one.
  template <class List, class State>
  bool SameMembers(const List& list, const std::vector<State>& states, std::string_view name) {
    Same(list.Count(), states.size(), "the count of", name);
    std::size_t position = 0;
    for (const auto& member : list) {
      if (!mFault.empty()) break;
      const auto& state = states[position++];
      Same(member, state.object, name, "at", position);
      Same(list.Item(position), state.object, name, ".Item of position", position);
      if (!KeyOf(state).empty()) Same(list.Item(LowerCase(KeyOf(state))), state.object, name, ".Item of", KeyOf(state));
    }
    Same(list.Item(states.size() + 1) && name != "QBNodes", false, name, "behind the last");
    return mFault.empty();
  }

  template <class Fields, class State>
  void SameFields(const Fields& fields, const State& state, std::string_view name) {
    for (const auto& field : fields) Same(((*state.object).*field.get)(), state.*field.value, name, field.name);
  }

  void Settings() {
    Same(mProject.Title(), mModel.title, "Title");
    Same(mProject.TemplateName(), mModel.templateName, "TemplateName");
    Same(mProject.OutputDirectory(), mModel.outputDirectory, "OutputDirectory");
    Same(mProject.MVPFileName(), mModel.mvpFileName, "MVPFileName");
    Same(mProject.SpellLastCheckDateTime(), mModel.spellLastCheck, "SpellLastCheckDateTime");
    Same(mProject.AutoGenerateIndexEntries(), mModel.autoIndexEntries, "AutoGenerateIndexEntries");
    Same(mProject.AutoGenerateCategoryIndex(), mModel.autoCategoryIndex, "AutoGenerateCategoryIndex");
    Same(mProject.BuildMVProject(), mModel.buildMVProject, "BuildMVProject");
    const auto* topic = FindByKey(mModel.topics, mModel.defaultTopic);
    Same(mProject.DefaultTopic(), topic && topic->include ? topic->object : nullptr, "DefaultTopic");
  }

  void Flags() {
    Same(mProject.ProjectDirty(), mModel.dirty, "ProjectDirty");
    Same(mProject.TopicsDirty(), mModel.topicsDirty, "TopicsDirty");
    Same(mProject.GlossaryItems()->Dirty(), mModel.glossaryDirty, "GlossaryItems.Dirty");
    Same(mProject.Tasks->Dirty(), mModel.tasksDirty, "Tasks.Dirty");
    Same(mProject.Dirty(),
         mModel.dirty || mModel.topicsDirty || mModel.glossaryDirty || mModel.tasksDirty || mModel.contents.dirty,
         "Dirty");
    Same(mProject.PauseEvents(),
         mModel.topicsPaused && mModel.categoriesPaused && mModel.filesPaused && mModel.glossaryPaused &&
             mModel.tasksPaused && mModel.contentsPaused,
         "PauseEvents");
  }

  void Categories() {
    if (!SameMembers(*mProject.TopicCategories, mModel.categories, "TopicCategories")) return;
    for (const auto& category : mModel.categories) {
      Same(category.object->Key, category.key, "TopicCategory.Key");
      Same(category.object->Name(), category.name, "TopicCategory.Name");
      Same(category.object->AutoIndexEntries(), category.autoIndex, "TopicCategory.AutoIndexEntries");
    }
  }

  // Topics.

  void TopicsAndDeleted() {
    if (!SameMembers(*mProject.Topics, mModel.topics, "Topics")) return;
    for (auto& topic : mModel.topics) OneTopic(topic);
    for (auto& topic : mModel.looseTopics) OneTopic(topic);
    const auto& deleted = *mProject.Topics->DeletedTopics();
    Same(std::vector<Ref<Topic>>(deleted.begin(), deleted.end()), mModel.deletedTopics, "DeletedTopics");
  }

  void OneTopic(TopicState& topic) {
    const auto& object = *topic.object;
    SameFields(TopicTexts, topic, "Topic");
    SameFields(TopicFlags, topic, "Topic");
    Same(object.Key, topic.key, "Topic.Key");
    Same(object.QBProject().get(), &mProject, "Topic.QBProject");
    Same(object.ContentsTitle(), topic.contentsTitle.empty() ? topic.title : topic.contentsTitle, "ContentsTitle");
    Same(object.NewTopicFlag, topic.isNew, "NewTopicFlag");
    Same(object.Dirty(), topic.dirty, "Topic.Dirty");
    Same(object.PauseEvents(), topic.paused, "Topic.PauseEvents");
    Same(object.CreatedOn(), topic.createdOn, "CreatedOn");
    Same(object.ModifiedOn(), topic.modifiedOn, "ModifiedOn");
    const auto* category = FindByKey(mModel.categories, topic.category);
    if (!category) topic.category.clear();  // a category that has gone is forgotten by the first look at it
    Same(object.TopicCategory(), category ? category->object : nullptr, "Topic.TopicCategory");
    FilesOf(topic);
    Same(object.TopicSections->Count(), topic.body ? 1u : 0u, "the count of sections");
    Same(object.TopicSectionData("BODYTEXT"), topic.body.value_or(""), "the body");
    KeywordsOf(topic);
    LinksOf(topic);
  }

  void FilesOf(const TopicState& topic) {
    const auto& object = *topic.object;
    Same(object.AllStylesheets(), topic.allStyleSheets, "AllStylesheets");
    Same(object.AllScripts(), topic.allScripts, "AllScripts");
    const auto names = [](const Topic::FileList& list) { return std::vector<std::string>(list.begin(), list.end()); };
    Same(names(*object.StyleSheets()), topic.styleSheets, "StyleSheets");
    Same(names(*object.Scripts()), topic.scripts, "Scripts");
    const auto has = [](const auto& files, std::string_view name) {
      return std::any_of(files.begin(), files.end(), [&](const auto& file) { return EqualsIgnoringCase(file, name); });
    };
    for (const auto name : {"A", "no such file"}) {
      Same(object.IncludeStylesheet(name), topic.allStyleSheets || has(topic.styleSheets, name), "IncludeStylesheet");
      Same(object.IncludeScript(name), topic.allScripts || has(topic.scripts, name), "IncludeScript");
    }
  }

  void KeywordsOf(const TopicState& topic) {
    const auto& keywords = *topic.object->Keywords();
    Same(keywords.Topic(), topic.object, "TopicKeywords.Topic");
    if (!SameMembers(keywords, topic.keywords, "TopicKeywords")) return;
    bool known = false;
    for (const auto& keyword : topic.keywords) {
      Same(keyword.object->Keyword(), keyword.text, "Keyword");
      known |= EqualsIgnoringCase(keyword.text, "A");
    }
    Same(keywords.KeywordExists("a"), known, "KeywordExists");
  }

  void LinksOf(const TopicState& topic) {
    if (!SameMembers(*topic.object->TopicLinks(), topic.links, "TopicLinks")) return;
    for (const auto& link : topic.links) {
      SameFields(LinkTexts, link, "TopicLink");
      Same(link.object->ChildTopicKey, link.target, "ChildTopicKey");
      Same(link.object->TopicLinkType(), link.type, "TopicLinkType");
      Same(link.object->ParentTopic(), topic.object, "ParentTopic");
      const auto* target = FindByKey(mModel.topics, link.target);
      Same(link.object->ChildTopic(), target ? target->object : nullptr, "ChildTopic");
    }
  }

  // Structure.

  void Contents(const NodeList& level, const Ref<QBNodes>& nodes, const Ref<QBNode>& parent) {
    Same(nodes->Dirty(), level.dirty, "QBNodes.Dirty of", parent ? parent->Key : "the top level");
    Same(nodes->QBProject().get(), &mProject, "QBNodes.QBProject");
    if (!SameMembers(*nodes, level.nodes, "QBNodes")) return;
    for (const auto& node : level.nodes) {
      OneNode(node);
      Same(node.object->ParentNode(), parent, "ParentNode");
      Same(node.object->QBNodes(), nodes, "QBNode.QBNodes");
      Contents(node.children, node.object->ChildNodes, node.object);
    }
  }

  void OneNode(const NodeState& node) {
    const auto& object = *node.object;
    Same(object.Key, node.key, "QBNode.Key");
    Same(object.QBNodeType(), node.type, "QBNodeType");
    Same(object.CaptionType(), node.captionType, "CaptionType");
    Same(object.CaptionText(), node.caption, "CaptionText");
    Same(object.Icon(), node.icon, "Icon");
    Same(object.SubContentsFileName(), node.subContents, "SubContentsFileName");
    Same(object.StandardURL(), node.url, "StandardURL");
    Same(object.TopicID(), node.topicID, "QBNode.TopicID");
    const auto* topic = FindByKey(mModel.topics, node.topicID);
    Same(object.Topic(), topic ? topic->object : nullptr, "QBNode.Topic");
  }

  void Glossary() {
    if (!SameMembers(*mProject.GlossaryItems(), mModel.glossary, "GlossaryItems")) return;
    for (const auto& item : mModel.glossary) {
      Same(item.object->Key, item.key, "GlossaryItem.Key");
      SameFields(GlossaryTexts, item, "GlossaryItem");
    }
  }

  void Tasks() {
    if (!SameMembers(*mProject.Tasks, mModel.tasks, "Tasks")) return;
    for (auto& task : mModel.tasks) {
      Same(task.object->Key(), task.key, "Task.Key");
      SameFields(TaskTexts, task, "Task");
      Same(task.object->PauseEvents(), task.paused, "Task.PauseEvents");
      Same(task.object->CreatedOn(), task.createdOn, "Task.CreatedOn");
      Same(task.object->ModifiedOn(), task.modifiedOn, "Task.ModifiedOn");
      const auto* topic = FindByKey(mModel.topics, task.topicID);
      Same(task.object->Topic(), topic ? topic->object : nullptr, "Task.Topic");
    }
  }

  void Files() {
    if (!SameMembers(*mProject.OtherFiles, mModel.files, "OtherFiles")) return;
    for (const auto& file : mModel.files) {
      Same(file.object->LocalSpec(), file.path, "OtherFile.LocalSpec");
      Same(file.object->CaptureInfo(), file.captureInfo, "CaptureInfo");
      Same(file.object->IncludeInOutput(), file.include, "IncludeInOutput");
      Same(file.object->NewFlag(), file.isNew, "NewFlag");
    }
    std::vector<std::string> deleted;
    for (const auto& file : *mProject.OtherFiles->DeletedFiles()) deleted.push_back(file->LocalSpec());
    Same(deleted, mModel.deletedFiles, "DeletedFiles");
  }

  // Configuration.

  static Values Pairs(const VariableValues& list) {
    Values pairs;
    for (const auto& value : list) pairs.emplace_back(value->Name, value->Value);
    return pairs;
  }

  void Profiles() {
    if (!SameMembers(*mProject.BuildProfiles, mModel.profiles, "BuildProfiles")) return;
    for (const auto& profile : mModel.profiles) {
      const auto& object = *profile.object;
      Same(object.ID(), profile.key, "BuildProfile.ID");
      Same(object.BuildProfiles(), mProject.BuildProfiles, "BuildProfile.BuildProfiles");
      SameFields(ProfileTexts, profile, "BuildProfile");
      SameFields(ProfileFlags, profile, "BuildProfile");
      Same(object.HelpFileName(), profile.helpFileName, "HelpFileName");
      Same(object.OutputDirectory(), profile.outputDirectory.empty() ? mModel.outputDirectory : profile.outputDirectory,
           "BuildProfile.OutputDirectory");
      Same(object.HTMLHelpVersion(), profile.helpVersion, "HTMLHelpVersion");
      Same(object.LocaleID(), profile.localeID, "LocaleID");
      Same(object.CodePage(), profile.localeID == 0 ? 65001 : 1252, "CodePage");
      Same(Pairs(*object.VariableValues()), profile.overrides, "BuildProfile.VariableValues");
      Same(Pairs(*object.ProjectPropertyValues()), profile.propertyOverrides, "ProjectPropertyValues");
      Same(object.DefaultTopic(), DefaultTopicOf(profile), "BuildProfile.DefaultTopic");
    }
  }

  [[nodiscard]] Ref<Topic> DefaultTopicOf(const ProfileState& profile) {
    const auto* topic =
        FindByKey(mModel.topics, profile.defaultTopic.empty() ? mModel.defaultTopic : profile.defaultTopic);
    if (topic && topic->include) return topic->object;
    return FirstIncluded(mModel.contents);
  }

  [[nodiscard]] Ref<Topic> FirstIncluded(const NodeList& level) {
    for (const auto& node : level.nodes) {
      const auto* topic = FindByKey(mModel.topics, node.topicID);
      if (topic && topic->include) return topic->object;
      if (auto below = FirstIncluded(node.children)) return below;
    }
    return {};
  }

  void Properties() {
    if (!SameMembers(*mProject.ProjectProperties(), mModel.properties, "ProjectProperties")) return;
    for (const auto& property : mModel.properties) {
      Same(property.object->ID(), property.key, "ProjectProperty.ID");
      SameFields(PropertyTexts, property, "ProjectProperty");
      Same(property.object->PropertyType(), property.type, "PropertyType");
      Same(property.object->ProjectProperties(), mProject.ProjectProperties(), "ProjectProperty.ProjectProperties");
    }
  }

  void ValuesAndWords() {
    Same(Pairs(*mProject.VariableValues), mModel.variables, "VariableValues");
    const auto& words = *mProject.SpellIgnoreAllWordList;
    Same(std::vector<std::string>(words.begin(), words.end()), mModel.words, "SpellIgnoreAllWordList");
  }

  // Look-ups: whatever index answers, a walk over the model must answer the same.

  /// Not every upper-case text equals its origin ignoring case: some letters become two.
  std::string InOtherCase(std::string_view text) {
    auto other = mWorld.dice.OneIn(2) ? LowerCase(text) : UpperCase(text);
    return EqualsIgnoringCase(other, text) ? other : std::string(text);
  }

  template <class State, class TextOf>
  static auto First(const std::vector<State>& states, std::string_view text, TextOf textOf) {
    for (const auto& state : states)
      if (EqualsIgnoringCase(textOf(state), text)) return state.object;
    return decltype(State::object)();
  }

  void Lookups() {
    for (const auto text : Texts) {
      const auto other = InOtherCase(text);
      Same(mProject.TopicByName(other), First(mModel.topics, text, [](auto& topic) { return topic.name; }),
           "TopicByName of", text);
      Same(mProject.GlossaryItems()->ItemByTerm(other),
           First(mModel.glossary, text, [](auto& item) { return item.term; }), "ItemByTerm of", text);
      Same(mProject.TopicCategories->TopicCategoryByName(other),
           First(mModel.categories, text, [](auto& category) { return category.name; }), "TopicCategoryByName of",
           text);
      if (!text.starts_with('{'))
        Same(mProject.ProjectProperties()->Item(other),
             First(mModel.properties, text, [](auto& property) { return property.name; }), "ProjectProperties of",
             text);
      const auto qualified = modMain::SafeFileName(text);
      Same(mProject.TopicByQualifiedName(qualified),
           First(mModel.topics, qualified, [](auto& topic) { return modMain::SafeFileName(topic.name); }),
           "TopicByQualifiedName of", qualified);
    }
    TopicLookups();
    FileLookups();
    ContentsLookups();
  }

  void TopicLookups() {
    std::int32_t position = 0;
    for (const auto& topic : mModel.topics)
      Same(mProject.Topics->GetTopicIndex(topic.object), ++position, "GetTopicIndex");
    for (const auto& topic : mModel.looseTopics)
      Same(mProject.Topics->GetTopicIndex(topic.object), 0, "GetTopicIndex of a topic that has left");
    position = 0;
    for (const auto& category : mModel.categories) {
      Same(mProject.TopicCategories->GetTopicCategoryIndex(category.object), ++position, "GetTopicCategoryIndex");
      std::vector<Ref<Topic>> topics;
      for (const auto& topic : mModel.topics)
        if (FindByKey(mModel.categories, topic.category) == &category) topics.push_back(topic.object);
      const auto found = category.object->Topics();
      Same(std::vector<Ref<Topic>>(found->begin(), found->end()), topics, "TopicCategory.Topics");
    }
    const auto sorted = mProject.SortedTopics();
    Same(sorted->Count(), mModel.topics.size(), "the count of SortedTopics");
    Same(std::is_sorted(sorted->begin(), sorted->end(),
                        [](const auto& a, const auto& b) { return CompareIgnoringCase(a->Name(), b->Name()) < 0; }),
         true, "SortedTopics' order");
  }

  void FileLookups() {
    for (const auto& file : mModel.files) {
      const auto relative = InOtherCase(file.object->RelativeFileName());
      const auto ofPath = First(mModel.files, file.path, [](auto& other) { return other.path; });
      Same(mProject.OtherFiles->ItemByRelativeFileName(relative), ofPath, "ItemByRelativeFileName of", relative);
      Same(mProject.OtherFiles->Exists(InOtherCase(file.path)), true, "Exists of", file.path);
      const auto* keyed = FindByKey(mModel.files, file.path);
      Same(mProject.OtherFiles->Item(LowerCase(file.path)), keyed ? keyed->object : ofPath, "Item of", file.path);
    }
    Same(mProject.OtherFiles->ItemByRelativeFileName("nowhere.css"), Ref<OtherFile>(), "an unknown relative name");
    Same(mProject.OtherFiles->Exists("\\nowhere.css"), false, "an unknown file");
  }

  void CollectNodes(const NodeList& level, const std::string* topic, std::vector<Ref<QBNode>>& nodes) {
    for (const auto& node : level.nodes) {
      if (!topic || node.topicID == *topic) nodes.push_back(node.object);
      CollectNodes(node.children, topic, nodes);
    }
  }

  void ContentsLookups() {
    const auto members = [](const QBNodes& nodes) { return std::vector<Ref<QBNode>>(nodes.begin(), nodes.end()); };
    std::vector<Ref<QBNode>> all;
    CollectNodes(mModel.contents, nullptr, all);
    Same(members(*mProject.QBNodes->AllNodes()), all, "AllNodes");
    for (const auto& node : all) Same(mProject.QBNodes->Item(LowerCase(node->Key)), node, "QBNodes.Item of", node->Key);
    // The first question may be answered by a walk and the others by an index, so there are several.
    for (std::size_t i = 0; i < std::min<std::size_t>(3, mModel.topics.size()); ++i) {
      const auto& topic = mWorld.dice.Of(mModel.topics);
      std::vector<Ref<QBNode>> nodes;
      CollectNodes(mModel.contents, &topic.key, nodes);
      Same(members(*mProject.QBNodes->NodesForTopic(topic.object)), nodes, "NodesForTopic");
    }
  }

  World& mWorld;
  QBProject& mProject;
  Model& mModel;
  std::string mFault;
};

}  // namespace

std::string FindDifference(World& world) {
  return Comparison(world).Run();
}

}  // namespace quillbook::model
