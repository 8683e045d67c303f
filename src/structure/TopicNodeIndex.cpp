#include "structure/TopicNodeIndex.h"

#include <utility>

#include "quillbook/base/Text.h"
#include "structure/NodeWalk.h"

namespace quillbook {

std::vector<Ref<QBNode>> TopicNodeIndex::Nodes(std::string_view topicID) {
  if (std::exchange(mAskedAt, sGrowth) != sGrowth) return Walk(topicID);
  if (mBuiltAt != sGrowth) Build();
  std::vector<Ref<QBNode>> nodes;
  const auto places = mByTopic.find(FoldedHash(topicID));
  if (places == mByTopic.end()) return nodes;
  for (const auto place : places->second) {
    const auto node = mPlaces[place].node.Target();
    if (node && EqualsIgnoringCase(node->TopicID(), topicID) && IsThere(place)) nodes.push_back(node);
  }
  return nodes;
}

std::vector<Ref<QBNode>> TopicNodeIndex::Walk(std::string_view topicID) const {
  std::vector<Ref<QBNode>> nodes;
  NodeWalk walk(mTop);
  while (const auto node = walk.Next())
    if (EqualsIgnoringCase(node->TopicID(), topicID)) nodes.push_back(node);
  return nodes;
}

void TopicNodeIndex::Build() {
  mPlaces.clear();
  mByTopic.clear();
  struct Level {
    Ref<const QBNodes> nodes;
    std::size_t parent;
    std::size_t visited = 0;
  };
  std::vector<Level> levels;
  levels.push_back({Ref<const QBNodes>(&mTop), NoParent});
  while (!levels.empty()) {
    auto& level = levels.back();
    if (level.visited == level.nodes->Count()) {
      levels.pop_back();
      continue;
    }
    const auto node = level.nodes->At(++level.visited);
    const auto place = mPlaces.size();
    mPlaces.emplace_back().parent = level.parent;
    mPlaces.back().node.SetTarget(node);
    mPlaces.back().level.SetTarget(Ref<QBNodes>(const_cast<QBNodes*>(level.nodes.get())));
    if (!node->TopicID().empty()) mByTopic[FoldedHash(node->TopicID())].push_back(place);
    if (node->ChildNodes) levels.push_back({node->ChildNodes, place});
  }
  mBuiltAt = sGrowth;
}

bool TopicNodeIndex::IsThere(std::size_t place) const {
  while (true) {
    const auto node = mPlaces[place].node.Target();
    const auto level = mPlaces[place].level.Target();
    if (!node || !level || !level->Holds(*node)) return false;
    const auto parent = mPlaces[place].parent;
    if (parent == NoParent) return true;
    const auto above = mPlaces[parent].node.Target();
    if (!above || above->ChildNodes != level) return false;
    place = parent;
  }
}

}  // namespace quillbook
