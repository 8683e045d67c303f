// Walks over a table of contents of any depth.
#pragma once

#include <vector>

#include "quillbook/structure/QBNode.h"
#include "quillbook/structure/QBNodes.h"

namespace quillbook {

/// Calls `visit` with every node in the order of the table of contents. The walk keeps its own stack, so that deep
/// nesting doesn't exhaust the program's; `visit` must not change the tree.
template <class Visit>
void ForEachNode(const QBNodes& top, Visit&& visit) {
  using Iterator = decltype(top.begin());
  struct Level {
    Iterator next;
    Iterator end;
  };
  std::vector<Level> levels{{top.begin(), top.end()}};
  while (!levels.empty()) {
    auto& level = levels.back();
    if (level.next == level.end) {
      levels.pop_back();
      continue;
    }
    const auto& node = *level.next++;
    visit(node);
    if (node->ChildNodes->Count() != 0) levels.push_back({node->ChildNodes->begin(), node->ChildNodes->end()});
  }
}

/// The nodes that answer a question with True.
template <class Question>
[[nodiscard]] std::vector<Ref<QBNode>> NodesWhere(const QBNodes& top, Question&& question) {
  std::vector<Ref<QBNode>> nodes;
  ForEachNode(top, [&](const Ref<QBNode>& node) {
    if (question(*node)) nodes.push_back(node);
  });
  return nodes;
}

}  // namespace quillbook
