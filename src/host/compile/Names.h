// How names inside compiled help compare.
#pragma once

#include <algorithm>
#include <cstdint>
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

[[nodiscard]] inline bool NameEquals(std::string_view left, std::string_view right) noexcept {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char a, char b) { return FoldName(a) == FoldName(b); });
}

/// The same for names that are equal.
[[nodiscard]] inline std::uint64_t HashOfName(std::string_view name) noexcept {
  std::uint64_t hash = 0xcbf29ce484222325ULL;
  for (const char c : name) hash = (hash ^ static_cast<unsigned char>(FoldName(c))) * 0x100000001b3ULL;
  return hash;
}

/// The order of directories.
[[nodiscard]] inline bool NameLess(std::string_view left, std::string_view right) {
  const auto less = [](char a, char b) {
    return static_cast<unsigned char>(FoldName(a)) < static_cast<unsigned char>(FoldName(b));
  };
  return std::lexicographical_compare(left.begin(), left.end(), right.begin(), right.end(), less);
}

}  // namespace quillbook::compile
