// The contents as lines, each with its depth.
#pragma once

#include <vector>

#include "quillbook/host/TOCDefinition.h"

namespace quillbook::detail {

/// An entry that a reader sees.
struct ContentsLine {
  Ref<NodeDef> node;
  int level = 0;  ///< from 0, at most one more than that of the line before
  bool hasChildren = false;
};

/// The visible entries in reading order. Where a node isn't shown, its children take its place.
[[nodiscard]] std::vector<ContentsLine> LinesOf(const TOCDefinition& contents);

/// Calls `begin` for each line and `end` when its children, if it has any, are done. Without recursion. For lines of
/// any kind that have a `level`.
template <class Line, class Begin, class End>
void ForEachNested(const std::vector<Line>& lines, Begin&& begin, End&& end) {
  std::vector<const Line*> open;
  const auto closeFrom = [&](int level) {
    for (; !open.empty() && open.back()->level >= level; open.pop_back()) end(*open.back());
  };
  for (const auto& line : lines) {
    closeFrom(line.level);
    begin(line);
    open.push_back(&line);
  }
  closeFrom(0);
}

}  // namespace quillbook::detail
