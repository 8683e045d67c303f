// JSON text, written member by member.
#pragma once

#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace quillbook::cli {

/// Builds one JSON object:
///
///     JsonWriter json;
///     json.Member("title", title).Member("topics", 12);
///     json.BeginArray("profiles").BeginObject().Member("id", id).EndObject().EndArray();
///     PrintOutput(std::move(json).Text());
class JsonWriter {
 public:
  JsonWriter() : mText("{") {}

  JsonWriter& Member(std::string_view name, std::string_view value);
  JsonWriter& Member(std::string_view name, const char* value) { return Member(name, std::string_view(value)); }
  template <class Number>
  requires std::is_integral_v<Number> JsonWriter& Member(std::string_view name, Number value) {
    if constexpr (std::is_same_v<Number, bool>)
      return Raw(name, value ? "true" : "false");
    else
      return Raw(name, std::to_string(value));
  }
  /// With three decimals.
  JsonWriter& Member(std::string_view name, double value);

  /// An array of texts.
  JsonWriter& Member(std::string_view name, const std::vector<std::string>& values);

  JsonWriter& BeginArray(std::string_view name);
  JsonWriter& EndArray();
  /// An object in an array.
  JsonWriter& BeginObject();
  /// An object as a member.
  JsonWriter& BeginObject(std::string_view name) { return Raw(name, "{"); }
  JsonWriter& EndObject();

  /// The whole object with a line break behind it.
  [[nodiscard]] std::string Text() &&;

 private:
  JsonWriter& Raw(std::string_view name, std::string_view value);
  void Separate();
  void AppendText(std::string_view text);
  void Name(std::string_view name);

  std::string mText;
};

}  // namespace quillbook::cli
