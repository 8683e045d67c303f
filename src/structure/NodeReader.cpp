#include "structure/NodeReader.h"

#include <exception>
#include <string>
#include <utility>

#include "quillbook/base/Text.h"
#include "quillbook/frame/Procedure.h"
#include "quillbook/frame/modMain.h"
#include "quillbook/project/QBProject.h"
#include "quillbook/structure/QBNodes.h"
#include "structure/NodeWalk.h"
#include "structure/TopicNodeIndex.h"

namespace quillbook {

void NodeReader::Read(const Ref<QBNode>& node, const XMLElement& e) {
  NodeReader(node, e).Run();
}

NodeReader::NodeReader(const Ref<QBNode>& node, const XMLElement& e) : mRoot(node) {
  Begin(node, e);
}

void NodeReader::Run() {
  while (!mLevels.empty()) {
    auto& level = mLevels.back();
    try {
      if (!InFrame(level, [&] { Step(level); })) level.done = true;
    } catch (...) {
      Unwind();
      continue;
    }
    if (level.done) End();
  }
}

void NodeReader::Begin(const Ref<QBNode>& node, const XMLElement& e) {
  mLevels.push_back({node, e, e.ChildElements(), {}, {}});
}

template <class Body>
bool NodeReader::InFrame(const Level& level, Body body) {
  return Procedure(*level.node, "Load", [&](auto& p) { p("e", level.element); }).Run([&] {
    body();
    return true;
  });
}

void NodeReader::Step(Level& level) {
  const auto& children = level.node->ChildNodes;
  if (!level.begun) {
    level.begun = true;
    ReadAttributes(*level.node, level.element);
    children->SetQBProject(level.node->QBNodes()->QBProject());
    children->PauseEvents = true;
    level.next = level.children.begin();
  } else if (level.read) {
    TakeIn(level.node, std::exchange(level.read, {}));
  } else if (level.next == level.children.end()) {
    children->PauseEvents = false;
    level.done = true;
  } else {
    const XMLElement e = *level.next++;
    if (e.Name() == "bf") return;  // left from an older format
    const auto child = New<QBNode>();
    child->SetQBNodes(children);
    Begin(child, e);
  }
}

void NodeReader::End() {
  const auto node = mLevels.back().node;
  mLevels.pop_back();
  if (!mLevels.empty()) mLevels.back().read = node;
}

void NodeReader::Unwind() {
  auto failure = std::current_exception();
  mLevels.pop_back();
  while (!mLevels.empty()) {
    try {
      InFrame(mLevels.back(), [&] { std::rethrow_exception(failure); });
      mLevels.back().done = true;
      return End();
    } catch (...) {
      failure = std::current_exception();
      mLevels.pop_back();
    }
  }
  std::rethrow_exception(failure);
}

void NodeReader::ReadAttributes(QBNode& node, const XMLElement& e) {
  const auto attributes = e.Attributes();
  if (node.Key.empty()) node.Key = attributes.Item("Key").Value();
  node.mQBNodeType = static_cast<QBNodeTypeEnum>(LongFromText(attributes.Item("nt").Value()));
  node.mCaptionType = static_cast<QBNodeCaptionTypeEnum>(LongFromText(attributes.Item("ct").Value()));
  node.mCaptionText = attributes.Item("c").Value();
  node.mIcon = LongFromText(attributes.Item("i").Value());
  node.mSubContentsFileName = attributes.Item("cfn").Value();
  node.mTopicID = attributes.Item("tid").Value();
  TopicNodeIndex::NoteGrowth();
  node.mStandardURL = attributes.Item("url").Value();
  if (node.mTopicID.empty() && node.mQBNodeType == ntSingleTopic) node.mQBNodeType = ntStandard;
}

void NodeReader::TakeIn(const Ref<QBNode>& parent, const Ref<QBNode>& child) {
  child->SetParentNode(parent);
  if (const auto& loaded = modMain::LoadedNodes()) {
    if (loaded->Contains(child->Key)) return;
    parent->ChildNodes->Add(child, child->Key);
    loaded->AddKeyed(child->Key, child->Key);
    return;
  }
  if (IsKnownInProject(child->Key)) child->Key = modMain::CreateGUID();
  parent->ChildNodes->Add(child, child->Key);
  // Only the children of the first node can come into the project's tree; all others hang from nodes still outside.
  if (!mRootIsInProject || parent != mRoot) return;
  mProjectKeys.insert(FoldedHash(child->Key));
  NoteKeys(*child->ChildNodes);
  NodeWalk walk(*child->ChildNodes);
  while (const auto node = walk.Next()) NoteKeys(*node->ChildNodes);
}

bool NodeReader::IsKnownInProject(std::string_view key) {
  if (!mProjectKeysNoted) NoteProjectKeys();
  return mProjectKeys.contains(FoldedHash(key));
}

void NodeReader::NoteProjectKeys() {
  const auto top = mRoot->QBNodes()->QBProject()->QBNodes;
  NoteKeys(*top);
  NodeWalk walk(*top);
  while (const auto node = walk.Next()) {
    NoteKeys(*node->ChildNodes);
    if (node == mRoot) mRootIsInProject = true;
  }
  mProjectKeysNoted = true;
}

void NodeReader::NoteKeys(const QBNodes& level) {
  for (std::size_t position = 1; position <= level.Count(); ++position)
    if (const auto& key = level.KeyAt(position); !key.empty()) mProjectKeys.insert(FoldedHash(key));
}

}  // namespace quillbook
