#include "quillbook/generation/Filter.h"

#include <gtest/gtest.h>

namespace quillbook {
namespace {

Ref<Filter> Loaded(std::string_view source) {
  auto filter = New<Filter>();
  filter->Load(source);
  return filter;
}

TEST(Filter, TakesBothSettings) {
  const auto filter = Loaded("type=notblank,forpagegeneration=true");
  EXPECT_EQ(filter->TypeID, "notblank");
  EXPECT_TRUE(filter->ForPageGeneration);
}

TEST(Filter, LastOfEqualNamesWins) {
  EXPECT_EQ(Loaded("type=blank,type=notblank")->TypeID, "notblank");
}

TEST(Filter, IgnoresCaseOfNameAndValue) {
  EXPECT_EQ(Loaded("TYPE=Blank")->TypeID, "blank");
  EXPECT_TRUE(Loaded("ForPageGeneration=TRUE")->ForPageGeneration);
}

TEST(Filter, TakesSecondFieldAsValue) {
  EXPECT_EQ(Loaded("type=b=c")->TypeID, "b");
}

TEST(Filter, PartWithoutEqualsSignHasNoEffect) {
  EXPECT_EQ(Loaded("blank")->TypeID, "");
}

TEST(Filter, TrimsNothing) {
  EXPECT_EQ(Loaded("a=1, type=blank")->TypeID, "");
  EXPECT_EQ(Loaded("type= blank")->TypeID, " blank");
  EXPECT_FALSE(Loaded("forpagegeneration=true ")->ForPageGeneration);
}

TEST(Filter, LaterLoadKeepsWhatItDoesNotName) {
  const auto filter = Loaded("type=all,forpagegeneration=true");
  filter->Load("");
  EXPECT_EQ(filter->TypeID, "all");
  filter->Load("forpagegeneration=no");
  EXPECT_FALSE(filter->ForPageGeneration);
  EXPECT_EQ(filter->TypeID, "all");
  filter->Load("type=");
  EXPECT_EQ(filter->TypeID, "");
}

}  // namespace
}  // namespace quillbook
