#include <gtest/gtest.h>

#include <limits>

#include "quillbook/base/Text.h"
#include "quillbook/frame/DataObject.h"
#include "quillbook/frame/Root.h"
#include "support/FailureLog.h"
#include "support/RecordingDesktop.h"

namespace quillbook {
namespace {

using Failures = std::vector<std::string>;

/// Somebody else's data object: no relation to `DataObject` but the names of its methods.
class ForeignData final : public Object {
 public:
  void SetData(const Variant& value, std::int32_t format) {
    lastFormat = format;
    lastValue = value;
  }
  bool GetFormat(std::int32_t format) const { return format == lastFormat; }
  std::string GetData(std::int32_t) const { return "as text"; }

  std::int32_t lastFormat = 0;
  Variant lastValue;

  static const TypeInfo& StaticType() {
    static const TypeInfo type = Describe<ForeignData>("ForeignData")
                                     .Method<&ForeignData::SetData>("setdata")
                                     .Method<&ForeignData::GetFormat>("getformat")
                                     .Method<&ForeignData::GetData>("getdata")
                                     .Done();
    return type;
  }
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }
};

class ClipboardTest : public testing::Test {
 protected:
  std::string TypeBytes() const { return data->GetData(root->ClipboardTypeFormat()).ToBytes(); }
  std::string DataBytes() const { return data->GetData(root->ClipboardDataFormat()).ToBytes(); }

  support::FailureLog failures;
  Ref<Root> root = New<Root>();
  Ref<DataObject> data = New<DataObject>();
};

TEST_F(ClipboardTest, FormatNumbersLieWhereRegisteredFormatsDo) {
  EXPECT_GE(static_cast<std::uint16_t>(root->ClipboardDataFormat()), 0xC000);
  EXPECT_GE(static_cast<std::uint16_t>(root->ClipboardTypeFormat()), 0xC000);
}

TEST_F(ClipboardTest, AnItemIsTypeAndData_AsUtf16WithoutTerminator) {
  root->SetClipboardData(data, DataTypeTopic, "{A}\u00E9");
  EXPECT_EQ(TypeBytes(), std::string("T\0o\0p\0i\0c\0", 10));
  EXPECT_EQ(DataBytes(), std::string("{\0A\0}\0\xE9\0", 8));
  EXPECT_EQ(data->GetData(root->ClipboardTypeFormat()).GetKind(), Variant::Kind::Bytes);
}

TEST_F(ClipboardTest, EveryTypeComesBack) {
  for (const auto type : {DataTypeTopic, DataTypeOtherFile, DataTypeCategory, DataTypeNode}) {
    root->SetClipboardData(data, type, "data of " + std::to_string(type));
    EXPECT_EQ(root->GetClipboardDataType(data), type);
    EXPECT_EQ(root->GetClipboardData(data), "data of " + std::to_string(type));
  }
  EXPECT_EQ(failures.Take(), Failures());
}

TEST_F(ClipboardTest, TypesHaveTheirTexts) {
  const std::pair<QBClipboardDataTypeEnum, std::string_view> texts[] = {{DataTypeTopic, "Topic"},
                                                                        {DataTypeOtherFile, "OtherFile"},
                                                                        {DataTypeCategory, "Category"},
                                                                        {DataTypeNode, "Node"}};
  for (const auto& [type, text] : texts) {
    root->SetClipboardDataType(data, type);
    EXPECT_EQ(FromUtf16Bytes(TypeBytes()), text);
  }
}

TEST_F(ClipboardTest, Type0_WritesEmptyTypeText) {
  for (const int type : {0, 5, -1, std::numeric_limits<int>::min()}) {
    root->SetClipboardData(data, static_cast<QBClipboardDataTypeEnum>(type), "x");
    EXPECT_EQ(TypeBytes(), "") << type;
    EXPECT_EQ(DataBytes(), std::string("x\0", 2));
    EXPECT_EQ(root->GetClipboardDataType(data), 0);
    EXPECT_EQ(root->GetClipboardData(data), "x") << "the type format is there, whatever its text";
  }
}

TEST_F(ClipboardTest, TypeAndDataCanBeWrittenAlone) {
  root->SetClipboardDataType(data, DataTypeNode);
  EXPECT_FALSE(data->GetFormat(root->ClipboardDataFormat()));
  root->SetClipboardDataData(data, "x");
  EXPECT_EQ(root->GetClipboardDataType(data), DataTypeNode);
  EXPECT_EQ(root->GetClipboardData(data), "x");
}

TEST_F(ClipboardTest, WithoutTheTypeFormat_TypeIs0AndDataEmpty) {
  EXPECT_EQ(root->GetClipboardDataType(data), 0);
  EXPECT_EQ(root->GetClipboardData(data), "");
  root->SetClipboardDataData(data, "x");
  EXPECT_EQ(root->GetClipboardDataType(data), 0);
  EXPECT_EQ(root->GetClipboardData(data), "") << "data without a type is no item";
  EXPECT_EQ(failures.Take(), Failures());
}

TEST_F(ClipboardTest, WithoutTheDataFormat_DataIsEmptyAndNothingIsReported) {
  root->SetClipboardDataType(data, DataTypeTopic);
  EXPECT_EQ(root->GetClipboardData(data), "");
  EXPECT_EQ(failures.Take(), Failures());
}

TEST_F(ClipboardTest, TypeTextsCountExactly) {
  for (const auto text : {"topic", "Topic ", "Top", "Topics", ""}) {
    data->SetData(Variant::Bytes{ToUtf16Bytes(text)}, root->ClipboardTypeFormat());
    EXPECT_EQ(root->GetClipboardDataType(data), 0) << text;
  }
  data->SetData(Variant::Bytes{ToUtf16Bytes("Node") + "x"}, root->ClipboardTypeFormat());
  EXPECT_EQ(root->GetClipboardDataType(data), DataTypeNode) << "half a character at the end is none";
}

TEST_F(ClipboardTest, LongDataAndCharactersOfAllPlanesComeBack) {
  std::string text(1'000'000, 'x');
  text += "\xF0\x9F\x98\x80 \xEF\xBF\xBF \x01";
  root->SetClipboardData(data, DataTypeTopic, text);
  EXPECT_EQ(root->GetClipboardData(data), text);
}

TEST_F(ClipboardTest, AnyObjectWithTheMethodsIsADataObject) {
  const auto foreign = New<ForeignData>();
  root->SetClipboardDataType(foreign, DataTypeNode);
  EXPECT_EQ(foreign->lastFormat, root->ClipboardTypeFormat());
  EXPECT_EQ(foreign->lastValue.ToBytes(), ToUtf16Bytes("Node"));
  EXPECT_EQ(root->GetClipboardData(foreign), "as text");
  EXPECT_EQ(root->GetClipboardDataType(foreign), 0);
  EXPECT_EQ(failures.Take(), Failures());
}

TEST_F(ClipboardTest, AnObjectOfNoDataType_IsReported) {
  root->SetClipboardData(root, DataTypeTopic, "x");
  root->SetClipboardDataType(root, DataTypeTopic);
  root->SetClipboardDataData({}, "x");
  EXPECT_EQ(root->GetClipboardDataType(root), 0);
  EXPECT_EQ(failures.Take(), Failures({"Root.SetClipboardData 438", "Root.SetClipboardDataType 438",
                                       "Root.SetClipboardDataData 91", "Root.GetClipboardDataType 438"}));
  EXPECT_EQ(root->GetClipboardData(root), "");
  EXPECT_EQ(failures.Take(), Failures()) << "this one ends with an empty result";
}

TEST_F(ClipboardTest, AnItemCrossesTheDesktopsClipboard) {
  const auto desktop = std::make_shared<support::RecordingDesktop>();
  desktop->clipboard.emplace();
  const PlatformOverride<Desktop> session{std::shared_ptr<Desktop>(desktop)};
  desktop->formats = {"unused"};
  // The formats are registered with the session of the first root; this one gives them other numbers.
  data->SetData(Variant::Bytes{"bytes"},
                static_cast<std::int16_t>(desktop->RegisterClipboardFormat("#Quillbook.Data#")));
  EXPECT_TRUE(data->CopyToClipboard());
  EXPECT_EQ(desktop->clipboard->at("#Quillbook.Data#"), "bytes");
}

}  // namespace
}  // namespace quillbook
