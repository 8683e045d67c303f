// The index as lines, each with its depth.
#pragma once

#include <string>
#include <vector>

#include "quillbook/base/Collation.h"
#include "quillbook/host/Keywords.h"

namespace quillbook::detail {

/// A keyword of the index.
struct IndexLine {
  Ref<Keyword> keyword;
  std::string name;  ///< as a reader sees it
  int level = 0;     ///< from 0
  bool hasChildren = false;
};

/// Keywords that lie deeper stand on this level: no reader shows more, and an index names all levels above a keyword.
inline constexpr int DeepestIndexLevel = 19;

/// All keywords in reading order, each level sorted. Without recursion.
[[nodiscard]] std::vector<IndexLine> LinesOf(const Keywords& keywords, const Collation& order);

}  // namespace quillbook::detail
