// Base of tests that look at all the events which an operation raises, and at the flags which it leaves.
#pragma once

#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

#include "quillbook/config/BuildProfiles.h"
#include "quillbook/config/ProjectProperties.h"
#include "quillbook/structure/GlossaryItems.h"
#include "quillbook/structure/OtherFiles.h"
#include "quillbook/structure/QBNodes.h"
#include "quillbook/structure/Tasks.h"
#include "quillbook/topics/TopicCategories.h"
#include "quillbook/topics/TopicKeywords.h"
#include "quillbook/topics/TopicLinks.h"
#include "quillbook/topics/TopicSections.h"
#include "quillbook/topics/Topics.h"
#include "support/ProjectTest.h"
#include "unit/project/Traffic.h"

namespace quillbook {

/// A project with one member of each kind, two topics, and a node below a node. Names are single letters.
struct Scene {
  Scene() : project(New<QBProject>()), traffic(project) {
    project->Filename->SetFullName("\\help\\p.qbp");
    category = project->NewTopicCategory();
    category->SetName("c");
    project->TopicCategories->Add(category, category->Key);
    a = AddTopic("a", "A");
    b = AddTopic("b", "B");
    keyword = a->AddKeyword("k");
    link = a->NewTopicLink(rttTopic, "", "l", "", b);
    node = AddNode(project->QBNodes, "n");
    child = AddNode(node->ChildNodes, "m");
    child->SetQBNodeType(ntSingleTopic);
    child->SetTopicID(b->Key);
    item = project->NewGlossaryItem("g", "d");
    project->GlossaryItems()->Add(item, item->Key);
    task = project->NewTask();
    task->SetTitle("t");
    project->Tasks->Add(task, task->Key());
    file = project->NewOtherFile("\\help\\f.png");
    project->OtherFiles->Add(file, file->LocalSpec());
    profile = project->NewBuildProfile("p");
    project->BuildProfiles->Add(profile, profile->ID());
    property = project->NewProjectProperty("q", pptText, "v");
    saved = project->Save();
    NoteMembers();
  }

  Ref<Topic> AddTopic(std::string_view name, std::string_view title) const {
    const auto topic = project->NewTopic();
    topic->SetName(name);
    topic->SetTitle(title);
    project->Topics->Add(topic, topic->Key);
    return topic;
  }
  static Ref<QBNode> NewNode(const Ref<QBNodes>& level, std::string_view key) {
    const auto made = New<QBNode>();
    made->Key = key;
    made->SetQBNodes(level);
    made->ChildNodes->SetQBProject(level->QBProject());
    return made;
  }
  static Ref<QBNode> AddNode(const Ref<QBNodes>& level, std::string_view key) {
    const auto made = NewNode(level, key);
    level->Add(made, key);
    return made;
  }

  /// The operation's events, and behind a bar the flags that it leaves: P(roject), T(opics), N(odes of the top level),
  /// n(odes of the level below), G(lossary), (tas)K(s), t(opic "a").
  std::string Effect(const std::function<void(Scene&)>& operation) {
    project->SetDirty(false);
    node->ChildNodes->SetDirty(false);
    a->SetDirty(false);
    b->SetDirty(false);
    (void)traffic.Take();
    operation(*this);
    return traffic.Take() + " | " + Flags();
  }
  [[nodiscard]] std::string Flags() const {
    std::string flags;
    if (project->ProjectDirty()) flags += 'P';
    if (project->TopicsDirty()) flags += 'T';
    if (project->QBNodes->Dirty()) flags += 'N';
    if (node->ChildNodes->Dirty()) flags += 'n';
    if (project->GlossaryItems()->Dirty()) flags += 'G';
    if (project->Tasks->Dirty()) flags += 'K';
    if (a->Dirty()) flags += 't';
    return flags;
  }

  Ref<QBProject> project;
  Traffic traffic;
  Ref<TopicCategory> category;
  Ref<Topic> a, b;
  Ref<TopicKeyword> keyword;
  Ref<TopicLink> link;
  Ref<QBNode> node, child;
  Ref<GlossaryItem> item;
  Ref<Task> task;
  Ref<OtherFile> file;
  Ref<BuildProfile> profile;
  Ref<ProjectProperty> property;
  std::string saved;  ///< text of the project

 private:
  void NoteMembers() {
    traffic.Note(a->Events.TopicSectionDataChanged, "TopicSectionDataChanged");
    traffic.Note(a->Events.TopicStyleSheetAdded, "TopicStyleSheetAdded");
    traffic.Note(a->Events.TopicStyleSheetRemoved, "TopicStyleSheetRemoved");
    traffic.Note(a->Events.TopicStyleSheetsChanged, "TopicStyleSheetsChanged");
    traffic.Note(a->Events.TopicScriptAdded, "TopicScriptAdded");
    traffic.Note(a->Events.TopicScriptRemoved, "TopicScriptRemoved");
    traffic.Note(a->Events.TopicScriptsChanged, "TopicScriptsChanged");
    traffic.Note(a->Keywords()->Events.TopicKeywordAdded, "TopicKeywordAdded");
    traffic.Note(a->Keywords()->Events.TopicKeywordRemoved, "TopicKeywordRemoved");
    traffic.Note(a->TopicLinks()->Events.ItemAdded, "ItemAdded");
    traffic.Note(a->TopicLinks()->Events.ItemRemoved, "ItemRemoved");
    traffic.Note(project->QBNodes->Events.ItemAdded, "QBNodes.ItemAdded");
    traffic.Note(project->QBNodes->Events.ItemRemoved, "QBNodes.ItemRemoved");
    auto& properties = project->ProjectProperties()->Events;
    traffic.Note(properties.ProjectPropertyAdded, "ProjectPropertyAdded");
    traffic.Note(properties.ProjectPropertyChanged, "ProjectPropertyChanged");
    traffic.Note(properties.ProjectPropertyRemoved, "ProjectPropertyRemoved");
  }
};

class TrafficTest : public support::ProjectTest {
 protected:
  struct Row {
    const char* name;
    std::function<void(Scene&)> operation;
    std::string live;    ///< effect in a live project
    std::string paused;  ///< effect with all collections of the project paused
    std::string fails;   ///< failures that it reports, each time
  };

  /// Does each operation in scenes of its own.
  void Check(const std::vector<Row>& rows) {
    for (const auto& row : rows) {
      EXPECT_EQ(EffectIn(row, [](Scene&) {}), row.live) << row.name;
      EXPECT_EQ(EffectIn(row, [](Scene& s) { s.project->SetPauseEvents(true); }), row.paused) << row.name << ", paused";
    }
  }
  /// The same after another preparation, with one effect for each row in `live`.
  void CheckAfter(const std::function<void(Scene&)>& prepare, const std::vector<Row>& rows) {
    for (const auto& row : rows) EXPECT_EQ(EffectIn(row, prepare), row.live) << row.name;
  }

 private:
  std::string EffectIn(const Row& row, const std::function<void(Scene&)>& prepare) {
    Scene scene;
    prepare(scene);
    auto effect = scene.Effect(row.operation);
    std::string failed;
    for (const auto& each : failures.Take()) failed += (failed.empty() ? "" : " ") + each;
    EXPECT_EQ(failed, row.fails) << row.name;
    return effect;
  }
};

}  // namespace quillbook
