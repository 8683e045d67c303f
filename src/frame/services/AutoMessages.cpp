#include "quillbook/frame/services/AutoMessages.h"

#include <charconv>
#include <string>

#include "quillbook/base/Failure.h"
#include "quillbook/frame/services/RegistryHelper.h"
#include "quillbook/platform/Platform.h"

namespace quillbook {

namespace {

constexpr std::string_view messagesKey = "Software\\Corvane\\Quillbook2\\AutoMessages";

/// Who cancels wants to think again. Kept, that answer would take the operation away for good, without a word.
bool CanBeRemembered(int answer) noexcept {
  return answer != MessageBox::Cancel;
}

/// The answer kept under a name; 0 if there is none.
int RememberedAnswer(std::string_view messageName) {
  const auto text = RegistryHelper::GetValue(RegistryHelper::CurrentUser, messagesKey, messageName);
  int answer = 0;
  const auto end = std::from_chars(text.data(), text.data() + text.size(), answer).ptr;
  return end == text.data() + text.size() ? answer : 0;
}

void Remember(std::string_view messageName, int answer) {
  try {
    RegistryHelper::SetValue(RegistryHelper::CurrentUser, messagesKey, messageName, std::to_string(answer));
  } catch (const Failure&) {  // the answer holds all the same; the next time the box asks again
  }
}

}  // namespace

int AutoMessages::MsgBox(std::string_view Prompt, int Buttons, std::string_view Title, std::string_view MessageName,
                         std::string_view CheckBoxCaption) {
  const int remembered = RememberedAnswer(MessageName);
  if (CanBeRemembered(remembered) && MessageBox::Offers(Buttons, remembered)) return remembered;
  bool checked = false;
  const int answer = Platform::Current().Messages().ShowWithCheckBox(Prompt, Buttons, Title, CheckBoxCaption, checked);
  if (checked && CanBeRemembered(answer)) Remember(MessageName, answer);
  return answer;
}

}  // namespace quillbook
