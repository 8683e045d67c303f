#include "cli/edit/EditSession.h"

#include <fmt/format.h>

#include "cli/Losses.h"
#include "cli/ProjectFile.h"
#include "cli/edit/Refusal.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/platform/FileStore.h"
#include "quillbook/topics/Topics.h"

namespace quillbook::cli {
namespace {

std::string Placed(const Problem& problem) {
  return problem.line == 0 ? problem.message : fmt::format("line {}: {}", problem.line, problem.message);
}

[[noreturn]] void RefuseLosses(const std::vector<Problem>& lost) {
  const auto more = lost.size() == 1 ? std::string() : fmt::format(", and {} more", lost.size() - 1);
  throw Refusal("project.lossy", fmt::format("saving would lose what can't be read: {}{}", Placed(lost.front()), more),
                "see quillbook info, mend the file, or give --force");
}

/// The library writes as many scripts as a topic has style sheets, and gives the record up where they run out.
void RequireWritableTopics(const QBProject& project) {
  for (const auto& topic : *project.Topics) {
    if (topic->AllScripts()) continue;
    const auto scripts = topic->Scripts()->Count();
    if (scripts != 0 && scripts < topic->StyleSheets()->Count())
      throw Refusal("topic.scripts", fmt::format("topic '{}' has fewer scripts than style sheets", topic->Name()),
                    "a project file holds as many scripts as style sheets, or none; set its scripts");
  }
}

}  // namespace

EditSession::EditSession(const SaveOptions& options)
    : mOptions(options),
      mJournal(options.quiet),
      mAnswers(std::make_shared<Answers>(mJournal, options.project, options.yes)),
      mMessages(mAnswers) {
  mAnswers->SpeakFor("edit");
}

const Ref<QBProject>& EditSession::Open() {
  mAnswers->TakeFailuresAsWarnings(true);
  mProject = OpenProject(mOptions.project, mJournal);
  mAnswers->TakeFailuresAsWarnings(false);
  return mProject;
}

std::string EditSession::FileBytes() const {
  return Platform::Current().Files().ReadFile(AbsoluteNativePath(mOptions.project));
}

void EditSession::RequireWholeFile() {
  std::vector<Problem> lost;
  const auto prefix = mOptions.project.size() + 2;
  for (const auto& message : mJournal.Messages()) lost.push_back({message.code, message.text.substr(prefix), 0});
  const auto unread = lost.size();  // told already, as the library met them
  if (mProject->InvalidLiteProjectType)
    lost.push_back({"project.separate-files", "The project keeps parts in files of their own; they were not read", 0});
  for (const auto& topic : *mProject->Topics)
    if (!topic->AllScripts() && topic->Scripts()->Count() > topic->StyleSheets()->Count())
      lost.push_back({"topic.scripts", fmt::format("Topic '{}' has more scripts than style sheets", topic->Name()), 0});
  for (auto& problem : FindLosses(mProject->Filename->ReadAll())) lost.push_back(std::move(problem));
  if (lost.empty()) return;
  if (!mOptions.force) RefuseLosses(lost);
  for (auto at = unread; at < lost.size(); ++at)
    mJournal.Warning(lost[at].code, fmt::format("{}: not kept: {}", mOptions.project, Placed(lost[at])));
}

std::string EditSession::Render() {
  RequireWritableTopics(*mProject);
  const auto errors = mJournal.Errors();
  // Reading isn't the reverse of writing: it drops the time of day of a topic's dates, completes profiles, and more.
  // What is saved has been through it, so that the next save changes nothing else.
  mSettled = New<QBProject>();
  mSettled->Silent = true;  // a save that fails is told by us
  mSettled->Filename->SetFullName(mProject->Filename->FullName());
  mSettled->Load(mProject->Save());
  auto text = mSettled->Save() + "\n";
  if (mJournal.Errors() != errors)
    throw Refusal("project.not-saved", "the project can't be written whole", "the file is as it was", NotBuilt);
  return text;
}

void EditSession::Save() {
  (void)Render();
  if (mSettled->SaveToDisk()) return;
  if (mProject->ReadOnly()) throw Refusal("project.read-only", "the file is read-only", "make it writable", NotBuilt);
  throw Refusal("project.not-saved", "the project could not be saved, and is as it was",
                "check that the disk has room and that nobody else holds the file", NotBuilt);
}

int EditSession::Report(const Refusal& refusal) {
  // A question that nobody answered has been told already.
  if (refusal.Code() != "edit.cancelled" || mJournal.Errors() == 0)
    mJournal.Error(refusal.Code(), (refusal.File().empty() ? mOptions.project : refusal.File()) + ": " + refusal.what(),
                   refusal.Remedy());
  return refusal.ExitCode();
}

}  // namespace quillbook::cli
