// The buttons of a message box in their order.
#pragma once

#include <span>
#include <string_view>

#include "quillbook/platform/MessageBox.h"

namespace quillbook::detail {

struct MessageButton {
  int answer;
  std::string_view name;
};

/// A kind that doesn't exist has the one button OK.
[[nodiscard]] inline std::span<const MessageButton> ButtonsOf(int style) noexcept {
  static constexpr MessageButton ok[] = {{MessageBox::Ok, "OK"}};
  static constexpr MessageButton okCancel[] = {{MessageBox::Ok, "OK"}, {MessageBox::Cancel, "Cancel"}};
  static constexpr MessageButton abortRetryIgnore[] = {
      {MessageBox::Abort, "Abort"}, {MessageBox::Retry, "Retry"}, {MessageBox::Ignore, "Ignore"}};
  static constexpr MessageButton yesNoCancel[] = {
      {MessageBox::Yes, "Yes"}, {MessageBox::No, "No"}, {MessageBox::Cancel, "Cancel"}};
  static constexpr MessageButton yesNo[] = {{MessageBox::Yes, "Yes"}, {MessageBox::No, "No"}};
  static constexpr MessageButton retryCancel[] = {{MessageBox::Retry, "Retry"}, {MessageBox::Cancel, "Cancel"}};
  switch (style & 0xF) {
    case MessageBox::OkCancel: return okCancel;
    case MessageBox::AbortRetryIgnore: return abortRetryIgnore;
    case MessageBox::YesNoCancel: return yesNoCancel;
    case MessageBox::YesNo: return yesNo;
    case MessageBox::RetryCancel: return retryCancel;
    default: return ok;
  }
}

[[nodiscard]] inline const MessageButton& DefaultButtonOf(int style) noexcept {
  const auto buttons = ButtonsOf(style);
  const auto number = static_cast<std::size_t>((style >> 8) & 3);
  return buttons[number < buttons.size() ? number : 0];
}

}  // namespace quillbook::detail
