// The files of a project that are not topics.
#pragma once

#include <string>
#include <string_view>

#include "quillbook/frame/MemberCollection.h"
#include "quillbook/structure/OtherFile.h"

namespace quillbook {

/// The other files of a project in the order of adding, keyed by full path. Also remembers what has been removed.
class OtherFiles final : public MemberCollection<OtherFile> {
 public:
  bool PauseEvents = false;

  [[nodiscard]] Ref<quillbook::QBProject> QBProject() const;
  void SetQBProject(const Ref<quillbook::QBProject>& value);

  /// The file under a key or at a position, else the first whose full path equals the key ignoring case; nothing if
  /// there is none.
  [[nodiscard]] Ref<OtherFile> Item(KeyOrPosition Key) const;
  /// True if the full path of a file equals `Filename` ignoring case.
  [[nodiscard]] bool Exists(std::string_view Filename) const;
  /// The first file whose path relative to the project equals `RelativeFileName` ignoring case; nothing if there is
  /// none.
  [[nodiscard]] Ref<OtherFile> ItemByRelativeFileName(std::string_view RelativeFileName) const;

  /// As in every collection, but without failures. The project is told also when the key is known and nothing changed.
  void Add(const Ref<OtherFile>& Item, std::string_view Key = {}, KeyOrPosition Before = {}, KeyOrPosition After = {});

  // Library-internal

  /// Files removed since the project was opened, keyed by full path.
  [[nodiscard]] const Ref<Collection<Ref<OtherFile>>>& DeletedFiles() const noexcept { return mDeletedFiles; }
  void ResetDeletedFiles();

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 protected:
  void MemberRemoved(const Ref<OtherFile>& member) override;

 private:
  [[nodiscard]] Ref<OtherFile> FirstByPath(std::string_view path) const;

  WeakReference<quillbook::QBProject> mQBProject;
  Ref<Collection<Ref<OtherFile>>> mDeletedFiles = New<Collection<Ref<OtherFile>>>();
};

}  // namespace quillbook
