#include "generation/TextPasses.h"

#include "quillbook/base/Failure.h"
#include "quillbook/base/Text.h"

namespace quillbook::textpasses {
namespace {

constexpr auto npos = std::string_view::npos;
constexpr std::string_view Delimiter = "$$";
/// Positions of glossary references are 16-bit numbers by contract.
constexpr std::size_t LastPosition = 32767;

bool IsReference(std::string_view inner) noexcept {
  return inner.find_first_of("~:") != npos && inner.find_first_of("<>\"") == npos;
}

std::string Anchor(std::string_view inner) {
  std::string_view caption;
  if (inner.find(':') != npos) {
    caption = BeforeColon(inner);
    inner = AfterColon(inner);
  }
  if (inner.empty()) return {};
  if (caption.empty()) caption = inner.substr(inner.rfind('~') + 1);
  std::string link = "<a href=\"";
  link.append(inner).append(".html\">").append(caption).append("</a>");
  return link;
}

/// Raises failure 6 where the character at this byte stands behind the last countable position.
void RequireCountable(std::string_view text, std::size_t at) {
  if (at >= LastPosition && Utf16Length(text.substr(0, at)) >= LastPosition) throw Failure(FailureNumber::Overflow);
}

/// The character at a position from 1, counted in UTF-16 units; a surrogate is no character anyone asks for.
char CharacterAt(std::string_view text, std::size_t position) noexcept {
  std::size_t at = 0;
  for (std::size_t unit = 1; at < text.size(); ++unit) {
    const auto codePoint = NextCodePoint(text, at);
    if (unit == position) return codePoint < 0x80 ? static_cast<char>(codePoint) : '\0';
    if (codePoint > 0xFFFF) ++unit;
    if (unit >= position) break;
  }
  return '\0';
}

/// The second test looks at the text from its start with a position that counts from the opening sign. Odd, but files
/// depend on what it lets through.
bool IsEscaped(std::string_view text, std::size_t opening, std::string_view term) {
  if (opening > 0 && text[opening - 1] == '/') return true;
  return !term.empty() && CharacterAt(text, Utf16Length(term)) == '/';
}

std::string Delimited(std::string_view term) {
  std::string text(Delimiter);
  return text.append(term).append(Delimiter);
}

std::string Replacement(std::string_view text, std::size_t opening, std::string_view inner,
                        const GlossaryResolver& resolve) {
  if (IsEscaped(text, opening, inner)) return Delimited(inner);
  auto term = ReplaceAll(inner, "\r\n", "");
  auto replacement = resolve(term);
  // The host's mark for an element it doesn't know.
  return replacement.starts_with("!UNCRECOGNISED") ? Delimited(term) : replacement;
}

}  // namespace

std::string_view BeforeColon(std::string_view text) noexcept {
  return text.substr(0, text.find(':'));
}

std::string_view AfterColon(std::string_view text) noexcept {
  const auto colon = text.find(':');
  return colon == npos ? std::string_view() : text.substr(colon + 1);
}

std::size_t AnchorInStr(std::string_view text, std::size_t from) noexcept {
  auto at = text.find('%', from);
  while (at != npos && at > 0 && text[at - 1] == '/') at = text.find('%', at + 1);
  return at;
}

std::string ParseForAnchor(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  std::size_t done = 0;
  auto opening = AnchorInStr(text, 0);
  while (opening != npos) {
    const auto closing = AnchorInStr(text, opening + 1);
    if (closing == npos) break;
    const auto inner = text.substr(opening + 1, closing - opening - 1);
    if (IsReference(inner)) {
      result.append(text.substr(done, opening - done)).append(Anchor(inner));
      done = closing + 1;
      opening = AnchorInStr(text, done);
    } else {
      opening = closing;  // the second sign may open the next reference
    }
  }
  result.append(text.substr(done));
  return result;
}

void ParseForGlossaryItems(std::string_view text, std::string& result, const GlossaryResolver& resolve) {
  for (;;) {
    const auto opening = text.find(Delimiter);
    if (opening == npos) break;
    RequireCountable(text, opening);
    const auto behind = text.substr(opening + Delimiter.size());
    const auto length = behind.find(Delimiter);
    if (length == npos) break;
    RequireCountable(behind, length);
    const auto replacement = Replacement(text, opening, behind.substr(0, length), resolve);
    result.append(text.substr(0, opening)).append(replacement);
    text = behind.substr(length + Delimiter.size());
  }
  result.append(text);
}

}  // namespace quillbook::textpasses
