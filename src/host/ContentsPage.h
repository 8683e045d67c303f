// The table of contents within a page.
#pragma once

#include <string>

#include "quillbook/host/DataProvider.h"
#include "quillbook/host/TOCDefinition.h"

namespace quillbook {

class MVProject;

namespace detail {

/// The contents as nested lists, in the form that the project's `BookPrefix`, `BookSuffix`, `NodeScrap` and
/// `NodeSuffix` give. A scrap is evaluated by a clone of `data`, with the node as its current item. Empty if there is
/// no entry.
[[nodiscard]] std::string ContentsAsLists(const TOCDefinition& contents, const MVProject& project, DataProvider& data);

}  // namespace detail
}  // namespace quillbook
