#include "frame/documents/Address.h"

#include <algorithm>

#include "quillbook/base/Text.h"

namespace quillbook::html {

namespace {

constexpr bool IsLetter(char c) noexcept {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// Length of the scheme with its colon; 0 if there is none.
std::size_t SchemeLength(std::string_view address) noexcept {
  const auto colon = address.find_first_of(":/\\?#");
  if (colon == std::string_view::npos || address[colon] != ':' || !IsLetter(address[0])) return 0;
  const auto isPart = [](char c) { return IsLetter(c) || (c >= '0' && c <= '9') || c == '+' || c == '-' || c == '.'; };
  return std::all_of(address.begin(), address.begin() + static_cast<std::ptrdiff_t>(colon), isPart) ? colon + 1 : 0;
}

std::string_view Trimmed(std::string_view text) noexcept {
  const auto isBlank = [](char c) { return static_cast<unsigned char>(c) <= ' '; };
  while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
  return text;
}

/// The path of a reference with "/" only; query and fragment stay.
std::string WithSlashes(std::string_view reference) {
  std::string result(reference);
  const auto end = std::min(reference.find_first_of("?#"), reference.size());
  std::replace(result.begin(), result.begin() + static_cast<std::ptrdiff_t>(end), '\\', '/');
  return result;
}

/// Where the path begins: behind scheme and host.
std::size_t PathStart(std::string_view base) noexcept {
  auto at = SchemeLength(base);
  if (base.substr(at, 2) != "//") return at;
  return std::min(base.find('/', at + 2), base.size());
}

std::string FolderOf(std::string_view base) {
  const auto path = PathStart(base);
  const auto slash = base.find_last_of('/');
  if (slash == std::string_view::npos || slash < path) return std::string(base) + (path > 0 ? "/" : "");
  return std::string(base.substr(0, slash + 1));
}

}  // namespace

std::string Absolute(std::string_view base, std::string_view reference) {
  reference = Trimmed(reference);
  if (SchemeLength(reference) > 0) return std::string(reference);
  base = Trimmed(base);
  const bool isFragment = reference.starts_with('#');
  if (base.empty()) return isFragment ? "about:blank" + std::string(reference) : std::string(reference);
  base = base.substr(0, base.find('#'));
  if (reference.empty() || isFragment) return std::string(base).append(reference);
  base = base.substr(0, base.find('?'));
  if (reference.starts_with('?')) return std::string(base).append(reference);
  const auto path = WithSlashes(reference);
  if (path.starts_with("//")) return std::string(base.substr(0, SchemeLength(base))) + path;
  if (path.starts_with('/')) return std::string(base.substr(0, PathStart(base))) + path;
  return FolderOf(base) + path;
}

}  // namespace quillbook::html
