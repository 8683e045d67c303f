#include "host/TemplateLexer.h"

namespace quillbook::detail {

namespace {

bool IsLetter(char c) noexcept {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
bool IsTypeCharacter(char c) noexcept {
  return IsLetter(c) || (c >= '0' && c <= '9') || c == '_' || c == '-' || c == '.';
}
bool IsSpace(char c) noexcept {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

std::string_view CutSpaceBehind(std::string_view text) noexcept {
  while (!text.empty() && IsSpace(text.back())) text.remove_suffix(1);
  return text;
}

}  // namespace

std::size_t FindDelimiter(std::string_view text, std::size_t from) noexcept {
  // Single percent signs are rare, and looking for one byte is several times as fast as looking for two.
  for (auto at = text.find('%', from); at != std::string_view::npos; at = text.find('%', at + 1))
    if (at + 1 < text.size() && text[at + 1] == '%') return at;
  return std::string_view::npos;
}

bool TemplateLexer::Next(TemplateTag& tag) {
  for (auto begin = FindDelimiter(mText, mAt); begin != std::string_view::npos;
       begin = FindDelimiter(mText, begin + 1)) {
    if (!ReadTag(begin, tag)) continue;
    mAt = tag.end;
    return true;
  }
  mAt = mText.size();
  return false;
}

bool TemplateLexer::ReadTag(std::size_t begin, TemplateTag& tag) const {
  auto at = begin + 2;
  tag.begin = begin;
  tag.attributes.clear();
  tag.closing = at < mText.size() && mText[at] == '/';
  if (tag.closing) ++at;
  tag.type = ReadType(at);
  if (tag.type.empty()) return false;
  if (!tag.closing && at < mText.size() && mText[at] == ':') {
    do {
      ++at;
      if (!ReadAttribute(at, tag)) return false;
    } while (at < mText.size() && mText[at] == ';');
  }
  if (!DelimiterAt(at)) return false;
  tag.end = at + 2;
  return true;
}

std::string_view TemplateLexer::ReadType(std::size_t& at) const noexcept {
  const auto begin = at;
  if (at >= mText.size() || !IsLetter(mText[at])) return {};
  while (at < mText.size() && IsTypeCharacter(mText[at])) ++at;
  return mText.substr(begin, at - begin);
}

/// Reads "name=value" and stops at ";" or "%%". A separator with nothing behind it is allowed.
bool TemplateLexer::ReadAttribute(std::size_t& at, TemplateTag& tag) const {
  at = SkipSpace(at);
  if (!tag.attributes.empty() && DelimiterAt(at)) return true;
  const auto begin = at;
  while (at < mText.size() && mText[at] != '=' && mText[at] != ';' && mText[at] != '%' && mText[at] != '"') ++at;
  if (at >= mText.size() || mText[at] != '=') return false;
  const auto name = CutSpaceBehind(mText.substr(begin, at - begin));
  if (name.empty()) return false;
  ++at;
  std::string value;
  const bool quoted = at < mText.size() && mText[at] == '"';
  if (!(quoted ? ReadQuoted(at, value) : ReadBare(at, value))) return false;
  tag.attributes.emplace_back(name, std::move(value));
  return true;
}

/// A quoted value holds anything; a quote in it is written twice.
bool TemplateLexer::ReadQuoted(std::size_t& at, std::string& value) const {
  for (;;) {
    const auto quote = mText.find('"', at + 1);
    if (quote == std::string_view::npos) return false;
    value.append(mText, at + 1, quote - at - 1);
    at = quote + 1;
    if (at >= mText.size() || mText[at] != '"') break;
    value += '"';
  }
  at = SkipSpace(at);
  return true;
}

/// A bare value ends before ";" or "%%" and stands on one line.
bool TemplateLexer::ReadBare(std::size_t& at, std::string& value) const {
  const auto begin = at;
  for (; at < mText.size(); ++at) {
    const char c = mText[at];
    if (c == '\n' || c == '\r') return false;
    if (c == ';' || (c == '%' && DelimiterAt(at))) break;
  }
  value = mText.substr(begin, at - begin);
  return at < mText.size();
}

std::size_t TemplateLexer::SkipSpace(std::size_t at) const noexcept {
  while (at < mText.size() && IsSpace(mText[at])) ++at;
  return at;
}

}  // namespace quillbook::detail
