// Writes nodes of a page as HTML.
#pragma once

#include <string>

#include "frame/documents/Node.h"

namespace quillbook::html {

/// Markup of what is in a node.
[[nodiscard]] std::string InnerMarkup(const Node& node);
/// Markup of a node with what is in it.
[[nodiscard]] std::string OuterMarkup(const Node& node);
/// What the texts in a node mean, without scripts and styles.
[[nodiscard]] std::string InnerText(const Node& node);

}  // namespace quillbook::html
