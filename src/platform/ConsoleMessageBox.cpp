#include "quillbook/platform/ConsoleMessageBox.h"

#include <unistd.h>

#include <cerrno>

#include "platform/MessageButtons.h"
#include "quillbook/base/Text.h"

namespace quillbook {

namespace {

/// Prompts quote names from project files, and a terminal obeys control characters.
std::string ForTerminal(std::string_view text) {
  std::string result;
  for (const char c : text) {
    if (c == '\r') continue;
    const bool control = (static_cast<unsigned char>(c) < 0x20 && c != '\n' && c != '\t') || c == 0x7F;
    result += control ? '?' : c;
  }
  return result;
}

/// The one button whose name begins with the answer, ignoring case; 0 if there is none, or more than one.
int AnswerOf(std::string_view answer, int Buttons) {
  int found = 0;
  for (const auto& button : detail::ButtonsOf(Buttons)) {
    if (EqualsIgnoringCase(button.name, answer)) return button.answer;
    if (!StartsWithIgnoringCase(button.name, answer)) continue;
    if (found != 0) return 0;
    found = button.answer;
  }
  return found;
}

}  // namespace

ConsoleMessageBox::ConsoleMessageBox()
    : ConsoleMessageBox(STDIN_FILENO, STDERR_FILENO, ::isatty(STDIN_FILENO) != 0 && ::isatty(STDERR_FILENO) != 0) {}

int ConsoleMessageBox::Show(std::string_view Prompt, int Buttons, std::string_view Title) {
  bool checked = false;
  return ShowWithCheckBox(Prompt, Buttons, Title, {}, checked);
}

int ConsoleMessageBox::ShowWithCheckBox(std::string_view Prompt, int Buttons, std::string_view Title,
                                        std::string_view CheckBoxCaption, bool& Checked) {
  Checked = false;
  Write((Title.empty() ? std::string() : ForTerminal(Title) + ": ") + ForTerminal(Prompt) + "\n");
  const bool notice = detail::ButtonsOf(Buttons).size() == 1;  // there is nothing to wait for
  if (!mInteractive || notice) return SafeAnswer(Buttons);
  return Ask(Buttons, CheckBoxCaption, Checked);
}

int ConsoleMessageBox::Ask(int Buttons, std::string_view checkBoxCaption, bool& Checked) {
  const auto& standard = detail::DefaultButtonOf(Buttons);
  std::string question = "[";
  for (const auto& button : detail::ButtonsOf(Buttons)) question.append(button.name) += '/';
  question.back() = ']';
  if (!checkBoxCaption.empty()) question.append(" (with !: ").append(ForTerminal(checkBoxCaption)) += ')';
  question.append(" ").append(standard.name).append("? ");
  while (true) {
    Write(question);
    std::string line;
    if (!ReadLine(line)) return SafeAnswer(Buttons);
    auto answer = TrimBlanks(line);
    const bool ticked = !checkBoxCaption.empty() && answer.ends_with('!');
    if (ticked) answer = TrimBlanks(answer.substr(0, answer.size() - 1));
    const int button = answer.empty() ? standard.answer : AnswerOf(answer, Buttons);
    if (button == 0) continue;
    Checked = ticked;
    return button;
  }
}

bool ConsoleMessageBox::ReadLine(std::string& line) const {
  char c = 0;
  while (true) {
    const auto count = ::read(mInput, &c, 1);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return !line.empty();
    if (c == '\n') return true;
    if (c != '\r') line += c;
  }
}

void ConsoleMessageBox::Write(std::string_view text) const {
  while (!text.empty()) {
    const auto count = ::write(mOutput, text.data(), text.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return;  // nobody is there to be told
    text.remove_prefix(static_cast<std::size_t>(count));
  }
}

}  // namespace quillbook
