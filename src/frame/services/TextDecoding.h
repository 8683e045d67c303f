// Bytes of a file as text.
#pragma once

#include <string>

namespace quillbook::detail {

/// Text of the bytes: by a byte order mark, which doesn't become part of it; else by the encoding that an XML
/// declaration names; else UTF-8 if that is what they are; else Windows-1252. Valid UTF-8 isn't copied.
[[nodiscard]] std::string DecodeText(std::string bytes);

}  // namespace quillbook::detail
