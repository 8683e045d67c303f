#include "quillbook/base/CodePage.h"

#include <unicode/ucnv.h>
#include <unicode/ucnv_cb.h>

#include <algorithm>
#include <atomic>
#include <charconv>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "quillbook/base/Failure.h"
#include "quillbook/base/Text.h"

namespace quillbook {

namespace {

/// All of them hold ASCII as it is.
struct KnownCodePage {
  int number;
  const char* converter;
  std::string_view charset;  ///< as HTML names it
};

constexpr KnownCodePage knownCodePages[] = {
    {CodePageUtf8, nullptr, "utf-8"},
    {CodePageWindows1252, "windows-1252", "windows-1252"},
    {874, "windows-874-2000", "windows-874"},
    {932, "windows-31j", "shift_jis"},
    {936, "windows-936-2000", "gbk"},
    {949, "windows-949-2000", "euc-kr"},
    {950, "windows-950-2000", "big5"},
    {1250, "windows-1250", "windows-1250"},
    {1251, "windows-1251", "windows-1251"},
    {1253, "windows-1253", "windows-1253"},
    {1254, "windows-1254", "windows-1254"},
    {1255, "windows-1255", "windows-1255"},
    {1256, "windows-1256", "windows-1256"},
    {1257, "windows-1257", "windows-1257"},
    {1258, "windows-1258", "windows-1258"},
    {10000, "macintosh", "macintosh"},
    {20127, "us-ascii", "us-ascii"},
    {20866, "koi8-r", "koi8-r"},
    {20932, "euc-jp", "euc-jp"},
    {21866, "koi8-u", "koi8-u"},
    {28591, "iso-8859-1", "iso-8859-1"},
    {28592, "iso-8859-2", "iso-8859-2"},
    {28593, "iso-8859-3", "iso-8859-3"},
    {28594, "iso-8859-4", "iso-8859-4"},
    {28595, "iso-8859-5", "iso-8859-5"},
    {28596, "iso-8859-6", "iso-8859-6"},
    {28597, "iso-8859-7", "iso-8859-7"},
    {28598, "iso-8859-8", "iso-8859-8"},
    {28599, "iso-8859-9", "iso-8859-9"},
    {28603, "iso-8859-13", "iso-8859-13"},
    {28605, "iso-8859-15", "iso-8859-15"},
    {54936, "gb18030", "gb18030"},
};

/// Other names under which files declare the same charsets.
constexpr std::pair<std::string_view, int> aliases[] = {
    {"utf8", CodePageUtf8}, {"unicode-1-1-utf-8", CodePageUtf8},
    {"cp1250", 1250},       {"x-cp1250", 1250},
    {"cp1251", 1251},       {"x-cp1251", 1251},
    {"cp1252", 1252},       {"x-cp1252", 1252},
    {"cp1253", 1253},       {"cp1254", 1254},
    {"cp1255", 1255},       {"cp1256", 1256},
    {"cp1257", 1257},       {"cp1258", 1258},
    {"ansi", 1252},         {"ascii", 20127},
    {"latin1", 28591},      {"iso8859-1", 28591},
    {"iso_8859-1", 28591},  {"l1", 28591},
    {"latin2", 28592},      {"iso8859-2", 28592},
    {"latin9", 28605},      {"iso8859-15", 28605},
    {"sjis", 932},          {"shift-jis", 932},
    {"ms_kanji", 932},      {"x-sjis", 932},
    {"windows-31j", 932},   {"cp932", 932},
    {"gb2312", 936},        {"gb_2312-80", 936},
    {"x-gbk", 936},         {"cp936", 936},
    {"windows-936", 936},   {"ks_c_5601-1987", 949},
    {"korean", 949},        {"windows-949", 949},
    {"cp949", 949},         {"big5-hkscs", 950},
    {"x-x-big5", 950},      {"cp950", 950},
    {"tis-620", 874},       {"iso-8859-11", 874},
    {"dos-874", 874},       {"koi8", 20866},
    {"mac", 10000},
};

const KnownCodePage* FindCodePage(int number) noexcept {
  const auto* found = std::find_if(std::begin(knownCodePages), std::end(knownCodePages),
                                   [&](const auto& known) { return known.number == number; });
  return found == std::end(knownCodePages) ? nullptr : found;
}

const KnownCodePage& RequireCodePage(int number) {
  if (const auto* known = FindCodePage(number)) return *known;
  throw Failure(FailureNumber::InvalidCall, "Unknown code page " + std::to_string(number));
}

bool IsAscii(std::string_view text) noexcept {
  return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

void DecodeUnknown(const void*, UConverterToUnicodeArgs* args, const char*, int32_t, UConverterCallbackReason reason,
                   UErrorCode* error) {
  if (reason > UCNV_IRREGULAR) return;
  static constexpr char16_t replacement = 0xFFFD;
  *error = U_ZERO_ERROR;
  ucnv_cbToUWriteUChars(args, &replacement, 1, 0, error);
}

/// The stock callbacks drop characters that are not visible; a page needs them as references like any other.
void EncodeUnknown(const void* context, UConverterFromUnicodeArgs* args, const UChar*, int32_t, UChar32 codePoint,
                   UConverterCallbackReason reason, UErrorCode* error) {
  if (reason > UCNV_IRREGULAR) return;
  char text[16] = "?";
  char* end = text + 1;
  if (*static_cast<const Unmappable*>(context) == Unmappable::CharacterReference) {
    text[0] = '&';
    text[1] = '#';
    end = std::to_chars(text + 2, std::end(text), codePoint).ptr;
    *end++ = ';';
  }
  *error = U_ZERO_ERROR;
  ucnv_cbFromUWriteBytes(args, text, static_cast<int32_t>(end - text), 0, error);
}

struct ConverterCloser {
  void operator()(UConverter* converter) const noexcept { ucnv_close(converter); }
};

/// The calling thread's converter for a code page, ready for a new text. Opening one costs far more than a page does.
UConverter* ConverterFor(const KnownCodePage& codePage) {
  thread_local std::vector<std::pair<int, std::unique_ptr<UConverter, ConverterCloser>>> open;
  for (const auto& [number, converter] : open) {
    if (number != codePage.number) continue;
    ucnv_reset(converter.get());
    return converter.get();
  }
  UErrorCode error = U_ZERO_ERROR;
  std::unique_ptr<UConverter, ConverterCloser> fresh(ucnv_open(codePage.converter, &error));
  if (U_FAILURE(error)) throw Failure(FailureNumber::InvalidCall, u_errorName(error));
  ucnv_setToUCallBack(fresh.get(), &DecodeUnknown, nullptr, nullptr, nullptr, &error);
  return open.emplace_back(codePage.number, std::move(fresh)).second.get();
}

std::string ReplaceMalformed(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size();) AppendCodePoint(result, NextCodePoint(text, i));
  return result;
}

std::string ValidUtf8(std::string_view text) {
  return IsValidUtf8(text) ? std::string(text) : ReplaceMalformed(text);
}

/// The library's converter for Japanese keeps an old custom of terminals: three control characters change places.
constexpr int CodePageJapanese = 932;
constexpr char16_t ToTerminalControl(char16_t unit) noexcept {
  return unit == 0x1A ? 0x1C : unit == 0x1C ? 0x7F : unit == 0x7F ? 0x1A : unit;
}
constexpr char16_t FromTerminalControl(char16_t unit) noexcept {
  return ToTerminalControl(ToTerminalControl(unit));  // the change has three steps to a full turn
}

std::u16string ToUtf16(std::string_view text) {
  std::u16string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size();) {
    const auto c = NextCodePoint(text, i);
    if (c >= 0x10000) result += static_cast<char16_t>(0xD7C0 + (c >> 10));
    result += static_cast<char16_t>(c >= 0x10000 ? 0xDC00 + (c & 0x3FF) : c);
  }
  return result;
}

void AppendUtf16(std::string& text, const char16_t* from, const char16_t* end) {
  while (from < end) {
    char32_t c = *from++;
    if (c >= 0xD800 && c < 0xDC00 && from < end) c = 0x10000 + ((c - 0xD800) << 10) + (*from++ - 0xDC00U);
    AppendCodePoint(text, c);
  }
}

}  // namespace

bool IsKnownCodePage(int codePage) {
  return FindCodePage(codePage) != nullptr;
}

std::string DecodeCodePage(std::string_view bytes, int codePage) {
  const auto& known = RequireCodePage(codePage);
  if (!known.converter) return ValidUtf8(bytes);
  if (IsAscii(bytes)) return std::string(bytes);
  auto* converter = ConverterFor(known);
  std::string text;
  text.reserve(bytes.size() + bytes.size() / 4);
  std::u16string units(bytes.size() * 2 + 16, u'\0');  // no byte of these code pages gives more than two units
  const auto* source = bytes.data();
  auto* target = units.data();
  UErrorCode error = U_ZERO_ERROR;
  ucnv_toUnicode(converter, &target, units.data() + units.size(), &source, bytes.data() + bytes.size(), nullptr, true,
                 &error);
  if (codePage == CodePageJapanese) std::transform(units.data(), target, units.data(), FromTerminalControl);
  AppendUtf16(text, units.data(), target);
  return text;
}

std::string EncodeCodePage(std::string_view text, int codePage, Unmappable unmappable) {
  const auto& known = RequireCodePage(codePage);
  if (!known.converter) return ValidUtf8(text);
  if (IsAscii(text)) return std::string(text);
  auto* converter = ConverterFor(known);
  UErrorCode error = U_ZERO_ERROR;
  ucnv_setFromUCallBack(converter, &EncodeUnknown, &unmappable, nullptr, nullptr, &error);
  auto units = ToUtf16(text);
  if (codePage == CodePageJapanese) std::transform(units.begin(), units.end(), units.begin(), ToTerminalControl);
  const char16_t* source = units.data();
  std::string bytes;
  bytes.reserve(text.size());
  do {
    char chunk[4096];
    char* target = chunk;
    error = U_ZERO_ERROR;
    ucnv_fromUnicode(converter, &target, std::end(chunk), &source, units.data() + units.size(), nullptr, true, &error);
    bytes.append(chunk, target);
  } while (error == U_BUFFER_OVERFLOW_ERROR);
  return bytes;
}

std::string CharsetName(int codePage) {
  const auto* known = FindCodePage(codePage);
  return known ? std::string(known->charset) : std::string();
}

int CodePageFromCharset(std::string_view name) {
  name = TrimBlanks(name);
  for (const auto& known : knownCodePages)
    if (EqualsIgnoringCase(name, known.charset)) return known.number;
  for (const auto& [alias, number] : aliases)
    if (EqualsIgnoringCase(name, alias)) return number;
  return 0;
}

namespace {

std::atomic<int> ansiCodePage{CodePageWindows1252};

}  // namespace

int AnsiCodePage() {
  return ansiCodePage.load(std::memory_order_relaxed);
}

void SetAnsiCodePage(int codePage) {
  ansiCodePage.store(codePage, std::memory_order_relaxed);
}

}  // namespace quillbook
