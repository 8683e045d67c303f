#include "platform/FileWriters.h"

#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>

#include "platform/SystemFailure.h"

namespace quillbook::detail {

namespace {

void FlushToDisk(const Descriptor& file, const std::string& path) {
  if (::fsync(file.Number()) != 0 && errno != EINVAL && errno != EROFS) RaiseSystemFailure(errno, path);
}

/// Makes sure that a file has room to grow to a size. Failure 61 if it can't; the file then stays as it was.
void ReserveRoom(const Descriptor& file, off_t size, const std::string& path) {
  struct stat status {};
  if (::fstat(file.Number(), &status) != 0) RaiseSystemFailure(errno, path);
  if (size <= status.st_size) return;
  const int error = ::posix_fallocate(file.Number(), status.st_size, size - status.st_size);
  const bool noRoom = error == ENOSPC || error == EDQUOT || error == EFBIG;
  if (!noRoom) return;  // not every file can be asked
  if (::ftruncate(file.Number(), status.st_size) != 0) errno = 0;
  RaiseSystemFailure(error, path);
}

/// Makes the new name itself last. The bytes are safe by then, so a folder that can't be flushed is no failure.
void FlushFolder(const std::string& path) {
  const Descriptor folder(::open(FolderOf(path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (folder.IsOpen()) static_cast<void>(::fsync(folder.Number()));
}

std::string NewName() {
  constexpr std::string_view letters = "0123456789abcdefghijklmnopqrstuvwxyz";
  std::uint64_t number = 0;
  if (::getrandom(&number, sizeof number, 0) != sizeof number) number = static_cast<std::uint64_t>(::getpid());
  std::string name;
  for (int i = 0; i < 10; ++i, number /= letters.size()) name += letters[number % letters.size()];
  return name;
}

}  // namespace

void WriteAll(const Descriptor& file, std::string_view bytes, const std::string& path) {
  while (!bytes.empty()) {
    const auto count = ::write(file.Number(), bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) RaiseSystemFailure(count == 0 ? ENOSPC : errno, path);
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
}

Descriptor OpenNewFile(const std::string& folder, std::string_view prefix, std::string_view suffix, unsigned mode,
                       std::string& path) {
  constexpr int attempts = 100;
  Descriptor file;
  for (int i = 0; i < attempts && !file.IsOpen(); ++i) {
    path = folder + "/" + std::string(prefix) + NewName() + std::string(suffix);
    file = Descriptor(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
    if (!file.IsOpen() && errno != EEXIST) break;
  }
  return file;
}

std::string TemporaryPrefix(const std::string& path) {
  constexpr std::size_t longestName = 200;  // names end at 255 bytes, and the rest of the new name needs some of them
  const auto name = path.find_last_of('/') + 1;
  std::string prefix(".");
  return prefix.append(path, name, longestName) += '.';
}

void KeepOwnerAndMode(const Descriptor& file, const std::string& old) {
  struct stat status {};
  if (::stat(old.c_str(), &status) != 0) return;
  struct stat created {};
  const bool known = ::fstat(file.Number(), &created) == 0;
  if (known && (created.st_uid != status.st_uid || created.st_gid != status.st_gid)) {
    // Only a privileged user may give files away; for others the new version is their own.
    if (::fchown(file.Number(), status.st_uid, status.st_gid) != 0) errno = 0;
  }
  if (::fchmod(file.Number(), status.st_mode & 07777) != 0) errno = 0;
}

void DirectWriter::Close() {
  if (!mFile.Close()) RaiseSystemFailure(errno, mPath);
}

ReplacingWriter::~ReplacingWriter() {
  if (!mTemporary.empty()) ::unlink(mTemporary.c_str());
}

void ReplacingWriter::Close() {
  KeepOwnerAndMode(mFile, mPath);
  if (mFlush == Flush::Yes) FlushToDisk(mFile, mPath);
  if (!mFile.Close()) RaiseSystemFailure(errno, mPath);
  if (std::rename(mTemporary.c_str(), mPath.c_str()) != 0) RaiseSystemFailure(errno, mPath);
  mTemporary.clear();
  if (mFlush == Flush::Yes) FlushFolder(mPath);
  mLock = Descriptor();
}

void CollectingWriter::Close() {
  const auto size = static_cast<off_t>(mBytes.size());
  ReserveRoom(mFile, size, mPath);  // first: what has been overwritten can't be had back
  WriteAll(mFile, mBytes, mPath);
  if (::ftruncate(mFile.Number(), size) != 0) RaiseSystemFailure(errno, mPath);
  FlushToDisk(mFile, mPath);
  if (!mFile.Close()) RaiseSystemFailure(errno, mPath);
  mLock = Descriptor();
}

}  // namespace quillbook::detail
