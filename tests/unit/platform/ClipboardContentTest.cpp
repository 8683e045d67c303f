#include "platform/ClipboardContent.h"

#include <gtest/gtest.h>

namespace quillbook::detail {
namespace {

TEST(ClipboardContent, HasOneForm) {
  EXPECT_EQ(EncodeClipboard({{"#A#", "bytes"}, {"#B#", ""}}), "Quillbook clipboard 1\n3 5\n#A#bytes3 0\n#B#");
  EXPECT_EQ(EncodeClipboard({}), "Quillbook clipboard 1\n");
}

TEST(ClipboardContent, ComesBack_WhateverTheBytes) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
  for (const auto& content : {ClipboardContent{}, ClipboardContent{{"#A#", all}, {"", "x"}, {"a\nb 1 2\n", all + all}}})
    EXPECT_EQ(DecodeClipboard(EncodeClipboard(content)), content);
}

TEST(ClipboardContent, EveryPartOfAContent_IsNothingOrWhole) {
  const auto whole = EncodeClipboard({{"#A#", "bytes"}, {"#B#", "more"}});
  for (std::size_t size = 0; size < whole.size(); ++size) {
    const auto content = DecodeClipboard(whole.substr(0, size));
    EXPECT_TRUE(content.empty() || content == (ClipboardContent{{"#A#", "bytes"}})) << size;
  }
  EXPECT_EQ(DecodeClipboard(whole).size(), 2U);
}

TEST(ClipboardContent, OtherBytesAreNothing) {
  for (const std::string_view foreign :
       {"", "plain text", "Quillbook clipboard 2\n", "Quillbook clipboard 1", "Quillbook clipboard 1\nx",
        "Quillbook clipboard 1\n-1 2\nxx", "Quillbook clipboard 1\n3 99999999999999999999\n#A#",
        "Quillbook clipboard 1\n18446744073709551615 1\n#A#", "Quillbook clipboard 1\n3 5 #A#bytes"})
    EXPECT_TRUE(DecodeClipboard(foreign).empty()) << foreign;
}

}  // namespace
}  // namespace quillbook::detail
