#include "platform/ChildProcess.h"

#include <sys/wait.h>

#include <cerrno>
#include <csignal>

namespace quillbook::detail {

std::vector<char*> Arguments(const std::string& program, const std::vector<std::string>& parameters) {
  const auto plain = [](const std::string& text) { return const_cast<char*>(text.c_str()); };  // nobody changes them
  std::vector<char*> arguments{plain(program)};
  for (const auto& parameter : parameters) arguments.push_back(plain(parameter));
  arguments.push_back(nullptr);
  return arguments;
}

void ChildProcess::Signal(int number) const noexcept {
  ::kill(mId, number);
}

void ChildProcess::SignalSession(int number) const noexcept {
  ::kill(-mId, number);
}

bool ChildProcess::HasEnded() noexcept {
  return Wait(WNOHANG);
}

int ChildProcess::ExitCode() noexcept {
  (void)Wait(0);
  return WIFEXITED(mStatus) ? WEXITSTATUS(mStatus) : 128 + WTERMSIG(mStatus);
}

bool ChildProcess::Wait(int options) noexcept {
  while (!mEnded) {
    const auto found = ::waitpid(mId, &mStatus, options);
    if (found == 0) return false;
    mEnded = found == mId || errno != EINTR;
  }
  return true;
}

}  // namespace quillbook::detail
