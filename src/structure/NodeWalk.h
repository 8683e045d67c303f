// Walks the table of contents without recursion, however deep it is.
#pragma once

#include <utility>
#include <vector>

#include "quillbook/structure/QBNodes.h"

namespace quillbook {

/// The nodes of a subtree, every node before its children.
class NodeWalk {
 public:
  explicit NodeWalk(const QBNodes& top) { mLevels.push_back({Ref<const QBNodes>(&top), 0}); }

  /// The next node; nothing at the end. The children of a node are looked at when the walk goes on from it.
  [[nodiscard]] Ref<QBNode> Next() {
    if (mDescend) mLevels.push_back({Ref<const QBNodes>(std::exchange(mDescend, {})), 0});
    while (!mLevels.empty()) {
      auto& [nodes, position] = mLevels.back();
      if (position < nodes->Count()) {
        auto node = nodes->At(++position);
        mDescend = node->ChildNodes;
        return node;
      }
      mLevels.pop_back();
    }
    return {};
  }

 private:
  struct Level {
    Ref<const QBNodes> nodes;
    std::size_t position;  ///< of the last node visited, from 1
  };
  std::vector<Level> mLevels;
  Ref<QBNodes> mDescend;
};

/// Calls `visit` with every node of a subtree in the order of the contents; `visit` must not change the tree.
template <class Visit>
void ForEachNode(const QBNodes& top, Visit&& visit) {
  NodeWalk walk(top);
  while (const auto node = walk.Next()) visit(node);
}

}  // namespace quillbook
