// Side content of a build: the lists of keywords and of files.
#include <vector>

#include "quillbook/base/Failure.h"
#include "quillbook/base/Text.h"
#include "quillbook/frame/Procedure.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/generation/QBNamespaceProvider.h"
#include "quillbook/generation/Registration.h"
#include "quillbook/host/CollectionServices.h"
#include "quillbook/host/CommonProvider.h"
#include "quillbook/host/Keywords.h"
#include "quillbook/host/MVProject.h"
#include "quillbook/host/NamespaceDef.h"
#include "quillbook/project/QBProject.h"
#include "quillbook/structure/OtherFiles.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/TopicCategory.h"
#include "quillbook/topics/TopicKeyword.h"
#include "quillbook/topics/TopicKeywords.h"
#include "quillbook/topics/Topics.h"

namespace quillbook {
namespace {

/// Steps in which the list of files grows.
constexpr std::size_t TopicMapStep = 100;

template <class T>
T& OutputAs(const Ref<Object>& output) {
  auto* object = dynamic_cast<T*>(output.get());
  if (!object) throw Failure(output ? FailureNumber::TypeMismatch : FailureNumber::ObjectNotSet);
  return *object;
}

/// Control files of the help systems aren't part of what the reader sees. The extension is looked for inside the list,
/// so a file with the extension "hh" is taken for one too, and so is a file without any.
bool IsControlFile(std::string_view extension) {
  return FindIgnoringCase("hhc,hhk,hhp,hxc,hxf,hxt,hxk", extension) != std::string_view::npos;
}

bool IsFKeyword(std::string_view keyword) noexcept {
  return keyword.starts_with('!');
}

/// The mark may stand behind that of an F-keyword; a keyword with both is in neither list.
bool IsAKeyword(std::string_view keyword) noexcept {
  return keyword.starts_with('@') || keyword.starts_with("!@");
}

}  // namespace

void QBNamespaceProvider::INamespaceProvider_StreamContent(Ref<Object>& OutputFile, std::string_view ContentType) {
  Procedure(*this, "INamespaceProvider_StreamContent", [&](auto& p) {
    p("OutputFile", OutputFile);
    p("ContentType", ContentType);
  }).Run([&] {
    HH2 = NumberFromText(mMVProject.Target()->HelpVersion) == 2;
    const auto type = LowerCase(CollectionServices::BeforeColon(ContentType));
    if (type == "keywords")
      GetKeywords(OutputAs<Keywords>(OutputFile), false, false);
    else if (type == "fkeywords")
      GetKeywords(OutputAs<Keywords>(OutputFile), true, false);
    else if (type == "akeywords")
      GetKeywords(OutputAs<Keywords>(OutputFile), false, true);
    else if (type == "files")
      WriteFileList(OutputAs<FileSystemObject>(OutputFile));
    else if (type == "embeddedtoc")
      WriteContents(OutputFile);
  });
}

// Files.

void QBNamespaceProvider::INamespaceProvider_ContentCreated(const Ref<NamespaceDef>& Definition,
                                                            const Ref<Object>& Item, std::string_view FileName,
                                                            bool CoreContent) {
  Procedure(*this, "INamespaceProvider_ContentCreated", [&](auto& p) {
    p("NamespaceDef", Definition);
    p("Item", Item);
    p("FileName", FileName);
    p("CoreContent", CoreContent);
  }).Run([&] {
    if (!mFiles) mFiles = New<Collection<std::string>>();
    const auto file = New<FileSystemObject>(FileName);
    if (IsControlFile(file->Extension())) return;
    const auto path = file->FullName();
    if (mFiles->Contains(path)) return;
    const auto count = static_cast<std::size_t>(mTopicMapCount);
    if (!mTopicMapInitialised || mTopicMap.size() <= count)
      mTopicMap.resize(mTopicMap.size() + TopicMapStep + (mTopicMapInitialised ? 0 : 1));
    mTopicMapInitialised = true;
    const auto& folder = mMVProject.Target()->OutputDirectory;
    mTopicMap[count] = folder.empty() ? path : ReplaceAll(path, folder, "");
    ++mTopicMapCount;
    mFiles->Add(path, path);
  });
}

void QBNamespaceProvider::WriteFileList(FileSystemObject& output) const {
  const auto write = [&](std::string_view path) {
    output.Write(HH2 ? "<File Url = \"" + std::string(path) + "\"/>" : std::string(path));
  };
  output.SetUnicode(true);
  for (std::int32_t index = 0; index < mTopicMapCount; ++index) write(mTopicMap[static_cast<std::size_t>(index)]);
  for (const auto& file : *QBProject()->OtherFiles)
    if (file->IncludeInOutput() && !file->IsTemplateFile()) write(file->RelativeFileName());
}

void QBNamespaceProvider::WriteContents(Ref<Object>& output) const {
  const auto host = mMVProject.Target();
  Ref<FileSystemObject> file(output ? &OutputAs<FileSystemObject>(output) : nullptr);
  for (const auto& type : *host->DocTypes())
    if (EqualsIgnoringCase(type->ID(), QuillbookNamespace)) host->RenderTableOfContents(file, type);
  output = file;
}

// Keywords.

void QBNamespaceProvider::GetKeywords(Keywords& Keywords, bool FIndex, bool AIndex) {
  Procedure(*this, "GetKeywords", [&](auto& p) {
    p("FIndex", FIndex);
    p("AIndex", AIndex);
  }).Run([&] {
    const auto project = QBProject();
    for (const auto& topic : *project->Topics)
      if (topic->RuntimeIncludeInHelpFile()) AddTopicKeywords(Keywords, *project, *topic, FIndex, AIndex);
  });
}

void QBNamespaceProvider::AddTopicKeywords(Keywords& Keywords, const quillbook::QBProject& project, const Topic& topic,
                                           bool FIndex, bool AIndex) {
  const auto target = topic.QualifiedName() + ".html";
  Collection<std::string> seen;
  for (const auto& entry : *topic.Keywords()) {
    const auto& keyword = entry->Keyword();
    if (IsFKeyword(keyword) == FIndex && IsAKeyword(keyword) == AIndex) CreateKeyword(Keywords, keyword, target);
    IgnoreFailures([&] { seen.Add(keyword, keyword); });  // a keyword that is there twice
  }
  if (FIndex || AIndex) return;
  if (project.AutoGenerateIndexEntries() && topic.AutoGenerateIndexEntry() && !seen.Contains(topic.Title()))
    CreateKeyword(Keywords, topic.Title(), target);
  const auto category = topic.TopicCategory();
  if (category && project.AutoGenerateCategoryIndex() && category->AutoIndexEntries())
    CreateKeyword(Keywords, category->Name() + "|" + topic.Title(), target);
}

void QBNamespaceProvider::CreateKeyword(Keywords& Keywords, std::string_view Keyword, std::string_view Target) {
  if (Keyword.starts_with('!')) Keyword.remove_prefix(1);
  if (Keyword.starts_with('@')) Keyword.remove_prefix(1);
  if (Keyword.find('|') == std::string_view::npos) {
    Keywords.Add(Keyword, Target);
    return;
  }
  // The engine separates levels by commas, so those of the text have to go.
  Keywords.AddSubKeyword(ReplaceAll(ReplaceAll(Keyword, ",", ""), "|", ","), Target);
}

void QBNamespaceProvider::OutputIndexEntry(FileSystemObject& OutputFile, std::string_view ScrapName,
                                           const Ref<quillbook::Keyword>& Keyword, const Ref<NamespaceDef>& nd,
                                           const Ref<Object>& ParentObject, DataProvider& DDP) {
  struct Level {
    Ref<quillbook::Keyword> keyword;
    std::size_t next = 1;  ///< position of the child to come
  };
  Procedure(*this, "OutputIndexEntry", [&](auto& p) {
    p("ScrapName", ScrapName);
    p("Keyword", Keyword);
    p("nd", nd);
    p("ParentObject", ParentObject);
  }).Run([&] {
    const auto host = mMVProject.Target();
    const std::string scrap(ScrapName);
    std::vector<Level> levels;  // authors nest keywords as deep as they like
    const auto open = [&](const Ref<quillbook::Keyword>& keyword, const Ref<Object>& parent) {
      DDP.DataProvider_SetCurrentItem(nd, keyword, "Keyword", parent);
      const bool hasJumps = !keyword->Jumps()->IsEmpty();
      OutputFile.Write(DDP.DataProvider_ParseForProperties(host->Scrap(hasJumps ? scrap : scrap + "_NO_JUMPS")));
      if (!keyword->HasChildKeywords()) return;
      OutputFile.Write(host->Scrap(scrap + "_HEADER"));
      levels.push_back({keyword});
    };
    open(Keyword, ParentObject);
    while (!levels.empty()) {
      const auto keyword = levels.back().keyword;
      const auto position = levels.back().next++;
      if (position <= keyword->ChildKeywords()->Count()) {
        open(keyword->ChildKeywords()->Item(position), keyword);
      } else {
        OutputFile.Write(host->Scrap(scrap + "_FOOTER"));
        levels.pop_back();
      }
    }
  });
}

}  // namespace quillbook
