// Message boxes that can be answered once and for all.
#pragma once

#include <string_view>

namespace quillbook {

class AutoMessages {
 public:
  /// The answer remembered for `MessageName` if it is one that these buttons offer; else shows the box with a check
  /// box and, if that is ticked, remembers the answer under "Software\Corvane\Quillbook2\AutoMessages" of the current
  /// user. Cancel is neither remembered nor taken from what is remembered. An answer that can't be kept still counts
  /// this time.
  static int MsgBox(std::string_view Prompt, int Buttons, std::string_view Title, std::string_view MessageName,
                    std::string_view CheckBoxCaption);
};

}  // namespace quillbook
