// How names inside compiled help compare.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace quillbook::compile {

/// Readers of compiled help ignore the case of ASCII letters and take all other bytes as they are.
[[nodiscard]] constexpr char FoldName(char c) noexcept {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c;
}

[[nodiscard]] inline std::string FoldName(std::string_view name) {
  std::string folded(name);
  for (auto& c : folded) c = FoldName(c);
  return folded;
}

/// The order of directories.
[[nodiscard]] inline bool NameLess(std::string_view left, std::string_view right) {
  const auto less = [](char a, char b) {
    return static_cast<unsigned char>(FoldName(a)) < static_cast<unsigned char>(FoldName(b));
  };
  return std::lexicographical_compare(left.begin(), left.end(), right.begin(), right.end(), less);
}

}  // namespace quillbook::compile
