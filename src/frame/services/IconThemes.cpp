#include "frame/services/IconThemes.h"

#include <algorithm>
#include <deque>
#include <set>

#include "platform/KeyFile.h"
#include "quillbook/base/Text.h"
#include "quillbook/platform/Platform.h"

namespace quillbook::detail {
namespace {

constexpr const char* group = "Icon Theme";
constexpr const char* lastTheme = "hicolor";

bool IsThere(const std::string& path) {
  return Platform::Current().Files().GetStatus(path).exists;
}

/// The names of a list in a theme's file.
std::vector<std::string> Names(const std::string& list) {
  std::vector<std::string> names;
  for (const auto name : Split(list, ','))
    if (const auto trimmed = TrimBlanks(name); !trimmed.empty()) names.emplace_back(trimmed);
  return names;
}

}  // namespace

int IconThemes::Folder::DistanceFrom(int wanted) const noexcept {
  return wanted < smallest ? smallest - wanted : wanted > largest ? wanted - largest : 0;
}

IconThemes::IconThemes(const std::vector<std::string>& dataFolders, const std::string& theme) {
  std::deque<std::string> next{theme};
  std::set<std::string> seen{lastTheme};  // it comes behind all others, whoever inherits from it
  while (!next.empty()) {
    const auto name = next.front();
    next.pop_front();
    if (!seen.insert(name).second) continue;
    auto parents = Load(dataFolders, name);
    next.insert(next.begin(), parents.begin(), parents.end());  // a parent's parents come before the next parent
  }
  Load(dataFolders, lastTheme);
}

std::vector<std::string> IconThemes::Load(const std::vector<std::string>& dataFolders, const std::string& name) {
  Theme theme;
  KeyFile file({});
  for (const auto& dataFolder : dataFolders) {
    const auto place = dataFolder + "/icons/" + name;
    if (!IsThere(place)) continue;
    theme.places.push_back(place);
    if (file.IsEmpty()) file = KeyFile::Read(place + "/index.theme");
  }
  for (const auto& folder : Names(file.Value(group, "Directories"))) {
    const auto type = file.Value(folder, "Type");
    const int size = file.Number(folder, "Size", 0);
    if (size <= 0 || file.Number(folder, "Scale", 1) != 1) continue;
    // Icons of a size that can be told from others by the eye count as made for it.
    const int threshold = type == "Fixed" || type == "Scalable" ? 0 : file.Number(folder, "Threshold", 2);
    const bool scalable = type == "Scalable";
    theme.folders.push_back({folder, size, scalable ? file.Number(folder, "MinSize", size) : size - threshold,
                             scalable ? file.Number(folder, "MaxSize", size) : size + threshold});
  }
  if (!theme.folders.empty()) mThemes.push_back(std::move(theme));
  return Names(file.Value(group, "Inherits"));
}

std::string IconThemes::Theme::Find(const std::string& icon, int size) const {
  std::vector<const Folder*> nearest;
  for (const auto& folder : folders) nearest.push_back(&folder);
  std::stable_sort(nearest.begin(), nearest.end(), [&](const auto* left, const auto* right) {
    return left->DistanceFrom(size) < right->DistanceFrom(size);
  });
  for (const auto* folder : nearest)
    for (const auto& place : places)
      for (const char* ending : {".png", ".svg", ".xpm"})
        if (auto path = place + "/" + folder->name + "/" + icon + ending; IsThere(path)) return path;
  return {};
}

std::string IconThemes::Find(const std::vector<std::string>& names, int size) const {
  for (const auto& theme : mThemes)
    for (const auto& name : names)
      if (auto path = theme.Find(name, size); !path.empty()) return path;
  return {};
}

}  // namespace quillbook::detail
