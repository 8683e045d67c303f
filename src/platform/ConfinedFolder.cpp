#include "quillbook/platform/ConfinedFolder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>
#include <vector>

#include "platform/SystemFailure.h"
#include "quillbook/base/Failure.h"
#include "quillbook/base/Text.h"
#include "quillbook/platform/Platform.h"

namespace quillbook {

namespace {

/// A file descriptor that is closed at the end.
class Descriptor {
 public:
  explicit Descriptor(int number) : mNumber(number) {}
  Descriptor(Descriptor&& other) noexcept : mNumber(std::exchange(other.mNumber, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(mNumber, other.mNumber);
    return *this;
  }
  ~Descriptor() {
    if (mNumber >= 0) ::close(mNumber);
  }
  [[nodiscard]] int Number() const noexcept { return mNumber; }
  [[nodiscard]] int Release() noexcept { return std::exchange(mNumber, -1); }

 private:
  int mNumber;
};

class ConfinedWriter final : public FileWriter {
 public:
  ConfinedWriter(Descriptor file, std::string path) : mFile(std::move(file)), mPath(std::move(path)) {}

  void Write(std::string_view bytes) override {
    while (!bytes.empty()) {
      const auto written = ::write(mFile.Number(), bytes.data(), bytes.size());
      if (written < 0 && errno == EINTR) continue;
      if (written < 0) detail::RaiseSystemFailure(errno, mPath);
      bytes.remove_prefix(static_cast<std::size_t>(written));
    }
  }
  void Close() override {
    if (::close(mFile.Release()) != 0) detail::RaiseSystemFailure(errno, mPath);
  }

 private:
  Descriptor mFile;
  std::string mPath;
};

/// The names on the way to a file. Failure 52 for one that leads elsewhere.
std::vector<std::string> SafeParts(std::string_view name) {
  std::string slashed(name);
  std::replace(slashed.begin(), slashed.end(), '\\', '/');
  std::vector<std::string> parts;
  for (const auto part : Split(slashed, '/')) {
    if (part.empty() || part == "." || part == ".." || part.find('\0') != std::string_view::npos)
      throw Failure(FailureNumber::BadFileName, "The name '" + std::string(name) + "' leads outside the folder");
    parts.emplace_back(part);
  }
  return parts;
}

}  // namespace

ConfinedFolder::ConfinedFolder(const std::string& path) : mPath(path) {
  Platform::Current().Files().CreateDirectories(path);
  mFolder = ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (mFolder < 0) detail::RaiseSystemFailure(errno, path);
}

ConfinedFolder::~ConfinedFolder() {
  if (mFolder >= 0) ::close(mFolder);
}

std::unique_ptr<FileWriter> ConfinedFolder::CreateFile(std::string_view name) {
  const auto parts = SafeParts(name);
  auto path = mPath;
  Descriptor folder(::openat(mFolder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (folder.Number() < 0) detail::RaiseSystemFailure(errno, path);
  for (std::size_t i = 0; i + 1 < parts.size(); ++i) {
    path += "/" + parts[i];
    if (::mkdirat(folder.Number(), parts[i].c_str(), 0777) != 0 && errno != EEXIST)
      detail::RaiseSystemFailure(errno, path);
    // No link is followed: it could lead anywhere.
    Descriptor next(::openat(folder.Number(), parts[i].c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (next.Number() < 0) detail::RaiseSystemFailure(errno, path);
    folder = std::move(next);
  }
  path += "/" + parts.back();
  Descriptor file(
      ::openat(folder.Number(), parts.back().c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW | O_CLOEXEC, 0666));
  if (file.Number() < 0) detail::RaiseSystemFailure(errno, path);
  return std::make_unique<ConfinedWriter>(std::move(file), path);
}

}  // namespace quillbook
