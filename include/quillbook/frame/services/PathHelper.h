// Paths relative to each other.
#pragma once

#include <string>
#include <string_view>

#include "quillbook/base/Object.h"
#include "quillbook/frame/services/FileSystemObject.h"

namespace quillbook {

class PathHelper {
 public:
  /// Path of `Target` relative to the folder of `Base`, ignoring case of folders. A folder keeps its "\" at the end,
  /// and the folder of `Base` itself is ".\". A target on another drive stays absolute, a relative one relative. An
  /// empty target stays empty.
  [[nodiscard]] static std::string RelativePath(const Ref<FileSystemObject>& Base, const Ref<FileSystemObject>& Target);
  /// `Target` made absolute against the folder of `Base`; an absolute one stays as it is, an empty one empty.
  [[nodiscard]] static std::string AbsolutePath(const Ref<FileSystemObject>& Base, const Ref<FileSystemObject>& Target);
  /// True if there is an object and it is of this class, ignoring case.
  [[nodiscard]] static bool IsOfType(const Ref<Object>& Item, std::string_view TypeName);
};

}  // namespace quillbook
