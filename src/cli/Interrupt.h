// Ctrl-C as a request that the program asks for, not as its end.
#pragma once

namespace quillbook::cli {

/// While one lives, the first SIGINT or SIGTERM only sets a flag; a second one ends the program as usual.
class InterruptScope {
 public:
  InterruptScope();
  InterruptScope(const InterruptScope&) = delete;
  InterruptScope& operator=(const InterruptScope&) = delete;
  ~InterruptScope();

  [[nodiscard]] static bool Requested() noexcept;
};

}  // namespace quillbook::cli
