#include "quillbook/host/MVProject.h"

#include "host/ContentsPage.h"
#include "quillbook/base/Failure.h"
#include "quillbook/base/Text.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/frame/services/XMLDocument.h"
#include "quillbook/host/DataProvider.h"
#include "quillbook/host/PlugInRegistry.h"
#include "quillbook/host/TemplateStore.h"

namespace quillbook {

MVProject::MVProject()
    : mDocTypes(New<quillbook::DocTypes>()),
      mRootItems(New<Collection<Ref<Object>>>()),
      mVariables(New<VariableValues>()) {}

MVProject::~MVProject() = default;

const Ref<DocTypes>& MVProject::DocTypes() {
  if (!mDocTypesMade) MakeDocTypes();
  return mDocTypes;
}

void MVProject::MakeDocTypes() {
  mDocTypesMade = true;
  const Ref<MVProject> self(this);
  for (const auto& registration : PlugInRegistry::All()) {
    auto provider = registration.makeProvider();
    auto plugIn = registration.makePlugIn ? registration.makePlugIn() : nullptr;
    mDocTypes->Add(New<DocType>(self, registration.namespaceName, provider, plugIn), registration.namespaceName);
    provider->INamespaceProvider_Initialise(self);
    if (plugIn) plugIn->IMVProjectPlugIn_Initialise(self);
  }
}

Ref<PageTemplate> MVProject::CurrentTemplate() const {
  return mCurrentDocType ? mCurrentDocType->Template() : nullptr;
}

std::string MVProject::ValueOfVariable(std::string_view Name) const {
  if (const auto* value = mVariables->Find(Name)) return (*value)->Value;
  const auto pageTemplate = CurrentTemplate();
  const auto* variable = pageTemplate ? pageTemplate->Variables()->Find(Name) : nullptr;
  return variable ? (*variable)->Default() : std::string();
}

void MVProject::LoadProject(std::string_view Path) {
  Reset();
  const FileSystemObject file(Path);
  const auto refuse = [&](const std::string& reason, std::size_t line = 0, std::size_t column = 0) {
    mDocTypes->Clear();
    mDocTypesMade = true;  // there are none
    AddNote({NoteLevel::Error, "project.unreadable",
             "The related project '" + file.NativePath() + "' cannot be read: " + reason, file.NativePath(), line,
             column});
  };
  try {
    auto text = file.ReadAll();
    if (const auto check = XMLDocument::Check(text); !check) return refuse(check.message, check.line, check.column);
    XMLDocument document;
    document.LoadXML(std::move(text));
    const auto root = document.DocumentElement();
    if (!EqualsIgnoringCase(root.Name(), "mvproject")) return refuse("it has no root element 'mvproject'");
    for (const auto& element : root.ChildElements()) {
      if (!EqualsIgnoringCase(element.Name(), "doctype")) continue;
      const auto id = element.Attributes().Item("id").Value();
      const auto* docType = DocTypes()->Find(id);
      if (!docType) return refuse("nothing here knows the doc type '" + std::string(id) + "'");
      if (const auto name = element.Attributes().Find("template"))
        (*docType)->SetTemplate(TemplateStore::OfApartment()->Find(*name));
    }
  } catch (const Failure& failure) {
    return refuse(failure.Description());
  }
  for (const auto& docType : *DocTypes())
    if (docType->PlugIn()) docType->PlugIn()->IMVProjectPlugIn_ProjectLoaded();
}

void MVProject::Reset() {
  // A plug-in looks its doc type up while it ends, and what it lets go may be the last to hold this project.
  const Ref<MVProject> self(this);
  for (const auto& docType : *mDocTypes)
    if (docType->PlugIn()) docType->PlugIn()->IMVProjectPlugIn_Terminate();
  mCurrentDocType = nullptr;
  mDocTypes->Clear();
  mDocTypesMade = false;
  mRootItems->Clear();
  mVariables->Clear();
  mCurrentPage.clear();
  mProgressStage.clear();
  mProgressMessage.clear();
  mCancelled.store(false, std::memory_order_relaxed);
}

std::string MVProject::Scrap(std::string_view Name) const {
  const auto pageTemplate = CurrentTemplate();
  const auto* scrap = pageTemplate ? pageTemplate->FindScrap(Name) : nullptr;
  return scrap ? *scrap : "!MISSING SCRAP '" + std::string(Name) + "'!";
}

void MVProject::RenderTableOfContents(Ref<FileSystemObject>& File, const Ref<DocType>& DocType) {
  if (!File) File = New<FileSystemObject>();
  if (!File->IsOpen()) File->OpenInMemory();
  if (DocType->TOCDefinitions()->IsEmpty()) return;
  const auto provider = DocType->NamespaceProvider()->INamespaceProvider_DocumentDataProvider();
  File->WriteText(detail::ContentsAsLists(*DocType->TOCDefinitions()->Item(1), *this, *provider));
}

void MVProject::SetProgressStage(std::string_view Stage) {
  mProgressStage = Stage;
  ProgressChanged.Raise(mProgressStage, mProgressMessage);
}

void MVProject::SetProgressMessage(std::string_view Message) {
  mProgressMessage = Message;
  ProgressChanged.Raise(mProgressStage, mProgressMessage);
}

void MVProject::AddNote(const BuildNote& note) {
  NoteAdded.Raise(note);
}

const TypeInfo& MVProject::StaticType() {
  static const TypeInfo type = Describe<MVProject>("MVProject")
                                   .Public<&MVProject::OutputDirectory>("OutputDirectory")
                                   .Public<&MVProject::HelpFileName>("HelpFileName")
                                   .Public<&MVProject::Title>("Title")
                                   .Public<&MVProject::HelpVersion>("HelpVersion")
                                   .Public<&MVProject::Help2Namespace>("Help2Namespace")
                                   .Public<&MVProject::Help2FileID>("Help2FileID")
                                   .Public<&MVProject::RegisterPlugIn>("RegisterPlugIn")
                                   .Public<&MVProject::PlugInNamespaces>("PlugInNamespaces")
                                   .Public<&MVProject::CodePage>("CodePage")
                                   .Public<&MVProject::LocaleID>("LocaleID")
                                   .Public<&MVProject::CompileHelpFile>("CompileHelpFile")
                                   .Public<&MVProject::CompilerPath>("CompilerPath")
                                   .Public<&MVProject::CopySupportFiles>("CopySupportFiles")
                                   .Public<&MVProject::DefaultPage>("DefaultPage")
                                   .Public<&MVProject::HelpProjectFile>("HelpProjectFile")
                                   .Public<&MVProject::CompilerLog>("CompilerLog")
                                   .Public<&MVProject::BookPrefix>("BookPrefix")
                                   .Public<&MVProject::BookSuffix>("BookSuffix")
                                   .Public<&MVProject::NodeScrap>("NodeScrap")
                                   .Public<&MVProject::NodeSuffix>("NodeSuffix")
                                   .Field<&MVProject::mDocTypes>("mDocTypes")
                                   .Field<&MVProject::mCurrentDocType>("mCurrentDocType")
                                   .Field<&MVProject::mRootItems>("mRootItems")
                                   .Field<&MVProject::mVariables>("mVariables")
                                   .Field<&MVProject::mCurrentPage>("mCurrentPage")
                                   .Done();
  return type;
}

}  // namespace quillbook
