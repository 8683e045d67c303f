// What offers the items of one namespace to the engine.
#pragma once

#include <string>
#include <string_view>

#include "quillbook/base/Collection.h"
#include "quillbook/base/Object.h"

namespace quillbook {

class DataProvider;
class MVProject;
class NamespaceDef;

/// The engine walks the tree of a template's namespace definitions and asks the provider for the items of each kind.
class INamespaceProvider : public Object {
 public:
  /// The items of the kind of `Definition` below `ParentItem`: an enumerable object, never nothing.
  [[nodiscard]] virtual Ref<Object> INamespaceProvider_GetItems(const Ref<NamespaceDef>& Definition,
                                                                const Ref<Object>& ParentItem,
                                                                std::string_view Filter) = 0;
  /// The one data provider of the namespace.
  [[nodiscard]] virtual Ref<DataProvider> INamespaceProvider_DocumentDataProvider() = 0;
  /// Called once, before anything else. The provider may hold the project only weakly.
  virtual void INamespaceProvider_Initialise(const Ref<MVProject>& Project) = 0;
  [[nodiscard]] virtual Ref<Object> INamespaceProvider_GetRootItem(std::string_view Moniker, std::string_view Name) = 0;
  [[nodiscard]] virtual Ref<Object> INamespaceProvider_GetObjectFromQualifiedName(std::string_view QualifiedName) = 0;
  [[nodiscard]] virtual Ref<NamespaceDef> INamespaceProvider_GetNamespaceDefFromObject(const Ref<Object>& Item,
                                                                                       const Ref<Object>& Parent) = 0;
  virtual void INamespaceProvider_AddRootItem(const Ref<Object>& RootItem) = 0;
  /// Writes side content of a kind into `OutputFile`: a `Keywords` list for "keywords", "fkeywords" and "akeywords", a
  /// `FileSystemObject` otherwise. An unknown kind does nothing.
  virtual void INamespaceProvider_StreamContent(Ref<Object>& OutputFile, std::string_view ContentType) = 0;
  [[nodiscard]] virtual std::string INamespaceProvider_Name() = 0;
  /// Told of every file of the output that stands. `Definition` is nothing for a support file of the template, whose
  /// `Item` is a `FileSystemObject`; `CoreContent` is true for pages.
  virtual void INamespaceProvider_ContentCreated(const Ref<NamespaceDef>& Definition, const Ref<Object>& Item,
                                                 std::string_view FileName, bool CoreContent) = 0;
  virtual void INamespaceProvider_BeforeProcessRootItem(const Ref<Object>& RootItem) = 0;
  virtual void INamespaceProvider_AfterProcessRootItem(const Ref<Object>& RootItem) = 0;
  virtual void INamespaceProvider_BeforeProcessItem(const Ref<Object>& Item, const Ref<Object>& RootItem) = 0;
  virtual void INamespaceProvider_AfterProcessItem(const Ref<Object>& Item, const Ref<Object>& RootItem) = 0;
  [[nodiscard]] virtual Ref<Collection<Ref<Object>>> INamespaceProvider_GetModuleItems() = 0;

  // Monikers name root items of namespaces that have many; a namespace with one root answers nothing.
  [[nodiscard]] virtual Variant INamespaceProvider_BrowseForMoniker(std::string_view Moniker) = 0;
  [[nodiscard]] virtual bool INamespaceProvider_VerifyMoniker(std::string_view Moniker, bool Flag) = 0;
  [[nodiscard]] virtual Variant INamespaceProvider_GetMonikerFromRootItem(const Ref<Object>& RootItem) = 0;
  [[nodiscard]] virtual Variant INamespaceProvider_MakeMonikerRelative(std::string_view Moniker,
                                                                       std::string_view Base) = 0;
  [[nodiscard]] virtual Variant INamespaceProvider_MakeMonikerAbsolute(std::string_view Moniker,
                                                                       std::string_view Base) = 0;
};

}  // namespace quillbook
