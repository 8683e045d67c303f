#include "host/OutputName.h"

#include <gtest/gtest.h>

#include "Toy.h"
#include "quillbook/base/Failure.h"

namespace quillbook::detail {
namespace {

TEST(OutputName, Pattern_TakesMembersOfTheItem) {
  toy::Item item("Start");
  item.Summary = "{Title}";
  EXPECT_EQ(ExpandOutputName("{qualifiedname}.html", item), "Start.html");
  EXPECT_EQ(ExpandOutputName("a/{Title}-{Summary}.html", item), "a/Start-{Title}.html") << "values aren't patterns";
  EXPECT_EQ(ExpandOutputName("index.html", item), "index.html");
  EXPECT_EQ(ExpandOutputName("open{Title", item), "open{Title");
  EXPECT_THROW(static_cast<void>(ExpandOutputName("{NoSuchMember}", item)), Failure);
}

TEST(OutputName, ContainedPath_StaysInTheFolder) {
  EXPECT_EQ(ContainedPath("a.html"), "a.html");
  EXPECT_EQ(ContainedPath("a\\b/./c.html"), "a/b/c.html");
  EXPECT_EQ(ContainedPath("a/../b.html"), "b.html");
  EXPECT_EQ(ContainedPath("..a/b..html"), "..a/b..html");
}

TEST(OutputName, ContainedPath_RefusesWhatLeadsOut) {
  for (const std::string path : {"", ".", "..", "../a.html", "a/../../b.html", "..\\..\\b.html", "/etc/passwd",
                                 "\\share\\x", "C:x.html", "c:\\x.html", "a/", "a/..", "//"})
    EXPECT_EQ(ContainedPath(path), std::nullopt) << path;
  EXPECT_EQ(ContainedPath(std::string_view("a\0b.html", 8)), std::nullopt);
}

TEST(OutputName, Caption_IsTheFirstNameThatTheItemHas) {
  const auto item = New<toy::Item>();
  EXPECT_EQ(ItemCaption(item), "ToyItem");
  item->QualifiedName = "Name";
  EXPECT_EQ(ItemCaption(item), "Name");
  item->Title = "Title";
  EXPECT_EQ(ItemCaption(item), "Title");
  EXPECT_EQ(ItemCaption(nullptr), "");
}

}  // namespace
}  // namespace quillbook::detail
