#include "quillbook/frame/services/AutoMessages.h"

#include <gtest/gtest.h>

#include "quillbook/base/Failure.h"
#include "quillbook/platform/ConsoleMessageBox.h"
#include "quillbook/platform/Platform.h"
#include "support/MemoryRegistryStore.h"
#include "support/ScriptedMessageBox.h"

namespace quillbook {
namespace {

constexpr int yesNoCancel = 35;

class AutoMessagesTest : public testing::Test {
 protected:
  int Ask(int buttons = yesNoCancel) {
    return AutoMessages::MsgBox("Delete those too ?", buttons, "Remove TOC Entries", "RemoveTOCEntries",
                                "Do this automatically next time");
  }
  std::optional<std::string> Remembered() const {
    return mRegistry->GetValue(RegistryHive::CurrentUser, "Software\\Corvane\\Quillbook2\\AutoMessages",
                               "RemoveTOCEntries");
  }

  std::shared_ptr<support::ScriptedMessageBox> mBox = std::make_shared<support::ScriptedMessageBox>();
  std::shared_ptr<support::MemoryRegistryStore> mRegistry = std::make_shared<support::MemoryRegistryStore>();
  PlatformOverride<MessageBox> mBoxOverride{mBox};
  PlatformOverride<RegistryStore> mRegistryOverride{mRegistry};
};

TEST_F(AutoMessagesTest, UntickedAnswer_IsAskedForAgain) {
  mBox->answers = {MessageBox::Yes, MessageBox::No};
  EXPECT_EQ(Ask(), MessageBox::Yes);
  EXPECT_EQ(Ask(), MessageBox::No);
  EXPECT_EQ(Remembered(), std::nullopt);
  ASSERT_EQ(mBox->shown.size(), 2U);
  EXPECT_EQ(mBox->shown[0], (support::ScriptedMessageBox::Shown{"Delete those too ?", yesNoCancel, "Remove TOC Entries",
                                                                "Do this automatically next time"}));
}

TEST_F(AutoMessagesTest, TickedAnswer_ComesByItselfNextTime) {
  mBox->answers = {MessageBox::No};
  mBox->tickCheckBox = true;
  EXPECT_EQ(Ask(), MessageBox::No);
  EXPECT_EQ(Remembered(), "7");
  EXPECT_EQ(Ask(), MessageBox::No);
  EXPECT_EQ(mBox->shown.size(), 1U);
}

TEST_F(AutoMessagesTest, RememberedAnswerThatDoesNotFit_IsAskedForAgain) {
  for (const char* kept : {"1", "2", "", "seven", "7x", "99999999999"}) {
    mRegistry->SetValue(RegistryHive::CurrentUser, "Software\\Corvane\\Quillbook2\\AutoMessages", "RemoveTOCEntries",
                        kept);
    mBox->answers = {MessageBox::Yes};
    EXPECT_EQ(Ask(), MessageBox::Yes) << kept;
  }
}

TEST_F(AutoMessagesTest, TickedCancel_IsAskedForAgain) {
  mBox->answers = {MessageBox::Cancel, MessageBox::Yes};
  mBox->tickCheckBox = true;
  EXPECT_EQ(Ask(), MessageBox::Cancel);
  EXPECT_EQ(Remembered(), std::nullopt);
  EXPECT_EQ(Ask(), MessageBox::Yes);
  EXPECT_EQ(Remembered(), "6");
}

TEST_F(AutoMessagesTest, EachMessageIsRememberedByItself_WhateverTheCaseOfItsName) {
  mBox->answers = {MessageBox::Yes, MessageBox::No};
  mBox->tickCheckBox = true;
  EXPECT_EQ(Ask(), MessageBox::Yes);
  EXPECT_EQ(AutoMessages::MsgBox("Other", yesNoCancel, "", "Other", "Always"), MessageBox::No);
  EXPECT_EQ(AutoMessages::MsgBox("Other", yesNoCancel, "", "removetocentries", "Always"), MessageBox::Yes);
}

TEST_F(AutoMessagesTest, WithoutAnybodyToAnswer_TheSafeAnswerCounts) {
  const PlatformOverride<MessageBox> nobody(std::make_shared<ConsoleMessageBox>(-1, -1, false));
  EXPECT_EQ(Ask(), MessageBox::Cancel);
  EXPECT_EQ(Ask(MessageBox::YesNo), MessageBox::No);
  EXPECT_EQ(Remembered(), std::nullopt);
}

/// A registry that can't be written.
class SealedRegistryStore final : public RegistryStore {
 public:
  std::optional<std::string> GetValue(RegistryHive, std::string_view, std::string_view) const override { return {}; }
  bool HasKey(RegistryHive, std::string_view) const override { return false; }
  void CreateKey(RegistryHive, std::string_view) override { throw Failure(FailureNumber::PermissionDenied); }
  void SetValue(RegistryHive, std::string_view, std::string_view, std::string_view, Type) override {
    throw Failure(FailureNumber::PermissionDenied);
  }
};

TEST_F(AutoMessagesTest, AnswerThatCantBeKept_StillCounts) {
  const PlatformOverride<RegistryStore> sealed(std::make_shared<SealedRegistryStore>());
  mBox->answers = {MessageBox::Yes};
  mBox->tickCheckBox = true;
  EXPECT_EQ(Ask(), MessageBox::Yes);
}

}  // namespace
}  // namespace quillbook
