// A kind of documentation made up for tests: items in a tree, a provider for them, and templates made in code.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "quillbook/base/Collection.h"
#include "quillbook/host/CommonProvider.h"
#include "quillbook/host/DataProvider.h"
#include "quillbook/host/IMVProjectPlugIn.h"
#include "quillbook/host/INamespaceProvider.h"
#include "quillbook/host/MVProject.h"
#include "quillbook/host/PlugInRegistry.h"

namespace quillbook::toy {

/// A page, or the project itself.
class Item final : public Object {
 public:
  Item() : Children(New<Collection<Ref<Item>>>()) {}
  explicit Item(std::string title) : Item() { Title = QualifiedName = std::move(title); }

  std::string Title;
  std::string QualifiedName;
  std::string Summary;
  bool Draft = false;
  Ref<Collection<Ref<Item>>> Children;

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }
};

/// Answers members of the item, named values and a few elements:
///   %%scrap:name=n%%      the scrap of the host project, or a named value "scrap.n"
///   %%children:scrap=n%%  the scrap for each child of the item
///   %%source%%            what the element encloses
///   %%attributes%%        "name=value;" of every attribute
///   %%again%%             expands to itself within itself, for ever
/// Blank and not-blank texts and conditions count, as for any provider.
class Data final : public DataProvider {
 public:
  std::map<std::string, std::string> Values;
  std::vector<std::string> Asked;  ///< types of elements in the order of asking
  std::function<void(const TemplateElement&)> BeforeAnswer;

  std::string DataProvider_ProvideData(const Ref<TemplateElement>& Element, Ref<FileSystemObject>& File) override;
  void DataProvider_Initialise(const Ref<Object>& Host) override;
  void DataProvider_Terminate() override {}
  void SetDataProvider_CurrentRootItem(const Ref<Object>& item) override { mRoot = item; }
  Ref<Object> DataProvider_CurrentRootItem() const override { return mRoot; }
  void SetDataProvider_CurrentParentItem(const Ref<Object>& item) override { mParent = item; }
  Ref<Object> DataProvider_CurrentParentItem() const override { return mParent; }
  void SetDataProvider_CurrentItemType(std::string_view type) override { mItemType = type; }
  std::string DataProvider_CurrentItemType() const override { return mItemType; }
  void SetDataProvider_CurrentItem(const Ref<Object>& item) override { mItem = item; }
  Ref<Object> DataProvider_CurrentItem() const override { return mItem; }
  void SetDataProvider_NamespaceDef(const Ref<NamespaceDef>& definition) override { mDefinition = definition; }
  Ref<NamespaceDef> DataProvider_NamespaceDef() const override { return mDefinition; }
  void DataProvider_SetCurrentItem(const Ref<NamespaceDef>& definition, const Ref<Object>& item, std::string_view type,
                                   const Ref<Object>& parent) override;
  std::string DataProvider_ParseForProperties(std::string_view Text) override;
  std::string DataProvider_GetProperty(std::string_view Name) override;
  Ref<DataProvider> DataProvider_Clone() override;

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 private:
  std::string Answer(const Ref<TemplateElement>& element, Ref<FileSystemObject>& file);
  std::string ScrapText(std::string_view name) const;
  std::string ListChildren(std::string_view scrap);
  Ref<CommonProvider> Common();

  WeakReference<MVProject> mHost;
  Ref<Object> mRoot, mParent, mItem;
  Ref<NamespaceDef> mDefinition;
  std::string mItemType;
};

/// The namespace "toy": "toy:project" is the root item, "toy:page" the children of an item or of the root item.
class Provider final : public INamespaceProvider {
 public:
  Ref<toy::Data> Data = New<toy::Data>();
  std::vector<std::string> Calls;  ///< hooks with the title of the item, files with their name
  std::vector<std::string> Filters;

  Ref<Object> INamespaceProvider_GetItems(const Ref<NamespaceDef>& definition, const Ref<Object>& parent,
                                          std::string_view filter) override;
  Ref<DataProvider> INamespaceProvider_DocumentDataProvider() override { return Data; }
  void INamespaceProvider_Initialise(const Ref<MVProject>& project) override { mHost.SetTarget(project); }
  Ref<Object> INamespaceProvider_GetRootItem(std::string_view, std::string_view) override { return nullptr; }
  Ref<Object> INamespaceProvider_GetObjectFromQualifiedName(std::string_view) override { return nullptr; }
  Ref<NamespaceDef> INamespaceProvider_GetNamespaceDefFromObject(const Ref<Object>&, const Ref<Object>&) override {
    return nullptr;
  }
  void INamespaceProvider_AddRootItem(const Ref<Object>&) override {}
  void INamespaceProvider_StreamContent(Ref<Object>&, std::string_view) override {}
  std::string INamespaceProvider_Name() override { return "toy"; }
  void INamespaceProvider_ContentCreated(const Ref<NamespaceDef>& definition, const Ref<Object>& item,
                                         std::string_view file, bool core) override;
  void INamespaceProvider_BeforeProcessRootItem(const Ref<Object>& item) override { Note("before root", item); }
  void INamespaceProvider_AfterProcessRootItem(const Ref<Object>& item) override { Note("after root", item); }
  void INamespaceProvider_BeforeProcessItem(const Ref<Object>& item, const Ref<Object>&) override {
    Note("before", item);
  }
  void INamespaceProvider_AfterProcessItem(const Ref<Object>& item, const Ref<Object>&) override {
    Note("after", item);
  }
  Ref<Collection<Ref<Object>>> INamespaceProvider_GetModuleItems() override { return New<Collection<Ref<Object>>>(); }
  Variant INamespaceProvider_BrowseForMoniker(std::string_view) override { return {}; }
  bool INamespaceProvider_VerifyMoniker(std::string_view, bool) override { return false; }
  Variant INamespaceProvider_GetMonikerFromRootItem(const Ref<Object>&) override { return {}; }
  Variant INamespaceProvider_MakeMonikerRelative(std::string_view, std::string_view) override { return {}; }
  Variant INamespaceProvider_MakeMonikerAbsolute(std::string_view, std::string_view) override { return {}; }

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 private:
  void Note(std::string_view hook, const Ref<Object>& item);

  WeakReference<MVProject> mHost;
};

/// Counts what it is told.
class PlugIn final : public IMVProjectPlugIn {
 public:
  std::vector<std::string>* Calls = nullptr;

  void IMVProjectPlugIn_ModuleSelectionChanged() override {}
  void IMVProjectPlugIn_Initialise(const Ref<MVProject>&) override { Note("initialise"); }
  void IMVProjectPlugIn_InitialiseHost() override {}
  void IMVProjectPlugIn_ProjectLoaded() override { Note("loaded"); }
  void IMVProjectPlugIn_ModuleListChanged() override {}
  void IMVProjectPlugIn_PageChanged() override {}
  void IMVProjectPlugIn_BeforeSaveProject() override {}
  void IMVProjectPlugIn_AfterSaveProject() override {}
  void IMVProjectPlugIn_SaveXML(XMLDocument&) override {}
  void IMVProjectPlugIn_LoadXML(XMLDocument&) override {}
  std::string IMVProjectPlugIn_ValidatePage(std::string_view) override { return "True"; }
  void IMVProjectPlugIn_BeforeBuild() override { Note("before build"); }
  void IMVProjectPlugIn_BeforeCompile() override { Note("before compile"); }
  void IMVProjectPlugIn_AfterBuild() override { Note("after build"); }
  bool IMVProjectPlugIn_SomethingToDocument() override { return true; }
  void IMVProjectPlugIn_Terminate() override { Note("terminate"); }
  Ref<Collection<Ref<Object>>> IMVProjectPlugIn_RootItems(std::string_view) override {
    return New<Collection<Ref<Object>>>();
  }
  long IMVProjectPlugIn_RootItemTypeCount(std::string_view) override { return 0; }
  Variant IMVProjectPlugIn_ModuleItems() override { return {}; }
  Ref<Object> IMVProjectPlugIn_GetObjectFromQualifiedName(std::string_view) override { return nullptr; }
  std::string IMVProjectPlugIn_DefaultOutputFolder() override { return ""; }
  std::string IMVProjectPlugIn_DefaultOutputFileName() override { return ""; }
  void IMVProjectPlugIn_AddRootItem(std::string_view, const Ref<Object>&) override {}
  bool IMVProjectPlugIn_SupportsVBSourceProjects() override { return false; }
  Ref<NamespaceDefs> IMVProjectPlugIn_NamespaceDefs() override { return nullptr; }
  Ref<Object> IMVProjectPlugIn_CreateCommentFileForMoniker(std::string_view, std::string_view) override {
    return nullptr;
  }
  void IMVProjectPlugIn_ProjectChanged() override {}
  long IMVProjectPlugIn_RootItemCountForSelecter(std::string_view) override { return 0; }
  void IMVProjectPlugIn_UpdateControlStates() override {}
  Variant IMVProjectPlugIn_IsItemSameAsMoniker(const Ref<Object>&, std::string_view) override { return {}; }
  void IMVProjectPlugIn_Reset() override {}

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 private:
  void Note(std::string_view call) {
    if (Calls) Calls->emplace_back(call);
  }
};

/// Registers the namespace "toy" for as long as it lives. `calls`, if given, hears what plug-ins are told.
class Registration {
 public:
  explicit Registration(std::vector<std::string>* calls = nullptr);
  Registration(const Registration&) = delete;
  Registration& operator=(const Registration&) = delete;
  ~Registration() { PlugInRegistry::Unregister("toy"); }
};

}  // namespace quillbook::toy
