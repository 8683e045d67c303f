// What a build came to.
#pragma once

#include <cstdint>
#include <string>

#include "quillbook/base/Object.h"

namespace quillbook {

/// Result of `QBProject::Build`, also kept on the build profile. Plain data: setting a member tells nobody.
class BuildResult final : public LibraryObject {
 public:
  /// The build was cancelled, by the user or because a precondition failed; then the other members mean nothing.
  bool Cancelled = false;
  /// The help compiler's log; blank if it gave no warnings or errors.
  std::string CompilerLog;
  /// Result of compiling the help file as the host gives it; 0 where nothing was compiled.
  std::int32_t HelpCompileResult = 0;

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }
};

}  // namespace quillbook
