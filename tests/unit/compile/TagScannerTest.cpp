#include "host/compile/TagScanner.h"

#include <gtest/gtest.h>

namespace quillbook::compile {
namespace {

/// Tokens as `<name`, `</name` or `'text'`, one behind the other.
std::string Tokens(std::string_view page) {
  TagScanner scanner(page);
  HtmlToken token;
  std::string result;
  while (scanner.Next(token)) {
    if (token.isTag)
      result.append(token.isEnd ? "</" : "<").append(token.name).append(" ");
    else
      result.append("'").append(token.text).append("' ");
  }
  return result;
}

TEST(TagScanner, SplitsTagsAndText) {
  EXPECT_EQ(Tokens("<p class=x>a<b>c</b></P>"), "<p 'a' <b 'c' </b </P ");
}

TEST(TagScanner, PassesOverCommentsAndDeclarations) {
  EXPECT_EQ(Tokens("<!DOCTYPE html><!-- <p> --><?x y?>a<!-- open"), "'a' ");
}

TEST(TagScanner, GreaterThanInAQuotedValue_DoesNotEndTheTag) {
  EXPECT_EQ(Tokens("<a title=\"x > y\" href='b>c'>t</a>"), "<a 't' </a ");
}

TEST(TagScanner, StrayApostropheInATag_DoesNotSwallowThePage) {
  EXPECT_EQ(Tokens("<p don't>t</p>"), "<p 't' </p ");
}

TEST(TagScanner, ScriptStyleAndTitle_HoldNoTags) {
  EXPECT_EQ(Tokens("<script>if (a<b) '</p>'</script><title>a <b></title>x"),
            "<script 'if (a<b) '</p>'' </script <title 'a <b>' </title 'x' ");
  EXPECT_EQ(Tokens("<style></styles></style>"), "<style '</styles>' </style ");
}

TEST(TagScanner, LessThanThatBeginsNoTag_IsText) {
  EXPECT_EQ(Tokens("a < b <3"), "'a ' '< b ' '<3' ");
}

TEST(TagScanner, UnfinishedMarkup_EndsWithThePage) {
  for (const std::string_view page : {"<", "</", "<!", "<!--", "<p", "<p a=\"", "</ x", "<script>", "<script>a</scrip"})
    EXPECT_LE(Tokens(page).size(), 40u) << page;
}

TEST(AttributeScanner, ReadsEveryFormOfValue_AndTheFirstOfANameWins) {
  const std::string_view attributes = " a=1 B = \"two\" c='x y' d e=5/ a=9";
  EXPECT_EQ(AttributeValue(attributes, "a"), "1");
  EXPECT_EQ(AttributeValue(attributes, "b"), "two");
  EXPECT_EQ(AttributeValue(attributes, "C"), "x y");
  EXPECT_EQ(AttributeValue(attributes, "d"), "");
  EXPECT_EQ(AttributeValue(attributes, "e"), "5/");
  EXPECT_EQ(AttributeValue(attributes, "f"), "");
}

TEST(References, AreResolved_AndUnknownOnesStay) {
  EXPECT_EQ(ResolveReferences("a &amp; b &lt;&#65;&#x42;&eacute;&nbsp;x"), "a & b <AB\xC3\xA9\xC2\xA0x");
  EXPECT_EQ(ResolveReferences("&unknown; & &; &#; &#x; &amp"), "&unknown; & &; &#; &#x; &");
  EXPECT_EQ(ResolveReferences("&#0;&#xD800;"), "\xEF\xBF\xBD\xEF\xBF\xBD");
  EXPECT_EQ(ResolveReferences("&amp;amp;"), "&amp;");
}

}  // namespace
}  // namespace quillbook::compile
