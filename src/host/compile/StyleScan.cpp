#include "host/compile/StyleScan.h"

#include "host/compile/Names.h"
#include "quillbook/base/Text.h"

namespace quillbook::compile {

namespace {

constexpr bool IsBlank(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f';
}
constexpr bool IsHexDigit(char c) {
  return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}
constexpr bool IsNameCharacter(char c) {
  return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '-' || c == '_' ||
         static_cast<unsigned char>(c) >= 0x80;
}

class Scan {
 public:
  explicit Scan(std::string_view style) : mText(style) {}

  std::vector<PageReference> Run() {
    while (mAt < mText.size()) Step();
    return std::move(mReferences);
  }

 private:
  void Step() {
    const char c = mText[mAt];
    if (mText.substr(mAt, 2) == "/*") {
      const auto end = mText.find("*/", mAt + 2);
      mAt = end == std::string_view::npos ? mText.size() : end + 2;
    } else if (c == '"' || c == '\'') {
      auto reference = TakeString();
      if (mInImport) Add(std::move(reference));
    } else if (c == '@' || IsNameCharacter(c)) {
      TakeWord();
    } else {
      // A backslash takes the sign behind it along: that one has no meaning then.
      mAt += c == '\\' ? 2 : 1;
      if (c == ';' || c == '{' || c == '}') mInImport = false;
    }
  }

  void TakeWord() {
    const auto start = mAt++;
    while (mAt < mText.size() && IsNameCharacter(mText[mAt])) ++mAt;
    const auto word = mText.substr(start, mAt - start);
    if (EqualsIgnoringCase(word, "@import")) mInImport = true;
    if (EqualsIgnoringCase(word, "url") && mAt < mText.size() && mText[mAt] == '(') TakeUrl();
  }

  void TakeUrl() {
    ++mAt;
    while (mAt < mText.size() && IsBlank(mText[mAt])) ++mAt;
    if (mAt >= mText.size()) return;
    const bool quoted = mText[mAt] == '"' || mText[mAt] == '\'';
    Add(quoted ? TakeString() : TakeUntil(")"));
  }

  PageReference TakeString() {
    const std::string_view quote = mText.substr(mAt++, 1);
    auto reference = TakeUntil(quote);
    if (mAt < mText.size()) ++mAt;
    return reference;
  }

  /// Text up to one of the signs, which is not taken.
  PageReference TakeUntil(std::string_view ends) {
    PageReference reference{{}, mAt};
    while (mAt < mText.size() && ends.find(mText[mAt]) == std::string_view::npos) {
      if (mText[mAt] == '\\')
        TakeEscape(reference.address);
      else
        reference.address += mText[mAt++];
    }
    return reference;
  }

  /// A backslash with a number, which ends with a blank of its own, or with a sign that stands for itself; a line
  /// break after it is nothing.
  void TakeEscape(std::string& output) {
    ++mAt;
    std::uint32_t number = 0;
    int digits = 0;
    for (; digits < 6 && mAt < mText.size() && IsHexDigit(mText[mAt]); ++digits, ++mAt) {
      const char c = FoldName(mText[mAt]);
      number = number * 16 + static_cast<std::uint32_t>(c <= '9' ? c - '0' : c - 'a' + 10);
    }
    if (digits > 0) {
      const bool impossible = number == 0 || number > 0x10FFFF || (number >= 0xD800 && number < 0xE000);
      AppendCodePoint(output, impossible ? char32_t{0xFFFD} : static_cast<char32_t>(number));
      if (mAt < mText.size() && IsBlank(mText[mAt])) ++mAt;
    } else if (mAt < mText.size()) {
      if (mText[mAt] != '\n') output += mText[mAt];
      ++mAt;
    }
  }

  void Add(PageReference reference) {
    reference.address = TrimBlanks(reference.address);
    if (!reference.address.empty()) mReferences.push_back(std::move(reference));
    mInImport = false;  // what follows the address are media
  }

  std::string_view mText;
  std::size_t mAt = 0;
  bool mInImport = false;
  std::vector<PageReference> mReferences;
};

}  // namespace

std::vector<PageReference> ScanStyle(std::string_view style) {
  return Scan(style).Run();
}

}  // namespace quillbook::compile
