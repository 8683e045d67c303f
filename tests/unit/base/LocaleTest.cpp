#include "quillbook/base/Locale.h"

#include <gtest/gtest.h>
#include <unicode/locid.h>
#include <unicode/normalizer2.h>
#include <unicode/ulocdata.h>
#include <unicode/uniset.h>
#include <unicode/usetiter.h>

#include <memory>
#include <set>

#include "quillbook/base/CodePage.h"

namespace quillbook {
namespace {

struct KnownLocale {
  int id;
  std::string tag;
};

/// The ids for which ICU has a locale that leads back to the same id.
std::vector<KnownLocale> AllKnownLocales() {
  std::vector<KnownLocale> locales;
  for (int id = 1; id < 0x10000; ++id) {
    char tag[ULOC_FULLNAME_CAPACITY] = {};
    auto status = U_ZERO_ERROR;
    uloc_getLocaleForLCID(static_cast<std::uint32_t>(id), tag, sizeof tag, &status);
    const bool isInvariant = id == 0x7F;
    if (U_SUCCESS(status) && !isInvariant && static_cast<int>(uloc_getLCID(tag)) == id) locales.push_back({id, tag});
  }
  return locales;
}

/// The letters of the language; none where ICU knows nothing of it.
std::unique_ptr<icu::UnicodeSet> AlphabetOf(const std::string& tag) {
  auto status = U_ZERO_ERROR;
  const std::unique_ptr<ULocaleData, void (*)(ULocaleData*)> data(ulocdata_open(tag.c_str(), &status), &ulocdata_close);
  if (status == U_USING_DEFAULT_WARNING || U_FAILURE(status)) return nullptr;
  auto letters = std::make_unique<icu::UnicodeSet>();
  ulocdata_getExemplarSet(data.get(), letters->toUSet(), 0, ULOCDATA_ES_STANDARD, &status);
  return U_SUCCESS(status) ? std::move(letters) : nullptr;
}

std::string Utf8(const icu::UnicodeString& text) {
  std::string utf8;
  return text.toUTF8String(utf8);
}

bool IsInCodePage(const icu::UnicodeString& letter, int codePage) {
  auto status = U_ZERO_ERROR;
  const auto apart = icu::Normalizer2::getNFDInstance(status)->normalize(letter, status);
  for (const auto& form : {letter, apart})
    if (EncodeCodePage(Utf8(form), codePage, Unmappable::QuestionMark).find('?') == std::string::npos) return true;
  return false;
}

TEST(Locale, EveryIdThatIcuKnows_IsALocaleWithAUsableCodePage) {
  const auto locales = AllKnownLocales();
  ASSERT_GT(locales.size(), 400U);
  for (const auto& [id, tag] : locales) {
    const auto locale = Locale::FromID(id);
    ASSERT_TRUE(locale) << tag;
    EXPECT_EQ(locale->LocaleID(), id) << tag;
    EXPECT_FALSE(locale->Name().empty()) << tag;
    EXPECT_NE(locale->Name(), tag) << "that is no name for a reader";
    ASSERT_TRUE(IsKnownCodePage(locale->CodePage())) << tag;
    EXPECT_EQ(CodePageFromCharset(CharsetName(locale->CodePage())), locale->CodePage()) << tag;
  }
}

TEST(Locale, EveryIdThatIcuKnows_HasANameOfItsOwn) {
  // Spain has two orders of letters; Serbia and Montenegro, which is no more, is called Serbia; one language has two
  // numbers.
  const std::set<int> namesakes = {0x0C0A, 0x081A, 0x0C1A, 0x0093};
  std::set<std::string> names;
  for (const auto& [id, tag] : AllKnownLocales())
    EXPECT_TRUE(namesakes.count(id) != 0 || names.insert(Locale::FromID(id)->Name()).second) << tag;
}

TEST(Locale, CodePages_HoldMostLettersOfTheirLanguages) {
  int languages = 0;
  for (const auto& [id, tag] : AllKnownLocales()) {
    const int codePage = Locale::FromID(id)->CodePage();
    const auto letters = AlphabetOf(tag);
    const bool isOtherScript = id == 0x7C1A;  // ICU's Serbian without a script is Cyrillic, Windows' is Latin
    if (!letters || letters->isEmpty() || isOtherScript) continue;
    ++languages;
    int held = 0;
    for (icu::UnicodeSetIterator each(*letters); each.next();) held += IsInCodePage(each.getString(), codePage);
    EXPECT_GT(held * 2, letters->size()) << tag << " " << codePage << ": " << held << " of " << letters->size();
  }
  EXPECT_GT(languages, 300);
}

TEST(Locale, FromID_GivesNumberEnglishNameAndAnsiCodePage) {
  const auto german = Locale::FromID(0x0807);
  ASSERT_TRUE(german);
  EXPECT_EQ(german->LocaleID(), 0x0807);
  EXPECT_EQ(german->Name(), "German (Switzerland)");
  EXPECT_EQ(german->CodePage(), 1252);
}

TEST(Locale, CodePage_FollowsTheLanguage) {
  const std::pair<int, int> expected[] = {{0x0409, 1252}, {0x0405, 1250}, {0x0419, 1251}, {0x0408, 1253},
                                          {0x041F, 1254}, {0x040D, 1255}, {0x0401, 1256}, {0x3801, 1256},
                                          {0x0427, 1257}, {0x042A, 1258}, {0x041E, 874},  {0x0411, 932},
                                          {0x0804, 936},  {0x1004, 936},  {0x0412, 949},  {0x0404, 950}};
  for (const auto& [id, codePage] : expected) {
    const auto locale = Locale::FromID(id);
    ASSERT_TRUE(locale) << id;
    EXPECT_EQ(locale->CodePage(), codePage) << locale->Name();
  }
}

TEST(Locale, CodePage_FollowsTheRegion_WhereScriptsDiffer) {
  EXPECT_EQ(Locale::FromID(0x081A)->CodePage(), 1250);  // Serbian, Latin
  EXPECT_EQ(Locale::FromID(0x0C1A)->CodePage(), 1251);  // Serbian, Cyrillic
  EXPECT_EQ(Locale::FromID(0x042C)->CodePage(), 1254);  // Azerbaijani, Latin
  EXPECT_EQ(Locale::FromID(0x082C)->CodePage(), 1251);  // Azerbaijani, Cyrillic
  EXPECT_EQ(Locale::FromID(0x6C1A)->CodePage(), 1251);  // Serbian, Cyrillic, no region
  EXPECT_EQ(Locale::FromID(0x7C1A)->CodePage(), 1250);  // Serbian
  EXPECT_EQ(Locale::FromID(0x0859)->CodePage(), 1256);  // Sindhi, Arabic
  EXPECT_EQ(Locale::FromID(0x045F)->CodePage(), 1256);  // Tamazight, Arabic
  EXPECT_EQ(Locale::FromID(0x085F)->CodePage(), 1252);  // Tamazight, Latin
  EXPECT_EQ(Locale::FromID(0x085D)->CodePage(), 1252);  // Inuktitut, Latin
}

TEST(Locale, CodePage_IsUtf8_ForALanguageWithoutAnsiCodePage) {
  // Hindi, Sindhi in Devanagari, Mongolian in old letters, Inuktitut in syllabics, Tamazight in Tifinagh, Somali
  for (const int id : {0x0439, 0x0459, 0x0850, 0x0C50, 0x7C50, 0x045D, 0x785D, 0x105F, 0x0477})
    EXPECT_EQ(Locale::FromID(id)->CodePage(), 65001) << id;
}

TEST(Locale, SortOrder_CountsNeitherForTheNameNorForTheCodePage) {
  const auto phoneBook = Locale::FromID(0x10407);
  ASSERT_TRUE(phoneBook);
  EXPECT_EQ(phoneBook->Name(), "German (Germany)");
  EXPECT_EQ(phoneBook->CodePage(), 1252);
}

TEST(Locale, FromID_IsNothing_ForANumberWithoutLanguage) {
  for (const int id : {0, -1, 0x03FF, 0x0400, 0x1000, 0xFFFF}) EXPECT_FALSE(Locale::FromID(id)) << id;
}

TEST(Locale, Default_IsALocaleWithRegion) {
  ASSERT_TRUE(Locale::Default());
  EXPECT_NE(Locale::Default()->LocaleID(), 0x7F);
  EXPECT_FALSE(Locale::Default()->Name().empty());
}

}  // namespace
}  // namespace quillbook
