#include "host/OutputName.h"

#include <vector>

namespace quillbook::detail {

std::string ExpandOutputName(std::string_view pattern, const Object& item) {
  std::string name;
  for (;;) {
    const auto open = pattern.find('{');
    const auto close = open == std::string_view::npos ? open : pattern.find('}', open);
    if (close == std::string_view::npos) return name.append(pattern);
    name.append(pattern.substr(0, open));
    name += item.Member(pattern.substr(open + 1, close - open - 1)).ToText();
    pattern.remove_prefix(close + 1);
  }
}

std::optional<std::string> ContainedPath(std::string_view path) {
  const auto isSeparator = [](char c) { return c == '/' || c == '\\'; };
  if (path.empty() || isSeparator(path.front()) || isSeparator(path.back()) ||
      path.find('\0') != std::string_view::npos)
    return std::nullopt;
  if (path.size() > 1 && path[1] == ':') return std::nullopt;  // on a drive
  std::vector<std::string_view> names;
  while (!path.empty()) {
    const auto end = path.find_first_of("/\\");
    const auto name = path.substr(0, end);
    if (name == "..") {
      if (names.empty()) return std::nullopt;
      names.pop_back();
    } else if (!name.empty() && name != ".") {
      names.push_back(name);
    }
    path.remove_prefix(end == std::string_view::npos ? path.size() : end + 1);
  }
  if (names.empty()) return std::nullopt;
  std::string contained;
  for (const auto name : names) {
    if (!contained.empty()) contained += '/';
    contained += name;
  }
  return contained;
}

std::string ItemCaption(const Ref<Object>& item) {
  if (!item) return "";
  for (const auto* member : {"Title", "Name", "QualifiedName", "NameWithExtension"}) {
    if (!item->HasMember(member)) continue;
    const auto value = item->Member(member);
    if (value.GetKind() == Variant::Kind::Text && !value.ToText().empty()) return value.ToText();
  }
  return std::string(item->TypeName());
}

}  // namespace quillbook::detail
