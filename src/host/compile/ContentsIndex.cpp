#include "host/compile/ContentsIndex.h"

#include <algorithm>
#include <vector>

#include "host/compile/Bytes.h"

namespace quillbook::compile {

namespace {

constexpr std::size_t HeaderSize = 0x1000;
constexpr std::size_t PageRecord = 20;
constexpr std::size_t BookRecord = 28;
constexpr std::uint32_t FirstNumber = 666;  // where every known compiler begins to count
constexpr std::uint32_t IsNew = 0x1;
constexpr std::uint32_t IsBook = 0x4;
constexpr std::uint32_t HasPage = 0x8;

/// An entry with its place in the stream and its neighbours, as numbers of entries; -1 for none.
struct Node {
  std::uint32_t offset = 0;
  std::uint32_t topic = 0;
  bool hasPage = false;
  int parent = -1;
  int next = -1;
  int firstChild = -1;
};

/// Finds parents, siblings and first children from the levels alone.
std::vector<Node> LinkNodes(const Sitemap& contents) {
  std::vector<Node> nodes(contents.entries.size());
  std::vector<int> open;  // the last entry seen on each level
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    const auto index = static_cast<int>(i);
    // A level that was jumped over has no entry to hang from: the nearest one above takes its place.
    const auto level = std::min(static_cast<std::size_t>(contents.entries[i].level), open.size());
    if (level > 0) {
      auto& parent = nodes[static_cast<std::size_t>(open[level - 1])];
      nodes[i].parent = open[level - 1];
      if (parent.firstChild < 0) parent.firstChild = index;
    }
    if (level < open.size()) nodes[static_cast<std::size_t>(open[level])].next = index;
    open.resize(level);
    open.push_back(index);
  }
  return nodes;
}

}  // namespace

std::string BuildContentsIndex(const Sitemap& contents, ChmTopics& topics, ChmStrings& strings,
                               const std::function<std::string(std::string_view)>& encode) {
  auto nodes = LinkNodes(contents);
  auto at = static_cast<std::uint32_t>(HeaderSize);
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    const auto& entry = contents.entries[i];
    auto& node = nodes[i];
    node.offset = at;
    at += node.firstChild >= 0 ? BookRecord : PageRecord;
    node.hasPage = !entry.targets.empty();
    if (!node.hasPage) continue;
    node.topic = topics.Add(entry.targets.front().local, strings.Add(encode(entry.name)));
    topics.SetInContents(node.topic, node.offset);
  }
  const auto offsetOf = [&](int node) { return node < 0 ? 0U : nodes[static_cast<std::size_t>(node)].offset; };
  std::string records;
  std::string pages;
  std::string numbers;
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    const auto& node = nodes[i];
    const auto& entry = contents.entries[i];
    const auto number = FirstNumber + static_cast<std::uint32_t>(numbers.size() / 16);
    PutWord(records, 0);
    PutWord(records, node.hasPage ? number & 0xFFFF : 0);
    PutDword(records, (entry.isNew ? IsNew : 0) | (node.firstChild >= 0 ? IsBook : 0) | (node.hasPage ? HasPage : 0));
    PutDword(records, node.hasPage ? node.topic : strings.Add(encode(entry.name)));
    PutDword(records, offsetOf(node.parent));
    PutDword(records, offsetOf(node.next));
    if (node.firstChild >= 0) {
      PutDword(records, offsetOf(node.firstChild));
      PutDword(records, 0);
    }
    if (!node.hasPage) continue;
    PutDword(numbers, node.offset);
    PutDword(numbers, number);
    PutDword(numbers, at + static_cast<std::uint32_t>(pages.size()));
    PutDword(numbers, node.topic);
    PutDword(pages, node.topic);
  }
  std::string stream;
  PutDword(stream, HeaderSize);
  PutDword(stream, HeaderSize + records.size() + pages.size());
  PutDword(stream, numbers.size() / 16);
  PutDword(stream, HeaderSize + records.size());
  stream.resize(HeaderSize);
  return stream + records + pages + numbers;
}

}  // namespace quillbook::compile
