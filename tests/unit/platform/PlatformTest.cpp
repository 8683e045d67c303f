#include "quillbook/platform/Platform.h"

#include <gtest/gtest.h>

#include <thread>

#include "support/MemoryRegistryStore.h"
#include "support/ScriptedMessageBox.h"

namespace quillbook {
namespace {

TEST(Platform, Override_EndsWithItsScope) {
  auto& before = Platform::Current().Messages();
  {
    const auto scripted = std::make_shared<support::ScriptedMessageBox>(std::deque<int>{MessageBox::Yes});
    const PlatformOverride<MessageBox> messages(scripted);
    EXPECT_EQ(Platform::Current().Messages().Show("Sure?", 36, "T"), MessageBox::Yes);
    ASSERT_EQ(scripted->shown.size(), 1U);
    EXPECT_EQ(scripted->shown[0], (support::ScriptedMessageBox::Shown{"Sure?", 36, "T", ""}));
  }
  EXPECT_EQ(&Platform::Current().Messages(), &before);
}

TEST(Platform, ThreadsHaveTheirOwn) {
  const auto store = std::make_shared<support::MemoryRegistryStore>();
  const PlatformOverride<RegistryStore> registry(store);
  bool same = true;
  std::thread([&] { same = &Platform::Current().Registry() == store.get(); }).join();
  EXPECT_FALSE(same);
  EXPECT_EQ(&Platform::Current().Registry(), store.get());
}

TEST(Platform, HasEveryServiceWithoutBeingAsked) {
  EXPECT_TRUE(Platform::Current().Files().GetStatus("/").isDirectory);
  EXPECT_FALSE(Platform::Current().Session().TemporaryFolder().empty());
}

TEST(MemoryRegistryStore, IgnoresCaseAndTellsMissingFromEmpty) {
  support::MemoryRegistryStore store;
  EXPECT_FALSE(store.HasKey(RegistryHive::CurrentUser, "A"));
  store.SetValue(RegistryHive::CurrentUser, "A\\b", "Name", "");
  EXPECT_EQ(store.GetValue(RegistryHive::CurrentUser, "a\\B", "NAME"), "");
  EXPECT_EQ(store.GetValue(RegistryHive::LocalMachine, "a\\B", "NAME"), std::nullopt);
}

}  // namespace
}  // namespace quillbook
