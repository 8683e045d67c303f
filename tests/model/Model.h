// A project in plain containers: what the objects of the library must agree with.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "quillbook/config/BuildProfile.h"
#include "quillbook/config/ProjectProperty.h"
#include "quillbook/structure/GlossaryItem.h"
#include "quillbook/structure/OtherFile.h"
#include "quillbook/structure/QBNode.h"
#include "quillbook/structure/Task.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/TopicCategory.h"
#include "quillbook/topics/TopicKeyword.h"
#include "quillbook/topics/TopicLink.h"

namespace quillbook::model {

/// A date; with `now` it is to be a moment of the step in progress.
struct Moment {
  Date value;
  bool now = false;
};

// Each state holds the object that it is the state of, and `key`, under which that stands in its collection.

struct KeywordState {
  Ref<TopicKeyword> object;
  std::string key;
  std::string text;
};

struct LinkState {
  Ref<TopicLink> object;
  std::string target;
  std::string category;
  std::string title;
  std::string url;
  TopicLinkTypeEnum type = rttTopic;
};

struct TopicState {
  Ref<Topic> object;
  std::string key;
  std::string name;
  std::string title;
  std::string contentsTitle;
  std::string status;
  std::string notes;
  std::string layoutName;
  std::string category;  ///< its key
  std::vector<std::string> styleSheets;
  std::vector<std::string> scripts;
  bool allStyleSheets = true;
  bool allScripts = true;
  bool autoIndex = true;
  bool include = true;
  bool dirty = false;
  bool isNew = true;
  bool paused = false;
  std::optional<std::string> body = "<p> </p>";
  std::vector<KeywordState> keywords;
  std::vector<LinkState> links;
  Moment createdOn{{}, true};
  Moment modifiedOn;
};

struct CategoryState {
  Ref<TopicCategory> object;
  std::string key;
  std::string name;
  bool autoIndex = true;
};

struct NodeState;

/// One level of the contents.
struct NodeList {
  std::vector<NodeState> nodes;
  bool dirty = false;
};

struct NodeState {
  Ref<QBNode> object;
  std::string key;
  QBNodeTypeEnum type = ntStandard;
  QBNodeCaptionTypeEnum captionType = ctSpecific;
  std::string caption;
  std::int32_t icon = -1;
  std::string subContents;
  std::string url;
  std::string topicID;
  NodeList children;
};

struct GlossaryState {
  Ref<GlossaryItem> object;
  std::string key;
  std::string term;
  std::string definition;
};

struct TaskState {
  Ref<Task> object;
  std::string key;
  std::string priority = "Medium";
  std::string title;
  std::string notes;
  std::string assignedTo;
  std::string topicID;
  std::string status = "Not Started";
  std::string createdBy;
  std::string modifiedBy;
  bool paused = false;
  Moment createdOn{{}, true};
  Moment modifiedOn;
};

struct FileState {
  Ref<OtherFile> object;
  std::string key;
  std::string path;
  std::string captureInfo;
  bool include = true;
  bool isNew = true;
};

using Values = std::vector<std::pair<std::string, std::string>>;

struct ProfileState {
  Ref<BuildProfile> object;
  std::string key;
  std::string name;
  std::string projectTitle;
  std::string h2Namespace;
  std::string h2FileID;
  std::string h2PlugIn;
  std::string helpFileName;     ///< as read: absolute
  std::string outputDirectory;  ///< as read, without the project's; empty for none
  std::string defaultTopic;     ///< its key
  bool compileHelpFile = true;
  bool removeOutputFiles = false;
  bool includeInBuild = false;
  std::int16_t helpVersion = 1;
  std::int32_t localeID = 0;
  Values overrides;
  Values propertyOverrides;
};

struct PropertyState {
  Ref<ProjectProperty> object;
  std::string key;
  std::string name;
  std::string value;
  ProjectPropertyTypeEnum type = pptText;
};

struct Model {
  std::string title;
  std::string templateName;
  std::string outputDirectory;  ///< as read: absolute
  std::string mvpFileName;      ///< likewise
  std::string defaultTopic;     ///< its key
  Date spellLastCheck;
  bool autoIndexEntries = true;
  bool autoCategoryIndex = false;
  bool buildMVProject = true;

  bool dirty = false;  ///< of the project itself
  bool topicsDirty = false;
  bool glossaryDirty = false;
  bool tasksDirty = false;
  bool topicsPaused = false;
  bool categoriesPaused = false;
  bool filesPaused = false;
  bool glossaryPaused = false;
  bool tasksPaused = false;
  bool contentsPaused = false;

  std::vector<TopicState> topics;
  std::vector<TopicState> looseTopics;  ///< taken out of the project, but still belonging to it
  std::vector<Ref<Topic>> deletedTopics;
  std::vector<CategoryState> categories;
  NodeList contents;
  std::vector<GlossaryState> glossary;
  std::vector<TaskState> tasks;
  std::vector<FileState> files;
  std::vector<std::string> deletedFiles;
  std::vector<ProfileState> profiles;
  std::vector<PropertyState> properties;
  Values variables;
  std::vector<std::string> words;
};

// Properties that can all be set and compared alike.

template <class T, class State, class Value, class Argument>
struct Field {
  std::string_view name;
  Value (T::*get)() const;
  void (T::*set)(Argument);
  std::remove_cvref_t<Value> State::*value;
};
template <class T, class State>
using Text = Field<T, State, const std::string&, std::string_view>;
template <class T, class State>
using Flag = Field<T, State, bool, bool>;

inline constexpr Text<Topic, TopicState> TopicTexts[] = {
    {"Name", &Topic::Name, &Topic::SetName, &TopicState::name},
    {"Title", &Topic::Title, &Topic::SetTitle, &TopicState::title},
    {"ContentsTitle", &Topic::InternalContentsTitle, &Topic::SetContentsTitle, &TopicState::contentsTitle},
    {"Status", &Topic::Status, &Topic::SetStatus, &TopicState::status},
    {"Notes", &Topic::Notes, &Topic::SetNotes, &TopicState::notes},
    {"LayoutName", &Topic::LayoutName, &Topic::SetLayoutName, &TopicState::layoutName},
};
inline constexpr Flag<Topic, TopicState> TopicFlags[] = {
    {"AutoGenerateIndexEntry", &Topic::AutoGenerateIndexEntry, &Topic::SetAutoGenerateIndexEntry,
     &TopicState::autoIndex},
    {"IncludeInHelpFile", &Topic::IncludeInHelpFile, &Topic::SetIncludeInHelpFile, &TopicState::include},
};
inline constexpr Text<TopicLink, LinkState> LinkTexts[] = {
    {"URL", &TopicLink::URL, &TopicLink::SetURL, &LinkState::url},
    {"Title", &TopicLink::Title, &TopicLink::SetTitle, &LinkState::title},
    {"Category", &TopicLink::Category, &TopicLink::SetCategory, &LinkState::category},
};
inline constexpr Text<GlossaryItem, GlossaryState> GlossaryTexts[] = {
    {"Term", &GlossaryItem::Term, &GlossaryItem::SetTerm, &GlossaryState::term},
    {"Definition", &GlossaryItem::Definition, &GlossaryItem::SetDefinition, &GlossaryState::definition},
};
inline constexpr Text<Task, TaskState> TaskTexts[] = {
    {"Priority", &Task::Priority, &Task::SetPriority, &TaskState::priority},
    {"Title", &Task::Title, &Task::SetTitle, &TaskState::title},
    {"Notes", &Task::Notes, &Task::SetNotes, &TaskState::notes},
    {"AssignedTo", &Task::AssignedTo, &Task::SetAssignedTo, &TaskState::assignedTo},
    {"TopicID", &Task::TopicID, &Task::SetTopicID, &TaskState::topicID},
    {"Status", &Task::Status, &Task::SetStatus, &TaskState::status},
    {"CreatedBy", &Task::CreatedBy, &Task::SetCreatedBy, &TaskState::createdBy},
    {"ModifiedBy", &Task::ModifiedBy, &Task::SetModifiedBy, &TaskState::modifiedBy},
};
inline constexpr Text<BuildProfile, ProfileState> ProfileTexts[] = {
    {"Name", &BuildProfile::Name, &BuildProfile::SetName, &ProfileState::name},
    {"ProjectTitle", &BuildProfile::ProjectTitle, &BuildProfile::SetProjectTitle, &ProfileState::projectTitle},
    {"H2Namespace", &BuildProfile::H2Namespace, &BuildProfile::SetH2Namespace, &ProfileState::h2Namespace},
    {"H2FileID", &BuildProfile::H2FileID, &BuildProfile::SetH2FileID, &ProfileState::h2FileID},
    {"H2PlugIn", &BuildProfile::H2PlugIn, &BuildProfile::SetH2PlugIn, &ProfileState::h2PlugIn},
};
inline constexpr Flag<BuildProfile, ProfileState> ProfileFlags[] = {
    {"CompileHelpFile", &BuildProfile::CompileHelpFile, &BuildProfile::SetCompileHelpFile,
     &ProfileState::compileHelpFile},
    {"RemoveOutputFiles", &BuildProfile::RemoveOutputFiles, &BuildProfile::SetRemoveOutputFiles,
     &ProfileState::removeOutputFiles},
    {"IncludeInBuild", &BuildProfile::IncludeInBuild, &BuildProfile::SetIncludeInBuild, &ProfileState::includeInBuild},
};
inline constexpr Text<ProjectProperty, PropertyState> PropertyTexts[] = {
    {"PropertyName", &ProjectProperty::PropertyName, &ProjectProperty::SetPropertyName, &PropertyState::name},
    {"PropertyValue", &ProjectProperty::PropertyValue, &ProjectProperty::SetPropertyValue, &PropertyState::value},
};

}  // namespace quillbook::model
