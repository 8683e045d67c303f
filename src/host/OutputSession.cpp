#include "host/OutputSession.h"

#include <algorithm>

#include "host/OutputName.h"
#include "quillbook/base/Failure.h"
#include "quillbook/base/Text.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/host/MVProject.h"
#include "quillbook/platform/FileStore.h"
#include "quillbook/platform/Platform.h"

namespace quillbook::detail {

namespace {

std::string FolderPath(const MVProject& project) {
  if (project.OutputDirectory.empty()) throw Failure(FailureNumber::PathNotFound, "There is no output folder");
  FileSystemObject folder;
  folder.SetPath(project.OutputDirectory);
  return folder.FullName();
}

std::string NativeFolder(const std::string& folder) {
  auto native = FileSystemObject(folder).NativePath();
  if (native.empty() || native.back() != '/') native += '/';
  return native;
}

}  // namespace

OutputSession::OutputSession(MVProject& project, Ref<INamespaceProvider> provider)
    : mProject(project),
      mProvider(std::move(provider)),
      mOutputDirectory(FolderPath(project)),
      mFolder(Platform::Current().Files(), NativeFolder(mOutputDirectory)) {}

bool OutputSession::Claim(const std::string& path, const Ref<Object>& item, const Ref<PageLayout>& layout) {
  const auto [owner, isFree] = mOwners.try_emplace(FoldCase(path), Owner{path, item, layout});
  if (isFree) return true;
  const Owner second{path, item, layout};
  const bool sameFile = owner->second.path == path;
  mProject.AddNote({NoteLevel::Warning, layout ? "page.duplicate-file" : "support.duplicate-file",
                    Describe(owner->second) + " and " + Describe(second) +
                        (sameFile ? " go to the same file '" + path + "'; the second was left out"
                                  : " go to files whose names differ only in case, '" + owner->second.path + "' and '" +
                                        path + "'; on many systems they are one file")});
  return !sameFile;
}

std::string OutputSession::Describe(const Owner& owner) {
  if (!owner.layout) return "the template's file '" + owner.path + "'";
  return "'" + ItemCaption(owner.item) + "' (layout '" + owner.layout->Name() + "')";
}

std::string OutputSession::FullName(const std::string& path) const {
  auto full = mOutputDirectory + path;
  std::replace(full.begin() + static_cast<std::ptrdiff_t>(mOutputDirectory.size()), full.end(), '/', '\\');
  return full;
}

Ref<FileSystemObject> OutputSession::FileFor(const std::string& path) const {
  return New<FileSystemObject>(FullName(path));
}

void OutputSession::WritePage(const std::string& path, std::string_view bytes, const Ref<NamespaceDef>& definition,
                              const Ref<Object>& item) {
  Write(path, bytes, definition, item, true);
  ++mPageCount;
}

void OutputSession::Write(const std::string& path, std::string_view bytes, const Ref<NamespaceDef>& definition,
                          const Ref<Object>& item, bool coreContent) {
  if (mFolder.Write(path, bytes) == OutputFolder::Outcome::Unchanged) ++mUnchangedCount;
  const auto fullName = FullName(path);
  mProject.ContentCreated.Raise(fullName);
  if (mProvider) mProvider->INamespaceProvider_ContentCreated(definition, item, fullName, coreContent);
}

void OutputSession::WriteControlFile(const std::string& path, std::string_view bytes) {
  const auto file = FileFor(path);
  bool leaveOut = false;
  mProject.BeforeOutputNamespacePage.Raise(nullptr, nullptr, file, leaveOut);
  if (!leaveOut) Write(path, bytes, nullptr, file, false);
}

bool OutputSession::Has(const std::string& path) const {
  const auto owner = mOwners.find(FoldCase(path));
  return (owner != mOwners.end() && owner->second.path == path) || FileFor(path)->FileExists();
}

std::string OutputSession::TitleOf(const std::string& path) const {
  const auto owner = mOwners.find(FoldCase(path));
  return owner != mOwners.end() && owner->second.layout ? ItemCaption(owner->second.item) : std::string();
}

bool OutputSession::CopySupportFiles(const PageTemplate& pageTemplate) {
  const auto base = New<FileSystemObject>(pageTemplate.Folder());
  for (const auto& path : pageTemplate.SupportFiles()) {
    if (mProject.IsCancelled()) return false;
    CopySupportFile(pageTemplate, base, path);
  }
  return true;
}

void OutputSession::CopySupportFile(const PageTemplate& pageTemplate, const Ref<FileSystemObject>& base,
                                    const std::string& path) {
  const auto source = New<FileSystemObject>(pageTemplate.Folder() + path);
  source->SetRelativeTo(base);
  bool leaveOut = false;
  mProject.BeforeOutputNamespacePage.Raise(nullptr, nullptr, source, leaveOut);
  if (leaveOut || !Claim(path, source, nullptr)) return;
  Write(path, Platform::Current().Files().ReadFile(source->NativePath()), nullptr, source, false);
  ++mSupportFileCount;
}

}  // namespace quillbook::detail
