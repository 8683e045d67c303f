#include "frame/documents/PageSource.h"

#include <algorithm>
#include <initializer_list>
#include <unordered_map>
#include <vector>

#include "frame/documents/ElementKinds.h"
#include "frame/documents/StartTag.h"
#include "host/compile/TagScanner.h"
#include "quillbook/base/Failure.h"
#include "quillbook/base/Text.h"
#include "quillbook/frame/documents/HtmlDocument.h"

namespace quillbook::html {

namespace {

/// Raises a failure that tells the line of a place in the text.
[[noreturn]] void FailAt(FailureNumber number, const std::string& what, std::string_view text, std::size_t at) {
  const auto before = text.substr(0, at);
  throw Failure(number, what + ", in line " + std::to_string(1 + std::count(before.begin(), before.end(), '\n')));
}

/// An estimate of the elements that are open, from the tags alone: never far below what a parser has open, and not
/// misled by end tags that authors may leave out.
class OpenElements {
 public:
  /// How many elements are open after the start tag `name`.
  std::size_t Start(std::string name, bool closesItself) {
    const bool foreign = mForeign != 0;
    if (foreign ? closesItself : IsVoid(name) || MayLackEndTag(name)) return mOpen.size();
    auto& [folded, count] = *mCounts.try_emplace(std::move(name), 0U).first;
    if (!foreign && count > 0 && ClosesItsLike(folded)) return mOpen.size();
    ++count;
    if (IsForeignRoot(folded)) ++mForeign;
    mOpen.push_back(&folded);
    return mOpen.size();
  }

  void End(const std::string& name) {
    const auto found = mCounts.find(name);
    if (found == mCounts.end() || found->second == 0) return;
    while (true) {
      const auto* last = mOpen.back();
      mOpen.pop_back();
      --mCounts[*last];
      if (IsForeignRoot(*last)) --mForeign;
      if (last == &found->first) return;
    }
  }

 private:
  static bool IsForeignRoot(std::string_view name) noexcept { return name == "svg" || name == "math"; }

  std::unordered_map<std::string, std::size_t> mCounts;  ///< how often each name is open
  std::vector<const std::string*> mOpen;
  std::size_t mForeign = 0;  ///< how many of them begin SVG or MathML
};

void CheckAttributes(const compile::HtmlToken& token, std::string_view text) {
  if (token.attributes.size() <= 2 * MaximumAttributes) return;  // there is no room for so many
  compile::AttributeScanner scanner(token.attributes);
  std::string_view name;
  std::string_view value;
  for (std::size_t count = 1; scanner.Next(name, value); ++count)
    if (count > MaximumAttributes)
      FailAt(FailureNumber::InvalidCall, "A tag has more than " + std::to_string(MaximumAttributes) + " attributes",
             text, token.offset);
}

/// Goes through the tags of a text, checks them, and copies the text with what the parser needs besides.
class Preparation {
 public:
  explicit Preparation(std::string_view text) : mText(text) {}

  std::string Run() {
    compile::TagScanner scanner(mText);
    compile::HtmlToken token;
    while (scanner.Next(token)) {
      if (!token.isTag) continue;
      auto name = FoldName(token.name);
      if (name == "plaintext") break;  // what follows has no tags
      if (token.isEnd)
        TakeEnd(token, name);
      else
        TakeStart(token, std::move(name));
    }
    return std::move(mResult.append(mText, mCopied));
  }

 private:
  void TakeEnd(const compile::HtmlToken& token, const std::string& name) {
    mOpen.End(name);
    if (name == "form") Insert(token.offset, {TextFence});
  }

  void TakeStart(const compile::HtmlToken& token, std::string name) {
    CheckAttributes(token, mText);
    const auto end = static_cast<std::size_t>(token.attributes.data() - mText.data()) + token.attributes.size();
    const bool closesItself = token.attributes.ends_with('/') && end < mText.size();
    if (closesItself && name.find(':') != std::string::npos)
      Insert(end + 1, {"</", token.name, "/>"});
    else if (mOpen.Start(std::move(name), closesItself) > HtmlDocument::MaximumDepth)
      FailAt(FailureNumber::OutOfStackSpace,
             "Elements nest deeper than " + std::to_string(HtmlDocument::MaximumDepth) + " levels", mText,
             token.offset);
  }

  void Insert(std::size_t at, std::initializer_list<std::string_view> parts) {
    mResult.append(mText, mCopied, at - mCopied);
    mCopied = at;
    for (const auto part : parts) mResult.append(part);
  }

  std::string_view mText;
  std::string mResult;
  std::size_t mCopied = 0;
  OpenElements mOpen;
};

}  // namespace

std::string CleanText(std::string_view text) {
  if (IsValidUtf8(text) && text.find('\0') == std::string_view::npos) return std::string(text);
  std::string clean;
  clean.reserve(text.size());
  for (std::size_t i = 0; i < text.size();) {
    const auto character = NextCodePoint(text, i);
    AppendCodePoint(clean, character == 0 ? U'\uFFFD' : character);
  }
  return clean;
}

std::string PrepareSource(std::string_view text) {
  if (IsValidUtf8(text) && text.find('\0') == std::string_view::npos) return Preparation(text).Run();
  const auto clean = CleanText(text);
  return Preparation(clean).Run();
}

}  // namespace quillbook::html
