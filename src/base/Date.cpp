#include "quillbook/base/Date.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <ctime>
#include <iterator>

#include "base/DateLocale.h"
#include "quillbook/base/Text.h"

namespace quillbook {

namespace {

using detail::LocaleForm;
using detail::Moment;

constexpr std::int64_t FirstDay = -657'434;  // 1 January 100
constexpr std::int64_t LastDay = 2'958'465;  // 31 December 9999
constexpr int SecondsPerDay = 86'400;
constexpr std::int64_t EpochOffset = 693'899;  // 30 December 1899, counted from 1 March of year 0

constexpr std::int64_t FloorDivide(std::int64_t value, std::int64_t by) noexcept {
  return value / by - (value % by < 0 ? 1 : 0);
}

/// Day of the first of a month; years counted from March make the leap day the last one.
constexpr std::int64_t DayOfMonthStart(std::int64_t year, int month) noexcept {
  const auto marchYear = month > 2 ? year : year - 1;
  const auto dayOfYear = (153 * (month > 2 ? month - 3 : month + 9) + 2) / 5;
  return marchYear * 365 + FloorDivide(marchYear, 4) - FloorDivide(marchYear, 100) + FloorDivide(marchYear, 400) +
         dayOfYear - EpochOffset;
}
static_assert(DayOfMonthStart(1899, 12) == -29 && DayOfMonthStart(1970, 1) == 25'569 &&
              DayOfMonthStart(100, 1) == FirstDay && DayOfMonthStart(10'000, 1) == LastDay + 1);

void SetCalendarDay(std::int64_t day, Date::Parts& parts) noexcept {
  const auto shifted = day + EpochOffset;
  const auto era = FloorDivide(shifted, 146'097);
  const auto dayOfEra = shifted - era * 146'097;
  const auto yearOfEra = (dayOfEra - dayOfEra / 1'460 + dayOfEra / 36'524 - dayOfEra / 146'096) / 365;
  const auto dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  const auto monthFromMarch = (5 * dayOfYear + 2) / 153;
  parts.day = static_cast<int>(dayOfYear - (153 * monthFromMarch + 2) / 5 + 1);
  parts.month = static_cast<int>(monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9);
  parts.year = static_cast<int>(yearOfEra + era * 400 + (parts.month <= 2 ? 1 : 0));
}

/// From 1, Sunday. Day 1 was one.
constexpr int WeekdayOf(std::int64_t day) noexcept {
  return static_cast<int>(day - 1 - FloorDivide(day - 1, 7) * 7) + 1;
}

/// The fraction counts forward in time, for days before day zero too: -1.75 is 18:00 of 29 December 1899.
Moment ToMoment(double days) noexcept {
  if (std::isnan(days)) return {};
  const auto limited = std::clamp(days, FirstDay - 0.99999, LastDay + 0.99999);  // to the last second of either
  const auto whole = std::trunc(limited);
  Moment moment{static_cast<std::int64_t>(whole),
                static_cast<int>(std::lround(std::abs(limited - whole) * SecondsPerDay))};
  if (moment.second == SecondsPerDay) moment = {moment.day + 1, 0};
  return moment;
}

std::optional<Date> ToDate(const Moment& moment) noexcept {
  if (moment.day < FirstDay || moment.day > LastDay) return std::nullopt;
  const auto fraction = static_cast<double>(moment.second) / SecondsPerDay;
  const auto day = static_cast<double>(moment.day);
  return Date(moment.day < 0 ? day - fraction : day + fraction);
}

std::string LocaleText(const Moment& moment) {
  const auto form = moment.day == 0      ? LocaleForm::Time
                    : moment.second == 0 ? LocaleForm::Date
                                         : LocaleForm::DateAndTime;
  return detail::FormatInLocale(moment, form);
}

/// Writes a date by a picture for a reader.
class ReaderPicture {
 public:
  ReaderPicture(std::string_view picture, const Moment& moment, const Date::Parts& parts)
      : mPicture(picture), mMoment(moment), mParts(parts) {}

  [[nodiscard]] std::string Write() {
    // One mark anywhere in the picture turns all its hours to those of a twelve-hour clock.
    mTwelveHours = Contains("AM/PM") || Contains("A/P") || Contains("AMPM");
    while (mPosition < mPicture.size())
      if (!WriteLiteral() && !WriteHalfDay() && !WriteLetters()) mResult += mPicture[mPosition++];
    return std::move(mResult);
  }

 private:
  [[nodiscard]] bool Contains(std::string_view mark) const {
    return FindIgnoringCase(mPicture, mark) != std::string_view::npos;
  }
  bool WriteLiteral();
  bool WriteHalfDay();
  bool WriteLetters();
  void WriteToken(char letter, std::size_t count);
  void WriteDayToken(std::size_t count);
  void WriteMonthToken(std::size_t count);
  void WriteYearToken(std::size_t count);
  void Number(int value, std::size_t width) { fmt::format_to(std::back_inserter(mResult), "{:0{}}", value, width); }
  [[nodiscard]] std::int64_t YearStart() const { return DayOfMonthStart(mParts.year, 1); }
  [[nodiscard]] int DayOfYear() const { return static_cast<int>(mMoment.day - YearStart()) + 1; }
  [[nodiscard]] int Hour() const { return mTwelveHours ? (mParts.hour + 11) % 12 + 1 : mParts.hour; }

  std::string_view mPicture;
  const Moment& mMoment;
  const Date::Parts& mParts;
  std::string mResult;
  std::size_t mPosition = 0;
  bool mTwelveHours = false;
  char mLastLetter = 0;
};

bool ReaderPicture::WriteLiteral() {
  const auto rest = mPicture.substr(mPosition);
  if (rest.front() == '\\' && rest.size() > 1) {
    mResult += rest[1];
    mPosition += 2;
    return true;
  }
  if (rest.front() != '"') return false;
  const auto end = std::min(rest.find('"', 1), rest.size());
  mResult.append(rest.substr(1, end - 1));
  mPosition += end + 1;
  return true;
}

bool ReaderPicture::WriteHalfDay() {
  const auto rest = mPicture.substr(mPosition);
  const bool afternoon = mParts.hour >= 12;
  if (StartsWithIgnoringCase(rest, "AMPM")) {
    mResult += detail::HalfDayName(afternoon);
    mPosition += 4;
    return true;
  }
  for (const std::string_view mark : {"AM/PM", "A/P"}) {
    if (!StartsWithIgnoringCase(rest, mark)) continue;
    const auto half = mark.size() / 2;
    mResult.append(rest.substr(afternoon ? half + 1 : 0, half));
    mPosition += mark.size();
    return true;
  }
  return false;
}

bool ReaderPicture::WriteLetters() {
  struct Run {
    char letter;
    std::size_t longest;
  };
  static constexpr Run runs[] = {{'d', 6}, {'m', 4}, {'y', 4}, {'h', 2}, {'n', 2}, {'s', 2}, {'w', 2}, {'q', 1}};
  const auto rest = mPicture.substr(mPosition);
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
  for (const auto& run : runs) {
    if (lower(rest.front()) != run.letter) continue;
    std::size_t count = 1;
    while (count < std::min(run.longest, rest.size()) && lower(rest[count]) == run.letter) ++count;
    // "hh:mm" means minutes.
    const bool minutes = run.letter == 'm' && count <= 2 && mLastLetter == 'h';
    WriteToken(minutes ? 'n' : run.letter, count);
    mLastLetter = run.letter;
    mPosition += count;
    return true;
  }
  return false;
}

void ReaderPicture::WriteToken(char letter, std::size_t count) {
  switch (letter) {
    case 'd': return WriteDayToken(count);
    case 'm': return WriteMonthToken(count);
    case 'y': return WriteYearToken(count);
    case 'h': return Number(Hour(), count);
    case 'n': return Number(mParts.minute, count);
    case 's': return Number(mParts.second, count);
    case 'q': return Number((mParts.month + 2) / 3, 1);
    default:
      // Weeks begin on Sunday, and the first is the one that holds 1 January.
      return Number(count == 1 ? WeekdayOf(mMoment.day) : (DayOfYear() + WeekdayOf(YearStart()) - 2) / 7 + 1, 1);
  }
}

void ReaderPicture::WriteDayToken(std::size_t count) {
  switch (count) {
    case 1:
    case 2: return Number(mParts.day, count);
    case 3:
    case 4: mResult += detail::WeekdayName(WeekdayOf(mMoment.day), count == 3); return;
    default: mResult += detail::FormatInLocale(mMoment, count == 5 ? LocaleForm::Date : LocaleForm::LongDate);
  }
}

void ReaderPicture::WriteMonthToken(std::size_t count) {
  if (count <= 2)
    Number(mParts.month, count);
  else
    mResult += detail::MonthName(mParts.month, count == 3);
}

void ReaderPicture::WriteYearToken(std::size_t count) {
  if (count == 1)
    Number(DayOfYear(), 1);
  else if (count == 2)
    Number(mParts.year % 100, 2);
  else
    Number(mParts.year, 4);
}

}  // namespace

Date Date::Now() {
  const auto now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  return FromParts({local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min,
                    std::min(local.tm_sec, 59)})
      .value_or(Date());
}

std::optional<Date> Date::FromParts(const Parts& parts) {
  const auto months = std::int64_t{parts.year} * 12 + parts.month - 1;
  const auto seconds = std::int64_t{parts.hour} * 3600 + std::int64_t{parts.minute} * 60 + parts.second;
  const auto year = FloorDivide(months, 12);
  const auto month = static_cast<int>(months - year * 12) + 1;
  const auto carried = FloorDivide(seconds, SecondsPerDay);
  return quillbook::ToDate(
      {DayOfMonthStart(year, month) + parts.day - 1 + carried, static_cast<int>(seconds - carried * SecondsPerDay)});
}

Date::Parts Date::ToParts() const {
  const auto moment = ToMoment(mDays);
  Parts parts;
  SetCalendarDay(moment.day, parts);
  parts.hour = moment.second / 3600;
  parts.minute = moment.second / 60 % 60;
  parts.second = moment.second % 60;
  return parts;
}

std::string Date::Format(std::string_view picture) const {
  const auto parts = ToParts();
  const struct {
    std::string_view token;
    int value;
  } tokens[] = {{"dd", parts.day},  {"mm", parts.month},  {"yyyy", parts.year},
                {"hh", parts.hour}, {"nn", parts.minute}, {"ss", parts.second}};
  std::string result;
  for (std::size_t i = 0; i < picture.size();) {
    const auto* token = std::find_if(std::begin(tokens), std::end(tokens),
                                     [&](const auto& t) { return picture.substr(i).starts_with(t.token); });
    if (token == std::end(tokens)) {
      result += picture[i++];
      continue;
    }
    fmt::format_to(std::back_inserter(result), "{:0{}}", token->value, token->token.size());
    i += token->token.size();
  }
  return result;
}

std::string Date::FormatForReader(std::string_view format) const {
  const auto moment = ToMoment(mDays);
  const auto named = [&](std::string_view name) { return EqualsIgnoringCase(format, name); };
  if (named("General Date")) return LocaleText(moment);
  if (named("Short Date")) return detail::FormatInLocale(moment, LocaleForm::Date);
  if (named("Long Date")) return detail::FormatInLocale(moment, LocaleForm::LongDate);
  if (named("Long Time")) return detail::FormatInLocale(moment, LocaleForm::Time);
  if (named("Medium Date")) format = "dd-mmm-yy";
  if (named("Medium Time")) format = "hh:nn AMPM";
  if (named("Short Time")) format = "hh:nn";
  const auto parts = ToParts();
  return ReaderPicture(format, moment, parts).Write();
}

std::string Date::ToLocaleText() const {
  return LocaleText(ToMoment(mDays));
}

std::optional<Date> Date::FromLocaleText(std::string_view text) {
  const auto moment = detail::ParseInLocale(text);
  return moment ? quillbook::ToDate(*moment) : std::nullopt;
}

}  // namespace quillbook
