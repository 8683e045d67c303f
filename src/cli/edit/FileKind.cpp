#include "cli/edit/FileKind.h"

#include <fmt/format.h>

#include "cli/edit/StoredValues.h"
#include "quillbook/base/Text.h"
#include "quillbook/frame/services/FileSystemObject.h"

namespace quillbook::cli {
namespace {

Field NameField() {
  return {
      "name", "Path, relative to the project file", FieldType::Text,
      [](QBProject&, const Record& record) { return Values{PathForUser(record.As<OtherFile>().RelativeFileName())}; },
      [](QBProject& project, const Record& record, const Values& values) {
        record.As<OtherFile>().Filename->SetFullName(PathFromUser(project, values.front()));
      }};
}

}  // namespace

const KindInfo& FileKind::Info() const {
  static const KindInfo info{"files", "file", "List, show and edit images, style sheets and other files",
                             "path of a file"};
  return info;
}

const std::vector<Field>& FileKind::Fields() const {
  static const std::vector<Field> fields = {
      NameField().Listed().Required(),
      BooleanField("in-output", "Copy it to the pages", &OtherFile::IncludeInOutput, &OtherFile::SetIncludeInOutput)
          .Listed(),
      TextField("capture-info", "Notes on a captured image", &OtherFile::CaptureInfo, &OtherFile::SetCaptureInfo),
  };
  return fields;
}

bool FileKind::IsNamed(QBProject& project, const Record& record, std::string_view address) const {
  // The path as a user may write it in another way: absolute, with "\", with "..".
  const auto path = PathFromUser(project, address);
  return EqualsIgnoringCase(PathForUser(project.NewOtherFile(path)->RelativeFileName()), NameOf(project, record));
}

std::string FileKind::Warning(QBProject&, const Record& record) const {
  const auto& file = record.As<OtherFile>().Filename;
  return file->FileExists() ? std::string() : fmt::format("there is no file {} yet", file->NativePath());
}

Ref<OtherFile> FileKind::Make(const Scope& scope, const std::string& name) const {
  return scope.project.NewOtherFile(PathFromUser(scope.project, name));
}

}  // namespace quillbook::cli
