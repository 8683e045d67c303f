#include "host/ContentsLines.h"

#include <algorithm>
#include <unordered_map>

namespace quillbook::detail {

namespace {

bool IsShown(const NodeDef& node) {
  // There is no companion here whose contents could be put in.
  return node.Visible && node.NodeKind != NodeDef::CompanionContents;
}

}  // namespace

std::vector<ContentsLine> LinesOf(const TOCDefinition& contents) {
  std::vector<ContentsLine> lines;
  std::unordered_map<const NodeDef*, int> levelsBelow;  // where the children of a node stand
  levelsBelow.reserve(contents.NodeDefs()->Count());
  for (const auto& node : *contents.NodeDefs()) {
    const auto parent = node->Parent();
    const auto found = levelsBelow.find(parent.get());
    auto level = found == levelsBelow.end() ? 0 : found->second;
    if (IsShown(*node)) {
      // A list that somebody put together in another order must not skip a level.
      level = std::min(level, lines.empty() ? 0 : lines.back().level + 1);
      if (!lines.empty()) lines.back().hasChildren = level > lines.back().level;
      lines.push_back({node, level});
      ++level;
    }
    levelsBelow.emplace(node.get(), level);
  }
  return lines;
}

}  // namespace quillbook::detail
