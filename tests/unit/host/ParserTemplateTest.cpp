#include "quillbook/host/ParserTemplate.h"

#include <gtest/gtest.h>

#include "Toy.h"
#include "quillbook/base/Failure.h"
#include "quillbook/host/TemplateElement.h"

namespace quillbook {
namespace {

/// Answers with what the element encloses.
class Enclosed final : public DataProvider {
 public:
  std::vector<std::string> Types;
  std::string DataProvider_ProvideData(const Ref<TemplateElement>& Element, Ref<FileSystemObject>&) override {
    Types.push_back(Element->ElementType());
    return Element->Source();
  }
  void DataProvider_Initialise(const Ref<Object>&) override {}
  void DataProvider_Terminate() override {}
  void SetDataProvider_CurrentRootItem(const Ref<Object>&) override {}
  Ref<Object> DataProvider_CurrentRootItem() const override { return nullptr; }
  void SetDataProvider_CurrentParentItem(const Ref<Object>&) override {}
  Ref<Object> DataProvider_CurrentParentItem() const override { return nullptr; }
  void SetDataProvider_CurrentItemType(std::string_view) override {}
  std::string DataProvider_CurrentItemType() const override { return ""; }
  void SetDataProvider_CurrentItem(const Ref<Object>&) override {}
  Ref<Object> DataProvider_CurrentItem() const override { return nullptr; }
  void SetDataProvider_NamespaceDef(const Ref<NamespaceDef>&) override {}
  Ref<NamespaceDef> DataProvider_NamespaceDef() const override { return nullptr; }
  void DataProvider_SetCurrentItem(const Ref<NamespaceDef>&, const Ref<Object>&, std::string_view,
                                   const Ref<Object>&) override {}
  std::string DataProvider_ParseForProperties(std::string_view) override { return ""; }
  std::string DataProvider_GetProperty(std::string_view) override { return ""; }
  Ref<DataProvider> DataProvider_Clone() override { return nullptr; }
  static const TypeInfo& StaticType() {
    static const TypeInfo type = Describe<Enclosed>("Enclosed").Done();
    return type;
  }
  const TypeInfo& Type() const override { return StaticType(); }
};

class ParserTemplateTest : public testing::Test {
 protected:
  ParserTemplateTest() {
    parser->StartTagOpen = "<!--META start";
    parser->StartTagClose = "-->";
    parser->EndTagOpen = "<!--META end";
    parser->EndTagClose = "-->";
    parser->RemoveTags = true;
    parser->DataProvider = provider;
  }
  std::string Parse(std::string_view text) {
    parser->Load(text);
    return parser->Result();
  }
  Ref<Enclosed> provider = New<Enclosed>();
  Ref<ParserTemplate> parser = New<ParserTemplate>();
};

TEST_F(ParserTemplateTest, RemoveTags_LeavesTheProvidersAnswer) {
  EXPECT_EQ(Parse("a<!--META start x-->b<!--META end-->c"), "abc");
  EXPECT_EQ(provider->Types, std::vector<std::string>{"x"});
}

TEST_F(ParserTemplateTest, KeptTags_StayAroundTheAnswer) {
  parser->RemoveTags = false;
  EXPECT_EQ(Parse("a<!--META start x-->b<!--META end y-->c"), "a<!--META start x-->b<!--META end y-->c");
}

TEST_F(ParserTemplateTest, Tags_AreFoundIgnoringCase) {
  EXPECT_EQ(Parse("<!--meta START-->b<!--Meta End--><b>"), "b<b>");
}

TEST_F(ParserTemplateTest, InnerElement_IsReplacedBeforeItsOuterOne) {
  EXPECT_EQ(Parse("<!--META start o-->1<!--META start i-->2<!--META end-->3<!--META end-->"), "123");
  EXPECT_EQ(provider->Types, (std::vector<std::string>{"i", "o"}));
}

TEST_F(ParserTemplateTest, LoneTags_AreText) {
  for (const auto* text : {"a<!--META end-->b", "a<!--META start-->b", "a<!--META start",
                           "a<!--META start--><!--META end", "", "<!--other-->"})
    EXPECT_EQ(Parse(text), text);
  EXPECT_EQ(Parse("<!--META start o-->1<!--META start i-->2<!--META end-->3"), "<!--META start o-->123");
}

TEST_F(ParserTemplateTest, EmptyTagStrings_FindNothing) {
  parser->EndTagClose.clear();
  EXPECT_EQ(Parse("a<!--META start x-->b<!--META end-->c"), "a<!--META start x-->b<!--META end-->c");
}

TEST_F(ParserTemplateTest, Failures_OfDepthAndOfAMissingProvider) {
  std::string deep;
  for (int i = 0; i < 100'000; ++i) deep += "<!--META start-->";
  EXPECT_THROW(Parse(deep), Failure);
  parser->DataProvider = nullptr;
  EXPECT_EQ(Parse("plain"), "plain");
  EXPECT_THROW(Parse("<!--META start--><!--META end-->"), Failure);
}

TEST_F(ParserTemplateTest, ManyOpeningsOfTagsThatNeverClose_TakeLinearTime) {
  std::string text;
  for (int i = 0; i < 100'000; ++i) text += "<!--META start ";
  EXPECT_EQ(Parse(text), text);
}

}  // namespace
}  // namespace quillbook
