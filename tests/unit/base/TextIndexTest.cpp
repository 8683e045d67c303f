#include "quillbook/base/TextIndex.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>

#include "quillbook/base/Object.h"

namespace quillbook {
namespace {

class Word final : public Object {
 public:
  IndexedText text;
  static const TypeInfo& StaticType() {
    static const TypeInfo type = Describe<Word>("Word").Done();
    return type;
  }
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }
};

Ref<Word> MakeWord(std::string_view text) {
  auto word = New<Word>();
  word->text.Set(text);
  return word;
}

TEST(TextIndex, Find_IgnoresCase_AndFollowsAChangedText) {
  TextIndex index;
  const auto word = MakeWord("\xC3\x89tude");
  index.Add(word->text, word.get());
  EXPECT_EQ(index.Find("\xC3\xA9TUDE"), std::vector<Object*>{word.get()});
  word->text.Set("prelude");
  EXPECT_TRUE(index.Find("\xC3\xA9tude").empty());
  EXPECT_EQ(index.Find("Prelude"), std::vector<Object*>{word.get()});
}

TEST(TextIndex, Find_StopsAtItsLimit) {
  TextIndex index;
  std::vector<Ref<Word>> words;
  for (int i = 0; i < 5; ++i) {
    words.push_back(MakeWord("same"));
    index.Add(words.back()->text, words.back().get());
  }
  EXPECT_EQ(index.Find("SAME").size(), 5u);
  EXPECT_EQ(index.Find("SAME", 2).size(), 2u);
}

TEST(TextIndex, AText_MayStandTwice_AndInTwoIndexes) {
  const auto word = MakeWord("a");
  TextIndex first;
  {
    TextIndex second;
    first.Add(word->text, word.get());
    first.Add(word->text, word.get());
    second.Add(word->text, word.get());
    word->text.Set("b");
    EXPECT_EQ(second.Find("b").size(), 1u);
  }
  word->text.Set("c");  // the second index has gone
  EXPECT_EQ(first.Find("c").size(), 2u);
  first.Remove(word->text);
  EXPECT_EQ(first.Find("c").size(), 1u);
  first.Remove(word->text);
  first.Remove(word->text);
  EXPECT_TRUE(first.Find("c").empty());
}

TEST(TextIndex, ATextThatGoes_LeavesItsIndexes) {
  TextIndex index;
  {
    const auto word = MakeWord("a");
    index.Add(word->text, word.get());
  }
  EXPECT_TRUE(index.Find("a").empty());
}

TEST(TextIndex, AgreesWithAWalk_OverRandomOperations) {
  std::mt19937 random(11);
  const auto pick = [&](int below) { return std::uniform_int_distribution<int>(0, below - 1)(random); };
  const auto text = [&] { return std::string(1, static_cast<char>((pick(2) ? 'a' : 'A') + pick(6))); };
  TextIndex index;
  std::vector<Ref<Word>> members;
  for (int step = 0; step < 5'000; ++step) {
    const auto action = pick(3);
    if (action == 0 || members.empty()) {
      members.push_back(MakeWord(text()));
      index.Add(members.back()->text, members.back().get());
    } else if (action == 1) {
      const auto place = members.begin() + pick(static_cast<int>(members.size()));
      index.Remove((*place)->text);
      members.erase(place);
    } else {
      members[static_cast<std::size_t>(pick(static_cast<int>(members.size())))]->text.Set(text());
    }
    const auto wanted = text();
    std::vector<Object*> expected;
    for (const auto& member : members)
      if ((member->text.Value()[0] | 0x20) == (wanted[0] | 0x20)) expected.push_back(member.get());
    auto found = index.Find(wanted);
    std::sort(found.begin(), found.end());
    std::sort(expected.begin(), expected.end());
    ASSERT_EQ(found, expected);
  }
}

}  // namespace
}  // namespace quillbook
