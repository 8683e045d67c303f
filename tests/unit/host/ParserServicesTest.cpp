#include "quillbook/host/ParserServices.h"

#include <gtest/gtest.h>

#include "Toy.h"
#include "host/CompiledTemplate.h"
#include "quillbook/base/Failure.h"
#include "quillbook/frame/Procedure.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/host/TemplateElement.h"

namespace quillbook {
namespace {

class ParserServicesTest : public testing::Test {
 protected:
  std::string Parse(std::string_view text) { return ParserServices::ParseText(text, *data); }

  Ref<toy::Data> data = New<toy::Data>();
};

TEST_F(ParserServicesTest, IsTypeOf_IgnoresCaseAndTakesNothing) {
  const Ref<Object> item = New<toy::Item>("x");
  EXPECT_TRUE(ParserServices::IsTypeOf(item, "TOYITEM"));
  EXPECT_FALSE(ParserServices::IsTypeOf(item, "Topic"));
  EXPECT_FALSE(ParserServices::IsTypeOf(nullptr, "ToyItem"));
}

TEST_F(ParserServicesTest, File_IsHandedToTheProvider) {
  auto file = New<FileSystemObject>("\\out\\Page.html");
  const auto given = file;
  data->Values["x"] = "y";
  EXPECT_EQ(ParserServices::ParseText("%%x%%", *data, file, true), "y");
  EXPECT_EQ(file, given);
}

TEST_F(ParserServicesTest, TextWithoutElements_AsksNobody) {
  EXPECT_EQ(Parse("50% of 60%, 100%% sure, %%, %% x %%"), "50% of 60%, 100%% sure, %%, %% x %%");
  EXPECT_TRUE(data->Asked.empty());
}

TEST_F(ParserServicesTest, ElementsInsideAnElement_AreLeftToTheProvider) {
  data->Values["a"] = "A";
  EXPECT_EQ(Parse("%%a%%%%b%%%%c%%%%/b%%%%/a%%"), "A");
  EXPECT_EQ(data->Asked, std::vector<std::string>{"a"});
}

TEST_F(ParserServicesTest, BlankTexts_BelongToTheElementThatHoldsThemDirectly) {
  const auto compiled = CompiledTemplate::Compile(
      "%%a%%%%b%%%%blank%%inner%%/blank%%%%/b%%%%blank%%outer%%/blank%%%%notblank%%yes%%/notblank%%%%/a%%");
  ASSERT_EQ(compiled->Pieces().size(), 1u);
  const auto& element = *compiled->Pieces()[0].element;
  EXPECT_EQ(ParserServices::ElementBlankText(element, "d"), "outer");
  EXPECT_EQ(ParserServices::ElementNotBlankText(element, "d"), "yes");
  const TemplateElement bare("x");
  EXPECT_EQ(ParserServices::ElementBlankText(bare, "d"), "d");
  EXPECT_EQ(ParserServices::ElementNotBlankText(bare), "");
}

TEST_F(ParserServicesTest, Attributes_AreFoundIgnoringCaseAndRaiseWhenMissing) {
  const auto compiled = CompiledTemplate::Compile("%%A:Name=x;name=second;type=other%%");
  const auto& element = *compiled->Pieces().at(0).element;
  EXPECT_EQ(element.Attributes().Item("NAME"), "x") << "the first of two counts";
  EXPECT_EQ(element.Attributes().Item("type"), "A") << "the element's own type counts";
  EXPECT_THROW(static_cast<void>(element.Attributes().Item("nosuch")), Failure);
  EXPECT_EQ(element.Attribute("nosuch"), "");
}

TEST_F(ParserServicesTest, ElementsThatGenerateEachOther_EndInOneFailure) {
  EXPECT_THROW(static_cast<void>(Parse("%%again%%")), Failure);
  EXPECT_EQ(Parse("%%attributes%%"), "type=attributes;") << "the next evaluation begins anew";
}

/// A provider that reports failures and goes on, as providers behind a failure frame do.
TEST_F(ParserServicesTest, GenerationWithHandledFailures_EndsAlthoughItBranches) {
  int failures = 0;
  data->Values["scrap.a"] = "a";
  data->BeforeAnswer = [&](const TemplateElement& element) {
    if (element.ElementType() != "branch") return;
    for (int i = 0; i < 3; ++i) {
      if (!IgnoreFailures([&] { static_cast<void>(Parse("<%%branch%%>")); })) ++failures;
    }
  };
  data->Values["branch"] = "b";
  static_cast<void>(Parse("%%branch%%"));
  EXPECT_EQ(failures, 1);
  EXPECT_LT(data->Asked.size(), 1000u);
}

TEST_F(ParserServicesTest, Depth_CountsNestedEvaluationsNotSiblings) {
  std::string many;
  for (int i = 0; i < 1000; ++i) many += "%%scrap:name=s%%";
  data->Values["scrap.s"] = "%%v%%";
  data->Values["v"] = "1";
  EXPECT_EQ(Parse(many), std::string(1000, '1'));
}

std::string NestedSources(int depth) {
  std::string text;
  for (int i = 0; i < depth; ++i) text += "%%source%%";
  text += "x";
  for (int i = 0; i < depth; ++i) text += "%%/source%%";
  return text;
}

TEST_F(ParserServicesTest, VeryDeepNesting_IsParsedWithoutRecursion) {
  const auto text = NestedSources(100'000);
  const auto compiled = CompiledTemplate::Compile(text);
  ASSERT_EQ(compiled->Pieces().size(), 1u);
  EXPECT_EQ(compiled->Pieces()[0].element->Source().size(), text.size() - 21);
}

TEST_F(ParserServicesTest, DeepNesting_EndsInAFailureWhereEachLevelAsksForTheNext) {
  EXPECT_EQ(Parse(NestedSources(ParserServices::MaximumDepth / 2)), "x");
  EXPECT_THROW(static_cast<void>(Parse(NestedSources(10'000))), Failure);
}

TEST_F(ParserServicesTest, PathologicalTexts_TakeLinearTime) {
  constexpr int Count = 100'000;
  for (const std::string part : {"%%a", "%%a:", "%%a:b=\"", "%%/a%%", "%%a:b=\"\"", "%%a%%%%/b%%", "%%a:b=c;", "%"}) {
    std::string text;
    for (int i = 0; i < Count; ++i) text += part;
    EXPECT_FALSE(CompiledTemplate::Compile(text)->Pieces().empty()) << part;
  }
}

TEST_F(ParserServicesTest, MillionSiblings_AreAllAnswered) {
  data->Values["v"] = "1";
  std::string text;
  for (int i = 0; i < 1'000'000; ++i) text += "%%v%%";
  EXPECT_EQ(Parse(text).size(), 1'000'000u);
}

}  // namespace
}  // namespace quillbook
