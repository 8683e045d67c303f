// What happened during a command: shown as it arises, and kept for the report.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "cli/Terminal.h"
#include "quillbook/platform/MessageBox.h"

namespace quillbook::cli {

class JsonWriter;

struct Message {
  std::string level;  ///< "error" or "warning"
  std::string code;   ///< stable, for programs
  std::string text;   ///< one line, for people
};

/// Errors and warnings of one command.
class Journal {
 public:
  explicit Journal(bool quiet) : mTerminal(quiet) {}

  /// `code` is stable and for programs; `remedy`, what to do, may be empty.
  void Error(std::string_view code, std::string_view what, std::string_view remedy = {});
  void Warning(std::string_view code, std::string_view what);

  [[nodiscard]] const std::vector<Message>& Messages() const noexcept { return mMessages; }
  [[nodiscard]] std::size_t Errors() const noexcept { return mErrors; }
  [[nodiscard]] std::size_t Warnings() const noexcept { return mMessages.size() - mErrors; }
  [[nodiscard]] Terminal& Screen() noexcept { return mTerminal; }

 private:
  Terminal mTerminal;
  std::vector<Message> mMessages;
  std::size_t mErrors = 0;
};

/// The member "messages" of a report.
void WriteMessages(JsonWriter& json, const std::vector<Message>& messages);

/// Takes the library's message boxes: reports of failures and notices become errors of the journal, questions are
/// answered by "--yes", by the person at the terminal, or so that nothing is changed.
class Answers final : public MessageBox {
 public:
  /// `subject`, such as the project file, stands before each message; it may be empty. The journal outlives this
  /// object.
  Answers(Journal& journal, std::string subject, bool yes);

  /// Failures in reading single records are warnings: the rest of the project is there.
  void TakeFailuresAsWarnings(bool value) noexcept { mFailuresAreWarnings = value; }
  /// The command whose codes messages get: "build.question", "build.notice".
  void SpeakFor(std::string_view command) { mCommand = command; }
  /// From now on the output folder is created without asking.
  void AllowCreatingOutputFolder() noexcept { mCreateOutputFolder = true; }

  int Show(std::string_view Prompt, int Buttons, std::string_view Title) override;

 private:
  void ReportFailure(std::string_view report);
  int AnswerQuestion(std::string_view Prompt, int Buttons, std::string_view Title);

  Journal& mJournal;
  std::string mSubject;
  std::string mCommand = "build";
  bool mYes;
  bool mFailuresAreWarnings = false;
  bool mCreateOutputFolder = false;
  bool mRefused = false;
};

}  // namespace quillbook::cli
