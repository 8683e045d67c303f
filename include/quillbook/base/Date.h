// Points in time as project files mean them.
#pragma once

#include <compare>
#include <optional>
#include <string>
#include <string_view>

namespace quillbook {

/// Days since 30 December 1899, local time; the fraction is the time of day, also of days before that. Zero is "not
/// set". Reading rounds to the nearest second; counts outside the years 100 to 9999 read as the nearest moment inside.
class Date {
 public:
  struct Parts {
    int year = 1899, month = 12, day = 30;
    int hour = 0, minute = 0, second = 0;
  };

  constexpr Date() noexcept = default;
  constexpr explicit Date(double days) noexcept : mDays(days) {}

  /// The present moment in local time, to the second.
  [[nodiscard]] static Date Now();
  /// Calendar arithmetic as the object model has it: month 13 is January of the next year, day 0 the day before the
  /// first. Years outside 100 to 9999 give none.
  [[nodiscard]] static std::optional<Date> FromParts(const Parts& parts);
  [[nodiscard]] Parts ToParts() const;

  [[nodiscard]] constexpr double Days() const noexcept { return mDays; }

  /// By a picture of "dd", "mm" (month), "yyyy", "hh" (24 hours), "nn" (minutes), "ss"; any other character stands
  /// for itself.
  [[nodiscard]] std::string Format(std::string_view picture) const;
  /// By a named format ("Short Date", "Long Date", "Medium Date", "General Date", "Short Time", "Medium Time",
  /// "Long Time") in the system's locale, or else by a picture with the usual letters in any case: d, dd, ddd, dddd,
  /// ddddd (short date), dddddd (long date), m, mm, mmm, mmmm, y, yy, yyyy, h, hh, n, nn, s, ss, w, ww, q, AM/PM, A/P,
  /// AMPM; "m" right after hours means minutes; text in quotes or behind a backslash stands for itself. Weeks begin on
  /// Sunday; week 1 holds 1 January.
  [[nodiscard]] std::string FormatForReader(std::string_view format) const;
  /// Conversion to text and back in the locale that the environment names (LC_ALL, LC_TIME, LANG), to the second.
  /// A whole day has no time, day zero no date. What another locale wrote gives none or another date.
  [[nodiscard]] std::string ToLocaleText() const;
  [[nodiscard]] static std::optional<Date> FromLocaleText(std::string_view text);

  friend constexpr auto operator<=>(const Date&, const Date&) noexcept = default;

 private:
  double mDays = 0;
};

}  // namespace quillbook
