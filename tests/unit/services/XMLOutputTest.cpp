#include "quillbook/frame/services/XMLOutput.h"

#include <gtest/gtest.h>

#include <string>

#include "quillbook/frame/services/XMLDocument.h"

namespace quillbook {
namespace {

/// Fills a root with some children of every kind; calls `after` behind each.
template <class After>
void Fill(XMLElement root, After&& after) {
  root.SetName("r");
  root.AddAttribute("a", "<1>");
  root.AddChild("empty");
  after();
  root.AddChild("text", " a & b ");
  after();
  auto nested = root.AddChild("nested");
  nested.AddChild("x", "1").AddAttribute("y", "2");
  nested.AddChild("z").AddChild("deeper");
  after();
}

std::string Whole() {
  const XMLDocument document;
  Fill(document.DocumentElement(), [] {});
  return document.ToString();
}

TEST(XMLOutput, WritesWhatTheWholeDocumentWouldBe) {
  const XMLDocument document;
  std::string text;
  XMLOutput output(document.DocumentElement(), [&](std::string_view part) { text += part; });
  Fill(document.DocumentElement(), [&] { output.Flush(); });
  output.Finish();
  EXPECT_EQ(text, Whole());
}

TEST(XMLOutput, WritesWhatIsLeftAtTheEnd) {
  const XMLDocument document;
  std::string text;
  XMLOutput output(document.DocumentElement(), [&](std::string_view part) { text += part; });
  int count = 0;
  Fill(document.DocumentElement(), [&] {
    if (++count == 1) output.Flush();
  });
  output.Finish();
  EXPECT_EQ(text, Whole());
}

TEST(XMLOutput, NeedsNoFlush) {
  const XMLDocument document;
  std::string text;
  XMLOutput output(document.DocumentElement(), [&](std::string_view part) { text += part; });
  Fill(document.DocumentElement(), [] {});
  output.Finish();
  EXPECT_EQ(text, Whole());
}

TEST(XMLOutput, ClosesARootWithoutChildren) {
  const XMLDocument document;
  document.DocumentElement().SetName("r");
  std::string text;
  XMLOutput output(document.DocumentElement(), [&](std::string_view part) { text += part; });
  output.Flush();
  output.Finish();
  EXPECT_EQ(text, document.ToString());
}

TEST(XMLOutput, KeepsNoWrittenChild) {
  const XMLDocument document;
  auto root = document.DocumentElement();
  root.SetName("r");
  XMLOutput output(root, [](std::string_view) {});
  root.AddChild("a");
  output.Flush();
  EXPECT_EQ(root.ChildElements().Count(), 0U);
}

TEST(XMLElement, Discard_TakesTheElementOutOfItsDocument) {
  XMLDocument document;
  ASSERT_TRUE(document.LoadXML("<r>\n  <a>x<!-- -->y</a>\n  <b k='1'/>\n</r>"));
  const auto root = document.DocumentElement();
  auto first = *root.ChildElements().begin();
  EXPECT_EQ(first.Text(), "xy");
  first.Discard();
  EXPECT_FALSE(first);
  ASSERT_EQ(root.ChildElements().Count(), 1U);
  const auto second = *root.ChildElements().begin();
  EXPECT_EQ(second.Name(), "b");
  EXPECT_EQ(second.Attributes().Item("k").Value(), "1");
  EXPECT_EQ(document.ToString(), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<r>\n\t<b k=\"1\"/>\n</r>");
}

}  // namespace
}  // namespace quillbook
