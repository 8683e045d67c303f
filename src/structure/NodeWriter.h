// Writes nodes with their subtrees.
#pragma once

#include "quillbook/frame/services/XMLElement.h"

namespace quillbook {

class QBNode;
class QBNodes;

class NodeWriter {
 public:
  /// Writes the record of the node and, as elements named "n", of everything below it.
  static void Write(const QBNode& node, XMLElement e);
  /// Writes the nodes of a level, with everything below them, as elements "n" of `e`.
  static void WriteAll(const QBNodes& nodes, const XMLElement& e);

 private:
  static void WriteAttributes(const QBNode& node, XMLElement e);
};

}  // namespace quillbook
