#include "quillbook/base/Locale.h"

#include <unicode/uloc.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>

#include "quillbook/base/CodePage.h"
#include "quillbook/base/Text.h"

namespace quillbook {

namespace {

constexpr std::int32_t Invariant = 0x007F;
constexpr std::int32_t EnglishUnitedStates = 0x0409;
constexpr int DefaultAnsiCodePage = CodePageWindows1252;

struct LanguageCodePage {
  std::uint16_t language;  ///< of the locale id, without sort order
  std::uint16_t codePage;
};

// Languages by the lower ten bits of the id, for all regions that the table below doesn't name. What is in neither
// writes Latin letters of Western Europe. The numbers are those of Windows' own table of locales, 0 where it has none;
// Kazakh keeps the one that it had while help was compiled.
constexpr LanguageCodePage PrimaryLanguages[] = {
    {0x01, 1256},  // Arabic
    {0x02, 1251},  // Bulgarian
    {0x04, 936},   // Chinese, simplified
    {0x05, 1250},  // Czech
    {0x08, 1253},  // Greek
    {0x0D, 1255},  // Hebrew
    {0x0E, 1250},  // Hungarian
    {0x11, 932},   // Japanese
    {0x12, 949},   // Korean
    {0x15, 1250},  // Polish
    {0x18, 1250},  // Romanian
    {0x19, 1251},  // Russian
    {0x1A, 1250},  // Croatian, Serbian and Bosnian in Latin letters
    {0x1B, 1250},  // Slovak
    {0x1C, 1250},  // Albanian
    {0x1E, 874},   // Thai
    {0x1F, 1254},  // Turkish
    {0x20, 1256},  // Urdu
    {0x22, 1251},  // Ukrainian
    {0x23, 1251},  // Belarusian
    {0x24, 1250},  // Slovenian
    {0x25, 1257},  // Estonian
    {0x26, 1257},  // Latvian
    {0x27, 1257},  // Lithuanian
    {0x28, 1251},  // Tajik
    {0x29, 1256},  // Persian
    {0x2A, 1258},  // Vietnamese
    {0x2B, 0},     // Armenian
    {0x2C, 1254},  // Azerbaijani in Latin letters
    {0x2F, 1251},  // Macedonian
    {0x30, 0},     // Southern Sotho
    {0x31, 0},     // Tsonga
    {0x33, 0},     // Venda
    {0x37, 0},     // Georgian
    {0x39, 0},     // Hindi
    {0x3A, 0},     // Maltese
    {0x3D, 0},     // Yiddish
    {0x3F, 1251},  // Kazakh
    {0x40, 1251},  // Kyrgyz
    {0x42, 1250},  // Turkmen
    {0x43, 1254},  // Uzbek in Latin letters
    {0x44, 1251},  // Tatar
    {0x45, 0},     // Bangla
    {0x46, 0},     // Punjabi
    {0x47, 0},     // Gujarati
    {0x48, 0},     // Odia
    {0x49, 0},     // Tamil
    {0x4A, 0},     // Telugu
    {0x4B, 0},     // Kannada
    {0x4C, 0},     // Malayalam
    {0x4D, 0},     // Assamese
    {0x4E, 0},     // Marathi
    {0x4F, 0},     // Sanskrit
    {0x50, 1251},  // Mongolian in Cyrillic letters
    {0x51, 0},     // Tibetan
    {0x53, 0},     // Khmer
    {0x54, 0},     // Lao
    {0x55, 0},     // Burmese
    {0x57, 0},     // Konkani
    {0x58, 0},     // Manipuri
    {0x59, 1256},  // Sindhi in Arabic letters
    {0x5A, 0},     // Syriac
    {0x5B, 0},     // Sinhala
    {0x5C, 0},     // Cherokee
    {0x5E, 0},     // Amharic
    {0x60, 0},     // Kashmiri
    {0x61, 0},     // Nepali
    {0x63, 0},     // Pashto
    {0x65, 0},     // Divehi
    {0x6D, 1251},  // Bashkir
    {0x72, 0},     // Oromo
    {0x73, 0},     // Tigrinya
    {0x77, 0},     // Somali
    {0x78, 0},     // Yi
    {0x80, 1256},  // Uyghur
    {0x81, 0},     // Maori
    {0x85, 1251},  // Sakha
    {0x8C, 1256},  // Dari
    {0x92, 1256},  // Central Kurdish
};

// Whole ids that differ from their language.
constexpr LanguageCodePage Regions[] = {
    // Chinese, traditional: Taiwan, Hong Kong, Macao, no region
    {0x0404, 950},
    {0x0C04, 950},
    {0x1404, 950},
    {0x7C04, 950},
    // Serbian in Cyrillic letters
    {0x0C1A, 1251},
    {0x1C1A, 1251},
    {0x281A, 1251},
    {0x301A, 1251},
    {0x6C1A, 1251},
    // Bosnian in Cyrillic letters
    {0x201A, 1251},
    {0x641A, 1251},
    // Azerbaijani in Cyrillic letters
    {0x082C, 1251},
    {0x742C, 1251},
    // Uzbek in Cyrillic letters
    {0x0843, 1251},
    {0x7843, 1251},
    // Punjabi in Arabic letters
    {0x0846, 1256},
    {0x7C46, 1256},
    // Mongolian in traditional letters: China, Mongolia, no region
    {0x0850, 0},
    {0x0C50, 0},
    {0x7C50, 0},
    // Sindhi in Devanagari
    {0x0459, 0},
    // Inuktitut in syllabics
    {0x045D, 0},
    {0x785D, 0},
    // Tamazight in Arabic letters, in Tifinagh
    {0x045F, 1256},
    {0x105F, 0},
    {0x785F, 0},
};

const LanguageCodePage* Find(const LanguageCodePage* first, const LanguageCodePage* last, int language) {
  const auto* found = std::find_if(first, last, [&](const auto& entry) { return entry.language == language; });
  return found == last ? nullptr : found;
}

std::int32_t AnsiCodePageOf(std::int32_t id) {
  const auto* entry = Find(std::begin(Regions), std::end(Regions), id & 0xFFFF);
  if (!entry) entry = Find(std::begin(PrimaryLanguages), std::end(PrimaryLanguages), id & 0x3FF);
  if (!entry) return DefaultAnsiCodePage;
  return entry->codePage == 0 ? CodePageUtf8 : entry->codePage;
}

using NameBuffer = std::array<char, ULOC_FULLNAME_CAPACITY>;

/// Language, script and region that the id stands for, without sort order; empty if it stands for none.
NameBuffer LocaleTag(std::int32_t id) {
  NameBuffer whole{};
  NameBuffer tag{};
  auto status = U_ZERO_ERROR;
  uloc_getLocaleForLCID(static_cast<std::uint32_t>(id), whole.data(), static_cast<std::int32_t>(whole.size()), &status);
  uloc_getBaseName(whole.data(), tag.data(), static_cast<std::int32_t>(tag.size()), &status);
  if (U_FAILURE(status) || std::string_view(tag.data()) == "root") return {};
  // Withdrawn for "quc", the same language; only that one has a name.
  if (std::string_view(tag.data()).starts_with("qut")) tag[2] = 'c';
  return tag;
}

std::string EnglishName(const NameBuffer& tag) {
  std::array<UChar, 256> name{};
  auto status = U_ZERO_ERROR;
  const auto length =
      uloc_getDisplayName(tag.data(), "en", name.data(), static_cast<std::int32_t>(name.size()), &status);
  std::string result;
  if (U_FAILURE(status)) return result;
  for (const auto unit : std::basic_string_view<UChar>(name.data(), static_cast<std::size_t>(length)))
    AppendCodePoint(result, unit);  // names in English lie in the first plane
  return result;
}

}  // namespace

Locale::Locale(std::int32_t id, std::string name)
    : mLocaleID(id), mName(std::move(name)), mCodePage(AnsiCodePageOf(id)) {}

Ref<Locale> Locale::FromID(std::int32_t id) {
  if (id <= 0) return {};
  const auto tag = LocaleTag(id);
  return tag.front() == '\0' ? Ref<Locale>() : New<Locale>(id, EnglishName(tag));
}

Ref<Locale> Locale::Default() {
  const auto id = static_cast<std::int32_t>(uloc_getLCID(uloc_getDefault()));
  auto locale = id == Invariant ? Ref<Locale>() : FromID(id);
  return locale ? locale : FromID(EnglishUnitedStates);
}

const TypeInfo& Locale::StaticType() {
  static const TypeInfo type = Describe<Locale>("Locale")
                                   .Field<&Locale::mLocaleID>("mLocaleID")
                                   .Field<&Locale::mName>("mName")
                                   .Field<&Locale::mCodePage>("mCodePage")
                                   .ReadOnly<&Locale::LocaleID>("LocaleID")
                                   .ReadOnly<&Locale::Name>("Name")
                                   .ReadOnly<&Locale::CodePage>("CodePage")
                                   .Done();
  return type;
}

}  // namespace quillbook
