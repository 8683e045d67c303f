// Pictures of icons by name, from the desktop's icon themes.
#pragma once

#include <string>
#include <vector>

namespace quillbook::detail {

/// Looks icons up as the Icon Theme Specification of freedesktop.org says: in the theme, in those that it inherits
/// from, and at last in "hicolor".
class IconThemes {
 public:
  /// Reads the theme and its ancestors below `icons/` in the data folders, which are native, the user's own first.
  IconThemes(const std::vector<std::string>& dataFolders, const std::string& theme);

  /// Native path of the picture for the first of the names that a theme has, of the size that comes nearest to `size`
  /// pixels; PNG before SVG before XPM. Empty if no theme has any of them.
  [[nodiscard]] std::string Find(const std::vector<std::string>& names, int size) const;

 private:
  /// A folder of a theme with icons of one size.
  struct Folder {
    std::string name;
    int size = 0;      ///< that the icons are made for
    int smallest = 0;  ///< that they can be used for
    int largest = 0;
    /// 0 where the icons are made for `wanted`; else how far they are from it.
    [[nodiscard]] int DistanceFrom(int wanted) const noexcept;
  };
  struct Theme {
    std::vector<std::string> places;  ///< native paths under which the theme's folders stand
    std::vector<Folder> folders;
    [[nodiscard]] std::string Find(const std::string& icon, int size) const;
  };

  /// Adds a theme and gives the names of those that it inherits from; nothing for a theme that isn't installed.
  std::vector<std::string> Load(const std::vector<std::string>& dataFolders, const std::string& name);

  std::vector<Theme> mThemes;  ///< in the order in which they are asked
};

}  // namespace quillbook::detail
