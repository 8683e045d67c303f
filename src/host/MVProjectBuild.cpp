#include "quillbook/host/MVProjectBuild.h"

#include "host/Generation.h"
#include "quillbook/base/Failure.h"
#include "quillbook/host/MVProject.h"

namespace quillbook {

namespace {

/// Tells the plug-ins of a stage.
template <auto Stage>
void TellPlugIns(MVProject& project) {
  for (const auto& docType : *project.DocTypes())
    if (docType->PlugIn()) (docType->PlugIn().get()->*Stage)();
}

HelpCompileResult CompileHelpFile(MVProject& project) {
  if (!project.CompileHelpFile) return HelpCompileResult::None;
  TellPlugIns<&IMVProjectPlugIn::IMVProjectPlugIn_BeforeCompile>(project);
  if (!project.Compiler) {
    project.CompilerLog = "There is no help compiler for help version " + project.HelpVersion +
                          ". The pages have been written, but no help file was made.";
    project.AddNote({NoteLevel::Error, "compile.no-compiler", project.CompilerLog});
    return HelpCompileResult::NoCompiler;
  }
  auto outcome = project.Compiler->Compile(project.HelpProjectFile, project.HelpFileName);
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
