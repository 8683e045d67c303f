#include "quillbook/frame/services/XMLElement.h"

#include <gtest/gtest.h>

#include "quillbook/frame/services/XMLDocument.h"
#include "support/FailureOf.h"

namespace quillbook {
namespace {

using support::NumberOfFailure;

XMLElement Parse(std::string text) {
  XMLDocument document;
  const auto result = document.LoadXML(std::move(text));
  EXPECT_TRUE(result) << result.message;
  return document.DocumentElement();
}

TEST(XMLElement, KeepsTheDocumentAlive) {
  const auto child = *Parse("<a><b c='1'>text</b></a>").ChildElements().begin();
  EXPECT_EQ(child.Name(), "b");
  EXPECT_EQ(child.Text(), "text");
  const auto attribute = child.Attributes().Item("c");
  EXPECT_EQ(attribute.Value(), "1");
}

TEST(XMLElement, EmptyHandle_RaisesObjectNotSet) {
  XMLElement none;
  EXPECT_FALSE(none);
  EXPECT_EQ(NumberOfFailure([&] { (void)none.Name(); }), FailureNumber::ObjectNotSet);
  EXPECT_EQ(NumberOfFailure([&] { (void)none.Text(); }), FailureNumber::ObjectNotSet);
  EXPECT_EQ(NumberOfFailure([&] { (void)none.Attributes(); }), FailureNumber::ObjectNotSet);
  EXPECT_EQ(NumberOfFailure([&] { (void)none.ChildElements(); }), FailureNumber::ObjectNotSet);
  EXPECT_EQ(NumberOfFailure([&] { none.AddChild("a"); }), FailureNumber::ObjectNotSet);
  EXPECT_EQ(NumberOfFailure([&] { none.SetText("a"); }), FailureNumber::ObjectNotSet);
}

TEST(XMLElement, Name_KeepsTheCaseOfTheFile) {
  EXPECT_EQ(Parse("<TopicSet/>").Name(), "TopicSet");
}

TEST(XMLElement, MissingAttribute_FailsInItemAndIsNoneInFind) {
  const auto element = Parse("<a Key='1' Empty=''/>");
  EXPECT_EQ(NumberOfFailure([&] { (void)element.Attributes().Item("Missing"); }), FailureNumber::InvalidCall);
  EXPECT_EQ(element.Attributes().Find("Missing"), std::nullopt);
  EXPECT_EQ(element.Attributes().Find("empty"), "");
  EXPECT_EQ(NumberOfFailure([&] { (void)Parse("<a/>").Attributes().Item(""); }), FailureNumber::InvalidCall);
}

TEST(XMLElement, MissingAttribute_FailsAtTheCallersStatement) {
  const auto element = Parse("<a/>");
  try {
    (void)element.Attributes().Item("Key");
    FAIL();
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.Where().line(), static_cast<unsigned>(__LINE__ - 3));
    EXPECT_EQ(failure.Description(), "Element 'a' has no attribute 'Key'");
  }
}

TEST(XMLElement, AttributeNames_IgnoreCase) {
  const auto element = Parse("<a Help2FileID='1' größe='2' K='3' K\xE2\x84\xAAk='4'/>");
  EXPECT_EQ(element.Attributes().Item("help2fileid").Value(), "1");
  EXPECT_EQ(element.Attributes().Item("HELP2FILEID").Name(), "Help2FileID");
  EXPECT_EQ(element.Attributes().Item("GRÖßE").Value(), "2");
  EXPECT_EQ(element.Attributes().Item("kKk").Value(), "4");  // the sign for kelvin folds to the letter
  EXPECT_EQ(element.Attributes().Find("Help2FileI"), std::nullopt);
  EXPECT_EQ(element.Attributes().Find("Help2FileIDx"), std::nullopt);
}

TEST(XMLElement, OfAttributesThatDifferInCase_TheFirstAnswers) {
  const auto element = Parse("<a x='0' Name='first' name='second' NAME='third'/>");
  EXPECT_EQ(element.Attributes().Item("NAME").Value(), "first");
  EXPECT_EQ(element.Attributes().Item("name").Value(), "first");
}

TEST(XMLElement, AddedAttributes_AreFoundAndKeepTheirOrder) {
  auto element = Parse("<a one='1'/>");
  EXPECT_EQ(element.Attributes().Find("two"), std::nullopt);
  EXPECT_EQ(element.AddAttribute("Two", "2").Value(), "2");
  element.AddAttribute("Three", "");
  EXPECT_EQ(element.Attributes().Item("two").Value(), "2");
  EXPECT_EQ(element.Attributes().Item("three").Value(), "");
  EXPECT_EQ(element.Attributes().Count(), 3U);
}

TEST(XMLElement, AttributesOfSeveralElements_DoNotMix) {
  const auto root = Parse("<r k='r'><a k='a'/><b/></r>");
  auto child = root.ChildElements().begin();
  EXPECT_EQ(root.Attributes().Item("k").Value(), "r");
  EXPECT_EQ((*child).Attributes().Item("k").Value(), "a");
  EXPECT_EQ((*++child).Attributes().Find("k"), std::nullopt);
  EXPECT_EQ(root.Attributes().Item("k").Value(), "r");
}

TEST(XMLElement, ChildElements_AreElementsOnlyInOrder_Repeatedly) {
  const auto root = Parse("<r> text <a/><!-- c --><b/><![CDATA[x]]><?p?><a/>\n</r>");
  const auto children = root.ChildElements();
  for (int round = 0; round < 2; ++round) {
    std::string names;
    for (const auto child : children) names += child.Name();
    EXPECT_EQ(names, "aba");
  }
  EXPECT_EQ(Parse("<r>only text</r>").ChildElements().Count(), 0U);
}

TEST(XMLElement, Text_JoinsItsPieces) {
  EXPECT_EQ(Parse("<a>one<!-- c -->  <![CDATA[ <two> ]]>\n&amp;<?p?>three</a>").Text(), "one   <two> \n&three");
  EXPECT_EQ(Parse("<a>  <![CDATA[]]></a>").Text(), "  ");
  EXPECT_EQ(Parse("<a>\r\n one <b>not this</b> two</a>").Text(), "\r\n one  two");
}

TEST(XMLElement, Text_OfWhiteSpaceIsKeptInALeafOnly) {
  EXPECT_EQ(Parse("<a>  \r\n</a>").Text(), "  \r\n");
  EXPECT_EQ(Parse("<a>\n  <b/>\n</a>").Text(), "");
  EXPECT_EQ(Parse("<a></a>").Text(), "");
}

TEST(XMLElement, TextView_StaysWhileOthersAreRead) {
  const auto root = Parse("<r><a>x<!-- -->y</a><b>z<!-- -->w</b></r>");
  auto child = root.ChildElements().begin();
  const auto first = (*child).TextView();
  const auto second = (*++child).TextView();
  EXPECT_EQ(first, "xy");
  EXPECT_EQ(second, "zw");
}

TEST(XMLElement, SetText_ReplacesTextAndKeepsChildren) {
  auto root = Parse("<r>old<b/>more</r>");
  EXPECT_EQ(root.Text(), "oldmore");
  root.SetText("new");
  EXPECT_EQ(root.Text(), "new");
  EXPECT_EQ(root.ChildElements().Count(), 1U);
  root.SetText(root.TextView());
  EXPECT_EQ(root.Text(), "new");
  root.SetText("");
  EXPECT_EQ(root.Text(), "");
}

TEST(XMLElement, AddChild_GivesTheNewLastChild) {
  auto root = Parse("<r><a/></r>");
  auto child = root.AddChild("Notes", "long");
  child.AddAttribute("k", "v");
  EXPECT_EQ(child.Text(), "long");
  std::string names;
  for (const auto each : root.ChildElements()) names += each.Name();
  EXPECT_EQ(names, "aNotes");
}

TEST(XMLElement, ImpossibleNames_Fail) {
  auto root = Parse("<r/>");
  for (const std::string_view name : {"", "1a", "a b", "a<", "a\"", "-a", "a/", "a=b", "\xFF"}) {
    EXPECT_EQ(NumberOfFailure([&] { root.AddChild(name); }), FailureNumber::InvalidCall) << name;
    EXPECT_EQ(NumberOfFailure([&] { root.AddAttribute(name, ""); }), FailureNumber::InvalidCall) << name;
    EXPECT_EQ(NumberOfFailure([&] { root.SetName(name); }), FailureNumber::InvalidCall) << name;
  }
  EXPECT_EQ(root.ChildElements().Count(), 0U);
  EXPECT_EQ(root.Attributes().Count(), 0U);
  root.SetName("Größe-1.2_x:y");
  EXPECT_EQ(root.Name(), "Größe-1.2_x:y");
}

TEST(XMLElement, Nul_BecomesTheReplacementCharacter) {
  auto root = Parse("<r/>");
  root.SetText(std::string_view("a\0b", 3));
  root.AddAttribute("k", std::string_view("\0", 1));
  EXPECT_EQ(root.Text(),
            "a\xEF\xBF\xBD"
            "b");
  EXPECT_EQ(root.Attributes().Item("k").Value(), "\xEF\xBF\xBD");
}

}  // namespace
}  // namespace quillbook
