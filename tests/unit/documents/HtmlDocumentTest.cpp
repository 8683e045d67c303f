#include "quillbook/frame/documents/HtmlDocument.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "quillbook/frame/documents/HtmlElements.h"
#include "support/HtmlPages.h"

namespace quillbook {
namespace {

using namespace std::string_view_literals;
using support::Page;
using support::Rewritten;

/// A body that is written back byte for byte.
class HtmlUnchangedTest : public testing::TestWithParam<std::string_view> {};

TEST_P(HtmlUnchangedTest, IsWrittenAsItWasRead) {
  EXPECT_EQ(Rewritten(GetParam()), GetParam());
}

INSTANTIATE_TEST_SUITE_P(
    Bodies, HtmlUnchangedTest,
    testing::Values(
        // Text
        "a &amp; b &nbsp; &eacute; &#169; &#xA9; AT&T &amp x &lt; y --> \u00FC \U0001F600"sv,
        "\r\n<p>\r\n  two\tblanks  </p>\r\n\r\n"sv, " <b>a</b> <i> b </i> "sv,
        // Tags
        "<P CLASS=foo Id='x' ALIGN=\"left\">a</P>"sv, "<input disabled value>"sv, "<img\n  src='a.gif'\n  alt=\"\">"sv,
        "<br><br/><br /><hr>"sv, "<a href=\"?a=1&amp;b=2&copy=3\" title='\"'>x</a>"sv, "<p title='a\r\nb'>x</p>"sv,
        "<unknown-thing x=\"1\">y</unknown-thing>"sv,
        // Elements of the help system
        "<MSHelp:link keywords=\"x\" tabindex=0>t</MSHelp:link>"sv,
        "<xml><MSHelp:Attr Name=\"a\" Value='b'/><MSHelp:TOCTitle Title=\"c\" /></xml>after"sv, "<o:p></o:p>"sv,
        // Comments
        "<!-- c --><!----><!-- <p> -- ><b> -->"sv, "<![if !IE]>x<![endif]>"sv, "<!--[if IE]><p>y<![endif]-->"sv,
        "<?xml version=\"1.0\"?>"sv, "<!--MVMETADATA start a=\"b\"-->x<!--MVMETADATA end-->"sv,
        // Text that isn't looked into
        "<script>if (a<b && c) f(\"</p>&amp;\")</script><style>p>a{}\r\n</style>"sv,
        "<xmp><b>&amp;</xmp><iframe><p></iframe><noembed></form></noembed>"sv,
        // A line break behind a start tag
        "<pre>\r\n  a\r\n\r\nb</pre>"sv, "<pre>\n\na</pre>"sv, "<pre>a\n</pre>"sv,
        "<textarea>\n&lt;a&gt;</textarea><listing>\na</listing>"sv,
        // Other languages inside
        "<svg viewBox='0 0 1 1' xlink:href=\"#a\"><g/><path d=\"M0\"/><linearGradient/></svg>"sv,
        "<svg><foreignObject><p>a</p></foreignObject><title>b</title></svg>"sv,
        "<math><mi>x</mi><mo>&lt;</mo></math>"sv,
        "<template><td>x</td></template><object><param name=a value=b></object>"sv,
        // What HTML5 frowns at but leaves alone
        "<font size=2><center>x</center></font><nobr>y</nobr><marquee>z</marquee>"sv, "<form>text</form>behind"sv,
        "<form><p>a</p>text</form>"sv, "%a~b~c% $$term$$"sv));

TEST(HtmlDocument, KeepsDeclarationsAndCommentsAroundThePage) {
  const auto* page =
      "<!-- a <!doctype no> --><!DOCTYPE html PUBLIC \"-//W3C//DTD HTML 4.01//EN\" 'x'><!-- b --><html lang=en><head>"
      "<title>a & b</title></head><body>c</body></html><!-- d -->";
  EXPECT_EQ(Page(page)->ToString(), page);
  EXPECT_EQ(Page("<!DocType HTML>x")->ToString(), "<!DocType HTML><html><head></head><body>x</body></html>");
}

TEST(HtmlDocument, WritesElementsAndEndTagsThatWereLeftOut) {
  EXPECT_EQ(Rewritten("<ul><LI>a\n<li>b</ul>"), "<ul><LI>a\n</LI><li>b</li></ul>");
  EXPECT_EQ(Rewritten("<table><tr><td>1<td>2</table>"), "<table><tbody><tr><td>1</td><td>2</td></tr></tbody></table>");
  EXPECT_EQ(Rewritten("<b><p>a</b>b</p>"), "<b></b><p><b>a</b>b</p>") << "crossed elements";
}

TEST(HtmlDocument, EscapesWhatWouldBeReadOtherwise) {
  EXPECT_EQ(Rewritten("a < b"), "a &lt; b");
  EXPECT_EQ(Rewritten("\xC2\xA0"), "\xC2\xA0") << "what the author wrote as a character stays one";
}

TEST(HtmlDocument, WritesTagsAnewThatAreOutOfOrder) {
  EXPECT_EQ(Rewritten("<a href=\"x\"class=y href=2>q</a>"), "<a href=\"x\" class=\"y\">q</a>")
      << "the first href counts";
  EXPECT_EQ(Rewritten("<a title=a\"b>q</a>"), "<a title=\"a&quot;b\">q</a>");
  EXPECT_EQ(Rewritten("<a href=b/>q</a>"), "<a href=\"b/\">q</a>");
  EXPECT_EQ(Rewritten("<image src=x>"), "<img src=\"x\">");
  EXPECT_EQ(Page("<body a=1>x<body a=2 b=3>")->body()->outerHTML(), "<body a=\"1\" b=\"3\">x</body>");
}

TEST(HtmlDocument, TakesAPlaintextElementForPreformattedText) {
  EXPECT_EQ(Rewritten("<plaintext>a<b>"), "<pre>a&lt;b&gt;&lt;/body&gt;&lt;/html&gt;</pre>");
}

TEST(HtmlDocument, ReplacesNulsAndWhatIsNoText) {
  EXPECT_EQ(Rewritten("a\0b\xFFz<i title='\0'>\xC3</i>"sv), "a\uFFFDb\uFFFDz<i title='\uFFFD'>\uFFFD</i>");
  EXPECT_EQ(support::PageWithBody("&#0;")->body()->innerText(), "\uFFFD");
}

TEST(HtmlDocument, IsEmptyAndLoading_BeforeItsLoad) {
  const auto document = New<HtmlDocument>();
  EXPECT_EQ(document->readyState(), "loading");
  EXPECT_EQ(document->documentElement(), nullptr);
  EXPECT_EQ(document->body(), nullptr);
  EXPECT_EQ(document->All()->Count(), 0U);
  EXPECT_EQ(document->ToString(), "");
}

TEST(HtmlDocument, IsCompleteWithAFrame_AfterALoadOfNothing) {
  const auto document = Page("");
  EXPECT_EQ(document->readyState(), "complete");
  EXPECT_EQ(document->ToString(), "<html><head></head><body></body></html>");
}

TEST(HtmlDocument, Load_ReplacesThePage) {
  const auto document = Page("<!doctype html><p>old</p>");
  const auto old = document->All()->tags("p")->Item(0);
  document->Load("<i>new</i>");
  EXPECT_EQ(document->body()->innerHTML(), "<i>new</i>");
  EXPECT_EQ(document->All()->tags("p")->Count(), 0U);
  EXPECT_EQ(old->outerHTML(), "<p>old</p>");
}

TEST(HtmlDocument, BodyIsTheFrameset_WhereThatStandsInItsPlace) {
  const auto document = Page("<frameset><frame src=a></frameset>");
  EXPECT_EQ(document->body()->tagName(), "FRAMESET");
}

TEST(HtmlDocument, GivesOneObjectForAnElement_WhileItIsHeld) {
  const auto document = Page("<p><a>x</a></p>");
  const auto body = document->body();
  EXPECT_EQ(document->body(), body);
  EXPECT_EQ(document->All()->tags("a")->Item(0)->parentElement()->parentElement(), body);
  EXPECT_EQ(body->document(), document);
}

TEST(HtmlDocument, LivesAsLongAsOneOfItsElements) {
  auto document = Page("<base href='http://x.org/'><p><a href=y>x</a></p>");
  const auto link = document->All()->tags("a")->Item(0);
  document = nullptr;
  EXPECT_EQ(link->getAttribute("href"), "http://x.org/y");
  EXPECT_EQ(link->document()->body()->innerHTML(), "<p><a href=y>x</a></p>");
}

TEST(HtmlDocument, LeavesNoObjectsBehind) {
  {
    const auto document = Page("<p><a>x</a></p>");
    const auto held = document->All()->tags("a")->Item(0);
    document->body()->SetInnerHTML("");
  }
  for (const auto* type : TypeInfo::All())
    if (type->Name().starts_with("Html")) {
      EXPECT_EQ(type->LiveCount(), 0) << type->Name();
    }
}

TEST(HtmlDocument, IsReadByMemberNames) {
  const auto document = Page("<a name=x href=y>z</a>");
  EXPECT_EQ(document->Member("readystate").ToText(), "complete");
  const auto link = document->All()->tags("a")->Item(0);
  EXPECT_EQ(link->Member("outerHTML").ToText(), "<a name=x href=y>z</a>");
  EXPECT_EQ(link->Member("href").ToText(), "y");
  EXPECT_EQ(document->Member("All").ToObject()->Invoke("tags", {"A"}).ToObject()->Member("Count").ToLong(), 1);
  link->Invoke("setAttribute", {"href", "w", 1});
  EXPECT_EQ(link->Invoke("getAttribute", {"HREF", 0}).ToText(), "w");
  link->SetMember("innerHTML", "new");
  EXPECT_EQ(link->Member("innertext").ToText(), "new");
  EXPECT_EQ(document->Member("anchors").ToObject()->Member("length").ToLong(), 1);
}

}  // namespace
}  // namespace quillbook
