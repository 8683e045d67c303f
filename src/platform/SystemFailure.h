// Errors of the operating system as failures.
#pragma once

#include <string>

namespace quillbook::detail {

/// Raises the failure that an error number of the system means for a file.
[[noreturn]] void RaiseSystemFailure(int error, const std::string& path);

/// The folder of a native path: "." for a bare name, "/" for the root.
[[nodiscard]] std::string FolderOf(const std::string& path);

}  // namespace quillbook::detail
