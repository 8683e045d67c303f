// Pages that nobody would write, or only to do harm: each is parsed in linear time or refused with a clear failure.
#include <gtest/gtest.h>

#include "frame/documents/PageSource.h"
#include "quillbook/frame/documents/HtmlDocument.h"
#include "support/FailureOf.h"
#include "support/HtmlPages.h"

namespace quillbook {
namespace {

using support::DescriptionOfFailure;
using support::NumberOfFailure;
using support::Page;
using support::Repeated;
using support::Rewritten;

constexpr int Many = 100'000;

TEST(PathologicalHtml, DeepNestingIsRefused_WithItsLine) {
  EXPECT_EQ(DescriptionOfFailure([] { (void)Page("\n\n" + Repeated("<div>", Many)); }),
            "Elements nest deeper than 1000 levels, in line 3");
  for (const auto* part : {"<b><p>", "<svg><g>", "<table><tr><td>", "<ul><li>", "<optgroup>", "<rt>", "<template>",
                           "<MSHelp:link>", "<font>", "<math><mi><table><td>"})
    EXPECT_EQ(NumberOfFailure([&] { (void)Page(Repeated(part, Many)); }), FailureNumber::OutOfStackSpace) << part;
}

TEST(PathologicalHtml, NestingUpToTheLimitIsReadWrittenAndDropped) {
  const auto body = Repeated("<div>", 1000) + "x" + Repeated("</div>", 1000);
  EXPECT_EQ(Rewritten(body), body);
}

TEST(PathologicalHtml, ElementsWithoutEndTagsDontNest) {
  for (const auto* part : {"<p>x", "<li>x", "<dt>x<dd>y", "<option>x", "<a name=x>y", "<h1>x", "<button>x", "<nobr>x"})
    EXPECT_EQ(NumberOfFailure([&] { (void)Page(Repeated(part, 5000)); }), FailureNumber::None) << part;
  const auto rows = "<table>" + Repeated("<tr><td>x<td>y", 5000) + "</table>";
  EXPECT_EQ(support::PageWithBody(rows)->All()->tags("td")->Count(), 10'000U);
}

TEST(PathologicalHtml, ManySiblingsAreRead) {
  const auto document = support::PageWithBody(Repeated("<br>", 300'000));
  EXPECT_EQ(document->All()->tags("br")->Count(), 300'000U);
}

TEST(PathologicalHtml, FormattingThatMultipliesIsRefused) {
  std::string body;
  for (int i = 0; i < 5000; ++i) body += "<div><b id=" + std::to_string(i) + "></div>";
  EXPECT_EQ(DescriptionOfFailure([&] { (void)Page(body); }),
            "The HTML leaves so many formatting elements open that they multiply");
}

TEST(PathologicalHtml, TooManyAttributesAreRefused) {
  const auto tag = [](std::size_t count) {
    std::string text = "<a";
    for (std::size_t i = 0; i < count; ++i) text += " a" + std::to_string(i);
    return text + ">";
  };
  EXPECT_EQ(NumberOfFailure([&] { (void)Page(tag(html::MaximumAttributes)); }), FailureNumber::None);
  EXPECT_EQ(DescriptionOfFailure([&] { (void)Page(tag(html::MaximumAttributes + 1)); }),
            "A tag has more than 4000 attributes, in line 1");
}

TEST(PathologicalHtml, WhatIsNeverClosedEndsWithThePage) {
  for (const auto* part : {"<!--", "<![CDATA[", "<script>", "<textarea>", "<a title=\"", "<", "</", "<!", "<?", "&",
                           "&#x", "<x:y/", "<pre>\n", "</form>", "</p>"})
    EXPECT_EQ(NumberOfFailure([&] { (void)Page(Repeated(part, 1000)); }), FailureNumber::None) << part;
}

TEST(PathologicalHtml, ALongTextIsOneNode) {
  const std::string text(5'000'000, 'x');
  EXPECT_EQ(Rewritten(text), text);
}

TEST(PathologicalHtml, LinksAreResolvedWithoutLookingForTheBaseEachTime) {
  // With a walk through the page for each link this would take minutes.
  const auto document = support::PageWithBody("<base href='http://x.org/'>" + Repeated("<a href=y>z</a>", Many));
  std::size_t length = 0;
  const auto links = document->All()->tags("a");
  for (const auto& link : *links)
    length += link->getAttribute("href").size() + document->All()->tags("BASE")->Item(0)->hRef().size();
  EXPECT_EQ(length, Many * (14U + 13U));
}

}  // namespace
}  // namespace quillbook
