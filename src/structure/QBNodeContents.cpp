// What the build makes of an entry of the table of contents.
#include "quillbook/frame/Procedure.h"
#include "quillbook/host/TOCDefinition.h"
#include "quillbook/project/QBProject.h"
#include "quillbook/structure/QBNode.h"
#include "quillbook/structure/QBNodes.h"
#include "quillbook/topics/Topic.h"

namespace quillbook {

Ref<NodeDef> QBNode::CreateNodeDef(const Ref<NodeDef>& Parent, const Ref<TOCDefinition>& Definition) {
  struct Level {
    Ref<const quillbook::QBNodes> nodes;
    Ref<NodeDef> parent;
    std::size_t position = 0;  ///< of the last node visited, from 1
  };
  auto result = CreateOwnNodeDef(Parent, Definition);
  std::vector<Level> levels;  // authors nest entries as deep as they like
  if (result) levels.push_back({ChildNodes, result});
  while (!levels.empty()) {
    auto& level = levels.back();
    if (level.position == level.nodes->Count()) {
      levels.pop_back();
      continue;
    }
    const auto child = level.nodes->At(++level.position);
    if (const auto made = child->CreateOwnNodeDef(level.parent, Definition))
      levels.push_back({child->ChildNodes, made});
  }
  return result;
}

/// Nothing for a node that is left out, whose children are then left out too.
Ref<NodeDef> QBNode::CreateOwnNodeDef(const Ref<NodeDef>& parent, const Ref<TOCDefinition>& definition) {
  return Procedure(*this, "CreateNodeDef",
                   [&](auto& p) {
                     p("Parent", parent);
                     p("TOCDefinition", definition);
                   })
      .Run([&]() -> Ref<NodeDef> {
        auto made = New<NodeDef>();
        made->Caption = RuntimeCaption();
        made->SetParent(parent);
        made->SetTOCDefinition(definition);
        made->CustomIcon = mIcon != -1;
        if (made->CustomIcon) made->IconIndex = mIcon - 1;
        made->Visible = true;
        if (!SetTarget(*made)) return {};
        made->TOCDefinition()->NodeDefs()->Add(made, made->Key());
        return made;
      });
}

std::string QBNode::RuntimeCaption() const {
  if (mCaptionType != ctDefault) return mCaptionText;
  if (const auto topic = Topic()) return topic->ContentsTitle();
  // With regard to case, unlike everywhere else: such a node with another spelling shows no caption.
  if (mStandardURL == "Glossary.html") return QBNodes()->QBProject()->GetVariableValue("GlossaryTitle", "Glossary");
  return mCaptionText;
}

/// False for a node whose topic isn't part of the output.
bool QBNode::SetTarget(NodeDef& made) const {
  if (mQBNodeType == ntStandard) made.URL = mStandardURL;
  if (mQBNodeType == ntMVContents) made.NodeKind = NodeDef::CompanionContents;
  const auto topic = mQBNodeType == ntSingleTopic ? Topic() : Ref<quillbook::Topic>();
  if (!topic) return true;
  if (topic->RuntimeIncludeInHelpFile()) {
    made.URL = topic->QualifiedName() + ".html";
    return true;
  }
  QBNodes()->QBProject()->FireBuildMessage(
      "Table of Contents node '" + made.Caption +
          "' points to a Topic that is not included in the generated output. The node and any child nodes will be "
          "excluded from the generated Table of Contents.",
      BuildMessageLevel::bmWarning);
  return false;
}

}  // namespace quillbook
