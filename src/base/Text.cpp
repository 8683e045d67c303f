#include "quillbook/base/Text.h"

#include <unicode/locid.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <cstring>

namespace quillbook {

namespace {

constexpr bool IsAscii(char c) noexcept {
  return static_cast<unsigned char>(c) < 0x80;
}

constexpr char FoldAscii(char c) noexcept {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

char32_t Fold(char32_t c) noexcept {
  return static_cast<char32_t>(u_foldCase(static_cast<UChar32>(c), U_FOLD_CASE_DEFAULT));
}

char32_t NextFolded(std::string_view text, std::size_t& position) noexcept {
  if (IsAscii(text[position])) return static_cast<unsigned char>(FoldAscii(text[position++]));
  return Fold(NextCodePoint(text, position));
}

constexpr std::size_t BlockSize = sizeof(std::uint64_t);

/// The eight bytes at a position if they are all there and all ASCII. Keys and markup mostly are, and are read so.
bool ReadAsciiBlock(std::string_view text, std::size_t position, std::uint64_t& block) noexcept {
  if (text.size() - position < BlockSize) return false;
  std::memcpy(&block, text.data() + position, BlockSize);
  return (block & 0x8080808080808080ULL) == 0;
}

/// Sets the bit for lower case in each byte of an ASCII block that is an upper-case letter.
constexpr std::uint64_t FoldBlock(std::uint64_t block) noexcept {
  constexpr std::uint64_t ones = 0x0101010101010101ULL;
  const auto fromA = block + ones * (0x80 - 'A');
  const auto beyondZ = block + ones * (0x80 - 'Z' - 1);
  return block | ((fromA & ~beyondZ & (ones * 0x80)) >> 2);
}
static_assert(FoldBlock(0x405A41617A5B7F00) == 0x407A61617A5B7F00);

/// Up to eight folded characters as one number: ASCII ones as their bytes, so that a block folds to the same.
std::uint64_t NextFoldedGroup(std::string_view text, std::size_t& position) noexcept {
  std::uint64_t group = 0;
  if (ReadAsciiBlock(text, position, group)) {
    position += BlockSize;
    return FoldBlock(group);
  }
  unsigned char bytes[BlockSize] = {};
  std::uint64_t others = 0;
  for (auto& byte : bytes) {
    if (position == text.size()) break;
    const auto c = NextFolded(text, position);
    if (c < 0x80)
      byte = static_cast<unsigned char>(c);
    else
      others = (others + c) * 0x9e3779b97f4a7c15ULL;
  }
  std::memcpy(&group, bytes, BlockSize);
  return group + others;
}

/// Bytes of `text` that `prefix` covers ignoring case; npos if `text` doesn't begin so.
std::size_t MatchPrefix(std::string_view text, std::string_view prefix) noexcept {
  std::size_t i = 0;
  std::size_t j = 0;
  while (j < prefix.size()) {
    if (i >= text.size() || NextFolded(text, i) != NextFolded(prefix, j)) return std::string_view::npos;
  }
  return i;
}

bool IsContinuation(char c) noexcept {
  return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

}  // namespace

bool EqualsIgnoringCase(std::string_view left, std::string_view right) noexcept {
  if (left == right) return true;
  std::size_t i = 0;
  std::size_t j = 0;
  while (i < left.size() && j < right.size()) {
    std::uint64_t leftBlock = 0;
    std::uint64_t rightBlock = 0;
    if (ReadAsciiBlock(left, i, leftBlock) && ReadAsciiBlock(right, j, rightBlock)) {
      if (FoldBlock(leftBlock) != FoldBlock(rightBlock)) return false;
      i += BlockSize;
      j += BlockSize;
    } else if (NextFolded(left, i) != NextFolded(right, j)) {
      return false;
    }
  }
  return i == left.size() && j == right.size();
}

int CompareIgnoringCase(std::string_view left, std::string_view right) noexcept {
  std::size_t i = 0;
  std::size_t j = 0;
  while (i < left.size() && j < right.size()) {
    const auto a = NextFolded(left, i);
    const auto b = NextFolded(right, j);
    if (a != b) return a < b ? -1 : 1;
  }
  return static_cast<int>(j == right.size()) - static_cast<int>(i == left.size());
}

bool StartsWithIgnoringCase(std::string_view text, std::string_view prefix) noexcept {
  return MatchPrefix(text, prefix) != std::string_view::npos;
}

bool EndsWithIgnoringCase(std::string_view text, std::string_view suffix) noexcept {
  // Folding can change the number of bytes, so the suffix is counted in code points.
  std::size_t codePoints = 0;
  for (const char c : suffix) codePoints += IsContinuation(c) ? 0 : 1;
  std::size_t start = text.size();
  while (codePoints > 0 && start > 0)
    if (!IsContinuation(text[--start])) --codePoints;
  return codePoints == 0 && EqualsIgnoringCase(text.substr(start), suffix);
}

std::size_t FindIgnoringCase(std::string_view text, std::string_view what, std::size_t from) {
  // Only "k" and "s" are the fold of characters beyond ASCII, so most searches may look for the first byte alone.
  const char first = what.empty() ? '\0' : FoldAscii(what.front());
  const bool plain = !what.empty() && IsAscii(first) && first != 'k' && first != 's';
  for (auto i = from; i <= text.size(); ++i) {
    if (plain) {
      while (i < text.size() && FoldAscii(text[i]) != first) ++i;
      if (i == text.size()) break;
    }
    if (i < text.size() && IsContinuation(text[i])) continue;
    if (MatchPrefix(text.substr(i), what) != std::string_view::npos) return i;
  }
  return std::string_view::npos;
}

std::uint64_t FoldedHash(std::string_view text) noexcept {
  std::uint64_t hash = 0xcbf29ce484222325ULL;
  for (std::size_t i = 0; i < text.size();) {
    hash = (hash ^ NextFoldedGroup(text, i)) * 0x9e3779b97f4a7c15ULL;
    hash ^= hash >> 32;
  }
  return hash * 0x100000001b3ULL ^ (hash >> 29);
}

std::string FoldCase(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size();) AppendCodePoint(result, NextFolded(text, i));
  return result;
}

std::string LowerCase(std::string_view text) {
  std::string result(text);
  if (std::all_of(text.begin(), text.end(), IsAscii)) {
    std::transform(result.begin(), result.end(), result.begin(), FoldAscii);
    return result;
  }
  result.clear();
  icu::UnicodeString::fromUTF8({text.data(), static_cast<int32_t>(text.size())})
      .toLower(icu::Locale::getRoot())
      .toUTF8String(result);
  return result;
}

std::string UpperCase(std::string_view text) {
  std::string result;
  icu::UnicodeString::fromUTF8({text.data(), static_cast<int32_t>(text.size())})
      .toUpper(icu::Locale::getRoot())
      .toUTF8String(result);
  return result;
}

std::string ReplaceAll(std::string_view text, std::string_view what, std::string_view with) {
  std::string result;
  std::size_t from = 0;
  if (!what.empty()) {
    for (auto at = text.find(what); at != std::string_view::npos; at = text.find(what, from)) {
      result.append(text, from, at - from).append(with);
      from = at + what.size();
    }
  }
  return std::move(result.append(text, from));
}

std::string ReplaceAllIgnoringCase(std::string_view text, std::string_view what, std::string_view with) {
  std::string result;
  std::size_t from = 0;
  if (!what.empty()) {
    for (auto at = FindIgnoringCase(text, what); at != std::string_view::npos;
         at = FindIgnoringCase(text, what, from)) {
      result.append(text, from, at - from).append(with);
      from = at + MatchPrefix(text.substr(at), what);
    }
  }
  return std::move(result.append(text, from));
}

std::string_view TrimBlanks(std::string_view text) noexcept {
  const auto first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::vector<std::string_view> Split(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  std::size_t from = 0;
  for (auto at = text.find(separator); at != std::string_view::npos; at = text.find(separator, from)) {
    parts.push_back(text.substr(from, at - from));
    from = at + 1;
  }
  parts.push_back(text.substr(from));
  return parts;
}

bool IsValidUtf8(std::string_view text) noexcept {
  std::size_t i = 0;
  while (i < text.size()) {
    std::uint64_t block = 0;
    if (ReadAsciiBlock(text, i, block)) {
      i += BlockSize;
      continue;
    }
    if (IsAscii(text[i])) {
      ++i;
      continue;
    }
    const auto start = i;
    if (NextCodePoint(text, i) == 0xFFFD && text.substr(start, i - start) != "\xEF\xBF\xBD") return false;
  }
  return true;
}

std::size_t Utf16Length(std::string_view text) noexcept {
  std::size_t length = 0;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    length += (byte & 0xC0) == 0x80 ? 0 : (byte >= 0xF0 ? 2 : 1);
  }
  return length;
}

std::string_view Utf16Part(std::string_view text, std::size_t from, std::size_t count) noexcept {
  std::size_t at = 0;
  const auto skip = [&](std::size_t units) {
    while (units > 0 && at < text.size()) units -= NextCodePoint(text, at) > 0xFFFF && units > 1 ? 2 : 1;
    return at;
  };
  const auto begin = skip(from);
  return text.substr(begin, skip(count) - begin);
}

char32_t NextCodePoint(std::string_view text, std::size_t& position) noexcept {
  constexpr char32_t malformed = 0xFFFD;
  const auto lead = static_cast<unsigned char>(text[position++]);
  if (lead < 0x80) return lead;
  const int more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
  if (lead < 0xC2 || lead > 0xF4 || position + static_cast<std::size_t>(more) > text.size()) return malformed;
  char32_t c = lead & (0x3F >> more);
  for (int i = 0; i < more; ++i) {
    const auto next = text[position + static_cast<std::size_t>(i)];
    if (!IsContinuation(next)) return malformed;
    c = (c << 6) | (static_cast<unsigned char>(next) & 0x3F);
  }
  constexpr char32_t smallest[] = {0, 0x80, 0x800, 0x10000};
  if (c < smallest[more] || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) return malformed;
  position += static_cast<std::size_t>(more);
  return c;
}

void AppendCodePoint(std::string& text, char32_t c) {
  if (c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) c = 0xFFFD;
  if (c < 0x80) {
    text += static_cast<char>(c);
    return;
  }
  if (c < 0x800) {
    text += static_cast<char>(0xC0 | (c >> 6));
  } else {
    if (c < 0x10000) {
      text += static_cast<char>(0xE0 | (c >> 12));
    } else {
      text += static_cast<char>(0xF0 | (c >> 18));
      text += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
    }
    text += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
  }
  text += static_cast<char>(0x80 | (c & 0x3F));
}

std::string ToUtf16Bytes(std::string_view text) {
  std::string bytes;
  bytes.reserve(text.size() * 2);
  const auto append = [&](char32_t unit) {
    bytes += static_cast<char>(unit & 0xFF);
    bytes += static_cast<char>((unit >> 8) & 0xFF);
  };
  for (std::size_t i = 0; i < text.size();) {
    const auto c = NextCodePoint(text, i);
    if (c >= 0x10000) {
      append(0xD800 + ((c - 0x10000) >> 10));
      append(0xDC00 + ((c - 0x10000) & 0x3FF));
    } else {
      append(c);
    }
  }
  return bytes;
}

std::string FromUtf16Bytes(std::string_view bytes, bool bigEndian) {
  std::string text;
  text.reserve(bytes.size());
  const auto unitAt = [&](std::size_t i) -> char32_t {
    const auto first = static_cast<unsigned char>(bytes[i]);
    const auto second = static_cast<unsigned char>(bytes[i + 1]);
    return static_cast<char32_t>(bigEndian ? first << 8 | second : second << 8 | first);
  };
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    auto c = unitAt(i);
    if (c >= 0xD800 && c < 0xDC00 && i + 3 < bytes.size()) {
      const auto low = unitAt(i + 2);
      if (low >= 0xDC00 && low < 0xE000) {
        c = 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
        i += 2;
      }
    }
    AppendCodePoint(text, c >= 0xD800 && c < 0xE000 ? 0xFFFD : c);
  }
  return text;
}

}  // namespace quillbook
