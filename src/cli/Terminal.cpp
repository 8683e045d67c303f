#include "cli/Terminal.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace quillbook::cli {
namespace {

constexpr std::size_t kProgressWidth = 79;
constexpr auto kProgressInterval = std::chrono::milliseconds(50);

bool ErrorsGoToTerminal() {
  const char* term = std::getenv("TERM");
  return isatty(STDERR_FILENO) == 1 && std::string_view(term ? term : "") != "dumb";
}

bool WantsColours() {
  const char* noColour = std::getenv("NO_COLOR");
  return ErrorsGoToTerminal() && (!noColour || !*noColour);
}

void WriteError(std::string_view text) {
  std::fwrite(text.data(), 1, text.size(), stderr);
}

std::string Label(std::string_view name, std::string_view colour) {
  return WantsColours() ? std::string("\033[").append(colour).append("m").append(name).append("\033[0m")
                        : std::string(name);
}

/// At most `width` bytes, never ending inside a character.
std::string_view Cut(std::string_view text, std::size_t width) {
  if (text.size() <= width) return text;
  while (width > 0 && (static_cast<unsigned char>(text[width]) & 0xC0) == 0x80) --width;
  return text.substr(0, width);
}

}  // namespace

Terminal::Terminal(bool quiet) : mQuiet(quiet), mShowProgress(!quiet && ErrorsGoToTerminal()) {}

void Terminal::PrintError(std::string_view what, std::string_view remedy) {
  std::string line = Label("quillbook:", "1;31");
  line.append(" ").append(OneLine(what));
  if (!remedy.empty()) line.append("; ").append(OneLine(remedy));
  WriteError(line + "\n");
}

void Terminal::Error(std::string_view what, std::string_view remedy) {
  ClearProgress();
  PrintError(what, remedy);
}

void Terminal::Warning(std::string_view what) {
  if (mQuiet) return;
  ClearProgress();
  WriteError(Label("quillbook: warning:", "1;33") + " " + OneLine(what) + "\n");
}

void Terminal::Progress(std::string_view what) {
  if (!mShowProgress) return;
  const auto now = std::chrono::steady_clock::now();
  if (mProgressShown && now - mLastProgress < kProgressInterval) return;
  mLastProgress = now;
  mProgressShown = true;
  WriteError(std::string("\r\033[K").append(Cut(OneLine(what), kProgressWidth)));
}

void Terminal::ClearProgress() {
  if (mProgressShown) WriteError("\r\033[K");
  mProgressShown = false;
}

bool PrintOutput(std::string_view text) {
  if (std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0) return true;
  // Whoever closed the pipe doesn't want to read more.
  if (errno != EPIPE)
    Terminal::PrintError(std::string("standard output: ") + std::strerror(errno), "the report is not complete");
  return false;
}

std::string OneLine(std::string_view message) {
  std::string line;
  line.reserve(message.size());
  for (const char c : message) {
    const bool blank = static_cast<unsigned char>(c) < ' ' || c == '\x7f';  // also keeps escapes from the terminal
    if (!blank)
      line += c == '\\' ? '/' : c;
    else if (!line.empty() && line.back() != ' ')
      line += ' ';
  }
  while (!line.empty() && line.back() == ' ') line.pop_back();
  return line;
}

}  // namespace quillbook::cli
