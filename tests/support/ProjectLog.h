// All events of a project, in the order in which they come.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "quillbook/project/QBProject.h"

namespace quillbook::support {

/// Writes down the names of the events for as long as it lives. "Dirty" stands for `DirtyStateChanged`.
class ProjectLog {
 public:
  explicit ProjectLog(const Ref<QBProject>& project) {
    auto& events = project->Events;
    Note(events.Changed, "Changed");
    Note(events.BuildProfilesChanged, "BuildProfilesChanged");
    Note(events.BuildProfileChanged, "BuildProfileChanged");
    Note(events.MVProjectChanged, "MVProjectChanged");
    Note(events.TopicAdded, "TopicAdded");
    Note(events.TopicRemoved, "TopicRemoved");
    Note(events.TopicChanged, "TopicChanged");
    Note(events.TopicSectionChanged, "TopicSectionChanged");
    Note(events.TopicReOrdered, "TopicReOrdered");
    Note(events.TopicTopicLinkChanged, "TopicTopicLinkChanged");
    Note(events.TopicTopicLinksChanged, "TopicTopicLinksChanged");
    Note(events.QBNodeChanged, "QBNodeChanged");
    Note(events.QBNodeRemoved, "QBNodeRemoved");
    Note(events.TopicCategoryAdded, "TopicCategoryAdded");
    Note(events.TopicCategoryChanged, "TopicCategoryChanged");
    Note(events.TopicCategoryRemoved, "TopicCategoryRemoved");
    Note(events.TopicCategoryReOrdered, "TopicCategoryReOrdered");
    Note(events.OtherFileAdded, "OtherFileAdded");
    Note(events.OtherFileRemoved, "OtherFileRemoved");
    Note(events.OtherFileChanged, "OtherFileChanged");
    Note(events.CheckoutStatusChanged, "CheckoutStatusChanged");
    Note(events.TopicCheckoutStatusChanged, "TopicCheckoutStatusChanged");
    Note(events.OtherFileCheckoutStatusChanged, "OtherFileCheckoutStatusChanged");
    Note(events.ProjectElementCheckOutStatusChanged, "ProjectElementCheckOutStatusChanged");
    Note(events.BuildProgress, "BuildProgress");
    Note(events.TopicTemplateChanged, "TopicTemplateChanged");
    Note(events.GlossaryItemAdded, "GlossaryItemAdded");
    Note(events.GlossaryItemRemoved, "GlossaryItemRemoved");
    Note(events.GlossaryItemChanged, "GlossaryItemChanged");
    Note(events.TaskAdded, "TaskAdded");
    Note(events.TaskChanged, "TaskChanged");
    Note(events.TaskRemoved, "TaskRemoved");
    Note(events.BuildProfileAdded, "BuildProfileAdded");
    Note(events.BuildProfileRemoved, "BuildProfileRemoved");
    Note(events.LinkCheckStartTopic, "LinkCheckStartTopic");
    Note(events.DirtyStateChanged, "Dirty");
    Note(events.BuildErrorsOrWarnings, "BuildErrorsOrWarnings");
    Note(events.BuildMessage, "BuildMessage");
    Note(events.LoadProgress, "LoadProgress");
    Note(events.MessageBox, "MessageBox");
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
