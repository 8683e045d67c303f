#include "platform/LoggedProgram.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>

#include "platform/ChildProcess.h"
#include "platform/Descriptor.h"

namespace quillbook {

namespace {

using ProgramRun = Desktop::ProgramRun;

constexpr std::size_t MostOutput = 4U << 20;
constexpr int AskEvery = 100;  // milliseconds
constexpr auto Grace = std::chrono::seconds(2);

/// What the system is told of the new process: its folder, nothing to read, one pipe for all that it prints.
class Arrangements {
 public:
  Arrangements(const std::string& folder, int output) {
    ::posix_spawn_file_actions_init(&mActions);
    ::posix_spawn_file_actions_addopen(&mActions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    ::posix_spawn_file_actions_adddup2(&mActions, output, STDOUT_FILENO);
    ::posix_spawn_file_actions_adddup2(&mActions, output, STDERR_FILENO);
    ::posix_spawn_file_actions_addclosefrom_np(&mActions, STDERR_FILENO + 1);
    if (!folder.empty()) ::posix_spawn_file_actions_addchdir_np(&mActions, folder.c_str());
  }
  Arrangements(const Arrangements&) = delete;
  Arrangements& operator=(const Arrangements&) = delete;
  ~Arrangements() { ::posix_spawn_file_actions_destroy(&mActions); }

  [[nodiscard]] const posix_spawn_file_actions_t* Get() const noexcept { return &mActions; }

 private:
  posix_spawn_file_actions_t mActions{};
};

/// 0, or the number of the error.
int Start(pid_t& child, const std::string& program, const std::vector<std::string>& parameters,
          const std::string& folder, int output) {
  const auto arguments = detail::Arguments(program, parameters);
  const Arrangements arrangements(folder, output);
  return ::posix_spawn(&child, program.c_str(), arrangements.Get(), nullptr, arguments.data(), ::environ);
}

/// Takes what is there. False at the end of the output.
bool ReadSome(int descriptor, std::string& output) {
  std::array<char, 16 * 1024> piece{};
  const auto count = ::read(descriptor, piece.data(), piece.size());
  if (count < 0) return errno == EINTR || errno == EAGAIN;
  const auto room = MostOutput - output.size();
  output.append(piece.data(), std::min(static_cast<std::size_t>(count), room));
  return count > 0;
}

/// Reads until the child prints no more. True if it was asked to stop; one that doesn't is killed. The end of the
/// child is the end, also if children of its own still hold the pipe.
bool Listen(detail::ChildProcess& child, int descriptor, std::string& output, const std::function<bool()>& goOn) {
  std::chrono::steady_clock::time_point deadline{};
  bool stopped = false;
  pollfd waiting{descriptor, POLLIN, 0};
  for (;;) {
    const auto ready = ::poll(&waiting, 1, AskEvery);
    if (ready > 0 && !ReadSome(descriptor, output)) return stopped;
    if (ready == 0 && child.HasEnded()) return stopped;
    if (stopped && std::chrono::steady_clock::now() > deadline) {
      child.Signal(SIGKILL);
      return true;
    }
    if (stopped || !goOn || goOn()) continue;
    stopped = true;
    deadline = std::chrono::steady_clock::now() + Grace;
    child.Signal(SIGTERM);
  }
}

}  // namespace

ProgramRun RunToItsEnd(const std::string& program, const std::vector<std::string>& parameters,
                       const std::string& folder, const std::function<bool()>& goOn) {
  ProgramRun run;
  std::array<int, 2> ends{};
  run.end = ProgramRun::End::NotRunnable;
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) return run;
  const detail::Descriptor reading(ends[0]);
  detail::Descriptor writing(ends[1]);
  pid_t id = 0;
  const auto error = Start(id, program, parameters, folder, writing.Number());
  writing = {};  // or else the pipe would never end
  if (error == ENOENT) run.end = ProgramRun::End::NotFound;
  if (error != 0) return run;
  detail::ChildProcess child(id);
  run.end = Listen(child, reading.Number(), run.output, goOn) ? ProgramRun::End::Stopped : ProgramRun::End::Finished;
  run.exitCode = child.ExitCode();
  return run;
}

}  // namespace quillbook
