#include "host/compile/Help2Sources.h"

#include <cstdlib>
#include <functional>

#include "host/compile/Names.h"
#include "host/compile/PlaceFinder.h"
#include "host/compile/TagScanner.h"
#include "quillbook/base/CodePage.h"
#include "quillbook/base/Text.h"

namespace quillbook::compile {

namespace {

/// An attribute's value, references resolved.
std::string Value(const HtmlToken& token, std::string_view name) {
  return ResolveReferences(AttributeValue(token.attributes, name));
}

/// An attribute, and where its value stands; the tag's own place if it has none.
SourceMention Mention(const HtmlToken& token, std::string_view name, PlaceFinder& places) {
  const auto value = AttributeValue(token.attributes, name);
  return {ResolveReferences(value), value.empty() ? places.At(token.offset) : places.Of(value)};
}

void ForEachTag(std::string_view text, const std::function<void(const HtmlToken& token, PlaceFinder& places)>& visit) {
  TagScanner scanner(text);
  PlaceFinder places(text);
  HtmlToken token;
  while (scanner.Next(token))
    if (token.isTag) visit(token, places);
}

/// True for `<x ... />`.
bool EndsItself(const HtmlToken& token) {
  return token.attributes.ends_with('/');
}

}  // namespace

std::string DecodeXml(std::string bytes) {
  if (bytes.starts_with("\xEF\xBB\xBF")) return bytes.substr(3);
  if (bytes.starts_with("\xFF\xFE")) return FromUtf16Bytes(std::string_view(bytes).substr(2));
  if (bytes.starts_with("\xFE\xFF")) return FromUtf16Bytes(std::string_view(bytes).substr(2), true);
  const auto declaration = std::string_view(bytes).substr(0, bytes.find("?>"));
  if (!declaration.starts_with("<?xml")) return bytes;
  const auto codePage = CodePageFromCharset(AttributeValue(declaration.substr(5), "encoding"));
  return codePage == 0 || codePage == CodePageUtf8 ? bytes : DecodeCodePage(bytes, codePage);
}

Help2Collection ParseCollection(std::string_view text) {
  Help2Collection collection;
  ForEachTag(text, [&](const HtmlToken& token, PlaceFinder& places) {
    if (token.isEnd) return;
    const auto mention = [&](std::vector<SourceMention>& list) { list.push_back(Mention(token, "File", places)); };
    if (token.name == "HelpCollection") {
      collection.isCollection = true;
      collection.title = Value(token, "Title");
      if (const auto language = Mention(token, "LangId", places); !language.path.empty()) {
        collection.localeId = static_cast<std::uint32_t>(std::atoi(language.path.c_str()));
        collection.localePlace = language.place;
      }
    } else if (token.name == "CompilerOptions") {
      collection.outputFile = Value(token, "OutputFile");
      if (auto stopWords = Mention(token, "StopWordFile", places); !stopWords.path.empty())
        collection.otherSources.push_back(std::move(stopWords));
    } else if (token.name == "IncludeFile") {
      mention(collection.fileLists);
    } else if (token.name == "TOCDef") {
      mention(collection.contents);
    } else if (token.name == "KeywordIndexDef") {
      mention(collection.indexes);
    } else if (token.name == "VTopicDef" || token.name == "AttributeDef" || token.name == "SampleDef") {
      mention(collection.otherSources);
    }
  });
  return collection;
}

Sitemap ParseHelp2Contents(std::string_view text) {
  Sitemap contents;
  int depth = 0;
  ForEachTag(text, [&](const HtmlToken& token, PlaceFinder& places) {
    if (token.name != "HelpTOCNode") return;
    if (token.isEnd) {
      if (depth > 0) --depth;
      return;
    }
    auto& entry = contents.entries.emplace_back();
    entry.level = depth;
    auto title = Mention(token, "Title", places);
    auto page = Mention(token, "Url", places);
    entry.place = title.place;
    entry.name = std::move(title.path);
    if (EqualsIgnoringCase(Value(token, "NodeType"), "TOC"))
      entry.merge = std::move(page.path);
    else if (!page.path.empty())
      entry.targets.push_back({entry.name, std::move(page.path), page.place, entry.place});
    if (!EndsItself(token)) ++depth;
  });
  return contents;
}

Sitemap ParseHelp2Index(std::string_view text, std::string& indexName) {
  Sitemap index;
  ForEachTag(text, [&](const HtmlToken& token, PlaceFinder& places) {
    if (token.isEnd) return;
    if (token.name == "HelpIndex") {
      indexName = Value(token, "Name");
    } else if (token.name == "Keyword") {
      auto& entry = index.entries.emplace_back();
      auto term = Mention(token, "Term", places);
      entry.place = term.place;
      entry.name = std::move(term.path);
    } else if (token.name == "Jump" && !index.entries.empty()) {
      auto& entry = index.entries.back();
      auto page = Mention(token, "Url", places);
      entry.targets.push_back({entry.name, std::move(page.path), page.place, entry.place});
    }
  });
  return index;
}

std::vector<SourceMention> ParseFileList(std::string_view text) {
  std::vector<SourceMention> files;
  ForEachTag(text, [&](const HtmlToken& token, PlaceFinder& places) {
    if (!token.isEnd && token.name == "File") files.push_back(Mention(token, "Url", places));
  });
  return files;
}

bool FitsPattern(std::string_view name, std::string_view pattern) {
  // Goes back to the last star only: what an earlier one could take, that one can.
  std::size_t at = 0;
  std::size_t of = 0;
  std::size_t star = std::string_view::npos;
  std::size_t taken = 0;
  while (at < name.size()) {
    if (of < pattern.size() && pattern[of] == '*') {
      star = of++;
      taken = at;
    } else if (of < pattern.size() && (pattern[of] == '?' || FoldName(pattern[of]) == FoldName(name[at]))) {
      ++at;
      ++of;
    } else if (star != std::string_view::npos) {
      of = star + 1;
      at = ++taken;
    } else {
      return false;
    }
  }
  while (of < pattern.size() && pattern[of] == '*') ++of;
  return of == pattern.size();
}

}  // namespace quillbook::compile
