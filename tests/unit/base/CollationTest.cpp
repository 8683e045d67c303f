#include "quillbook/base/Collation.h"

#include <gtest/gtest.h>

#include <utility>

namespace quillbook {
namespace {

constexpr std::uint32_t Swedish = 0x041D;
constexpr std::uint32_t German = 0x0407;

TEST(Collation, OrdersAsTheLanguageDoes) {
  EXPECT_GT(Collation(Swedish).Compare("ä", "z"), 0);
  EXPECT_LT(Collation(German).Compare("ä", "z"), 0);
}

TEST(Collation, CaseCountsForNothing_AccentsDo) {
  const Collation order(German);
  EXPECT_EQ(order.Compare("Straße", "straße"), 0);
  EXPECT_NE(order.Compare("a", "ä"), 0);
  EXPECT_LT(order.Compare("B", "c"), 0);
}

TEST(Collation, TextsThatOnlyTheLanguageTakesForEqual_AreNot) {
  const Collation order(German);
  EXPECT_NE(order.Compare("a\u00ADb", "ab"), 0);  // a soft hyphen has no weight
}

TEST(Collation, UnknownLanguageStillOrders) {
  auto order = Collation(0x7FFFFFFF);
  const auto moved = std::move(order);
  EXPECT_LT(moved.Compare("a", "b"), 0);
}

}  // namespace
}  // namespace quillbook
