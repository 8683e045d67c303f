#include "quillbook/platform/ConsoleMessageBox.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>
#include <iterator>

#include "support/TemporaryFolder.h"

namespace quillbook {
namespace {

/// A console whose person types `input`.
class Console {
 public:
  Console(const std::string& input, bool interactive) {
    mFolder.Write("in", input);
    mFolder.Write("out", "");
    mIn = ::open((mFolder / "in").c_str(), O_RDONLY);
    mOut = ::open((mFolder / "out").c_str(), O_WRONLY | O_APPEND);
    mInteractive = interactive;
  }
  ~Console() {
    ::close(mIn);
    ::close(mOut);
  }
  ConsoleMessageBox Box() const { return {mIn, mOut, mInteractive}; }
  std::string Output() const { return mFolder.Read("out"); }

 private:
  support::TemporaryFolder mFolder;
  int mIn = -1;
  int mOut = -1;
  bool mInteractive = false;
};

int AnswerTo(const std::string& input, int buttons) {
  const Console console(input, true);
  return console.Box().Show("Go on?", buttons, "Title");
}

TEST(ConsoleMessageBox, WithoutTerminal_GivesSafeAnswer) {
  const std::pair<int, int> cases[] = {
      {MessageBox::OkOnly, MessageBox::Ok},
      {MessageBox::OkCancel, MessageBox::Cancel},
      {MessageBox::YesNo, MessageBox::No},
      {MessageBox::YesNoCancel, MessageBox::Cancel},
      {MessageBox::RetryCancel, MessageBox::Cancel},
      {MessageBox::AbortRetryIgnore, MessageBox::Abort},
      {35, MessageBox::Cancel},
      {53, MessageBox::Cancel},
      {15, MessageBox::Ok},
  };
  for (const auto& [buttons, answer] : cases) {
    const Console console("Yes\n", false);
    EXPECT_EQ(console.Box().Show("Go on?", buttons, "Title"), answer) << buttons;
  }
}

TEST(ConsoleMessageBox, WithoutTerminal_WritesTitleAndPromptOnce) {
  const Console console("", false);
  console.Box().Show("The file is gone.", MessageBox::Exclamation, "Could not save");
  EXPECT_EQ(console.Output(), "Could not save: The file is gone.\n");
}

TEST(ConsoleMessageBox, EmptyTitle_IsLeftOut) {
  const Console console("", false);
  console.Box().Show("Cancelled", MessageBox::Information, "");
  EXPECT_EQ(console.Output(), "Cancelled\n");
}

TEST(ConsoleMessageBox, OnTerminal_NamesButtonsAndDefault) {
  const Console console("n\n", true);
  EXPECT_EQ(console.Box().Show("Go on?", MessageBox::YesNoCancel + MessageBox::DefaultSecond, "Title"), MessageBox::No);
  EXPECT_EQ(console.Output(), "Title: Go on?\n[Yes/No/Cancel] No? ");
}

TEST(ConsoleMessageBox, OnTerminal_TakesNamesAndTheirBeginnings) {
  EXPECT_EQ(AnswerTo("yes\n", MessageBox::YesNo), MessageBox::Yes);
  EXPECT_EQ(AnswerTo(" NO \r\n", MessageBox::YesNo), MessageBox::No);
  EXPECT_EQ(AnswerTo("c\n", MessageBox::OkCancel), MessageBox::Cancel);
  EXPECT_EQ(AnswerTo("i", MessageBox::AbortRetryIgnore), MessageBox::Ignore);
}

TEST(ConsoleMessageBox, OnTerminal_EmptyLineTakesDefault) {
  EXPECT_EQ(AnswerTo("\n", MessageBox::YesNoCancel), MessageBox::Yes);
  EXPECT_EQ(AnswerTo("\n", MessageBox::YesNoCancel + MessageBox::DefaultThird), MessageBox::Cancel);
  EXPECT_EQ(AnswerTo("\n", MessageBox::YesNo + MessageBox::DefaultThird), MessageBox::Yes);
}

TEST(ConsoleMessageBox, OnTerminal_AsksAgainUntilAnswerFits) {
  EXPECT_EQ(AnswerTo("maybe\ncancel\nno\n", MessageBox::YesNo), MessageBox::No);
}

TEST(ConsoleMessageBox, OnTerminal_EndOfInputGivesSafeAnswer) {
  EXPECT_EQ(AnswerTo("", MessageBox::YesNo), MessageBox::No);
  EXPECT_EQ(AnswerTo("what\n", MessageBox::OkCancel), MessageBox::Cancel);
}

TEST(ConsoleMessageBox, NoticeDoesNotWait) {
  const Console console("left alone\n", true);
  EXPECT_EQ(console.Box().Show("Done.", MessageBox::OkOnly, ""), MessageBox::Ok);
  EXPECT_EQ(console.Output(), "Done.\n");
}

TEST(ConsoleMessageBox, CheckBox_IsTickedByMark) {
  const Console console("yes!\nyes\n", true);
  auto box = console.Box();
  bool checked = false;
  EXPECT_EQ(box.ShowWithCheckBox("Delete?", MessageBox::YesNo, "", "Always", checked), MessageBox::Yes);
  EXPECT_TRUE(checked);
  EXPECT_EQ(box.ShowWithCheckBox("Delete?", MessageBox::YesNo, "", "Always", checked), MessageBox::Yes);
  EXPECT_FALSE(checked);
}

TEST(ConsoleMessageBox, ControlCharactersDoNotReachTheTerminal) {
  const Console console("", false);
  console.Box().Show("a\x1b[2Jb\r\nc", MessageBox::OkOnly, "t\ai");
  EXPECT_EQ(console.Output(), "t?i: a?[2Jb\nc\n");
}

TEST(MessageBox, OffersExactlyTheButtonsOfItsKind) {
  EXPECT_TRUE(MessageBox::Offers(35, MessageBox::Yes));
  EXPECT_TRUE(MessageBox::Offers(35, MessageBox::Cancel));
  EXPECT_FALSE(MessageBox::Offers(35, MessageBox::Ok));
  EXPECT_FALSE(MessageBox::Offers(MessageBox::YesNo, MessageBox::Cancel));
  EXPECT_FALSE(MessageBox::Offers(MessageBox::YesNo, 0));
}

}  // namespace
}  // namespace quillbook
