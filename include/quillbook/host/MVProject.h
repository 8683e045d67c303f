// The host project: settings and state of one generation.
#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "quillbook/base/CodePage.h"
#include "quillbook/base/Collection.h"
#include "quillbook/base/Event.h"
#include "quillbook/base/Object.h"
#include "quillbook/host/BuildNote.h"
#include "quillbook/host/DocType.h"
#include "quillbook/host/HelpCompiler.h"
#include "quillbook/host/VariableValue.h"

namespace quillbook {

class FileSystemObject;

/// What a build needs to know and what it tells. A caller sets the template of a doc type, makes that doc type the
/// current one, sets the settings, and hands the project to an `MVProjectBuild`. Paths have the form of stored paths.
class MVProject final : public Object {
 public:
  MVProject();
  ~MVProject() override;

  // Settings.
  std::string OutputDirectory;
  std::string HelpFileName;
  /// Title of the help file.
  std::string Title;
  /// "1" for HTML Help 1.x, "2" for Microsoft Help 2.x.
  std::string HelpVersion;
  std::string Help2Namespace;
  std::string Help2FileID;
  /// Register the help file as a plug-in of the namespaces in `PlugInNamespaces`, separated by commas.
  bool RegisterPlugIn = false;
  std::string PlugInNamespaces;
  /// Code page of the pages. A character that it lacks becomes a numeric character reference.
  int CodePage = CodePageUtf8;
  /// Number of the Windows locale whose readers the help is for; 0 for none in particular.
  std::int32_t LocaleID = 0;
  bool CompileHelpFile = false;
  /// A help compiler's program file; empty for the compiler that this system brings along.
  std::string CompilerPath;
  /// Compiles in place of both; nothing unless a caller has a compiler of its own.
  Ref<HelpCompiler> Compiler;
  /// A build copies the support files of the template.
  bool CopySupportFiles = true;
  /// File name of the page that a reader sees first; empty if there is none.
  std::string DefaultPage;
  std::string HelpProjectFile;
  /// Filled by a compilation; empty if there was nothing to tell.
  std::string CompilerLog;
  // How `RenderTableOfContents` renders: what stands before and behind the entries of the top level and of each book,
  // the name of the scrap that shows one entry (empty for a plain list item), and what stands behind each entry.
  std::string BookPrefix = "<UL>";
  std::string BookSuffix = "</UL>";
  std::string NodeScrap;
  std::string NodeSuffix;

  /// Asked before each page and, with a `FileSystemObject` of the template as item and neither layout nor definition,
  /// before each support file. Setting the last argument leaves the file out.
  Event<const Ref<PageLayout>&, const Ref<NamespaceDef>&, const Ref<Object>&, bool&> BeforeOutputNamespacePage;
  /// A file of the output stands: written, or found unchanged. The full path.
  Event<std::string_view> ContentCreated;
  /// A message of the build, as it arises.
  Event<const BuildNote&> NoteAdded;
  /// Stage ("writing") and message ("Generating content").
  Event<std::string_view, std::string_view> ProgressChanged;

  /// One for each registered namespace and each that a related project named. Made on first use.
  [[nodiscard]] const Ref<quillbook::DocTypes>& DocTypes();
  /// Nothing until it is set.
  [[nodiscard]] const Ref<DocType>& CurrentDocType() const noexcept { return mCurrentDocType; }
  void SetCurrentDocType(const Ref<DocType>& DocType) { mCurrentDocType = DocType; }
  /// The template of the current doc type, or nothing.
  [[nodiscard]] Ref<PageTemplate> CurrentTemplate() const;
  /// What is documented, by namespace.
  [[nodiscard]] const Ref<Collection<Ref<Object>>>& RootItems() const noexcept { return mRootItems; }
  /// Values of template variables that replace the template's own.
  [[nodiscard]] const Ref<VariableValues>& Variables() const noexcept { return mVariables; }
  /// The value of `Variables`, else the default of the current template, else empty.
  [[nodiscard]] std::string ValueOfVariable(std::string_view Name) const;

  /// Reads a related project file (`*.mvp`): the doc types that it names, with their templates. `DocTypes` is empty
  /// after a file that cannot be read; a note says why.
  void LoadProject(std::string_view Path);
  /// Ends the plug-ins and gives back what the project holds: items, doc types, variables. Settings and listeners
  /// stay.
  void Reset();

  /// Text of a scrap of the current template; "!MISSING SCRAP 'name'!" if there is none.
  [[nodiscard]] std::string Scrap(std::string_view Name) const;

  /// Writes the contents of a doc type to `File`. A file that isn't open for writing is the page in the making: the
  /// contents then stand there where they were asked for. Makes the object if there is none.
  void RenderTableOfContents(Ref<FileSystemObject>& File, const Ref<DocType>& DocType);

  void SetProgressStage(std::string_view Stage);
  void SetProgressMessage(std::string_view Message);
  void AddNote(const BuildNote& note);

  /// Asks a running generation to stop before its next page. May be called from a signal handler.
  void Cancel() noexcept { mCancelled.store(true, std::memory_order_relaxed); }
  [[nodiscard]] bool IsCancelled() const noexcept { return mCancelled.load(std::memory_order_relaxed); }

  /// The page that is being written, relative to the output directory with "/"; empty between pages.
  [[nodiscard]] const std::string& CurrentPage() const noexcept { return mCurrentPage; }
  /// For the build.
  void SetCurrentPage(std::string_view Page) { mCurrentPage = Page; }

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 private:
  void MakeDocTypes();

  Ref<quillbook::DocTypes> mDocTypes;
  bool mDocTypesMade = false;
  Ref<DocType> mCurrentDocType;
  Ref<Collection<Ref<Object>>> mRootItems;
  Ref<VariableValues> mVariables;
  std::string mProgressStage;
  std::string mProgressMessage;
  std::string mCurrentPage;
  std::atomic<bool> mCancelled{false};
};

}  // namespace quillbook
