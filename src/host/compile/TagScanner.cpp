#include "host/compile/TagScanner.h"

#include <algorithm>
#include <array>
#include <optional>

#include "host/compile/CharacterNames.h"
#include "quillbook/base/Text.h"

namespace quillbook::compile {

namespace {

constexpr bool IsSpace(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f';
}
constexpr bool IsLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// Elements whose content has no tags.
std::string_view RawElementNamed(std::string_view name) {
  constexpr std::array<std::string_view, 8> names{"script", "style",  "title",    "textarea",
                                                  "xmp",    "iframe", "noframes", "noembed"};
  const auto found =
      std::find_if(names.begin(), names.end(), [&](std::string_view n) { return EqualsIgnoringCase(n, name); });
  return found == names.end() ? std::string_view() : *found;
}

std::optional<char32_t> NumericReference(std::string_view body) {
  const bool hexadecimal = body.size() > 1 && (body[1] == 'x' || body[1] == 'X');
  const auto digits = body.substr(hexadecimal ? 2 : 1);
  if (digits.empty() || digits.size() > 8) return {};
  std::uint64_t value = 0;
  for (const char c : digits) {
    const int digit = c >= '0' && c <= '9' ? c - '0' : IsLetter(c) ? (c | 0x20) - 'a' + 10 : 99;
    if (digit >= (hexadecimal ? 16 : 10)) return {};
    value = value * (hexadecimal ? 16 : 10) + static_cast<std::uint64_t>(digit);
  }
  if (value == 0 || value > 0x10FFFF || (value >= 0xD800 && value < 0xE000)) return char32_t{0xFFFD};
  return static_cast<char32_t>(value);
}

}  // namespace

bool TagScanner::Next(HtmlToken& token) {
  while (mAt < mPage.size()) {
    token = {};
    token.offset = mAt;
    if (!mRawElement.empty()) {
      const auto end = EndOfRawText();
      token.text = mPage.substr(mAt, end - mAt);
      mAt = end;
      mRawElement = {};
      if (!token.text.empty()) return true;
      continue;
    }
    if (mPage[mAt] == '<' && mAt + 1 < mPage.size()) {
      const char next = mPage[mAt + 1];
      if (IsLetter(next) || next == '/' || next == '!' || next == '?') {
        if (ReadMarkup(token)) return true;
        continue;
      }
    }
    const auto end = std::min(mPage.find('<', mAt + 1), mPage.size());
    token.text = mPage.substr(mAt, end - mAt);
    mAt = end;
    return true;
  }
  return false;
}

/// At a "<" that begins markup. True for a tag; comments and the like are only passed over.
bool TagScanner::ReadMarkup(HtmlToken& token) {
  if (mPage.substr(mAt, 4) == "<!--") {
    const auto end = mPage.find("-->", mAt + 4);
    mAt = end == std::string_view::npos ? mPage.size() : end + 3;
    return false;
  }
  auto start = mAt + 1;
  token.isEnd = mPage[start] == '/';
  if (token.isEnd) ++start;
  if (start >= mPage.size() || !IsLetter(mPage[start])) {
    const auto end = mPage.find('>', mAt);
    mAt = end == std::string_view::npos ? mPage.size() : end + 1;
    return false;
  }
  auto nameEnd = start;
  while (nameEnd < mPage.size() && !IsSpace(mPage[nameEnd]) && mPage[nameEnd] != '>' && mPage[nameEnd] != '/')
    ++nameEnd;
  const auto end = EndOfTag(nameEnd);
  token.isTag = true;
  token.name = mPage.substr(start, nameEnd - start);
  token.attributes = mPage.substr(nameEnd, end - nameEnd);
  mAt = std::min(end + 1, mPage.size());
  if (!token.isEnd) mRawElement = RawElementNamed(token.name);
  return true;
}

/// Place of the ">" that ends a tag; one inside a quoted value doesn't.
std::size_t TagScanner::EndOfTag(std::size_t from) const {
  char quote = 0;
  for (auto i = from; i < mPage.size(); ++i) {
    const char c = mPage[i];
    if (quote) {
      if (c == quote) quote = 0;
    } else if (c == '>') {
      return i;
    } else if ((c == '"' || c == '\'') && i > 0) {
      auto before = i;
      while (before > from && IsSpace(mPage[before - 1])) --before;
      if (before > from && mPage[before - 1] == '=') quote = c;
    }
  }
  return mPage.size();
}

std::size_t TagScanner::EndOfRawText() const {
  for (auto at = mPage.find("</", mAt); at != std::string_view::npos; at = mPage.find("</", at + 2)) {
    const auto name = mPage.substr(at + 2, mRawElement.size());
    const auto behind = at + 2 + mRawElement.size();
    if (EqualsIgnoringCase(name, mRawElement) &&
        (behind >= mPage.size() || IsSpace(mPage[behind]) || mPage[behind] == '>' || mPage[behind] == '/'))
      return at;
  }
  return mPage.size();
}

bool AttributeScanner::Next(std::string_view& name, std::string_view& value) {
  while (mAt < mText.size() && (IsSpace(mText[mAt]) || mText[mAt] == '/')) ++mAt;
  if (mAt >= mText.size()) return false;
  const auto nameStart = mAt++;
  while (mAt < mText.size() && !IsSpace(mText[mAt]) && mText[mAt] != '=' && mText[mAt] != '/') ++mAt;
  name = mText.substr(nameStart, mAt - nameStart);
  value = {};
  auto at = mAt;
  while (at < mText.size() && IsSpace(mText[at])) ++at;
  if (at >= mText.size() || mText[at] != '=') return true;
  ++at;
  while (at < mText.size() && IsSpace(mText[at])) ++at;
  if (at < mText.size() && (mText[at] == '"' || mText[at] == '\'')) {
    const auto end = std::min(mText.find(mText[at], at + 1), mText.size());
    value = mText.substr(at + 1, end - at - 1);
    mAt = std::min(end + 1, mText.size());
    return true;
  }
  const auto valueStart = at;
  while (at < mText.size() && !IsSpace(mText[at])) ++at;
  value = mText.substr(valueStart, at - valueStart);
  mAt = at;
  return true;
}

std::string_view AttributeValue(std::string_view attributes, std::string_view name) {
  AttributeScanner scanner(attributes);
  std::string_view each;
  std::string_view value;
  while (scanner.Next(each, value))
    if (EqualsIgnoringCase(each, name)) return value;
  return {};
}

std::string ResolveReferences(std::string_view text) {
  std::string result;
  std::size_t from = 0;
  for (auto at = text.find('&'); at != std::string_view::npos; at = text.find('&', at + 1)) {
    auto end = at + 1;
    while (end < text.size() && end - at <= 10 &&
           (IsLetter(text[end]) || text[end] == '#' || (text[end] >= '0' && text[end] <= '9')))
      ++end;
    const auto body = text.substr(at + 1, end - at - 1);
    if (body.empty()) continue;
    const auto character = body[0] == '#' ? NumericReference(body) : CharacterNamed(body);
    if (!character) continue;
    result.append(text, from, at - from);
    AppendCodePoint(result, *character);
    from = end < text.size() && text[end] == ';' ? end + 1 : end;
    at = from - 1;
  }
  return std::move(result.append(text, from));
}

}  // namespace quillbook::compile
