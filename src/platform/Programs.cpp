#include "platform/Programs.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <thread>

#include "platform/ChildProcess.h"
#include "platform/Descriptor.h"
#include "quillbook/base/Text.h"

namespace quillbook::detail {
namespace {

/// A file without a name: unlike a pipe it never makes writer and reader wait for each other.
Descriptor MemoryFile() {
  return Descriptor(::memfd_create("quillbook", MFD_CLOEXEC));
}

bool WriteAll(const Descriptor& file, std::string_view bytes) {
  while (!bytes.empty()) {
    const auto count = ::write(file.Number(), bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  return ::lseek(file.Number(), 0, SEEK_SET) == 0;
}

std::optional<std::string> ReadWhole(const Descriptor& file) {
  struct stat status {};
  if (::fstat(file.Number(), &status) != 0) return std::nullopt;
  std::string bytes(static_cast<std::size_t>(status.st_size), '\0');
  std::size_t done = 0;
  while (done < bytes.size()) {
    const auto count = ::pread(file.Number(), bytes.data() + done, bytes.size() - done, static_cast<off_t>(done));
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return std::nullopt;
    done += static_cast<std::size_t>(count);
  }
  return bytes;
}

/// What a program gets in place of this process's own: its files, its session, its signals.
class Surroundings {
 public:
  Surroundings(const Descriptor& input, const Descriptor& output) {
    ::posix_spawn_file_actions_init(&mFiles);
    ::posix_spawn_file_actions_adddup2(&mFiles, input.Number(), STDIN_FILENO);
    ::posix_spawn_file_actions_adddup2(&mFiles, output.Number(), STDOUT_FILENO);
    ::posix_spawn_file_actions_addopen(&mFiles, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    ::posix_spawnattr_init(&mAttributes);
    ::posix_spawnattr_setflags(&mAttributes, POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK);
    sigset_t none;
    ::sigemptyset(&none);
    ::posix_spawnattr_setsigmask(&mAttributes, &none);
  }
  Surroundings(const Surroundings&) = delete;
  Surroundings& operator=(const Surroundings&) = delete;
  ~Surroundings() {
    ::posix_spawnattr_destroy(&mAttributes);
    ::posix_spawn_file_actions_destroy(&mFiles);
  }
  [[nodiscard]] std::optional<pid_t> Start(const std::string& program, char* const* arguments) const {
    pid_t child = 0;
    if (::posix_spawn(&child, program.c_str(), &mFiles, &mAttributes, arguments, environ) != 0) return std::nullopt;
    return child;
  }

 private:
  posix_spawn_file_actions_t mFiles{};
  posix_spawnattr_t mAttributes{};
};

/// True if the program ends with status 0 in time. Afterwards it has ended in any case.
bool EndsWell(ChildProcess child, std::chrono::milliseconds patience) {
  constexpr std::chrono::milliseconds longestPause{20};
  const auto end = std::chrono::steady_clock::now() + patience;
  for (std::chrono::milliseconds pause{1}; !child.HasEnded(); pause = std::min(pause * 2, longestPause)) {
    if (std::chrono::steady_clock::now() >= end) {
      child.SignalSession(SIGKILL);
      break;
    }
    std::this_thread::sleep_for(pause);
  }
  return child.ExitCode() == 0;
}

}  // namespace

std::string FindProgram(const std::string& name) {
  if (name.find('/') != std::string::npos) return ::access(name.c_str(), X_OK) == 0 ? name : "";
  const char* folders = std::getenv("PATH");
  for (const auto folder : Split(folders ? folders : "", ':')) {
    auto path = std::string(folder) + "/" + name;
    if (!folder.empty() && ::access(path.c_str(), X_OK) == 0) return path;
  }
  return {};
}

std::vector<std::string> SplitCommandLine(std::string_view line) {
  std::vector<std::string> parameters;
  bool quoted = false;
  bool inside = false;
  for (const char c : line) {
    if (c == ' ' && !quoted) {
      inside = false;
      continue;
    }
    if (!inside) parameters.emplace_back();
    inside = true;
    if (c == '"')
      quoted = !quoted;
    else
      parameters.back() += c;
  }
  return parameters;
}

bool StartDetached(const std::string& program, const std::vector<std::string>& parameters) {
  const auto arguments = Arguments(program, parameters);
  const auto child = ::fork();
  if (child < 0) return false;
  if (child == 0) {
    const auto grandchild = ::fork();
    if (grandchild != 0) ::_exit(grandchild < 0 ? 1 : 0);
    ::setsid();
    const int nothing = ::open("/dev/null", O_RDWR);
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) ::dup2(nothing, standard);
    ::execv(program.c_str(), arguments.data());
    ::_exit(1);
  }
  return ChildProcess(child).ExitCode() == 0;
}

std::optional<std::string> RunProgram(const std::string& program, const std::vector<std::string>& parameters,
                                      std::string_view input, std::chrono::milliseconds patience) {
  const auto in = MemoryFile();
  const auto out = MemoryFile();
  if (!in.IsOpen() || !out.IsOpen() || !WriteAll(in, input)) return std::nullopt;
  const auto child = Surroundings(in, out).Start(program, Arguments(program, parameters).data());
  if (!child || !EndsWell(ChildProcess(*child), patience)) return std::nullopt;
  return ReadWhole(out);
}

}  // namespace quillbook::detail
