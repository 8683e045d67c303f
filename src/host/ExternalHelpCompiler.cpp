#include "quillbook/host/ExternalHelpCompiler.h"

#include <string>

#include "quillbook/base/CodePage.h"
#include "quillbook/base/Failure.h"
#include "quillbook/base/Text.h"
#include "quillbook/frame/Procedure.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/platform/Platform.h"

namespace quillbook {

namespace {

using ProgramRun = Desktop::ProgramRun;

/// Keeps an old help file while a new one is being made.
class OldFile {
 public:
  explicit OldFile(std::string path) : mPath(std::move(path)) {
    if (!Files().GetStatus(mPath).exists) return;
    Files().RenameFile(mPath, Aside());
    mIsAside = true;
  }
  OldFile(const OldFile&) = delete;
  OldFile& operator=(const OldFile&) = delete;
  ~OldFile() {
    if (mIsAside) IgnoreFailures([this] { Files().RenameFile(Aside(), mPath); });
  }

  /// True if a new file stands in its place; it is forgotten then.
  [[nodiscard]] bool IsReplaced() {
    const auto status = Files().GetStatus(mPath);
    if (!status.exists || status.isDirectory || status.size == 0) {
      IgnoreFailures([this] { Files().RemoveFile(mPath); });
      return false;
    }
    if (mIsAside) IgnoreFailures([this] { Files().RemoveFile(Aside()); });
    mIsAside = false;
    return true;
  }

 private:
  static FileStore& Files() { return Platform::Current().Files(); }
  [[nodiscard]] std::string Aside() const { return mPath + ".quillbook-old"; }

  std::string mPath;
  bool mIsAside = false;
};

std::string LogText(const std::string& bytes) {
  const auto text = IsValidUtf8(bytes) ? bytes : DecodeCodePage(bytes, AnsiCodePage());
  return ReplaceAll(ReplaceAll(text, "\r\n", "\n"), "\n", "\r\n");
}

class ExternalHelpCompiler final : public HelpCompiler {
 public:
  explicit ExternalHelpCompiler(std::string_view program) : mProgram(FileSystemObject(program).NativePath()) {}

  static const TypeInfo& StaticType() {
    static const TypeInfo type = Describe<ExternalHelpCompiler>("ExternalHelpCompiler").Done();
    return type;
  }
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

  [[nodiscard]] Outcome Compile(std::string_view ProjectFile, std::string_view HelpFile, const GoOn& goOn) override {
    const auto helpFile = FileSystemObject(HelpFile).NativePath();
    try {
      OldFile old(helpFile);
      const auto run = Run(FileSystemObject(ProjectFile), goOn);
      return Judge(run, run.end != ProgramRun::End::Stopped && old.IsReplaced());
    } catch (const Failure& failure) {
      return Failed("compile.old-file", "The old help file can't be replaced: " + failure.Description());
    }
  }

 private:
  [[nodiscard]] ProgramRun Run(const FileSystemObject& project, const GoOn& goOn) const {
    const auto path = project.NativePath();
    const auto name = path.rfind('/') + 1;
    return Platform::Current().Session().RunProgram(mProgram, {path.substr(name)}, path.substr(0, name),
                                                    [&] { return !goOn || goOn(0, 0); });
  }

  [[nodiscard]] Outcome Judge(const ProgramRun& run, bool made) const {
    switch (run.end) {
      case ProgramRun::End::NotFound: return Failed("compile.no-program", "There is no help compiler " + mProgram);
      case ProgramRun::End::NotRunnable:
        return Failed("compile.not-runnable",
                      "The help compiler " + mProgram +
                          " is no program that this system can run. A Windows program needs a Windows layer that is "
                          "registered for such files; without a compiler in the settings, Quillbook compiles itself");
      case ProgramRun::End::Stopped: return {HelpCompileResult::Cancelled, {}, {}};
      default: return Read(LogText(run.output), made);
    }
  }

  /// Warnings and errors of the log. A compiler that made a help file all the same had no error worth the name.
  [[nodiscard]] Outcome Read(const std::string& log, bool made) const {
    Outcome outcome;
    for (auto line : Split(log, '\n')) {
      if (line.ends_with('\r')) line.remove_suffix(1);
      const bool isError = FindIgnoringCase(line, "error:") != std::string_view::npos;
      if (!isError && FindIgnoringCase(line, "warning:") == std::string_view::npos) continue;
      outcome.Notes.push_back(
          {isError && !made ? NoteLevel::Error : NoteLevel::Warning, "compile.program", std::string(TrimBlanks(line))});
    }
    if (!made)
      outcome.Notes.push_back(
          {NoteLevel::Error, "compile.no-file", "The help compiler " + mProgram + " made no help file"});
    if (!outcome.Notes.empty()) outcome.Log = log;
    outcome.Result = !made                   ? HelpCompileResult::Failed
                     : outcome.Notes.empty() ? HelpCompileResult::Succeeded
                                             : HelpCompileResult::Warnings;
    return outcome;
  }

  [[nodiscard]] static Outcome Failed(const char* code, const std::string& text) {
    return {HelpCompileResult::Failed, text + "\r\n", {{NoteLevel::Error, code, text}}};
  }

  std::string mProgram;  ///< native path
};

}  // namespace

Ref<HelpCompiler> MakeExternalHelpCompiler(std::string_view Program) {
  return New<ExternalHelpCompiler>(Program);
}

}  // namespace quillbook
