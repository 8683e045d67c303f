// The phases of one build.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "quillbook/host/MVProjectBuild.h"
#include "quillbook/project/QBProject.h"

namespace quillbook {

/// One build of a project, phase by phase, in the order in which `InternalBuild` calls them. A phase that answers False
/// ends the build as cancelled; the host project then stays as it is until the next build.
class QBProject::BuildRun {
 public:
  BuildRun(quillbook::QBProject& project, const Ref<quillbook::BuildProfile>& profile) noexcept
      : mProject(project), mProfile(*profile) {}
  BuildRun(const BuildRun&) = delete;
  BuildRun& operator=(const BuildRun&) = delete;
  /// Takes the project out of a host project that a build without an end leaves behind: the two would keep each other
  /// alive for good.
  ~BuildRun();

  void Begin();
  bool FindRelatedProject();
  void TakeHostProject(const Ref<quillbook::MVProject>& passed);
  bool LoadRelatedProject();
  void SelectNamespace(const Ref<PageTemplate>& pageTemplate);
  void CopySettings();
  bool CheckHelpFile();
  bool CheckOutputFolder();
  bool CopyProjectFiles();
  void PrepareCompiler(std::string_view compilerFileName);
  void PrepareValues();
  [[nodiscard]] bool IsCancelled() const noexcept { return mProject.mBuildCancelled; }
  BuildStatus Generate(bool showBusy, bool showResults);
  void RemoveSources();
  Ref<BuildResult> Finish(BuildStatus status);
  void DropHostProject();

  /// What a build comes to that a phase has ended.
  [[nodiscard]] static Ref<BuildResult> Cancelled();

 private:
  [[nodiscard]] bool HasRelatedProject() const;
  [[nodiscard]] bool IsHelp1() const;
  [[nodiscard]] bool WritesIntoProjectFolder() const;
  void Connect();
  void RemoveSource(const std::string& path);
  std::int32_t Ask(std::string_view message, std::int32_t buttons, std::string_view title) {
    return mProject.ShowMessageBox(message, buttons, title);
  }
  [[nodiscard]] quillbook::MVProject& Host() const { return *mProject.mMVProject; }

  quillbook::QBProject& mProject;
  quillbook::BuildProfile& mProfile;
};

}  // namespace quillbook
