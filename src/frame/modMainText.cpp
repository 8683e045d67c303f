// Text helpers of the library: file names, URLs, HTML bodies.
#include <charconv>
#include <optional>
#include <string>
#include <string_view>

#include "quillbook/base/CodePage.h"
#include "quillbook/base/Text.h"
#include "quillbook/frame/modMain.h"

namespace quillbook::modMain {
namespace {

constexpr std::string_view kFileScheme = "file://";
constexpr std::string_view kLineBreak = "\r\n";

/// Position behind the character at `position`, or the end of the text.
std::size_t NextCharacter(std::string_view text, std::size_t position) {
  if (position < text.size()) (void)NextCodePoint(text, position);
  return position;
}

/// As much of the text as reads as a hexadecimal number; 0 if nothing does.
unsigned LeadingHexadecimal(std::string_view digits) {
  unsigned value = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
  return value;
}

/// Decodes the escape at `position`, and goes on decoding while the result is itself the "%" of an escape. Moves
/// behind what has been used up.
unsigned DecodeEscape(std::string_view source, std::size_t& position) {
  unsigned code = '%';
  while (code == '%') {
    const auto start = position + 1;
    const auto end = NextCharacter(source, NextCharacter(source, start));
    code = LeadingHexadecimal(source.substr(start, end - start));
    position = end - 1;  // where a decoded "%" would now stand
  }
  ++position;
  return code;
}

void AppendAnsiCharacter(std::string& text, unsigned code) {
  const auto byte = static_cast<char>(code);
  if (code < 0x80)
    text += byte;
  else
    text += DecodeCodePage(std::string_view(&byte, 1), AnsiCodePage());
}

/// Position behind the opening tag of the body. A tag that nothing closes counts as ending before the text.
std::optional<std::size_t> FindBodyStart(std::string_view document) {
  constexpr std::string_view bare = "<BODY>";
  if (const auto at = FindIgnoringCase(document, bare); at != std::string_view::npos) return at + bare.size();
  const auto at = FindIgnoringCase(document, "<BODY ");
  if (at == std::string_view::npos) return std::nullopt;
  const auto end = document.find('>', at + bare.size());
  return end == std::string_view::npos ? 0 : end + 1;
}

std::size_t FindLastIgnoringCase(std::string_view text, std::string_view what) {
  for (auto at = text.rfind('<'); at != std::string_view::npos;
       at = at == 0 ? std::string_view::npos : text.rfind('<', at - 1))
    if (StartsWithIgnoringCase(text.substr(at), what)) return at;
  return std::string_view::npos;
}

}  // namespace

std::string SafeFileName(std::string_view Filename) {
  std::string name(Filename);
  for (auto& c : name) {
    switch (c) {
      case '\\':
      case '/':
      case ':': c = '-'; break;
      case '*':
      case '?':
      case '<':
      case '>': c = ' '; break;
      case '"': c = '\''; break;
      case '|': c = ';'; break;
      default: break;
    }
  }
  return name;
}

std::string StripQuotes(std::string_view s) {
  if (s.starts_with('"')) s.remove_prefix(1);
  if (s.ends_with('"')) s.remove_suffix(1);
  return std::string(s);
}

std::string RemoveEntities(std::string_view Source) {
  std::string result;
  result.reserve(Source.size());
  std::size_t position = 0;
  while (position < Source.size()) {
    const auto escape = std::min(Source.find('%', position), Source.size());
    result.append(Source.substr(position, escape - position));
    position = escape;
    if (position < Source.size()) AppendAnsiCharacter(result, DecodeEscape(Source, position));
  }
  return result;
}

std::string GetLinkText(std::string_view Source) {
  constexpr std::string_view blankPage = "about:blank";
  return std::string(Source.starts_with(blankPage) ? Source.substr(blankPage.size()) : Source);
}

bool IsFileURL(std::string_view URL) {
  return StartsWithIgnoringCase(URL, kFileScheme) || URL.find(':') == std::string_view::npos;
}

std::string FileURLToFileName(std::string_view URL) {
  if (StartsWithIgnoringCase(URL, "file:///"))
    URL.remove_prefix(kFileScheme.size() + 1);
  else if (StartsWithIgnoringCase(URL, kFileScheme))
    URL.remove_prefix(kFileScheme.size());
  return RemoveEntities(ReplaceAll(URL, "/", "\\"));
}

std::string ReturnBody(std::string_view CompleteDocument) {
  auto body = CompleteDocument;
  const auto start = FindBodyStart(CompleteDocument);
  const auto end = FindLastIgnoringCase(CompleteDocument, "</BODY>");
  if (start && end != std::string_view::npos) {
    if (end < *start) return std::string(CompleteDocument);  // no such stretch of text
    body = CompleteDocument.substr(*start, end - *start);
  }
  if (body.starts_with(kLineBreak)) body.remove_prefix(kLineBreak.size());
  if (body.ends_with(kLineBreak)) body.remove_suffix(kLineBreak.size());
  return std::string(body);
}

}  // namespace quillbook::modMain
