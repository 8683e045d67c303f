// Reads stored nodes with their subtrees.
#pragma once

#include <cstdint>
#include <deque>
#include <string_view>
#include <unordered_set>

#include "quillbook/frame/services/XMLElement.h"
#include "quillbook/structure/QBNode.h"

namespace quillbook {

/// Reads the record of a node and of everything below it as nested calls of `Load` would, but with a stack of its own,
/// so that files of any depth can be read. Each record is read in the failure frame of its own node: a failure ends
/// that node's record and leaves it as far as it got, and its parent goes on.
class NodeReader {
 public:
  static void Read(const Ref<QBNode>& node, const XMLElement& e);

 private:
  /// A node whose record is being read.
  struct Level {
    Ref<QBNode> node;
    XMLElement element;
    XMLChildElements children;
    XMLChildElements::Iterator next;
    Ref<QBNode> read;  ///< a child whose own record is done, not yet taken in
    bool begun = false;
    bool done = false;
  };

  NodeReader(const Ref<QBNode>& node, const XMLElement& e);
  void Run();
  void Begin(const Ref<QBNode>& node, const XMLElement& e);
  /// Runs `body` in the frame of a level's node. False if it failed and the failure has been reported.
  template <class Body>
  static bool InFrame(const Level& level, Body body);
  void Step(Level& level);
  /// Ends the top level; what it read goes to the level below.
  void End();
  /// A reporter raised a failure out of the top level's frame: it goes up through the frames below, as through callers.
  void Unwind();

  static void ReadAttributes(QBNode& node, const XMLElement& e);
  void TakeIn(const Ref<QBNode>& parent, const Ref<QBNode>& child);
  [[nodiscard]] bool IsKnownInProject(std::string_view key);
  void NoteProjectKeys();
  void NoteKeys(const QBNodes& level);

  Ref<QBNode> mRoot;
  std::deque<Level> mLevels;  ///< a deque, since iterators point into their level
  /// Hashes of the case-folded keys of the project's whole tree, kept up while nodes are added to it; filled at first
  /// need. A key that only shares another's hash would be renewed too, which harms nobody.
  std::unordered_set<std::uint64_t> mProjectKeys;
  bool mProjectKeysNoted = false;
  bool mRootIsInProject = false;
};

}  // namespace quillbook
