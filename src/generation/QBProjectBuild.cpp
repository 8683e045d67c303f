// The build operations of a project.
#include <algorithm>

#include "generation/BuildRun.h"
#include "quillbook/base/Text.h"
#include "quillbook/config/BuildProfile.h"
#include "quillbook/config/BuildProfiles.h"
#include "quillbook/frame/Procedure.h"
#include "quillbook/frame/modMain.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/frame/services/TextHelper.h"
#include "quillbook/generation/BuildResult.h"
#include "quillbook/generation/Registration.h"
#include "quillbook/host/MVProject.h"
#include "quillbook/host/TemplateStore.h"
#include "quillbook/platform/Platform.h"
#include "quillbook/structure/OtherFiles.h"
#include "quillbook/topics/Topic.h"

namespace quillbook {

Ref<BuildResult> QBProject::Build(std::string_view CompilerFileName, bool BuildRelatedMVP,
                                  const Ref<quillbook::BuildProfile>& BuildProfile, bool ShowBusyDialog,
                                  bool ShowResultsDialog) {
  return Procedure(*this, "Build",
                   [&](auto& p) {
                     p("CompilerFileName", CompilerFileName);
                     p("BuildRelatedMVP", BuildRelatedMVP);
                     p("BuildProfile", BuildProfile);
                     p("ShowBusyDialog", ShowBusyDialog);
                     p("ShowResultsDialog", ShowResultsDialog);
                   })
      .Run([&] {
        return InternalBuild(Template(), {}, CompilerFileName, BuildRelatedMVP, BuildProfile, ShowBusyDialog,
                             ShowResultsDialog);
      });
}

Ref<BuildResult> QBProject::InternalBuild(const Ref<PageTemplate>& Template,
                                          const Ref<quillbook::MVProject>& PassedMVProject,
                                          std::string_view CompilerFileName, bool BuildRelatedMVP,
                                          const Ref<quillbook::BuildProfile>& BuildProfile, bool ShowBusyDialog,
                                          bool ShowResultsDialog) {
  return Procedure(*this, "InternalBuild",
                   [&](auto& p) {
                     p("Template", Template);
                     p("PassedMVProject", PassedMVProject);
                     p("CompilerFileName", CompilerFileName);
                     p("BuildRelatedMVP", BuildRelatedMVP);
                     p("BuildProfile", BuildProfile);
                     p("ShowBusyDialog", ShowBusyDialog);
                     p("ShowResultsDialog", ShowResultsDialog);
                   })
      .Run([&] {
        BuildRun run(*this, BuildProfile);
        // Preparing
        run.Begin();
        if (!run.FindRelatedProject()) return BuildRun::Cancelled();
        run.TakeHostProject(PassedMVProject);
        if (!run.LoadRelatedProject()) return BuildRun::Cancelled();
        run.SelectNamespace(Template);
        run.CopySettings();
        if (!run.CheckHelpFile()) return BuildRun::Cancelled();
        if (!run.CheckOutputFolder()) return BuildRun::Cancelled();
        SetCurrentBuildProfile(BuildProfile);
        if (!run.CopyProjectFiles()) return BuildRun::Cancelled();
        run.PrepareCompiler(CompilerFileName);
        run.PrepareValues();
        if (run.IsCancelled()) return BuildRun::Cancelled();
        // Generating
        const auto status = run.Generate(ShowBusyDialog, ShowResultsDialog);
        // Tidying
        run.RemoveSources();
        auto result = run.Finish(status);
        run.DropHostProject();
        return result;
      });
}

void QBProject::CancelBuild() {
  mBuildCancelled = true;
  if (mMVProject) mMVProject->Cancel();
}

// Messages.

std::int32_t QBProject::ShowMessageBox(std::string_view Message, std::int32_t Buttons, std::string_view Title) {
  return Procedure(*this, "ShowMessageBox",
                   [&](auto& p) {
                     p("Message", Message);
                     p("Buttons", Buttons);
                     p("Title", Title);
                   })
      .Run([&]() -> std::int32_t {
        std::int32_t result = 0;
        bool cancelDefault = false;
        Events.MessageBox.Raise(Message, Buttons, Title, result, cancelDefault);
        if (cancelDefault) return result;
        if (!Silent) return Platform::Current().Messages().Show(Message, Buttons, Title);
        const bool error = (Buttons & MessageBox::Critical) != 0;
        FireBuildMessage(Message, error ? BuildMessageLevel::bmError : BuildMessageLevel::bmWarning);
        return 0;
      });
}

// Files.

void QBProject::CopySupportFiles() {
  Procedure(*this, "CopySupportFiles").Run([&] {
    const auto host = modMain::NewMVProject();
    host->CopySupportFiles = true;
    host->OutputDirectory = Filename->Path();
    const auto type = host->DocTypes()->Item(QuillbookNamespace);
    type->SetTemplate(Template());
    type->CopyTemplateFiles();
    host->Reset();
  });
}

bool QBProject::CopyOtherFiles(std::string_view DestinationDirectory, bool AddToGeneratedFiles, bool UpdateOtherFiles) {
  return Procedure(*this, "CopyOtherFiles",
                   [&](auto& p) {
                     p("DestinationDirectory", DestinationDirectory);
                     p("AddToGeneratedFiles", AddToGeneratedFiles);
                     p("UpdateOtherFiles", UpdateOtherFiles);
                   })
      .Run([&] {
        for (const auto& file : *OtherFiles) {
          if (mCurrentBuildProfile && !file->IncludeInOutput()) continue;
          FileSystemObject target(std::string(DestinationDirectory) + file->RelativeFileName());
          target.CreateDirectory();
          if (!file->Filename->FileExists()) continue;
          if (!CopyUntilDone(*file->Filename, target)) return false;
          if (AddToGeneratedFiles) mGeneratedFiles->Add(target.FullName());
          if (UpdateOtherFiles) file->Filename->SetFullName(target.FullName());
        }
        return true;
      });
}

/// False if the copy fails and the user doesn't want to try again.
bool QBProject::CopyUntilDone(const FileSystemObject& source, const FileSystemObject& target) {
  while (!IgnoreFailures([&] { source.CopyTo(target); })) {
    const auto answer = ShowMessageBox(
        "Could not copy " + source.FullName() + " to the output path " + target.Path() +
            ".\r\n\r\nCheck that you have permissions to write to the target directory and that the target file is "
            "not read-only",
        MessageBox::RetryCancel + MessageBox::Exclamation, "Could not copy");
    if (answer != MessageBox::Retry) return false;
  }
  return true;
}

// Template.

Ref<PageTemplate> QBProject::Template() const {
  return Procedure(*this, "Template").Run([&]() -> Ref<PageTemplate> {
    // Every element of a page asks for it, and a build doesn't change its template.
    if (mMVProjectBuild)
      if (auto current = mMVProject->CurrentTemplate(); current && EqualsIgnoringCase(current->Name(), mTemplateName))
        return current;
    if (auto installed = modMain::InstalledTemplates()->Find(mTemplateName)) return installed;
    const auto onLine = modMain::QuillbookPageTemplates("Px");
    const auto* found = onLine->Find(mTemplateName);
    return found ? *found : Ref<PageTemplate>();
  });
}

std::string QBProject::DefaultTopicLayout() const {
  return Procedure(*this, "DefaultTopicLayout").Run([&]() -> std::string {
    const auto pageTemplate = Template();
    const auto topicKind = std::string(QuillbookNamespace) + ":topic";
    for (const auto& layout : *pageTemplate->Layouts())
      if (EqualsIgnoringCase(layout->ItemKind(), topicKind)) return layout->Name();
    return {};
  });
}

namespace {

bool HasProfileOfVersion(const BuildProfiles& profiles, std::int16_t version) {
  return std::any_of(profiles.begin(), profiles.end(),
                     [&](const auto& profile) { return profile->HTMLHelpVersion() == version; });
}

}  // namespace

bool QBProject::HasHTMLHelp1BuildProfile() const {
  return HasProfileOfVersion(*BuildProfiles, 1);
}

bool QBProject::HasHelp2BuildProfile() const {
  return HasProfileOfVersion(*BuildProfiles, 2);
}

// Callbacks of the host.

void QBProject::mMVProject_ContentCreated(std::string_view Filename) {
  Procedure(*this, "mMVProject_ContentCreated", [&](auto& p) { p("Filename", Filename); }).Run([&] {
    mGeneratedFiles->Add(std::string(Filename));
  });
}

void QBProject::mMVProject_BeforeOutputNamespacePage(const Ref<quillbook::PageLayout>& PageLayout,
                                                     const Ref<quillbook::NamespaceDef>& Definition,
                                                     const Ref<Object>& Item, bool& DontGenerate) {
  Procedure(*this, "mMVProject_BeforeOutputNamespacePage", [&](auto& p) {
    p("PageLayout", PageLayout);
    p("NamespaceDef", Definition);
    p("Item", Item);
    p("DontGenerate", DontGenerate);
  }).Run([&] {
    if (const auto* topic = dynamic_cast<const Topic*>(Item.get())) {
      // The template offers every layout for every topic, and each topic takes one.
      const auto chosen = topic->LayoutName().empty() ? mDefaultTopicLayout : topic->LayoutName() + ".html";
      if (!PageLayout || !EqualsIgnoringCase(PageLayout->Name(), chosen)) DontGenerate = true;
    } else if (const auto* file = dynamic_cast<const FileSystemObject*>(Item.get())) {
      const auto name = file->RelativeTo() ? file->RelativeName() : file->NameWithExtension();
      if (TextHelper::InCollection(Filename->Path() + name, *OtherFiles)) DontGenerate = true;
    }
  });
}

}  // namespace quillbook
