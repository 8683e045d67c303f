#include "platform/KeyFile.h"

#include <charconv>

#include "quillbook/base/Failure.h"
#include "quillbook/base/Text.h"
#include "quillbook/platform/Platform.h"

namespace quillbook::detail {
namespace {

std::string_view Trim(std::string_view text) {
  constexpr std::string_view white = " \t\r";
  const auto first = text.find_first_not_of(white);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(white) - first + 1);
}

}  // namespace

KeyFile::KeyFile(std::string_view text) {
  Keys* keys = nullptr;
  for (auto line : Split(text, '\n')) {
    line = Trim(line);
    if (line.starts_with('#')) continue;
    if (line.starts_with('[') && line.ends_with(']')) {
      keys = &mGroups[std::string(line.substr(1, line.size() - 2))];
      continue;
    }
    const auto equals = line.find('=');
    if (keys && equals != std::string_view::npos)
      (*keys)[std::string(Trim(line.substr(0, equals)))] = Trim(line.substr(equals + 1));
  }
}

KeyFile KeyFile::Read(const std::string& path) {
  const auto& files = Platform::Current().Files();
  try {
    if (files.GetStatus(path).exists) return KeyFile(files.ReadFile(path));
  } catch (const Failure&) {  // settings that can't be read are as good as missing
  }
  return KeyFile({});
}

std::string KeyFile::Value(std::string_view group, std::string_view key) const {
  const auto keys = mGroups.find(group);
  if (keys == mGroups.end()) return {};
  const auto value = keys->second.find(key);
  return value == keys->second.end() ? std::string() : value->second;
}

int KeyFile::Number(std::string_view group, std::string_view key, int otherwise) const {
  const auto text = Value(group, key);
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size() ? number : otherwise;
}

}  // namespace quillbook::detail
