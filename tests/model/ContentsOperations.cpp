// The table of contents.
#include "World.h"
#include "quillbook/structure/QBNodes.h"

namespace quillbook::model {

namespace {

constexpr std::size_t MostDepth = 6;

/// A level of the contents.
struct Level {
  NodeState* parent;  ///< null for the top level
  NodeList* list;
  std::size_t depth;
  [[nodiscard]] Ref<QBNodes> Object(const World& world) const {
    return parent ? parent->object->ChildNodes : world.project->QBNodes;
  }
};

void CollectLevels(NodeState* parent, NodeList& list, std::size_t depth, std::vector<Level>& levels) {
  levels.push_back({parent, &list, depth});
  for (auto& node : list.nodes) CollectLevels(&node, node.children, depth + 1, levels);
}

Level AnyLevel(World& world) {
  std::vector<Level> levels;
  CollectLevels(nullptr, world.model.contents, 0, levels);
  return world.dice.Of(levels);
}

/// A level with a node, and the node; null where the level that was picked has none.
std::pair<Level, NodeState*> AnyNode(World& world) {
  for (int attempt = 0; attempt < 8; ++attempt)
    if (const auto level = AnyLevel(world); !level.list->nodes.empty())
      return {level, &world.dice.Of(level.list->nodes)};
  return {{}, nullptr};
}

void Changed(World& world, NodeList& level) {
  level.dirty = true;
  world.model.contents.dirty = true;
}

void SetType(World& world, NodeList& level, NodeState& node, QBNodeTypeEnum type) {
  if (node.type == type) return;
  if (node.type == ntStandard && EqualsIgnoringCase(node.url, "glossary.html")) node.url.clear();
  node.type = type;
  if (type == ntMVContents || type == ntStandard) node.topicID.clear();
  if (type == ntSingleTopic) node.url.clear();
  if (type != ntSubContents) node.captionType = type == ntStandard ? ctSpecific : ctDefault;
  Changed(world, level);
}

void SetCaption(World& world, NodeList& level, NodeState& node, std::string_view text) {
  if (node.caption == text) return;
  node.caption = text;
  Changed(world, level);
}

void MakePlain(World& world, NodeList& level, const TopicState& topic) {
  for (auto& node : level.nodes) {
    if (node.type == ntSingleTopic && EqualsIgnoringCase(node.topicID, topic.key)) {
      SetCaption(world, level, node, topic.contentsTitle.empty() ? topic.title : topic.contentsTitle);
      SetType(world, level, node, ntStandard);
    }
    MakePlain(world, node.children, topic);
  }
}

void NewNode(World& world) {
  const auto level = AnyLevel(world);
  auto& nodes = level.list->nodes;
  if (nodes.size() >= MostMembers / 2 || level.depth >= MostDepth) return;
  NodeState node;
  const auto known = !nodes.empty();
  const auto at = known ? world.dice.Below(nodes.size()) : 0;
  const std::string neighbour = known ? nodes[at].key : "";
  const auto parent = level.parent ? level.parent->object : nullptr;
  auto position = nodes.size();
  if (world.dice.OneIn(3)) {
    node.object = level.Object(world)->NewNode(parent, neighbour, world.dice.OneIn(2) ? "{nobody}" : "");
    if (known) position = at;
    if (!node.object) return world.Expect("QBNodes.NewNode", FailureNumber::InvalidCall);
  } else if (world.dice.OneIn(2)) {
    node.object = level.Object(world)->NewNode(parent, "", neighbour);
    if (known) position = at + 1;
  } else {
    node.object = level.Object(world)->NewNode(parent);
  }
  node.key = node.object->Key;
  nodes.insert(nodes.begin() + static_cast<std::ptrdiff_t>(position), std::move(node));
}

void NewNodeBesideNobody(World& world) {
  const auto level = AnyLevel(world);
  const auto parent = level.parent ? level.parent->object : nullptr;
  if (world.dice.OneIn(2))
    (void)level.Object(world)->NewNode(parent, "{nobody}");
  else
    (void)level.Object(world)->NewNode(parent, "", "{nobody}");
  world.Expect("QBNodes.NewNode", FailureNumber::InvalidCall);
}

std::optional<NodeState> Take(World& world, const Level& level) {
  auto node = RemoveFrom(world, "QBNodes", *level.Object(world), level.list->nodes);
  if (node) Changed(world, *level.list);
  return node;
}

void Remove(World& world) {
  const auto level = AnyLevel(world);
  (void)Take(world, level);
}

void Put(World& world, const Level& level, NodeState node) {
  const auto object = node.object;
  object->SetQBNodes(level.Object(world));
  object->SetParentNode(level.parent ? level.parent->object : nullptr);
  level.list->dirty = true;
  // A node that finds no place is put at the end, so that nothing is lost.
  const auto choice = Choose(world, level.list->nodes);
  const auto place = PlaceBy(world, choice, level.list->nodes);
  auto& nodes = level.list->nodes;
  level.Object(world)->Add(object, node.key, place.before, place.after);
  auto index = place.index;
  if (place.failure != FailureNumber::None) {
    world.Expect("QBNodes.Add", place.failure);
    level.Object(world)->Add(object, node.key);
    index = nodes.size();
  }
  nodes.insert(nodes.begin() + static_cast<std::ptrdiff_t>(index), std::move(node));
}

void MoveSubtree(World& world) {
  const auto from = AnyLevel(world);
  auto node = Take(world, from);
  if (!node) return;
  const auto to = AnyLevel(world);  // chosen now: no node goes below itself
  Put(world, to.depth < MostDepth ? to : Level{nullptr, &world.model.contents, 0}, std::move(*node));
}

void AddKnownKey(World& world) {
  const auto [level, node] = AnyNode(world);
  if (!node) return;
  level.Object(world)->Add(node->object, node->key);
  level.list->dirty = true;
}

/// What a copy of a subtree is, and which of its levels count as changed.
void AsLoaded(NodeState& node) {
  if (node.type == ntSingleTopic && node.topicID.empty()) node.type = ntStandard;
  node.children.dirty = !node.children.nodes.empty();
  for (auto& child : node.children.nodes) AsLoaded(child);
}

void BindTree(NodeState& node, const Ref<QBNode>& object) {
  node.object = object;
  node.key = object ? object->Key : std::string();
  for (std::size_t i = 0; i < node.children.nodes.size(); ++i)
    BindTree(node.children.nodes[i], object ? object->ChildNodes->Item(i + 1) : nullptr);
}

std::size_t CountNodes(const NodeList& level) {
  auto count = level.nodes.size();
  for (const auto& node : level.nodes) count += CountNodes(node.children);
  return count;
}

void Clone(World& world) {
  const auto [level, node] = AnyNode(world);
  if (!node || CountNodes(world.model.contents) > 4 * MostMembers) return;
  auto copy = *node;
  AsLoaded(copy);
  BindTree(copy, node->object->Clone(world.project, world.dice.OneIn(2) ? node->object : nullptr));
  world.model.contents.nodes.push_back(std::move(copy));
}

// Properties.

void SetNodeType(World& world) {
  const auto [level, node] = AnyNode(world);
  if (!node) return;
  const auto type = static_cast<QBNodeTypeEnum>(world.dice.Below(4));
  node->object->SetQBNodeType(type);
  SetType(world, *level.list, *node, type);
}

void SetTopic(World& world) {
  const auto [level, node] = AnyNode(world);
  if (!node) return;
  const auto& topics = world.model.topics;
  std::string id(world.dice.OneIn(4) || topics.empty() ? world.dice.Text() : world.dice.Of(topics).key);
  if (world.dice.OneIn(6)) id = LowerCase(id);
  node->object->SetTopicID(id);
  if (node->topicID != id) Changed(world, *level.list);
  node->topicID = id;
  if (world.dice.OneIn(3)) return;
  node->object->SetQBNodeType(ntSingleTopic);
  SetType(world, *level.list, *node, ntSingleTopic);
}

void SetNodeCaption(World& world) {
  const auto [level, node] = AnyNode(world);
  if (!node) return;
  const auto text = world.dice.Text();
  node->object->SetCaptionText(text);
  SetCaption(world, *level.list, *node, text);
}

void SetCaptionType(World& world) {
  const auto [level, node] = AnyNode(world);
  if (!node) return;
  const auto type = world.dice.OneIn(2) ? ctDefault : ctSpecific;
  node->object->SetCaptionType(type);
  if (node->captionType == type) return;
  node->captionType = type;
  if (type == ctDefault) node->caption.clear();
  Changed(world, *level.list);
}

void SetUrl(World& world) {
  const auto [level, node] = AnyNode(world);
  if (!node) return;
  const auto url = world.dice.OneIn(3) ? std::string_view("Glossary.HTML") : world.dice.Text();
  node->object->SetStandardURL(url);
  if (node->url == url) return;
  node->url = url;
  if (node->caption.empty() && EqualsIgnoringCase(url, "glossary.html")) node->captionType = ctDefault;
  Changed(world, *level.list);
}

void SetIconAndFile(World& world) {
  const auto [level, node] = AnyNode(world);
  if (!node) return;
  const auto icon = static_cast<std::int32_t>(world.dice.Below(3)) - 1;
  const auto file = world.dice.Text();
  node->object->SetIcon(icon);
  node->object->SetSubContentsFileName(file);
  if (node->icon != icon || node->subContents != file) Changed(world, *level.list);
  node->icon = icon;
  node->subContents = file;
}

constexpr Operation Operations[] = {
    {"make a node", 20, NewNode},
    {"make a node beside one that isn't there", 1, NewNodeBesideNobody},
    {"remove a node", 4, Remove},
    {"move a subtree", 10, MoveSubtree},
    {"add a node under a known key", 1, AddKnownKey},
    {"clone a subtree", 3, Clone},
    {"set a node's type", 8, SetNodeType},
    {"set a node's topic", 14, SetTopic},
    {"set a node's caption", 5, SetNodeCaption},
    {"set a node's caption type", 3, SetCaptionType},
    {"set a node's URL", 5, SetUrl},
    {"set a node's icon and file", 2, SetIconAndFile},
};

}  // namespace

std::span<const Operation> ContentsOperations() {
  return Operations;
}

void MakeNodesPlain(World& world, const TopicState& topic) {
  MakePlain(world, world.model.contents, topic);
}

void BindContents(World& world) {
  for (std::size_t i = 0; i < world.model.contents.nodes.size(); ++i) {
    auto& node = world.model.contents.nodes[i];
    AsLoaded(node);
    BindTree(node, world.project->QBNodes->Item(i + 1));
  }
}

}  // namespace quillbook::model
