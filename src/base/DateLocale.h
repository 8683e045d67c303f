// Dates in the words of the system's locale.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillbook::detail {

/// A point in time as whole numbers: days since 30 December 1899 and seconds of that day.
struct Moment {
  std::int64_t day = 0;
  int second = 0;
};

enum class LocaleForm { Date, LongDate, Time, DateAndTime };

/// The locale is the one that the environment of the process names; in the "C" locale dates read as in English.
/// Always in the Gregorian calendar, also before 1582, and in western digits.
[[nodiscard]] std::string FormatInLocale(const Moment& moment, LocaleForm form);
/// A date, a time (of day zero) or both; seconds may be missing.
[[nodiscard]] std::optional<Moment> ParseInLocale(std::string_view text);

/// Name of a month from 1, or of a weekday from 1 (Sunday).
[[nodiscard]] const std::string& MonthName(int month, bool abbreviated);
[[nodiscard]] const std::string& WeekdayName(int weekday, bool abbreviated);
/// The locale's mark for the half of the day.
[[nodiscard]] const std::string& HalfDayName(bool afternoon);

}  // namespace quillbook::detail
