// Text on its way into markup.
#pragma once

#include <string>
#include <string_view>

namespace quillbook::detail {

/// For text and for values in double quotes, of HTML and XML: "&", "<", ">" and the double quote become references,
/// control characters, which no markup can hold, a blank.
[[nodiscard]] std::string EscapeMarkup(std::string_view text);

/// A title as pages show it: its character references resolved.
[[nodiscard]] std::string PlainTitle(std::string_view title);

}  // namespace quillbook::detail
