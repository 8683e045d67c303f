#include "base/DateLocale.h"

#include <unicode/dtfmtsym.h>
#include <unicode/dtptngen.h>
#include <unicode/gregocal.h>
#include <unicode/smpdtfmt.h>

#include <cmath>
#include <cstdlib>
#include <memory>
#include <vector>

namespace quillbook::detail {

namespace {

using icu::UnicodeString;
using Formatter = std::unique_ptr<icu::SimpleDateFormat>;

constexpr std::int64_t DaysBefore1970 = 25569;
constexpr double MillisecondsPerDay = 86'400'000;

UDate ToMilliseconds(const Moment& moment) {
  return static_cast<double>(moment.day - DaysBefore1970) * MillisecondsPerDay + moment.second * 1000.0;
}

/// The special blanks of newer locale data read as plain ones, which is what files have always held.
void UsePlainBlanks(UnicodeString& text) {
  for (const char16_t special : {u'\u00A0', u'\u202F'})
    text.findAndReplace(UnicodeString(special), UnicodeString(u' '));
}

void UsePlainHalfDays(icu::SimpleDateFormat& formatter) {
  auto symbols = std::make_unique<icu::DateFormatSymbols>(*formatter.getDateFormatSymbols());
  int32_t count = 0;
  const auto* marks = symbols->getAmPmStrings(count);
  std::vector<UnicodeString> plainMarks(marks, marks + count);
  for (auto& mark : plainMarks) UsePlainBlanks(mark);
  symbols->setAmPmStrings(plainMarks.data(), count);
  formatter.adoptDateFormatSymbols(symbols.release());
}

std::string ToUtf8(UnicodeString text) {
  UsePlainBlanks(text);
  std::string result;
  text.toUTF8String(result);
  return result;
}

std::vector<std::string> ToUtf8List(const UnicodeString* names, int32_t count) {
  std::vector<std::string> result;
  for (int32_t i = 0; i < count; ++i) result.push_back(ToUtf8(names[i]));
  return result;
}

/// Everything that one locale says about dates. Costly to make, so each thread keeps the one last used.
class LocaleDates {
 public:
  explicit LocaleDates(std::string name);
  static const LocaleDates& Current();

  [[nodiscard]] const icu::SimpleDateFormat& FormatterFor(LocaleForm form) const {
    return *mFormatters[static_cast<std::size_t>(form)];
  }

  std::vector<std::string> months, shortMonths, weekdays, shortWeekdays, halfDays;
  struct Reader {
    Formatter form;
    bool timeOnly = false;
  };
  /// What a text is tried against, in this order.
  std::vector<Reader> readers;

 private:
  void MakeFormatters();
  void MakeNames();
  [[nodiscard]] UnicodeString BestPattern(icu::DateTimePatternGenerator& generator, const char16_t* skeleton) const;
  [[nodiscard]] Formatter MakeFormatter(const UnicodeString& pattern) const;

  std::string mName;
  icu::Locale mLocale;
  std::vector<Formatter> mFormatters;
};

std::string SystemLocaleName() {
  for (const char* variable : {"LC_ALL", "LC_TIME", "LANG"}) {
    const char* value = std::getenv(variable);
    if (!value || !*value) continue;
    const std::string_view whole = value;
    const auto name = whole.substr(0, whole.find_first_of(".@"));
    if (name != "C" && name != "POSIX") return std::string(name);
    break;
  }
  return "en_US_POSIX";
}

LocaleDates::LocaleDates(std::string name)
    : mName(std::move(name)), mLocale((mName + "@calendar=gregorian;numbers=latn").c_str()) {
  MakeFormatters();
  MakeNames();
}

const LocaleDates& LocaleDates::Current() {
  thread_local std::unique_ptr<const LocaleDates> current;
  auto name = SystemLocaleName();
  if (!current || current->mName != name) current = std::make_unique<const LocaleDates>(std::move(name));
  return *current;
}

UnicodeString LocaleDates::BestPattern(icu::DateTimePatternGenerator& generator, const char16_t* skeleton) const {
  UErrorCode error = U_ZERO_ERROR;
  auto pattern = generator.getBestPattern(UnicodeString(skeleton), error);
  UsePlainBlanks(pattern);
  return pattern;
}

Formatter LocaleDates::MakeFormatter(const UnicodeString& pattern) const {
  UErrorCode error = U_ZERO_ERROR;
  auto formatter = std::make_unique<icu::SimpleDateFormat>(pattern, mLocale, error);
  auto calendar = std::make_unique<icu::GregorianCalendar>(*icu::TimeZone::getGMT(), mLocale, error);
  // The count of days knows no Julian calendar: the Gregorian one holds at all times.
  calendar->setGregorianChange(-1e17, error);
  formatter->adoptCalendar(calendar.release());
  formatter->setLenient(false);
  UsePlainHalfDays(*formatter);
  // A year of two digits lies between 1930 and 2029.
  formatter->set2DigitYearStart(ToMilliseconds({10959, 0}), error);
  return formatter;
}

void LocaleDates::MakeFormatters() {
  UErrorCode error = U_ZERO_ERROR;
  const std::unique_ptr<icu::DateTimePatternGenerator> generator(
      icu::DateTimePatternGenerator::createInstance(mLocale, error));
  const auto date = BestPattern(*generator, u"yMd");
  const auto time = BestPattern(*generator, u"jms");
  const UnicodeString blank(u' ');
  for (const auto& pattern : {date, BestPattern(*generator, u"yMMMMEEEEd"), time, date + blank + time})
    mFormatters.push_back(MakeFormatter(pattern));

  const UnicodeString times[] = {time, BestPattern(*generator, u"jm"), u"HH:mm:ss", u"HH:mm"};
  for (const auto& form : times) readers.push_back({MakeFormatter(date + blank + form)});
  // Before the date alone: in Danish "13.05.06" can be either, and it is the time that is written so.
  readers.push_back({MakeFormatter(time), true});
  readers.push_back({MakeFormatter(date)});
  for (const auto& form : times) readers.push_back({MakeFormatter(form), true});
}

void LocaleDates::MakeNames() {
  const auto& symbols = *FormatterFor(LocaleForm::Date).getDateFormatSymbols();
  using Symbols = icu::DateFormatSymbols;
  int32_t count = 0;
  const auto* names = symbols.getMonths(count, Symbols::FORMAT, Symbols::WIDE);
  months = ToUtf8List(names, count);
  names = symbols.getMonths(count, Symbols::FORMAT, Symbols::ABBREVIATED);
  shortMonths = ToUtf8List(names, count);
  names = symbols.getWeekdays(count, Symbols::FORMAT, Symbols::WIDE);
  weekdays = ToUtf8List(names, count);
  names = symbols.getWeekdays(count, Symbols::FORMAT, Symbols::ABBREVIATED);
  shortWeekdays = ToUtf8List(names, count);
  names = symbols.getAmPmStrings(count);
  halfDays = ToUtf8List(names, count);
}

}  // namespace

std::string FormatInLocale(const Moment& moment, LocaleForm form) {
  UnicodeString text;
  LocaleDates::Current().FormatterFor(form).format(ToMilliseconds(moment), text);
  return ToUtf8(std::move(text));
}

std::optional<Moment> ParseInLocale(std::string_view text) {
  auto wanted = UnicodeString::fromUTF8({text.data(), static_cast<int32_t>(text.size())});
  UsePlainBlanks(wanted);
  wanted.trim();
  const auto& dates = LocaleDates::Current();
  for (const auto& reader : dates.readers) {
    icu::ParsePosition position(0);
    const auto milliseconds = reader.form->parse(wanted, position);
    if (position.getErrorIndex() >= 0 || position.getIndex() == 0 || position.getIndex() != wanted.length()) continue;
    const auto days = std::floor(milliseconds / MillisecondsPerDay);
    const auto second = static_cast<int>((milliseconds - days * MillisecondsPerDay) / 1000);
    return Moment{reader.timeOnly ? 0 : static_cast<std::int64_t>(days) + DaysBefore1970, second};
  }
  return std::nullopt;
}

const std::string& MonthName(int month, bool abbreviated) {
  const auto& dates = LocaleDates::Current();
  return (abbreviated ? dates.shortMonths : dates.months).at(static_cast<std::size_t>(month - 1));
}

const std::string& WeekdayName(int weekday, bool abbreviated) {
  const auto& dates = LocaleDates::Current();
  return (abbreviated ? dates.shortWeekdays : dates.weekdays).at(static_cast<std::size_t>(weekday));
}

const std::string& HalfDayName(bool afternoon) {
  return LocaleDates::Current().halfDays.at(afternoon ? 1 : 0);
}

}  // namespace quillbook::detail
