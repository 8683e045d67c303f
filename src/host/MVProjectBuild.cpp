#include "quillbook/host/MVProjectBuild.h"

#include "host/Generation.h"
#include "quillbook/base/Failure.h"
#include "quillbook/base/Variant.h"
#include "quillbook/host/BuiltInHelpCompiler.h"
#include "quillbook/host/ExternalHelpCompiler.h"
#include "quillbook/host/MVProject.h"

namespace quillbook {

namespace {

/// Tells the plug-ins of a stage.
template <auto Stage>
void TellPlugIns(MVProject& project) {
  for (const auto& docType : *project.DocTypes())
    if (docType->PlugIn()) (docType->PlugIn().get()->*Stage)();
}

Ref<HelpCompiler> ChooseCompiler(const MVProject& project) {
  if (project.Compiler) return project.Compiler;
  if (!project.CompilerPath.empty()) return MakeExternalHelpCompiler(project.CompilerPath);
  return MakeBuiltInHelpCompiler(static_cast<int>(LeadingNumber(project.HelpVersion)));
}

/// Tells how far a compiler is, and stops it if the project was cancelled meanwhile.
bool TellProgress(MVProject& project, std::size_t done, std::size_t known) {
  auto message = std::string("Compiling the help file");
  if (known > 0) message += ": " + std::to_string(done) + " of " + std::to_string(known) + " files";
  project.SetProgressMessage(message);
  return !project.IsCancelled();
}

HelpCompileResult CompileHelpFile(MVProject& project) {
  if (!project.CompileHelpFile) return HelpCompileResult::None;
  TellPlugIns<&IMVProjectPlugIn::IMVProjectPlugIn_BeforeCompile>(project);
  const auto compiler = ChooseCompiler(project);
  if (!compiler) {
    project.CompilerLog = "There is no help compiler for help version " + project.HelpVersion +
                          ". The pages have been written, but no help file was made.";
    project.AddNote({NoteLevel::Error, "compile.no-compiler", project.CompilerLog});
    return HelpCompileResult::NoCompiler;
  }
  project.SetProgressStage("compiling");
  auto outcome =
      compiler->Compile(project.HelpProjectFile, project.HelpFileName,
                        [&project](std::size_t done, std::size_t known) { return TellProgress(project, done, known); });
  for (const auto& note : outcome.Notes) project.AddNote(note);
  project.CompilerLog = std::move(outcome.Log);
  return outcome.Result;
}

}  // namespace

BuildStatus MVProjectBuild::Build(const Ref<MVProject>& Project, bool /*ShowBusy*/, bool /*ShowResults*/) {
  const auto notes = Project->NoteAdded.Connect([this](const BuildNote& note) { mNotes.push_back(note); });
  Project->CompilerLog.clear();
  try {
    return Generate(*Project);
  } catch (...) {
    const auto failure = CurrentFailure();
    Project->CompilerLog = failure.Description();
    Project->AddNote({NoteLevel::Error, "build.failed", failure.Description()});
    mCompileResult = HelpCompileResult::GenerationFailed;
    return BuildStatus::Failed;
  }
}

BuildStatus MVProjectBuild::Generate(MVProject& project) {
  TellPlugIns<&IMVProjectPlugIn::IMVProjectPlugIn_BeforeBuild>(project);
  if (!WriteOutput(project)) return BuildStatus::Cancelled;
  mCompileResult = CompileHelpFile(project);
  if (mCompileResult == HelpCompileResult::Cancelled) return BuildStatus::Cancelled;
  TellPlugIns<&IMVProjectPlugIn::IMVProjectPlugIn_AfterBuild>(project);
  return BuildStatus::Done;
}

bool MVProjectBuild::WriteOutput(MVProject& project) {
  detail::Generation generation(project);
  const auto count = [&] {
    mPageCount = generation.Output().PageCount();
    mSupportFileCount = generation.Output().SupportFileCount();
    mUnchangedCount = generation.Output().UnchangedCount();
  };
  try {
    const bool finished = generation.WritePages() && (!project.CopySupportFiles || generation.CopySupportFiles());
    if (finished && project.CompileHelpFile) generation.WriteHelpProject();
    count();
    return finished;
  } catch (...) {
    count();
    throw;
  }
}

const TypeInfo& MVProjectBuild::StaticType() {
  static const TypeInfo type = Describe<MVProjectBuild>("MVProjectBuild")
                                   .Field<&MVProjectBuild::mCompileResult>("mCompileResult")
                                   .Field<&MVProjectBuild::mPageCount>("mPageCount")
                                   .Field<&MVProjectBuild::mSupportFileCount>("mSupportFileCount")
                                   .Field<&MVProjectBuild::mUnchangedCount>("mUnchangedCount")
                                   .ReadOnly<&MVProjectBuild::CompileResult>("CompileResult")
                                   .Done();
  return type;
}

}  // namespace quillbook
