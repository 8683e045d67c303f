#include "quillbook/frame/services/FileSystemObject.h"

#include <algorithm>
#include <utility>

#include "frame/services/DiskNames.h"
#include "frame/services/TextDecoding.h"
#include "frame/services/WindowsPath.h"
#include "quillbook/base/CodePage.h"
#include "quillbook/base/Failure.h"
#include "quillbook/base/Text.h"
#include "quillbook/frame/services/PathHelper.h"
#include "quillbook/platform/Platform.h"

namespace quillbook {

namespace {

using detail::DiskNames;

FileStore& Files() {
  return Platform::Current().Files();
}

struct NameParts {
  std::string_view path;
  std::string_view baseName;
  std::string_view extension;
  bool hasPoint = false;
};

NameParts PartsOf(std::string_view fullName) {
  NameParts parts;
  auto nameStart = fullName.find_last_of('\\') + 1;
  const bool driveAlone = nameStart == 0 && fullName.size() >= 2 && fullName[1] == ':';
  if (driveAlone) nameStart = 2;
  parts.path = fullName.substr(0, nameStart);
  const auto name = fullName.substr(nameStart);
  const auto point = name.find_last_of('.');
  parts.hasPoint = point != std::string_view::npos;
  parts.baseName = name.substr(0, point);
  if (parts.hasPoint) parts.extension = name.substr(point + 1);
  return parts;
}

std::string Compose(std::string_view path, std::string_view baseName, std::string_view extension) {
  std::string name(path);
  name += baseName;
  if (!extension.empty()) (name += '.') += extension;
  return name;
}

/// Where a path is on disk, or none if it can't be anywhere.
std::optional<std::string> OnDisk(std::string_view fullName) {
  const auto native = detail::ToNativePath(fullName);
  if (!native) return std::nullopt;
  return DiskNames::Current().Find(*native);
}

[[noreturn]] void RaiseFor(FailureNumber number, std::string_view name) {
  throw Failure(number, std::string(FailureText(number)) + ": '" + std::string(name) + "'");
}

/// The native path of a file that is to be written.
std::string RequirePlace(std::string_view fullName) {
  if (fullName.empty() || fullName.ends_with('\\')) RaiseFor(FailureNumber::BadFileName, fullName);
  auto path = OnDisk(fullName);
  if (!path) RaiseFor(FailureNumber::PathNotFound, detail::WithSlashes(fullName));
  return std::move(*path);
}

/// Each character as one byte.
std::string OneByteEach(std::string_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  for (std::size_t i = 0; i < text.size();) {
    const auto start = i;
    const auto c = NextCodePoint(text, i);
    if (c <= 0xFF)
      bytes += static_cast<char>(c);
    else
      bytes += EncodeCodePage(text.substr(start, i - start), CodePageWindows1252, Unmappable::QuestionMark);
  }
  return bytes;
}

}  // namespace

FileSystemObject::FileSystemObject() = default;

FileSystemObject::FileSystemObject(std::string_view FullName) {
  SetFullName(FullName);
}

FileSystemObject::~FileSystemObject() = default;

std::string FileSystemObject::FullName() const {
  if (!mRelativeTo) return mFullName;
  // The base's own base doesn't count, so that no chain of bases can run in a circle.
  const auto base = New<FileSystemObject>(mRelativeTo->mFullName);
  return PathHelper::AbsolutePath(base, New<FileSystemObject>(mFullName));
}

void FileSystemObject::SetFullName(std::string_view FullName) {
  mFullName = detail::WithBackslashes(FullName);
}

std::string FileSystemObject::Path() const {
  return std::string(PartsOf(FullName()).path);
}

void FileSystemObject::SetPath(std::string_view Path) {
  SetFullName(Path);
  if (!mFullName.empty() && !mFullName.ends_with('\\')) mFullName += '\\';
}

std::string FileSystemObject::BaseName() const {
  return std::string(PartsOf(mFullName).baseName);
}

void FileSystemObject::SetBaseName(std::string_view BaseName) {
  const auto parts = PartsOf(mFullName);
  mFullName = Compose(parts.path, BaseName, parts.extension);
}

std::string FileSystemObject::Extension() const {
  return std::string(PartsOf(mFullName).extension);
}

void FileSystemObject::SetExtension(std::string_view Extension) {
  const auto parts = PartsOf(mFullName);
  if (Extension.starts_with('.')) Extension.remove_prefix(1);
  mFullName = Compose(parts.path, parts.baseName, Extension);
}

std::string FileSystemObject::NameWithExtension() const {
  return mFullName.substr(PartsOf(mFullName).path.size());
}

std::string FileSystemObject::RelativeName() const {
  if (!mRelativeTo) return mFullName;
  const auto base = New<FileSystemObject>(mRelativeTo->mFullName);
  return PathHelper::RelativePath(base, New<FileSystemObject>(mFullName));
}

bool FileSystemObject::FileExists() const {
  const auto path = OnDisk(FullName());
  if (!path || path->ends_with('/')) return false;
  const auto status = Files().GetStatus(*path);
  return status.exists && !status.isDirectory;
}

bool FileSystemObject::DirectoryExists() const {
  if (mFullName.empty()) return false;
  const auto folder = Path();
  const auto path = OnDisk(folder.empty() ? ".\\" : folder);
  return path && Files().GetStatus(*path).isDirectory;
}

bool FileSystemObject::ReadOnly() const {
  const auto path = OnDisk(FullName());
  return path && Files().GetStatus(*path).readOnly;
}

bool FileSystemObject::Locked() const {
  const auto path = OnDisk(FullName());
  return path && Files().IsLocked(*path);
}

void FileSystemObject::CreateDirectory() {
  const auto folder = Path();
  if (folder.empty()) return;  // a name alone stands in the working directory
  const auto path = OnDisk(folder);
  if (!path) RaiseFor(FailureNumber::PathNotFound, detail::WithSlashes(folder));
  Files().CreateDirectories(*path);
  DiskNames::Current().Forget();
}

std::string FileSystemObject::ExistingFile() const {
  const auto fullName = FullName();
  auto path = OnDisk(fullName);
  if (!path) RaiseFor(FailureNumber::FileNotFound, detail::WithSlashes(fullName));
  return std::move(*path);
}

std::string FileSystemObject::ReadAll() const {
  return detail::DecodeText(Files().ReadFile(ExistingFile()));
}

void FileSystemObject::Open(int Mode, int Access, int Lock, int) {
  if (IsOpen()) RaiseFor(FailureNumber::FileAlreadyOpen, NativePath());
  if (Access == AccessRead) {
    if (!FileExists()) RaiseFor(FailureNumber::FileNotFound, NativePath());
    return;
  }
  const bool known = Mode == ModeCreate && Access == AccessWrite && (Lock == LockShared || Lock == LockWriters);
  if (!known) throw Failure(FailureNumber::InvalidCall);
  const auto path = RequirePlace(FullName());
  mWriter = Lock == LockWriters ? Files().ReplaceFile(path, true) : Files().CreateFile(path);
  DiskNames::Current().NoteCreated(path);
}

void FileSystemObject::OpenInMemory() {
  if (IsOpen()) RaiseFor(FailureNumber::FileAlreadyOpen, NativePath());
  mText.emplace();
}

std::string FileSystemObject::TakeText() {
  return mText ? std::exchange(*mText, {}) : std::string();
}

void FileSystemObject::WriteText(std::string_view Text) {
  if (mText) {
    *mText += Text;
    return;
  }
  if (!mWriter) RaiseFor(FailureNumber::BadFileName, NativePath());
  try {
    if (mUnicode)
      mWriter->Write(Text);
    else
      mWriter->Write(OneByteEach(Text));
  } catch (...) {
    mWriter.reset();  // or else a later `Close` would pass off the part as the whole
    throw;
  }
}

void FileSystemObject::WriteLine(std::string_view Text) {
  WriteText(Text);
  WriteText("\n");
}

void FileSystemObject::Close() {
  mText.reset();
  if (const auto writer = std::move(mWriter)) writer->Close();
}

void FileSystemObject::Delete() {
  const auto path = ExistingFile();
  Files().RemoveFile(path);
  DiskNames::Current().NoteRemoved(path);
}

void FileSystemObject::CopyTo(const FileSystemObject& Target) const {
  const auto target = RequirePlace(Target.FullName());
  Files().CopyFile(ExistingFile(), target);
  DiskNames::Current().NoteCreated(target);
}

std::vector<Ref<FileSystemObject>> FileSystemObject::FindFiles(std::string_view Pattern) const {
  std::vector<Ref<FileSystemObject>> found;
  if (!DirectoryExists()) return found;
  const auto folder = Path();
  for (const auto& entry : Files().ListDirectory(*OnDisk(folder.empty() ? ".\\" : folder))) {
    const bool hasForm = entry.name.find('\\') == std::string::npos;  // else no path in Windows form can name it
    if (!entry.isDirectory && hasForm && detail::MatchesPattern(entry.name, Pattern))
      found.push_back(New<FileSystemObject>(folder + entry.name));
  }
  std::stable_sort(found.begin(), found.end(), [](const auto& left, const auto& right) {
    return CompareIgnoringCase(left->mFullName, right->mFullName) < 0;
  });
  return found;
}

std::string FileSystemObject::NativePath() const {
  const auto fullName = FullName();
  const auto path = OnDisk(fullName);
  return path ? *path : detail::WithSlashes(fullName);
}

const TypeInfo& FileSystemObject::StaticType() {
  using F = FileSystemObject;
  static const TypeInfo type = Describe<F>("FileSystemObject")
                                   .Property<&F::FullName, &F::SetFullName>("FullName")
                                   .ReadOnly<&F::FullName>("FullFilename")
                                   .Property<&F::Path, &F::SetPath>("Path")
                                   .Property<&F::BaseName, &F::SetBaseName>("BaseName")
                                   .Property<&F::Extension, &F::SetExtension>("Extension")
                                   .ReadOnly<&F::NameWithExtension>("NameWithExtension")
                                   .ReadOnly<&F::RelativeName>("RelativeName")
                                   .ReadOnly<&F::LongName>("LongName")
                                   .ReadOnly<&F::FileExists>("FileExists")
                                   .ReadOnly<&F::DirectoryExists>("DirectoryExists")
                                   .ReadOnly<&F::ReadOnly>("ReadOnly")
                                   .Done();
  return type;
}

DirectoryCacheScope::DirectoryCacheScope() {
  DiskNames::Current().BeginCaching();
}

DirectoryCacheScope::~DirectoryCacheScope() {
  DiskNames::Current().EndCaching();
}

}  // namespace quillbook
