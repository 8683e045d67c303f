#include "host/helpproject/HtmlHelpProject.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "host/Markup.h"
#include "host/compile/ProjectFiles.h"
#include "quillbook/base/Locale.h"
#include "quillbook/base/Text.h"

namespace quillbook::detail {

namespace {

constexpr std::string_view LineBreak = "\r\n";

/// Charset of fonts in Windows' numbering, by code page.
struct FontCharset {
  int codePage;
  int charset;
};
constexpr auto FontCharsets = std::to_array<FontCharset>({{874, 222},
                                                          {932, 128},
                                                          {936, 134},
                                                          {949, 129},
                                                          {950, 136},
                                                          {1250, 238},
                                                          {1251, 204},
                                                          {1253, 161},
                                                          {1254, 162},
                                                          {1255, 177},
                                                          {1256, 178},
                                                          {1257, 186},
                                                          {1258, 163}});

/// The panes of contents and index draw in the font of this charset; empty where the usual one does.
std::string FontOption(int codePage) {
  const auto* found = std::ranges::find(FontCharsets, codePage, &FontCharset::codePage);
  return found == FontCharsets.end() ? "" : fmt::format("Default Font=Arial,8,{}\r\n", found->charset);
}

/// The value of an option stands on one line and knows no escapes.
std::string OneLine(std::string_view text) {
  std::string line(TrimBlanks(text));
  std::replace_if(
      line.begin(), line.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; }, ' ');
  return line;
}

std::string LanguageOption(std::uint32_t localeId) {
  const auto locale = Locale::FromID(static_cast<std::int32_t>(localeId));
  return fmt::format("Language=0x{:x}{}{}\r\n", localeId, locale ? " " : "", locale ? locale->Name() : "");
}

std::string Backslashed(std::string_view path) {
  return ReplaceAll(path, "/", "\\");
}

bool HasCustomIcon(const HelpProjectFacts& facts) {
  return std::ranges::any_of(facts.contents, [](const ContentsLine& line) { return line.node->CustomIcon; });
}

std::string Option(std::string_view name, std::string_view value) {
  return value.empty() ? std::string() : fmt::format("{}={}\r\n", name, value);
}

std::string OptionsSection(const HelpProjectFacts& facts) {
  std::string text = "[OPTIONS]\r\nCompatibility=1.1 or later\r\n";
  text += Option("Compiled file", facts.helpFile);
  if (!facts.contents.empty()) text += Option("Contents file", facts.name + ".hhc");
  if (!facts.keywords.empty()) text += Option("Index file", facts.name + ".hhk");
  text += Option("Default topic", Backslashed(facts.defaultPage));
  text += "Default Window=main\r\n";
  text += Option("Title", OneLine(facts.title));
  text += LanguageOption(facts.localeId);
  text += FontOption(facts.codePage);
  text += "Full-text search=Yes\r\n";
  // The fast form of the contents, which the viewer's "Next" needs, has no icons of one's own.
  text += HasCustomIcon(facts) ? "Binary TOC=No\r\n" : "Binary TOC=Yes\r\n";
  text += "Binary Index=Yes\r\n";
  return text;
}

std::string WindowsSection(const HelpProjectFacts& facts) {
  const auto title = ReplaceAll(OneLine(facts.title), "\"", "'");
  const auto page = Backslashed(facts.defaultPage);
  const auto contents = facts.contents.empty() ? std::string() : facts.name + ".hhc";
  const auto index = facts.keywords.empty() ? std::string() : facts.name + ".hhk";
  return fmt::format(
      "\r\n[WINDOWS]\r\nmain=\"{}\",\"{}\",\"{}\",\"{}\",\"{}\",,,,,0x63520,220,0x10384e,[80,60,1000,700],0xb0000,,,,,,"
      "0\r\n",
      title, contents, index, page, page);
}

// Contents and index.

constexpr std::string_view SitemapHead =
    "<!DOCTYPE HTML PUBLIC \"-//IETF//DTD HTML//EN\">\r\n<HTML>\r\n<HEAD>\r\n<meta name=\"GENERATOR\" "
    "content=\"Quillbook\">\r\n<!-- Sitemap 1.0 -->\r\n</HEAD><BODY>\r\n";
constexpr std::string_view SitemapFoot = "</UL>\r\n</BODY></HTML>\r\n";

/// Lines of a sitemap, indented by level. Not deeper than can be read: a deep tree would be all indentation.
class SitemapText {
 public:
  explicit SitemapText(std::string_view properties) : mText(SitemapHead) {
    mText.append(properties).append("<UL>\r\n");
  }

  void BeginEntry(int level) {
    mIndent.assign(static_cast<std::size_t>(std::min(level, 20)) + 1, '\t');
    mText.append(mIndent).append("<LI> <OBJECT type=\"text/sitemap\">\r\n");
  }
  void Parameter(std::string_view name, std::string_view value) {
    mText.append(mIndent).append("\t<param name=\"").append(name).append("\" value=\"");
    mText.append(EscapeMarkup(value)).append("\">\r\n");
  }
  void EndEntry(bool hasChildren) {
    mText.append(mIndent).append("\t</OBJECT>\r\n");
    if (hasChildren) mText.append(mIndent).append("<UL>\r\n");
  }
  void EndChildren(int level) {
    mText.append(static_cast<std::size_t>(std::min(level, 20)) + 1, '\t').append("</UL>\r\n");
  }
  [[nodiscard]] std::string Finish() && { return std::move(mText.append(SitemapFoot)); }

 private:
  std::string mText;
  std::string mIndent;
};

}  // namespace

std::string HtmlHelpProjectText(const HelpProjectFacts& facts) {
  auto text = OptionsSection(facts) + WindowsSection(facts) + "\r\n[FILES]\r\n";
  for (const auto& file : facts.files) text.append(Backslashed(file)).append(LineBreak);
  return text;
}

std::string HtmlHelpContentsText(const HelpProjectFacts& facts) {
  SitemapText text(
      "<OBJECT type=\"text/site properties\">\r\n\t<param name=\"Window Styles\" value=\"0x800025\">\r\n</OBJECT>\r\n");
  ForEachNested(
      facts.contents,
      [&](const ContentsLine& line) {
        const auto& node = *line.node;
        const auto url = PlainTitle(node.URL);
        text.BeginEntry(line.level);
        text.Parameter("Name", PlainTitle(node.Caption));
        if (!url.empty()) text.Parameter(compile::IsOutsideAddress(url) ? "URL" : "Local", ReplaceAll(url, "\\", "/"));
        if (node.CustomIcon && node.IconIndex >= 0) text.Parameter("ImageNumber", std::to_string(node.IconIndex + 1));
        text.EndEntry(line.hasChildren);
      },
      [&](const ContentsLine& line) {
        if (line.hasChildren) text.EndChildren(line.level);
      });
  return std::move(text).Finish();
}

std::string HtmlHelpIndexText(const HelpProjectFacts& facts, const PageTitles& titleOf) {
  SitemapText text({});
  ForEachNested(
      facts.keywords,
      [&](const IndexLine& line) {
        text.BeginEntry(line.level);
        text.Parameter("Name", line.name);
        for (const auto& jump : *line.keyword->Jumps()) {
          const auto title = PlainTitle(titleOf(jump->Target()));
          text.Parameter("Name", title.empty() ? line.name : title);
          text.Parameter("Local", jump->Target());
        }
        text.EndEntry(line.hasChildren);
      },
      [&](const IndexLine& line) {
        if (line.hasChildren) text.EndChildren(line.level);
      });
  return std::move(text).Finish();
}

}  // namespace quillbook::detail
