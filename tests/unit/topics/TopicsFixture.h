// What the tests of this folder share: a project, a record of what it tells, and a record of failure reports.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "quillbook/frame/Root.h"
#include "quillbook/frame/services/XMLDocument.h"
#include "quillbook/platform/Platform.h"
#include "quillbook/project/QBProject.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/TopicCategories.h"
#include "quillbook/topics/TopicKeywords.h"
#include "quillbook/topics/TopicLinks.h"
#include "quillbook/topics/TopicSectionDefs.h"
#include "quillbook/topics/TopicSections.h"
#include "quillbook/topics/Topics.h"
#include "support/ProjectTest.h"

namespace quillbook {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class TopicsFixture : public support::ProjectTest {
 protected:
  void SetUp() override {
    Platform::Current().Registry().SetValue(RegistryHive::LocalMachine, "Software\\Corvane\\Quillbook2",
                                            "LiteInstallDir", "\\no\\such\\folder");
    root = New<Root>();
    ProjectTest::SetUp();
    Watch(*project, log);
  }
  void TearDown() override {
    watches.clear();
    root = nullptr;
    ProjectTest::TearDown();
    for (const auto* type : TypeInfo::All()) {
      if (!type->Name().starts_with("Topic")) continue;
      EXPECT_EQ(type->LiveCount(), 0) << type->Name();
    }
  }

  /// A topic of the project with this name, not yet in its list. Nothing of its making is recorded.
  [[nodiscard]] Ref<Topic> NewTopic(std::string_view name) {
    auto topic = project->NewTopic();
    topic->SetPauseEvents(true);
    topic->SetName(name);
    topic->SetPauseEvents(false);
    log.clear();
    return topic;
  }
  /// The same, in the list and with the project's events of adding it forgotten.
  Ref<Topic> AddTopic(std::string_view name) {
    auto topic = NewTopic(name);
    project->Topics->Add(topic, topic->Key);
    log.clear();
    return topic;
  }
  Ref<TopicCategory> AddCategory(std::string_view name) {
    auto category = project->NewTopicCategory();
    category->SetName(name);
    project->TopicCategories->Add(category, category->Key);
    log.clear();
    return category;
  }

  /// A topic of the project, loaded from a record.
  [[nodiscard]] Ref<Topic> Loaded(std::string_view record) {
    auto topic = New<Topic>();
    topic->SetQBProject(project);
    const auto document = Parse(std::string(record));
    topic->Load(document.DocumentElement());
    return topic;
  }
  [[nodiscard]] static XMLDocument SavedDocument(Topic& topic) {
    XMLDocument document;
    document.DocumentElement().SetName("Topic");
    topic.Save(document.DocumentElement());
    return document;
  }
  [[nodiscard]] Ref<Topic> SavedAndLoaded(Topic& topic) { return Loaded(SavedDocument(topic).ToString()); }

  /// Names of an element's children in order.
  [[nodiscard]] static std::vector<std::string> ChildNames(const XMLElement& e) {
    std::vector<std::string> names;
    for (const auto child : e.ChildElements()) names.emplace_back(child.Name());
    return names;
  }
  [[nodiscard]] static XMLElement ChildNamed(const XMLElement& e, std::string_view name) {
    for (const auto child : e.ChildElements())
      if (child.Name() == name) return child;
    return {};
  }
  [[nodiscard]] static std::vector<std::string> Items(const Collection<std::string>& list) {
    return {list.begin(), list.end()};
  }

  /// Records what a project tells of its topics and categories, and of becoming dirty.
  void Watch(QBProject& source, std::vector<std::string>& into) {
    auto& events = source.Events;
    const auto topicEvent = [&](auto& event, std::string name) {
      watches.push_back(
          event.Connect([&into, name](const Ref<Topic>& topic) { into.push_back(name + " " + topic->Name()); }));
    };
    topicEvent(events.TopicAdded, "TopicAdded");
    topicEvent(events.TopicRemoved, "TopicRemoved");
    topicEvent(events.TopicChanged, "TopicChanged");
    topicEvent(events.TopicTopicLinksChanged, "TopicTopicLinksChanged");
    watches.push_back(events.TopicSectionChanged.Connect([&into](const auto& topic, const auto& section) {
      into.push_back("TopicSectionChanged " + topic->Name() + " " + section->Data());
    }));
    watches.push_back(events.TopicTopicLinkChanged.Connect([&into](const auto& topic, const auto& link) {
      into.push_back("TopicTopicLinkChanged " + topic->Name() + " " + link->Title());
    }));
    const auto categoryEvent = [&](auto& event, std::string name) {
      watches.push_back(event.Connect(
          [&into, name](const Ref<TopicCategory>& category) { into.push_back(name + " " + category->Name()); }));
    };
    categoryEvent(events.TopicCategoryAdded, "TopicCategoryAdded");
    categoryEvent(events.TopicCategoryChanged, "TopicCategoryChanged");
    categoryEvent(events.TopicCategoryRemoved, "TopicCategoryRemoved");
    watches.push_back(events.DirtyStateChanged.Connect([&into] { into.push_back("DirtyStateChanged"); }));
  }

  Ref<Root> root;
  std::vector<std::string> log;
  std::vector<Connection> watches;
};

}  // namespace quillbook
