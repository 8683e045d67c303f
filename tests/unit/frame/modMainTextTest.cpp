#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>

#include "quillbook/base/CodePage.h"
#include "quillbook/frame/modMain.h"

namespace quillbook {
namespace {

TEST(CreateGUID, HasBracesAndUpperCaseGroups) {
  const auto guid = modMain::CreateGUID();
  EXPECT_EQ(guid.size(), 38U);
  EXPECT_THAT(guid,
              testing::MatchesRegex(R"(\{[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}\})"));
}

TEST(CreateGUID, NeverRepeats) {
  std::set<std::string> seen;
  for (int i = 0; i < 10000; ++i) EXPECT_TRUE(seen.insert(modMain::CreateGUID()).second);
}

TEST(SafeFileName, ReplacesWhatNoFileNameMayHold) {
  EXPECT_EQ(modMain::SafeFileName("a:b*c"), "a-b c");
  EXPECT_EQ(modMain::SafeFileName(R"(\/:*?"<>|)"), "---  '  ;");
  EXPECT_EQ(modMain::SafeFileName("größe.v2"), "größe.v2");
}

TEST(StripQuotes, TakesOneQuoteAtEachEnd) {
  EXPECT_EQ(modMain::StripQuotes("\"a b\""), "a b");
  EXPECT_EQ(modMain::StripQuotes("\"a"), "a");
  EXPECT_EQ(modMain::StripQuotes("a\""), "a");
  EXPECT_EQ(modMain::StripQuotes("\"\"a\"\""), "\"a\"");
  EXPECT_EQ(modMain::StripQuotes("\""), "");
  EXPECT_EQ(modMain::StripQuotes(""), "");
}

TEST(RemoveEntities, DecodesPercentEscapes) {
  EXPECT_EQ(modMain::RemoveEntities("a%20b%2fc%2FD"), "a b/c/D");
  EXPECT_EQ(modMain::RemoveEntities("&nbsp;&#65;"), "&nbsp;&#65;");
  EXPECT_EQ(modMain::RemoveEntities(""), "");
}

TEST(RemoveEntities, DecodesADecodedPercentSignAgain) {
  EXPECT_EQ(modMain::RemoveEntities("%2541"), "A");
  EXPECT_EQ(modMain::RemoveEntities("%252541"), "A");
  EXPECT_EQ(modMain::RemoveEntities("x%254"), std::string("x") + '\x04');
}

TEST(RemoveEntities, ReadsAsMuchAsIsHexadecimal) {
  using namespace std::string_literals;
  EXPECT_EQ(modMain::RemoveEntities("%zzA"), "\0A"s);
  EXPECT_EQ(modMain::RemoveEntities("%4zA"), "\4A"s);
  EXPECT_EQ(modMain::RemoveEntities("a%"), "a\0"s);
  EXPECT_EQ(modMain::RemoveEntities("a%4"), "a\4"s);
  EXPECT_EQ(modMain::RemoveEntities("a%25"), "a\0"s);
  EXPECT_EQ(modMain::RemoveEntities("%\xC3\xA4\xC3\xB6x"), "\0x"s) << "a pair is two characters, not two bytes";
}

TEST(RemoveEntities, TakesCodesFromTheAnsiCodePage) {
  EXPECT_EQ(modMain::RemoveEntities("%80%e4"), "€ä");
  SetAnsiCodePage(1251);
  EXPECT_EQ(modMain::RemoveEntities("%e4"), "д");
  SetAnsiCodePage(CodePageWindows1252);
}

TEST(RemoveEntities, TakesLinearTime) {
  std::string source;
  for (int i = 0; i < 1000000; ++i) source += "%2525";
  const auto result = modMain::RemoveEntities(source);  // quadratic time would not end
  // Each "%2525" decodes to "%" and "%25" behind it takes two digits of the next one, and so on to the end.
  EXPECT_LT(result.size(), source.size());
  EXPECT_EQ(result.find('%'), std::string::npos);
}

TEST(GetLinkText, CutsTheBlankPage) {
  EXPECT_EQ(modMain::GetLinkText("about:blank#top"), "#top");
  EXPECT_EQ(modMain::GetLinkText("about:blank"), "");
  EXPECT_EQ(modMain::GetLinkText("About:blank#top"), "About:blank#top");
  EXPECT_EQ(modMain::GetLinkText("x.html"), "x.html");
}

TEST(IsFileURL, CountsEveryTextWithoutColon) {
  EXPECT_TRUE(modMain::IsFileURL("topics\\a.htm"));
  EXPECT_TRUE(modMain::IsFileURL(""));
  EXPECT_TRUE(modMain::IsFileURL("FILE://server/a"));
  EXPECT_FALSE(modMain::IsFileURL("http://a/b"));
  EXPECT_FALSE(modMain::IsFileURL("mailto:a"));
  EXPECT_FALSE(modMain::IsFileURL("c:\\a.htm"));
}

TEST(FileURLToFileName, GivesAWindowsPath) {
  EXPECT_EQ(modMain::FileURLToFileName("FILE:///c:/my%20help/a.htm"), "c:\\my help\\a.htm");
  EXPECT_EQ(modMain::FileURLToFileName("file://server/a.htm"), "server\\a.htm");
  EXPECT_EQ(modMain::FileURLToFileName("a/b.htm"), "a\\b.htm");
}

TEST(ReturnBody, TakesWhatTheBodyHolds) {
  EXPECT_EQ(modMain::ReturnBody("<html><BODY><p>x</p></BODY></html>"), "<p>x</p>");
  EXPECT_EQ(modMain::ReturnBody("<html><body class=\"a\">x</body></html>"), "x");
  EXPECT_EQ(modMain::ReturnBody("<body>a</body>b</BODY>"), "a</body>b") << "the last end tag counts";
  EXPECT_EQ(modMain::ReturnBody("<body>\r\n\r\nx\r\n\r\n</body>"), "\r\nx\r\n") << "one line break goes at each end";
  EXPECT_EQ(modMain::ReturnBody("<body><body >x</body>"), "<body >x") << "the bare tag is looked for first";
}

TEST(ReturnBody, TakesAllOfATextWithoutBody) {
  EXPECT_EQ(modMain::ReturnBody("\r\n<p>x</p>\r\n"), "<p>x</p>");
  EXPECT_EQ(modMain::ReturnBody("<body>x"), "<body>x");
  EXPECT_EQ(modMain::ReturnBody("x</body>"), "x</body>");
  EXPECT_EQ(modMain::ReturnBody(""), "");
}

TEST(ReturnBody, GivesTheDocumentBackWhereTheTagsAreOutOfOrder) {
  EXPECT_EQ(modMain::ReturnBody("\r\n</body>x<body>\r\n"), "\r\n</body>x<body>\r\n");
  EXPECT_EQ(modMain::ReturnBody("\r\n<body class</body>"), "\r\n<body class</body>");
}

}  // namespace
}  // namespace quillbook
