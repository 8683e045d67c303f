// Questions and notices to the person at the machine.
#pragma once

#include <string>
#include <string_view>

namespace quillbook {

/// Shows a box with buttons and gives the number of the button answered.
class MessageBox {
 public:
  /// Numbers of the buttons. Frozen: they are stored as remembered answers.
  enum Answer : int { Ok = 1, Cancel = 2, Abort = 3, Retry = 4, Ignore = 5, Yes = 6, No = 7 };
  /// Sum of one of the first six, an icon and a default button; the bits of `Buttons`.
  enum Style : int {
    OkOnly = 0,
    OkCancel = 1,
    AbortRetryIgnore = 2,
    YesNoCancel = 3,
    YesNo = 4,
    RetryCancel = 5,
    Critical = 16,
    Question = 32,
    Exclamation = 48,
    Information = 64,
    DefaultSecond = 256,
    DefaultThird = 512,
  };

  MessageBox() = default;
  MessageBox(const MessageBox&) = delete;
  MessageBox& operator=(const MessageBox&) = delete;
  virtual ~MessageBox() = default;

  /// The number of the button answered: one of those that `Buttons` asks for.
  virtual int Show(std::string_view Prompt, int Buttons, std::string_view Title) = 0;
  /// As `Show`, with a check box beside the buttons. `Checked` tells whether it was ticked; a box that can't offer
  /// one leaves it False.
  virtual int ShowWithCheckBox(std::string_view Prompt, int Buttons, std::string_view Title,
                               std::string_view CheckBoxCaption, bool& Checked);

  /// True if a box with these buttons can be answered so.
  [[nodiscard]] static bool Offers(int Buttons, int Answer) noexcept;
  /// The answer that changes nothing: Cancel where there is one, else No, Abort or OK.
  [[nodiscard]] static int SafeAnswer(int Buttons) noexcept;
};

}  // namespace quillbook
