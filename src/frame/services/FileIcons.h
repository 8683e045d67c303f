// What the desktop shows for a file: an icon and the name of its type.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "frame/services/IconThemes.h"
#include "frame/services/MimeTypes.h"
#include "quillbook/platform/Desktop.h"

namespace quillbook::detail {

struct FileIcon {
  std::string typeName;  ///< in the user's language, else in English
  std::string path;      ///< native path of the picture; empty if there is none
  std::string bytes;     ///< the picture as it stands in that file
};

/// Icons of files by their types, with what the desktop knows at the time when this object is made. Each icon is read
/// once.
class FileIcons {
 public:
  explicit FileIcons(const Desktop& desktop);

  /// For a file, or folder, of this name without its folder; `size` in pixels. A type that the desktop doesn't know is
  /// called by the name's ending, as in "XYZ file".
  [[nodiscard]] FileIcon Find(std::string_view name, bool isFolder, int size);

 private:
  [[nodiscard]] const FileIcon& IconOfType(const std::string& type, int size);

  std::vector<std::string> mLanguages;
  MimeTypes mTypes;
  IconThemes mThemes;
  std::map<std::pair<std::string, int>, FileIcon> mIcons;  ///< by type and size
};

}  // namespace quillbook::detail
