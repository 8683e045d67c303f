#include "quillbook/platform/FileRegistryStore.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "quillbook/platform/Platform.h"
#include "support/EnvironmentOverride.h"
#include "support/FailureOf.h"
#include "support/FaultyFileStore.h"
#include "support/TemporaryFolder.h"

namespace quillbook {
namespace {

constexpr auto user = RegistryHive::CurrentUser;
constexpr auto machine = RegistryHive::LocalMachine;
constexpr std::string_view key = "Software\\Corvane\\Quillbook2";

class FileRegistryStoreTest : public testing::Test {
 protected:
  support::TemporaryFolder mFolder;
  FileRegistryStore mStore{mFolder / "config/user.reg", mFolder / "machine.reg"};
};

TEST_F(FileRegistryStoreTest, MissingFileHasNoValuesAndIsNotMade) {
  EXPECT_EQ(mStore.GetValue(user, key, "a"), std::nullopt);
  EXPECT_FALSE(mStore.HasKey(user, key));
  EXPECT_EQ(mFolder.Count(), 0U);
}

TEST_F(FileRegistryStoreTest, ValuesLastAndHivesAreApart) {
  mStore.SetValue(user, key, "Name", "u");
  mStore.SetValue(machine, key, "Name", "m");
  const FileRegistryStore again(mFolder / "config/user.reg", mFolder / "machine.reg");
  EXPECT_EQ(again.GetValue(user, "SOFTWARE\\corvane\\quillbook2", "NAME"), "u");
  EXPECT_EQ(again.GetValue(machine, key, "name"), "m");
  EXPECT_NE(mFolder.Read("machine.reg").find("[HKEY_LOCAL_MACHINE\\Software\\Corvane\\Quillbook2]"), std::string::npos);
}

TEST_F(FileRegistryStoreTest, CreateKey_TwiceIsNoFailure) {
  mStore.CreateKey(user, key);
  const auto once = mFolder.Read("config/user.reg");
  mStore.CreateKey(user, key);
  EXPECT_TRUE(mStore.HasKey(user, key));
  EXPECT_EQ(mFolder.Read("config/user.reg"), once);
}

TEST_F(FileRegistryStoreTest, SeesWhatOthersWroteSinceTheLastRead) {
  FileRegistryStore other(mFolder / "config/user.reg", mFolder / "machine.reg");
  mStore.SetValue(user, key, "a", "1");
  other.SetValue(user, key, "a", "2");
  EXPECT_EQ(mStore.GetValue(user, key, "a"), "2");
  mStore.SetValue(user, key, "b", "3");
  EXPECT_EQ(other.GetValue(user, key, "a"), "2");
  EXPECT_EQ(other.GetValue(user, key, "b"), "3");
}

TEST_F(FileRegistryStoreTest, ProcessesDoNotLoseEachOthersValues) {
  constexpr int processes = 4;
  constexpr int values = 40;
  for (int p = 0; p < processes; ++p) {
    if (::fork() != 0) continue;
    for (int v = 0; v < values; ++v) mStore.SetValue(user, key, std::to_string(p) + "-" + std::to_string(v), "x");
    ::_exit(0);
  }
  for (int p = 0; p < processes; ++p) ::wait(nullptr);
  for (int p = 0; p < processes; ++p)
    for (int v = 0; v < values; ++v)
      EXPECT_EQ(mStore.GetValue(user, key, std::to_string(p) + "-" + std::to_string(v)), "x") << p << " " << v;
}

TEST_F(FileRegistryStoreTest, UnreadableFile_HasNoValuesAndStaysAsItIs) {
  mFolder.Write("config/user.reg", "precious");
  const auto faulty = std::make_shared<support::FaultyFileStore>();
  const PlatformOverride<FileStore> files(faulty);
  faulty->reading = FailureNumber::DeviceError;
  EXPECT_EQ(mStore.GetValue(user, key, "a"), std::nullopt);
  EXPECT_EQ(support::NumberOfFailure([&] { mStore.SetValue(user, key, "a", "1"); }), FailureNumber::DeviceError);
  EXPECT_EQ(mFolder.Read("config/user.reg"), "precious");
}

TEST_F(FileRegistryStoreTest, FolderInPlaceOfTheFile_Fails) {
  mFolder.Write("config/user.reg/file", "");
  EXPECT_EQ(mStore.GetValue(user, key, "a"), std::nullopt);
  EXPECT_EQ(support::NumberOfFailure([&] { mStore.SetValue(user, key, "a", "1"); }), FailureNumber::PathFileAccess);
}

TEST_F(FileRegistryStoreTest, FullDisk_LeavesTheOldFile) {
  mStore.SetValue(user, key, "a", "1");
  const auto before = mFolder.Read("config/user.reg");
  const auto faulty = std::make_shared<support::FaultyFileStore>();
  const PlatformOverride<FileStore> files(faulty);
  faulty->space = 10;
  EXPECT_EQ(support::NumberOfFailure([&] { mStore.SetValue(user, key, "b", "2"); }), FailureNumber::DiskFull);
  EXPECT_EQ(mFolder.Read("config/user.reg"), before);
}

TEST_F(FileRegistryStoreTest, DamagedFile_IsKeptBesideNewValues) {
  const std::string damaged("\x01\x02[[[\0\"=\"\n[HKEY_CURRENT_USER", 26);
  mFolder.Write("config/user.reg", damaged);
  mStore.SetValue(user, key, "a", "1");
  EXPECT_EQ(mStore.GetValue(user, key, "a"), "1");
  EXPECT_TRUE(mFolder.Read("config/user.reg").starts_with(damaged));
}

TEST(FileRegistryStore, DefaultFiles_FollowTheEnvironment) {
  {
    const support::EnvironmentOverride folder("QUILLBOOK_REGISTRY", "/somewhere");
    EXPECT_EQ(FileRegistryStore::DefaultUserFile(), "/somewhere/registry.reg");
    EXPECT_EQ(FileRegistryStore::DefaultMachineFile(), "/somewhere/machine.reg");
  }
  const support::EnvironmentOverride none("QUILLBOOK_REGISTRY", std::nullopt);
  const support::EnvironmentOverride home("HOME", "/home/ann/");
  {
    const support::EnvironmentOverride configuration("XDG_CONFIG_HOME", "/home/ann/settings");
    EXPECT_EQ(FileRegistryStore::DefaultUserFile(), "/home/ann/settings/quillbook/registry.reg");
  }
  for (const auto& unusable : {std::optional<std::string>(), std::optional<std::string>("not/absolute")}) {
    const support::EnvironmentOverride configuration("XDG_CONFIG_HOME", unusable);
    EXPECT_EQ(FileRegistryStore::DefaultUserFile(), "/home/ann/.config/quillbook/registry.reg");
  }
  EXPECT_TRUE(FileRegistryStore::DefaultMachineFile().ends_with("/share/quillbook/machine.reg"));
}

}  // namespace
}  // namespace quillbook
