// What the library registers with the host engine as its kind of documentation.
#pragma once

#include "quillbook/host/IMVProjectPlugIn.h"

namespace quillbook {

class MVProject;
class QBProject;

/// The plug-in of the namespace "mv.quillbooklite". It says what the namespace offers and otherwise stays out of the
/// way, since the project drives the engine itself.
class QBMVPlugIn final : public IMVProjectPlugIn {
 public:
  /// The project of the host project; nothing outside a build.
  [[nodiscard]] Ref<quillbook::QBProject> QBProject() const;

  void IMVProjectPlugIn_ModuleSelectionChanged() override {}
  void IMVProjectPlugIn_Initialise(const Ref<MVProject>& Project) override;
  void IMVProjectPlugIn_InitialiseHost() override {}
  void IMVProjectPlugIn_ProjectLoaded() override {}
  void IMVProjectPlugIn_ModuleListChanged() override {}
  void IMVProjectPlugIn_PageChanged() override {}
  void IMVProjectPlugIn_BeforeSaveProject() override {}
  void IMVProjectPlugIn_AfterSaveProject() override {}
  /// The plug-in adds nothing to the host's project file.
  void IMVProjectPlugIn_SaveXML(XMLDocument&) override {}
  void IMVProjectPlugIn_LoadXML(XMLDocument&) override {}
  /// "True": every page is valid.
  [[nodiscard]] std::string IMVProjectPlugIn_ValidatePage(std::string_view PageName) override;
  void IMVProjectPlugIn_BeforeBuild() override {}
  void IMVProjectPlugIn_BeforeCompile() override {}
  void IMVProjectPlugIn_AfterBuild() override {}
  /// True if the host project has been set up for a project.
  [[nodiscard]] bool IMVProjectPlugIn_SomethingToDocument() override;
  void IMVProjectPlugIn_Terminate() override;
  [[nodiscard]] Ref<Collection<Ref<Object>>> IMVProjectPlugIn_RootItems(std::string_view RootItemType) override;
  /// 1 for "binary", in any case, if there is a project; else 0.
  [[nodiscard]] long IMVProjectPlugIn_RootItemTypeCount(std::string_view RootItemType) override;
  [[nodiscard]] Variant IMVProjectPlugIn_ModuleItems() override { return {}; }
  [[nodiscard]] Ref<Object> IMVProjectPlugIn_GetObjectFromQualifiedName(std::string_view) override { return {}; }
  [[nodiscard]] std::string IMVProjectPlugIn_DefaultOutputFolder() override { return {}; }
  [[nodiscard]] std::string IMVProjectPlugIn_DefaultOutputFileName() override { return {}; }
  void IMVProjectPlugIn_AddRootItem(std::string_view, const Ref<Object>&) override {}
  [[nodiscard]] bool IMVProjectPlugIn_SupportsVBSourceProjects() override { return false; }
  /// Those of the namespace's template; nothing while it has none.
  [[nodiscard]] Ref<NamespaceDefs> IMVProjectPlugIn_NamespaceDefs() override;
  [[nodiscard]] Ref<Object> IMVProjectPlugIn_CreateCommentFileForMoniker(std::string_view, std::string_view) override {
    return {};
  }
  void IMVProjectPlugIn_ProjectChanged() override {}
  [[nodiscard]] long IMVProjectPlugIn_RootItemCountForSelecter(std::string_view) override { return 0; }
  void IMVProjectPlugIn_UpdateControlStates() override {}
  [[nodiscard]] Variant IMVProjectPlugIn_IsItemSameAsMoniker(const Ref<Object>&, std::string_view) override {
    return {};
  }
  /// Resets the namespace provider, which frees the cycle between provider, project and host.
  void IMVProjectPlugIn_Reset() override;

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 private:
  WeakReference<MVProject> mMVProject;
};

}  // namespace quillbook
