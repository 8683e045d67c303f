// Finds the nodes of a table of contents that name a topic.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "quillbook/structure/QBNodes.h"

namespace quillbook {

/// Answers "which nodes of this subtree name that topic" again and again without a walk each time, as it is asked when
/// topics go one after the other.
///
/// Nodes may come, go and change without a word to the collections above them. So whatever can bring a node with a
/// topic into any tree raises one counter, and an older index is then made anew; what takes nodes or topics away is
/// noticed at the answer, by looking whether a node is still there.
class TopicNodeIndex {
 public:
  explicit TopicNodeIndex(const QBNodes& top) : mTop(top) {}

  /// The nodes whose `TopicID` equals `topicID` ignoring case, in the order of the contents. The first question after
  /// a growth is answered by a walk, which costs less than an index that may never be asked.
  [[nodiscard]] std::vector<Ref<QBNode>> Nodes(std::string_view topicID);

  /// A node has got a topic, or a collection a node.
  static void NoteGrowth() noexcept { ++sGrowth; }

 private:
  static constexpr std::size_t NoParent = SIZE_MAX;

  /// A node where it stood when the index was made.
  struct Place {
    WeakReference<QBNode> node;
    WeakReference<QBNodes> level;
    std::size_t parent;  ///< place of the node above; `NoParent` on the top level
  };

  [[nodiscard]] std::vector<Ref<QBNode>> Walk(std::string_view topicID) const;
  void Build();
  [[nodiscard]] bool IsThere(std::size_t place) const;

  static inline thread_local std::uint64_t sGrowth = 0;

  const QBNodes& mTop;
  std::uint64_t mAskedAt = SIZE_MAX;                                     ///< growth at the last question
  std::uint64_t mBuiltAt = SIZE_MAX;                                     ///< growth when the index was made
  std::vector<Place> mPlaces;                                            ///< in the order of the contents
  std::unordered_map<std::uint64_t, std::vector<std::size_t>> mByTopic;  ///< by hash of the case-folded topic
};

}  // namespace quillbook
