#include "quillbook/frame/Root.h"

#include <gtest/gtest.h>

#include <memory>

#include "quillbook/config/QBIDEOptions.h"
#include "quillbook/frame/modMain.h"
#include "quillbook/platform/Platform.h"
#include "support/FailureLog.h"
#include "support/MemoryRegistryStore.h"
#include "support/ScriptedMessageBox.h"

namespace quillbook {
namespace {

class RootTest : public testing::Test {
 protected:
  std::shared_ptr<support::ScriptedMessageBox> box = std::make_shared<support::ScriptedMessageBox>();
  PlatformOverride<MessageBox> messages{box};
  PlatformOverride<RegistryStore> registry{std::make_shared<support::MemoryRegistryStore>()};
  Ref<Root> root = New<Root>();
};

TEST_F(RootTest, CountsLiveRoots) {
  EXPECT_EQ(modMain::RootIncrement(), 1);
  {
    const auto other = New<Root>();
    EXPECT_EQ(modMain::RootIncrement(), 2);
  }
  root = nullptr;
  EXPECT_EQ(modMain::RootIncrement(), 0);
}

TEST_F(RootTest, RegistersTwoClipboardFormats) {
  EXPECT_NE(root->ClipboardDataFormat(), 0);
  EXPECT_NE(root->ClipboardTypeFormat(), 0);
  EXPECT_NE(root->ClipboardDataFormat(), root->ClipboardTypeFormat());
  const auto number = root->ClipboardDataFormat();
  root = New<Root>();
  EXPECT_EQ(root->ClipboardDataFormat(), number);
}

TEST_F(RootTest, KeepsItsSlotsInTheApartment) {
  root->SetSpellImagePath("c:\\images");
  root->SetReloadFlag(true);
  const auto other = New<Root>();
  EXPECT_EQ(other->SpellImagePath(), "c:\\images");
  EXPECT_TRUE(other->ReloadFlag());
  EXPECT_EQ(modMain::mSpellImagePath(), "c:\\images");
  root->SetSpellImagePath("");
  root->SetReloadFlag(false);
}

TEST_F(RootTest, GivesNewOptionsAtEveryRead) {
  EXPECT_NE(root->QBIDEOptions(), root->QBIDEOptions());
}

TEST_F(RootTest, WritesColorsForTheWeb) {
  EXPECT_EQ(root->ColorToWebHex(0x0000FF), "#FF0000");
  EXPECT_EQ(root->ColorToWebHex(0xABCDEF), "#EFCDAB");
  EXPECT_EQ(root->ColorToWebHex(static_cast<OleColor>(0x80000005U)), "#FFFFFF");
  EXPECT_EQ(root->ColorToWebHex(0x7F000000), "#000000");
}

TEST_F(RootTest, WritesColorsForProgrammers) {
  EXPECT_EQ(root->ColorToVBHex(0x0000FF), "&H000000FF&");
  EXPECT_EQ(root->ColorToVBHex(0xABCDEF), "&H00ABCDEF&");
  EXPECT_EQ(root->ColorToVBHex(static_cast<OleColor>(0x80000005U)), "&H80000005&");
  EXPECT_EQ(root->ColorToVBHex(static_cast<OleColor>(0x8000FFFFU)), "&H8000FFFF&");
}

TEST_F(RootTest, ReadsColorsOfTheWeb) {
  for (const OleColor color : {0x000000, 0x0000FF, 0x123456, 0xFFFFFF})
    EXPECT_EQ(root->WebHexToColor(root->ColorToWebHex(color)), color);
  EXPECT_EQ(root->WebHexToColor("xFF"), 0x0000FF) << "missing parts are 0, and the first character doesn't matter";
  EXPECT_EQ(root->WebHexToColor(""), 0);
  EXPECT_EQ(root->WebHexToColor("#"), 0);
}

TEST_F(RootTest, EveryPlainColorComesBackFromTheWeb) {
  for (OleColor color = 0; color <= 0xFFFFFF; color += 251)
    ASSERT_EQ(root->WebHexToColor(root->ColorToWebHex(color)), color);
  EXPECT_EQ(root->WebHexToColor(root->ColorToWebHex(0xFFFFFF)), 0xFFFFFF);
}

TEST_F(RootTest, ReadsOddColorsOfTheWebAsFarAsTheyGo) {
  EXPECT_EQ(root->WebHexToColor("#F"), 0x00000F) << "one digit is a number too";
  EXPECT_EQ(root->WebHexToColor("#FF0"), 0x0000FF);
  EXPECT_EQ(root->WebHexToColor("#ff8000"), 0x0080FF);
  EXPECT_EQ(root->WebHexToColor("#ZZ1Z-1"), 0x000100) << "what is no digit ends a channel";
  EXPECT_EQ(root->WebHexToColor("\u20ACFF8000"), 0x0080FF) << "characters count, not bytes";
  EXPECT_EQ(root->WebHexToColor("#\u20AC\u20ACFF00"), 0x00FF00);
  EXPECT_EQ(root->WebHexToColor("#FF8000 and more"), 0x0080FF);
}

TEST_F(RootTest, ResolvesEverySystemColorButNoOtherNumber) {
  for (std::uint32_t number = 0; number <= 30; ++number)
    EXPECT_EQ(root->ColorToVBHex(static_cast<OleColor>(0x80000000U + number)).size(), 11U) << number;
  EXPECT_EQ(root->ColorToWebHex(static_cast<OleColor>(0x8000001AU)), "#000080");
  EXPECT_EQ(root->ColorToWebHex(static_cast<OleColor>(0x8000001FU)), "#000000") << "there is no such colour";
  EXPECT_EQ(root->ColorToVBHex(static_cast<OleColor>(0x8123ABCDU)), "&H8000ABCD&") << "the low word counts alone";
}

TEST_F(RootTest, BlendsTheWorkspaceColorForOneToolbarStyleOnly) {
  root->QBIDEOptions()->SetToolbarStyle(ToolbarStyleOfficeXP);
  EXPECT_EQ(root->AppWorkspaceColor(), static_cast<OleColor>(0x8000000CU));
  root->QBIDEOptions()->SetToolbarStyle(ToolbarStyleOffice2003);
  // 128 parts of (128, 128, 128) and 127 of (212, 208, 200), of 255.
  EXPECT_EQ(root->AppWorkspaceColor(), 170 | 168 << 8 | 164 << 16);
}

TEST_F(RootTest, RemembersAnAnswerWhoseBoxIsTicked) {
  box->answers = {6, 7};
  EXPECT_EQ(root->AutoMsgBox("Sure?", 36, "Title", "Name"), 6);
  EXPECT_EQ(box->shown.back().CheckBoxCaption, "Do this automatically next time");
  box->tickCheckBox = true;
  EXPECT_EQ(root->AutoMsgBox("Sure?", 36, "Title", "Name"), 7);
  EXPECT_EQ(root->AutoMsgBox("Sure?", 36, "Title", "Name"), 7);
  EXPECT_EQ(box->shown.size(), 2U);
  EXPECT_EQ(modMain::GetAppValue("Name", "", "AutoMessages"), "7");
}

}  // namespace
}  // namespace quillbook
