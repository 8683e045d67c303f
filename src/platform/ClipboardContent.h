// The clipboard's content as one run of bytes, the way it travels between programs.
#pragma once

#include <string>
#include <string_view>

#include "quillbook/platform/Desktop.h"

namespace quillbook::detail {

/// The MIME type of the bytes.
inline constexpr std::string_view ClipboardMimeType = "application/x-quillbook-data";

[[nodiscard]] std::string EncodeClipboard(const ClipboardContent& content);
/// Empty for bytes of another kind and for those that don't fit together: they come from outside.
[[nodiscard]] ClipboardContent DecodeClipboard(std::string_view bytes);

}  // namespace quillbook::detail
