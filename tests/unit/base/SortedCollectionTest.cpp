#include "quillbook/base/SortedCollection.h"

#include <gtest/gtest.h>

#include <random>

namespace quillbook {
namespace {

class Named final : public Object {
 public:
  explicit Named(std::string name) : name(std::move(name)) {}
  std::string name;
  static const TypeInfo& StaticType() {
    static const TypeInfo type = Describe<Named>("Named").Public<&Named::name>("Name").Done();
    return type;
  }
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }
};

void Add(SortedCollection& list, std::string_view key, std::string_view name) {
  list.Add(New<Named>(std::string(name)), key);
}

std::string Joined(const SortedCollection& list) {
  std::string result;
  list.ForEachItem([&](const Variant& item) { result += item.ToObject()->Member("Name").ToText() + " "; });
  return result;
}

TEST(SortedCollection, IsEnumerated_InAscendingOrderOfKeys_IgnoringCase) {
  const auto list = New<SortedCollection>();
  list->Sorted = true;
  Add(*list, "b", "b");
  Add(*list, "C", "C");
  Add(*list, "A", "A");
  Add(*list, "\u00E4", "umlaut");
  Add(*list, "aa", "aa");
  EXPECT_EQ(Joined(*list), "A aa b C umlaut ");
}

TEST(SortedCollection, EqualKeys_KeepTheOrderOfAdding) {
  const auto list = New<SortedCollection>();
  list->Sorted = true;
  for (const char* name : {"1", "2", "3"}) Add(*list, "same", name);
  Add(*list, "SAME", "4");
  Add(*list, "first", "0");
  EXPECT_EQ(Joined(*list), "0 1 2 3 4 ");
}

TEST(SortedCollection, Reading_BetweenAdditions_SeesWhatIsThere) {
  const auto list = New<SortedCollection>();
  list->Sorted = true;
  Add(*list, "b", "b");
  EXPECT_EQ(Joined(*list), "b ");
  Add(*list, "a", "a");
  EXPECT_EQ(list->Item(1)->Member("Name").ToText(), "a");
  Add(*list, "c", "c");
  EXPECT_EQ(Joined(*list), "a b c ");
  EXPECT_EQ(list->Count(), 3u);
}

TEST(SortedCollection, Unsorted_RefusesAKnownKey) {
  const auto list = New<SortedCollection>();
  Add(*list, "a", "a");
  try {
    Add(*list, "A", "b");
    FAIL();
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.Number(), FailureNumber::KeyAlreadyExists);
  }
  EXPECT_EQ(list->Count(), 1u);
}

TEST(SortedCollection, Item_OutOfRange_Fails9) {
  const auto list = New<SortedCollection>();
  list->Sorted = true;
  Add(*list, "a", "a");
  for (const std::size_t position : {0, 2}) {
    try {
      (void)list->Item(position);
      FAIL();
    } catch (const Failure& failure) {
      EXPECT_EQ(failure.Number(), FailureNumber::SubscriptOutOfRange);
    }
  }
}

TEST(SortedCollection, OfAHundredThousand_EndsUpInOrder) {
  constexpr int count = 100'000;
  std::vector<int> numbers(count);
  for (int i = 0; i < count; ++i) numbers[static_cast<std::size_t>(i)] = i + count;  // all of six digits
  std::shuffle(numbers.begin(), numbers.end(), std::mt19937(3));
  const auto list = New<SortedCollection>();
  list->Sorted = true;
  for (const int number : numbers) Add(*list, std::to_string(number), std::to_string(number));
  int expected = count;
  list->ForEachItem(
      [&](const Variant& item) { ASSERT_EQ(item.ToObject()->Member("Name").ToText(), std::to_string(expected++)); });
  EXPECT_EQ(expected, 2 * count);
}

}  // namespace
}  // namespace quillbook
