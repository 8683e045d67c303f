#include "frame/documents/Node.h"

namespace quillbook::html {

Node* NextWithin(const Node& root, Node* node) noexcept {
  return node->firstChild ? node->firstChild : NextBehind(root, node);
}

Node* NextBehind(const Node& root, Node* node) noexcept {
  while (node != &root && !node->next) node = node->parent;
  return node == &root ? nullptr : node->next;
}

namespace {

void LinkBefore(Node& parent, Node& node, Node* place) noexcept {
  node.parent = &parent;
  node.next = place;
  node.previous = place ? place->previous : parent.lastChild;
  (node.previous ? node.previous->next : parent.firstChild) = &node;
  (place ? place->previous : parent.lastChild) = &node;
}

}  // namespace

void Append(Node& parent, Node& node) noexcept {
  LinkBefore(parent, node, nullptr);
}

void Unlink(Node& node) noexcept {
  if (!node.parent) return;
  (node.previous ? node.previous->next : node.parent->firstChild) = node.next;
  (node.next ? node.next->previous : node.parent->lastChild) = node.previous;
  node.parent = node.previous = node.next = nullptr;
}

void MoveChildren(Node& from, Node& parent, Node* place) noexcept {
  while (auto* child = from.firstChild) {
    Unlink(*child);
    LinkBefore(parent, *child, place);
  }
}

}  // namespace quillbook::html
