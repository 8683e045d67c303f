// References of a page and what they refer to.
#pragma once

#include <string>
#include <string_view>

namespace quillbook::html {

/// `reference` made absolute: put behind the folder of `base`, or behind its host where it begins with "/". What has a
/// scheme stays. Without a base only a bare fragment changes, to "about:blank#...".
///
/// Segments ".." and blanks stay as they are, so that taking the base away gives back what the author wrote. A "\" is
/// read as "/", as browsers do.
[[nodiscard]] std::string Absolute(std::string_view base, std::string_view reference);

}  // namespace quillbook::html
