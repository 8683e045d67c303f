#include "host/compile/WordSplitter.h"

#include <unicode/brkiter.h>
#include <unicode/uchar.h>
#include <unicode/uscript.h>
#include <unicode/utext.h>

#include <array>

#include "quillbook/base/Text.h"

namespace quillbook::compile {

namespace {

/// Lower-case byte of an ASCII letter, digit or underscore, else 0.
constexpr auto AsciiWordBytes = [] {
  std::array<char, 128> table{};
  table['_'] = '_';
  for (char c = '0'; c <= '9'; ++c) table[static_cast<std::size_t>(c)] = c;
  for (char c = 'a'; c <= 'z'; ++c) {
    table[static_cast<std::size_t>(c)] = c;
    table[static_cast<std::size_t>(c) - 32] = c;
  }
  return table;
}();

bool IsWordCharacter(char32_t c) {
  const auto ch = static_cast<UChar32>(c);
  return u_isalnum(ch) || (U_GET_GC_MASK(ch) & U_GC_M_MASK) != 0 || c == '_';
}

bool NeedsDictionary(char32_t c) {
  if (c < 0x0E00) return false;
  UErrorCode status = U_ZERO_ERROR;
  switch (uscript_getScript(static_cast<UChar32>(c), &status)) {
    case USCRIPT_HAN:
    case USCRIPT_HIRAGANA:
    case USCRIPT_KATAKANA:
    case USCRIPT_THAI:
    case USCRIPT_LAO:
    case USCRIPT_KHMER:
    case USCRIPT_MYANMAR: return true;
    default: return c == 0x30FC;  // the sound mark that lengthens a Kana syllable
  }
}

}  // namespace

struct WordSplitter::Breaker {
  std::unique_ptr<icu::BreakIterator> iterator;
};

WordSplitter::WordSplitter() = default;
WordSplitter::~WordSplitter() = default;

void WordSplitter::Emit(const WordSink& sink) {
  if (mWord.empty()) return;
  if (mWord.size() > MaximumBytes) {
    auto length = MaximumBytes;
    while ((static_cast<unsigned char>(mWord[length]) & 0xC0) == 0x80) --length;
    mWord.resize(length);
  }
  sink(mWord);
  mWord.clear();
}

void WordSplitter::Split(std::string_view text, const WordSink& sink) {
  mWord.clear();
  for (std::size_t i = 0; i < text.size();) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if (byte < 0x80) {
      if (const char lower = AsciiWordBytes[byte])
        mWord += lower;
      else
        Emit(sink);
      ++i;
      continue;
    }
    const auto start = i;
    const auto c = NextCodePoint(text, i);
    if (NeedsDictionary(c)) {
      Emit(sink);
      while (i < text.size()) {
        auto next = i;
        if (!NeedsDictionary(NextCodePoint(text, next))) break;
        i = next;
      }
      SplitByDictionary(text.substr(start, i - start), sink);
    } else if (IsWordCharacter(c)) {
      AppendCodePoint(mWord, static_cast<char32_t>(u_tolower(static_cast<UChar32>(c))));
    } else if (c != 0xAD) {  // a soft hyphen stands inside a word
      Emit(sink);
    }
  }
  Emit(sink);
}

void WordSplitter::SplitByDictionary(std::string_view run, const WordSink& sink) {
  UErrorCode status = U_ZERO_ERROR;
  if (!mBreaker) {
    mBreaker = std::make_unique<Breaker>();
    mBreaker->iterator.reset(icu::BreakIterator::createWordInstance(icu::Locale::getRoot(), status));
  }
  UText* view = utext_openUTF8(nullptr, run.data(), static_cast<int64_t>(run.size()), &status);
  if (U_SUCCESS(status) && mBreaker->iterator) mBreaker->iterator->setText(view, status);
  if (U_FAILURE(status) || !mBreaker->iterator) {
    mWord = run;
    Emit(sink);
  } else {
    auto from = mBreaker->iterator->first();
    for (auto to = mBreaker->iterator->next(); to != icu::BreakIterator::DONE;
         from = to, to = mBreaker->iterator->next()) {
      mWord = run.substr(static_cast<std::size_t>(from), static_cast<std::size_t>(to - from));
      Emit(sink);
    }
  }
  utext_close(view);
}

}  // namespace quillbook::compile
