#include "frame/services/WindowsPath.h"

#include <algorithm>

#include "quillbook/base/Text.h"
#include "quillbook/platform/Platform.h"

namespace quillbook::detail {

namespace {

bool IsDriveLetter(char c) noexcept {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

/// Cuts the root off the front of `text`, which has "\" only.
std::string TakeRoot(std::string_view& text) {
  if (text.size() >= 2 && IsDriveLetter(text[0]) && text[1] == ':') {
    const auto drive = std::string(text.substr(0, 2));
    text.remove_prefix(2);
    return drive + "\\";
  }
  if (text.starts_with("\\\\") && text.size() > 2 && text[2] != '\\') {
    const auto serverEnd = std::min(text.find('\\', 2), text.size());
    const auto shareEnd = std::min(text.find('\\', std::min(serverEnd + 1, text.size())), text.size());
    const auto share = std::string(text.substr(0, shareEnd));
    text.remove_prefix(shareEnd);
    return share + "\\";
  }
  return text.starts_with('\\') ? "\\" : "";
}

/// The folder that stands for a drive.
std::optional<std::string> FolderOfDrive(char letter) {
  const auto folder = Platform::Current().Registry().GetValue(
      RegistryHive::CurrentUser, "Software\\Corvane\\Quillbook2\\Drives", std::string(1, letter));
  if (!folder || folder->empty()) return std::nullopt;
  auto native = WithSlashes(*folder);
  if (!native.ends_with('/')) native += '/';
  return native;
}

/// Behind the code point at `position` of well-formed text.
std::size_t AfterCodePoint(std::string_view text, std::size_t position) {
  static_cast<void>(NextCodePoint(text, position));
  return position;
}

}  // namespace

WindowsPath WindowsPath::Parse(std::string_view text) {
  const auto backslashed = WithBackslashes(text);
  std::string_view rest = backslashed;
  WindowsPath path;
  path.root = TakeRoot(rest);
  for (const auto name : Split(rest, '\\')) {
    path.isFolder = name.empty() || name == "." || name == "..";
    if (name == ".." && !path.names.empty() && path.names.back() != "..")
      path.names.pop_back();
    else if (!path.isFolder || (name == ".." && !path.IsAbsolute()))
      path.names.emplace_back(name);
  }
  return path;
}

std::string WindowsPath::Text() const {
  std::string text = root;
  for (const auto& name : names) (text += name) += '\\';
  if (text.empty()) return ".\\";
  if (!isFolder && !names.empty()) text.pop_back();
  return text;
}

std::string WithBackslashes(std::string_view text) {
  std::string result(text);
  std::replace(result.begin(), result.end(), '/', '\\');
  return result;
}

std::string WithSlashes(std::string_view text) {
  std::string result(text);
  std::replace(result.begin(), result.end(), '\\', '/');
  return result;
}

std::optional<std::string> ToNativePath(std::string_view text) {
  if (text.empty()) return std::nullopt;
  const auto path = WindowsPath::Parse(text);
  auto native = WithSlashes(path.Text());
  if (path.root.size() != 3 || path.root[1] != ':') return native;
  auto folder = FolderOfDrive(path.root[0]);
  if (!folder) return std::nullopt;
  return *folder + native.substr(path.root.size());
}

bool MatchesPattern(std::string_view name, std::string_view pattern) {
  if (pattern == "*.*") return true;
  const auto text = FoldCase(name);
  const auto wanted = FoldCase(pattern);
  std::size_t t = 0;
  std::size_t w = 0;
  std::size_t afterStar = std::string::npos;  // where to go on when what follows the last "*" doesn't match
  std::size_t starText = 0;
  while (t < text.size()) {
    if (w < wanted.size() && wanted[w] == '*') {
      afterStar = ++w;
      starText = t;
    } else if (w < wanted.size() && wanted[w] == '?') {
      ++w;
      t = AfterCodePoint(text, t);
    } else if (w < wanted.size() && wanted[w] == text[t]) {
      ++w;
      ++t;
    } else if (afterStar != std::string::npos) {
      w = afterStar;
      t = ++starText;
    } else {
      return false;
    }
  }
  return wanted.find_first_not_of('*', w) == std::string::npos;
}

}  // namespace quillbook::detail
