#include "cli/edit/Field.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <optional>

#include "cli/edit/References.h"
#include "cli/edit/Refusal.h"
#include "quillbook/base/Text.h"

namespace quillbook::cli {
namespace {

constexpr std::string_view kDayPicture = "yyyy-mm-dd";
constexpr std::string_view kMomentPicture = "yyyy-mm-dd hh:nn:ss";

[[noreturn]] void RefuseValue(const Field& field, std::string_view value) {
  throw Refusal("value.bad", fmt::format("'{}' is no value for {}", value, field.name),
                fmt::format("give {}", TypeText(field)));
}

std::string ParseBoolean(const Field& field, const std::string& value) {
  for (const auto* yes : {"yes", "true"})
    if (EqualsIgnoringCase(value, yes)) return "yes";
  for (const auto* no : {"no", "false"})
    if (EqualsIgnoringCase(value, no)) return "no";
  RefuseValue(field, value);
}

std::string ParseNumber(const Field& field, const std::string& value) {
  std::int64_t number = 0;
  const auto* const end = value.data() + value.size();
  const auto read = std::from_chars(value.data(), end, number);
  if (read.ec != std::errc() || read.ptr != end || number < field.least || number > field.most)
    RefuseValue(field, value);
  return std::to_string(number);
}

/// Moves over two or four digits; nothing if there are none.
std::optional<int> TakeDigits(std::string_view& text, std::size_t count) {
  int value = 0;
  if (text.size() < count) return {};
  const auto read = std::from_chars(text.data(), text.data() + count, value);
  if (read.ec != std::errc() || read.ptr != text.data() + count || value < 0) return {};
  text.remove_prefix(count);
  return value;
}

bool TakeMark(std::string_view& text, char mark) {
  if (text.empty() || text.front() != mark) return false;
  text.remove_prefix(1);
  return true;
}

/// "2026-11-20", and behind it " 13:05" or " 13:05:09".
std::optional<Date> ReadDate(std::string_view text) {
  Date::Parts parts;
  const auto take = [&text](std::size_t count, int& part) {
    const auto value = TakeDigits(text, count);
    part = value.value_or(0);
    return value.has_value();
  };
  if (!take(4, parts.year) || !TakeMark(text, '-') || !take(2, parts.month) || !TakeMark(text, '-') ||
      !take(2, parts.day))
    return {};
  if (!text.empty()) {
    if (!TakeMark(text, ' ') || !take(2, parts.hour) || !TakeMark(text, ':') || !take(2, parts.minute)) return {};
    if (!text.empty() && (!TakeMark(text, ':') || !take(2, parts.second) || !text.empty())) return {};
  }
  return Date::FromParts(parts);
}

std::string ParseDate(const Field& field, const std::string& value) {
  if (value.empty()) return value;
  const auto date = ReadDate(value);
  if (!date) RefuseValue(field, value);
  auto text = field.type == FieldType::Day ? DayText(*date) : MomentText(*date);
  // What the calendar doesn't have, such as a 30 February, comes back as another day; a day has no time.
  if (!text.starts_with(value) || (field.type == FieldType::Day && text != value)) RefuseValue(field, value);
  return text;
}

std::string ParseChoice(const Field& field, const std::string& value) {
  const auto found = std::find_if(field.choices.begin(), field.choices.end(),
                                  [&](std::string_view choice) { return EqualsIgnoringCase(choice, value); });
  if (found == field.choices.end()) RefuseValue(field, value);
  return std::string(*found);
}

std::string ParseOne(QBProject& project, const Field& field, const std::string& value) {
  if (field.required && value.empty())
    throw Refusal("value.bad", fmt::format("{} can't be empty", field.name), fmt::format("give {}", TypeText(field)));
  switch (field.type) {
    case FieldType::Boolean: return ParseBoolean(field, value);
    case FieldType::Number: return ParseNumber(field, value);
    case FieldType::Day:
    case FieldType::Moment: return ParseDate(field, value);
    case FieldType::Choice: return ParseChoice(field, value);
    case FieldType::Topic: return value.empty() ? value : FindTopic(project, value)->Key;
    case FieldType::Category: return value.empty() ? value : FindCategory(project, value)->Key;
    default: return value;
  }
}

/// An entry of its own for each value; one empty value stands for no entry.
Values ParseMany(const Field& field, const Values& given) {
  if (given.size() == 1 && given.front().empty()) return {};
  for (auto value = given.begin(); value != given.end(); ++value) {
    const bool bad = field.type == FieldType::Pairs ? value->find('=') == std::string::npos || value->front() == '='
                                                    : value->empty();
    if (bad) RefuseValue(field, *value);
    if (std::any_of(given.begin(), value, [&](const auto& other) { return EqualsIgnoringCase(other, *value); }))
      throw Refusal("value.bad", fmt::format("'{}' is given twice for {}", *value, field.name), "give it once");
  }
  return given;
}

std::string Join(const std::vector<std::string_view>& words) {
  std::string text;
  for (std::size_t at = 0; at < words.size(); ++at)
    text.append(at == 0 ? "" : at + 1 == words.size() ? " or " : ", ").append(words[at]);
  return text;
}

}  // namespace

std::string Field::ReadOne(QBProject& project, const Record& record) const {
  auto values = read(project, record);
  return values.empty() ? std::string() : std::move(values.front());
}

Values ParseValues(QBProject& project, const Field& field, const Values& given) {
  if (!field.IsOne()) return ParseMany(field, given);
  if (given.size() != 1)
    throw Refusal("field.twice", fmt::format("{} is given twice", field.name), "give one value for it");
  return {ParseOne(project, field, given.front())};
}

std::string TypeText(const Field& field) {
  switch (field.type) {
    case FieldType::Boolean: return "yes or no";
    case FieldType::Number: return fmt::format("a number from {} to {}", field.least, field.most);
    case FieldType::Day: return "a day such as 2026-11-20";
    case FieldType::Moment: return "a time such as 2026-11-20 13:05:09";
    case FieldType::Choice: return Join(field.choices);
    case FieldType::Topic: return "a topic, by name or key";
    case FieldType::Category: return "a category, by name or key";
    case FieldType::List: return "texts, each as FIELD=TEXT";
    case FieldType::Pairs: return "values, each as FIELD=NAME=VALUE";
    default: return "a text";
  }
}

std::string DayText(Date date) {
  return date == Date() ? std::string() : date.Format(kDayPicture);
}

std::string MomentText(Date date) {
  return date == Date() ? std::string() : date.Format(kMomentPicture);
}

Date DateOf(std::string_view text) {
  return ReadDate(text).value_or(Date());
}

}  // namespace quillbook::cli
