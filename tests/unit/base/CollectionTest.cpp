#include "quillbook/base/Collection.h"

#include <gtest/gtest.h>

#include <random>

#include "quillbook/base/Failure.h"

namespace quillbook {
namespace {

FailureNumber FailureOf(const std::function<void()>& statement) {
  try {
    statement();
  } catch (const Failure& failure) {
    return failure.Number();
  }
  return FailureNumber::None;
}

std::string Joined(const Collection<std::string>& list) {
  std::string result;
  for (const auto& item : list) result += item;
  return result;
}

TEST(Collection, Item_OfAnUnknownKey_Fails) {
  Collection<std::string> list;
  list.Add("a", "A");
  EXPECT_EQ(FailureOf([&] { (void)list.Item("b"); }), FailureNumber::InvalidCall);
  EXPECT_EQ(FailureOf([&] { (void)list.Item(0); }), FailureNumber::SubscriptOutOfRange);
  EXPECT_EQ(FailureOf([&] { (void)list.Item(2); }), FailureNumber::SubscriptOutOfRange);
  EXPECT_EQ(list.Item(1), "a");
}

TEST(Collection, KeysAreUnique_IgnoringCase_AlsoBeyondAscii) {
  Collection<std::string> list;
  list.Add("a", "\xC3\x89tude");
  EXPECT_EQ(FailureOf([&] { list.Add("b", "\xC3\xA9TUDE"); }), FailureNumber::KeyAlreadyExists);
  EXPECT_EQ(list.Count(), 1u);
  EXPECT_EQ(list.Item("\xC3\xA9tude"), "a");
}

TEST(Collection, Add_GoesBeforeOrAfterANeighbour_AndBeforeWins) {
  Collection<std::string> list;
  list.Add("b", "b");
  list.Add("a", "a", "b");
  list.Add("d", "", {}, 2);
  list.Add("c", "c", 3, "a");
  EXPECT_EQ(Joined(list), "abcd");
  EXPECT_EQ(FailureOf([&] { list.Add("x", "x", "nowhere"); }), FailureNumber::InvalidCall);
  EXPECT_EQ(list.Count(), 4u);
}

TEST(Collection, AgreesWithASimpleModel_OverRandomOperations) {
  std::mt19937 random(7);
  Collection<int> list;
  std::vector<std::pair<std::string, int>> model;
  const auto pick = [&](std::size_t below) { return std::uniform_int_distribution<std::size_t>(0, below - 1)(random); };
  for (int step = 0; step < 20'000; ++step) {
    const auto key = "key" + std::to_string(pick(300));
    const auto known = std::find_if(model.begin(), model.end(), [&](const auto& m) { return m.first == key; });
    ASSERT_EQ(list.Contains(key), known != model.end());
    if (known != model.end() && pick(2) == 0) {
      ASSERT_EQ(list.PositionOfKey(key), static_cast<std::size_t>(known - model.begin()) + 1);
      list.Remove(key);
      model.erase(known);
    } else if (known == model.end()) {
      const auto place = pick(model.size() + 1);
      if (place == model.size())
        list.Add(step, key);
      else
        list.Add(step, key, place + 1);
      model.insert(model.begin() + static_cast<std::ptrdiff_t>(place), {key, step});
    }
    ASSERT_EQ(list.Count(), model.size());
    if (step % 500 == 0) {
      std::size_t i = 0;
      for (const auto item : list) ASSERT_EQ(item, model[i++].second);
    }
  }
}

TEST(Collection, HandlesStayGood_AndCompareInListOrder_WhateverIsInserted) {
  using List = Collection<int>;
  std::mt19937 random(11);
  List list;
  std::vector<List::Handle> model;
  for (int step = 0; step < 3'000; ++step) {
    // Half of the insertions go to one place, which uses up the room between its neighbours again and again.
    const auto place = step % 2 ? model.size() / 2 : random() % (model.size() + 1);
    const auto before = place == model.size() ? KeyOrPosition() : KeyOrPosition(place + 1);
    model.insert(model.begin() + static_cast<std::ptrdiff_t>(place), list.Add(step, {}, before));
    if (step % 5 == 4) {
      const auto gone = random() % model.size();
      list.Remove(gone + 1);
      model.erase(model.begin() + static_cast<std::ptrdiff_t>(gone));
    }
  }
  std::size_t position = 0;
  for (const auto item : list) {
    ASSERT_EQ(*model[position], item);
    ASSERT_EQ(list.PositionOf(model[position]), position + 1);
    ASSERT_TRUE(position == 0 || model[position - 1] < model[position]);
    ++position;
  }
  EXPECT_EQ(position, model.size());
  EXPECT_EQ(list.HandleOf(3), model[2]);
  EXPECT_FALSE(list.HandleOf(position + 1));
}

TEST(Collection, AHundredThousandMembers_AreAddedFoundAndRemoved_InOrder) {
  constexpr int count = 100'000;
  const auto keyOf = [](int i) { return "{Key-" + std::to_string(i) + "}"; };
  Collection<int> list;
  for (int i = 0; i < count; ++i) list.Add(i, keyOf(i));
  for (int i = 0; i < count; ++i) {
    ASSERT_EQ(list.Item(i + 1), i);
    ASSERT_EQ(list.Item(keyOf(i)), i);
    ASSERT_EQ(list.PositionOfKey(keyOf(i)), static_cast<std::size_t>(i) + 1);
  }
  int expected = 0;
  for (const int value : list) ASSERT_EQ(value, expected++);
  ASSERT_EQ(expected, count);
  for (int i = 0; i < count; ++i) {
    ASSERT_EQ(list.Item(1), i);
    list.Remove(i % 2 == 0 ? KeyOrPosition(1) : KeyOrPosition(std::string_view(list.KeyAt(1))));
    ASSERT_FALSE(list.Contains(keyOf(i)));
  }
  EXPECT_TRUE(list.IsEmpty());
}

TEST(Collection, UsedAsAQueue_KeepsItsOrder) {
  Collection<int> list;
  int next = 0;
  int expected = 0;
  for (int round = 0; round < 5'000; ++round) {
    for (int i = 0; i < 3; ++i, ++next) list.Add(next, "k" + std::to_string(next));
    for (int i = 0; i < (round < 2'500 ? 2 : 4) && !list.IsEmpty(); ++i) {
      ASSERT_EQ(list.Item(1), expected++);
      list.Remove(1);
    }
  }
  EXPECT_TRUE(list.IsEmpty());
  EXPECT_EQ(expected, next);
  list.Add(1, "k1");
  EXPECT_EQ(list.Item("k1"), 1);
}

TEST(Collection, AnEmptyKey_IsNone_UnlessAskedFor) {
  Collection<std::string> list;
  list.Add("a");
  list.Add("b", "");
  EXPECT_FALSE(list.Contains(""));
  list.AddKeyed("c", "");
  EXPECT_EQ(list.Item(""), "c");
  EXPECT_EQ(FailureOf([&] { list.AddKeyed("d", ""); }), FailureNumber::KeyAlreadyExists);
  EXPECT_EQ(Joined(list), "abc");
}

TEST(Collection, AKey_CanBeUsedAgain_WhenItsMemberHasGone) {
  Collection<std::string> list;
  for (int i = 0; i < 20; ++i) list.Add(std::to_string(i % 10), "k" + std::to_string(i));
  list.Remove("K7");
  EXPECT_FALSE(list.Contains("k7"));
  list.Add("x", "k7", 1);
  EXPECT_EQ(list.Item("k7"), "x");
  EXPECT_EQ(list.PositionOfKey("k7"), 1u);
  list.Clear();
  EXPECT_FALSE(list.Contains("k7"));
  list.Add("y", "k7");
  EXPECT_EQ(list.Item(1), "y");
}

/// Notes how long the list is when it goes.
class Watcher final : public Object {
 public:
  Watcher(Collection<Ref<Watcher>>& list, std::size_t& seen) : mList(list), mSeen(seen) {}
  ~Watcher() override { mSeen += mList.Count(); }
  static const TypeInfo& StaticType() {
    static const TypeInfo type = Describe<Watcher>("Watcher").Done();
    return type;
  }
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 private:
  Collection<Ref<Watcher>>& mList;
  std::size_t& mSeen;
};

TEST(Collection, AMember_MayLookAtTheList_WhileItGoes) {
  std::size_t seen = 0;
  Collection<Ref<Watcher>> list;
  for (int i = 0; i < 3; ++i) list.Add(New<Watcher>(list, seen));
  list.Remove(2);
  EXPECT_EQ(seen, 2u) << "the list is already without it";
  list.Clear();
  EXPECT_EQ(seen, 2u);
}

}  // namespace
}  // namespace quillbook
