#include "quillbook/structure/OtherFiles.h"

#include "quillbook/base/Text.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/project/QBProject.h"

namespace quillbook {

Ref<quillbook::QBProject> OtherFiles::QBProject() const {
  return mQBProject.Target();
}

void OtherFiles::SetQBProject(const Ref<quillbook::QBProject>& value) {
  mQBProject.SetTarget(value);
}

Ref<OtherFile> OtherFiles::Item(KeyOrPosition Key) const {
  return Procedure(*this, "Item", [&](auto& p) { p("Key", Key.ToVariant()); }).Run([&]() -> Ref<OtherFile> {
    if (const auto* file = mCol.Find(Key)) return *file;
    return Key.IsKey() ? FirstByPath(Key.Key()) : Ref<OtherFile>();
  });
}

bool OtherFiles::Exists(std::string_view Filename) const {
  return Procedure(*this, "Exists", [&](auto& p) { p("Filename", Filename); }).Run([&] {
    const auto* file = mCol.Find(Filename);  // nearly all stand under their path
    return (file && (*file)->IsAt(Filename)) || FirstByPath(Filename);
  });
}

Ref<OtherFile> OtherFiles::ItemByRelativeFileName(std::string_view RelativeFileName) const {
  return Procedure(*this, "ItemByRelativeFileName", [&](auto& p) { p("RelativeFileName", RelativeFileName); })
      .Run([&]() -> Ref<OtherFile> {
        for (const auto& file : mCol)
          if (EqualsIgnoringCase(file->RelativeFileName(), RelativeFileName)) return file;
        return {};
      });
}

Ref<OtherFile> OtherFiles::FirstByPath(std::string_view path) const {
  for (const auto& file : mCol)
    if (file->IsAt(path)) return file;
  return {};
}

void OtherFiles::Add(const Ref<OtherFile>& Item, std::string_view Key, KeyOrPosition Before, KeyOrPosition After) {
  Procedure(*this, "Add", [&](auto& p) {
    p("Item", Item);
    p("Key", Key);
    p("Before", Before.ToVariant());
    p("After", After.ToVariant());
  }).Run([&] {
    IgnoreFailures([&] { AddMember(Item, Key, Before, After); });
    if (const auto project = QBProject(); project && !PauseEvents) project->FireOtherFileAdded(Item);
    IgnoreFailures([&] { mDeletedFiles->Remove(Key); });
  });
}

void OtherFiles::MemberRemoved(const Ref<OtherFile>& member) {
  const auto project = QBProject();
  if (!project || PauseEvents) return;
  project->FireOtherFileRemoved(member);
  mDeletedFiles->AddKeyed(member, member->Filename->FullName());
}

void OtherFiles::ResetDeletedFiles() {
  mDeletedFiles = New<Collection<Ref<OtherFile>>>();
}

const TypeInfo& OtherFiles::StaticType() {
  static const TypeInfo type = Describe<OtherFiles>("OtherFiles")
                                   .Public<&OtherFiles::PauseEvents>("PauseEvents")
                                   .Field<&OtherFiles::mQBProject>("mQBProject")
                                   .Field<&OtherFiles::mCol>("mCol")
                                   .Field<&OtherFiles::mDeletedFiles>("mDeletedFiles")
                                   .Property<&OtherFiles::QBProject, &OtherFiles::SetQBProject>("QBProject")
                                   .ReadOnly<&OtherFiles::Count>("Count")
                                   .Done();
  return type;
}

}  // namespace quillbook
