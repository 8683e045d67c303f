// Events of a project, in the order in which they come.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "quillbook/base/Event.h"
#include "quillbook/project/QBProject.h"

namespace quillbook::support {

/// Writes down the names of a project's events for as long as it lives.
class ProjectLog {
 public:
  explicit ProjectLog(const Ref<QBProject>& project) {
    auto& events = project->Events;
    Note(events.Changed, "Changed");
    Note(events.BuildProfilesChanged, "BuildProfilesChanged");
    Note(events.BuildProfileChanged, "BuildProfileChanged");
    Note(events.BuildProfileAdded, "BuildProfileAdded");
    Note(events.BuildProfileRemoved, "BuildProfileRemoved");
    Note(events.TopicRemoved, "TopicRemoved");
    Note(events.QBNodeChanged, "QBNodeChanged");
    Note(events.QBNodeRemoved, "QBNodeRemoved");
    Note(events.OtherFileAdded, "OtherFileAdded");
    Note(events.OtherFileRemoved, "OtherFileRemoved");
    Note(events.OtherFileChanged, "OtherFileChanged");
    Note(events.GlossaryItemAdded, "GlossaryItemAdded");
    Note(events.GlossaryItemRemoved, "GlossaryItemRemoved");
    Note(events.GlossaryItemChanged, "GlossaryItemChanged");
    Note(events.TaskAdded, "TaskAdded");
    Note(events.TaskRemoved, "TaskRemoved");
    Note(events.TaskChanged, "TaskChanged");
    Note(events.DirtyStateChanged, "Dirty");
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
