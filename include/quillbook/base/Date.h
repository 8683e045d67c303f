// Points in time as project files mean them.
#pragma once

#include <compare>
#include <optional>
#include <string>
#include <string_view>

namespace quillbook {

/// Days since 30 December 1899, local time; the fraction is the time of day. Zero is "not set".
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
  /// "Long Time") in the system's locale, or else by a picture with the usual letters (d, dd, ddd, dddd, m, mm, mmm,
  /// mmmm, yy, yyyy, h, hh, n, nn, s, ss, AM/PM, w, ww, q, y). Weeks begin on Sunday; week 1 holds 1 January.
  [[nodiscard]] std::string FormatForReader(std::string_view format) const;
  /// Conversion to text and back in the system's locale. A whole day has no time, day zero no date.
  [[nodiscard]] std::string ToLocaleText() const;
  [[nodiscard]] static std::optional<Date> FromLocaleText(std::string_view text);

  friend constexpr auto operator<=>(const Date&, const Date&) noexcept = default;

 private:
  double mDays = 0;
};

}  // namespace quillbook
