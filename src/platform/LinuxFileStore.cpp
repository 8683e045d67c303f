#include "quillbook/platform/LinuxFileStore.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <system_error>
#include <vector>

#include "platform/Descriptor.h"
#include "platform/FileWriters.h"
#include "platform/SystemFailure.h"

namespace quillbook {

namespace {

using detail::Descriptor;
using detail::RaiseSystemFailure;

constexpr unsigned newFileMode = 0666;  // less what the user's mask takes away

/// Mapping small pages takes longer than reading what goes into them.
void PreferLargePages(char* memory, std::size_t size) noexcept {
  constexpr std::size_t largePage = 2 * 1024 * 1024;
  void* start = memory;
  if (std::align(largePage, largePage, start, size)) ::madvise(start, size / largePage * largePage, MADV_HUGEPAGE);
}

Descriptor Open(const std::string& path, int flags, unsigned mode = newFileMode) {
  // A NUL in a name would end it early and so name another file.
  if (path.find('\0') != std::string::npos) RaiseSystemFailure(EINVAL, path.substr(0, path.find('\0')));
  return Descriptor(::open(path.c_str(), flags | O_CLOEXEC, mode));
}

Descriptor OpenForReading(const std::string& path, struct stat& status) {
  auto file = Open(path, O_RDONLY);
  if (!file.IsOpen() || ::fstat(file.Number(), &status) != 0) RaiseSystemFailure(errno, path);
  if (S_ISDIR(status.st_mode)) RaiseSystemFailure(EISDIR, path);
  return file;
}

std::size_t Read(const Descriptor& file, char* to, std::size_t size, const std::string& path) {
  while (true) {
    const auto count = ::read(file.Number(), to, size);
    if (count >= 0) return static_cast<std::size_t>(count);
    if (errno != EINTR) RaiseSystemFailure(errno, path);
  }
}

/// What may be written: no folder, and nothing whose owner has switched writing off.
void RequireWritable(const FileStatus& status, const std::string& path) {
  if (status.isDirectory) RaiseSystemFailure(EISDIR, path);
  if (status.readOnly) RaiseSystemFailure(EACCES, path);
}

/// The file behind a link: it is to be replaced, not the link.
std::string RealPath(const std::string& path) {
  const std::unique_ptr<char, decltype(&std::free)> real(::realpath(path.c_str(), nullptr), &std::free);
  return real ? std::string(real.get()) : path;
}

/// A lock on the file that other exclusive writers respect.
Descriptor LockFile(const std::string& path) {
  auto file = Open(path, O_RDWR);
  if (!file.IsOpen() || ::flock(file.Number(), LOCK_EX | LOCK_NB) != 0) RaiseSystemFailure(errno, path);
  return file;
}

struct CloseFolder {
  void operator()(DIR* folder) const { ::closedir(folder); }
};

/// A writer whose `Close` puts a new version in the place of `target`. Failures name `path`.
std::unique_ptr<FileWriter> OpenReplacement(const std::string& target, const std::string& path, Descriptor lock,
                                            detail::Flush flush) {
  std::string temporary;
  auto file =
      detail::OpenNewFile(detail::FolderOf(target), detail::TemporaryPrefix(target), ".tmp", newFileMode, temporary);
  if (file.IsOpen())
    return std::make_unique<detail::ReplacingWriter>(std::move(file), temporary, target, std::move(lock), flush);
  const int error = errno;
  const bool inPlace = error == EACCES || error == EPERM || error == EROFS;
  if (inPlace) file = Open(target, O_WRONLY);
  if (!file.IsOpen()) RaiseSystemFailure(error, path);
  return std::make_unique<detail::CollectingWriter>(std::move(file), target, std::move(lock));
}

class DescriptorLock final : public FileLock {
 public:
  explicit DescriptorLock(Descriptor file) : mFile(std::move(file)) {}

 private:
  Descriptor mFile;
};

}  // namespace

FileStatus LinuxFileStore::GetStatus(const std::string& path) const {
  struct stat status {};
  if (path.find('\0') != std::string::npos || ::stat(path.c_str(), &status) != 0) return {};
  return {true, S_ISDIR(status.st_mode), (status.st_mode & S_IWUSR) == 0, static_cast<std::uint64_t>(status.st_size)};
}

std::string LinuxFileStore::ReadFile(const std::string& path) const {
  struct stat status {};
  const auto file = OpenForReading(path, status);
  // Through a buffer that stays in the processor's cache, so that the bytes go to their place, cold memory, only once.
  std::vector<char> buffer(std::clamp<std::size_t>(static_cast<std::size_t>(status.st_size), 4096, 256 * 1024));
  std::string bytes;
  bytes.reserve(static_cast<std::size_t>(status.st_size));  // files grow, and not of all the size is known
  PreferLargePages(bytes.data(), bytes.capacity());
  while (const auto count = Read(file, buffer.data(), buffer.size(), path)) bytes.append(buffer.data(), count);
  return bytes;
}

std::vector<DirectoryEntry> LinuxFileStore::ListDirectory(const std::string& path) const {
  const std::unique_ptr<DIR, CloseFolder> folder(::opendir(path.c_str()));
  if (!folder) RaiseSystemFailure(errno, path);
  std::vector<DirectoryEntry> entries;
  while (const auto* entry = ::readdir(folder.get())) {
    std::string name = entry->d_name;
    if (name == "." || name == "..") continue;
    const bool known = entry->d_type != DT_LNK && entry->d_type != DT_UNKNOWN;
    const bool isDirectory = known ? entry->d_type == DT_DIR : GetStatus(path + "/" + name).isDirectory;
    entries.push_back({std::move(name), isDirectory});
  }
  std::sort(entries.begin(), entries.end(), [](const auto& a, const auto& b) { return a.name < b.name; });
  return entries;
}

void LinuxFileStore::CreateDirectories(const std::string& path) {
  if (GetStatus(path).isDirectory) return;
  std::error_code error;
  std::filesystem::create_directories(path, error);
  if (error) RaiseSystemFailure(error.value() == ENOTDIR ? EEXIST : error.value(), path);
}

std::unique_ptr<FileWriter> LinuxFileStore::CreateFile(const std::string& path) {
  RequireWritable(GetStatus(path), path);
  auto file = Open(path, O_WRONLY | O_CREAT | O_TRUNC);
  if (!file.IsOpen()) RaiseSystemFailure(errno, path);
  return std::make_unique<detail::DirectWriter>(std::move(file), path);
}

std::unique_ptr<FileWriter> LinuxFileStore::ReplaceFile(const std::string& path, bool exclusive) {
  const auto target = RealPath(path);
  const auto status = GetStatus(target);
  RequireWritable(status, path);
  if (status.exists && ::access(target.c_str(), W_OK) != 0) RaiseSystemFailure(errno, path);
  auto lock = exclusive && status.exists ? LockFile(target) : Descriptor();
  return OpenReplacement(target, path, std::move(lock), detail::Flush::Yes);
}

std::string LinuxFileStore::CreateUniqueFile(const std::string& directory, std::string_view prefix,
                                             std::string_view suffix) {
  constexpr unsigned onlyThisUser = 0600;
  std::string path;
  const auto file = detail::OpenNewFile(directory, prefix, suffix, onlyThisUser, path);
  if (!file.IsOpen()) RaiseSystemFailure(errno, path);
  return path;
}

void LinuxFileStore::RenameFile(const std::string& from, const std::string& to) {
  if (std::rename(from.c_str(), to.c_str()) != 0) RaiseSystemFailure(errno, from);
}

void LinuxFileStore::RemoveFile(const std::string& path) {
  RequireWritable(GetStatus(path), path);
  if (::unlink(path.c_str()) != 0) RaiseSystemFailure(errno, path);
}

void LinuxFileStore::CopyFile(const std::string& from, const std::string& to) {
  struct stat source {};
  const auto file = OpenForReading(from, source);
  const auto target = RealPath(to);
  struct stat old {};
  const bool exists = ::stat(target.c_str(), &old) == 0;
  if (exists && old.st_dev == source.st_dev && old.st_ino == source.st_ino) return;
  RequireWritable(GetStatus(target), to);

  const auto copy = OpenReplacement(target, to, {}, detail::Flush::No);
  std::array<char, 64 * 1024> buffer;
  while (const auto count = Read(file, buffer.data(), buffer.size(), from)) copy->Write({buffer.data(), count});
  copy->Close();
}

std::unique_ptr<FileLock> LinuxFileStore::WaitForLock(const std::string& path) {
  auto file = Open(path, O_RDWR | O_CREAT);
  if (!file.IsOpen()) RaiseSystemFailure(errno, path);
  while (::flock(file.Number(), LOCK_EX) != 0)
    if (errno != EINTR) RaiseSystemFailure(errno, path);
  return std::make_unique<DescriptorLock>(std::move(file));
}

bool LinuxFileStore::IsLocked(const std::string& path) const {
  auto file = Open(path, O_RDWR);
  if (!file.IsOpen()) {
    if (errno == ETXTBSY) return true;
    file = Open(path, O_RDONLY);
  }
  if (!file.IsOpen()) return false;
  if (::flock(file.Number(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) return true;
  struct flock range {};  // the other kind of lock that programs take
  range.l_type = F_WRLCK;
  range.l_whence = SEEK_SET;
  return ::fcntl(file.Number(), F_GETLK, &range) == 0 && range.l_type != F_UNLCK;
}

}  // namespace quillbook
