#include "quillbook/structure/Task.h"

#include "frame/Assign.h"
#include "quillbook/base/Text.h"
#include "quillbook/frame/Procedure.h"
#include "quillbook/frame/services/TextHelper.h"
#include "quillbook/frame/services/XMLDocument.h"
#include "quillbook/project/QBProject.h"
#include "quillbook/structure/Tasks.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/Topics.h"

namespace quillbook {

namespace {

constexpr std::string_view StoredDateForm = "dd-mm-yyyy hh:nn:ss";

/// Numbers stand at fixed places, whatever stands between them.
Date DateFromStored(std::string_view text) {
  const auto number = [&](std::size_t position, std::size_t length) {
    return LongFromText(Utf16Part(text, position, length));
  };
  Date::Parts parts;
  parts.year = number(6, 4);
  parts.month = number(3, 2);
  parts.day = number(0, 2);
  parts.hour = number(11, 2);
  parts.minute = number(14, 2);
  parts.second = number(17, 2);
  const auto date = Date::FromParts(parts);
  if (!date) throw Failure(FailureNumber::InvalidCall);
  return *date;
}

/// The words are those of newly made tasks; stored priorities are digits.
std::string_view NumericPriority(std::string_view priority) {
  if (priority == "Low") return "0";
  if (priority == "Medium") return "1";
  if (priority == "High") return "2";
  return priority;
}

}  // namespace

Task::Task() : mCreatedOn(Date::Now()), mCreatedBy(TextHelper::UserName()) {}

Ref<quillbook::QBProject> Task::QBProject() const {
  return mQBProject.Target();
}

void Task::SetQBProject(const Ref<quillbook::QBProject>& value) {
  mQBProject.SetTarget(value);
}

void Task::SetPriority(std::string_view value) {
  Assign(*this, mPriority, value, "Priority", &Task::Changed);
}
void Task::SetTitle(std::string_view value) {
  Assign(*this, mTitle, value, "Title", &Task::Changed);
}
void Task::SetNotes(std::string_view value) {
  Assign(*this, mNotes, value, "Notes", &Task::Changed);
}
void Task::SetAssignedTo(std::string_view value) {
  Assign(*this, mAssignedTo, value, "AssignedTo", &Task::Changed);
}
void Task::SetTopicID(std::string_view value) {
  Assign(*this, mTopicID, value, "TopicID", &Task::Changed);
}
void Task::SetStatus(std::string_view value) {
  Assign(*this, mStatus, value, "Status", &Task::Changed);
}
void Task::SetCreatedOn(Date value) {
  Assign(*this, mCreatedOn, value, "CreatedOn", &Task::Changed);
}
void Task::SetCreatedBy(std::string_view value) {
  Assign(*this, mCreatedBy, value, "CreatedBy", &Task::Changed);
}
void Task::SetModifiedOn(Date value) {
  Assign(*this, mModifiedOn, value, "ModifiedOn", &Task::Changed);
}
void Task::SetModifiedBy(std::string_view value) {
  Assign(*this, mModifiedBy, value, "ModifiedBy", &Task::Changed);
}

Ref<quillbook::Topic> Task::Topic() const {
  return Procedure(*this, "Topic").Run([&]() -> Ref<quillbook::Topic> {
    if (mTopicID.empty()) return {};
    return QBProject()->Topics->Item(mTopicID);
  });
}

void Task::SetTopic(const Ref<quillbook::Topic>& value) {
  Procedure(*this, "Topic", [&](auto& p) { p("RHS", value); }).Run([&] {
    if (value) SetTopicID(value->Key);
  });
}

void Task::Load(XMLElement e) {
  Procedure(*this, "Load", [&](auto& p) { p("e", e); }).Run([&] {
    mPauseEvents = true;
    const auto attributes = e.Attributes();
    mKey = attributes.Item("Key").Value();
    mPriority = NumericPriority(attributes.Item("Priority").Value());
    mTitle = attributes.Item("Title").Value();
    mNotes = e.TextView();
    mAssignedTo = attributes.Item("AssignedTo").Value();
    mTopicID = attributes.Item("TopicID").Value();
    mStatus = attributes.Item("Status").Value();
    mCreatedOn = DateFromStored(attributes.Item("CreatedOn").Value());
    mCreatedBy = attributes.Item("CreatedBy").Value();
    mModifiedOn = DateFromStored(attributes.Item("ModifiedOn").Value());
    mModifiedBy = attributes.Item("ModifiedBy").Value();
    mPauseEvents = false;
  });
}

void Task::Save(XMLElement e) {
  Procedure(*this, "Save", [&](auto& p) { p("e", e); }).Run([&] {
    e.AddAttribute("Key", mKey);
    e.AddAttribute("Priority", mPriority);
    e.AddAttribute("Title", mTitle);
    e.SetText(mNotes);
    e.AddAttribute("AssignedTo", mAssignedTo);
    e.AddAttribute("TopicID", mTopicID);
    e.AddAttribute("Status", mStatus);
    e.AddAttribute("CreatedOn", mCreatedOn.Format(StoredDateForm));
    e.AddAttribute("CreatedBy", mCreatedBy);
    e.AddAttribute("ModifiedOn", mModifiedOn.Format(StoredDateForm));
    e.AddAttribute("ModifiedBy", mModifiedBy);
  });
}

void Task::FireChanged() {
  Procedure(*this, "FireChanged").Run([&] { Changed(); });
}

Ref<Task> Task::Clone(Ref<quillbook::QBProject>& ParentQBProject) {
  return Procedure(*this, "Clone", [&](auto& p) { p("ParentQBProject", ParentQBProject); })
      .RunSetting(Ref<Task>(), [&](Ref<Task>& copy) {
        if (!ParentQBProject) ParentQBProject = QBProject();
        copy = ParentQBProject->NewTask();
        XMLDocument document;
        Save(document.DocumentElement());
        copy->Load(document.DocumentElement());
      });
}

Ref<Task> Task::Clone() {
  Ref<quillbook::QBProject> own;
  return Clone(own);
}

void Task::Changed() {
  Procedure(*this, "Changed").Run([&] {
    if (mPauseEvents) return;
    if (const auto project = QBProject()) {
      project->FireTaskChanged(Ref<Task>(this));
      project->Tasks->SetDirty(true);
    }
    mModifiedOn = Date::Now();
    mModifiedBy = TextHelper::UserName();
  });
}

const TypeInfo& Task::StaticType() {
  static const TypeInfo type = Describe<Task>("Task")
                                   .Field<&Task::mQBProject>("mQBProject")
                                   .Field<&Task::mPauseEvents>("mPauseEvents")
                                   .Field<&Task::mKey>("mKey")
                                   .Field<&Task::mPriority>("mPriority")
                                   .Field<&Task::mTitle>("mTitle")
                                   .Field<&Task::mNotes>("mNotes")
                                   .Field<&Task::mAssignedTo>("mAssignedTo")
                                   .Field<&Task::mTopicID>("mTopicID")
                                   .Field<&Task::mStatus>("mStatus")
                                   .Field<&Task::mCreatedOn>("mCreatedOn")
                                   .Field<&Task::mCreatedBy>("mCreatedBy")
                                   .Field<&Task::mModifiedOn>("mModifiedOn")
                                   .Field<&Task::mModifiedBy>("mModifiedBy")
                                   .Property<&Task::QBProject, &Task::SetQBProject>("QBProject")
                                   .Property<&Task::PauseEvents, &Task::SetPauseEvents>("PauseEvents")
                                   .Property<&Task::Key, &Task::SetKey>("Key")
                                   .Property<&Task::Priority, &Task::SetPriority>("Priority")
                                   .Property<&Task::Title, &Task::SetTitle>("Title")
                                   .Property<&Task::Notes, &Task::SetNotes>("Notes")
                                   .Property<&Task::AssignedTo, &Task::SetAssignedTo>("AssignedTo")
                                   .Property<&Task::TopicID, &Task::SetTopicID>("TopicID")
                                   .Property<&Task::Status, &Task::SetStatus>("Status")
                                   .Property<&Task::CreatedOn, &Task::SetCreatedOn>("CreatedOn")
                                   .Property<&Task::CreatedBy, &Task::SetCreatedBy>("CreatedBy")
                                   .Property<&Task::ModifiedOn, &Task::SetModifiedOn>("ModifiedOn")
                                   .Property<&Task::ModifiedBy, &Task::SetModifiedBy>("ModifiedBy")
                                   .Property<&Task::Topic, &Task::SetTopic>("Topic")
                                   .Done();
  return type;
}

}  // namespace quillbook
