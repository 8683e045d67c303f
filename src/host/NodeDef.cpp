#include "quillbook/host/NodeDef.h"

#include <atomic>

#include "quillbook/host/TOCDefinition.h"

namespace quillbook {

namespace {

std::string NewKey() {
  static std::atomic<std::uint64_t> last{0};
  return "node" + std::to_string(++last);
}

}  // namespace

NodeDef::NodeDef() : mKey(NewKey()) {}

Ref<TOCDefinition> NodeDef::TOCDefinition() const {
  return mTOCDefinition.Target();
}

void NodeDef::SetTOCDefinition(const Ref<quillbook::TOCDefinition>& Definition) {
  mTOCDefinition.SetTarget(Definition);
}

const TypeInfo& NodeDef::StaticType() {
  static const TypeInfo type = Describe<NodeDef>("NodeDef")
                                   .Field<&NodeDef::mKey>("mKey")
                                   .Public<&NodeDef::NodeKind>("NodeKind")
                                   .Public<&NodeDef::Caption>("Caption")
                                   .Public<&NodeDef::URL>("URL")
                                   .Public<&NodeDef::CustomIcon>("CustomIcon")
                                   .Public<&NodeDef::IconIndex>("IconIndex")
                                   .Public<&NodeDef::Visible>("Visible")
                                   .Field<&NodeDef::mParent>("mParent")
                                   .Field<&NodeDef::mTOCDefinition>("mTOCDefinition")
                                   .ReadOnly<&NodeDef::Key>("Key")
                                   .Property<&NodeDef::Parent, &NodeDef::SetParent>("Parent")
                                   .Property<&NodeDef::TOCDefinition, &NodeDef::SetTOCDefinition>("TOCDefinition")
                                   .Done();
  return type;
}

}  // namespace quillbook
