// Names for temporary files.
#pragma once

#include <string>
#include <string_view>

namespace quillbook {

class TempFileHelper {
 public:
  /// Full path, in Windows form, of a new, empty file in the temporary folder that only this user can read. Its name
  /// begins with the prefix; an empty extension gives a name without point.
  [[nodiscard]] static std::string TempFileName(std::string_view Prefix, std::string_view Extension);
};

}  // namespace quillbook
