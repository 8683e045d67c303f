// Offers a project to the host engine as a tree of items.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "quillbook/generation/QBDataProvider.h"
#include "quillbook/host/INamespaceProvider.h"

namespace quillbook {

class Keyword;
class Keywords;
class MVProject;
class QBProject;

/// The namespace provider of "mv.quillbooklite": project, topics, related links, glossary and index as items, and the
/// side content of a build. One serves one generation.
class QBNamespaceProvider final : public INamespaceProvider {
 public:
  QBNamespaceProvider();

  /// The project of the host project; nothing outside a build.
  [[nodiscard]] Ref<quillbook::QBProject> QBProject() const;
  /// Resets the data provider and lets go of the host project.
  void Reset();

  /// Items of the kinds ":qbproject", ":topicset", ":topic", ":linkcategory", ":link", ":glossaryletter",
  /// ":glossaryitem", ":keyword" and ":keywordjump". An unknown kind or a parent of the wrong kind has none.
  [[nodiscard]] Ref<Object> INamespaceProvider_GetItems(const Ref<NamespaceDef>& Definition,
                                                        const Ref<Object>& ParentItem,
                                                        std::string_view Filter) override;
  [[nodiscard]] Ref<DataProvider> INamespaceProvider_DocumentDataProvider() override { return DDP; }
  void INamespaceProvider_Initialise(const Ref<MVProject>& Project) override;
  [[nodiscard]] Ref<Object> INamespaceProvider_GetRootItem(std::string_view, std::string_view) override { return {}; }
  /// The project by its full path, a topic by its key; nothing for any other name.
  [[nodiscard]] Ref<Object> INamespaceProvider_GetObjectFromQualifiedName(std::string_view QualifiedName) override;
  [[nodiscard]] Ref<NamespaceDef> INamespaceProvider_GetNamespaceDefFromObject(const Ref<Object>&,
                                                                               const Ref<Object>&) override {
    return {};
  }
  void INamespaceProvider_AddRootItem(const Ref<Object>&) override {}
  /// "keywords", "fkeywords" and "akeywords" fill a `Keywords` list, "files" writes the files of the output into a
  /// `FileSystemObject`. What stands behind a ":" in the type has no effect; any other type does nothing.
  void INamespaceProvider_StreamContent(Ref<Object>& OutputFile, std::string_view ContentType) override;
  [[nodiscard]] std::string INamespaceProvider_Name() override;
  /// Remembers a file of the output for the list of files. Control files of the help systems don't count.
  void INamespaceProvider_ContentCreated(const Ref<NamespaceDef>& Definition, const Ref<Object>& Item,
                                         std::string_view FileName, bool CoreContent) override;
  void INamespaceProvider_BeforeProcessRootItem(const Ref<Object>& RootItem) override;
  void INamespaceProvider_AfterProcessRootItem(const Ref<Object>& RootItem) override;
  void INamespaceProvider_BeforeProcessItem(const Ref<Object>&, const Ref<Object>&) override {}
  void INamespaceProvider_AfterProcessItem(const Ref<Object>& Item, const Ref<Object>& RootItem) override;
  [[nodiscard]] Ref<Collection<Ref<Object>>> INamespaceProvider_GetModuleItems() override;

  // This namespace has one root, which isn't named by a moniker.
  [[nodiscard]] Variant INamespaceProvider_BrowseForMoniker(std::string_view) override { return {}; }
  [[nodiscard]] bool INamespaceProvider_VerifyMoniker(std::string_view, bool) override { return false; }
  [[nodiscard]] Variant INamespaceProvider_GetMonikerFromRootItem(const Ref<Object>&) override { return {}; }
  [[nodiscard]] Variant INamespaceProvider_MakeMonikerRelative(std::string_view, std::string_view) override {
    return {};
  }
  [[nodiscard]] Variant INamespaceProvider_MakeMonikerAbsolute(std::string_view, std::string_view) override {
    return {};
  }

  // Library-internal

  /// Adds the keywords of all included topics: those that begin with "!" if `FIndex`, with "@" if `AIndex`; if neither,
  /// the others and the entries that the project generates.
  void GetKeywords(Keywords& Keywords, bool FIndex, bool AIndex);
  /// Adds one keyword without its mark; "|" separates levels, and commas of a keyword with levels are lost.
  void CreateKeyword(Keywords& Keywords, std::string_view Keyword, std::string_view Target);
  /// Writes one entry of a printed index and those below it by the scraps `ScrapName`, `ScrapName`_NO_JUMPS, _HEADER
  /// and _FOOTER, of which the last two aren't parsed.
  void OutputIndexEntry(FileSystemObject& OutputFile, std::string_view ScrapName,
                        const Ref<quillbook::Keyword>& Keyword, const Ref<NamespaceDef>& nd,
                        const Ref<Object>& ParentObject, DataProvider& DDP);

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 private:
  [[nodiscard]] Ref<Object> ItemsOfKind(std::string_view kind, const Ref<Object>& parent,
                                        std::string_view filter) const;
  [[nodiscard]] Ref<Object> ProjectItems() const;
  [[nodiscard]] Ref<Object> TopicItems(const Ref<Object>& parent) const;
  [[nodiscard]] Ref<Object> GlossaryLetters(bool wholeAlphabet) const;
  [[nodiscard]] Ref<Object> GlossaryItemsUnder(const Ref<Object>& letter) const;
  void SetDefaultPage(const quillbook::QBProject& project);
  void AddTopicKeywords(Keywords& Keywords, const quillbook::QBProject& project, const Topic& topic, bool FIndex,
                        bool AIndex);
  void WriteFileList(FileSystemObject& output) const;
  void WriteContents(Ref<Object>& output) const;
  [[nodiscard]] Variant DumpedTopicMap() const;
  [[nodiscard]] Variant DumpedProvider() const { return Variant::Opaque{"{Cannot dump external UDTs}"}; }

  Ref<Collection<std::string>> mFiles;  ///< full paths, under themselves; made by the first file
  WeakReference<MVProject> mMVProject;
  Ref<QBDataProvider> DDP;
  std::vector<std::string> mTopicMap;  ///< paths relative to the output, in the order of creation
  bool mTopicMapInitialised = false;
  std::int32_t mTopicMapCount = 0;
  bool HH2 = false;
};

}  // namespace quillbook
