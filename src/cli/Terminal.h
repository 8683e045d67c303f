// What the program writes for people: errors, warnings, progress.
#pragma once

#include <chrono>
#include <string>
#include <string_view>

namespace quillbook::cli {

/// The error output. Colours and progress appear on a terminal only; colours never with NO_COLOR.
class Terminal {
 public:
  explicit Terminal(bool quiet);
  Terminal(const Terminal&) = delete;
  Terminal& operator=(const Terminal&) = delete;
  /// Takes the progress line away.
  ~Terminal() { ClearProgress(); }

  /// "quillbook: what; remedy", in one line. `remedy` may be empty.
  static void PrintError(std::string_view what, std::string_view remedy);

  void Error(std::string_view what, std::string_view remedy = {});
  /// Nothing where the user asked for quiet.
  void Warning(std::string_view what);
  /// Replaces the progress line; not more often than a reader can follow.
  void Progress(std::string_view what);
  void ClearProgress();

 private:
  bool mQuiet;
  bool mShowProgress;
  bool mProgressShown = false;
  std::chrono::steady_clock::time_point mLastProgress;
};

/// Writes to standard output. False if that failed, as on a full disk, which is told, or on a
/// closed pipe, which is not.
[[nodiscard]] bool PrintOutput(std::string_view text);

/// A message for people in one line, with paths as this system writes them.
[[nodiscard]] std::string OneLine(std::string_view message);

}  // namespace quillbook::cli
