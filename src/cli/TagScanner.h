// The tags of an XML text, read where they stand.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>

namespace quillbook::cli {

/// Steps through the start tags, end tags and comments of a text that is well-formed, and tells where they stand. The
/// object model doesn't keep lines, nor what it doesn't know.
class TagScanner {
 public:
  enum class Kind : std::uint8_t { Start, Empty, End, Comment };

  explicit TagScanner(std::string_view text) : mText(text) {}

  /// Moves to the next tag or comment; false at the end.
  bool Next();

  [[nodiscard]] Kind What() const noexcept { return mKind; }
  /// From 1.
  [[nodiscard]] std::size_t Line() const noexcept { return mLine; }
  [[nodiscard]] std::string_view Name() const noexcept { return mTag.substr(0, mTag.find_first_of(" \t\r\n/")); }
  /// Value of the attribute as it stands, ignoring the case of the name; empty if there is none.
  [[nodiscard]] std::string_view Attribute(std::string_view name) const;
  /// Names and values as they stand, in order, until the visitor gives false.
  void ForEachAttribute(const std::function<bool(std::string_view name, std::string_view value)>& visit) const;

 private:
  bool Comment();
  bool SkipBehind(std::string_view mark);
  bool Tag();
  [[nodiscard]] std::size_t EndOfTag() const;
  void CountLines();

  std::string_view mText;
  std::string_view mTag;
  Kind mKind = Kind::Start;
  std::size_t mAt = 0;
  std::size_t mCounted = 0;
  std::size_t mLine = 1;
};

}  // namespace quillbook::cli
