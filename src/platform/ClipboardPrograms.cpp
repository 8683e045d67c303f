#include "platform/ClipboardPrograms.h"

#include <cstdlib>
#include <vector>

#include "platform/Programs.h"

namespace quillbook::detail {
namespace {

/// A program with its parameters; the MIME type comes behind them.
struct Command {
  const char* program;
  std::vector<std::string> parameters;
};

/// How a display's clipboard is reached. Of the programs that a distribution offers, only those stand here that take
/// data of any type.
struct Display {
  const char* variable;  ///< of the environment; set where there is such a display
  Command copy;
  Command paste;
};

const std::vector<Display>& Displays() {
  static const std::vector<Display> displays = {
      {"WAYLAND_DISPLAY", {"wl-copy", {"--type"}}, {"wl-paste", {"--no-newline", "--type"}}},
      {"DISPLAY",
       {"xclip", {"-in", "-selection", "clipboard", "-target"}},
       {"xclip", {"-out", "-selection", "clipboard", "-target"}}},
  };
  return displays;
}

bool IsThere(const Display& display) {
  const char* value = std::getenv(display.variable);
  return value && *value != '\0';
}

/// Runs the command of the first display that is there and has its program.
std::optional<std::string> RunFor(Command Display::*command, const std::string& mimeType, std::string_view input,
                                  std::chrono::milliseconds patience) {
  for (const auto& display : Displays()) {
    const auto& [name, parameters] = display.*command;
    const auto program = IsThere(display) ? FindProgram(name) : std::string();
    if (program.empty()) continue;
    auto all = parameters;
    all.push_back(mimeType);
    return RunProgram(program, all, input, patience);
  }
  return std::nullopt;
}

}  // namespace

bool CopyToClipboard(const std::string& mimeType, std::string_view bytes, std::chrono::milliseconds patience) {
  return RunFor(&Display::copy, mimeType, bytes, patience).has_value();
}

std::optional<std::string> PasteFromClipboard(const std::string& mimeType, std::chrono::milliseconds patience) {
  return RunFor(&Display::paste, mimeType, {}, patience);
}

}  // namespace quillbook::detail
