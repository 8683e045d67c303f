#include "generation/BuildRun.h"

#include "generation/CompilerFile.h"
#include "quillbook/base/Text.h"
#include "quillbook/config/BuildProfile.h"
#include "quillbook/frame/Procedure.h"
#include "quillbook/frame/modMain.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/generation/BuildResult.h"
#include "quillbook/generation/Registration.h"
#include "quillbook/host/MVProject.h"
#include "quillbook/platform/MessageBox.h"

namespace quillbook {
namespace {

/// Files that belong to the delivered help: collection files and the scripts that register it.
bool IsDelivered(const FileSystemObject& file) {
  const auto name = file.NameWithExtension();
  return StartsWithIgnoringCase(file.BaseName(), "col_") || EqualsIgnoringCase(name, "registerhelp2.bat") ||
         EqualsIgnoringCase(name, "unregisterhelp2.bat");
}

}  // namespace

QBProject::BuildRun::~BuildRun() {
  if (!mProject.mMVProject) return;
  auto& items = *mProject.mMVProject->RootItems();
  if (items.Contains(QuillbookNamespace)) items.Remove(QuillbookNamespace);
}

Ref<BuildResult> QBProject::BuildRun::Cancelled() {
  auto result = New<BuildResult>();
  result->Cancelled = true;
  return result;
}

void QBProject::BuildRun::Begin() {
  mProject.mGeneratedFiles = New<Collection<std::string>>();
  mProject.mBuildCancelled = false;
  modMain::mCacheCount() = 0;
  modMain::mCacheTopics() = New<Collection<Ref<Object>>>();
}

// Host project.

bool QBProject::BuildRun::HasRelatedProject() const {
  return !mProject.mMVPFileName.empty() && modMain::IsMavenscriptInstalled();
}

bool QBProject::BuildRun::FindRelatedProject() {
  if (!HasRelatedProject()) return true;
  const FileSystemObject file(mProject.MVPFileName());
  if (file.FileExists()) return true;
  Ask("The Mavenscript file '" + file.FullName() + "' could not be found. Build cancelled", MessageBox::Exclamation,
      "Mavenscript file not found");
  return false;
}

void QBProject::BuildRun::TakeHostProject(const Ref<quillbook::MVProject>& passed) {
  auto& host = mProject.mMVProject;
  if (host && host != passed) {
    host->Reset();
    host = passed ? passed : modMain::NewMVProject();
  }
  if (!host) host = modMain::NewMVProject();
  Connect();
  mProject.Events.MVProjectChanged.Raise(host);
}

void QBProject::BuildRun::Connect() {
  auto& project = mProject;
  auto& sinks = project.mBuildSinks;
  sinks.clear();
  sinks.push_back(Host().ContentCreated.Connect(
      [&project](std::string_view fileName) { project.mMVProject_ContentCreated(fileName); }));
  sinks.push_back(Host().BeforeOutputNamespacePage.Connect([&project](const Ref<PageLayout>& layout,
                                                                      const Ref<NamespaceDef>& definition,
                                                                      const Ref<Object>& item, bool& dontGenerate) {
    project.mMVProject_BeforeOutputNamespacePage(layout, definition, item, dontGenerate);
  }));
  sinks.push_back(Host().NoteAdded.Connect([&project](const BuildNote& note) {
    const bool error = note.Level == NoteLevel::Error;
    project.FireBuildMessage(note.Text, error ? BuildMessageLevel::bmError : BuildMessageLevel::bmWarning);
  }));
}

bool QBProject::BuildRun::LoadRelatedProject() {
  if (!HasRelatedProject()) return true;
  mProject.FireBuildProgress("Loading Mavenscript project");
  const auto fileName = mProject.MVPFileName();
  Host().LoadProject(fileName);
  if (!Host().DocTypes()->IsEmpty()) return true;
  Ask("Could not load from Mavenscript project file '" + fileName + "'. Build cancelled", MessageBox::Exclamation,
      "Mavenscript file invalid");
  return false;
}

void QBProject::BuildRun::SelectNamespace(const Ref<PageTemplate>& pageTemplate) {
  const Ref<quillbook::QBProject> project(&mProject);
  Host().RootItems()->Add(project, QuillbookNamespace);
  const auto type = Host().DocTypes()->Item(QuillbookNamespace);
  type->SetTemplate(pageTemplate);
  Host().SetCurrentDocType(type);
  type->NamespaceProvider()->INamespaceProvider_AddRootItem(project);
}

void QBProject::BuildRun::CopySettings() {
  auto& host = Host();
  host.OutputDirectory = mProfile.OutputDirectory();
  host.HelpFileName = mProfile.HelpFileName();
  host.HelpVersion = std::to_string(mProfile.HTMLHelpVersion());
  host.Help2Namespace = mProfile.H2Namespace();
  host.Help2FileID = mProfile.H2FileID();
  if (NumberFromText(host.HelpVersion) == 2 && !mProfile.H2PlugIn().empty()) {
    host.RegisterPlugIn = true;
    host.PlugInNamespaces = mProfile.H2PlugIn();
  }
  host.Title = mProject.Title();
  // There are no viewer windows here that could hold the output; the lock test below finds every other holder.
  host.LocaleID = mProfile.LocaleID();
  if (IsHelp1()) host.CodePage = mProfile.CodePage();
}

bool QBProject::BuildRun::IsHelp1() const {
  return mProfile.HTMLHelpVersion() == 1;
}

// Output.

bool QBProject::BuildRun::CheckHelpFile() {
  if (!mProfile.CompileHelpFile()) return true;
  mProject.FireBuildProgress("Validating the output Help filename");
  const FileSystemObject file(mProfile.HelpFileName());
  if (!file.Locked()) return true;
  const auto answer =
      Ask("The output filename is currently locked. If the file is open or in use, please close it and click OK to "
          "continue",
          MessageBox::OkCancel + MessageBox::Exclamation, "File in use");
  return answer != MessageBox::Cancel;
}

bool QBProject::BuildRun::CheckOutputFolder() {
  mProject.FireBuildProgress("Validating the output path");
  FileSystemObject folder;
  folder.SetPath(Host().OutputDirectory);
  if (folder.DirectoryExists()) return true;
  const auto answer =
      Ask("The specified output path '" + folder.Path() + "' doesn't exist. Would you like to create it?",
          MessageBox::YesNo + MessageBox::Question, "Path does not exist");
  if (answer == MessageBox::No) {
    Ask("Could not access output path, build cancelled", MessageBox::Information, "");
    return false;
  }
  folder.CreateDirectory();
  return true;
}

bool QBProject::BuildRun::WritesIntoProjectFolder() const {
  return EqualsIgnoringCase(Host().OutputDirectory, mProject.Filename->Path());
}

bool QBProject::BuildRun::CopyProjectFiles() {
  mProject.FireBuildProgress("Copying other files to the output directory");
  return WritesIntoProjectFolder() || mProject.CopyOtherFiles(Host().OutputDirectory, true, false);
}

void QBProject::BuildRun::PrepareCompiler(std::string_view compilerFileName) {
  auto& host = Host();
  host.CompileHelpFile = mProfile.CompileHelpFile();
  if (!host.CompileHelpFile) return;
  FileSystemObject(mProfile.HelpFileName()).CreateDirectory();
  if (IsHelp1())
    host.CompilerPath = !compilerFileName.empty()
                            ? std::string(compilerFileName)
                            : GetCompilerFileName("SOFTWARE\\Classes\\hhp\\shell\\open\\command", true);
}

void QBProject::BuildRun::PrepareValues() {
  auto& variables = *Host().Variables();
  for (const auto& entry : *mProject.VariableValues) {
    IgnoreFailures([&] { variables.Remove(entry->Name); });
    variables.Add(New<VariableValue>(entry->Name, entry->Value), entry->Name);
  }
  mProject.IncrementingValues = New<Collection<std::int32_t>>();
  mProject.mDefaultTopicLayout = mProject.DefaultTopicLayout();
}

// Generation.

BuildStatus QBProject::BuildRun::Generate(bool showBusy, bool showResults) {
  mProject.FireBuildProgress("Generating content");
  mProject.mMVProjectBuild = New<MVProjectBuild>();
  return mProject.mMVProjectBuild->Build(mProject.mMVProject, showBusy, showResults);
}

void QBProject::BuildRun::RemoveSources() {
  if (!mProfile.RemoveOutputFiles() || !mProfile.CompileHelpFile()) return;
  mProject.FireBuildProgress("Removing the source output files");
  for (const auto& path : *mProject.mGeneratedFiles) RemoveSource(path);
  // In the project's own folder the template's files are needed for the preview of topics.
  if (WritesIntoProjectFolder()) mProject.CopySupportFiles();
}

void QBProject::BuildRun::RemoveSource(const std::string& path) {
  FileSystemObject source(path);
  if (IsDelivered(source)) {
    const FileSystemObject helpFile(mProfile.HelpFileName());
    const FileSystemObject target(helpFile.Path() + source.NameWithExtension());
    if (EqualsIgnoringCase(target.FullName(), source.FullName())) return;
    IgnoreFailures([&] { source.CopyTo(target); });
  } else if (path.ends_with("_manifest.html")) {
    return;
  }
  IgnoreFailures([&] { source.Delete(); });
}

Ref<BuildResult> QBProject::BuildRun::Finish(BuildStatus status) {
  mProject.FireBuildProgress("");
  mProject.mGeneratedFiles = {};
  auto result = New<BuildResult>();
  result->Cancelled = status == BuildStatus::Cancelled;
  if (!result->Cancelled) {
    result->HelpCompileResult = static_cast<std::int32_t>(mProject.mMVProjectBuild->CompileResult());
    result->CompilerLog = Host().CompilerLog;
  }
  mProfile.LastBuildResult = result;
  mProject.mMVProjectBuild = {};
  return result;
}

void QBProject::BuildRun::DropHostProject() {
  if (!mProject.mMVProject) return;
  mProject.mMVProject->Reset();
  mProject.mMVProject = {};
  mProject.mBuildSinks.clear();
  mProject.Events.MVProjectChanged.Raise({});
}

}  // namespace quillbook
