#include "quillbook/structure/QBNodes.h"

#include <utility>

#include "quillbook/frame/modMain.h"
#include "quillbook/frame/services/XMLElement.h"
#include "quillbook/project/QBProject.h"
#include "quillbook/topics/Topic.h"
#include "structure/ElementFile.h"
#include "structure/NodeWalk.h"
#include "structure/NodeWriter.h"
#include "structure/TopicNodeIndex.h"

namespace quillbook {

QBNodes::QBNodes() = default;

QBNodes::~QBNodes() = default;

void QBNodes::SetDirty(bool value) {
  Procedure(*this, "Dirty", [&](auto& p) { p("RHS", value); }).Run([&] {
    mDirty = value;
    if (!value || PauseEvents) return;
    if (const auto project = QBProject()) project->FireDirtyStateChanged();
  });
}

Ref<quillbook::QBProject> QBNodes::QBProject() const {
  return mQBProject.Target();
}

void QBNodes::SetQBProject(const Ref<quillbook::QBProject>& value) {
  mQBProject.SetTarget(value);
}

Ref<QBNode> QBNodes::Item(KeyOrPosition Key) const {
  return Procedure(*this, "Item", [&](auto& p) { p("Key", Key.ToVariant()); }).Run([&]() -> Ref<QBNode> {
    if (const auto* node = mCol.Find(Key)) return *node;
    NodeWalk walk(*this);
    while (const auto node = walk.Next())
      if (const auto* found = node->ChildNodes->mCol.Find(Key)) return *found;
    return {};
  });
}

void QBNodes::Add(const Ref<QBNode>& Item, std::string_view Key, KeyOrPosition Before, KeyOrPosition After) {
  Procedure(*this, "Add", [&](auto& p) {
    p("Item", Item);
    p("Key", Key);
    p("Before", Before.ToVariant());
    p("After", After.ToVariant());
  }).Run([&] {
    if (!Key.empty() && Before.IsMissing() && After.IsMissing())
      IgnoreFailures([&] { AddMember(Item, Key, Before, After); });
    else
      AddMember(Item, Key, Before, After);
    TopicNodeIndex::NoteGrowth();
    SetDirty(true);
  });
}

Ref<QBNode> QBNodes::NewNode(const Ref<QBNode>& Parent, std::string_view Before, std::string_view After) {
  return Procedure(*this, "NewNode",
                   [&](auto& p) {
                     p("Parent", Parent);
                     p("Before", Before);
                     p("After", After);
                   })
      .Run([&] {
        auto node = New<QBNode>();
        node->SetQBNodes(Ref<QBNodes>(this));
        node->ChildNodes->SetQBProject(QBProject());
        node->SetParentNode(Parent);
        node->Key = modMain::CreateGUID();
        const auto neighbour = [](std::string_view key) { return key.empty() ? KeyOrPosition() : KeyOrPosition(key); };
        AddMember(node, node->Key, neighbour(Before), neighbour(After));
        return node;
      });
}

void QBNodes::MemberRemoved(const Ref<QBNode>& member) {
  if (const auto project = QBProject()) project->FireQBNodeRemoved(member);
  SetDirty(true);
}

Ref<QBNodes> QBNodes::AllNodes(Ref<QBNodes> col) {
  return Procedure(*this, "AllNodes", [&](auto& p) { p("col", col); }).Run([&] {
    const bool isNew = !col;
    if (isNew) col = New<QBNodes>();
    NodeWalk walk(*this);
    while (const auto node = walk.Next()) col->Collect(node, isNew);
    return col;
  });
}

Ref<QBNodes> QBNodes::NodesForTopic(const Ref<Topic>& T, Ref<QBNodes> col) {
  const auto describe = [&](auto& p) {
    p("T", T);
    p("col", col);
  };
  return Procedure(*this, "NodesForTopic", describe).Run([&] {
    const bool isNew = !col;
    if (isNew) col = New<QBNodes>();
    for (const auto& node : NodesNaming(T->Key))
      if (node->TopicID() == T->Key) col->Collect(node, isNew);
    return col;
  });
}

void QBNodes::Collect(const Ref<QBNode>& node, bool isNew) {
  if (!isNew) return Add(node, node->Key);
  // A list that nobody else has yet is no part of any tree, so this is no growth.
  if (node->Key.empty() || !mCol.Contains(node->Key)) AddMember(node, node->Key, {}, {});
  mDirty = true;
}

bool QBNodes::Holds(const QBNode& node) const {
  const auto* member = mCol.Find(node.Key);
  return (member && member->get() == &node) || PositionOfObject(&node) != 0;
}

std::vector<Ref<QBNode>> QBNodes::NodesNaming(std::string_view topicID) const {
  if (!mTopicNodes) mTopicNodes = std::make_unique<TopicNodeIndex>(*this);
  return mTopicNodes->Nodes(topicID);
}

std::string QBNodes::LocalSpec() const {
  return Procedure(*this, "LocalSpec").Run([&] { return ElementFile::LocalSpec(QBProject(), "TableOfContents.xml"); });
}

bool QBNodes::ReadOnly() const {
  return Procedure(*this, "ReadOnly").Run([&] {
    return ElementFile::UsedBy(QBProject()) && ElementFile(LocalSpec()).ReadOnly();
  });
}

void QBNodes::Load(XMLElement e) {
  Procedure(*this, "Load", [&](auto& p) { p("e", e); }).Run([&] {
    mCol.Clear();
    TopicNodeIndex::NoteGrowth();
    if (ElementFile::UsedBy(QBProject())) e = ElementFile(LocalSpec()).Read();
    for (const auto& child : e.ChildElements()) {
      const auto node = New<QBNode>();
      node->SetQBNodes(Ref<QBNodes>(this));
      node->Load(child);
      const auto& loaded = modMain::LoadedNodes();
      if (loaded && loaded->Contains(node->Key)) continue;
      mCol.AddKeyed(node, node->Key);
      if (loaded) loaded->AddKeyed(node->Key, node->Key);
    }
    SetDirty(false);
  });
}

bool QBNodes::Save(XMLElement e) {
  return Procedure(*this, "Save", [&](auto& p) { p("e", e); }).Run([&] {
    const auto writeNodes = [&](const XMLElement& parent) { NodeWriter::WriteAll(*this, parent); };
    // The root is called as that of the glossary's file; files in use have it so.
    if (ElementFile::UsedBy(QBProject()))
      ElementFile(LocalSpec()).Write(mDirty, "Glossary", writeNodes);
    else
      writeNodes(e);
    return true;
  });
}

const TypeInfo& QBNodes::StaticType() {
  static const TypeInfo type = Describe<QBNodes>("QBNodes")
                                   .Public<&QBNodes::PauseEvents>("PauseEvents")
                                   .Field<&QBNodes::mDirty>("mDirty")
                                   .Field<&QBNodes::mQBProject>("mQBProject")
                                   .Field<&QBNodes::mCol>("mCol")
                                   .Property<&QBNodes::Dirty, &QBNodes::SetDirty>("Dirty")
                                   .Property<&QBNodes::QBProject, &QBNodes::SetQBProject>("QBProject")
                                   .ReadOnly<&QBNodes::Count>("Count")
                                   .ReadOnly<&QBNodes::LocalSpec>("LocalSpec")
                                   .ReadOnly<&QBNodes::ReadOnly>("ReadOnly")
                                   .Done();
  return type;
}

}  // namespace quillbook
