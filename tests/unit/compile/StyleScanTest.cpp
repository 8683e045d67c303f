#include "host/compile/StyleScan.h"

#include <gtest/gtest.h>

namespace quillbook::compile {
namespace {

/// Addresses, each with its offset.
std::string Addresses(std::string_view style) {
  std::string result;
  for (const auto& reference : ScanStyle(style))
    result += reference.address + "@" + std::to_string(reference.offset) + " ";
  return result;
}

TEST(StyleScan, Addresses_AreFound_QuotedOrNot) {
  EXPECT_EQ(Addresses("a{x:url(one.gif)}b{x:URL( \"two.gif\" )}c{x:url('three.gif')}"),
            "one.gif@8 two.gif@27 three.gif@47 ");
}

TEST(StyleScan, Imports_AreFound_WithAndWithoutUrl_ButNotTheirMedia) {
  EXPECT_EQ(Addresses("@import 'a.css' print;@IMPORT url(b.css) screen and (x:'y');p{content:'no.css'}"),
            "a.css@9 b.css@34 ");
}

TEST(StyleScan, CommentsStringsAndOtherNames_HoldNoAddresses) {
  EXPECT_EQ(Addresses("/* url(a) */ p{content:\"url(b)\";x:myurl(c) url-prefix(d)} @charset 'e'; @imported 'f'"), "");
}

TEST(StyleScan, ParenthesisInAQuotedAddress_DoesNotEndIt) {
  EXPECT_EQ(Addresses("x:url('a(1).gif') url(b\\(2\\).gif)"), "a(1).gif@7 b(2).gif@22 ");
}

TEST(StyleScan, Escapes_AreResolved) {
  EXPECT_EQ(Addresses("url(\\63 af\\e9.gif)"), "caf\xC3\xA9.gif@4 ");
  EXPECT_EQ(Addresses("url('a\\\nb\\'c')"), "ab'c@5 ");
  EXPECT_EQ(Addresses("url(\\0 \\D800 \\FFFFFF)"), "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD@4 ");
}

TEST(StyleScan, CutText_EndsWhereItEnds) {
  for (const char* text : {"url(", "url('", "url( ", "@import", "@import '", "/*", "\\", "url(\\", "'", "url('a\\"})
    EXPECT_EQ(Addresses(text).find_first_of("(*"), std::string::npos) << text;
  EXPECT_EQ(Addresses("url(a.gif"), "a.gif@4 ");
}

TEST(StyleScan, EmptyAddress_IsNone) {
  EXPECT_EQ(Addresses("url() url('') @import '';"), "");
}

}  // namespace
}  // namespace quillbook::compile
