#include "host/compile/NumberTable.h"

#include <gtest/gtest.h>

#include <string>

#include "host/compile/ChmTopics.h"

namespace quillbook::compile {
namespace {

TEST(NumberTable, EveryNumberIsFound_ThoughHashesCollide) {
  NumberTable table;
  constexpr std::uint32_t count = 3000;
  const auto hash = [](std::uint32_t number) { return std::uint64_t{number % 100} << 20; };  // 0 is one of them
  for (std::uint32_t i = 0; i < count; ++i) {
    EXPECT_FALSE(table.Find(hash(i), [&](std::uint32_t number) { return number == i; }));
    table.Add(hash(i), i);
  }
  for (std::uint32_t i = 0; i < count; ++i)
    EXPECT_EQ(table.Find(hash(i), [&](std::uint32_t number) { return number == i; }), i);
}

TEST(ChmStrings, EqualStrings_AreKeptOnce_BeginningsOfOthersAreNot) {
  ChmStrings strings;
  const auto longer = strings.Add("windows");
  const auto shorter = strings.Add("window");
  EXPECT_NE(shorter, longer);
  EXPECT_EQ(strings.Add("windows"), longer);
  EXPECT_EQ(strings.Add("window"), shorter);
  EXPECT_EQ(strings.Bytes(), std::string("\0windows\0window\0", 16));
}

TEST(ChmTopics, SecondTitle_GetsAnEntryOfItsOwn_OnceWhateverTheCase) {
  ChmTopics topics;
  const auto first = topics.Add("Page.htm", 10);
  const auto second = topics.AddTitled("page.htm", 20);
  EXPECT_NE(second, first);
  EXPECT_EQ(topics.AddTitled("PAGE.htm", 20), second);
  EXPECT_EQ(topics.AddTitled("PAGE.htm", 10), first);
  EXPECT_EQ(topics.Find("PAGE.HTM"), first);
  EXPECT_EQ(topics.LocalOf(first), "Page.htm");
  EXPECT_EQ(topics.LocalOf(second), "page.htm") << "spelled as it was given";
  EXPECT_EQ(topics.Count(), 2u);
}

}  // namespace
}  // namespace quillbook::compile
