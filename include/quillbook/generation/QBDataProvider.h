// Evaluates the elements of a template against the items of a project.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "quillbook/base/Collection.h"
#include "quillbook/host/DataProvider.h"

namespace quillbook {

class CommonProvider;
class MVProject;
class OtherFileFacts;
class QBProject;
class Topic;

/// Stands for the item that is being rendered and answers for each `%%...%%` of a text. The host project is held
/// weakly; `Reset` frees everything else.
class QBDataProvider final : public DataProvider {
 public:
  QBDataProvider();
  ~QBDataProvider() override;

  /// The page is being prepared for the topic editor.
  bool ForEdit = false;
  /// The page is a design-time preview.
  bool DesignTime = false;

  [[nodiscard]] Ref<quillbook::MVProject> MVProject() const;
  void SetMVProject(const Ref<quillbook::MVProject>& Project);
  /// Forgets items, definition, host project and common provider.
  void Reset();

  /// The text in place of an element. An evaluation error stands in the page as a text that begins with "!"; any other
  /// failure is reported and gives an empty text.
  [[nodiscard]] std::string DataProvider_ProvideData(const Ref<TemplateElement>& Element,
                                                     Ref<FileSystemObject>& FileSystemObj) override;
  void DataProvider_Initialise(const Ref<Object>&) override {}
  void DataProvider_Terminate() override {}
  /// Also starts the project's incrementing values again.
  void SetDataProvider_CurrentRootItem(const Ref<Object>& RootItem) override;
  [[nodiscard]] Ref<Object> DataProvider_CurrentRootItem() const override;
  void SetDataProvider_CurrentParentItem(const Ref<Object>& ParentItem) override { mCurrentParentItem = ParentItem; }
  [[nodiscard]] Ref<Object> DataProvider_CurrentParentItem() const override { return mCurrentParentItem; }
  void SetDataProvider_CurrentItemType(std::string_view ItemType) override { mCurrentItemType = ItemType; }
  [[nodiscard]] std::string DataProvider_CurrentItemType() const override { return mCurrentItemType; }
  void SetDataProvider_CurrentItem(const Ref<Object>& Item) override { mCurrentItem = Item; }
  [[nodiscard]] Ref<Object> DataProvider_CurrentItem() const override { return mCurrentItem; }
  void SetDataProvider_NamespaceDef(const Ref<NamespaceDef>& Definition) override;
  [[nodiscard]] Ref<NamespaceDef> DataProvider_NamespaceDef() const override;
  /// A project as item also becomes the root item, without effect on its incrementing values.
  void DataProvider_SetCurrentItem(const Ref<NamespaceDef>& Definition, const Ref<Object>& Item,
                                   std::string_view ItemType, const Ref<Object>& ParentItem) override;
  /// At most four rounds; what a fifth would expand stays as written.
  [[nodiscard]] std::string DataProvider_ParseForProperties(std::string_view Text) override;
  /// Value of a bare name, in any case: one of the item, the project or the build, else a variable of the template, a
  /// property of the project, or what the host's common provider knows.
  [[nodiscard]] std::string DataProvider_GetProperty(std::string_view Name) override;
  /// Same items, root, host project and `ForEdit`; not `DesignTime`, and no topics being included.
  [[nodiscard]] Ref<DataProvider> DataProvider_Clone() override;

  // Library-internal: what elements and properties need of the provider that they are evaluated for

  [[nodiscard]] const Ref<Object>& CurrentItem() const noexcept { return mCurrentItem; }
  [[nodiscard]] const std::string& CurrentItemType() const noexcept { return mCurrentItemType; }
  [[nodiscard]] const Ref<NamespaceDef>& Definition() const noexcept { return mNamespaceDef; }
  [[nodiscard]] const Ref<quillbook::QBProject>& CurrentRootItem() const noexcept { return mCurrentRootItem; }
  /// The project of the host project; nothing outside a build.
  [[nodiscard]] Ref<quillbook::QBProject> QBProject() const;
  /// The host's generic provider, set to the current item.
  [[nodiscard]] const Ref<quillbook::CommonProvider>& CommonProvider();
  /// A provider of the same host project and root, for other items.
  [[nodiscard]] Ref<QBDataProvider> ClonedDataProvider() const;
  /// `Value`, or the scrap `Default` where it is empty.
  [[nodiscard]] std::string LinkPreProcessScrapName(std::string_view Value, std::string_view Default) const;
  /// `DataProvider_ParseForProperties` for a text that is given away.
  [[nodiscard]] std::string ParsedForProperties(std::string Text);
  /// `Text` parsed for properties, with line breaks in place of its "<crlf>".
  [[nodiscard]] std::string Parse(std::string_view Text);
  /// `Text` with the references to generated pages as links.
  [[nodiscard]] std::string ParseForAnchor(std::string_view Text) const;
  /// `Text` with its glossary references resolved. Leaves what was done if it fails.
  [[nodiscard]] std::string ParseForGlossaryItems(std::string_view Text);
  /// `Text` without the marks of metadata blocks; what they enclose stays.
  [[nodiscard]] std::string RemoveMVMetaData(std::string_view Text) const;
  /// Makes the contents of the current doc type anew from the project's tree.
  void CreateTOC();
  /// The place of a topic section in the editor's page.
  [[nodiscard]] std::string TopicSectionEditSpan(const Ref<Object>& Item, std::string_view Name,
                                                 std::string_view DefaultName) const;
  /// Between these two, what elements ask about other files is remembered.
  void BeginGeneration();
  void EndGeneration() noexcept;
  /// Null outside a generation.
  [[nodiscard]] OtherFileFacts* FileFacts() const noexcept { return mFileFacts.get(); }

  /// Keys of the topics that are being included; nothing while none is.
  Ref<Collection<std::string>> IncludeStack;

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 private:
  [[nodiscard]] std::string GlossaryReference(std::string& term, Ref<QBDataProvider>& items, Ref<NamespaceDef>& kind);
  void ExpandProperties(std::string& text);

  Ref<Object> mCurrentItem;
  Ref<NamespaceDef> mNamespaceDef;
  Ref<Object> mCurrentParentItem;
  std::string mCurrentItemType;
  Ref<quillbook::QBProject> mCurrentRootItem;
  WeakReference<quillbook::MVProject> mMVProject;
  Ref<quillbook::CommonProvider> mCommonProvider;
  bool mCommonProviderSet = false;
  std::unique_ptr<OtherFileFacts> mFileFacts;
};

}  // namespace quillbook
