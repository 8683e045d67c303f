#include "quillbook/frame/DataObject.h"

#include <gtest/gtest.h>

#include <memory>

#include "quillbook/platform/Platform.h"
#include "support/FailureOf.h"
#include "support/RecordingDesktop.h"

namespace quillbook {
namespace {

class DataObjectTest : public testing::Test {
 protected:
  std::int16_t Format(std::string_view name) {
    return static_cast<std::int16_t>(desktop->RegisterClipboardFormat(name));
  }

  std::shared_ptr<support::RecordingDesktop> desktop = std::make_shared<support::RecordingDesktop>();
  PlatformOverride<Desktop> session{desktop};
  Ref<DataObject> data = New<DataObject>();
};

TEST_F(DataObjectTest, KeepsOneValueAFormat) {
  EXPECT_FALSE(data->GetFormat(1));
  data->SetData("first", 1);
  data->SetData(7, 2);
  data->SetData("second", 1);
  EXPECT_TRUE(data->GetFormat(1));
  EXPECT_EQ(data->GetData(1).ToText(), "second");
  EXPECT_EQ(data->GetData(2).ToLong(), 7);
  EXPECT_FALSE(data->GetFormat(3));
}

TEST_F(DataObjectTest, FailsForAFormatThatIsntThere) {
  EXPECT_EQ(support::NumberOfFailure([&] { (void)data->GetData(1); }), FailureNumber::FormatNotMatching);
}

TEST_F(DataObjectTest, TakesTheNumberOfAFormat_WithOrWithoutSign) {
  data->Invoke("SetData", {"x", 0xC100});
  EXPECT_TRUE(data->Invoke("GetFormat", {0xC100 - 0x10000}).ToBoolean());
}

TEST_F(DataObjectTest, GoesToTheClipboardAndComesBack) {
  desktop->clipboard.emplace();
  data->SetData(Variant::Bytes{"\x01\x02\x03"}, Format("#A#"));
  data->SetData("\u00E9", Format("#B#"));
  EXPECT_TRUE(data->CopyToClipboard());
  EXPECT_EQ(*desktop->clipboard, (ClipboardContent{{"#A#", "\x01\x02\x03"}, {"#B#", std::string("\xE9\0", 2)}}));

  const auto pasted = DataObject::FromClipboard();
  EXPECT_EQ(pasted->GetData(Format("#A#")).ToBytes(), "\x01\x02\x03");
  EXPECT_EQ(pasted->GetData(Format("#B#")).ToText(), "\u00E9");
}

TEST_F(DataObjectTest, FormatsWithoutANameStayInThisProcess) {
  desktop->clipboard.emplace();
  data->SetData("plain", 1);
  data->SetData("named", Format("#A#"));
  EXPECT_TRUE(data->CopyToClipboard());
  EXPECT_EQ(desktop->clipboard->size(), 1U);
}

TEST_F(DataObjectTest, WithoutAClipboard_NothingIsCopiedNorPasted) {
  data->SetData("x", Format("#A#"));
  EXPECT_FALSE(data->CopyToClipboard());
  EXPECT_FALSE(DataObject::FromClipboard()->GetFormat(Format("#A#")));
}

TEST_F(DataObjectTest, AnObjectIsNoDataForTheClipboard) {
  desktop->clipboard.emplace(ClipboardContent{{"#A#", "before"}});
  data->SetData(Variant(Ref<Object>(data)), Format("#A#"));
  EXPECT_EQ(support::NumberOfFailure([&] { (void)data->CopyToClipboard(); }), FailureNumber::TypeMismatch);
  EXPECT_EQ(desktop->clipboard->at("#A#"), "before");
  data->SetData({}, Format("#A#"));  // it held itself
}

}  // namespace
}  // namespace quillbook
