#include "host/compile/Sitemap.h"

#include <gtest/gtest.h>

namespace quillbook::compile {
namespace {

TEST(Sitemap, ContentsTree_KeepsOrderAndDepth) {
  const auto map = ParseSitemap(R"(<HTML><BODY>
<OBJECT type="text/site properties"><param name="ImageType" value="Folder"></OBJECT>
<UL>
 <LI> <OBJECT type="text/sitemap"><param name="Name" value="Book &amp; more"><param name="ImageNumber" value="1"></OBJECT>
 <UL>
  <LI> <OBJECT type="text/sitemap"><param name="Name" value="Page"><param name="Local" value="a.htm#x"></OBJECT>
 </UL>
 <li><object TYPE="TEXT/SITEMAP"><PARAM NAME="name" VALUE="Last"><param name="URL" value="http://x"></object>
</UL></BODY></HTML>)");
  ASSERT_EQ(map.entries.size(), 3u);
  EXPECT_EQ(map.entries[0].name, "Book & more");
  EXPECT_EQ(map.entries[0].imageNumber, 1);
  EXPECT_EQ(map.entries[0].level, 0);
  EXPECT_EQ(map.entries[0].place.line, 4);
  EXPECT_EQ(map.entries[1].level, 1);
  EXPECT_EQ(map.entries[1].targets.at(0).local, "a.htm#x");
  EXPECT_EQ(map.entries[2].level, 0);
  EXPECT_EQ(map.entries[2].url, "http://x");
  ASSERT_EQ(map.properties.size(), 1u);
  EXPECT_EQ(map.properties[0].second, "Folder");
}

TEST(Sitemap, IndexEntry_HasItsKeyword_AndATitleForEachTarget) {
  const auto map = ParseSitemap(R"(<UL><LI><OBJECT type="text/sitemap">
<param name="Name" value="print"><param name="Name" value="Printing a page"><param name="Local" value="a.htm">
<param name="Name" value="Margins"><param name="Local" value="b.htm"></OBJECT>
<LI><OBJECT type="text/sitemap"><param name="Name" value="only"><param name="Local" value="c.htm"></OBJECT>
<LI><OBJECT type="text/sitemap"><param name="Name" value="see"><param name="See Also" value="print"></OBJECT></UL>)");
  ASSERT_EQ(map.entries.size(), 3u);
  EXPECT_EQ(map.entries[0].name, "print");
  ASSERT_EQ(map.entries[0].targets.size(), 2u);
  EXPECT_EQ(map.entries[0].targets[0].title, "Printing a page");
  EXPECT_EQ(map.entries[0].targets[1].title, "Margins");
  EXPECT_EQ(map.entries[1].targets.at(0).title, "only");
  EXPECT_EQ(map.entries[2].seeAlso, "print");
}

TEST(Sitemap, NestingOfAnyDepth_AndMoreEndTagsThanLists_AreTaken) {
  std::string deep = "</UL></UL>";
  for (int i = 0; i < 100'000; ++i)
    deep += "<UL><LI><OBJECT type=\"text/sitemap\"><param name=\"Name\" value=\"n\"></OBJECT>";
  const auto map = ParseSitemap(deep);
  ASSERT_EQ(map.entries.size(), 100'000u);
  EXPECT_EQ(map.entries.back().level, 99'999);
}

TEST(Sitemap, CutOrOtherText_GivesWhatIsThere) {
  EXPECT_TRUE(ParseSitemap("").entries.empty());
  EXPECT_TRUE(ParseSitemap("no sitemap").entries.empty());
  EXPECT_EQ(ParseSitemap("<OBJECT type=\"text/sitemap\"><param name=\"Name\" value=\"a").entries.size(), 1u);
}

}  // namespace
}  // namespace quillbook::compile
