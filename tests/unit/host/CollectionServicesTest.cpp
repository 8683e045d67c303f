#include "quillbook/host/CollectionServices.h"

#include <gtest/gtest.h>

#include "quillbook/base/SortedCollection.h"
#include "quillbook/host/VariableValue.h"

namespace quillbook {
namespace {

TEST(CollectionServices, PartsAroundColon_AreOfTheFirstOne) {
  EXPECT_EQ(CollectionServices::BeforeColon("See:a:b"), "See");
  EXPECT_EQ(CollectionServices::AfterColon("See:a:b"), "a:b");
  EXPECT_EQ(CollectionServices::BeforeColon("none"), "none");
  EXPECT_EQ(CollectionServices::AfterColon("none"), "");
  EXPECT_EQ(CollectionServices::BeforeColon(":x"), "");
}

TEST(CollectionServices, Field_CountsFromOneAndIsEmptyBeyondTheLast) {
  EXPECT_EQ(CollectionServices::Field("a=b=c", "=", 1), "a");
  EXPECT_EQ(CollectionServices::Field("a=b=c", "=", 2), "b");
  EXPECT_EQ(CollectionServices::Field("a=b=c", "=", 3), "c");
  EXPECT_EQ(CollectionServices::Field("a=b=c", "=", 4), "");
  EXPECT_EQ(CollectionServices::Field("a=b=c", "=", 0), "");
  EXPECT_EQ(CollectionServices::Field("a--b", "--", 2), "b");
  EXPECT_EQ(CollectionServices::Field("abc", "", 1), "abc");
}

TEST(CollectionServices, KeyExists_IgnoresCaseAndTakesNothing) {
  const auto values = New<VariableValues>();
  values->Add(New<VariableValue>("Colour", "red"), "Colour");
  EXPECT_TRUE(CollectionServices::KeyExists(values, "COLOUR"));
  EXPECT_FALSE(CollectionServices::KeyExists(values, "size"));
  EXPECT_FALSE(CollectionServices::KeyExists(Ref<VariableValues>(), "colour"));
}

TEST(CollectionServices, Items_FollowTheListsOwnOrder) {
  const auto list = New<SortedCollection>();
  list->Sorted = true;
  list->Add(New<VariableValue>("b", ""), "b");
  list->Add(New<VariableValue>("a", ""), "a");
  const auto items = CollectionServices::Items(list);
  ASSERT_EQ(items.size(), 2u);
  EXPECT_EQ(items[0]->Member("Name").ToText(), "a");
  EXPECT_TRUE(CollectionServices::Items(nullptr).empty());
}

}  // namespace
}  // namespace quillbook
