#include "host/compile/PlaceFinder.h"

#include <gtest/gtest.h>

namespace quillbook::compile {

namespace {

/// The place of an offset, counted anew.
std::pair<int, int> Counted(std::string_view text, std::size_t offset) {
  int line = 1;
  int column = 1;
  for (std::size_t i = 0; i < offset; ++i) {
    if (text[i] == '\n') {
      ++line;
      column = 1;
    } else {
      column += (static_cast<unsigned char>(text[i]) & 0xC0) != 0x80;
    }
  }
  return {line, column};
}

TEST(PlaceFinder, EveryPlaceIsFound_InAnyOrder) {
  constexpr std::string_view text = "a\xC3\xA9\n\nbc\n\xE5\x8D\xB0z";
  PlaceFinder places(text);
  for (std::size_t from = 0; from <= text.size(); ++from)
    for (std::size_t to = 0; to <= text.size(); ++to) {
      (void)places.At(from);
      const auto place = places.At(to);
      EXPECT_EQ(std::pair(place.line, place.column), Counted(text, to)) << from << " to " << to;
    }
}

TEST(PlaceFinder, OffsetBehindTheEnd_IsTheEnd) {
  PlaceFinder places("a\nb");
  EXPECT_EQ(places.At(100).line, 2);
  EXPECT_EQ(places.At(100).column, 2);
}

}  // namespace
}  // namespace quillbook::compile
