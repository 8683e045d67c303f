// The programs that reach the desktop's clipboard.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace quillbook::detail {

/// Puts bytes of a MIME type on the clipboard. False if no program is there for the display that the environment
/// names, or if it doesn't manage in time.
bool CopyToClipboard(const std::string& mimeType, std::string_view bytes, std::chrono::milliseconds patience);
/// The clipboard's bytes of a MIME type. Nothing if there are none; also if the clipboard can't be reached.
[[nodiscard]] std::optional<std::string> PasteFromClipboard(const std::string& mimeType,
                                                            std::chrono::milliseconds patience);

}  // namespace quillbook::detail
