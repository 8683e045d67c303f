#include "quillbook/structure/Tasks.h"

#include "quillbook/frame/services/XMLElement.h"
#include "quillbook/project/QBProject.h"
#include "structure/ElementFile.h"

namespace quillbook {

void Tasks::SetDirty(bool value) {
  Procedure(*this, "Dirty", [&](auto& p) { p("RHS", value); }).Run([&] {
    mDirty = value;
    QBProject()->FireDirtyStateChanged();
  });
}

Ref<quillbook::QBProject> Tasks::QBProject() const {
  return mQBProject.Target();
}

void Tasks::SetQBProject(const Ref<quillbook::QBProject>& value) {
  mQBProject.SetTarget(value);
}

void Tasks::MemberAdded(const Ref<Task>& member, std::string_view /*key*/) {
  if (const auto project = QBProject()) project->FireTaskAdded(member);
  SetDirty(true);
}

void Tasks::MemberRemoved(const Ref<Task>& member) {
  if (const auto project = QBProject()) project->FireTaskRemoved(member);
  SetDirty(true);
}

std::string Tasks::LocalSpec() const {
  return Procedure(*this, "LocalSpec").Run([&] { return ElementFile::LocalSpec(QBProject(), "Tasks.xml"); });
}

bool Tasks::ReadOnly() const {
  return Procedure(*this, "ReadOnly").Run([&] {
    return ElementFile::UsedBy(QBProject()) && ElementFile(LocalSpec()).ReadOnly();
  });
}

void Tasks::Load(XMLElement e) {
  Procedure(*this, "Load", [&](auto& p) { p("e", e); }).Run([&] {
    mCol.Clear();
    if (ElementFile::UsedBy(QBProject())) e = ElementFile(LocalSpec()).Read();
    for (const auto& child : e.ChildElements()) {
      const auto task = New<Task>();
      task->SetQBProject(QBProject());
      task->Load(child);
      IgnoreFailures([&] { mCol.AddKeyed(task, task->Key()); });
    }
    SetDirty(false);
  });
}

bool Tasks::Save(XMLElement e) {
  return Procedure(*this, "Save", [&](auto& p) { p("e", e); }).Run([&] {
    const auto writeTasks = [&](XMLElement parent) {
      for (const auto& task : *this) task->Save(parent.AddChild("Task"));
    };
    if (ElementFile::UsedBy(QBProject()))
      ElementFile(LocalSpec()).Write(mDirty, "Tasks", writeTasks);
    else
      writeTasks(e);
    return true;
  });
}

const TypeInfo& Tasks::StaticType() {
  static const TypeInfo type = Describe<Tasks>("Tasks")
                                   .Public<&Tasks::PauseEvents>("PauseEvents")
                                   .Field<&Tasks::mDirty>("mDirty")
                                   .Field<&Tasks::mQBProject>("mQBProject")
                                   .Field<&Tasks::mCol>("mCol")
                                   .Property<&Tasks::Dirty, &Tasks::SetDirty>("Dirty")
                                   .Property<&Tasks::QBProject, &Tasks::SetQBProject>("QBProject")
                                   .ReadOnly<&Tasks::Count>("Count")
                                   .ReadOnly<&Tasks::LocalSpec>("LocalSpec")
                                   .ReadOnly<&Tasks::ReadOnly>("ReadOnly")
                                   .Done();
  return type;
}

}  // namespace quillbook
