#include "generation/TextPasses.h"

#include <gtest/gtest.h>

#include "quillbook/base/Failure.h"

namespace quillbook::textpasses {
namespace {

TEST(ParseForAnchor, LeavesSignsThatAreNoReference) {
  EXPECT_EQ(ParseForAnchor("100%"), "100%");
  EXPECT_EQ(ParseForAnchor("50% of 60%"), "50% of 60%");
  EXPECT_EQ(ParseForAnchor("%a~b"), "%a~b");
  EXPECT_EQ(ParseForAnchor("%a<b>~%"), "%a<b>~%");
  EXPECT_EQ(ParseForAnchor("%a\"~%"), "%a\"~%");
}

TEST(ParseForAnchor, CaptionIsTextBehindLastTilde) {
  EXPECT_EQ(ParseForAnchor("see %a~b~c% now"), "see <a href=\"a~b~c.html\">c</a> now");
}

TEST(ParseForAnchor, CaptionBeforeColonWins) {
  EXPECT_EQ(ParseForAnchor("%Go there:a~b%"), "<a href=\"a~b.html\">Go there</a>");
  EXPECT_EQ(ParseForAnchor("%:page%"), "<a href=\"page.html\">page</a>");
}

TEST(ParseForAnchor, EmptyTargetGivesNothing) {
  EXPECT_EQ(ParseForAnchor("a%caption:%b"), "ab");
}

TEST(ParseForAnchor, EscapedSignsAreNoReference) {
  EXPECT_EQ(ParseForAnchor("/%a~b/%"), "/%a~b/%");
  EXPECT_EQ(ParseForAnchor("%a~/%b%"), "<a href=\"a~/%b.html\">/%b</a>");
}

TEST(ParseForAnchor, SecondSignOfNoReferenceMayOpenTheNext) {
  EXPECT_EQ(ParseForAnchor("50% of %a~b%"), "50% of <a href=\"a~b.html\">b</a>");
}

TEST(ParseForAnchor, ReferencesTouchEachOther) {
  EXPECT_EQ(ParseForAnchor("%a~b%%c~d%"), "<a href=\"a~b.html\">b</a><a href=\"c~d.html\">d</a>");
}

/// Passes with a glossary of one term, "api".
std::string WithGlossary(std::string_view text) {
  std::string result;
  ParseForGlossaryItems(text, result, [](std::string& term) -> std::string {
    std::string caption = term;
    if (term.find(':') != std::string::npos) {
      caption = BeforeColon(term);
      term = std::string(AfterColon(term));
    }
    if (term == "unknown element") return "!UNCRECOGNISED ELEMENT 'x'!";
    return term == "api" ? "[" + caption + "]" : term;
  });
  return result;
}

TEST(ParseForGlossaryItems, ReplacesWhatTheResolverAnswers) {
  EXPECT_EQ(WithGlossary("An $$api$$ and $$The interface:api$$."), "An [api] and [The interface].");
  EXPECT_EQ(WithGlossary("$$unknown$$ $$See:unknown$$"), "unknown unknown");
}

TEST(ParseForGlossaryItems, ReferenceWithoutEndStays) {
  EXPECT_EQ(WithGlossary("$$api"), "$$api");
  EXPECT_EQ(WithGlossary("$$api$$ $$"), "[api] $$");
}

TEST(ParseForGlossaryItems, LineBreakInsideTermIsRemoved) {
  EXPECT_EQ(WithGlossary("$$a\r\npi$$"), "[api]");
}

TEST(ParseForGlossaryItems, SlashBeforeOpeningSignKeepsTheText) {
  EXPECT_EQ(WithGlossary("/$$api$$ $$api$$"), "/$$api$$ [api]");
}

TEST(ParseForGlossaryItems, SecondEscapeTestLooksFromTheStartOfTheText) {
  EXPECT_EQ(WithGlossary("<b/>$$api$$"), "<b/>$$api$$");  // "api" has three characters, and the third of all is "/"
  EXPECT_EQ(WithGlossary("<bb/>$$api$$"), "<bb/>[api]");
}

TEST(ParseForGlossaryItems, MarkOfUnknownElementKeepsTheTerm) {
  EXPECT_EQ(WithGlossary("$$caption:unknown element$$"), "$$unknown element$$");
}

TEST(ParseForGlossaryItems, PositionBehindSixteenBitsFails) {
  const std::string last(32766, 'x');
  EXPECT_EQ(WithGlossary(last + "$$api$$"), last + "[api]");
  std::string result;
  const auto keep = [](std::string& term) { return term; };
  EXPECT_THROW(ParseForGlossaryItems(last + "x$$api$$", result, keep), Failure);
  EXPECT_THROW(ParseForGlossaryItems("$$x" + last + "$$", result, keep), Failure);
}

TEST(ParseForGlossaryItems, PositionsCountUtf16Units) {
  std::string text;
  for (int i = 0; i < 20000; ++i) text += "\u00e9";  // 40,000 bytes, 20,000 units
  EXPECT_EQ(WithGlossary(text + "$$api$$"), text + "[api]");
  text.clear();
  for (int i = 0; i < 16384; ++i) text += "\U0001F600";  // 32,768 units
  std::string result;
  EXPECT_THROW(ParseForGlossaryItems(text + "$$api$$", result, [](std::string& term) { return term; }), Failure);
}

TEST(ParseForGlossaryItems, FailureLeavesWhatWasDone) {
  std::string result;
  try {
    ParseForGlossaryItems("$$a$$" + std::string(32767, 'x') + "$$b$$", result,
                          [](std::string& term) { return "<" + term + ">"; });
    FAIL() << "must not come here";
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.Number(), FailureNumber::Overflow);
  }
  EXPECT_EQ(result, "<a>");
}

}  // namespace
}  // namespace quillbook::textpasses
