// Version of the object library.
#pragma once

#include <string_view>

namespace quillbook {

/// `Major.Minor.Revision`, each in decimal.
[[nodiscard]] std::string_view LibraryVersion() noexcept;

}  // namespace quillbook
