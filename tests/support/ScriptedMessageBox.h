// A message box that records what it is asked and answers from a script.
#pragma once

#include <deque>
#include <string>
#include <vector>

#include "quillbook/platform/MessageBox.h"

namespace quillbook::support {

/// Answers in the order of `answers`; with none left it gives the safe answer.
class ScriptedMessageBox final : public MessageBox {
 public:
  struct Shown {
    std::string Prompt;
    int Buttons = 0;
    std::string Title;
    std::string CheckBoxCaption;
    bool operator==(const Shown&) const = default;
  };

  explicit ScriptedMessageBox(std::deque<int> script = {}) : answers(std::move(script)) {}

  int Show(std::string_view Prompt, int Buttons, std::string_view Title) override {
    shown.push_back({std::string(Prompt), Buttons, std::string(Title), {}});
    return Next(Buttons);
  }
  int ShowWithCheckBox(std::string_view Prompt, int Buttons, std::string_view Title, std::string_view CheckBoxCaption,
                       bool& Checked) override {
    shown.push_back({std::string(Prompt), Buttons, std::string(Title), std::string(CheckBoxCaption)});
    Checked = tickCheckBox;
    return Next(Buttons);
  }

  std::deque<int> answers;
  bool tickCheckBox = false;
  std::vector<Shown> shown;

 private:
  int Next(int Buttons) {
    if (answers.empty()) return SafeAnswer(Buttons);
    const int answer = answers.front();
    answers.pop_front();
    return answer;
  }
};

}  // namespace quillbook::support
