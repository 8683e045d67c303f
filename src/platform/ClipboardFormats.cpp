#include "platform/ClipboardFormats.h"

#include <mutex>
#include <unordered_map>
#include <vector>

#include "quillbook/base/Text.h"

namespace quillbook::detail {
namespace {

constexpr int firstNumber = 0xC000;  // where registered formats begin
constexpr int lastNumber = 0xFFFF;

struct Formats {
  std::mutex mutex;
  std::unordered_map<std::string, int> numbers;  ///< by folded name
  std::vector<std::string> names;                ///< in the order of their numbers
};

Formats& AllFormats() {
  static Formats formats;
  return formats;
}

}  // namespace

int ClipboardFormatNumber(std::string_view name) {
  name = name.substr(0, name.find('\0'));
  if (name.empty()) return 0;
  auto& formats = AllFormats();
  const std::lock_guard guard(formats.mutex);
  const int next = firstNumber + static_cast<int>(formats.names.size());
  const auto known = formats.numbers.find(FoldCase(name));
  if (known != formats.numbers.end()) return known->second;
  if (next > lastNumber) return 0;
  formats.names.emplace_back(name);
  formats.numbers.emplace(FoldCase(name), next);
  return next;
}

std::string ClipboardFormatName(int number) {
  auto& formats = AllFormats();
  const std::lock_guard guard(formats.mutex);
  const auto index = static_cast<std::size_t>(number - firstNumber);
  return number >= firstNumber && index < formats.names.size() ? formats.names[index] : std::string();
}

}  // namespace quillbook::detail
