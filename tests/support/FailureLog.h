// Failures that the library reports while a test runs.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "quillbook/platform/Platform.h"
#include "support/ScriptedMessageBox.h"

namespace quillbook::support {

/// Takes the place of the message box for as long as it lives. Reports of failures come as "Module.Procedure number".
class FailureLog {
 public:
  /// The failures reported since the last call, in order.
  std::vector<std::string> Take() {
    std::vector<std::string> failures;
    for (const auto& box : std::exchange(mBox->shown, {}))
      failures.push_back(box.Title == "Application Error" ? Summary(box.Prompt) : box.Prompt);
    return failures;
  }
  /// What was shown, whatever it is.
  [[nodiscard]] std::vector<ScriptedMessageBox::Shown> TakeBoxes() { return std::exchange(mBox->shown, {}); }

 private:
  static std::string After(const std::string& text, std::string_view label) {
    const auto start = text.find(label) + label.size();
    return text.substr(start, text.find('\r', start) - start);
  }
  static std::string Summary(const std::string& prompt) {
    const auto number = prompt.rfind('(') + 1;
    return After(prompt, "Module: ") + "." + After(prompt, "Procedure: ") + " " +
           prompt.substr(number, prompt.rfind(')') - number);
  }

  std::shared_ptr<ScriptedMessageBox> mBox = std::make_shared<ScriptedMessageBox>();
  PlatformOverride<MessageBox> mOverride{mBox};
};

}  // namespace quillbook::support
