#include "frame/services/XMLWriter.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "quillbook/base/Text.h"

#if defined(__SSE2__)
#include <emmintrin.h>

#include <bit>
#endif

namespace quillbook::detail {

namespace {

enum class Place { Text, Attribute };

/// Bytes that can't be copied as they are: markup, control characters, and what isn't ASCII and so needs a look.
constexpr bool IsSpecial(unsigned char c, Place place) noexcept {
  if (c == '<' || c == '>' || c == '&' || c >= 0x80) return true;
  if (place == Place::Attribute) return c == '"' || c < 0x20;
  return c < 0x20 && c != '\n' && c != '\t';
}

constexpr std::array<bool, 256> SpecialTable(Place place) noexcept {
  std::array<bool, 256> table{};
  for (std::size_t c = 0; c < table.size(); ++c) table[c] = IsSpecial(static_cast<unsigned char>(c), place);
  return table;
}

template <Place place>
constexpr auto specialTable = SpecialTable(place);

#if defined(__SSE2__)
/// One bit for each of 16 bytes that might be special.
template <Place place>
unsigned SpecialBits(const char* at) noexcept {
  const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
  const auto equal = [&](char c) { return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(c)); };
  // Compared as signed numbers, bytes from 0x80 on are below the blank as well.
  __m128i special = _mm_cmplt_epi8(bytes, _mm_set1_epi8(0x20));
  if constexpr (place == Place::Text)
    special = _mm_andnot_si128(_mm_or_si128(equal('\n'), equal('\t')), special);
  else
    special = _mm_or_si128(special, equal('"'));
  special = _mm_or_si128(special, _mm_or_si128(equal('&'), _mm_or_si128(equal('<'), equal('>'))));
  return static_cast<unsigned>(_mm_movemask_epi8(special));
}
#endif

/// The first special byte, or `end`.
template <Place place>
const char* FindSpecial(const char* at, const char* end) noexcept {
#if defined(__SSE2__)
  for (; end - at >= 16; at += 16)
    if (const auto bits = SpecialBits<place>(at)) return at + std::countr_zero(bits);
#endif
  while (at != end && !specialTable<place>[static_cast<unsigned char>(*at)]) ++at;
  return at;
}

void AppendReference(std::string& out, unsigned codePoint) {
  char digits[10];
  const auto end = std::to_chars(digits, digits + sizeof digits, codePoint).ptr;
  out.append("&#").append(digits, end) += ';';
}

/// Length of the well-formed UTF-8 sequence that begins at `at` with a byte from 0x80 on; 0 if there is none.
std::size_t SequenceLength(const char* at, const char* end) noexcept {
  const auto byte = [&](int i) { return static_cast<unsigned char>(at[i]); };
  const auto follows = [&](int i) { return (byte(i) & 0xC0) == 0x80; };
  const auto left = end - at;
  if (byte(0) < 0xC2 || byte(0) > 0xF4) return 0;
  if (byte(0) < 0xE0) return left >= 2 && follows(1) ? 2 : 0;
  if (byte(0) < 0xF0) {
    if (left < 3 || !follows(1) || !follows(2)) return 0;
    const bool overlong = byte(0) == 0xE0 && byte(1) < 0xA0;
    const bool surrogate = byte(0) == 0xED && byte(1) >= 0xA0;
    return overlong || surrogate ? 0 : 3;
  }
  if (left < 4 || !follows(1) || !follows(2) || !follows(3)) return 0;
  const bool overlong = byte(0) == 0xF0 && byte(1) < 0x90;
  const bool beyond = byte(0) == 0xF4 && byte(1) >= 0x90;
  return overlong || beyond ? 0 : 4;
}

/// Passes over sequences of three bytes that can't be wrong, which is most of what isn't Latin.
const char* SkipCommonTriples(const char* at, const char* end) noexcept {
  const auto byte = [&](int i) { return static_cast<unsigned char>(at[i]); };
  while (end - at >= 3 && byte(0) > 0xE0 && byte(0) < 0xED && (((byte(1) ^ 0x80) | (byte(2) ^ 0x80)) & 0xC0) == 0)
    at += 3;
  return at;
}

/// Appends the bytes from 0x80 on that begin at `at`, and gives the place behind them.
const char* AppendBeyondAscii(std::string& out, const char* at, const char* end) {
  const char* good = at;  // what isn't appended yet begins here
  while ((at = SkipCommonTriples(at, end)) != end && static_cast<unsigned char>(*at) >= 0x80) {
    const auto length = SequenceLength(at, end);
    const std::string_view sequence(at, length);
    if (length != 0 && (*at != '\xEF' || (sequence != "\xEF\xBF\xBE" && sequence != "\xEF\xBF\xBF"))) {
      at += length;
      continue;
    }
    out.append(good, at);
    if (length == 0)
      out += "\xEF\xBF\xBD";
    else
      AppendReference(out, sequence.back() == '\xBE' ? 0xFFFE : 0xFFFF);
    at += std::max<std::size_t>(length, 1);
    good = at;
  }
  out.append(good, at);
  return at;
}

template <Place place>
void AppendEscaped(std::string& out, std::string_view text) {
  const char* at = text.data();
  const char* const end = at + text.size();
  while (true) {
    const char* const special = FindSpecial<place>(at, end);
    out.append(at, special);
    if (special == end) return;
    at = special + 1;
    switch (*special) {
      case '<': out += "&lt;"; break;
      case '>': out += "&gt;"; break;
      case '&': out += "&amp;"; break;
      case '"': out += "&quot;"; break;
      case 0: out += "\xEF\xBF\xBD"; break;
      default:
        if (static_cast<unsigned char>(*special) >= 0x80)
          at = AppendBeyondAscii(out, special, end);
        else
          AppendReference(out, static_cast<unsigned char>(*special));
    }
  }
}

/// Appends a name that the parser has let through: only its bytes can be wrong.
void AppendName(std::string& out, std::string_view name) {
  if (IsValidUtf8(name)) {
    out += name;
    return;
  }
  for (std::size_t i = 0; i < name.size();) AppendCodePoint(out, NextCodePoint(name, i));
}

void AppendEndTag(std::string& out, const pugi::xml_node& element) {
  out += "</";
  AppendName(out, element.name());
  out += '>';
}

void AppendStartTag(std::string& out, const pugi::xml_node& element) {
  out += '<';
  AppendName(out, element.name());
  for (auto attribute = element.first_attribute(); attribute; attribute = attribute.next_attribute()) {
    out += ' ';
    AppendName(out, attribute.name());
    out += "=\"";
    AppendXMLAttribute(out, attribute.value());
    out += '"';
  }
}

}  // namespace

void AppendXMLText(std::string& out, std::string_view text) {
  AppendEscaped<Place::Text>(out, text);
}

void AppendXMLAttribute(std::string& out, std::string_view text) {
  AppendEscaped<Place::Attribute>(out, text);
}

void XMLWriter::WriteDeclaration() {
  mOut += "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";
}

void XMLWriter::Write(const pugi::xml_node& root) {
  WriteDeclaration();
  if (*root.name() != 0) WriteElement(root);
  HandOver();
}

void XMLWriter::Open(const pugi::xml_node& root) {
  WriteDeclaration();
  StartLine();
  AppendStartTag(mOut, root);
  mOut += '>';
  mDepth = 1;
}

void XMLWriter::WriteChildren(const pugi::xml_node& root) {
  for (auto child = root.first_child(); child; child = child.next_sibling())
    if (!IsTextPiece(child)) WriteElement(child);
}

void XMLWriter::Close(const pugi::xml_node& root) {
  mDepth = 0;
  Leave(root);
  HandOver();
}

void XMLWriter::WriteElement(const pugi::xml_node& root) {
  auto node = root;
  while (true) {
    if (Enter(node)) {
      node = node.first_child();
      ++mDepth;
      continue;
    }
    while (node != root && !node.next_sibling()) {
      node = node.parent();
      --mDepth;
      Leave(node);
    }
    if (node == root) return;
    node = node.next_sibling();
  }
}

bool XMLWriter::Enter(const pugi::xml_node& node) {
  if (IsTextPiece(node)) {
    if (mInlineFrom != 0) AppendXMLText(mOut, node.value());  // else it is white space between elements
    return false;
  }
  if (mOut.size() >= partSize) HandOver();
  StartLine();
  AppendStartTag(mOut, node);
  const auto content = ContentOf(node);
  if (content == XMLContent::None) {
    mOut += "/>";
    return false;
  }
  mOut += '>';
  if (content == XMLContent::Text) {
    for (auto child = node.first_child(); child; child = child.next_sibling()) AppendXMLText(mOut, child.value());
    AppendEndTag(mOut, node);
    return false;
  }
  if (content == XMLContent::Mixed && mInlineFrom == 0) mInlineFrom = mDepth + 1;
  return true;
}

void XMLWriter::Leave(const pugi::xml_node& element) {
  if (mInlineFrom == mDepth + 1)
    mInlineFrom = 0;  // this element's own content was the first to stand in one line
  else
    StartLine();
  AppendEndTag(mOut, element);
}

void XMLWriter::HandOver() {
  mSink(mOut);
  mOut.clear();
}

void XMLWriter::StartLine() {
  if (mInlineFrom != 0) return;
  constexpr std::size_t deepestIndent = 32;  // or else the indentation of deep nesting would outgrow the document
  mOut += '\n';
  mOut.append(std::min(mDepth, deepestIndent), '\t');
}

}  // namespace quillbook::detail
