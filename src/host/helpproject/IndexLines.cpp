#include "host/helpproject/IndexLines.h"

#include <algorithm>

#include "host/Markup.h"

namespace quillbook::detail {

namespace {

/// Sorted from the last to the first, as a stack of what is to be done wants it.
std::vector<IndexLine> SortedLevel(const Collection<Ref<Keyword>>& keywords, int level, const Collation& order) {
  std::vector<IndexLine> lines;
  lines.reserve(keywords.Count());
  for (const auto& keyword : keywords) lines.push_back({keyword, PlainTitle(keyword->Name()), level, false});
  std::stable_sort(lines.begin(), lines.end(), [&](const IndexLine& left, const IndexLine& right) {
    return order.Compare(left.name, right.name) > 0;
  });
  return lines;
}

}  // namespace

std::vector<IndexLine> LinesOf(const Keywords& keywords, const Collation& order) {
  std::vector<IndexLine> lines;
  auto waiting = SortedLevel(*keywords.Items(), 0, order);
  while (!waiting.empty()) {
    auto& line = lines.emplace_back(std::move(waiting.back()));
    waiting.pop_back();
    if (!line.keyword->HasChildKeywords()) continue;
    line.hasChildren = line.level < DeepestIndexLevel;
    const auto below = line.level + (line.hasChildren ? 1 : 0);
    for (auto& child : SortedLevel(*line.keyword->ChildKeywords(), below, order)) waiting.push_back(std::move(child));
  }
  return lines;
}

}  // namespace quillbook::detail
