// The control files of an HTML Help project.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "host/helpproject/HelpProjectFacts.h"

namespace quillbook::detail {

/// Title of a page of the output by its path; empty if it isn't known.
using PageTitles = std::function<std::string(std::string_view page)>;

// All texts are UTF-8 with CR LF; whoever writes them encodes them.

/// The project file (.hhp): options, a window of three panes, and the list of files.
[[nodiscard]] std::string HtmlHelpProjectText(const HelpProjectFacts& facts);
/// The contents (.hhc): sitemap 1.0.
[[nodiscard]] std::string HtmlHelpContentsText(const HelpProjectFacts& facts);
/// The index (.hhk): sitemap 1.0. A keyword's pages are offered under their titles.
[[nodiscard]] std::string HtmlHelpIndexText(const HelpProjectFacts& facts, const PageTitles& titleOf);

}  // namespace quillbook::detail
