#include "quillbook/frame/services/TextHelper.h"

#include <gtest/gtest.h>

#include "quillbook/platform/LinuxDesktop.h"
#include "support/EnvironmentOverride.h"
#include "support/FailureOf.h"
#include "support/TemporaryFolder.h"

namespace quillbook {
namespace {

/// As the public collection classes: nothing for an unknown key.
struct PublicCollection {
  Ref<Collection<std::string>> Item(const KeyOrPosition& key) {
    if (key.IsPosition()) throw Failure(FailureNumber::SubscriptOutOfRange);
    return key.Key() == "known" ? New<Collection<std::string>>() : nullptr;
  }
};

TEST(TextHelper, InCollection_AnswersWhereItemFails) {
  Collection<std::string> list;
  list.Add("one", "Key");
  EXPECT_TRUE(TextHelper::InCollection("KEY", list));
  EXPECT_FALSE(TextHelper::InCollection("other", list));
  EXPECT_EQ(support::NumberOfFailure([&] { (void)list.Item("other"); }), FailureNumber::InvalidCall);
  EXPECT_FALSE(TextHelper::InCollection("", list));
  EXPECT_TRUE(TextHelper::InCollection(1, list));
  EXPECT_FALSE(TextHelper::InCollection(2, list));
}

TEST(TextHelper, InCollection_TakesReferencesAndNothing) {
  auto list = New<Collection<std::string>>();
  list->Add("one", "Key");
  EXPECT_TRUE(TextHelper::InCollection("key", list));
  EXPECT_FALSE(TextHelper::InCollection("key", Ref<Collection<std::string>>()));
}

TEST(TextHelper, InCollection_AsksItemOfAPublicCollection) {
  PublicCollection list;
  EXPECT_TRUE(TextHelper::InCollection("known", list));
  EXPECT_FALSE(TextHelper::InCollection("unknown", list));
  EXPECT_FALSE(TextHelper::InCollection(7, list));
}

TEST(TextHelper, Join_PutsTheDelimiterBetween) {
  Collection<std::string> list;
  EXPECT_EQ(TextHelper::Join(list, "|"), "");
  list.Add("a");
  EXPECT_EQ(TextHelper::Join(list, "|"), "a");
  list.Add("");
  list.Add("b");
  EXPECT_EQ(TextHelper::Join(list, "||"), "a||||b");
}

TEST(TextHelper, Token_CountsFromOne) {
  EXPECT_EQ(TextHelper::Token("a=b=c", "=", 1), "a");
  EXPECT_EQ(TextHelper::Token("a=b=c", "=", 2), "b");
  EXPECT_EQ(TextHelper::Token("a=b=c", "=", 3), "c");
  EXPECT_EQ(TextHelper::Token("a=b=c", "=", 4), "");
  EXPECT_EQ(TextHelper::Token("a=b=c", "=", 0), "");
  EXPECT_EQ(TextHelper::Token("=", "=", 2), "");
  EXPECT_EQ(TextHelper::Token("none", "=", 1), "none");
  EXPECT_EQ(TextHelper::Token("none", "=", 2), "");
  EXPECT_EQ(TextHelper::Token("a, b", ", ", 2), "b");
  EXPECT_EQ(TextHelper::Token("ab", "", 1), "ab");
  EXPECT_EQ(TextHelper::Token("ab", "", 2), "");
}

TEST(TextHelper, SpecialFolder_IsInWindowsForm) {
  const support::TemporaryFolder home;
  const support::EnvironmentOverride variable("HOME", home.Path());
  const support::EnvironmentOverride none("XDG_CONFIG_HOME", std::nullopt);
  EXPECT_EQ(TextHelper::SpecialFolder(5), home.Stored().substr(0, home.Path().size()));
  EXPECT_EQ(TextHelper::SpecialFolder(4711), "");
}

TEST(TextHelper, UserName_IsTheSessions) {
  EXPECT_EQ(TextHelper::UserName(), LinuxDesktop().UserName());
}

}  // namespace
}  // namespace quillbook
