#include "cli/Journal.h"

#include <fmt/format.h>
#include <unistd.h>

#include <utility>

#include "cli/Json.h"
#include "quillbook/base/Failure.h"
#include "quillbook/frame/FailureReporter.h"
#include "quillbook/platform/ConsoleMessageBox.h"

namespace quillbook::cli {
namespace {

constexpr int kButtonsMask = 7;

bool SomebodyAnswers() {
  return isatty(STDIN_FILENO) == 1 && isatty(STDERR_FILENO) == 1;
}

/// The answer that lets the work go on. Retrying is not among them: what failed would fail for ever.
int GoingOn(int Buttons) {
  switch (Buttons & kButtonsMask) {
    case MessageBox::YesNo:
    case MessageBox::YesNoCancel: return MessageBox::Yes;
    case MessageBox::AbortRetryIgnore: return MessageBox::Ignore;
    case MessageBox::RetryCancel: return MessageBox::Cancel;
    default: return MessageBox::Ok;
  }
}

std::string_view RemedyFor(FailureNumber number) {
  switch (number) {
    case FailureNumber::DiskFull: return "make room on the disk";
    case FailureNumber::PermissionDenied: return "check who may read and write there";
    case FailureNumber::FileNotFound:
    case FailureNumber::PathFileAccess:
    case FailureNumber::PathNotFound:
    case FailureNumber::BadFileName: return "check the path";
    case FailureNumber::DeviceError: return "check the disk";
    case FailureNumber::OutOfStackSpace: return "make the nesting less deep";
    default: return "report this as a fault of Quillbook";
  }
}

/// What stands behind a label of a failure report.
std::string_view LineOf(std::string_view report, std::string_view label) {
  const auto at = report.find(label);
  if (at == std::string_view::npos) return {};
  report.remove_prefix(at + label.size());
  return report.substr(0, report.find_first_of("\r\n"));
}

}  // namespace

void Journal::Error(std::string_view code, std::string_view what, std::string_view remedy) {
  mTerminal.Error(what, remedy);
  mMessages.push_back({"error", std::string(code), OneLine(what)});
  ++mErrors;
}

void Journal::Warning(std::string_view code, std::string_view what) {
  mTerminal.Warning(what);
  mMessages.push_back({"warning", std::string(code), OneLine(what)});
}

void WriteMessages(JsonWriter& json, const std::vector<Message>& messages) {
  json.BeginArray("messages");
  for (const auto& message : messages)
    json.BeginObject()
        .Member("level", message.level)
        .Member("code", message.code)
        .Member("message", message.text)
        .EndObject();
  json.EndArray();
}

Answers::Answers(Journal& journal, std::string subject, bool yes)
    : mJournal(journal), mSubject(subject.empty() ? std::move(subject) : subject + ": "), mYes(yes) {}

int Answers::Show(std::string_view Prompt, int Buttons, std::string_view Title) {
  if (Title == "Application Error") {
    ReportFailure(Prompt);
    return Ok;
  }
  if ((Buttons & kButtonsMask) != OkOnly) return AnswerQuestion(Prompt, Buttons, Title);
  // A question that was answered by no has been told already; what follows from it is no news.
  if (!mRefused) mJournal.Error(mCommand + ".notice", mSubject + std::string(Prompt));
  return Ok;
}

void Answers::ReportFailure(std::string_view report) {
  const auto& failure = fltnVariables();
  const auto code = fmt::format("failure.{}", failure.fltnErrorNumber);
  const auto what = fmt::format("{}{} ({}.{})", mSubject, failure.fltnErrorDescription, LineOf(report, "Module: "),
                                LineOf(report, "Procedure: "));
  if (mFailuresAreWarnings)
    mJournal.Warning(code, what);
  else
    mJournal.Error(code, what, RemedyFor(static_cast<FailureNumber>(failure.fltnErrorNumber)));
}

int Answers::AnswerQuestion(std::string_view Prompt, int Buttons, std::string_view Title) {
  if (mYes || (mCreateOutputFolder && Title == "Path does not exist")) return GoingOn(Buttons);
  if (SomebodyAnswers()) {
    mJournal.Screen().ClearProgress();
    return ConsoleMessageBox().Show(OneLine(Prompt), Buttons, Title);
  }
  mRefused = true;
  mJournal.Error(mCommand + ".question", fmt::format("{}there is nobody to answer: {}", mSubject, Prompt),
                 "run it in a terminal, or with --yes");
  return SafeAnswer(Buttons);
}

}  // namespace quillbook::cli
