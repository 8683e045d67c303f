#include "quillbook/platform/InstalledRegistryStore.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

#include "support/MemoryRegistryStore.h"

namespace quillbook {
namespace {

constexpr auto Machine = RegistryHive::LocalMachine;
constexpr auto Key = "Software\\Corvane\\Quillbook2";

TEST(InstalledRegistryStore, InstallDir_IsTheFolder_WhereTheValueIsMissingOrEmpty) {
  const auto values = std::make_shared<support::MemoryRegistryStore>();
  const InstalledRegistryStore store(values, "/opt/quillbook");
  EXPECT_EQ(store.GetValue(Machine, "software\\CORVANE\\Quillbook2", "liteinstalldir"), "\\opt\\quillbook");
  values->SetValue(Machine, Key, "LiteInstallDir", "");
  EXPECT_EQ(store.GetValue(Machine, Key, "LiteInstallDir"), "\\opt\\quillbook");
}

TEST(InstalledRegistryStore, StoredInstallDir_Wins) {
  const auto values = std::make_shared<support::MemoryRegistryStore>();
  values->SetValue(Machine, Key, "LiteInstallDir", "\\elsewhere\\");
  EXPECT_EQ(InstalledRegistryStore(values, "/opt/quillbook").GetValue(Machine, Key, "LiteInstallDir"), "\\elsewhere\\");
}

TEST(InstalledRegistryStore, OtherValues_StayAsTheyAre) {
  const auto values = std::make_shared<support::MemoryRegistryStore>();
  InstalledRegistryStore store(values, "/opt/quillbook");
  EXPECT_FALSE(store.GetValue(Machine, Key, "Other"));
  EXPECT_FALSE(store.GetValue(RegistryHive::CurrentUser, Key, "LiteInstallDir"));
  EXPECT_FALSE(store.GetValue(Machine, "Software\\Other", "LiteInstallDir"));
  store.SetValue(Machine, Key, "Other", "7");
  store.CreateKey(RegistryHive::CurrentUser, "K");
  EXPECT_EQ(values->GetValue(Machine, Key, "Other"), "7");
  EXPECT_TRUE(store.HasKey(RegistryHive::CurrentUser, "K"));
}

TEST(InstalledRegistryStore, WithoutAFolder_NothingIsAdded) {
  const InstalledRegistryStore store(std::make_shared<support::MemoryRegistryStore>(), "");
  EXPECT_FALSE(store.GetValue(Machine, Key, "LiteInstallDir"));
}

TEST(InstalledRegistryStore, InstallationFolder_OfABuildIsItsSource) {
  EXPECT_TRUE(std::filesystem::equivalent(InstalledRegistryStore::InstallationFolder(), QUILLBOOK_SOURCE_DIR));
}

}  // namespace
}  // namespace quillbook
