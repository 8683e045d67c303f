// A process that this one has started.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace quillbook::detail {

/// A command in the form in which the system takes it: the program, its parameters, and the end. It lives as long as
/// the texts.
[[nodiscard]] std::vector<char*> Arguments(const std::string& program, const std::vector<std::string>& parameters);

/// A process until it has ended. Whoever starts it asks for its end, so that the system can forget it.
class ChildProcess {
 public:
  explicit ChildProcess(pid_t id) noexcept : mId(id) {}

  void Signal(int number) const noexcept;
  /// Sends a signal to the process and all that it started, where it has a session of its own.
  void SignalSession(int number) const noexcept;
  [[nodiscard]] bool HasEnded() noexcept;
  /// Waits for the end. 128 and the signal's number for a process that was killed.
  [[nodiscard]] int ExitCode() noexcept;

 private:
  bool Wait(int options) noexcept;

  pid_t mId;
  int mStatus = 0;
  bool mEnded = false;
};

}  // namespace quillbook::detail
