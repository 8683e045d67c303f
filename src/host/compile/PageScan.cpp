#include "host/compile/PageScan.h"

#include <algorithm>
#include <array>

#include "host/compile/CodePageText.h"
#include "host/compile/Names.h"
#include "host/compile/StyleScan.h"
#include "host/compile/TagScanner.h"
#include "quillbook/base/CodePage.h"
#include "quillbook/base/Text.h"

namespace quillbook::compile {

namespace {

constexpr std::size_t CharsetSearch = 4096;  // a page that says it later says it too late for browsers as well

/// Name of a tag in lower case, without memory of its own; empty for names that are too long to be known.
struct TagName {
  explicit TagName(std::string_view name) {
    if (name.size() > text.size()) return;
    length = name.size();
    for (std::size_t i = 0; i < length; ++i) text[i] = FoldName(name[i]);
  }
  operator std::string_view() const { return {text.data(), length}; }

  std::array<char, 12> text{};
  std::size_t length = 0;
};

template <std::size_t Count>
bool IsOneOf(std::string_view name, const std::array<std::string_view, Count>& names) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

/// Elements that stand inside a word without ending it.
bool StandsInWords(std::string_view name) {
  constexpr std::array<std::string_view, 22> names{"a",    "abbr",  "acronym", "b",   "bdo",    "big",  "cite", "code",
                                                   "em",   "font",  "i",       "ins", "kbd",    "mark", "q",    "s",
                                                   "span", "small", "strong",  "wbr", "strike", "u"};
  return IsOneOf(name, names);
}

/// The attribute in which an element names a file; empty for elements that name none.
std::string_view AddressAttribute(std::string_view name) {
  constexpr std::array<std::string_view, 3> byHref{"a", "area", "link"};
  constexpr std::array<std::string_view, 9> bySource{"img",   "script", "frame", "iframe", "input",
                                                     "embed", "source", "audio", "video"};
  constexpr std::array<std::string_view, 4> byBackground{"body", "table", "td", "th"};
  if (IsOneOf(name, byHref)) return "href";
  if (IsOneOf(name, bySource)) return "src";
  if (IsOneOf(name, byBackground)) return "background";
  return {};
}

void AppendCollapsed(std::string& output, std::string_view text) {
  for (const char c : text) {
    const bool blank = c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f';
    if (!blank)
      output += c;
    else if (!output.empty() && output.back() != ' ')
      output += ' ';
  }
}

class Scan {
 public:
  explicit Scan(std::string_view page) : mPage(page) {}

  PageFacts Run() {
    TagScanner scanner(mPage);
    HtmlToken token;
    while (scanner.Next(token)) token.isTag ? TakeTag(token) : TakeText(token);
    while (mFacts.title.ends_with(' ')) mFacts.title.pop_back();
    return std::move(mFacts);
  }

 private:
  enum class Inside { Body, Title, Script, Style };

  void TakeTag(const HtmlToken& token) {
    const TagName name(token.name);
    mInside = Inside::Body;
    if (!token.isEnd) {
      if (name == std::string_view("title") && mFacts.titleOffset == 0) mInside = Inside::Title;
      if (name == std::string_view("script")) mInside = Inside::Script;
      if (name == std::string_view("style")) mInside = Inside::Style;
      TakeAddress(name, token);
    }
    TakeObject(name, token);
    if (!StandsInWords(name)) mFacts.text += ' ';
  }

  void TakeText(const HtmlToken& token) {
    if (mInside == Inside::Script) return;
    if (mInside == Inside::Style) return TakeStyle(token.text, token.offset);
    mFacts.runs.push_back(token.text);
    const bool plain = token.text.find('&') == std::string_view::npos;
    if (mInside == Inside::Title) {
      mFacts.titleOffset = token.offset;
      AppendCollapsed(mFacts.title, plain ? std::string(token.text) : ResolveReferences(token.text));
    } else if (plain) {
      mFacts.text += token.text;
    } else {
      mFacts.text += ResolveReferences(token.text);
    }
  }

  void TakeAddress(std::string_view name, const HtmlToken& token) {
    if (const auto attribute = AddressAttribute(name); !attribute.empty())
      if (const auto value = AttributeValue(token.attributes, attribute); !value.empty())
        mFacts.references.push_back({ResolveReferences(value), token.offset});
    // Few tags have a style of their own, and fewer still one with a file.
    if (token.attributes.find('(') == std::string_view::npos) return;
    const auto style = ResolveReferences(AttributeValue(token.attributes, "style"));
    for (auto& reference : ScanStyle(style)) mFacts.references.push_back({std::move(reference.address), token.offset});
  }

  void TakeStyle(std::string_view style, std::size_t offset) {
    for (auto& reference : ScanStyle(style))
      mFacts.references.push_back({std::move(reference.address), offset + reference.offset});
  }

  /// Keywords stand in objects without an appearance.
  void TakeObject(std::string_view name, const HtmlToken& token) {
    if (name == "object") {
      mInKeywords = !token.isEnd && IsKeywordObject(token.attributes);
    } else if (mInKeywords && name == "param") {
      const auto parameter = AttributeValue(token.attributes, "name");
      auto* const list = EqualsIgnoringCase(parameter, "ALink Name") ? &mFacts.associativeKeywords
                         : EqualsIgnoringCase(parameter, "Keyword")  ? &mFacts.keywords
                                                                     : nullptr;
      if (!list) return;
      const auto value = ResolveReferences(AttributeValue(token.attributes, "value"));
      for (const auto part : Split(value, ';'))
        if (const auto keyword = TrimBlanks(part); !keyword.empty()) list->emplace_back(keyword);
    }
  }

  static bool IsKeywordObject(std::string_view attributes) {
    constexpr std::string_view keywordClass = "clsid:1e2a7bd0-dab9-11d0-b93a-00c04fc99f9e";
    return EqualsIgnoringCase(AttributeValue(attributes, "classid"), keywordClass) ||
           EqualsIgnoringCase(AttributeValue(attributes, "type"), "text/sitemap");
  }

  std::string_view mPage;
  PageFacts mFacts;
  Inside mInside = Inside::Body;
  bool mInKeywords = false;
};

/// Charset that a page states in its head, by either form of the statement.
std::string StatedCharset(std::string_view page) {
  TagScanner scanner(page.substr(0, CharsetSearch));
  HtmlToken token;
  while (scanner.Next(token)) {
    if (!token.isTag || token.isEnd || TagName(token.name) != std::string_view("meta")) continue;
    if (const auto direct = AttributeValue(token.attributes, "charset"); !direct.empty()) return std::string(direct);
    const auto content = FoldName(AttributeValue(token.attributes, "content"));
    const auto at = content.find("charset=");
    if (at == std::string::npos) continue;
    const auto name = content.substr(at + 8);
    return std::string(TrimBlanks(name.substr(0, name.find(';'))));
  }
  return {};
}

}  // namespace

PageFacts ScanPage(std::string_view page) {
  return Scan(page).Run();
}

std::string DecodePage(std::string bytes, int codePage) {
  if (bytes.starts_with("\xEF\xBB\xBF")) return bytes.substr(3);
  if (bytes.starts_with("\xFF\xFE")) return FromUtf16Bytes(std::string_view(bytes).substr(2));
  if (bytes.starts_with("\xFE\xFF")) return FromUtf16Bytes(std::string_view(bytes).substr(2), true);
  const auto stated = CodePageFromCharset(StatedCharset(bytes));
  const auto used = stated != 0 ? stated : codePage;
  if (used == CodePageUtf8 || IsAscii(bytes) || !IsKnownCodePage(used)) return bytes;
  return DecodeCodePage(bytes, used);
}

}  // namespace quillbook::compile
