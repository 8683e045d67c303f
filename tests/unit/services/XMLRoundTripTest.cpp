#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "quillbook/base/Text.h"
#include "quillbook/frame/services/XMLDocument.h"

namespace quillbook {
namespace {

/// A document with the text as attribute, as text of a leaf, and beside another element.
std::string Write(std::string_view text) {
  XMLDocument document;
  auto root = document.DocumentElement();
  root.SetName("Project");
  root.AddChild("Topic", text).AddAttribute("Value", text);
  root.AddChild("Other").AddChild("Inner", text);
  return document.ToString();
}

void ExpectComesBack(const std::string& text) {
  const auto written = Write(text);
  EXPECT_TRUE(IsValidUtf8(written));
  XMLDocument document;
  const auto result = document.LoadXML(written);
  ASSERT_TRUE(result) << result.message << "\n" << written;
  auto child = document.DocumentElement().ChildElements().begin();
  EXPECT_EQ((*child).Text(), text);
  EXPECT_EQ((*child).Attributes().Item("Value").Value(), text);
  const auto other = *++child;
  EXPECT_EQ(other.Text(), "");
  EXPECT_EQ((*other.ChildElements().begin()).Text(), text);
  EXPECT_EQ(document.ToString(), written);
}

TEST(XMLRoundTrip, NastyTexts) {
  const std::string texts[] = {
      "",
      " ",
      "  \r\n",
      "\n",
      "\r",
      "\t",
      " lead and trail ",
      "<p>a &amp; b</p>\r\n<p class=\"x\">c</p>",
      "]]>",
      "<![CDATA[x]]>",
      "<!-- no comment -->",
      "&#13;&lt;&unknown; & alone",
      "'\"'\"",
      "\x01\x02\x08\x0B\x0C\x0E\x1F\x7F",
      "\xC2\x80\xC2\x9F\xC2\xA0",
      "äöü ß – €",
      "日本語テキスト",
      "😀\xF0\x90\x80\x80\xF4\x8F\xBF\xBF",
      "\xEF\xBF\xBE\xEF\xBF\xBF\xEF\xBF\xBD\xEF\xBB\xBF",
      "\xE1\x80\x80\xED\x9F\xBF\xEE\x80\x80",
  };
  for (const auto& text : texts) ExpectComesBack(text);
}

TEST(XMLRoundTrip, EveryCharacterAlone) {
  for (char32_t c = 1; c < 0x3000; ++c) {
    std::string text;
    AppendCodePoint(text, c);
    ExpectComesBack("a" + text);
  }
}

TEST(XMLRoundTrip, SpecialCharactersAtEveryPlaceOfABlock) {
  for (const std::string special : {"<", "&", "\r", "\x01", "ä", "日", "😀", "\xEF\xBF\xBF"})
    for (std::size_t before = 0; before < 40; ++before)
      ExpectComesBack(std::string(before, 'x') + special + std::string(20, 'y'));
}

TEST(XMLRoundTrip, LargeText) {
  std::string text;
  while (text.size() < (1U << 20)) text += "<p>line äöü &nbsp; 日本</p>\r\n\t";
  ExpectComesBack(text);
}

TEST(XMLRoundTrip, RandomTexts) {
  std::mt19937 random(4);
  constexpr char32_t characters[] = {' ',  '\n', '\r', '\t',   '<',    '>',    '&',    '"',     ']',      'a',
                                     0x01, 0x7F, 0xE4, 0x20AC, 0x65E5, 0xFFFE, 0xFFFD, 0x1F600, 0x10FFFF, ';'};
  for (int round = 0; round < 3000; ++round) {
    std::string text;
    for (auto length = random() % 60; length > 0; --length)
      AppendCodePoint(text, characters[random() % std::size(characters)]);
    ExpectComesBack(text);
  }
}

TEST(XMLRoundTrip, MalformedBytes_AreWrittenAsReplacementCharacters) {
  const std::pair<std::string, std::string> cases[] = {
      {"a\xFF"
       "b",
       "a\uFFFDb"},
      {"\xC3", "\uFFFD"},
      {"\xE6\x97", "\uFFFD\uFFFD"},
      {"\xED\xA0\x80", "\uFFFD\uFFFD\uFFFD"},
      {"\xF4\x90\x80\x80", "\uFFFD\uFFFD\uFFFD\uFFFD"},
      {"\xC0\xAF", "\uFFFD\uFFFD"},
      {"日\x80本", "日\uFFFD本"},
      {"\xE0\x80\x80", "\uFFFD\uFFFD\uFFFD"},
      {"\xF0\x80\x80\x80", "\uFFFD\uFFFD\uFFFD\uFFFD"},
  };
  for (const auto& [malformed, expected] : cases) {
    XMLDocument document;
    ASSERT_TRUE(document.LoadXML(Write(malformed)));
    EXPECT_EQ((*document.DocumentElement().ChildElements().begin()).Text(), expected);
  }
}

TEST(XMLRoundTrip, SaveAfterSave_IsTheSame) {
  XMLDocument document;
  ASSERT_TRUE(document.LoadXML("<r>\n<a> x </a><b>  </b>\r\n<m>t<i/> </m></r>"));
  const auto once = document.ToString();
  EXPECT_EQ(document.ToString(), once);
  XMLDocument again;
  ASSERT_TRUE(again.LoadXML(once));
  EXPECT_EQ(again.ToString(), once);
}

}  // namespace
}  // namespace quillbook
