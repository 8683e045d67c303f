// Finds the tags of elements in a template text.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quillbook::detail {

/// A tag, "%%type:name=value%%" or "%%/type%%". The type is a view into the text.
struct TemplateTag {
  std::size_t begin = 0;
  std::size_t end = 0;  ///< behind the closing "%%"
  bool closing = false;
  std::string_view type;
  std::vector<std::pair<std::string_view, std::string>> attributes;  ///< in order of writing
};

/// Position of the first "%%" at or after `from`, or npos.
[[nodiscard]] std::size_t FindDelimiter(std::string_view text, std::size_t from) noexcept;

/// Gives the tags of a text in order. What is no tag is text, also a single "%%".
class TemplateLexer {
 public:
  explicit TemplateLexer(std::string_view text) noexcept : mText(text) {}

  /// Moves to the next tag; false behind the last one.
  bool Next(TemplateTag& tag);

 private:
  bool ReadTag(std::size_t begin, TemplateTag& tag) const;
  std::string_view ReadType(std::size_t& at) const noexcept;
  bool ReadAttribute(std::size_t& at, TemplateTag& tag) const;
  bool ReadQuoted(std::size_t& at, std::string& value) const;
  bool ReadBare(std::size_t& at, std::string& value) const;
  [[nodiscard]] bool DelimiterAt(std::size_t at) const noexcept { return mText.substr(at, 2) == "%%"; }
  [[nodiscard]] std::size_t SkipSpace(std::size_t at) const noexcept;

  std::string_view mText;
  std::size_t mAt = 0;
};

}  // namespace quillbook::detail
