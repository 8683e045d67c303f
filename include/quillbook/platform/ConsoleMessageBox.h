// Message boxes of a program that runs in a terminal, or in none.
#pragma once

#include "quillbook/platform/MessageBox.h"

namespace quillbook {

/// Writes "Title: Prompt" to the error output. With a terminal on both ends it names the buttons and reads an answer;
/// without one it gives the safe answer at once. A check box is ticked by an "!" behind the answer.
class ConsoleMessageBox final : public MessageBox {
 public:
  /// The process's own input and error output.
  ConsoleMessageBox();
  /// `interactive` says whether somebody answers on `input`. Both descriptors stay the caller's.
  ConsoleMessageBox(int input, int output, bool interactive) noexcept
      : mInput(input), mOutput(output), mInteractive(interactive) {}

  int Show(std::string_view Prompt, int Buttons, std::string_view Title) override;
  int ShowWithCheckBox(std::string_view Prompt, int Buttons, std::string_view Title, std::string_view CheckBoxCaption,
                       bool& Checked) override;

 private:
  int Ask(int Buttons, std::string_view checkBoxCaption, bool& Checked);
  bool ReadLine(std::string& line) const;
  void Write(std::string_view text) const;

  int mInput;
  int mOutput;
  bool mInteractive;
};

}  // namespace quillbook
