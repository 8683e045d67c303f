#include "host/compile/ContentsIndex.h"

#include <algorithm>
#include <numeric>
#include <vector>

#include "host/compile/Bytes.h"

namespace quillbook::compile {

namespace {

constexpr std::size_t BlockSize = 0x1000;  // of the header, and no record crosses the border of a block
constexpr std::uint32_t PageRecord = 20;
constexpr std::uint32_t BookRecord = 28;
constexpr std::uint32_t FirstNumber = 666;  // where every known compiler begins to count
constexpr std::uint32_t IsNew = 0x2;
constexpr std::uint32_t IsBook = 0x105;
constexpr std::uint32_t HasPage = 0x8;
constexpr std::size_t NoNode = static_cast<std::size_t>(-1);

/// An entry with its place in the stream and its neighbours.
struct Node {
  std::uint32_t offset = 0;
  std::uint32_t topic = 0;
  std::uint32_t pages = 0;  ///< in its subtree, with its own
  std::uint32_t pagesBefore = 0;
  bool hasPage = false;
  std::size_t level = 0;
  std::size_t parent = NoNode;
  std::size_t next = NoNode;
  std::size_t firstChild = NoNode;

  [[nodiscard]] bool IsABook() const noexcept { return firstChild != NoNode; }
};

/// Finds parents, siblings and first children from the levels alone.
std::vector<Node> LinkNodes(const Sitemap& contents) {
  std::vector<Node> nodes(contents.entries.size());
  std::vector<std::size_t> open;  // the last entry seen on each level
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    // A level that was jumped over has no entry to hang from: the nearest one above takes its place.
    const auto level = std::min(static_cast<std::size_t>(contents.entries[i].level), open.size());
    nodes[i].level = level;
    if (level > 0) {
      nodes[i].parent = open[level - 1];
      auto& parent = nodes[nodes[i].parent];
      if (!parent.IsABook()) parent.firstChild = i;
    }
    if (level < open.size()) nodes[open[level]].next = i;
    open.resize(level);
    open.push_back(i);
  }
  return nodes;
}

/// Level by level, within a level in the order of the document.
std::vector<std::size_t> LevelOrder(const std::vector<Node>& nodes) {
  std::vector<std::size_t> order(nodes.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(),
                   [&](std::size_t left, std::size_t right) { return nodes[left].level < nodes[right].level; });
  return order;
}

/// Gives every record its place; the end of the last one comes out.
std::uint32_t PlaceNodes(std::vector<Node>& nodes, const std::vector<std::size_t>& order) {
  std::uint32_t at = BlockSize;
  for (const auto i : order) {
    const auto size = nodes[i].IsABook() ? BookRecord : PageRecord;
    const auto room = static_cast<std::uint32_t>(BlockSize - at % BlockSize);
    if (size > room) at += room;
    nodes[i].offset = at;
    at += size;
  }
  return at;
}

void CountPages(std::vector<Node>& nodes) {
  std::uint32_t pages = 0;
  for (auto& node : nodes) {
    node.pagesBefore = pages;
    pages += node.hasPage;
    node.pages = node.hasPage;
  }
  // Children stand behind their parents.
  for (auto i = nodes.size(); i-- > 0;)
    if (nodes[i].parent != NoNode) nodes[nodes[i].parent].pages += nodes[i].pages;
}

}  // namespace

std::string BuildContentsIndex(const Sitemap& contents, ChmTopics& topics, ChmStrings& strings,
                               const std::function<std::string(std::string_view)>& encode) {
  auto nodes = LinkNodes(contents);
  const auto order = LevelOrder(nodes);
  const auto listStart = PlaceNodes(nodes, order);
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    const auto& entry = contents.entries[i];
    nodes[i].hasPage = !entry.targets.empty();
    if (!nodes[i].hasPage) continue;
    const auto local = encode(entry.targets.front().local);
    nodes[i].topic = topics.AddTitled(local, strings.Add(encode(entry.name)));
    // A viewer that looks for the page in the contents may come by either of its entries.
    for (const auto topic : {topics.Add(local), nodes[i].topic}) topics.SetInContents(topic, nodes[i].offset);
  }
  CountPages(nodes);

  std::string stream(BlockSize, '\0');
  const auto offsetOf = [&](std::size_t node) { return node == NoNode ? 0U : nodes[node].offset; };
  for (const auto i : order) {
    const auto& node = nodes[i];
    const auto& entry = contents.entries[i];
    stream.resize(node.offset);
    PutWord(stream, 0);
    PutWord(stream, node.pagesBefore & 0xFFFF);
    PutDword(stream, (entry.isNew ? IsNew : 0) | (node.IsABook() ? IsBook : 0) | (node.hasPage ? HasPage : 0));
    PutDword(stream, node.hasPage ? node.topic : strings.Add(encode(entry.name)));
    PutDword(stream, offsetOf(node.parent));
    PutDword(stream, offsetOf(node.next));
    if (!node.IsABook()) continue;
    PutDword(stream, offsetOf(node.firstChild));
    PutDword(stream, 0);
  }
  std::string numbers;
  std::uint32_t count = 0;
  for (const auto& node : nodes) {
    if (!node.hasPage) continue;
    PutDword(numbers, node.offset);
    PutDword(numbers, FirstNumber + count);
    PutDword(numbers, listStart + 4 * count);
    PutDword(numbers, node.pages);
    PutDword(stream, node.topic);
    ++count;
  }
  SetLittleEndian<4>(stream, 0, BlockSize);
  SetLittleEndian<4>(stream, 4, stream.size());
  SetLittleEndian<4>(stream, 8, count);
  SetLittleEndian<4>(stream, 12, listStart);
  return stream + numbers;
}

}  // namespace quillbook::compile
