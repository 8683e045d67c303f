#include "cli/Json.h"

#include <fmt/format.h>

#include "quillbook/base/Text.h"

namespace quillbook::cli {

void JsonWriter::Separate() {
  if (mText.back() != '{' && mText.back() != '[') mText += ',';
}

void JsonWriter::AppendText(std::string_view text) {
  mText += '"';
  for (std::size_t at = 0; at < text.size();) {
    const auto begin = at;
    const char32_t c = NextCodePoint(text, at);
    if (c == U'"' || c == U'\\')
      mText.append("\\").append(1, static_cast<char>(c));
    else if (c < 0x20)
      fmt::format_to(std::back_inserter(mText), "\\u{:04x}", static_cast<unsigned>(c));
    else if (c == U'\uFFFD')
      mText += "\xEF\xBF\xBD";  // also for bytes that are no character
    else
      mText.append(text.substr(begin, at - begin));
  }
  mText += '"';
}

void JsonWriter::Name(std::string_view name) {
  Separate();
  AppendText(name);
  mText += ':';
}

JsonWriter& JsonWriter::Raw(std::string_view name, std::string_view value) {
  Name(name);
  mText += value;
  return *this;
}

JsonWriter& JsonWriter::Member(std::string_view name, std::string_view value) {
  Name(name);
  AppendText(value);
  return *this;
}

JsonWriter& JsonWriter::Member(std::string_view name, double value) {
  return Raw(name, fmt::format("{:.3f}", value));
}

JsonWriter& JsonWriter::Member(std::string_view name, const std::vector<std::string>& values) {
  BeginArray(name);
  for (const auto& value : values) {
    Separate();
    AppendText(value);
  }
  return EndArray();
}

JsonWriter& JsonWriter::BeginArray(std::string_view name) {
  return Raw(name, "[");
}

JsonWriter& JsonWriter::EndArray() {
  mText += ']';
  return *this;
}

JsonWriter& JsonWriter::BeginObject() {
  Separate();
  mText += '{';
  return *this;
}

JsonWriter& JsonWriter::EndObject() {
  mText += '}';
  return *this;
}

std::string JsonWriter::Text() && {
  return std::move(mText) + "}\n";
}

}  // namespace quillbook::cli
