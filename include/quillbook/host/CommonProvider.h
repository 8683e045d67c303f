// The host's generic data provider: names that have nothing to do with one kind of documentation.
#pragma once

#include "quillbook/host/DataProvider.h"

namespace quillbook {

class MVProject;

/// Answers for the page and the build: "itemtypename", "outputfilename", "rootpath" and others; the template
/// language's page lists them all.
class CommonProvider final : public DataProvider {
 public:
  /// Text that says "output nothing", as opposed to "I don't know".
  static constexpr std::string_view Discard = "{Discard}";

  void SetMVProject(const Ref<quillbook::MVProject>& Project);
  [[nodiscard]] Ref<quillbook::MVProject> MVProject() const;
  /// Forgets project and items.
  void Reset();

  /// Empty for a name that this provider doesn't know.
  [[nodiscard]] std::string DataProvider_ProvideData(const Ref<TemplateElement>& Element,
                                                     Ref<FileSystemObject>& FileSystemObj) override;
  /// Sets the host project.
  void DataProvider_Initialise(const Ref<Object>& Host) override;
  /// As `Reset`.
  void DataProvider_Terminate() override;
  void SetDataProvider_CurrentRootItem(const Ref<Object>& RootItem) override { mCurrentRootItem = RootItem; }
  [[nodiscard]] Ref<Object> DataProvider_CurrentRootItem() const override { return mCurrentRootItem; }
  void SetDataProvider_CurrentParentItem(const Ref<Object>& ParentItem) override { mCurrentParentItem = ParentItem; }
  [[nodiscard]] Ref<Object> DataProvider_CurrentParentItem() const override { return mCurrentParentItem; }
  void SetDataProvider_CurrentItemType(std::string_view ItemType) override { mCurrentItemType = ItemType; }
  [[nodiscard]] std::string DataProvider_CurrentItemType() const override { return mCurrentItemType; }
  void SetDataProvider_CurrentItem(const Ref<Object>& Item) override { mCurrentItem = Item; }
  [[nodiscard]] Ref<Object> DataProvider_CurrentItem() const override { return mCurrentItem; }
  void SetDataProvider_NamespaceDef(const Ref<NamespaceDef>& Definition) override;
  [[nodiscard]] Ref<NamespaceDef> DataProvider_NamespaceDef() const override;
  void DataProvider_SetCurrentItem(const Ref<NamespaceDef>& Definition, const Ref<Object>& Item,
                                   std::string_view ItemType, const Ref<Object>& ParentItem) override;
  /// One pass.
  [[nodiscard]] std::string DataProvider_ParseForProperties(std::string_view Text) override;
  /// "!UNCRECOGNISED ELEMENT 'name'!" for a name that this provider doesn't know.
  [[nodiscard]] std::string DataProvider_GetProperty(std::string_view Name) override;
  [[nodiscard]] Ref<DataProvider> DataProvider_Clone() override;

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 private:
  WeakReference<quillbook::MVProject> mMVProject;
  Ref<Object> mCurrentRootItem;
  Ref<Object> mCurrentParentItem;
  Ref<Object> mCurrentItem;
  std::string mCurrentItemType;
  Ref<NamespaceDef> mNamespaceDef;
};

}  // namespace quillbook
