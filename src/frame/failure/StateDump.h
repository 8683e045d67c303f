// What only the reporter needs of the state dump.
#pragma once

#include <string>

#include "quillbook/frame/FailureReporter.h"
#include "quillbook/frame/Procedure.h"

namespace quillbook::detail {

/// Marks that a dump is being made on this thread. A getter that fails inside a dump reports too; that report must not
/// dump the same object again, or it would never end.
class DumpScope {
 public:
  DumpScope() noexcept { ++mCount; }
  ~DumpScope() { --mCount; }
  DumpScope(const DumpScope&) = delete;
  DumpScope& operator=(const DumpScope&) = delete;
  [[nodiscard]] bool IsOutermost() const noexcept { return mCount == 1; }

 private:
  static inline thread_local int mCount = 0;
};

/// What the dump hands down as depth at its start.
inline constexpr int AllDepths = 99;

/// All variables of a module as text.
[[nodiscard]] std::string DumpModuleVariables(const Module& module);

}  // namespace quillbook::detail
