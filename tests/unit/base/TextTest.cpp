#include "quillbook/base/Text.h"

#include <gtest/gtest.h>

namespace quillbook {
namespace {

TEST(Text, EqualsIgnoringCase_FoldsSimply_InEveryScript) {
  EXPECT_TRUE(EqualsIgnoringCase("BodyText", "bodytext"));
  EXPECT_TRUE(EqualsIgnoringCase("\u00C9TUDE", "\u00E9tude"));
  EXPECT_TRUE(EqualsIgnoringCase("СПРАВКА", "справка"));
  EXPECT_TRUE(EqualsIgnoringCase("\u03A3", "\u03C2")) << "both sigmas";
  EXPECT_TRUE(EqualsIgnoringCase("\u212A", "k")) << "the Kelvin sign is three bytes long";
  EXPECT_TRUE(EqualsIgnoringCase({}, ""));
  EXPECT_FALSE(EqualsIgnoringCase("stra\u00DFe", "strasse")) << "folding keeps the number of characters";
  EXPECT_FALSE(EqualsIgnoringCase("I", "\u0131")) << "no Turkish rules";
  EXPECT_FALSE(EqualsIgnoringCase("a", "ab"));
  EXPECT_FALSE(EqualsIgnoringCase("a", std::string_view("a\0", 2)));
  EXPECT_FALSE(EqualsIgnoringCase("abcdefgh", "ABCDEFGHi"));
  EXPECT_FALSE(EqualsIgnoringCase("[", "{")) << "only letters have a case";
}

TEST(Text, CompareIgnoringCase_OrdersByFoldedCodePoints) {
  EXPECT_EQ(CompareIgnoringCase("ABC", "abc"), 0);
  EXPECT_LT(CompareIgnoringCase("a", "B"), 0);
  EXPECT_GT(CompareIgnoringCase("b", "A"), 0);
  EXPECT_LT(CompareIgnoringCase("ab", "abc"), 0);
  EXPECT_GT(CompareIgnoringCase("abc", "ab"), 0);
  EXPECT_LT(CompareIgnoringCase("z", "\u00E4"), 0);
  EXPECT_LT(CompareIgnoringCase("\uFFFD", "\U00010000"), 0) << "code points, not UTF-16 units";
}

TEST(Text, FoldedHash_IsEqualForEqualTexts) {
  EXPECT_EQ(FoldedHash("\u00C9tude K"), FoldedHash("\u00E9TUDE \u212A"));
  EXPECT_NE(FoldedHash("a"), FoldedHash("b"));
  // Characters of other lengths move what follows to other places of the eight bytes that are read at once.
  for (std::size_t before = 0; before < 20; ++before) {
    const auto head = std::string(before, 'X');
    EXPECT_EQ(FoldedHash(head + "KeySk@[`{ \u00C9 and more of it"),
              FoldedHash(head + "\u212AEY\u017F\u212A@[`{ \u00E9 AND MORE OF IT"));
    EXPECT_TRUE(EqualsIgnoringCase(head + "KeySk@[`{ \u00C9 and more of it",
                                   head + "\u212AEY\u017F\u212A@[`{ \u00E9 AND MORE OF IT"));
    EXPECT_FALSE(EqualsIgnoringCase(head + "@[`{ and more of it", head + "`{@[ and more of it"));
  }
  EXPECT_EQ(FoldedHash({}), FoldedHash(""));
}

TEST(Text, PrefixAndSuffix_MayDifferInLengthFromWhatTheyMatch) {
  EXPECT_TRUE(StartsWithIgnoringCase("FILE:///a", "file://"));
  EXPECT_FALSE(StartsWithIgnoringCase("file", "file:"));
  EXPECT_TRUE(StartsWithIgnoringCase("\u212Alm", "K"));
  EXPECT_TRUE(EndsWithIgnoringCase("a.HTM", ".htm"));
  EXPECT_TRUE(EndsWithIgnoringCase("273 \u212A", "k"));
  EXPECT_FALSE(EndsWithIgnoringCase("htm", ".htm"));
  EXPECT_TRUE(EndsWithIgnoringCase("a", ""));
}

TEST(Text, FindIgnoringCase_GivesTheFirstPlace) {
  constexpr auto none = std::string_view::npos;
  EXPECT_EQ(FindIgnoringCase("a <Body> <BODY>", "<body"), 2u);
  EXPECT_EQ(FindIgnoringCase("a <Body> <BODY>", "<body", 3), 9u);
  EXPECT_EQ(FindIgnoringCase("<b <bo", "<body"), none);
  EXPECT_EQ(FindIgnoringCase("x\u212A", "K"), 1u);
  EXPECT_EQ(FindIgnoringCase("x\u017F", "S"), 1u);
  EXPECT_EQ(FindIgnoringCase("\u00C9t\u00E9", "\u00E9", 1), 3u);
  EXPECT_EQ(FindIgnoringCase("abc", "", 2), 2u);
  EXPECT_EQ(FindIgnoringCase("abc", "c", 3), none);
  EXPECT_EQ(FindIgnoringCase("abc", "a", 9), none);
  EXPECT_EQ(FindIgnoringCase("", "a"), none);
}

TEST(Text, Case_IsMappedFully) {
  EXPECT_EQ(LowerCase("AbC"), "abc");
  EXPECT_EQ(LowerCase("\u00C9\u0130"), "\u00E9i\u0307");
  EXPECT_EQ(UpperCase("stra\u00DFe"), "STRASSE");
  EXPECT_EQ(FoldCase("\u00C9\u00DF"), "\u00E9\u00DF");
}

TEST(Text, ReplaceAll_DoesNotLookAtWhatItPutIn) {
  EXPECT_EQ(ReplaceAll("aaa", "a", "aa"), "aaaaaa");
  EXPECT_EQ(ReplaceAll("aaa", "aa", "b"), "ba");
  EXPECT_EQ(ReplaceAll("abc", "", "x"), "abc");
  EXPECT_EQ(ReplaceAll("abc", "b", ""), "ac");
  EXPECT_EQ(ReplaceAllIgnoringCase("\u212A-k-K", "K", "x"), "x-x-x");
  EXPECT_EQ(ReplaceAllIgnoringCase("AbAB", "ab", "AB"), "ABAB");
}

TEST(Text, TrimBlanks_CutsNothingButBlanks) {
  EXPECT_EQ(TrimBlanks("  a b "), "a b");
  EXPECT_EQ(TrimBlanks("\t a"), "\t a");
  EXPECT_EQ(TrimBlanks("   "), "");
}

TEST(Text, Split_KeepsEmptyParts) {
  EXPECT_EQ(Split("a||b|", '|'), (std::vector<std::string_view>{"a", "", "b", ""}));
  EXPECT_EQ(Split("", '|'), (std::vector<std::string_view>{""}));
}

TEST(Text, IsValidUtf8_RefusesWhatIsNoText) {
  EXPECT_TRUE(IsValidUtf8(""));
  EXPECT_TRUE(IsValidUtf8("plain text, longer than one block of eight \u20AC\U0001F600 \uFFFD"));
  for (const char* bad : {"\x80", "abc\xC3", "\xC0\xAF", "\xE0\x80\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xFF",
                          "a long line of text \xE2\x82"})
    EXPECT_FALSE(IsValidUtf8(bad)) << bad;
}

TEST(Text, NextCodePoint_TakesOneByteOfAMalformedSequence) {
  const std::string_view text = "\xE2\x82z";
  std::size_t position = 0;
  EXPECT_EQ(NextCodePoint(text, position), 0xFFFDu);
  EXPECT_EQ(position, 1u);
  EXPECT_EQ(NextCodePoint(text, position), 0xFFFDu);
  EXPECT_EQ(NextCodePoint(text, position), U'z');
  EXPECT_EQ(position, text.size());
}

TEST(Text, EveryCodePoint_ComesBack) {
  for (char32_t c = 0; c <= 0x10FFFF; ++c) {
    if (c >= 0xD800 && c <= 0xDFFF) continue;
    std::string text;
    AppendCodePoint(text, c);
    std::size_t position = 0;
    ASSERT_EQ(NextCodePoint(text, position), c);
    ASSERT_EQ(position, text.size());
    ASSERT_EQ(Utf16Length(text), c >= 0x10000 ? 2u : 1u);
  }
}

TEST(Text, AppendCodePoint_NeverWritesMalformedText) {
  for (const char32_t c : {0xD800u, 0xDFFFu, 0x110000u, 0xFFFFFFFFu}) {
    std::string text;
    AppendCodePoint(text, c);
    EXPECT_EQ(text, "\uFFFD");
  }
}

TEST(Text, Utf16Part_CountsUnits_AndCutsNoCharacter) {
  EXPECT_EQ(Utf16Part("abcdef", 2, 3), "cde");
  EXPECT_EQ(Utf16Part("abc", 2, 9), "c");
  EXPECT_EQ(Utf16Part("abc", 3, 1), "");
  EXPECT_EQ(Utf16Part("abc", 9, 1), "");
  EXPECT_EQ(Utf16Part("\u00E9\u20ACx", 1, 1), "\u20AC");
  EXPECT_EQ(Utf16Part("a\U0001F600b", 1, 2), "\U0001F600");
  EXPECT_EQ(Utf16Part("a\U0001F600b", 3, 1), "b");
  EXPECT_EQ(Utf16Part("a\U0001F600b", 0, 2), "a\U0001F600");
  EXPECT_EQ(Utf16Part("a\U0001F600b", 2, 1), "b");
}

TEST(Text, Utf16Bytes_ComeBack_AndOddOnesAreReplaced) {
  constexpr std::string_view text = "a\u20AC\U0001F600";
  const auto bytes = ToUtf16Bytes(text);
  EXPECT_EQ(bytes, std::string_view("a\0\xAC\x20\x3D\xD8\x00\xDE", 8));
  EXPECT_EQ(FromUtf16Bytes(bytes), text);
  EXPECT_EQ(FromUtf16Bytes(std::string_view("\0a\x20\xAC", 4), true), "a\u20AC");
  EXPECT_EQ(FromUtf16Bytes(std::string_view("\x3D\xD8z\0", 4)), "\uFFFDz") << "half a pair";
  EXPECT_EQ(FromUtf16Bytes(std::string_view("\x00\xDEz\0q", 5)), "\uFFFDz") << "and a byte too many";
}

}  // namespace
}  // namespace quillbook
