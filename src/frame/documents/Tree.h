// The nodes of one HTML page.
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "frame/documents/Node.h"

namespace quillbook::html {

/// Owns all nodes of a page, those that have been removed too, so that no element of it ever dangles. What is removed
/// and held by nobody is used again. Ends without recursion, since nodes don't own each other.
class Tree {
 public:
  /// The node above `html` and the comments around it.
  [[nodiscard]] Node& Root() noexcept { return *mRoot; }
  [[nodiscard]] Node& Make(Node::Kind kind);
  /// Takes a node with all in it out of the page. `node` isn't to be used from then on unless somebody holds it or an
  /// element in it.
  void Remove(Node& node);
  /// Says that elements or the base have changed.
  void Changed() noexcept;

  /// The elements with this name, in document order; the name in small letters, "*" for all. Found once and kept until
  /// the page changes.
  [[nodiscard]] const std::vector<Node*>& Tagged(const std::string& name);
  /// What the first `base` element with a "href" says; empty without one.
  [[nodiscard]] const std::string& Base();

 private:
  std::deque<Node> mNodes;
  std::vector<Node*> mUnused;
  Node* mRoot = &Make(Node::Kind::Document);
  std::unordered_map<std::string, std::vector<Node*>> mTagged;
  std::optional<std::string> mBase;
};

}  // namespace quillbook::html
