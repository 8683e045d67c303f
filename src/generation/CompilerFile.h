// Where the help compiler lies.
#pragma once

#include <string>
#include <string_view>

namespace quillbook {

/// Full path of the help compiler: the user's choice if that file exists; else the usual place if there is a file;
/// else what the registry names under `RegKeyString`, if that exists. Empty if nothing was found. `IsHHC` tells the
/// compiler of compiled help from that of the older format.
[[nodiscard]] std::string GetCompilerFileName(std::string_view RegKeyString, bool IsHHC);

}  // namespace quillbook
