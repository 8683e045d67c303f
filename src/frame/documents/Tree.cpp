#include "frame/documents/Tree.h"

#include "frame/documents/StartTag.h"

namespace quillbook::html {

Node& Tree::Make(Node::Kind kind) {
  if (mUnused.empty()) {
    mNodes.emplace_back().kind = kind;
    return mNodes.back();
  }
  auto& node = *mUnused.back();
  mUnused.pop_back();
  node = Node();
  node.kind = kind;
  return node;
}

void Tree::Remove(Node& node) {
  Changed();
  Unlink(node);
  std::vector<Node*> all;
  for (auto* each = &node; each; each = NextWithin(node, each)) {
    if (each->handle) return;  // from this element all others of the part can be reached
    all.push_back(each);
  }
  mUnused.insert(mUnused.end(), all.begin(), all.end());
}

void Tree::Changed() noexcept {
  mTagged.clear();
  mBase.reset();
}

const std::vector<Node*>& Tree::Tagged(const std::string& name) {
  const auto [found, isNew] = mTagged.try_emplace(name);
  if (!isNew) return found->second;
  for (auto* node = mRoot; node; node = NextWithin(*mRoot, node))
    if (node->IsElement() && (name == "*" || node->name == name)) found->second.push_back(node);
  return found->second;
}

const std::string& Tree::Base() {
  if (mBase) return *mBase;
  mBase.emplace();
  for (const auto* node : Tagged("base")) {
    const auto* href = FindAttribute(*node, "href");
    if (!href) continue;
    mBase = href->value;
    break;
  }
  return *mBase;
}

}  // namespace quillbook::html
