// What a kind of documentation registers with the engine.
#pragma once

#include <string>
#include <string_view>

#include "quillbook/base/Collection.h"
#include "quillbook/base/Object.h"

namespace quillbook {

class MVProject;
class NamespaceDefs;
class XMLDocument;

/// A plug-in says what its namespace offers and hears of the stages of a host project's life.
class IMVProjectPlugIn : public Object {
 public:
  virtual void IMVProjectPlugIn_ModuleSelectionChanged() = 0;
  /// Called once, when the host project makes the plug-in. The plug-in may hold the project only weakly.
  virtual void IMVProjectPlugIn_Initialise(const Ref<MVProject>& Project) = 0;
  virtual void IMVProjectPlugIn_InitialiseHost() = 0;
  virtual void IMVProjectPlugIn_ProjectLoaded() = 0;
  virtual void IMVProjectPlugIn_ModuleListChanged() = 0;
  virtual void IMVProjectPlugIn_PageChanged() = 0;
  virtual void IMVProjectPlugIn_BeforeSaveProject() = 0;
  virtual void IMVProjectPlugIn_AfterSaveProject() = 0;
  virtual void IMVProjectPlugIn_SaveXML(XMLDocument& doc) = 0;
  virtual void IMVProjectPlugIn_LoadXML(XMLDocument& doc) = 0;
  /// "True" if the page may be shown.
  [[nodiscard]] virtual std::string IMVProjectPlugIn_ValidatePage(std::string_view PageName) = 0;
  virtual void IMVProjectPlugIn_BeforeBuild() = 0;
  virtual void IMVProjectPlugIn_BeforeCompile() = 0;
  virtual void IMVProjectPlugIn_AfterBuild() = 0;
  [[nodiscard]] virtual bool IMVProjectPlugIn_SomethingToDocument() = 0;
  /// The last call that a plug-in gets.
  virtual void IMVProjectPlugIn_Terminate() = 0;
  [[nodiscard]] virtual Ref<Collection<Ref<Object>>> IMVProjectPlugIn_RootItems(std::string_view RootItemType) = 0;
  [[nodiscard]] virtual long IMVProjectPlugIn_RootItemTypeCount(std::string_view RootItemType) = 0;
  [[nodiscard]] virtual Variant IMVProjectPlugIn_ModuleItems() = 0;
  [[nodiscard]] virtual Ref<Object> IMVProjectPlugIn_GetObjectFromQualifiedName(std::string_view QualifiedName) = 0;
  [[nodiscard]] virtual std::string IMVProjectPlugIn_DefaultOutputFolder() = 0;
  [[nodiscard]] virtual std::string IMVProjectPlugIn_DefaultOutputFileName() = 0;
  virtual void IMVProjectPlugIn_AddRootItem(std::string_view Moniker, const Ref<Object>& RootItem) = 0;
  [[nodiscard]] virtual bool IMVProjectPlugIn_SupportsVBSourceProjects() = 0;
  [[nodiscard]] virtual Ref<NamespaceDefs> IMVProjectPlugIn_NamespaceDefs() = 0;
  [[nodiscard]] virtual Ref<Object> IMVProjectPlugIn_CreateCommentFileForMoniker(std::string_view Moniker,
                                                                                 std::string_view FileName) = 0;
  virtual void IMVProjectPlugIn_ProjectChanged() = 0;
  [[nodiscard]] virtual long IMVProjectPlugIn_RootItemCountForSelecter(std::string_view Selecter) = 0;
  virtual void IMVProjectPlugIn_UpdateControlStates() = 0;
  [[nodiscard]] virtual Variant IMVProjectPlugIn_IsItemSameAsMoniker(const Ref<Object>& Item,
                                                                     std::string_view Moniker) = 0;
  virtual void IMVProjectPlugIn_Reset() = 0;
};

}  // namespace quillbook
