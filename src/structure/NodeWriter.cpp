#include "structure/NodeWriter.h"

#include <string>
#include <vector>

#include "quillbook/structure/QBNodes.h"

namespace quillbook {

void NodeWriter::Write(const QBNode& node, XMLElement e) {
  WriteAttributes(node, e);
  WriteAll(*node.ChildNodes, e);
}

void NodeWriter::WriteAll(const QBNodes& nodes, const XMLElement& e) {
  struct Level {
    Ref<const QBNodes> nodes;
    XMLElement element;
    std::size_t written = 0;
  };
  std::vector<Level> levels;
  levels.push_back({Ref<const QBNodes>(&nodes), e});
  while (!levels.empty()) {
    auto& level = levels.back();
    if (level.written == level.nodes->Count()) {
      levels.pop_back();
      continue;
    }
    const auto& node = level.nodes->At(++level.written);
    const auto child = level.element.AddChild("n");
    WriteAttributes(*node, child);
    if (node->ChildNodes->Count() > 0) levels.push_back({node->ChildNodes, child});
  }
}

void NodeWriter::WriteAttributes(const QBNode& node, XMLElement e) {
  e.AddAttribute("key", node.Key);
  e.AddAttribute("nt", std::to_string(node.QBNodeType()));
  e.AddAttribute("ct", std::to_string(node.CaptionType()));
  e.AddAttribute("c", node.CaptionText());
  e.AddAttribute("i", std::to_string(node.Icon()));
  e.AddAttribute("cfn", node.SubContentsFileName());
  e.AddAttribute("tid", node.TopicID());
  e.AddAttribute("url", node.StandardURL());
}

}  // namespace quillbook
