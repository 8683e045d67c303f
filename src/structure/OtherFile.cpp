#include "quillbook/structure/OtherFile.h"

#include "quillbook/base/Text.h"
#include "quillbook/frame/Procedure.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/frame/services/PathHelper.h"
#include "quillbook/frame/services/XMLElement.h"
#include "quillbook/host/PageTemplate.h"
#include "quillbook/project/QBProject.h"
#include "structure/ElementFile.h"

namespace quillbook {

namespace {

/// Makes a file's names relative to a base for as long as it lives.
class BaseScope {
 public:
  BaseScope(const Ref<FileSystemObject>& file, const Ref<FileSystemObject>& base) : mFile(file) {
    mFile->SetRelativeTo(base);
  }
  BaseScope(const BaseScope&) = delete;
  BaseScope& operator=(const BaseScope&) = delete;
  ~BaseScope() { mFile->SetRelativeTo({}); }

 private:
  Ref<FileSystemObject> mFile;
};

}  // namespace

OtherFile::OtherFile() : Filename(New<FileSystemObject>()) {}

void OtherFile::SetIncludeInOutput(bool value) {
  Procedure(*this, "IncludeInOutput", [&](auto& p) { p("RHS", value); }).Run([&] {
    if (value == mIncludeInOutput) return;
    mIncludeInOutput = value;
    if (const auto project = QBProject()) project->FireOtherFileChanged(Ref<OtherFile>(this));
  });
}

void OtherFile::SetCaptureInfo(std::string_view value) {
  Procedure(*this, "CaptureInfo", [&](auto& p) { p("RHS", value); }).Run([&] {
    if (value == mCaptureInfo) return;
    mCaptureInfo = value;
    QBProject()->SetDirty(true);
  });
}

Ref<quillbook::QBProject> OtherFile::QBProject() const {
  return mQBProject.Target();
}

void OtherFile::SetQBProject(const Ref<quillbook::QBProject>& value) {
  mQBProject.SetTarget(value);
}

std::string OtherFile::LocalSpec() const {
  return Procedure(*this, "LocalSpec").Run([&] { return Filename->FullName(); });
}

std::string OtherFile::RelativeFileName() const {
  return Procedure(*this, "RelativeFileName").Run([&] { return CachedRelativeName(); });
}

const std::string& OtherFile::CachedRelativeName() const {
  const auto base = QBProject()->Filename;
  auto& cache = mRelativeName;
  if (Filename->RelativeTo() || cache.file != Filename->GivenName() || cache.base != base->GivenName()) {
    const BaseScope scope(Filename, base);
    cache = {Filename->GivenName(), base->GivenName(), Filename->RelativeName()};
  }
  return cache.relative;
}

bool OtherFile::IsAt(std::string_view path) const {
  if (Filename->RelativeTo()) return EqualsIgnoringCase(Filename->FullName(), path);
  return EqualsIgnoringCase(Filename->GivenName(), path);
}

bool OtherFile::IsImage() const {
  return Procedure(*this, "IsImage").Run([&] {
    const auto extension = LowerCase(Filename->Extension());
    for (const std::string_view image : {"png", "bmp", "gif", "jpg", "pcx"})
      if (extension == image) return true;
    return false;
  });
}

bool OtherFile::IsStyleSheet() const {
  return Procedure(*this, "IsStyleSheet").Run([&] { return EqualsIgnoringCase(Filename->Extension(), "css"); });
}

bool OtherFile::IsScript() const {
  return Procedure(*this, "IsScript").Run([&] { return EqualsIgnoringCase(Filename->Extension(), "js"); });
}

bool OtherFile::ReadOnly() const {
  return Procedure(*this, "ReadOnly").Run([&] { return ElementFile::UsedBy(QBProject()) && Filename->ReadOnly(); });
}

bool OtherFile::IsTemplateFile() const {
  return Procedure(*this, "IsTemplateFile").Run([&] {
    const auto project = QBProject();
    const auto pageTemplate = project->Template();
    if (!pageTemplate) return false;
    return New<FileSystemObject>(pageTemplate->Folder() + PathHelper::RelativePath(project->Filename, Filename))
        ->FileExists();
  });
}

void OtherFile::Load(XMLElement e) {
  Procedure(*this, "Load", [&](auto& p) { p("e", e); }).Run([&] {
    const auto attributes = e.Attributes();
    std::string resolved;
    {
      const BaseScope base(Filename, QBProject()->Filename);
      Filename->SetFullName(attributes.Item("FileName").Value());
      resolved = Filename->FullName();
    }
    Filename->SetFullName(resolved);
    if (const auto longName = Filename->LongName(); !longName.empty()) Filename->SetFullName(longName);
    IgnoreFailures([&] { mCaptureInfo = attributes.Item("CaptureInfo").Value(); });
    IgnoreFailures([&] { mIncludeInOutput = attributes.Item("IncludeInOutput").Value() == "True"; });
    mNewFlag = false;
  });
}

void OtherFile::Save(XMLElement e) {
  Procedure(*this, "Save", [&](auto& p) { p("e", e); }).Run([&] {
    e.AddAttribute("FileName", RelativeFileName());
    e.AddAttribute("CaptureInfo", mCaptureInfo);
    e.AddAttribute("IncludeInOutput", BooleanText(mIncludeInOutput));
    mNewFlag = false;
  });
}

const TypeInfo& OtherFile::StaticType() {
  static const TypeInfo type =
      Describe<OtherFile>("OtherFile")
          .Public<&OtherFile::Tag>("Tag")
          .Public<&OtherFile::Filename>("Filename")
          .Field<&OtherFile::mIncludeInOutput>("mIncludeInOutput")
          .Field<&OtherFile::mCaptureInfo>("mCaptureInfo")
          .Field<&OtherFile::mQBProject>("mQBProject")
          .Field<&OtherFile::mNewFlag>("mNewFlag")
          .Property<&OtherFile::IncludeInOutput, &OtherFile::SetIncludeInOutput>("IncludeInOutput")
          .Property<&OtherFile::CaptureInfo, &OtherFile::SetCaptureInfo>("CaptureInfo")
          .Property<&OtherFile::QBProject, &OtherFile::SetQBProject>("QBProject")
          .Property<&OtherFile::NewFlag, &OtherFile::SetNewFlag>("NewFlag")
          .ReadOnly<&OtherFile::LocalSpec>("LocalSpec")
          .ReadOnly<&OtherFile::RelativeFileName>("RelativeFileName")
          .ReadOnly<&OtherFile::IsImage>("IsImage")
          .ReadOnly<&OtherFile::IsStyleSheet>("IsStyleSheet")
          .ReadOnly<&OtherFile::IsScript>("IsScript")
          .ReadOnly<&OtherFile::ReadOnly>("ReadOnly")
          .ReadOnly<&OtherFile::IsTemplateFile>("IsTemplateFile")
          .Done();
  return type;
}

}  // namespace quillbook
