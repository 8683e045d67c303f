#include "structure/ElementFile.h"

#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/frame/services/XMLDocument.h"
#include "quillbook/project/QBProject.h"

namespace quillbook {

namespace {

constexpr int RecordLength = 32767;

}  // namespace

bool ElementFile::UsedBy(const Ref<QBProject>& project) {
  return project->ProjectType() == ProjectTypeSeparateFiles;
}

std::string ElementFile::LocalSpec(const Ref<QBProject>& project, std::string_view name) {
  return project->ProjectDataPath().append(name);
}

ElementFile::ElementFile(std::string_view localSpec) : mFile(New<FileSystemObject>(localSpec)) {}

bool ElementFile::ReadOnly() const {
  return mFile->ReadOnly();
}

XMLElement ElementFile::Read() const {
  XMLDocument document;
  if (mFile->FileExists()) document.LoadXML(mFile->ReadAll());
  return document.DocumentElement();
}

void ElementFile::Write(bool changed, std::string_view rootName, const std::function<void(XMLElement)>& fill) {
  if (mFile->FileExists() && !changed) return;
  XMLDocument document;
  document.DocumentElement().SetName(rootName);
  fill(document.DocumentElement());
  mFile->CreateDirectory();
  // Locked, the new text takes the old one's place in one step, so that a full disk leaves the old one whole.
  mFile->Open(FileSystemObject::ModeCreate, FileSystemObject::AccessWrite, FileSystemObject::LockWriters, RecordLength);
  mFile->WriteLine(document.ToString());
  mFile->Close();
}

}  // namespace quillbook
