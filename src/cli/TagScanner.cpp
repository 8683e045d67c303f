#include "cli/TagScanner.h"

#include <algorithm>

#include "quillbook/base/Text.h"

namespace quillbook::cli {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";

}  // namespace

bool TagScanner::Next() {
  while ((mAt = mText.find('<', mAt)) != std::string_view::npos) {
    CountLines();
    const auto rest = mText.substr(mAt);
    if (rest.starts_with("<!--")) return Comment();
    if (rest.starts_with("<![CDATA["))
      SkipBehind("]]>");
    else if (rest.starts_with("<?"))
      SkipBehind("?>");
    else if (rest.starts_with("<!"))
      SkipBehind(">");
    else
      return Tag();
  }
  return false;
}

void TagScanner::CountLines() {
  const auto* const begin = mText.data();
  mLine += static_cast<std::size_t>(std::count(begin + mCounted, begin + mAt, '\n'));
  mCounted = mAt;
}

bool TagScanner::Comment() {
  mKind = Kind::Comment;
  mTag = {};
  return SkipBehind("-->");
}

bool TagScanner::SkipBehind(std::string_view mark) {
  const auto found = mText.find(mark, mAt);
  mAt = found == std::string_view::npos ? mText.size() : found + mark.size();
  return true;
}

bool TagScanner::Tag() {
  const auto end = EndOfTag();
  if (end == std::string_view::npos) return false;
  mTag = mText.substr(mAt + 1, end - mAt - 1);
  mAt = end + 1;
  if (mTag.starts_with('/')) {
    mKind = Kind::End;
    mTag.remove_prefix(1);
  } else {
    mKind = mTag.ends_with('/') ? Kind::Empty : Kind::Start;
  }
  return true;
}

std::size_t TagScanner::EndOfTag() const {
  for (auto at = mText.find_first_of("\"'>", mAt); at != std::string_view::npos;
       at = mText.find_first_of("\"'>", at + 1)) {
    if (mText[at] == '>') return at;
    at = mText.find(mText[at], at + 1);
    if (at == std::string_view::npos) break;
  }
  return std::string_view::npos;
}

std::string_view TagScanner::Attribute(std::string_view name) const {
  std::string_view result;
  ForEachAttribute([&](std::string_view found, std::string_view value) {
    const bool other = !EqualsIgnoringCase(found, name);
    if (!other) result = value;
    return other;
  });
  return result;
}

void TagScanner::ForEachAttribute(
    const std::function<bool(std::string_view name, std::string_view value)>& visit) const {
  for (auto at = Name().size(); at < mTag.size();) {
    at = mTag.find_first_not_of(kBlanks, at);
    const auto equals = mTag.find('=', at);
    const auto open = mTag.find_first_of("\"'", equals);
    if (at == std::string_view::npos || open == std::string_view::npos) return;
    const auto close = mTag.find(mTag[open], open + 1);
    if (close == std::string_view::npos) return;
    auto name = mTag.substr(at, equals - at);
    name = name.substr(0, name.find_first_of(kBlanks));
    if (!visit(name, mTag.substr(open + 1, close - open - 1))) return;
    at = close + 1;
  }
}

}  // namespace quillbook::cli
