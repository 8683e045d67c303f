// Opening the project that a command works on.
#pragma once

#include <string>
#include <string_view>

#include "cli/Journal.h"
#include "quillbook/base/Ref.h"
#include "quillbook/project/QBProject.h"

namespace quillbook::cli {

/// Loads a project file, a native path. Nothing if it can't be read; the journal then says what and where.
[[nodiscard]] Ref<QBProject> OpenProject(const std::string& path, Journal& journal);

/// Absolute and without "." and "..".
[[nodiscard]] std::string AbsoluteNativePath(const std::string& path);
/// A path of the object model as this system writes it, a folder without "/" at its end; empty for an empty one.
[[nodiscard]] std::string NativePath(std::string_view path);

}  // namespace quillbook::cli
