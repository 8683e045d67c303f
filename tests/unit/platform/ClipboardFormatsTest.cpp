#include "platform/ClipboardFormats.h"

#include <gtest/gtest.h>

#include "quillbook/platform/LinuxDesktop.h"

namespace quillbook::detail {
namespace {

TEST(ClipboardFormats, HaveStableNumbers_WhereTheSystemHasThem) {
  LinuxDesktop desktop;
  const int data = desktop.RegisterClipboardFormat("#Quillbook.Data#");
  const int type = desktop.RegisterClipboardFormat("#Quillbook.Type#");
  EXPECT_NE(data, type);
  EXPECT_GE(data, 0xC000);
  EXPECT_LE(type, 0xFFFF);
  EXPECT_EQ(LinuxDesktop().RegisterClipboardFormat("#QUILLBOOK.DATA#"), data);
  EXPECT_EQ(desktop.ClipboardFormatName(data), "#Quillbook.Data#") << "as it was given first";
}

TEST(ClipboardFormats, NamesEndAtTheirFirstNul) {
  using namespace std::string_view_literals;
  EXPECT_EQ(ClipboardFormatNumber("#Quillbook.Data#\0"sv), ClipboardFormatNumber("#Quillbook.Data#"));
  EXPECT_EQ(ClipboardFormatNumber("\0x"sv), 0);
  EXPECT_EQ(ClipboardFormatNumber(""), 0);
}

TEST(ClipboardFormats, OtherNumbersHaveNoName) {
  for (const int number : {-1, 0, 1, 0xBFFF, 0xFFFF, 0x10000}) EXPECT_EQ(ClipboardFormatName(number), "") << number;
}

}  // namespace
}  // namespace quillbook::detail
