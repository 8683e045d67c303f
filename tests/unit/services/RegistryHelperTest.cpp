#include "quillbook/frame/services/RegistryHelper.h"

#include <gtest/gtest.h>

#include "quillbook/platform/Platform.h"
#include "support/FailureOf.h"
#include "support/MemoryRegistryStore.h"

namespace quillbook {
namespace {

constexpr auto user = RegistryHelper::CurrentUser;
constexpr auto machine = RegistryHelper::LocalMachine;

class RegistryHelperTest : public testing::Test {
 protected:
  PlatformOverride<RegistryStore> mRegistry{std::make_shared<support::MemoryRegistryStore>()};
};

TEST_F(RegistryHelperTest, MissingKeyOrValue_IsEmpty) {
  EXPECT_EQ(RegistryHelper::GetValue(user, "Software\\None", "a"), "");
  RegistryHelper::CreateKey(user, "Software\\Some");
  RegistryHelper::CreateKey(user, "Software\\Some");
  EXPECT_EQ(RegistryHelper::GetValue(user, "Software\\Some", "a"), "");
}

TEST_F(RegistryHelperTest, Values_ComeBackFromTheirHive) {
  RegistryHelper::SetValue(user, "Software\\Some", "Name", "value", 1);
  EXPECT_EQ(RegistryHelper::GetValue(user, "SOFTWARE\\some", "NAME"), "value");
  EXPECT_EQ(RegistryHelper::GetValue(machine, "Software\\Some", "Name"), "");
}

TEST_F(RegistryHelperTest, HivesHaveTheirClassicNumbers) {
  RegistryHelper::SetValue(0x80000002U, "k", "v", "m");
  EXPECT_EQ(RegistryHelper::GetValue(machine, "k", "v"), "m");
}

TEST_F(RegistryHelperTest, UnknownHiveOrType_Fails) {
  EXPECT_EQ(support::NumberOfFailure([] { RegistryHelper::SetValue(1, "k", "v", "x"); }), FailureNumber::InvalidCall);
  EXPECT_EQ(support::NumberOfFailure([] { RegistryHelper::SetValue(user, "k", "v", "x", 3); }),
            FailureNumber::InvalidCall);
}

}  // namespace
}  // namespace quillbook
