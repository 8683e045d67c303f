// Why an edit isn't made.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include "cli/ExitCode.h"

namespace quillbook::cli {

/// What a user asked for can't be done. Raised before anything is written, and told in one line at the end of the
/// command.
class Refusal : public std::runtime_error {
 public:
  /// `code` is stable and for programs, `remedy` says what to do.
  Refusal(std::string_view code, const std::string& what, std::string remedy, int exitCode = BadInput)
      : std::runtime_error(what), mCode(code), mRemedy(std::move(remedy)), mExitCode(exitCode) {}

  /// The file that it is about, if that isn't the project.
  [[nodiscard]] Refusal About(std::string file) && {
    mFile = std::move(file);
    return std::move(*this);
  }

  [[nodiscard]] const std::string& File() const noexcept { return mFile; }
  [[nodiscard]] const std::string& Code() const noexcept { return mCode; }
  [[nodiscard]] const std::string& Remedy() const noexcept { return mRemedy; }
  [[nodiscard]] int ExitCode() const noexcept { return mExitCode; }

 private:
  std::string mFile;
  std::string mCode;
  std::string mRemedy;
  int mExitCode;
};

}  // namespace quillbook::cli
