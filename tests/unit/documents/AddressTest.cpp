#include "frame/documents/Address.h"

#include <gtest/gtest.h>

namespace quillbook::html {
namespace {

constexpr auto Folder = "file:////home/ann/help/";

TEST(Address, IsPutBehindTheFolderOfTheBase) {
  EXPECT_EQ(Absolute(Folder, "a.html"), "file:////home/ann/help/a.html");
  EXPECT_EQ(Absolute(Folder, "images/a b.png"), "file:////home/ann/help/images/a b.png");
  EXPECT_EQ(Absolute("http://x.org/b/index.html", "a.html"), "http://x.org/b/a.html");
  EXPECT_EQ(Absolute("http://x.org", "a.html"), "http://x.org/a.html");
  EXPECT_EQ(Absolute("http://x.org/b/i.html?p=/q/", "a.html"), "http://x.org/b/a.html");
}

TEST(Address, WithASchemeStays) {
  for (const auto* address : {"http://x.org/", "mailto:ann@x.org", "javascript:f('#')", "MAILTO:a", "c:\\a.html"})
    EXPECT_EQ(Absolute(Folder, address), address);
  EXPECT_EQ(Absolute(Folder, "a/b:c"), std::string(Folder) + "a/b:c") << "a colon behind a slash makes no scheme";
  EXPECT_EQ(Absolute(Folder, "1:c"), std::string(Folder) + "1:c");
}

TEST(Address, OfAFragmentIsBehindTheWholeBase) {
  EXPECT_EQ(Absolute(Folder, "#top"), std::string(Folder) + "#top");
  EXPECT_EQ(Absolute("http://x.org/a.html#old", "#top"), "http://x.org/a.html#top");
}

TEST(Address, OfABareFragment_BelongsToTheBlankPage_WithoutABase) {
  EXPECT_EQ(Absolute("", "#top"), "about:blank#top");
  EXPECT_EQ(Absolute("", "a.html#top"), "a.html#top");
  EXPECT_EQ(Absolute("", ""), "");
}

TEST(Address, KeepsWhatTheAuthorWrote_BehindTheBase) {
  // Whoever takes the base away must find the author's own text.
  EXPECT_EQ(Absolute(Folder, "../pictures/a.png"), std::string(Folder) + "../pictures/a.png");
  EXPECT_EQ(Absolute(Folder, "a%20b.html"), std::string(Folder) + "a%20b.html");
}

TEST(Address, WithBackslashesIsReadWithSlashes) {
  EXPECT_EQ(Absolute(Folder, "images\\a.png?x=\\"), std::string(Folder) + "images/a.png?x=\\");
}

TEST(Address, LosesBlanksAround) {
  EXPECT_EQ(Absolute(Folder, " \r\n a.html\t"), std::string(Folder) + "a.html");
}

TEST(Address, FromTheRootLeavesTheFolders) {
  EXPECT_EQ(Absolute("http://x.org/b/c.html", "/a.html"), "http://x.org/a.html");
  EXPECT_EQ(Absolute("http://x.org/b/c.html", "//y.org/a.html"), "http://y.org/a.html");
  EXPECT_EQ(Absolute("http://x.org/b/c.html?q", "?r"), "http://x.org/b/c.html?r");
}

TEST(Address, OfAnEmptyReferenceIsTheBase) {
  EXPECT_EQ(Absolute(Folder, ""), Folder);
}

}  // namespace
}  // namespace quillbook::html
