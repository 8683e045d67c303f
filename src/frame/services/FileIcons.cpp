#include "frame/services/FileIcons.h"

#include "quillbook/base/Failure.h"
#include "quillbook/base/Text.h"
#include "quillbook/platform/Platform.h"

namespace quillbook::detail {
namespace {

constexpr const char* folderType = "inode/directory";
constexpr const char* unknownType = "application/octet-stream";

/// The theme that desktops without settings come with.
std::string ThemeOf(const Desktop& desktop) {
  const auto theme = desktop.IconTheme();
  return theme.empty() ? "Adwaita" : theme;
}

std::string GenericName(std::string_view name, bool isFolder) {
  if (isFolder) return "Folder";
  const auto point = name.rfind('.');
  const bool hasEnding = point != std::string_view::npos && point + 1 < name.size();
  return hasEnding ? UpperCase(name.substr(point + 1)) + " file" : "File";
}

/// The text up to its first NUL, without blanks around it.
std::string Shown(std::string_view typeName) {
  return std::string(TrimBlanks(typeName.substr(0, typeName.find('\0'))));
}

}  // namespace

FileIcons::FileIcons(const Desktop& desktop)
    : mLanguages(desktop.Languages()),
      mTypes(desktop.DataFolders()),
      mThemes(desktop.DataFolders(), ThemeOf(desktop)) {}

FileIcon FileIcons::Find(std::string_view name, bool isFolder, int size) {
  const auto type = isFolder ? folderType : mTypes.TypeOf(name);
  auto icon = IconOfType(type.empty() ? unknownType : type, size);
  if (type.empty() || icon.typeName.empty()) icon.typeName = GenericName(name, isFolder);
  return icon;
}

const FileIcon& FileIcons::IconOfType(const std::string& type, int size) {
  const auto [place, isNew] = mIcons.try_emplace({type, size});
  auto& icon = place->second;
  if (!isNew) return icon;
  auto description = mTypes.Describe(type, mLanguages);
  icon.typeName = Shown(description.comment);
  const auto path = mThemes.Find(description.icons, size);
  try {
    if (!path.empty()) icon.bytes = Platform::Current().Files().ReadFile(path);
    icon.path = path;
  } catch (const Failure&) {  // a picture that can't be read is as good as missing
  }
  return icon;
}

}  // namespace quillbook::detail
