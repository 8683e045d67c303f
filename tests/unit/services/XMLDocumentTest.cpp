#include "quillbook/frame/services/XMLDocument.h"

#include <gtest/gtest.h>

#include <random>

#include "quillbook/base/Text.h"

namespace quillbook {
namespace {

/// Where `Check` sees the fault of a text, as "line:column"; "ok" if there is none.
std::string PlaceOfFault(std::string_view text) {
  const auto result = XMLDocument::Check(text);
  return result ? "ok" : std::to_string(result.line) + ":" + std::to_string(result.column);
}

TEST(XMLDocument, BeginsWithNamelessRoot) {
  const XMLDocument document;
  ASSERT_TRUE(document.DocumentElement());
  EXPECT_EQ(document.DocumentElement().Name(), "");
  EXPECT_EQ(document.DocumentElement().Text(), "");
  EXPECT_EQ(document.DocumentElement().ChildElements().Count(), 0U);
  EXPECT_EQ(document.ToString(), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>");
}

TEST(XMLDocument, LoadXML_ReplacesTheDocument) {
  XMLDocument document;
  EXPECT_TRUE(document.LoadXML("<One a='1'/>"));
  EXPECT_TRUE(document.LoadXML("<Two>text</Two>"));
  EXPECT_EQ(document.DocumentElement().Name(), "Two");
  EXPECT_EQ(document.DocumentElement().Text(), "text");
  EXPECT_EQ(document.DocumentElement().Attributes().Count(), 0U);
}

TEST(XMLDocument, BadText_LeavesTheEmptyRoot) {
  const char* const bad[] = {
      "",
      "   \r\n ",
      "no markup",
      "<a>",
      "<a><b></a></b>",
      "<a/><b/>",
      "<a/>junk",
      "junk<a",
      "junk<a/>",
      "<a b=\"1/>",
      "<a><![CDATA[x",
      "<!-- x",
      "<?xml",
      "<a",
      "</a>",
      "<a>x</a></a>",
      "<!DOCTYPE a",
      "<",
      "<a>&#0;</a>",
      "<a b='&#x00;'/>",
  };
  for (const auto* text : bad) {
    XMLDocument document;
    document.LoadXML("<Before/>");
    const auto result = document.LoadXML(text);
    EXPECT_FALSE(result) << text;
    EXPECT_FALSE(result.message.empty()) << text;
    EXPECT_EQ(document.DocumentElement().Name(), "") << text;
    EXPECT_EQ(document.DocumentElement().ChildElements().Count(), 0U) << text;
  }
}

TEST(XMLDocument, NulInTheText_IsBadText) {
  XMLDocument document;
  const auto result = document.LoadXML(std::string("<a>x\0y</a>", 10));
  EXPECT_FALSE(result);
  EXPECT_EQ(result.offset, 4U);
  EXPECT_TRUE(document.LoadXML("<a>" + std::string(10'000, ' ') + "&#10;&#100;&#x10;&amp;#0;</a>"));
  EXPECT_EQ(PlaceOfFault("<a>" + std::string(8190, ' ') + "&#000;</a>"), "1:8194");
}

TEST(XMLDocument, TextCutAnywhere_IsBadText) {
  const std::string whole =
      "<?xml version=\"1.0\"?>\n<P a=\"1\"><!-- c --><T><![CDATA[x]]>&lt;y</T><?p i?><E b='2'/>\n</P>";
  ASSERT_TRUE(XMLDocument::Check(whole));
  for (std::size_t size = 0; size < whole.size(); ++size)
    EXPECT_FALSE(XMLDocument::Check(whole.substr(0, size))) << size;
}

TEST(XMLDocument, Fault_HasItsPlaceInLinesAndCharacters) {
  EXPECT_EQ(PlaceOfFault("<a/>junk"), "1:5");
  EXPECT_EQ(PlaceOfFault("<a>\n</a>\n  <b/>"), "3:3");
  EXPECT_EQ(PlaceOfFault("<a>äöü😀</a>x"), "1:12");
  EXPECT_EQ(PlaceOfFault("<a>\r\n&lt;&lt;\r\n</a>\r\n x"), "4:2");
  EXPECT_EQ(PlaceOfFault("<a>\r\r</a>\rx"), "4:1");
  EXPECT_EQ(PlaceOfFault("<a>\n<b></c></a>").substr(0, 2), "2:");
  EXPECT_EQ(PlaceOfFault("<a>&amp;&amp;&amp;\n&lt;\n<b x=></b>\n</a>").substr(0, 2), "3:");
  EXPECT_EQ(PlaceOfFault(""), "1:1");
  EXPECT_EQ(PlaceOfFault("<a/>"), "ok");
}

TEST(XMLDocument, FaultMessages_SayWhatIsWrong) {
  EXPECT_EQ(XMLDocument::Check("<a/><b/>").message, "There is a second root element");
  EXPECT_EQ(XMLDocument::Check("<a/>b").message, "There is text behind the root element");
  EXPECT_EQ(XMLDocument::Check("b<a/>").message, "There is text before the root element");
  EXPECT_EQ(XMLDocument::Check("<!-- only -->").message, "There is no root element");
  EXPECT_EQ(XMLDocument::Check("<a><b></a>").message, "An element isn't closed, or the end tag belongs to another one");
}

TEST(XMLDocument, MarkupBesideTheRoot_IsPassedOver) {
  XMLDocument document;
  EXPECT_TRUE(
      document.LoadXML("\xEF\xBB\xBF<?xml version='1.0' encoding='windows-1252'?>\n<!-- c -->\n"
                       "<!DOCTYPE P [<!ENTITY e \"<x>\"> <!ELEMENT P ANY>]>\n<P>ä</P>\n<!-- end --> \n"));
  EXPECT_EQ(document.DocumentElement().Name(), "P");
  EXPECT_EQ(document.DocumentElement().Text(), "ä");
}

TEST(XMLDocument, OwnEntities_AreNotExpanded) {
  XMLDocument document;
  ASSERT_TRUE(
      document.LoadXML("<!DOCTYPE a [<!ENTITY b \"bbbb\"><!ENTITY c SYSTEM \"/etc/passwd\">]><a>&b;&c;&d;</a>"));
  EXPECT_EQ(document.DocumentElement().Text(), "&b;&c;&d;");
}

TEST(XMLDocument, DeepNesting_CostsNoStack) {
  constexpr int depth = 100'000;
  std::string text;
  for (int i = 0; i < depth; ++i) text += "<n>";
  text += "x";
  for (int i = 0; i < depth; ++i) text += "</n>";
  XMLDocument document;
  ASSERT_TRUE(document.LoadXML(text));
  const auto written = document.ToString();
  EXPECT_LT(written.size(), text.size() * 16);  // indentation stays in bounds
  EXPECT_TRUE(XMLDocument::Check(written));
  EXPECT_FALSE(document.LoadXML(text.substr(0, text.size() / 2)));
}

TEST(XMLDocument, MillionSiblings_AreEnumerated) {
  std::string text = "<r>";
  for (int i = 0; i < 1'000'000; ++i) text += "<e/>";
  XMLDocument document;
  ASSERT_TRUE(document.LoadXML(text + "</r>"));
  EXPECT_EQ(document.DocumentElement().ChildElements().Count(), 1'000'000U);
}

TEST(XMLDocument, ToString_PutsElementsOnLinesOfTheirOwn) {
  XMLDocument document;
  auto root = document.DocumentElement();
  root.SetName("QBProject");
  root.AddAttribute("Title", "A \"b\" <c>");
  auto topic = root.AddChild("Topic");
  topic.AddAttribute("Key", "{1}");
  topic.AddChild("Notes", "two\nlines");
  root.AddChild("Empty");
  EXPECT_EQ(document.ToString(),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<QBProject Title=\"A &quot;b&quot; &lt;c&gt;\">\n"
            "\t<Topic Key=\"{1}\">\n"
            "\t\t<Notes>two\nlines</Notes>\n"
            "\t</Topic>\n"
            "\t<Empty/>\n"
            "</QBProject>");
}

TEST(XMLDocument, ToString_AddsNothingToMixedText) {
  XMLDocument document;
  ASSERT_TRUE(document.LoadXML("<r>\n  <m>a <b>c</b><d>\n <e/> </d> f</m>\n  <n/>  </r>"));
  EXPECT_EQ(document.ToString(),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<r>\n\t<m>a <b>c</b><d>\n <e/> </d> f</m>\n\t<n/>\n</r>");
}

TEST(XMLDocument, ToString_WritesWhatWouldNotComeBackAsReferences) {
  XMLDocument document;
  auto root = document.DocumentElement();
  root.SetName("r");
  root.AddAttribute("a", "\r\n\t\x01'");
  root.SetText("\r\n\t\x1F]]>&\"'");
  EXPECT_EQ(document.ToString(),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<r a=\"&#13;&#10;&#9;&#1;'\">&#13;\n\t&#31;]]&gt;&amp;\"'</r>");
}

TEST(XMLDocument, WriteTo_GivesTheSameInParts) {
  XMLDocument document;
  auto root = document.DocumentElement();
  root.SetName("r");
  for (int i = 0; i < 100; ++i) root.AddChild("Body", std::string(10'000, 'x'));
  std::string text;
  std::size_t parts = 0;
  document.WriteTo([&](std::string_view part) {
    text += part;
    ++parts;
  });
  EXPECT_EQ(text, document.ToString());
  EXPECT_GT(parts, 2U);
}

TEST(XMLDocument, MutatedText_IsTakenOrRefusedButNeverHarms) {
  const std::string seed =
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE P [<!ENTITY e \"x\">]>\n"
      "<QBProject Title=\"A &amp; B\" b='&#10;'>\n\t<Topic Key=\"{1}\">text &lt;p&gt; <![CDATA[<x>]]> äö 日本</Topic>\n"
      "\t<!-- note --><?pi data?><Nodes><Node/><Node>&#x1F600;</Node></Nodes>\n</QBProject>\n";
  constexpr std::string_view pieces[] = {"<",  ">",   "&",    "\"", "]]>", "<![CDATA[",
                                         "&#", "-->", "<!--", "</", "<?",  "/>"};
  std::mt19937 random(20);
  for (int round = 0; round < 20'000; ++round) {
    auto text = seed;
    for (auto changes = 1 + random() % 5; changes > 0; --changes) {
      const auto at = random() % text.size();
      switch (random() % 4) {
        case 0: text[at] = static_cast<char>(random() % 256); break;
        case 1: text.erase(at, random() % 10); break;
        case 2: text.insert(at, pieces[random() % std::size(pieces)]); break;
        default: text.insert(at, text.substr(random() % text.size(), random() % 40)); break;
      }
      if (text.empty()) text = "<";
    }
    XMLDocument document;
    auto result = document.LoadXML(text);
    if (!result) {
      result.Locate(text);
      EXPECT_LE(result.offset, text.size());
      EXPECT_GE(result.line, 1U);
      EXPECT_EQ(document.DocumentElement().Name(), "");
      continue;
    }
    const auto written = document.ToString();
    EXPECT_TRUE(IsValidUtf8(written));
    XMLDocument again;
    ASSERT_TRUE(again.LoadXML(written)) << text << "\n" << written;
    EXPECT_EQ(again.ToString(), written) << text;
  }
}

}  // namespace
}  // namespace quillbook
