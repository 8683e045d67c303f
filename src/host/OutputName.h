// Names of output files.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "quillbook/base/Object.h"

namespace quillbook::detail {

/// A pattern such as "{QualifiedName}.html" with the members of the item in place of names in braces. Failure 438 for
/// a member that the item doesn't have. A brace without a partner stands for itself.
[[nodiscard]] std::string ExpandOutputName(std::string_view pattern, const Object& item);

/// A path within the output folder, with "/" between its names and without "." and "..". None for a path that is
/// absolute, leads out of the folder, names no file or holds the character NUL. Both separators are accepted.
[[nodiscard]] std::optional<std::string> ContainedPath(std::string_view path);

/// How messages call an item: its title, name or qualified name, whichever it has first; else its type.
[[nodiscard]] std::string ItemCaption(const Ref<Object>& item);

}  // namespace quillbook::detail
