#include "quillbook/base/CodePage.h"

#include <gtest/gtest.h>

#include <thread>

#include "quillbook/base/Failure.h"
#include "quillbook/base/Text.h"

namespace quillbook {
namespace {

constexpr int SingleByte[] = {874,  1250,  1251,  1252,  1253,  1254,  1255,  1256,  1257,
                              1258, 20866, 21866, 28591, 28592, 28595, 28597, 28599, 28605};
constexpr int DoubleByte[] = {932, 936, 949, 950, 20932, 54936};

TEST(CodePage, Windows1252_DecodesEveryByte_AsTheWebDoes) {
  constexpr std::string_view upper =
      "\u20AC\u0081\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152\u008D\u017D\u008F"
      "\u0090\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A\u0153\u009D\u017E\u0178";
  std::string bytes;
  for (int byte = 0x80; byte < 0xA0; ++byte) bytes += static_cast<char>(byte);
  EXPECT_EQ(DecodeCodePage(bytes, 1252), upper);
  EXPECT_EQ(EncodeCodePage(upper, 1252, Unmappable::QuestionMark), bytes);
  for (int byte = 0; byte < 256; ++byte) {
    if (byte >= 0x80 && byte < 0xA0) continue;
    std::string expected;
    AppendCodePoint(expected, static_cast<char32_t>(byte));
    EXPECT_EQ(DecodeCodePage(std::string(1, static_cast<char>(byte)), 1252), expected) << byte;
  }
}

TEST(CodePage, Ascii_IsTheSameInEveryCodePage_AlsoBesideOtherText) {
  std::string ascii;
  for (char c = 0; c < 0x7F; ++c) ascii += c;
  ascii += '\x7F';
  for (const auto& list : {std::vector<int>(std::begin(SingleByte), std::end(SingleByte)),
                           std::vector<int>(std::begin(DoubleByte), std::end(DoubleByte))})
    for (const int codePage : list) {
      EXPECT_EQ(DecodeCodePage(ascii, codePage), ascii) << codePage;
      EXPECT_EQ(EncodeCodePage(ascii + "\u2603", codePage, Unmappable::QuestionMark).substr(0, 128), ascii) << codePage;
      const auto decoded = DecodeCodePage(ascii + "\xC4\xC4", codePage);
      EXPECT_EQ(decoded.substr(0, 128), ascii) << codePage;
    }
}

TEST(CodePage, EveryMappedByte_ComesBack) {
  for (const int codePage : SingleByte)
    for (int byte = 0x80; byte < 256; ++byte) {
      const std::string bytes(1, static_cast<char>(byte));
      const auto text = DecodeCodePage(bytes, codePage);
      ASSERT_FALSE(text.empty()) << codePage << " " << byte;
      if (text == "\uFFFD") continue;
      EXPECT_EQ(EncodeCodePage(text, codePage, Unmappable::QuestionMark), bytes) << codePage;
    }
}

TEST(CodePage, TextOfEachScript_ComesBack) {
  const std::pair<int, std::string_view> samples[] = {{1250, "Příliš žluťoučký"},
                                                      {1251, "Справка"},
                                                      {1253, "Βοήθεια"},
                                                      {1254, "Yardım ğş"},
                                                      {1255, "עזרה"},
                                                      {1256, "مساعدة"},
                                                      {1257, "Žinynas ąčę"},
                                                      {1258, "Đỗ"},
                                                      {874, "ช่วยเหลือ"},
                                                      {932, "ヘルプ表示"},
                                                      {936, "帮助"},
                                                      {949, "도움말"},
                                                      {950, "說明"},
                                                      {20866, "Справка"},
                                                      {54936, "帮助𠀀😀"},
                                                      {65001, "all \u2603 😀"}};
  for (const auto& [codePage, text] : samples) {
    if (codePage == 1258) continue;
    const auto bytes = EncodeCodePage(text, codePage, Unmappable::QuestionMark);
    EXPECT_EQ(bytes.find('?'), std::string::npos) << codePage;
    EXPECT_EQ(DecodeCodePage(bytes, codePage), text) << codePage;
  }
  EXPECT_EQ(EncodeCodePage("ヘ", 932, Unmappable::QuestionMark), "\x83\x77");
  EXPECT_EQ(EncodeCodePage("帮", 936, Unmappable::QuestionMark), "\xB0\xEF");
  EXPECT_EQ(EncodeCodePage("Ж", 1251, Unmappable::QuestionMark), "\xC6");
}

TEST(CodePage, MissingCharacters_BecomeQuestionMarksOrReferences) {
  constexpr std::string_view text = "é Ж 😀 \u200D\u00AD";
  EXPECT_EQ(EncodeCodePage(text, 1252, Unmappable::QuestionMark), "\xE9 ? ? ?\xAD");
  EXPECT_EQ(EncodeCodePage(text, 1252, Unmappable::CharacterReference), "\xE9 &#1046; &#128512; &#8205;\xAD");
}

TEST(CodePage, LongText_IsNotCutAtABuffersEnd) {
  std::string text;
  std::string expected;
  for (int i = 0; i < 5'000; ++i) {
    text += "aЖ😀";
    expected += "a&#1046;&#128512;";
  }
  EXPECT_EQ(EncodeCodePage(text, 1252, Unmappable::CharacterReference), expected);
  EXPECT_EQ(DecodeCodePage(EncodeCodePage(text, 54936, Unmappable::QuestionMark), 54936), text);
}

TEST(CodePage, BytesWithoutMeaning_BecomeReplacementCharacters) {
  EXPECT_EQ(DecodeCodePage("a\xC3", 65001), "a\uFFFD");
  EXPECT_EQ(DecodeCodePage("\xFF\xFE z", 65001), "\uFFFD\uFFFD z");
  EXPECT_EQ(DecodeCodePage("a\x83", 932), "a\uFFFD") << "cut in the middle of a character";
  EXPECT_EQ(DecodeCodePage("\xD2", 1253), "\uFFFD");
  EXPECT_EQ(DecodeCodePage("\xFFz", 54936), "\uFFFDz");
}

TEST(CodePage, AFailedCharacter_DoesNotSpoilTheNextText) {
  (void)DecodeCodePage("\x83", 932);
  EXPECT_EQ(DecodeCodePage("\x83\x77", 932), "ヘ");
}

TEST(CodePage, MalformedText_IsEncodedAsReplacements) {
  EXPECT_EQ(EncodeCodePage("a\xFF", 65001, Unmappable::QuestionMark), "a\uFFFD");
  EXPECT_EQ(EncodeCodePage("a\xFF", 1252, Unmappable::CharacterReference), "a&#65533;");
}

TEST(CodePage, Unknown_Fails) {
  EXPECT_FALSE(IsKnownCodePage(1));
  EXPECT_THROW((void)DecodeCodePage("a", 1), Failure);
  EXPECT_THROW((void)EncodeCodePage("a", 0, Unmappable::QuestionMark), Failure);
  EXPECT_EQ(CharsetName(1), "");
}

TEST(CodePage, CharsetNames_GoBothWays) {
  EXPECT_EQ(CharsetName(65001), "utf-8");
  EXPECT_EQ(CharsetName(1252), "windows-1252");
  EXPECT_EQ(CharsetName(932), "shift_jis");
  EXPECT_EQ(CodePageFromCharset("UTF-8"), 65001);
  EXPECT_EQ(CodePageFromCharset(" Latin1 "), 28591);
  EXPECT_EQ(CodePageFromCharset("gb2312"), 936);
  EXPECT_EQ(CodePageFromCharset("klingon"), 0);
  for (const int codePage : SingleByte) EXPECT_EQ(CodePageFromCharset(CharsetName(codePage)), codePage);
  for (const int codePage : DoubleByte) EXPECT_EQ(CodePageFromCharset(CharsetName(codePage)), codePage);
}

TEST(CodePage, Threads_ConvertIndependently) {
  std::string results[4];
  std::thread threads[4];
  for (int i = 0; i < 4; ++i)
    threads[i] = std::thread([&result = results[i]] {
      for (int round = 0; round < 1'000; ++round) result = DecodeCodePage("\x83\x77", 932);
    });
  for (auto& thread : threads) thread.join();
  for (const auto& result : results) EXPECT_EQ(result, "ヘ");
}

TEST(CodePage, AnsiCodePage_Is1252_UntilAnotherIsSet) {
  EXPECT_EQ(AnsiCodePage(), 1252);
  SetAnsiCodePage(1251);
  EXPECT_EQ(AnsiCodePage(), 1251);
  SetAnsiCodePage(1252);
}

}  // namespace
}  // namespace quillbook
