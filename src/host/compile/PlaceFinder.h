// Finds lines and columns in a text.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "quillbook/host/CompileMessage.h"

namespace quillbook::compile {

/// Finds places in a text, which is UTF-8 and outlives this. Goes from the last place to the next, so the cost is
/// linear as long as offsets ascend but for small steps back.
class PlaceFinder {
 public:
  explicit PlaceFinder(std::string_view text) : mText(text) {}

  [[nodiscard]] TextPlace At(std::size_t offset) {
    offset = std::min(offset, mText.size());
    while (mAt < offset) StepForward();
    while (mAt > offset) StepBack();
    return mPlace;
  }
  /// Place of a piece of the text.
  [[nodiscard]] TextPlace Of(std::string_view piece) {
    return At(static_cast<std::size_t>(piece.data() - mText.data()));
  }

 private:
  static bool BeginsCharacter(char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }

  void StepForward() {
    const char c = mText[mAt++];
    if (c == '\n')
      mPlace = {mPlace.line + 1, 1};
    else
      mPlace.column += BeginsCharacter(c);
  }
  void StepBack() {
    const char c = mText[--mAt];
    if (c != '\n') {
      mPlace.column -= BeginsCharacter(c);
      return;
    }
    const auto line = mText.substr(0, mAt).rfind('\n') + 1;  // 0 for the first line
    const auto before = mText.substr(line, mAt - line);
    mPlace = {mPlace.line - 1, 1 + static_cast<int>(std::count_if(before.begin(), before.end(), BeginsCharacter))};
  }

  std::string_view mText;
  std::size_t mAt = 0;
  TextPlace mPlace{1, 1};
};

}  // namespace quillbook::compile
