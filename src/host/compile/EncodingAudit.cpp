#include "host/compile/EncodingAudit.h"

#include <algorithm>

#include "host/compile/KeywordIndex.h"
#include "host/compile/PlaceFinder.h"
#include "quillbook/base/CodePage.h"
#include "quillbook/base/Text.h"

namespace quillbook::compile {

namespace {

/// A character for people: itself and its number.
std::string Describe(std::string_view text, std::size_t at) {
  auto end = at;
  const auto character = NextCodePoint(text, end);
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string number;
  for (int shift = character > 0xFFFF ? 20 : 12; shift >= 0; shift -= 4) number += digits[character >> shift & 15];
  return "'" + std::string(text.substr(at, end - at)) + "' (U+" + number + ")";
}

}  // namespace

std::string EncodingAudit::CodePageName() const {
  return "code page " + std::to_string(mCodePage.Number());
}

void EncodingAudit::CheckText(std::string_view code, std::string_view what, std::string_view text,
                              const FileMention& mention) {
  const auto at = mCodePage.FindLacking(text);
  if (at == std::string_view::npos) return;
  mMessages.Warning(code,
                    CodePageName() + " lacks the character " + Describe(text, at) + " of " + std::string(what) + " '" +
                        std::string(text) + "'",
                    mention);
}

void EncodingAudit::CheckProject(const HelpProject& project) {
  if (project.codePage == CodePageUtf8)
    mMessages.Warning(
        "HC2008",
        "The language " + std::to_string(project.localeId) +
            " has no code page of its own; contents, index and search can't be right in help of this kind",
        project.file, project.languageLine);
  CheckText("HC2009", "the title", project.title, {project.file, {project.titleLine}});
  for (const auto& window : project.windows)
    for (const auto& text : {window.title, window.jump1Text, window.jump2Text})
      CheckText("HC2009", "the window", text, {project.file, {window.line}});
}

void EncodingAudit::CheckContents(const Sitemap& contents, const std::string& file) {
  for (const auto& entry : contents.entries) CheckText("HC2002", "the contents entry", entry.name, {file, entry.place});
}

void EncodingAudit::CheckIndex(const Sitemap& index, const std::string& file) {
  std::vector<std::size_t> lengths;  // of the keywords above
  for (const auto& entry : index.entries) {
    CheckText("HC2003", "the keyword", entry.name, {file, entry.place});
    for (const auto& target : entry.targets)
      if (target.title != entry.name) CheckText("HC2003", "the title", target.title, {file, target.titlePlace});
    lengths.resize(std::min(lengths.size(), static_cast<std::size_t>(entry.level)));
    const auto above = lengths.empty() ? 0 : lengths.back() + 2;
    lengths.push_back(above + Utf16Length(entry.name));
    if (lengths.back() > LongestKeyword)
      mMessages.Warning("HC2007",
                        "Keyword '" + entry.name + "' is longer than " + std::to_string(LongestKeyword) +
                            " characters with the keywords above it and is cut",
                        FileMention{file, entry.place});
  }
}

/// The character may stand there as a reference; its place is then that of the title.
void EncodingAudit::CheckTitle(std::string_view page, const PageFacts& facts, const std::string& file) {
  if (mCodePage.FindLacking(facts.title) == std::string_view::npos) return;
  const auto raw = page.substr(facts.titleOffset, page.find('<', facts.titleOffset) - facts.titleOffset);
  const auto at = mCodePage.FindLacking(raw);
  const auto offset = facts.titleOffset + (at == std::string_view::npos ? 0 : at);
  CheckText("HC2001", "the title", facts.title, {file, PlaceFinder(page).At(offset)});
}

void EncodingAudit::CheckPage(std::string_view page, const PageFacts& facts, const std::string& file) {
  CheckTitle(page, facts, file);
  if (IsAscii(page)) return;
  std::size_t first = std::string_view::npos;
  std::size_t count = 0;
  for (const auto run : facts.runs) {
    const auto start = static_cast<std::size_t>(run.data() - page.data());
    if (start == facts.titleOffset && start != 0) continue;  // the title has had its own message
    for (auto at = mCodePage.FindLacking(run); at != std::string_view::npos; at = mCodePage.FindLacking(run, at)) {
      if (count++ == 0) first = start + at;
      (void)NextCodePoint(run, at);
    }
  }
  if (count == 0) return;
  mMessages.Warning("HC2004",
                    CodePageName() + " lacks the character " + Describe(page, first) +
                        (count > 1 ? " and " + std::to_string(count - 1) + " more of the page" : std::string()) +
                        "; full-text search won't find the words with them",
                    FileMention{file, PlaceFinder(page).At(first)});
}

}  // namespace quillbook::compile
