#include "cli/Interrupt.h"

#include <csignal>

namespace quillbook::cli {
namespace {

volatile std::sig_atomic_t requested = 0;

void Handle(int /*signal*/) {
  requested = 1;
}

void Install(int signal, void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;
  action.sa_flags = static_cast<int>(SA_RESETHAND);
  sigaction(signal, &action, nullptr);
}

}  // namespace

InterruptScope::InterruptScope() {
  Install(SIGINT, &Handle);
  Install(SIGTERM, &Handle);
}

InterruptScope::~InterruptScope() {
  Install(SIGINT, SIG_DFL);
  Install(SIGTERM, SIG_DFL);
}

bool InterruptScope::Requested() noexcept {
  return requested != 0;
}

}  // namespace quillbook::cli
