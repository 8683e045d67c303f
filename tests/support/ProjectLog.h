// All events of a project, in the order in which they come.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "quillbook/project/QBProject.h"

namespace quillbook::support {

/// Calls `visit` with each event of a project and its name, in the order of the interface.
template <class Visit>
void ForEachEvent(QBProjectEvents& events, Visit visit) {
  visit(events.Changed, "Changed");
  visit(events.BuildProfilesChanged, "BuildProfilesChanged");
  visit(events.BuildProfileChanged, "BuildProfileChanged");
  visit(events.MVProjectChanged, "MVProjectChanged");
  visit(events.TopicAdded, "TopicAdded");
  visit(events.TopicRemoved, "TopicRemoved");
  visit(events.TopicChanged, "TopicChanged");
  visit(events.TopicSectionChanged, "TopicSectionChanged");
  visit(events.TopicReOrdered, "TopicReOrdered");
  visit(events.TopicTopicLinkChanged, "TopicTopicLinkChanged");
  visit(events.TopicTopicLinksChanged, "TopicTopicLinksChanged");
  visit(events.QBNodeChanged, "QBNodeChanged");
  visit(events.QBNodeRemoved, "QBNodeRemoved");
  visit(events.TopicCategoryAdded, "TopicCategoryAdded");
  visit(events.TopicCategoryChanged, "TopicCategoryChanged");
  visit(events.TopicCategoryRemoved, "TopicCategoryRemoved");
  visit(events.TopicCategoryReOrdered, "TopicCategoryReOrdered");
  visit(events.OtherFileAdded, "OtherFileAdded");
  visit(events.OtherFileRemoved, "OtherFileRemoved");
  visit(events.OtherFileChanged, "OtherFileChanged");
  visit(events.CheckoutStatusChanged, "CheckoutStatusChanged");
  visit(events.TopicCheckoutStatusChanged, "TopicCheckoutStatusChanged");
  visit(events.OtherFileCheckoutStatusChanged, "OtherFileCheckoutStatusChanged");
  visit(events.ProjectElementCheckOutStatusChanged, "ProjectElementCheckOutStatusChanged");
  visit(events.BuildProgress, "BuildProgress");
  visit(events.TopicTemplateChanged, "TopicTemplateChanged");
  visit(events.GlossaryItemAdded, "GlossaryItemAdded");
  visit(events.GlossaryItemRemoved, "GlossaryItemRemoved");
  visit(events.GlossaryItemChanged, "GlossaryItemChanged");
  visit(events.TaskAdded, "TaskAdded");
  visit(events.TaskChanged, "TaskChanged");
  visit(events.TaskRemoved, "TaskRemoved");
  visit(events.BuildProfileAdded, "BuildProfileAdded");
  visit(events.BuildProfileRemoved, "BuildProfileRemoved");
  visit(events.LinkCheckStartTopic, "LinkCheckStartTopic");
  visit(events.DirtyStateChanged, "Dirty");
  visit(events.BuildErrorsOrWarnings, "BuildErrorsOrWarnings");
  visit(events.BuildMessage, "BuildMessage");
  visit(events.LoadProgress, "LoadProgress");
  visit(events.MessageBox, "MessageBox");
}

/// Writes down the names of the events for as long as it lives. "Dirty" stands for `DirtyStateChanged`.
class ProjectLog {
 public:
  explicit ProjectLog(const Ref<QBProject>& project) {
    ForEachEvent(project->Events, [this](auto& event, const char* name) { Note(event, name); });
  }

  /// The events since the last call, with a blank between.
  std::string Take() { return std::exchange(mText, {}); }

 private:
  template <class... Args>
  void Note(Event<Args...>& event, const char* name) {
    mConnections.push_back(
        event.Connect([this, name](Args...) { mText.append(mText.empty() ? "" : " ").append(name); }));
  }

  std::string mText;
  std::vector<Connection> mConnections;
};

}  // namespace quillbook::support
