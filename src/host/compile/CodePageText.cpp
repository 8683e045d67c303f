#include "host/compile/CodePageText.h"

#include <algorithm>
#include <cstring>

#include "quillbook/base/CodePage.h"
#include "quillbook/base/Text.h"

namespace quillbook::compile {

bool IsAscii(std::string_view text) noexcept {
  std::size_t at = 0;
  for (; at + 8 <= text.size(); at += 8) {
    std::uint64_t eight = 0;
    std::memcpy(&eight, text.data() + at, 8);
    if (eight & 0x8080808080808080ULL) return false;
  }
  for (; at < text.size(); ++at)
    if (static_cast<unsigned char>(text[at]) >= 0x80) return false;
  return true;
}

std::string CodePageText::Encode(std::string_view text) const {
  std::string clean(text);
  std::replace_if(
      clean.begin(), clean.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; }, ' ');
  return IsAscii(clean) ? clean : EncodeCodePage(clean, mCodePage, Unmappable::QuestionMark);
}

bool CodePageText::TryEncodeWord(std::string_view word, std::string& bytes) {
  if (IsAscii(word)) {
    bytes = word;
    return true;
  }
  if (mWords.size() >= MaximumWords) mWords.clear();
  const auto [known, added] = mWords.try_emplace(std::string(word));
  if (added && FindLacking(word) == std::string_view::npos) known->second = Encode(word);
  bytes = known->second;
  return !bytes.empty();
}

bool CodePageText::Holds(char32_t character) {
  if (character < 0x80 || mCodePage == CodePageUtf8) return true;
  if (character > 0xFFFF) return false;
  if (mKnown.empty()) mKnown.resize(0x10000, Known::NotYet);
  auto& known = mKnown[character];
  if (known == Known::NotYet) {
    std::string text;
    AppendCodePoint(text, character);
    // There and back: a similar character is not the same one.
    const auto bytes = EncodeCodePage(text, mCodePage, Unmappable::QuestionMark);
    known = DecodeCodePage(bytes, mCodePage) == text ? Known::Held : Known::Lacking;
  }
  return known == Known::Held;
}

std::size_t CodePageText::FindLacking(std::string_view text, std::size_t from) {
  for (auto at = from; at < text.size();) {
    const auto start = at;
    if (static_cast<unsigned char>(text[at]) < 0x80)
      ++at;
    else if (!Holds(NextCodePoint(text, at)))
      return start;
  }
  return std::string_view::npos;
}

}  // namespace quillbook::compile
