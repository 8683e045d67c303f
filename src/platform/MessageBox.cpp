#include "quillbook/platform/MessageBox.h"

#include <algorithm>

#include "platform/MessageButtons.h"

namespace quillbook {

int MessageBox::ShowWithCheckBox(std::string_view Prompt, int Buttons, std::string_view Title, std::string_view,
                                 bool& Checked) {
  Checked = false;
  return Show(Prompt, Buttons, Title);
}

bool MessageBox::Offers(int Buttons, int Answer) noexcept {
  const auto answers = detail::ButtonsOf(Buttons);
  return std::any_of(answers.begin(), answers.end(), [&](const auto& button) { return button.answer == Answer; });
}

int MessageBox::SafeAnswer(int Buttons) noexcept {
  for (const int answer : {Cancel, No, Abort})
    if (Offers(Buttons, answer)) return answer;
  return Ok;
}

}  // namespace quillbook
