#include "host/helpproject/Help2Project.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "host/Markup.h"
#include "host/compile/ProjectFiles.h"
#include "quillbook/base/Text.h"

namespace quillbook::detail {

namespace {

/// One of the indexes.
struct Index {
  std::string_view name;     ///< that the viewer knows it by
  std::string_view suffix;   ///< of its file
  std::string_view moniker;  ///< by which a collection offers it
  const std::vector<IndexLine> HelpProjectFacts::*lines;
};
constexpr auto Indexes = std::to_array<Index>({
    {"K", "_K.hxk", "!DefaultKeywordIndex", &HelpProjectFacts::keywords},
    {"A", "_A.hxk", "!DefaultAssociativeIndex", &HelpProjectFacts::associativeKeywords},
    {"F", "_F.hxk", "!DefaultContextWindowIndex", &HelpProjectFacts::contextKeywords},
});
constexpr std::string_view NamedPagesSuffix = "_N.hxk";

enum class For { Compiler, Viewer };

/// The beginning of a file. Only a file that is compiled says where the grammar is.
std::string Head(std::string_view root, std::string_view grammar, For whom) {
  auto text = fmt::format("<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<!DOCTYPE {}", root);
  if (whom == For::Compiler) text += fmt::format(" SYSTEM \"MS-Help://Hx/Resources/{}.dtd\"", grammar);
  return text + ">\r\n";
}

std::string Attribute(std::string_view name, std::string_view value) {
  return value.empty() ? std::string() : fmt::format(" {}=\"{}\"", name, EscapeMarkup(value));
}

/// Addresses of pages, in the form that the compiler lists them; others as they are.
std::string PageUrl(std::string_view url) {
  return compile::IsOutsideAddress(url) ? std::string(url) : ReplaceAll(url, "/", "\\");
}

// Contents.

std::string ContentsStart(std::uint32_t localeId, For whom) {
  return Head("HelpTOC", "HelpTOC", whom) + fmt::format("<HelpTOC DTDVersion=\"1.0\" LangId=\"{}\">\r\n", localeId);
}

std::string NodeText(std::string_view title, std::string_view url, bool hasChildren) {
  return "<HelpTOCNode" + Attribute("Title", title) + Attribute("Url", url) + (hasChildren ? ">\r\n" : "/>\r\n");
}

std::string ContentsText(const HelpProjectFacts& facts) {
  auto text = ContentsStart(facts.localeId, For::Compiler);
  const auto indent = [&](int level) { text.append(2 * static_cast<std::size_t>(std::min(level, 20)) + 2, ' '); };
  ForEachNested(
      facts.contents,
      [&](const ContentsLine& line) {
        indent(line.level);
        text += NodeText(PlainTitle(line.node->Caption), PageUrl(PlainTitle(line.node->URL)), line.hasChildren);
      },
      [&](const ContentsLine& line) {
        if (!line.hasChildren) return;
        indent(line.level);
        text += "</HelpTOCNode>\r\n";
      });
  // The grammar wants an entry.
  if (facts.contents.empty()) text += "  " + NodeText(facts.title, PageUrl(facts.defaultPage), false);
  return text + "</HelpTOC>\r\n";
}

// Files.

std::string FileListText(const HelpProjectFacts& facts) {
  auto text = Head("HelpFileList", "HelpFileList", For::Compiler) + "<HelpFileList DTDVersion=\"1.0\">\r\n";
  for (const auto& file : facts.files) text += "  <File" + Attribute("Url", PageUrl(file)) + "/>\r\n";
  return text + "</HelpFileList>\r\n";
}

// Indexes.

std::string IndexStart(std::string_view name, std::uint32_t localeId, For whom) {
  return Head("HelpIndex", "HelpIndex", whom) +
         fmt::format("<HelpIndex Name=\"{}\" DTDVersion=\"1.0\" LangId=\"{}\" Visible=\"{}\" AutoInclude=\"Yes\">\r\n",
                     name, localeId, name == "K" ? "Yes" : "No");
}

constexpr std::string_view IndexEnd = "</HelpIndex>\r\n";

std::string KeywordText(std::string_view term, const std::vector<std::string>& pages) {
  auto text = "  <Keyword" + Attribute("Term", term) + ">\r\n";
  for (const auto& page : pages) text += "    <Jump" + Attribute("Url", PageUrl(page)) + "/>\r\n";
  return text + "  </Keyword>\r\n";
}

/// A term names all its levels. Keywords without pages of their own come with those below them.
std::string IndexText(const Index& index, const HelpProjectFacts& facts) {
  auto text = IndexStart(index.name, facts.localeId, For::Compiler);
  std::string term;
  std::vector<std::size_t> lengths;  // of the term at each level
  for (const auto& line : facts.*index.lines) {
    lengths.resize(static_cast<std::size_t>(line.level));
    term.resize(lengths.empty() ? 0 : lengths.back());
    term.append(lengths.empty() ? "" : ", ").append(line.name);
    lengths.push_back(term.size());
    if (line.keyword->Jumps()->IsEmpty()) continue;
    std::vector<std::string> pages;
    for (const auto& jump : *line.keyword->Jumps()) pages.push_back(jump->Target());
    text += KeywordText(term, pages);
  }
  return text.append(IndexEnd);
}

/// Pages that the viewer asks for by name.
std::string NamedPagesText(const HelpProjectFacts& facts) {
  auto text = IndexStart("NamedUrlIndex", facts.localeId, For::Compiler);
  for (const auto* name : {"DefaultPage", "HomePage"}) text += KeywordText(name, {facts.defaultPage});
  return text.append(IndexEnd);
}

// Collections.

std::string Moniker(std::string_view name, std::string_view maker, std::string_view data) {
  return fmt::format("  <ItemMoniker Name=\"{}\" ProgId=\"HxDs.{}\" InitData=\"{}\"/>\r\n", name, maker,
                     EscapeMarkup(data));
}

/// A collection of files called `name`. The viewer's has no page names, as those are in the help file.
std::string CollectionText(const HelpProjectFacts& facts, const std::string& name, For whom) {
  const bool compiled = whom == For::Compiler;
  const bool named = compiled && !facts.defaultPage.empty();
  auto text = Head("HelpCollection", "HelpCollection", whom) +
              fmt::format("<HelpCollection DTDVersion=\"1.0\" FileVersion=\"1.0.0.0\" LangId=\"{}\"", facts.localeId) +
              Attribute("Title", facts.title) + ">\r\n";
  if (compiled)
    text += "  <CompilerOptions" + Attribute("OutputFile", facts.helpFile) +
            " CreateFullTextIndex=\"Yes\" CompileResult=\"Hxs\">\r\n    <IncludeFile" +
            Attribute("File", name + ".hxf") + "/>\r\n  </CompilerOptions>\r\n";
  text += "  <TOCDef" + Attribute("File", name + ".hxt") + "/>\r\n";
  const auto indexDef = [&](std::string_view suffix) {
    text += "  <KeywordIndexDef" + Attribute("File", name + std::string(suffix)) + "/>\r\n";
  };
  for (const auto& index : Indexes) indexDef(index.suffix);
  if (named) indexDef(NamedPagesSuffix);
  text += Moniker("!DefaultTOC", "HxHierarchy", name);
  text += Moniker("!DefaultFullTextSearch", "HxFullTextSearch", "FTS");
  for (const auto& index : Indexes) text += Moniker(index.moniker, "HxIndex", index.name);
  if (named) text += Moniker("!DefaultNamedUrlIndex", "HxIndex", "NamedUrlIndex");
  return text + "</HelpCollection>\r\n";
}

// Registration.

/// A text within double quotes of a batch file.
std::string BatchText(std::string_view text) {
  auto safe = ReplaceAll(ReplaceAll(text, "%", "%%"), "\"", "'");
  std::replace_if(
      safe.begin(), safe.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; }, ' ');
  return safe;
}

std::string BatchStart(std::string_view purpose) {
  return fmt::format(
      "@echo off\r\nrem {} Run it as administrator. HXREG names the program that registers help.\r\n"
      "if \"%HXREG%\"==\"\" (\r\n  echo Set HXREG to the program that registers Microsoft Help 2 collections.\r\n"
      "  exit /b 1\r\n)\r\ncd /d \"%~dp0\"\r\n",
      purpose);
}

std::string RegisterText(const HelpProjectFacts& facts, const std::string& collection) {
  const auto space = BatchText(facts.helpNamespace);
  const auto description = BatchText(facts.title);
  auto text = BatchStart("Makes the help known to this computer.");
  text += fmt::format("\"%HXREG%\" /R /N /Namespace:{} /Description:\"{}\" /Collection:\"{}.hxc\"\r\n", space,
                      description, BatchText(collection));
  text += fmt::format("\"%HXREG%\" /R /T /namespace:{} /id:{} /langid:{} /helpfile:\"{}.hxs\"\r\n", space,
                      BatchText(facts.fileId), facts.localeId, BatchText(facts.HelpFileStem()));
  for (const auto& parent : facts.plugInNamespaces)
    text += fmt::format("\"%HXREG%\" /R /P /productnamespace:{} /producthxt:_DEFAULT /namespace:{} /hxt:_DEFAULT\r\n",
                        BatchText(parent), space);
  return text;
}

/// Plug-ins go first, the namespace last.
std::string UnregisterText(const HelpProjectFacts& facts) {
  const auto space = BatchText(facts.helpNamespace);
  auto text = BatchStart("Takes the help away from this computer.");
  for (const auto& parent : facts.plugInNamespaces)
    text += fmt::format("\"%HXREG%\" /U /P /productnamespace:{} /producthxt:_DEFAULT /namespace:{} /hxt:_DEFAULT\r\n",
                        BatchText(parent), space);
  text += fmt::format("\"%HXREG%\" /U /T /namespace:{} /id:{} /langid:{}\r\n", space, BatchText(facts.fileId),
                      facts.localeId);
  return text + fmt::format("\"%HXREG%\" /U /N /Namespace:{}\r\n", space);
}

}  // namespace

NamedTexts Help2ProjectTexts(const HelpProjectFacts& facts) {
  NamedTexts texts{{facts.name + ".hxt", ContentsText(facts)}, {facts.name + ".hxf", FileListText(facts)}};
  for (const auto& index : Indexes) texts.emplace_back(facts.name + std::string(index.suffix), IndexText(index, facts));
  if (!facts.defaultPage.empty()) texts.emplace_back(facts.name + std::string(NamedPagesSuffix), NamedPagesText(facts));
  texts.emplace_back(facts.name + ".hxc", CollectionText(facts, facts.name, For::Compiler));
  return texts;
}

NamedTexts Help2DeliveredTexts(const HelpProjectFacts& facts) {
  const auto name = "COL_" + facts.HelpFileStem();
  NamedTexts texts{{name + ".hxt", ContentsStart(facts.localeId, For::Viewer) + "  <HelpTOCNode NodeType=\"TOC\"" +
                                       Attribute("Url", facts.fileId) + "/>\r\n</HelpTOC>\r\n"}};
  for (const auto& index : Indexes)
    texts.emplace_back(name + std::string(index.suffix),
                       IndexStart(index.name, facts.localeId, For::Viewer).append(IndexEnd));
  texts.emplace_back(name + ".hxc", CollectionText(facts, name, For::Viewer));
  texts.emplace_back("registerhelp2.bat", RegisterText(facts, name));
  texts.emplace_back("unregisterhelp2.bat", UnregisterText(facts));
  return texts;
}

}  // namespace quillbook::detail
