#include "quillbook/base/Variant.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <limits>

#include "quillbook/base/Failure.h"
#include "quillbook/base/Object.h"
#include "quillbook/base/Text.h"

namespace quillbook {

namespace {

[[noreturn]] void Mismatch(std::source_location where) {
  throw Failure(FailureNumber::TypeMismatch, {}, where);
}

std::int32_t RoundToLong(double value, std::source_location where) {
  const double rounded = std::nearbyint(value);
  if (!(rounded >= std::numeric_limits<std::int32_t>::min() && rounded <= std::numeric_limits<std::int32_t>::max()))
    throw Failure(FailureNumber::Overflow, {}, where);
  return static_cast<std::int32_t>(rounded);
}

/// The conversions of the standard library know no plus sign.
std::string_view WithoutPlus(std::string_view number) noexcept {
  const bool plus = number.size() > 1 && number[0] == '+' && number[1] != '-';
  return plus ? number.substr(1) : number;
}

}  // namespace

std::string Variant::ToText(std::source_location where) const {
  switch (GetKind()) {
    case Kind::Empty: return {};
    case Kind::Boolean: return BooleanText(std::get<bool>(mValue));
    case Kind::Integer: return std::to_string(std::get<std::int64_t>(mValue));
    case Kind::Double: return NumberToText(std::get<double>(mValue));
    case Kind::Date: return std::get<quillbook::Date>(mValue).ToLocaleText();
    case Kind::Text: return std::get<std::string>(mValue);
    case Kind::Bytes: return FromUtf16Bytes(std::get<Bytes>(mValue).bytes);
    default: Mismatch(where);
  }
}

std::string Variant::ToBytes(std::source_location where) const {
  const auto* bytes = std::get_if<Bytes>(&mValue);
  return bytes ? bytes->bytes : ToUtf16Bytes(ToText(where));
}

double Variant::ToNumber(std::source_location where) const {
  switch (GetKind()) {
    case Kind::Empty: return 0;
    case Kind::Boolean: return std::get<bool>(mValue) ? -1 : 0;
    case Kind::Integer: return static_cast<double>(std::get<std::int64_t>(mValue));
    case Kind::Double: return std::get<double>(mValue);
    case Kind::Date: return std::get<quillbook::Date>(mValue).Days();
    case Kind::Text: return NumberFromText(std::get<std::string>(mValue), where);
    case Kind::Bytes: return NumberFromText(ToText(where), where);
    default: Mismatch(where);
  }
}

std::int32_t Variant::ToLong(std::source_location where) const {
  return RoundToLong(ToNumber(where), where);
}

bool Variant::ToBoolean(std::source_location where) const {
  if (GetKind() == Kind::Text) {
    const auto& text = std::get<std::string>(mValue);
    if (EqualsIgnoringCase(text, "True")) return true;
    if (EqualsIgnoringCase(text, "False")) return false;
  }
  return ToNumber(where) != 0;
}

quillbook::Date Variant::ToDate(std::source_location where) const {
  if (GetKind() == Kind::Text) {
    if (const auto date = quillbook::Date::FromLocaleText(std::get<std::string>(mValue))) return *date;
    Mismatch(where);
  }
  return quillbook::Date(ToNumber(where));
}

Ref<Object> Variant::ToObject(std::source_location where) const {
  if (GetKind() == Kind::Empty) return nullptr;
  if (GetKind() != Kind::Object) Mismatch(where);
  return std::get<Ref<Object>>(mValue);
}

double NumberFromText(std::string_view text, std::source_location where) {
  const auto number = WithoutPlus(TrimBlanks(text));
  double value = 0;
  const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
  if (error == std::errc::result_out_of_range) throw Failure(FailureNumber::Overflow, {}, where);
  if (error != std::errc() || end != number.data() + number.size() || !std::isfinite(value)) Mismatch(where);
  return value;
}

std::int32_t LongFromText(std::string_view text, std::source_location where) {
  return RoundToLong(NumberFromText(text, where), where);
}

double LeadingNumber(std::string_view text) noexcept {
  const auto first = text.find_first_not_of(" \t\r\n");
  if (first == std::string_view::npos) return 0;
  text.remove_prefix(first);
  text = WithoutPlus(text);
  double value = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  return result.ec == std::errc() && std::isfinite(value) ? value : 0;
}

std::string NumberToText(double value) {
  if (std::isnan(value)) return "nan";
  if (value == 0) return "0";  // never "-0"
  char buffer[40];
  const auto result = std::to_chars(buffer, std::end(buffer), value, std::chars_format::general, 15);
  std::replace(buffer, result.ptr, 'e', 'E');
  return std::string(buffer, result.ptr);
}

}  // namespace quillbook
