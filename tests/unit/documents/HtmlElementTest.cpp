#include "quillbook/frame/documents/HtmlElement.h"

#include <gtest/gtest.h>

#include "support/FailureOf.h"
#include "support/HtmlPages.h"

namespace quillbook {
namespace {

using support::DescriptionOfFailure;
using support::FirstOf;
using support::NumberOfFailure;
using support::Page;
using support::PageWithBody;

TEST(HtmlElement, TagNameIsInCapitals_ButNotInOtherLanguages) {
  EXPECT_EQ(FirstOf("a", "<a>")->tagName(), "A");
  EXPECT_EQ(FirstOf("mshelp:link", "<MSHelp:link>x</MSHelp:link>")->tagName(), "MSHELP:LINK");
  EXPECT_EQ(FirstOf("foreignobject", "<svg><foreignObject/></svg>")->tagName(), "foreignObject");
}

TEST(HtmlElement, GetAttribute_GivesWhatTheValueMeans) {
  const auto element = FirstOf("a", "<a TITLE='&lt;a&gt; &amp;amp;' nohref>");
  EXPECT_EQ(element->getAttribute("title"), "<a> &amp;");
  EXPECT_EQ(element->getAttribute("Title", HtmlElement::AsWritten), "<a> &amp;");
  EXPECT_EQ(element->getAttribute("nohref"), "");
  EXPECT_TRUE(element->hasAttribute("NOHREF"));
  EXPECT_FALSE(element->hasAttribute("href"));
  EXPECT_EQ(element->getAttribute("href"), "") << "one that isn't there is empty, not the base";
}

TEST(HtmlElement, GetAttribute_MakesReferencesAbsolute) {
  const auto document = Page(
      "<base target=_top><base href='file:////home/ann/help/'><base href='http://later.org/'>"
      "<body><a href='a.html'>x</a><img src=\"images/b.png\" alt=\"a.html\"><a href='#top'></a><a href='mailto:a@b'>");
  const auto links = document->All()->tags("a");
  const auto image = document->All()->tags("img")->Item(0);
  EXPECT_EQ(links->Item(0)->getAttribute("href", 0), "file:////home/ann/help/a.html");
  EXPECT_EQ(links->Item(0)->hRef(), "file:////home/ann/help/a.html");
  EXPECT_EQ(links->Item(0)->getAttribute("href", HtmlElement::AsWritten), "a.html");
  EXPECT_EQ(image->getAttribute("SRC"), "file:////home/ann/help/images/b.png");
  EXPECT_EQ(image->getAttribute("alt"), "a.html") << "only references are made absolute";
  EXPECT_EQ(links->Item(1)->getAttribute("href"), "file:////home/ann/help/#top");
  EXPECT_EQ(links->Item(2)->getAttribute("href"), "mailto:a@b");
}

TEST(HtmlElement, GetAttribute_GivesABareFragmentToTheBlankPage_WithoutABase) {
  const auto links = PageWithBody("<a href='#top'></a><a href='a.html#top'>")->All()->tags("a");
  EXPECT_EQ(links->Item(0)->getAttribute("href"), "about:blank#top");
  EXPECT_EQ(links->Item(0)->getAttribute("href", HtmlElement::AsWritten), "#top");
  EXPECT_EQ(links->Item(1)->getAttribute("href"), "a.html#top");
}

TEST(HtmlElement, HRefOfABaseIsAsItIsWritten) {
  const auto document = Page("<base href='sub/'><a href='x'>");
  EXPECT_EQ(document->All()->tags("BASE")->Item(0)->hRef(), "sub/");
  document->All()->tags("base")->Item(0)->setAttribute("href", "http://x.org/");
  EXPECT_EQ(document->All()->tags("a")->Item(0)->hRef(), "http://x.org/x") << "a new base counts at once";
}

TEST(HtmlElement, SetAttribute_ChangesOnlyTheValue) {
  const auto element = FirstOf("a", "<A  CLASS=c\n HREF='old.html' title = t >x</A>");
  element->setAttribute("href", "new \"a\" & b.html", 1);
  EXPECT_EQ(element->outerHTML(), "<A  CLASS=c\n HREF=\"new &quot;a&quot; &amp; b.html\" title = t >x</A>");
  EXPECT_EQ(element->getAttribute("href"), "new \"a\" & b.html");
  element->setAttribute("CLASS", "longer than before");
  element->setAttribute("title", "");
  EXPECT_EQ(element->outerHTML(),
            "<A  CLASS=\"longer than before\"\n HREF=\"new &quot;a&quot; &amp; b.html\" title=\"\" >x</A>");
}

TEST(HtmlElement, SetAttribute_AddsWhatIsMissing) {
  const auto add = [](std::string_view tag) {
    const auto element = PageWithBody(tag)->body()->children()->Item(0);
    element->setAttribute("title", "t");
    element->setAttribute("lang", "en");
    return element->outerHTML();
  };
  EXPECT_EQ(add("<br>"), "<br title=\"t\" lang=\"en\">");
  EXPECT_EQ(add("<br />"), "<br title=\"t\" lang=\"en\" />");
  EXPECT_EQ(add("<img src=a\n>"), "<img src=a title=\"t\" lang=\"en\"\n>");
  EXPECT_EQ(add("<hr/>"), "<hr title=\"t\" lang=\"en\"/>");
  EXPECT_EQ(add("<x:y/>"), "<x:y title=\"t\" lang=\"en\"/>");
}

TEST(HtmlElement, SetAttribute_GivesABareAttributeAValue) {
  const auto element = FirstOf("input", "<input checked value>");
  element->setAttribute("checked", "checked");
  EXPECT_EQ(element->outerHTML(), "<input checked=\"checked\" value>");
}

TEST(HtmlElement, SetAttribute_RefusesWhatIsNoName) {
  const auto element = FirstOf("a", "<a href=x>");
  for (const auto* name : {"", "a b", "a=b", "a>", "a/", "\"a"})
    EXPECT_EQ(NumberOfFailure([&] { element->setAttribute(name, "v"); }), FailureNumber::InvalidCall) << name;
  EXPECT_EQ(element->outerHTML(), "<a href=x></a>");
}

TEST(HtmlElement, SetAttribute_IsReadBackByTheNextParse) {
  const auto element = FirstOf("a", "<a href=x>");
  element->setAttribute("href", "a\r\n\xC2\xA0<b>\"'&lt;");
  const auto again = FirstOf("a", element->outerHTML());
  EXPECT_EQ(again->getAttribute("href", HtmlElement::AsWritten), "a\r\n\xC2\xA0<b>\"'&lt;");
}

TEST(HtmlElement, SetInnerHTML_ParsesAsContentOfTheElement) {
  const auto document = PageWithBody("<table><tr><td>a</td></tr></table><p>b</p>");
  document->All()->tags("tr")->Item(0)->SetInnerHTML("<td>c<td>d");
  document->All()->tags("p")->Item(0)->SetInnerHTML("&eacute; <b>e</b>");
  EXPECT_EQ(document->body()->innerHTML(),
            "<table><tbody><tr><td>c</td><td>d</td></tr></tbody></table><p>&eacute; <b>e</b></p>");
}

TEST(HtmlElement, SetInnerHTML_OfABodyTakesATopicsText) {
  const auto document = Page("<html xmlns:MSHelp=\"x\"><body class=c><p>old</p></body></html>");
  document->body()->SetInnerHTML("\r\n<p>new</p><MSHelp:Attr Name=a /><!-- c -->");
  EXPECT_EQ(document->documentElement()->outerHTML(),
            "<html xmlns:MSHelp=\"x\"><head></head><body class=c>\r\n<p>new</p><MSHelp:Attr Name=a /><!-- c --></body>"
            "</html>");
  EXPECT_EQ(document->All()->tags("p")->Count(), 1U);
}

TEST(HtmlElement, SetInnerHTML_KeepsALineBreakThatAParserWouldTake) {
  const auto element = FirstOf("pre", "<pre>\na</pre>");
  element->SetInnerHTML("\nb");
  EXPECT_EQ(element->innerHTML(), "\nb");
  EXPECT_EQ(element->outerHTML(), "<pre>\n\nb</pre>");
  element->SetInnerHTML("c");
  EXPECT_EQ(element->outerHTML(), "<pre>c</pre>");
}

TEST(HtmlElement, SetInnerHTML_OpensAnElementThatClosedItself) {
  const auto help = FirstOf("x:y", "<x:y a='b' />z");
  help->SetInnerHTML("c");
  EXPECT_EQ(help->outerHTML(), "<x:y a='b'>c</x:y>");
  const auto drawing = FirstOf("g", "<svg><g/></svg>");
  drawing->SetInnerHTML("<path/>");
  EXPECT_EQ(drawing->outerHTML(), "<g><path/></g>");
}

TEST(HtmlElement, SetInnerHTML_OfAScriptTakesTextAsItIs) {
  const auto script = FirstOf("script", "<script>a</script>");
  script->SetInnerHTML("if (a<b) '&amp;<p>'");
  EXPECT_EQ(script->outerHTML(), "<script>if (a<b) '&amp;<p>'</script>");
  EXPECT_EQ(NumberOfFailure([&] { script->SetInnerHTML("'</SCRIPT>'"); }), FailureNumber::InvalidCall);
  EXPECT_EQ(script->innerHTML(), "if (a<b) '&amp;<p>'");
}

TEST(HtmlElement, SetInnerHTML_OfAnElementWithoutContentFails) {
  const auto image = FirstOf("img", "<img src=a>");
  EXPECT_EQ(DescriptionOfFailure([&] { image->SetInnerHTML("x"); }), "A 'img' element has no content");
  EXPECT_EQ(image->outerHTML(), "<img src=a>");
}

TEST(HtmlElement, SetInnerHTML_LeavesThePageAsItWas_WhenItFails) {
  const auto document = PageWithBody("<p>a</p>");
  EXPECT_EQ(NumberOfFailure([&] { document->body()->SetInnerHTML(support::Repeated("<div>", 2000)); }),
            FailureNumber::OutOfStackSpace);
  EXPECT_EQ(document->body()->innerHTML(), "<p>a</p>");
}

TEST(HtmlElement, SetOuterHTML_PutsOtherElementsInItsPlace) {
  const auto document = PageWithBody("<p>a</p><p>b</p><p>c</p>");
  const auto element = document->All()->tags("p")->Item(1);
  element->SetOuterHTML("x<i>y</i><b>z</b>");
  EXPECT_EQ(document->body()->innerHTML(), "<p>a</p>x<i>y</i><b>z</b><p>c</p>");
  EXPECT_EQ(element->outerHTML(), "<p>b</p>") << "an element that has been removed stays readable";
  EXPECT_EQ(element->parentElement(), nullptr);
  EXPECT_EQ(NumberOfFailure([&] { element->SetOuterHTML("q"); }), FailureNumber::InvalidCall);
}

TEST(HtmlElement, SetOuterHTML_OfNothingRemovesABranchUpwards) {
  const auto document = PageWithBody("<table><tr><td>&nbsp;</td></tr><tr><td>x</td></tr></table>");
  const auto cell = document->All()->tags("td")->Item(0);
  const auto row = cell->parentElement();
  EXPECT_EQ(cell->innerHTML(), "&nbsp;");
  cell->SetOuterHTML("");
  EXPECT_EQ(row->tagName(), "TR");
  EXPECT_EQ(row->innerHTML(), "");
  row->SetOuterHTML("");
  EXPECT_EQ(document->body()->innerHTML(), "<table><tbody><tr><td>x</td></tr></tbody></table>");
}

TEST(HtmlElement, SetOuterHTML_JoinsNoTextsToAReference) {
  const auto body = PageWithBody("x &am<b></b>p;y\r<i></i>\nz &am")->body();
  for (const auto* name : {"b", "i"}) body->children()->tags(name)->Item(0)->SetOuterHTML("");
  EXPECT_EQ(body->innerText(), "x &amp;y\n\nz &am");
  EXPECT_EQ(PageWithBody(body->innerHTML())->body()->innerText(), "x &amp;y\n\nz &am") << body->innerHTML();
}

TEST(HtmlElement, SetOuterHTML_OfThePagesFrameFails) {
  const auto document = PageWithBody("x");
  for (const auto* name : {"html", "head", "body"})
    EXPECT_EQ(NumberOfFailure([&] { document->All()->tags(name)->Item(0)->SetOuterHTML(""); }),
              FailureNumber::InvalidCall)
        << name;
  EXPECT_EQ(document->body()->outerHTML(), "<body>x</body>");
}

TEST(HtmlElement, StaysReadable_AfterWhatIsAroundItWasRemoved) {
  const auto document = PageWithBody("<div><p><a href=x>y</a></p></div>");
  const auto link = document->All()->tags("a")->Item(0);
  document->body()->SetInnerHTML("");
  // What has been removed may be used again, but not what somebody holds.
  for (int i = 0; i < 100; ++i) document->body()->SetInnerHTML("<div><p><b>z</b></p></div>");
  EXPECT_EQ(link->outerHTML(), "<a href=x>y</a>");
  EXPECT_EQ(link->parentElement()->outerHTML(), "<p><a href=x>y</a></p>");
  EXPECT_EQ(link->parentElement()->parentElement()->parentElement(), nullptr);
}

TEST(HtmlElement, InnerTextIsWhatAReaderSees) {
  EXPECT_EQ(
      PageWithBody("a &lt; <b>b</b>&nbsp;<script>c</script><style>d</style><!-- e --><i>f</i>")->body()->innerText(),
      "a < b\xC2\xA0"
      "f");
}

TEST(HtmlElement, ChildrenAreElementsOnly) {
  const auto body = PageWithBody("a<!-- b --><p>c<i>d</i></p> <a name=e></a>")->body();
  ASSERT_EQ(body->children()->length(), 2U);
  EXPECT_EQ(body->children()->Item(1)->tagName(), "A");
  EXPECT_EQ(body->children()->Item(1)->name(), "e");
  EXPECT_EQ(body->children()->Item(1)->innerText(), "");
}

}  // namespace
}  // namespace quillbook
