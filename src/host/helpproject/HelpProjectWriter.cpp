#include "host/helpproject/HelpProjectWriter.h"

#include <algorithm>

#include "host/Markup.h"
#include "host/OutputName.h"
#include "host/compile/CodePageText.h"
#include "host/helpproject/HtmlHelpProject.h"
#include "quillbook/base/CodePage.h"
#include "quillbook/base/Locale.h"
#include "quillbook/base/Text.h"
#include "quillbook/base/Variant.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/frame/services/PathHelper.h"
#include "quillbook/host/DataProvider.h"
#include "quillbook/host/MVProject.h"
#include "quillbook/host/ParserServices.h"

namespace quillbook::detail {

namespace {

/// A line of the list of files. For Help 2 providers wrap the path in an element, without escapes.
std::string_view ListedPath(std::string_view line) {
  constexpr std::string_view start = "<File Url = \"";
  constexpr std::string_view end = "\"/>";
  if (!line.starts_with(start) || !line.ends_with(end)) return line;
  return line.substr(start.size(), line.size() - start.size() - end.size());
}

bool IsRegistrable(std::string_view name) {
  return !name.empty() && std::ranges::all_of(name, [](char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '.' || c == '_' ||
           c == '-';
  });
}

}  // namespace

HelpProjectWriter::HelpProjectWriter(MVProject& project, OutputSession& output)
    : mProject(project),
      mOutput(output),
      mProvider(project.CurrentDocType()->NamespaceProvider()),
      mHelp2(LeadingNumber(project.HelpVersion) == 2) {}

void HelpProjectWriter::Write() {
  mProject.SetCurrentPage({});
  CollectFacts();
  if (mHelp2)
    WriteHelp2();
  else
    WriteHelp1();
}

void HelpProjectWriter::CollectFacts() {
  NameTheFiles();
  ChooseLanguage();
  CollectContents();
  mFacts.keywords = KeywordsOf("keywords");
  if (mHelp2) {
    mFacts.associativeKeywords = KeywordsOf("akeywords");
    mFacts.contextKeywords = KeywordsOf("fkeywords");
  }
  CollectFiles();
}

// Names and language.

void HelpProjectWriter::NameTheFiles() {
  auto& project = mProject.HelpProjectFile;
  if (project.empty())
    project =
        mProject.OutputDirectory + FileSystemObject(mProject.HelpFileName).BaseName() + (mHelp2 ? ".hxc" : ".hhp");
  const auto file = New<FileSystemObject>(project);
  mFacts.name = file->BaseName();
  const auto relative = PathHelper::RelativePath(file, New<FileSystemObject>(mProject.HelpFileName));
  mFacts.helpFile = ReplaceAll(relative, "\\", "/");
  mFacts.title = PlainTitle(mProject.Title);
  mFacts.defaultPage = mProject.DefaultPage;
  mFacts.helpNamespace = mProject.Help2Namespace;
  mFacts.fileId = mProject.Help2FileID;
  if (!mProject.RegisterPlugIn) return;
  for (const auto name : Split(mProject.PlugInNamespaces, ','))
    if (const auto trimmed = TrimBlanks(name); !trimmed.empty()) mFacts.plugInNamespaces.emplace_back(trimmed);
}

void HelpProjectWriter::ChooseLanguage() {
  if (const auto locale = Locale::FromID(mProject.LocaleID); locale && mProject.LocaleID != 0) {
    mFacts.localeId = static_cast<std::uint32_t>(mProject.LocaleID);
    mFacts.codePage = locale->CodePage();
  }
}

// Contents, indexes, files.

/// The provider makes the contents when a page asks for them; if none did, they are asked for in the same way.
void HelpProjectWriter::CollectContents() {
  const auto& definitions = *mProject.CurrentDocType()->TOCDefinitions();
  if (definitions.IsEmpty())
    static_cast<void>(
        ParserServices::ParseText("%%tableofcontents%%", *mProvider->INamespaceProvider_DocumentDataProvider()));
  if (!definitions.IsEmpty()) mFacts.contents = detail::LinesOf(*definitions.Item(1));
}

std::vector<IndexLine> HelpProjectWriter::KeywordsOf(std::string_view contentType) {
  const auto keywords = New<Keywords>();
  Ref<Object> output = keywords;
  mProvider->INamespaceProvider_StreamContent(output, contentType);
  return detail::LinesOf(*keywords, Collation(mFacts.localeId));
}

void HelpProjectWriter::CollectFiles() {
  const auto list = New<FileSystemObject>();
  list->OpenInMemory();
  Ref<Object> output = list;
  mProvider->INamespaceProvider_StreamContent(output, "files");
  const auto text = list->TakeText();
  for (auto line : Split(text, '\n')) {
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (line.empty()) continue;
    if (auto path = HelpPath(ListedPath(line)); !path.empty()) mFacts.files.push_back(std::move(path));
  }
}

std::string HelpProjectWriter::HelpPath(std::string_view listed) {
  auto path = ContainedPath(listed);
  if (!path) {
    Warn("help.file-outside",
         "'" + std::string(listed) + "' lies outside of the output folder; the help is without it");
    return {};
  }
  if (mOutput.Has(*path)) return *std::move(path);
  Warn("help.file-missing", "'" + *path + "' isn't in the output folder; the help is without it");
  return {};
}

// Writing.

void HelpProjectWriter::WriteHelp1() {
  const auto& name = mFacts.name;
  if (!mFacts.contents.empty()) Encode(name + ".hhc", HtmlHelpContentsText(mFacts), "contents");
  if (!mFacts.keywords.empty()) {
    const auto titleOf = [this](std::string_view page) { return mOutput.TitleOf(std::string(page)); };
    Encode(name + ".hhk", HtmlHelpIndexText(mFacts, titleOf), "index");
  }
  if (compile::CodePageText(mFacts.codePage).FindLacking(mFacts.title) != std::string_view::npos)
    Warn("help.code-page", "Code page " + std::to_string(mFacts.codePage) + " lacks characters of the title '" +
                               mFacts.title + "'; a question mark stands for each");
  mOutput.WriteControlFile(name + ".hhp",
                           EncodeCodePage(HtmlHelpProjectText(mFacts), mFacts.codePage, Unmappable::QuestionMark));
}

void HelpProjectWriter::Encode(const std::string& name, std::string_view text, std::string_view what) {
  compile::CodePageText codePage(mFacts.codePage);
  if (const auto at = codePage.FindLacking(text); at != std::string_view::npos) {
    auto end = at;
    static_cast<void>(NextCodePoint(text, end));
    Warn("help.code-page", "Code page " + std::to_string(mFacts.codePage) + " lacks characters of the " +
                               std::string(what) + ", the first of them '" + std::string(text.substr(at, end - at)) +
                               "'; a character reference stands for each");
  }
  mOutput.WriteControlFile(name, EncodeCodePage(text, mFacts.codePage, Unmappable::CharacterReference));
}

void HelpProjectWriter::WriteHelp2() {
  CheckNames();
  Write(Help2ProjectTexts(mFacts));
  Write(Help2DeliveredTexts(mFacts));
}

void HelpProjectWriter::CheckNames() {
  for (const auto& name : {mFacts.helpNamespace, mFacts.fileId})
    if (!IsRegistrable(name)) {
      Warn("help.namespace", "'" + name +
                                 "' can't be registered as a namespace or file id of Help 2: only letters, digits, "
                                 "'.', '_' and '-' may be in it");
      return;
    }
}

void HelpProjectWriter::Write(const NamedTexts& texts) {
  for (const auto& [name, text] : texts) {
    const bool isScript = name.ends_with(".bat");  // which Windows reads in its own code page
    mOutput.WriteControlFile(name, isScript ? EncodeCodePage(text, mFacts.codePage, Unmappable::QuestionMark) : text);
  }
}

void HelpProjectWriter::Warn(const char* code, std::string text) {
  mProject.AddNote({NoteLevel::Warning, code, std::move(text)});
}

}  // namespace quillbook::detail
