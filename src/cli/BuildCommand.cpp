#include "cli/BuildCommand.h"

#include <fmt/format.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "cli/ExitCode.h"
#include "cli/Interrupt.h"
#include "cli/Journal.h"
#include "cli/Json.h"
#include "cli/ProjectFile.h"
#include "quillbook/base/Text.h"
#include "quillbook/config/BuildProfile.h"
#include "quillbook/config/BuildProfiles.h"
#include "quillbook/frame/Root.h"
#include "quillbook/frame/modMain.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/generation/BuildResult.h"
#include "quillbook/host/MVProject.h"
#include "quillbook/host/PageTemplate.h"
#include "quillbook/host/TemplateStore.h"
#include "quillbook/platform/Platform.h"
#include "quillbook/structure/OtherFile.h"
#include "quillbook/structure/OtherFiles.h"

namespace quillbook::cli {
namespace {

using Clock = std::chrono::steady_clock;

/// What a build came to, for the report.
struct Outcome {
  std::string profile;
  std::string outputDirectory;
  std::string format = "web";
  std::string helpFile;  ///< native path; empty as long as there is none
  std::size_t pages = 0;
  std::size_t files = 0;
  std::int32_t compileResult = 0;
  bool cancelled = false;
  double seconds = 0;
  int exitCode = BadInput;
};

std::string Counted(std::size_t count, std::string_view noun) {
  return fmt::format("{} {}{}", count, noun, count == 1 ? "" : "s");
}

/// The compiler speaks of places in the files that it reads.
std::string Subject(const BuildNote& note, const std::string& project) {
  if (note.File.empty() || !note.Code.starts_with("HC")) return project;
  if (note.Line == 0) return note.File;
  return fmt::format("{}:{}{}", note.File, note.Line, note.Column > 0 ? fmt::format(":{}", note.Column) : "");
}

/// One run of the command: each step sets what the next one needs, or ends the run with an error in the journal.
class Builder {
 public:
  explicit Builder(const BuildOptions& options)
      : mOptions(options),
        mJournal(options.quiet),
        mAnswers(std::make_shared<Answers>(mJournal, options.project, options.yes)),
        mMessages(mAnswers) {}

  int Run();

 private:
  bool ChooseTemplate();
  bool ChooseProfile();
  void ChooseOutputFolder();
  bool ChooseFormat();
  void NameHelpFile();
  void Build();

  void Listen(const Ref<MVProject>& host);
  void Note(const BuildNote& note);
  void HearMessage(std::string_view text, BuildMessageLevel level);
  void TellHeldMessage();
  void TakeHelpFile();
  void CountFile();
  void CancelIfAsked();
  [[nodiscard]] bool CopiesOtherFiles() const;
  void CountOtherFiles();

  [[nodiscard]] bool Report();
  [[nodiscard]] std::string JsonReport() const;

  const BuildOptions& mOptions;
  Journal mJournal;
  std::shared_ptr<Answers> mAnswers;
  PlatformOverride<MessageBox> mMessages;
  InterruptScope mInterrupt;
  Root mRoot;
  Ref<QBProject> mProject;
  Ref<BuildProfile> mProfile;
  Ref<MVProject> mHost;
  std::vector<Connection> mSinks;
  std::optional<std::pair<std::string, BuildMessageLevel>> mHeldMessage;
  Outcome mOutcome;
};

int Builder::Run() {
  const auto start = Clock::now();
  if (!mOptions.format.empty()) mOutcome.format = mOptions.format;
  mAnswers->TakeFailuresAsWarnings(true);
  mProject = OpenProject(mOptions.project, mJournal);
  mAnswers->TakeFailuresAsWarnings(false);
  if (mProject && ChooseTemplate() && ChooseProfile()) {
    ChooseOutputFolder();
    if (ChooseFormat()) Build();
  }
  mOutcome.seconds = std::chrono::duration<double>(Clock::now() - start).count();
  return Report() ? mOutcome.exitCode : NotBuilt;
}

bool Builder::ChooseTemplate() {
  if (!mOptions.templateName.empty()) mProject->SetTemplateName(mOptions.templateName);
  if (mProject->Template()) return true;

  const auto templates = mRoot.AllTemplates();
  std::string installed;
  for (const auto& one : *templates) installed.append(installed.empty() ? "" : ", ").append(one->Name());
  for (const auto& note : TemplateStore::OfApartment()->Messages()) Note(note);
  mJournal.Error("template.not-found",
                 fmt::format("{}: there is no template '{}'", mOptions.project, mProject->TemplateName()),
                 installed.empty() ? "no template is installed" : "name one of these with --template: " + installed);
  return false;
}

bool Builder::ChooseProfile() {
  const auto& profiles = *mProject->BuildProfiles;
  if (mOptions.profile.empty()) {
    mProfile = profiles.Item(1);
  } else {
    mProfile = profiles.Item(mOptions.profile);
    for (const auto& profile : profiles)
      if (!mProfile && profile->Name() == mOptions.profile) mProfile = profile;
  }
  if (mProfile) {
    mOutcome.profile = mProfile->Name();
    return true;
  }
  std::string names;
  for (const auto& profile : profiles) names.append(names.empty() ? "" : ", ").append(profile->Name());
  mJournal.Error("profile.not-found",
                 fmt::format("{}: there is no build profile '{}'", mOptions.project, mOptions.profile),
                 "name one of these: " + names);
  return false;
}

void Builder::ChooseOutputFolder() {
  if (!mOptions.output.empty()) {
    mProfile->SetOutputDirectory(AbsoluteNativePath(mOptions.output));
  } else if (mProfile->OutputDirectory().empty()) {
    const auto name = modMain::SafeFileName(mProfile->Name());
    mProfile->SetOutputDirectory(mProject->Filename->Path() + "Build\\" + (name.empty() ? mProfile->ID() : name));
  } else {
    return;
  }
  mAnswers->AllowCreatingOutputFolder();  // naming the folder, or leaving the choice to us, is consent enough
}

/// The profile decides if nothing else is said. One that asks for a compiled help file without naming it is one that
/// nobody has filled in.
bool Builder::ChooseFormat() {
  auto format = mOptions.format;
  if (format.empty() && !mOptions.helpFile.empty())
    format = EndsWithIgnoringCase(mOptions.helpFile, ".chm") ? "chm" : "hxs";
  if (format.empty() && mProfile->CompileHelpFile() && !mProfile->HelpFileName().empty())
    format = mProfile->HTMLHelpVersion() == 1 ? "chm" : "hxs";
  const bool compiled = !format.empty() && format != "web";
  if (!compiled && !mOptions.helpFile.empty()) {
    mJournal.Error("build.format", mOptions.project + ": pages alone go into no help file",
                   "leave --help-file out, or say --format chm or --format hxs");
    return false;
  }
  mProfile->SetCompileHelpFile(compiled);
  if (!compiled) return true;
  mOutcome.format = format;
  mProfile->SetHTMLHelpVersion(format == "chm" ? 1 : 2);
  NameHelpFile();
  return true;
}

void Builder::NameHelpFile() {
  const auto name = mProfile->HelpFileName();
  FileSystemObject file(!mOptions.helpFile.empty() ? AbsoluteNativePath(mOptions.helpFile)
                        : !name.empty()
                            ? name
                            : mProfile->OutputDirectory() + mProject->Filename->BaseName() + "." + mOutcome.format);
  if (mOptions.helpFile.empty()) file.SetExtension(mOutcome.format);
  mProfile->SetHelpFileName(file.FullName());
}

void Builder::Build() {
  mOutcome.outputDirectory = NativePath(mProfile->OutputDirectory());
  mSinks.push_back(mProject->Events.MVProjectChanged.Connect([this](const Ref<MVProject>& host) { Listen(host); }));
  mSinks.push_back(mProject->Events.BuildProgress.Connect([this](std::string_view status) {
    mJournal.Screen().Progress(status);
    CancelIfAsked();
  }));
  mSinks.push_back(mProject->Events.BuildMessage.Connect(
      [this](std::string_view text, BuildMessageLevel level) { HearMessage(text, level); }));
  const auto result = mProject->Build("", false, mProfile, false, false);
  TellHeldMessage();
  mJournal.Screen().ClearProgress();

  if (result) {
    mOutcome.cancelled = result->Cancelled;
    mOutcome.compileResult = result->HelpCompileResult;
  }
  if (InterruptScope::Requested())
    mJournal.Error("build.cancelled", mOptions.project + ": the build was cancelled",
                   "pages written so far stay in " + mOutcome.outputDirectory);
  const bool built = result && !mOutcome.cancelled && mJournal.Errors() == 0;
  if (built) CountOtherFiles();
  if (built) TakeHelpFile();
  mOutcome.exitCode = !built ? NotBuilt : mOptions.strict && mJournal.Warnings() > 0 ? Findings : Done;
}

void Builder::Listen(const Ref<MVProject>& host) {
  mHost = host;
  if (!host) return;
  mSinks.push_back(host->NoteAdded.Connect([this](const BuildNote& note) { Note(note); }));
  mSinks.push_back(host->ContentCreated.Connect([this](std::string_view) { CountFile(); }));
  mSinks.push_back(host->ProgressChanged.Connect([this](std::string_view stage, std::string_view message) {
    if (stage == "compiling") mJournal.Screen().Progress(message);
    CancelIfAsked();
  }));
}

/// Notes of the host come along as messages first; those without a note are the library's own.
void Builder::HearMessage(std::string_view text, BuildMessageLevel level) {
  TellHeldMessage();
  mHeldMessage.emplace(text, level);
}

void Builder::TellHeldMessage() {
  if (!mHeldMessage) return;
  const auto [message, level] = *std::exchange(mHeldMessage, {});
  const auto text = mOptions.project + ": " + message;
  if (level == BuildMessageLevel::bmError)
    mJournal.Error("build.message", text);
  else
    mJournal.Warning("build.message", text);
}

void Builder::Note(const BuildNote& note) {
  mHeldMessage.reset();
  const auto code = note.Code.starts_with("HC") ? " [" + note.Code + "]" : std::string();
  const auto text = Subject(note, mOptions.project) + ": " + note.Text + code;
  if (note.Level == NoteLevel::Error)
    mJournal.Error(note.Code, text);
  else
    mJournal.Warning(note.Code, text);
}

void Builder::CountFile() {
  const auto& page = mHost->CurrentPage();
  ++(page.empty() ? mOutcome.files : mOutcome.pages);
  if (!page.empty()) mJournal.Screen().Progress(fmt::format("{}: {}", Counted(mOutcome.pages, "page"), page));
  CancelIfAsked();
}

void Builder::CancelIfAsked() {
  if (InterruptScope::Requested()) mProject->CancelBuild();
}

bool Builder::CopiesOtherFiles() const {
  return !EqualsIgnoringCase(mProfile->OutputDirectory(), mProject->Filename->Path());
}

void Builder::CountOtherFiles() {
  if (!CopiesOtherFiles()) return;
  for (const auto& file : *mProject->OtherFiles)
    if (file->IncludeInOutput() && file->Filename->FileExists()) ++mOutcome.files;
}

void Builder::TakeHelpFile() {
  if (mProfile->CompileHelpFile()) mOutcome.helpFile = NativePath(mProfile->HelpFileName());
}

bool Builder::Report() {
  if (mOptions.json) return PrintOutput(JsonReport());
  if (mOptions.quiet || mOutcome.exitCode > Findings) return true;
  const auto counts = Counted(mOutcome.pages, "page") + " and " + Counted(mOutcome.files, "file");
  if (mOutcome.helpFile.empty()) return PrintOutput(fmt::format("Built {} in {}\n", counts, mOutcome.outputDirectory));
  if (mProfile->RemoveOutputFiles())
    return PrintOutput(fmt::format("Compiled {} into {}\n", counts, mOutcome.helpFile));
  return PrintOutput(fmt::format("Built {} in {}\nCompiled {}\n", counts, mOutcome.outputDirectory, mOutcome.helpFile));
}

std::string Builder::JsonReport() const {
  JsonWriter json;
  json.Member("profile", mOutcome.profile)
      .Member("format", mOutcome.format)
      .Member("outputDirectory", mOutcome.outputDirectory)
      .Member("pages", mOutcome.pages)
      .Member("files", mOutcome.files)
      .Member("warnings", mJournal.Warnings())
      .Member("errors", mJournal.Errors())
      .Member("cancelled", mOutcome.cancelled)
      .Member("compileResult", mOutcome.compileResult)
      .Member("helpFile", mOutcome.helpFile)
      .Member("seconds", mOutcome.seconds);
  WriteMessages(json, mJournal.Messages());
  return std::move(json).Text();
}

}  // namespace

int RunBuild(const BuildOptions& options) {
  return Builder(options).Run();
}

}  // namespace quillbook::cli
