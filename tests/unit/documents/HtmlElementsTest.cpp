#include "quillbook/frame/documents/HtmlElements.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/HtmlPages.h"

namespace quillbook {
namespace {

using support::PageWithBody;

std::vector<std::string> NamesOf(const Ref<HtmlElements>& elements) {
  std::vector<std::string> names;
  for (const auto& element : *elements) names.push_back(element->tagName());
  return names;
}

TEST(HtmlElements, AllAreInDocumentOrder) {
  const auto all = PageWithBody("<p><b>x</b></p><i>y</i>")->All();
  EXPECT_EQ(NamesOf(all), (std::vector<std::string>{"HTML", "HEAD", "BODY", "P", "B", "I"}));
  EXPECT_EQ(all->Count(), 6U);
}

TEST(HtmlElements, TagsIgnoreCase_AndKeepTheOrder) {
  const auto document = PageWithBody("<A href=1></A><p><a href=2></a><img></p><a href=3></a>");
  for (const auto* name : {"A", "a"}) {
    const auto links = document->All()->tags(name);
    ASSERT_EQ(links->Count(), 3U);
    for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(links->Item(i)->getAttribute("href"), std::to_string(i + 1));
  }
  EXPECT_EQ(document->All()->tags("b")->Count(), 0U);
  EXPECT_EQ(document->All()->tags("*")->Count(), document->All()->Count());
}

TEST(HtmlElements, TagsOfAListLookInTheListOnly) {
  const auto body = PageWithBody("<p>a<i>b</i></p><i>c</i>")->body();
  EXPECT_EQ(body->children()->tags("I")->Count(), 1U);
}

TEST(HtmlElements, ItemCountsFromZero_AndGivesNothingBehindTheEnd) {
  const auto links = PageWithBody("<a href=1></a>")->All()->tags("a");
  EXPECT_NE(links->Item(0), nullptr);
  EXPECT_EQ(links->Item(1), nullptr);
  EXPECT_EQ(links->Item(-1), nullptr);
}

TEST(HtmlElements, ItemFindsByNameBeforeId) {
  const auto links = PageWithBody("<a id=x href=1></a><a name=X href=2></a>")->All()->tags("a");
  EXPECT_EQ(links->Item("x")->getAttribute("href"), "2");
  EXPECT_EQ(links->Item("y"), nullptr);
}

TEST(HtmlElements, AnchorsAreNamedLinks) {
  const auto anchors = PageWithBody(
                           "<a name=one></a><p id=two><a href=x id=three>y</a><A NAME='Four &amp; more'></A>"
                           "<a name=''></a>")
                           ->anchors();
  EXPECT_EQ(anchors->Count(), 2U);
  EXPECT_NE(anchors->Item("four & MORE"), nullptr);
  EXPECT_EQ(anchors->Item("three"), nullptr);
  EXPECT_EQ(anchors->Item(""), nullptr);
}

TEST(HtmlElements, FollowThePage_WhenAskedForAgain) {
  const auto document = PageWithBody("<a>1</a>");
  const auto before = document->All()->tags("a");
  document->body()->SetInnerHTML("<a>2</a><a>3</a>");
  EXPECT_EQ(before->Count(), 1U) << "a list that somebody goes through stays";
  EXPECT_EQ(before->Item(0)->innerHTML(), "1");
  EXPECT_EQ(document->All()->tags("a")->Count(), 2U);
}

TEST(HtmlElements, CanBeGoneThroughWhileThePageChanges) {
  const auto document = PageWithBody("<a href=x>1</a><b>2</b><a href=y>3</a>");
  const auto links = document->All()->tags("a");
  for (const auto& element : *links) element->SetOuterHTML("<i>" + element->innerHTML() + "</i>");
  EXPECT_EQ(document->body()->innerHTML(), "<i>1</i><b>2</b><i>3</i>");
}

TEST(HtmlElements, EnumerateForTheDump) {
  int count = 0;
  PageWithBody("<p>a")->All()->ForEachItem([&](const Variant& item) { count += item.ToObject() != nullptr; });
  EXPECT_EQ(count, 4);
}

}  // namespace
}  // namespace quillbook
