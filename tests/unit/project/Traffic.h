// Everything that a project and its members tell, with the arguments.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "quillbook/config/BuildProfile.h"
#include "quillbook/config/ProjectProperty.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/project/QBProject.h"
#include "quillbook/structure/GlossaryItem.h"
#include "quillbook/structure/OtherFile.h"
#include "quillbook/structure/QBNode.h"
#include "quillbook/structure/Task.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/TopicCategory.h"
#include "quillbook/topics/TopicKeyword.h"
#include "quillbook/topics/TopicLink.h"
#include "quillbook/topics/TopicSection.h"
#include "support/ProjectLog.h"

namespace quillbook {

/// How an argument of an event stands in the traffic.
inline std::string Told(const Ref<Topic>& topic) {
  return topic ? topic->Name() : "none";
}
inline std::string Told(const Ref<TopicLink>& link) {
  return link->Title();
}
inline std::string Told(const Ref<TopicSection>& section) {
  return section->Data();
}
inline std::string Told(const Ref<TopicKeyword>& keyword) {
  return keyword->Keyword();
}
inline std::string Told(const Ref<TopicCategory>& category) {
  return category->Name();
}
inline std::string Told(const Ref<QBNode>& node) {
  return node->Key;
}
inline std::string Told(const Ref<GlossaryItem>& item) {
  return item->Term();
}
inline std::string Told(const Ref<Task>& task) {
  return task->Title();
}
inline std::string Told(const Ref<OtherFile>& file) {
  return file->Filename->NameWithExtension();
}
inline std::string Told(const Ref<BuildProfile>& profile) {
  return profile->Name();
}
inline std::string Told(const Ref<ProjectProperty>& property) {
  return property->PropertyName();
}
inline std::string Told(std::string_view text) {
  return std::string(text);
}
template <class T>
std::string Told(const T&) {
  return "?";
}

/// Writes down events with their arguments for as long as it lives. "Dirty" stands for `DirtyStateChanged`.
class Traffic {
 public:
  /// Notes everything that the project raises.
  explicit Traffic(const Ref<QBProject>& project) {
    support::ForEachEvent(project->Events, [this](auto& event, const char* name) { Note(event, name); });
  }

  /// Notes another event too.
  template <class... Args>
  void Note(Event<Args...>& event, const char* name) {
    mConnections.push_back(event.Connect([this, name](Args... args) {
      if (!mText.empty()) mText += ' ';
      mText += name;
      std::string told;
      ((told += (told.empty() ? "" : ", ") + Told(args)), ...);
      if constexpr (sizeof...(Args) > 0) mText += "(" + told + ")";
    }));
  }

  /// The events since the last call, with a blank between.
  std::string Take() { return std::exchange(mText, {}); }

 private:
  std::string mText;
  std::vector<Connection> mConnections;
};

}  // namespace quillbook
