#include "quillbook/base/Locale.h"

#include <gtest/gtest.h>

namespace quillbook {
namespace {

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
}

TEST(Locale, CodePage_IsUtf8_ForALanguageWithoutAnsiCodePage) {
  EXPECT_EQ(Locale::FromID(0x0439)->CodePage(), 65001);
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
