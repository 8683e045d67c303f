// A project and its file.
#include <utility>

#include "project/ProjectIntegrity.h"
#include "project/ProjectLoader.h"
#include "project/ProjectWriter.h"
#include "quillbook/base/Text.h"
#include "quillbook/frame/Procedure.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/frame/services/XMLDocument.h"
#include "quillbook/platform/MessageBox.h"
#include "quillbook/project/QBProject.h"

namespace quillbook {
namespace {

using Outcome = ProjectLoadResult::Outcome;

constexpr int kRecordLength = 32767;

ProjectLoadResult Result(Outcome outcome, std::string message = {}) {
  ProjectLoadResult result;
  result.outcome = outcome;
  result.message = std::move(message);
  return result;
}

}  // namespace

// Loading.

void QBProject::LoadFromFile(std::string_view Filename) {
  InternalLoadFromFile(Filename, false);
}

void QBProject::Reload() {
  InternalLoadFromFile(Filename->FullName(), true);
}

void QBProject::InternalLoadFromFile(std::string_view Filename, bool Reload) {
  Procedure(*this, "InternalLoadFromFile", [&](auto& p) {
    p("Filename", Filename);
    p("Reload", Reload);
  }).Run([&] {
    mLoadResult = Result(Outcome::Unreadable);
    const auto file = New<FileSystemObject>(Filename);
    if (!file->FileExists()) {
      ReportMissingFile(Filename);
      return;
    }
    auto document = Parse(ReadText(*file));
    if (mLoadResult.outcome == Outcome::NotXml) LocateFault(file->ReadAll());
    this->Filename->SetFullName(Filename);
    if (!LoadXMLDocument(std::move(document), Reload)) return;
    mLoading = true;
    SetDirty(false);
    mLoading = false;
  });
}

void QBProject::ReportMissingFile(std::string_view name) {
  mLoadResult = Result(Outcome::FileNotFound, "file not found");
  // The title is all that tells the caller; it is no change to save.
  const bool loading = std::exchange(mLoading, true);
  SetTitle("{Could not find file '" + std::string(name) + "'}");
  mLoading = loading;
}

void QBProject::Load(std::string_view Source) {
  Procedure(*this, "Load", [&](auto& p) { p("Source", Source); }).Run([&] {
    auto document = Parse(std::string(Source));
    if (mLoadResult.outcome == Outcome::NotXml) LocateFault(Source);
    (void)LoadXMLDocument(std::move(document), false);
  });
}

std::string QBProject::ReadText(const FileSystemObject& file) {
  try {
    return file.ReadAll();
  } catch (const Failure& failure) {
    mLoadResult.message = failure.Description();
    throw;
  }
}

XMLDocument QBProject::Parse(std::string text) {
  XMLDocument document;
  auto parsed = document.LoadXML(std::move(text));
  if (!parsed.ok) {
    mLoadResult = Result(Outcome::NotXml, std::move(parsed.message));
    return document;
  }
  const std::string name(document.DocumentElement().Name());
  mLoadResult = IsProjectRoot(name)
                    ? Result(Outcome::Failed, "the project could not be read to its end")  // until it has been
                    : Result(Outcome::OtherRoot, "the root element is '" + name + "', not 'QBProject'");
  mLoadResult.rootName = name;
  return document;
}

void QBProject::LocateFault(std::string_view text) {
  const auto fault = XMLDocument::Check(text);
  mLoadResult.line = fault.line;
  mLoadResult.column = fault.column;
}

bool QBProject::LoadXMLDocument(XMLDocument doc, bool Reload) {
  return Procedure(*this, "LoadXMLDocument", [&](auto& p) { p("Reload", Reload); }).Run([&] {
    ProjectLoader(*this, Reload).Run(std::move(doc));
    AssertIntegrity(*this);
    if (mLoadResult.outcome == Outcome::Failed) {
      mLoadResult.outcome = Outcome::Loaded;
      mLoadResult.message.clear();
    }
    return true;
  });
}

// Saving.

std::string QBProject::Save() {
  return Procedure(*this, "Save").Run([this] { return ProjectWriter(*this).Text(); });
}

bool QBProject::SaveToDisk(bool CheckForNewOrDeletedSSItems) {
  return Procedure(*this, "SaveToDisk", [&](auto& p) { p("CheckForNewOrDeletedSSItems", CheckForNewOrDeletedSSItems); })
      .Run([&] {
        FileSystemObject file(Filename->FullName());
        if (file.FileExists()) KeepBackup(file);
        if (!OpenForSaving(file)) return false;
        if (!WriteTo(file)) return false;
        SetDirty(false);
        return true;
      });
}

void QBProject::KeepBackup(const FileSystemObject& file) const {
  FileSystemObject backup(file.Path() + file.BaseName() + ".bak");
  if (EqualsIgnoringCase(backup.FullName(), file.FullName())) return;  // never at the cost of the project itself
  // The copy takes the place of the one before in one step: where it fails, that one is still there.
  IgnoreFailures([&] { file.CopyTo(backup); });
}

bool QBProject::OpenForSaving(FileSystemObject& file) {
  const bool opened = IgnoreFailures([&] {
    file.Open(FileSystemObject::ModeCreate, FileSystemObject::AccessWrite, FileSystemObject::LockWriters,
              kRecordLength);
  });
  if (!opened)
    ShowMessageBox(
        "Could not save to '" + file.FullName() + "'. Please check that this file is accessible and is not read-only.",
        MessageBox::Exclamation, "Could not save");
  return opened;
}

bool QBProject::WriteTo(FileSystemObject& file) {
  ProjectWriter writer(*this);
  const bool written = IgnoreFailures([&] {
    writer.WriteTo([&](std::string_view part) { file.WriteText(part); });
    file.WriteLine("");
    file.Close();
  });
  // A part that stayed behind must stay dirty, or the next save would take it for written.
  return written && writer.WroteAllParts();
}

}  // namespace quillbook
