#include "cli/RecordLines.h"

#include <algorithm>

#include "quillbook/base/Text.h"

namespace quillbook::cli {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";

/// The start tags of an XML text, one after the other.
class TagScanner {
 public:
  explicit TagScanner(std::string_view text) : mText(text) {}

  /// Moves to the next start tag; false at the end.
  bool Next() {
    while ((mAt = mText.find('<', mAt)) != std::string_view::npos) {
      if (SkipNoElement()) continue;
      const auto end = EndOfTag();
      if (end == std::string_view::npos) return false;
      mTag = mText.substr(mAt + 1, end - mAt - 1);
      mLine += static_cast<std::size_t>(std::count(mText.begin() + mCounted, mText.begin() + mAt, '\n'));
      mCounted = static_cast<std::ptrdiff_t>(mAt);
      mAt = end + 1;
      return true;
    }
    return false;
  }

  [[nodiscard]] std::size_t Line() const noexcept { return mLine; }
  [[nodiscard]] std::string_view Name() const noexcept { return mTag.substr(0, mTag.find_first_of(" \t\r\n/")); }

  /// Value of the attribute as it stands, ignoring the case of the name; empty if there is none.
  [[nodiscard]] std::string_view Attribute(std::string_view name) const {
    for (auto at = Name().size(); at < mTag.size();) {
      at = mTag.find_first_not_of(kBlanks, at);
      const auto equals = mTag.find('=', at);
      const auto open = mTag.find_first_of("\"'", equals);
      if (at == std::string_view::npos || open == std::string_view::npos) return {};
      const auto close = mTag.find(mTag[open], open + 1);
      if (close == std::string_view::npos) return {};
      auto found = mTag.substr(at, equals - at);
      found = found.substr(0, found.find_first_of(kBlanks));
      if (EqualsIgnoringCase(found, name)) return mTag.substr(open + 1, close - open - 1);
      at = close + 1;
    }
    return {};
  }

 private:
  /// Steps over comments, character data, declarations and end tags.
  bool SkipNoElement() {
    const auto rest = mText.substr(mAt);
    if (rest.starts_with("<!--")) return SkipBehind("-->");
    if (rest.starts_with("<![CDATA[")) return SkipBehind("]]>");
    return (rest.starts_with("<?") || rest.starts_with("<!") || rest.starts_with("</")) && SkipBehind(">");
  }
  bool SkipBehind(std::string_view mark) {
    const auto found = mText.find(mark, mAt);
    mAt = found == std::string_view::npos ? mText.size() : found + mark.size();
    return true;
  }
  [[nodiscard]] std::size_t EndOfTag() const {
    for (auto at = mText.find_first_of("\"'>", mAt); at != std::string_view::npos;
         at = mText.find_first_of("\"'>", at + 1)) {
      if (mText[at] == '>') return at;
      at = mText.find(mText[at], at + 1);
      if (at == std::string_view::npos) break;
    }
    return std::string_view::npos;
  }

  std::string_view mText;
  std::string_view mTag;
  std::size_t mAt = 0;
  std::ptrdiff_t mCounted = 0;
  std::size_t mLine = 1;
};

}  // namespace

RecordLines::RecordLines(std::string_view text) {
  TagScanner tags(text);
  while (tags.Next()) {
    const auto key = tags.Attribute("Key");
    if (!key.empty()) Add(LowerCase(tags.Name()), key, tags.Line());
  }
}

void RecordLines::Add(std::string element, std::string_view key, std::size_t line) {
  if (!mLines.try_emplace(element + " " + FoldCase(key), line).second)
    mRepeated.push_back({std::move(element), std::string(key), line});
}

std::size_t RecordLines::Find(std::string_view element, std::string_view key) const {
  const auto found = mLines.find(std::string(element) + " " + FoldCase(key));
  return found == mLines.end() ? 0 : found->second;
}

}  // namespace quillbook::cli
