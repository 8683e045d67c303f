// The fields of records: the one table that lists, views, arguments, help and JSON are made from.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/edit/Record.h"
#include "quillbook/base/Date.h"

namespace quillbook::cli {

/// What the text of a value means.
enum class FieldType : std::uint8_t {
  Text,      ///< any text
  Boolean,   ///< "yes" or "no"
  Number,    ///< a whole number
  Day,       ///< "2026-11-20"
  Moment,    ///< "2026-11-20 13:05:09"
  Choice,    ///< one of `Field::choices`
  Topic,     ///< name or key of a topic
  Category,  ///< name or key of a category
  List,      ///< any number of texts
  Pairs,     ///< any number of "NAME=VALUE"
};

/// The value of a field as text: one, or for `List` and `Pairs` any number.
using Values = std::vector<std::string>;

struct Field {
  std::string_view name;
  std::string_view help;  ///< short enough for one line of help
  FieldType type = FieldType::Text;
  std::function<Values(QBProject&, const Record&)> read = {};
  /// Takes what `ParseValues` gave: a topic or category by its key. Nothing where the field can only be read.
  std::function<void(QBProject&, const Record&, const Values&)> write = {};
  std::vector<std::string_view> choices = {};
  std::int64_t least = 0;  ///< for numbers
  std::int64_t most = 0;
  bool listed = false;    ///< a column of the list
  bool required = false;  ///< may not be empty

  [[nodiscard]] bool IsOne() const noexcept { return type != FieldType::List && type != FieldType::Pairs; }
  [[nodiscard]] std::string ReadOne(QBProject& project, const Record& record) const;

  // For tables: Text(...).Listed().Required()
  [[nodiscard]] Field Listed() && { return listed = true, std::move(*this); }
  [[nodiscard]] Field Required() && { return required = true, std::move(*this); }
};

/// Checks what the user gave for a field and brings it into the form that `Field::write` takes. Raises `Refusal`.
[[nodiscard]] Values ParseValues(QBProject& project, const Field& field, const Values& given);
/// What may be written for a field, such as "yes or no".
[[nodiscard]] std::string TypeText(const Field& field);

[[nodiscard]] std::string DayText(Date date);
[[nodiscard]] std::string MomentText(Date date);
/// The date of a text that `ParseValues` has let through; zero for an empty one.
[[nodiscard]] Date DateOf(std::string_view text);
[[nodiscard]] inline std::string YesNo(bool value) {
  return value ? "yes" : "no";
}

// Builders, from the getters and setters of the library.

template <class T, class R>
Field TextField(std::string_view name, std::string_view help, R (T::*get)() const, void (T::*set)(std::string_view)) {
  return {name, help, FieldType::Text,
          [get](QBProject&, const Record& record) { return Values{std::string((record.As<T>().*get)())}; },
          [set](QBProject&, const Record& record, const Values& values) { (record.As<T>().*set)(values.front()); }};
}

template <class T>
Field BooleanField(std::string_view name, std::string_view help, bool (T::*get)() const, void (T::*set)(bool)) {
  return {name, help, FieldType::Boolean,
          [get](QBProject&, const Record& record) { return Values{YesNo((record.As<T>().*get)())}; },
          [set](QBProject&, const Record& record, const Values& values) {
            (record.As<T>().*set)(values.front() == "yes");
          }};
}

template <class T>
Field DateField(std::string_view name, std::string_view help, FieldType type, Date (T::*get)() const,
                void (T::*set)(Date)) {
  return {
      name, help, type,
      [get, type](QBProject&, const Record& record) {
        const auto date = (record.As<T>().*get)();
        return Values{type == FieldType::Day ? DayText(date) : MomentText(date)};
      },
      [set](QBProject&, const Record& record, const Values& values) { (record.As<T>().*set)(DateOf(values.front())); }};
}

/// A number out of a range, stored in the type that the setter takes.
template <class T, class Number>
Field NumberField(std::string_view name, std::string_view help, Number (T::*get)() const, void (T::*set)(Number),
                  std::int64_t least, std::int64_t most) {
  Field field{name, help, FieldType::Number,
              [get](QBProject&, const Record& record) { return Values{std::to_string((record.As<T>().*get)())}; },
              [set](QBProject&, const Record& record, const Values& values) {
                (record.As<T>().*set)(static_cast<Number>(std::stoll(values.front())));
              }};
  field.least = least;
  field.most = most;
  return field;
}

/// A value of an enumeration, whose numbers count from `first` in the order of the choices.
template <class T, class Enum>
Field ChoiceField(std::string_view name, std::string_view help, std::vector<std::string_view> choices, int first,
                  Enum (T::*get)() const, void (T::*set)(Enum)) {
  Field field{name, help, FieldType::Choice};
  field.read = [get, choices, first](QBProject&, const Record& record) {
    const auto number = static_cast<int>((record.As<T>().*get)()) - first;
    const bool known = number >= 0 && number < static_cast<int>(choices.size());
    return Values{known ? std::string(choices[static_cast<std::size_t>(number)]) : std::to_string(number + first)};
  };
  field.write = [set, choices, first](QBProject&, const Record& record, const Values& values) {
    for (std::size_t at = 0; at < choices.size(); ++at)
      if (choices[at] == values.front()) (record.As<T>().*set)(static_cast<Enum>(static_cast<int>(at) + first));
  };
  field.choices = std::move(choices);
  return field;
}

/// The key of a record, which no command changes.
template <class T>
Field KeyField(const std::string& (*key)(const T&)) {
  return {"key", "Identity in the file; can't be set", FieldType::Text,
          [key](QBProject&, const Record& record) { return Values{key(record.As<T>())}; }};
}

/// The topic that a record belongs to.
[[nodiscard]] inline Field TopicOfRecordField() {
  return {"topic", "Topic that it belongs to; can't be set", FieldType::Text,
          [](QBProject&, const Record& record) { return Values{record.topic->Name()}; }};
}

}  // namespace quillbook::cli
