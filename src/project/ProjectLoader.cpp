#include "project/ProjectLoader.h"

#include <algorithm>
#include <array>
#include <limits>
#include <unordered_map>
#include <utility>

#include "project/ProjectWriter.h"
#include "quillbook/base/Text.h"
#include "quillbook/config/BuildProfile.h"
#include "quillbook/config/BuildProfiles.h"
#include "quillbook/config/ProjectProperties.h"
#include "quillbook/frame/Procedure.h"
#include "quillbook/frame/modMain.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/structure/GlossaryItem.h"
#include "quillbook/structure/GlossaryItems.h"
#include "quillbook/structure/OtherFile.h"
#include "quillbook/structure/OtherFiles.h"
#include "quillbook/structure/Tasks.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/TopicCategories.h"
#include "quillbook/topics/TopicCategory.h"
#include "quillbook/topics/TopicLink.h"
#include "quillbook/topics/TopicLinks.h"
#include "quillbook/topics/Topics.h"
#include "structure/NodeWalk.h"

namespace quillbook {
namespace {

void Read(const XMLAttributes& attributes, std::string_view name, std::string& target) {
  if (const auto value = attributes.Find(name)) target = *value;
}

void Read(const XMLAttributes& attributes, std::string_view name, bool& target) {
  if (const auto value = attributes.Find(name)) target = *value == "True";
}

/// The library-wide list of the nodes met, for as long as one "Nodes" element is being read.
class LoadedNodesScope {
 public:
  LoadedNodesScope() { modMain::LoadedNodes() = New<Collection<std::string>>(); }
  LoadedNodesScope(const LoadedNodesScope&) = delete;
  LoadedNodesScope& operator=(const LoadedNodesScope&) = delete;
  ~LoadedNodesScope() { modMain::LoadedNodes() = nullptr; }
};

}  // namespace

void ProjectLoader::Run(XMLDocument document) {
  mProject.mLoading = true;
  {
    const auto root = document.DocumentElement();
    ReadAttributes(root.Attributes());
    RenewCollections();
    if (mReload) BeginReload();
    if (IsProjectRoot(root.Name())) ReadSections(root);
  }
  document = XMLDocument();  // old keys are converted by way of a second document
  if (mNumberedKeys && !mReload) ConvertNumberedKeys();
  if (mProject.BuildProfiles->Count() == 0) MakeDefaultProfile();
  if (mReload) EndReload();
  mProject.SetDirty(false);
  mProject.SetTopicsDirty(false);
  mProject.mLoading = false;
}

void ProjectLoader::ReadAttributes(const XMLAttributes& attributes) {
  if (const auto type = attributes.Find("ProjectType"))
    IgnoreFailures([&] { mProject.InvalidLiteProjectType |= LongFromText(*type) != 0; });
  Read(attributes, "MVPFileName", mProject.mMVPFileName);
  if (mProject.mMVPFileName == QBProject::NoMVPFileName) mProject.mMVPFileName.clear();
  Read(attributes, "TemplateName", mProject.mTemplateName);
  if (const auto text = attributes.Find("SpellLastCheckDateTime"))
    if (const auto date = Date::FromLocaleText(*text)) mProject.mSpellLastCheckDateTime = *date;
  if (const auto title = attributes.Find("Title")) mProject.SetTitle(*title);
  Read(attributes, "OutputFileName", mOutputFileName);
  Read(attributes, "Help2Namespace", mHelp2Namespace);
  Read(attributes, "Help2fileid", mHelp2FileID);
  Read(attributes, "OutputDirectory", mProject.mOutputDirectory);
  Read(attributes, "AutoGenerateIndexEntries", mProject.mAutoGenerateIndexEntries);
  Read(attributes, "AutoGenerateCategoryIndex", mProject.mAutoGenerateCategoryIndex);
  Read(attributes, "BuildMVProject", mProject.mBuildMVProject);
  Read(attributes, "DefaultTopic", mProject.mDefaultTopicID);
  Read(attributes, "Lite", mProject.LoadedFromLite);
}

void ProjectLoader::RenewCollections() {
  mProject.MakeCollection(mProject.TopicCategories);
  if (!mReload) {
    mProject.MakeCollection(mProject.QBNodes);
    mProject.MakeCollection(mProject.Topics);
    mProject.MakeCollection(mProject.mGlossaryItems);
  }
  mProject.VariableValues = New<VariableValues>();
  mProject.MakeCollection(mProject.OtherFiles);
  if (!mReload) mProject.MakeCollection(mProject.Tasks);
  mProject.MakeCollection(mProject.mProjectProperties);
  mProject.MakeCollection(mProject.BuildProfiles);
  mProject.ConnectSinks();
}

void ProjectLoader::BeginReload() {
  mProject.SetPauseEvents(true);
  for (const auto& topic : *mProject.Topics) {
    mTopicsBefore.push_back(topic);
    IgnoreFailures([&] { mStillInFile.AddKeyed(false, topic->Key); });
  }
}

void ProjectLoader::ReadSections(const XMLElement& root) {
  mProject.TopicCategories->PauseEvents = true;
  mProject.Topics->PauseEvents = true;
  ReadFirstPass(root);
  mProject.TopicCategories->PauseEvents = false;
  mProject.Topics->PauseEvents = false;
  mProject.OtherFiles->PauseEvents = true;
  ReadSecondPass();
  mProject.OtherFiles->PauseEvents = false;
  if (mProject.mTemplateName.empty()) TakeTemplateFromValues();
}

// First pass: what other records refer to.

void ProjectLoader::ReadFirstPass(const XMLElement& root) {
  const auto elements = root.ChildElements();
  for (auto next = elements.begin(); next != elements.end();) {
    auto e = *next++;
    if (EqualsIgnoringCase(e.Name(), "topic")) {
      ReadTopic(e);
      e.Discard();  // topics are most of a file; what they took serves those that follow
    } else if (EqualsIgnoringCase(e.Name(), "cat")) {
      ReadCategory(e);
    } else {
      mOtherElements.push_back(e);
    }
  }
}

void ProjectLoader::ReadCategory(const XMLElement& e) {
  const auto category = New<TopicCategory>();
  category->SetQBProject(Ref<QBProject>(&mProject));
  category->Load(e);
  mProject.TopicCategories->Add(category, category->Key);
}

void ProjectLoader::ReadTopic(const XMLElement& e) {
  const auto topic = New<Topic>();
  topic->SetQBProject(Ref<QBProject>(&mProject));
  topic->Load(e);
  if (auto* stillInFile = mStillInFile.Find(topic->Key)) *stillInFile = true;
  // A key that is known stays with its first topic; a reload keeps the topic in memory with its unsaved content.
  if (mProject.Topics->Item(topic->Key)) return;
  if (topic->Key.starts_with('T')) mNumberedKeys = true;
  mProject.Topics->Add(topic, topic->Key);
}

// Second pass: everything else.

void ProjectLoader::ReadSecondPass() {
  static constexpr std::array<Section, 9> sections = {{
      {"nodes", &ProjectLoader::ReadNodes},
      {"variablevalue", &ProjectLoader::ReadVariableValue},
      {"file", &ProjectLoader::ReadOtherFile},
      {"spellignoreallwordlist", &ProjectLoader::ReadSpelling},
      {"glossaryitem", &ProjectLoader::ReadGlossaryItem},
      {"glossaryitems", &ProjectLoader::ReadGlossaryItems},
      {"tasks", &ProjectLoader::ReadTasks},
      {"buildprofiles", &ProjectLoader::ReadBuildProfiles},
      {"projectproperties", &ProjectLoader::ReadProjectProperties},
  }};
  for (const auto& e : std::exchange(mOtherElements, {})) {
    const auto section = std::find_if(sections.begin(), sections.end(), [name = e.Name()](const Section& candidate) {
      return EqualsIgnoringCase(name, candidate.name);
    });
    if (section != sections.end()) (this->*section->read)(e);
  }
}

void ProjectLoader::ReadNodes(const XMLElement& e) {
  if (mReload) return;
  Progress("Loading Table of Contents");
  const LoadedNodesScope loadedNodes;
  mProject.QBNodes->Load(e);
}

void ProjectLoader::ReadVariableValue(const XMLElement& e) {
  std::string name;
  Read(e.Attributes(), "Name", name);
  auto value = e.Text();
  if (name == "Template") {
    mProject.SetTemplateName(value);
  } else if (name == "HelpCompilerVersion") {
    constexpr auto limit = static_cast<double>(std::numeric_limits<std::int16_t>::max());
    mCompileType = static_cast<std::int32_t>(std::clamp(LeadingNumber(value), -limit, limit));
  } else if (name == "OutputFileName") {
    mOutputFileName = std::move(value);
  } else if (name == "Help2Namespace") {
    mHelp2Namespace = std::move(value);
  } else if (name == "Help2FileID") {
    mHelp2FileID = std::move(value);
  } else {
    mProject.VariableValues->AddKeyed(New<VariableValue>(name, std::move(value)), name);
  }
}

void ProjectLoader::ReadOtherFile(const XMLElement& e) {
  Progress("Loading Other Files List");
  const auto file = New<OtherFile>();
  file->SetQBProject(Ref<QBProject>(&mProject));
  file->Load(e);
  mProject.OtherFiles->Add(file, file->Filename->FullName());
}

void ProjectLoader::ReadSpelling(const XMLElement& e) {
  Progress("Loading Spelling Settings");
  mProject.SpellIgnoreAllWordList = New<Collection<std::string>>();
  const auto text = e.TextView();
  if (text.empty()) return;
  for (const auto word : Split(text, '|')) {
    auto& words = *mProject.SpellIgnoreAllWordList;
    if (!words.Contains(word)) words.AddKeyed(std::string(word), word);
  }
}

void ProjectLoader::ReadGlossaryItem(const XMLElement& e) {
  Progress("Loading Glossary");
  const auto item = New<GlossaryItem>();
  item->SetQBProject(Ref<QBProject>(&mProject));
  item->Load(e);
  mProject.GlossaryItems()->Add(item, item->Key);
}

void ProjectLoader::ReadGlossaryItems(const XMLElement& e) {
  if (mReload) return;
  Progress("Loading Glossary");
  mProject.GlossaryItems()->Load(e);
}

void ProjectLoader::ReadTasks(const XMLElement& e) {
  if (mReload) return;
  Progress("Loading Tasks");
  mProject.Tasks->Load(e);
}

void ProjectLoader::ReadBuildProfiles(const XMLElement& e) {
  Progress("Loading Build Profiles");
  mProject.BuildProfiles->Load(e);
}

void ProjectLoader::ReadProjectProperties(const XMLElement& e) {
  Progress("Loading Project Properties");
  mProject.mProjectProperties->Load(e);
}

void ProjectLoader::TakeTemplateFromValues() {
  if (const auto* value = mProject.VariableValues->Find("Template")) mProject.SetTemplateName((*value)->Value);
}

// Older files.

void ProjectLoader::ConvertNumberedKeys() {
  RenewKeys();
  RenewTopicKeys();
  // The collections are filed under the old keys, so the project is rebuilt from its own text.
  XMLDocument converted;
  converted.LoadXML(ProjectWriter(mProject).Text());
  ProjectLoader(mProject, false).Run(std::move(converted));
  mProject.mLoading = true;
}

void ProjectLoader::RenewKeys() {
  for (const auto& category : *mProject.TopicCategories) category->Key = modMain::CreateGUID();
  for (const auto& item : *mProject.GlossaryItems()) item->Key = modMain::CreateGUID();
  ForEachNode(*mProject.QBNodes, [](const Ref<QBNode>& node) { node->Key = modMain::CreateGUID(); });
}

void ProjectLoader::RenewTopicKeys() {
  // Nodes find their topic as ever, links by exactly its old key; both before any topic has its new one.
  std::unordered_map<std::string, std::string> newKeys;
  for (const auto& topic : *mProject.Topics) newKeys.emplace(topic->Key, modMain::CreateGUID());

  std::vector<std::pair<Ref<QBNode>, Ref<Topic>>> nodes;
  ForEachNode(*mProject.QBNodes, [&nodes](const Ref<QBNode>& node) {
    if (auto topic = node->Topic()) nodes.emplace_back(node, std::move(topic));
  });
  for (const auto& [node, topic] : nodes) node->SetTopicID(newKeys.at(topic->Key));

  for (const auto& topic : *mProject.Topics) {
    for (const auto& link : *topic->TopicLinks())
      if (const auto target = newKeys.find(link->ChildTopicKey); target != newKeys.end())
        link->ChildTopicKey = target->second;
  }
  for (const auto& topic : *mProject.Topics) topic->Key = newKeys.at(topic->Key);
}

void ProjectLoader::MakeDefaultProfile() {
  const auto profile = New<BuildProfile>();
  profile->SetBuildProfiles(mProject.BuildProfiles);
  profile->SetName("Default");
  profile->SetHelpFileName(mOutputFileName);
  profile->SetIncludeInBuild(true);
  if (mCompileType >= 1) {
    profile->SetHTMLHelpVersion(static_cast<std::int16_t>(mCompileType));
    profile->SetH2Namespace(mHelp2Namespace);
    profile->SetH2FileID(mHelp2FileID);
  }
  mProject.BuildProfiles->Add(profile, profile->ID());
}

// Reload.

void ProjectLoader::EndReload() {
  // Taking the topics out is left to the listeners.
  for (const auto& topic : mTopicsBefore)
    if (const auto* stillInFile = mStillInFile.Find(topic->Key); stillInFile && !*stillInFile)
      mProject.Events.TopicRemoved.Raise(topic);
  mProject.SetPauseEvents(false);
  mProject.mDirty = false;
}

}  // namespace quillbook
