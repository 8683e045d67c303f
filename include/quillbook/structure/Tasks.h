// The to-do list of a project.
#pragma once

#include <string>
#include <string_view>

#include "quillbook/frame/MemberCollection.h"
#include "quillbook/structure/Task.h"

namespace quillbook {

/// The tasks of a project in the order of adding, keyed by `Task::Key`. `PauseEvents` True keeps the project from
/// raising its events; `Dirty` is marked all the same.
class Tasks final : public MemberCollection<Task> {
 public:
  bool PauseEvents = false;

  [[nodiscard]] bool Dirty() const noexcept { return mDirty; }
  /// Every value is told to the project, which must be set.
  void SetDirty(bool value);
  [[nodiscard]] Ref<quillbook::QBProject> QBProject() const;
  void SetQBProject(const Ref<quillbook::QBProject>& value);

  /// Where the separate-file form of a project keeps its tasks.
  [[nodiscard]] std::string LocalSpec() const;
  /// True if the tasks have a file of their own that is read-only.
  [[nodiscard]] bool ReadOnly() const;

  // Library-internal

  /// Replaces the list by the one stored below `e`, or in the file at `LocalSpec` for the separate-file form. Of tasks
  /// with one key the first is kept.
  void Load(XMLElement e);
  /// False, after a report, if the list has a file of its own that could not be written.
  bool Save(XMLElement e);

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 protected:
  void MemberAdded(const Ref<Task>& member, std::string_view key) override;
  void MemberRemoved(const Ref<Task>& member) override;

 private:
  bool mDirty = false;
  WeakReference<quillbook::QBProject> mQBProject;
};

}  // namespace quillbook
