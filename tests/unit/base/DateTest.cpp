#include "quillbook/base/Date.h"

#include <gtest/gtest.h>
#include <unicode/locid.h>

#include <cmath>
#include <cstdlib>
#include <limits>

namespace quillbook {
namespace {

/// Sets the locale of the process for the length of a test.
class InLocale {
 public:
  explicit InLocale(const char* name) {
    if (const char* before = std::getenv("LC_ALL")) mBefore = before;
    setenv("LC_ALL", name, 1);
  }
  ~InLocale() {
    if (mBefore.empty())
      unsetenv("LC_ALL");
    else
      setenv("LC_ALL", mBefore.c_str(), 1);
  }
  InLocale(const InLocale&) = delete;
  InLocale& operator=(const InLocale&) = delete;

 private:
  std::string mBefore;
};

Date At(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
  return Date::FromParts({year, month, day, hour, minute, second}).value();
}

constexpr auto Iso = "yyyy-mm-dd hh:nn:ss";

TEST(Date, DayNumbers_CountFrom30December1899) {
  EXPECT_EQ(At(1899, 12, 30).Days(), 0);
  EXPECT_EQ(At(1900, 1, 1).Days(), 2);
  EXPECT_EQ(At(1970, 1, 1).Days(), 25'569);
  EXPECT_EQ(At(2024, 2, 29, 12).Days(), 45'351.5);
  EXPECT_EQ(At(100, 1, 1).Days(), -657'434);
  EXPECT_EQ(At(9999, 12, 31).Days(), 2'958'465);
}

TEST(Date, FractionOfANegativeDay_CountsForward) {
  EXPECT_EQ(Date(-1.75).Format(Iso), "1899-12-29 18:00:00");
  EXPECT_EQ(Date(-0.25).Format(Iso), "1899-12-30 06:00:00");
  EXPECT_EQ(At(1899, 12, 29, 18).Days(), -1.75);
}

TEST(Date, Parts_RoundToTheNearestSecond_AndNeverShowSixty) {
  EXPECT_EQ(Date(45'351 + 59.7 / 86'400).Format(Iso), "2024-02-29 00:01:00");
  EXPECT_EQ(Date(45'351.9999999).Format(Iso), "2024-03-01 00:00:00");
  EXPECT_EQ(Date(-1.9999999).Format(Iso), "1899-12-30 00:00:00");
  EXPECT_EQ(Date(45'351 + 0.4 / 86'400).Format(Iso), "2024-02-29 00:00:00");
}

TEST(Date, EverySecondOfADay_SurvivesTheRoundTripThroughADouble) {
  for (const int year : {100, 1899, 2024, 9999})
    for (int second = 0; second < 86'400; ++second) {
      const auto parts = At(year, 12, 31, 0, 0, second).ToParts();
      ASSERT_EQ(parts.hour * 3600 + parts.minute * 60 + parts.second, second);
      ASSERT_EQ(parts.day, 31);
    }
}

TEST(Date, EveryDayOfTheCalendar_SurvivesTheRoundTripThroughParts) {
  Date::Parts before = Date(-657'435 + 1).ToParts();
  for (int day = -657'433; day <= 2'958'465; ++day) {
    const auto parts = Date(day).ToParts();
    ASSERT_EQ(Date::FromParts(parts)->Days(), day);
    // Each day follows the one before it.
    ASSERT_TRUE((parts.day == before.day + 1 && parts.month == before.month) || (parts.day == 1 && before.day >= 28));
    before = parts;
  }
}

TEST(Date, FromParts_CarriesWhatOverflows) {
  EXPECT_EQ(At(2023, 13, 1), At(2024, 1, 1));
  EXPECT_EQ(At(2024, 3, 0), At(2024, 2, 29));
  EXPECT_EQ(At(2024, 1, -30), At(2023, 12, 1));
  EXPECT_EQ(At(2024, 0, 5), At(2023, 12, 5));
  EXPECT_EQ(At(2024, 1, 1, 25, 61, 61), At(2024, 1, 2, 2, 2, 1));
  EXPECT_EQ(At(2024, 1, 1, 0, 0, -1), At(2023, 12, 31, 23, 59, 59));
}

TEST(Date, FromParts_OutsideTheCalendar_GivesNone) {
  EXPECT_FALSE(Date::FromParts({99, 12, 31}));
  EXPECT_FALSE(Date::FromParts({10'000, 1, 1}));
  EXPECT_FALSE(Date::FromParts({9999, 12, 32}));
  EXPECT_FALSE(Date::FromParts({std::numeric_limits<int>::max(), std::numeric_limits<int>::max(), 1}));
  EXPECT_TRUE(Date::FromParts({99, 13, 1}));
}

TEST(Date, ImpossibleDayCounts_GiveTheNearestDay) {
  EXPECT_EQ(Date(1e300).Format(Iso), "9999-12-31 23:59:59");
  EXPECT_EQ(Date(-1e300).Format(Iso), "0100-01-01 23:59:59");
  EXPECT_EQ(Date(std::nan("")).Format(Iso), "1899-12-30 00:00:00");
}

TEST(Date, Format_WritesThePicturesOfFiles) {
  const auto date = At(2024, 3, 5, 7, 8, 9);
  EXPECT_EQ(date.Format("dd/mm/yyyy hh:nn:ss"), "05/03/2024 07:08:09");
  EXPECT_EQ(date.Format("dd-mm-yyyy hh:nn"), "05-03-2024 07:08");
  EXPECT_EQ(date.Format("dd-mm-yyyy hh:nn:ss"), "05-03-2024 07:08:09");
  EXPECT_EQ(date.Format("at d, yy"), "at d, yy");
}

TEST(Date, LocaleText_OfTheCLocale_IsEnglish) {
  for (const char* locale : {"C", "POSIX", "C.UTF-8"}) {
    const InLocale scope(locale);
    EXPECT_EQ(At(2024, 3, 5, 19, 8, 9).ToLocaleText(), "3/5/2024 7:08:09 PM");
    EXPECT_EQ(At(2024, 3, 5).ToLocaleText(), "3/5/2024");
    EXPECT_EQ(At(1899, 12, 30, 0, 0, 1).ToLocaleText(), "12:00:01 AM");
    EXPECT_EQ(Date().ToLocaleText(), "12:00:00 AM");
  }
}

TEST(Date, LocaleText_FollowsTheLocaleOfTheProcess) {
  const InLocale scope("de_DE.UTF-8");
  EXPECT_EQ(At(2024, 3, 5, 19, 8, 9).ToLocaleText(), "5.3.2024 19:08:09");
  EXPECT_EQ(Date::FromLocaleText("5.3.2024 19:08:09"), At(2024, 3, 5, 19, 8, 9));
  EXPECT_EQ(Date::FromLocaleText("3/5/2024 7:08:09 PM"), std::nullopt);
}

TEST(Date, LocaleText_ComesBackToTheSecond_InEveryLocale) {
  int32_t count = 0;
  const auto* locales = icu::Locale::getAvailableLocales(count);
  ASSERT_GT(count, 100);
  for (int32_t i = 0; i < count; ++i) {
    const InLocale scope(locales[i].getName());
    for (const auto date : {At(2024, 12, 31, 0, 0, 1), At(1582, 10, 10, 12, 59, 59), At(100, 1, 1, 23, 30),
                            At(9999, 2, 28), At(1899, 12, 30, 13, 5, 6), Date()})
      EXPECT_EQ(Date::FromLocaleText(date.ToLocaleText()), date)
          << locales[i].getName() << " " << date.ToLocaleText() << " " << date.Format(Iso);
  }
}

TEST(Date, FromLocaleText_TakesShorterForms) {
  const InLocale scope("en_US.UTF-8");
  EXPECT_EQ(Date::FromLocaleText(" 3/5/2024 "), At(2024, 3, 5));
  EXPECT_EQ(Date::FromLocaleText("03/05/2024 07:08 PM"), At(2024, 3, 5, 19, 8));
  EXPECT_EQ(Date::FromLocaleText("3/5/2024 19:08:09"), At(2024, 3, 5, 19, 8, 9));
  EXPECT_EQ(Date::FromLocaleText("3/5/29"), At(2029, 3, 5));
  EXPECT_EQ(Date::FromLocaleText("3/5/30"), At(1930, 3, 5));
  EXPECT_EQ(Date::FromLocaleText("2/29/00"), At(2000, 2, 29));
  EXPECT_EQ(Date::FromLocaleText("19:08"), At(1899, 12, 30, 19, 8));
}

TEST(Date, FromLocaleText_OfAnythingElse_GivesNone) {
  const InLocale scope("en_US.UTF-8");
  for (const char* text :
       {"", " ", "soon", "3/5/2024 x", "13/5/2024", "2/30/2024", "3/5/2024 25:00", "3/5/99999", "\xFF"})
    EXPECT_EQ(Date::FromLocaleText(text), std::nullopt) << text;
}

TEST(Date, FormatForReader_KnowsTheNamedFormats) {
  const InLocale scope("en_US.UTF-8");
  const auto date = At(2024, 3, 5, 19, 8, 9);
  EXPECT_EQ(date.FormatForReader("Short Date"), "3/5/2024");
  EXPECT_EQ(date.FormatForReader("long date"), "Tuesday, March 5, 2024");
  EXPECT_EQ(date.FormatForReader("Medium Date"), "05-Mar-24");
  EXPECT_EQ(date.FormatForReader("General Date"), "3/5/2024 7:08:09 PM");
  EXPECT_EQ(date.FormatForReader("Short Time"), "19:08");
  EXPECT_EQ(date.FormatForReader("Medium Time"), "07:08 PM");
  EXPECT_EQ(date.FormatForReader("Long Time"), "7:08:09 PM");
}

TEST(Date, FormatForReader_WritesPictures) {
  const InLocale scope("en_US.UTF-8");
  const auto date = At(2024, 3, 5, 19, 8, 9);
  EXPECT_EQ(date.FormatForReader("d dd ddd dddd"), "5 05 Tue Tuesday");
  EXPECT_EQ(date.FormatForReader("m mm mmm mmmm"), "3 03 Mar March");
  EXPECT_EQ(date.FormatForReader("yy yyyy, y"), "24 2024, 65");
  EXPECT_EQ(date.FormatForReader("h hh:mm:ss"), "19 19:08:09");
  EXPECT_EQ(date.FormatForReader("h:n:s AM/PM"), "7:8:9 PM");
  EXPECT_EQ(date.FormatForReader("h a/p"), "7 p");
  EXPECT_EQ(At(2024, 3, 5).FormatForReader("h am/pm"), "12 am");
  EXPECT_EQ(date.FormatForReader("DD.MM.YYYY"), "05.03.2024");
  EXPECT_EQ(date.FormatForReader("\"day\" d \\d"), "day 5 d");
  EXPECT_EQ(date.FormatForReader("q \"open"), "1 open");
  EXPECT_EQ(date.FormatForReader(""), "");
}

TEST(Date, Weeks_BeginOnSunday_AndTheFirstHolds1January) {
  EXPECT_EQ(At(2024, 1, 1).FormatForReader("w ww"), "2 1");  // a Monday
  EXPECT_EQ(At(2024, 1, 6).FormatForReader("w ww"), "7 1");  // Saturday
  EXPECT_EQ(At(2024, 1, 7).FormatForReader("w ww"), "1 2");  // Sunday
  EXPECT_EQ(At(2022, 1, 1).FormatForReader("w ww"), "7 1");  // a Saturday
  EXPECT_EQ(At(2022, 1, 2).FormatForReader("w ww"), "1 2");
  EXPECT_EQ(At(2022, 12, 31).FormatForReader("w ww"), "7 53");
  EXPECT_EQ(At(1899, 12, 30).FormatForReader("w"), "7");
  EXPECT_EQ(At(101, 1, 1).FormatForReader("w"), "7");
}

TEST(Date, Now_IsThePresentMoment) {
  const auto parts = Date::Now().ToParts();
  EXPECT_GE(parts.year, 2024);
  EXPECT_EQ(Date::FromParts(parts)->Format(Iso), Date::Now().Format(Iso).substr(0, 19)) << "a second apart at most";
}

}  // namespace
}  // namespace quillbook
