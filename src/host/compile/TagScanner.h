// A one-pass tokenizer of HTML, as far as help compilers need it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillbook::compile {

/// One piece of a page: a run of text, or a tag. Comments, declarations and processing instructions are passed over.
struct HtmlToken {
  bool isTag = false;
  bool isEnd = false;           ///< an end tag
  std::string_view name;        ///< of a tag, in its case
  std::string_view attributes;  ///< of a tag, as they stand
  std::string_view text;        ///< of a run of text, references not resolved
  std::size_t offset = 0;       ///< in the page
};

/// Splits a page into tokens. The content of `script` and `style` comes as one run of text without tags in it, that
/// of `textarea` and `title` likewise, by the rules of HTML5 for such elements.
class TagScanner {
 public:
  explicit TagScanner(std::string_view page) : mPage(page) {}

  /// False at the end of the page.
  [[nodiscard]] bool Next(HtmlToken& token);

 private:
  [[nodiscard]] bool ReadMarkup(HtmlToken& token);
  [[nodiscard]] std::size_t EndOfTag(std::size_t from) const;
  [[nodiscard]] std::size_t EndOfRawText() const;

  std::string_view mPage;
  std::size_t mAt = 0;
  std::string_view mRawElement;  ///< name of the element whose raw content comes next
};

/// Goes through the attributes of a tag.
class AttributeScanner {
 public:
  explicit AttributeScanner(std::string_view attributes) : mText(attributes) {}
  /// False after the last one. `value` is empty for an attribute without a value.
  [[nodiscard]] bool Next(std::string_view& name, std::string_view& value);

 private:
  std::string_view mText;
  std::size_t mAt = 0;
};

/// The first attribute of that name, ignoring case; empty if there is none. References are not resolved.
[[nodiscard]] std::string_view AttributeValue(std::string_view attributes, std::string_view name);

/// Text with its character references resolved: decimal, hexadecimal, and the names of HTML 4. Unknown ones stay.
[[nodiscard]] std::string ResolveReferences(std::string_view text);

}  // namespace quillbook::compile
