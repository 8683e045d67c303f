// Parses HTML into nodes.
#pragma once

#include <string_view>

#include "frame/documents/Tree.h"

namespace quillbook::html {

/// Parses a page. Gives a node of the tree, not part of its page, whose children are those of the page's root. The
/// failures are those of `HtmlDocument`.
[[nodiscard]] Node& ParsePage(Tree& tree, std::string_view text);
/// Parses text as content of `context`, an element. The children of the node given are the content.
[[nodiscard]] Node& ParseFragment(Tree& tree, const Node& context, std::string_view text);

}  // namespace quillbook::html
