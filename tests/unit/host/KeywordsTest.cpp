#include "quillbook/host/Keywords.h"

#include <gtest/gtest.h>

namespace quillbook {
namespace {

TEST(Keywords, SameKeyword_CollectsItsTargetsOnce) {
  const auto keywords = New<Keywords>();
  keywords->Add("Printing", "a.html");
  keywords->Add("printing", "b.html");
  keywords->Add("PRINTING", "A.html");
  ASSERT_EQ(keywords->Count(), 1u);
  const auto& entry = keywords->Items()->Item("printing");
  EXPECT_EQ(entry->Name(), "Printing");
  ASSERT_EQ(entry->Jumps()->Count(), 2u);
  EXPECT_EQ(entry->Jumps()->Item(2)->Target(), "b.html");
  EXPECT_FALSE(entry->HasChildKeywords());
}

TEST(Keywords, CommaOfASingleLevel_BelongsToItsName) {
  const auto keywords = New<Keywords>();
  keywords->Add("a, b", "x.html");
  EXPECT_TRUE(keywords->Items()->Contains("a, b"));
}

TEST(Keywords, SubKeyword_MakesTheLevelsAboveItWithoutJumps) {
  const auto keywords = New<Keywords>();
  keywords->AddSubKeyword("Printing, pages,margins", "m.html");
  keywords->AddSubKeyword("printing,Pages", "p.html");
  ASSERT_EQ(keywords->Count(), 1u);
  const auto& top = keywords->Items()->Item(1);
  EXPECT_TRUE(top->Jumps()->IsEmpty());
  ASSERT_TRUE(top->HasChildKeywords());
  const auto& pages = top->ChildKeywords()->Item("pages");
  EXPECT_EQ(pages->Jumps()->Item(1)->Target(), "p.html");
  EXPECT_EQ(pages->ChildKeywords()->Item("margins")->Jumps()->Item(1)->Target(), "m.html");
}

TEST(Keywords, NamelessLevels_AreIgnored) {
  const auto keywords = New<Keywords>();
  keywords->Add("", "x.html");
  keywords->AddSubKeyword(" , ,", "x.html");
  EXPECT_EQ(keywords->Count(), 0u);
  keywords->AddSubKeyword(",a,,b,", "x.html");
  EXPECT_TRUE(keywords->Items()->Item("a")->ChildKeywords()->Contains("b"));
}

TEST(Keywords, VeryManyLevels_GoAsTheyCame) {
  auto keywords = New<Keywords>();
  std::string levels;
  for (int i = 0; i < 100'000; ++i) levels += "k,";
  keywords->AddSubKeyword(levels, "x.html");
  EXPECT_EQ(keywords->Count(), 1u);
  keywords = nullptr;
}

}  // namespace
}  // namespace quillbook
