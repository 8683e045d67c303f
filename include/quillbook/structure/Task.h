// One entry of a project's to-do list.
#pragma once

#include <string>
#include <string_view>

#include "quillbook/base/Date.h"
#include "quillbook/base/Object.h"

namespace quillbook {

class QBProject;
class Topic;
class XMLElement;

/// Something to do in a project.
///
/// A setter compares first; a real change is told to the project and then stamped into `ModifiedOn` and `ModifiedBy`,
/// so that listeners still see the previous stamp. With `PauseEvents` True neither happens.
class Task final : public LibraryObject {
 public:
  /// `CreatedOn` is the present moment, `CreatedBy` the current user.
  Task();

  [[nodiscard]] Ref<quillbook::QBProject> QBProject() const;
  void SetQBProject(const Ref<quillbook::QBProject>& value);
  [[nodiscard]] bool PauseEvents() const noexcept { return mPauseEvents; }
  void SetPauseEvents(bool value) { mPauseEvents = value; }
  [[nodiscard]] const std::string& Key() const noexcept { return mKey; }
  /// Tells nobody.
  void SetKey(std::string_view value) { mKey = value; }

  /// Free text. In use are the words "Low", "Medium" and "High", which a load turns into "0", "1" and "2".
  [[nodiscard]] const std::string& Priority() const noexcept { return mPriority; }
  void SetPriority(std::string_view value);
  [[nodiscard]] const std::string& Title() const noexcept { return mTitle; }
  void SetTitle(std::string_view value);
  [[nodiscard]] const std::string& Notes() const noexcept { return mNotes; }
  void SetNotes(std::string_view value);
  [[nodiscard]] const std::string& AssignedTo() const noexcept { return mAssignedTo; }
  void SetAssignedTo(std::string_view value);
  /// `Key` of a topic.
  [[nodiscard]] const std::string& TopicID() const noexcept { return mTopicID; }
  void SetTopicID(std::string_view value);
  /// Free text.
  [[nodiscard]] const std::string& Status() const noexcept { return mStatus; }
  void SetStatus(std::string_view value);
  [[nodiscard]] Date CreatedOn() const noexcept { return mCreatedOn; }
  void SetCreatedOn(Date value);
  [[nodiscard]] const std::string& CreatedBy() const noexcept { return mCreatedBy; }
  void SetCreatedBy(std::string_view value);
  [[nodiscard]] Date ModifiedOn() const noexcept { return mModifiedOn; }
  void SetModifiedOn(Date value);
  [[nodiscard]] const std::string& ModifiedBy() const noexcept { return mModifiedBy; }
  void SetModifiedBy(std::string_view value);

  /// The topic that `TopicID` names; nothing if it names none.
  [[nodiscard]] Ref<quillbook::Topic> Topic() const;
  /// Takes the topic's key. Nothing changes nothing: a task isn't detached from its topic in this way.
  void SetTopic(const Ref<quillbook::Topic>& value);

  /// Reads the record straight into the fields; everything in it is mandatory. `PauseEvents` is False afterwards.
  void Load(XMLElement e);
  void Save(XMLElement e);
  /// Tells of a change and stamps it, as a setter does.
  void FireChanged();
  /// A copy of everything, the key included, made by `ParentQBProject`, which is filled with the task's own project if
  /// it is nothing. The copy stands in no collection.
  Ref<Task> Clone(Ref<quillbook::QBProject>& ParentQBProject);
  Ref<Task> Clone();

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 private:
  void Changed();

  WeakReference<quillbook::QBProject> mQBProject;
  bool mPauseEvents = false;
  std::string mKey;
  std::string mPriority = "Medium";
  std::string mTitle;
  std::string mNotes;
  std::string mAssignedTo;
  std::string mTopicID;
  std::string mStatus = "Not Started";
  Date mCreatedOn;
  std::string mCreatedBy;
  Date mModifiedOn;
  std::string mModifiedBy;
};

}  // namespace quillbook
