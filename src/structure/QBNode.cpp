#include "quillbook/structure/QBNode.h"

#include "frame/Assign.h"
#include "quillbook/base/Text.h"
#include "quillbook/frame/Procedure.h"
#include "quillbook/frame/services/XMLDocument.h"
#include "quillbook/project/QBProject.h"
#include "quillbook/structure/QBNodes.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/Topics.h"
#include "structure/NodeReader.h"
#include "structure/NodeWriter.h"
#include "structure/TopicNodeIndex.h"

namespace quillbook {

namespace {

bool IsGlossaryURL(std::string_view url) {
  return EqualsIgnoringCase(url, "glossary.html");
}

}  // namespace

QBNode::QBNode() : ChildNodes(New<quillbook::QBNodes>()) {}

void QBNode::SetQBNodeType(QBNodeTypeEnum value) {
  Procedure(*this, "QBNodeType", [&](auto& p) { p("RHS", value); }).Run([&] {
    if (value == mQBNodeType) return;
    if (mQBNodeType == ntStandard && IsGlossaryURL(mStandardURL)) mStandardURL.clear();
    mQBNodeType = value;
    // The caption type is written past its setter, so that the caption itself survives.
    if (value == ntMVContents) {
      mTopicID.clear();
      mCaptionType = ctDefault;
    } else if (value == ntSingleTopic) {
      mStandardURL.clear();
      mCaptionType = ctDefault;
    } else if (value == ntStandard) {
      mTopicID.clear();
      mCaptionType = ctSpecific;
    }
    Changed();
  });
}

void QBNode::SetCaptionType(QBNodeCaptionTypeEnum value) {
  Procedure(*this, "CaptionType", [&](auto& p) { p("RHS", value); }).Run([&] {
    if (value == mCaptionType) return;
    mCaptionType = value;
    if (value == ctDefault) mCaptionText.clear();
    Changed();
  });
}

void QBNode::SetCaptionText(std::string_view value) {
  Assign(*this, mCaptionText, value, "CaptionText", &QBNode::Changed);
}

void QBNode::SetIcon(std::int32_t value) {
  Assign(*this, mIcon, value, "Icon", &QBNode::Changed);
}

void QBNode::SetSubContentsFileName(std::string_view value) {
  Assign(*this, mSubContentsFileName, value, "SubContentsFileName", &QBNode::Changed);
}

void QBNode::SetStandardURL(std::string_view value) {
  Procedure(*this, "StandardURL", [&](auto& p) { p("RHS", value); }).Run([&] {
    if (value == mStandardURL) return;
    mStandardURL = value;
    if (mCaptionText.empty() && IsGlossaryURL(mStandardURL)) mCaptionType = ctDefault;
    Changed();
  });
}

void QBNode::SetTopicID(std::string_view value) {
  Procedure(*this, "TopicID", [&](auto& p) { p("RHS", value); }).Run([&] {
    if (value == mTopicID) return;
    mTopicID = value;
    TopicNodeIndex::NoteGrowth();
    Changed();
  });
}

Ref<quillbook::Topic> QBNode::Topic() const {
  return Procedure(*this, "Topic").Run([&]() -> Ref<quillbook::Topic> {
    if (mTopicID.empty()) return {};
    return QBNodes()->QBProject()->Topics->Item(mTopicID);
  });
}

Ref<QBNode> QBNode::ParentNode() const {
  return mParentNode.Target();
}

void QBNode::SetParentNode(const Ref<QBNode>& value) {
  mParentNode.SetTarget(value);
}

Ref<quillbook::QBNodes> QBNode::QBNodes() const {
  return mQBNodes.Target();
}

void QBNode::SetQBNodes(const Ref<quillbook::QBNodes>& value) {
  mQBNodes.SetTarget(value);
}

Ref<QBNode> QBNode::Clone(const Ref<QBProject>& NewParentProject, const Ref<QBNode>& NewParentNode) {
  return Procedure(*this, "Clone",
                   [&](auto& p) {
                     p("NewParentProject", NewParentProject);
                     p("NewParentNode", NewParentNode);
                   })
      .RunSetting(Ref<QBNode>(), [&](Ref<QBNode>& copy) {
        copy = NewParentProject->QBNodes->NewNode();
        XMLDocument document;
        Save(document.DocumentElement());
        copy->Load(document.DocumentElement());
      });
}

bool QBNode::IncludedInBuildProfile(const Ref<quillbook::BuildProfile>& /*BuildProfile*/, bool /*UseBuildFlag*/) const {
  return Procedure(*this, "IncludedInBuildProfile").Run([&] {
    const auto topic = Topic();
    return !topic || topic->IncludeInHelpFile();
  });
}

void QBNode::Load(XMLElement e) {
  NodeReader::Read(Ref<QBNode>(this), e);
}

void QBNode::Save(XMLElement e) {
  Procedure(*this, "Save", [&](auto& p) { p("e", e); }).Run([&] { NodeWriter::Write(*this, e); });
}

void QBNode::FireChanged() {
  Procedure(*this, "FireChanged").Run([&] { Changed(); });
}

void QBNode::Changed() {
  Procedure(*this, "Changed").Run([&] {
    const auto holder = QBNodes();
    if (!holder) return;
    IgnoreFailures([&] { holder->QBProject()->FireQBNodeChanged(Ref<QBNode>(this)); });
    holder->SetDirty(true);
  });
}

const TypeInfo& QBNode::StaticType() {
  static const TypeInfo type = Describe<QBNode>("QBNode")
                                   .Public<&QBNode::Key>("Key")
                                   .Public<&QBNode::ChildNodes>("ChildNodes")
                                   .Field<&QBNode::mQBNodeType>("mQBNodeType")
                                   .Field<&QBNode::mCaptionType>("mCaptionType")
                                   .Field<&QBNode::mCaptionText>("mCaptionText")
                                   .Field<&QBNode::mIcon>("mIcon")
                                   .Field<&QBNode::mSubContentsFileName>("mSubContentsFileName")
                                   .Field<&QBNode::mStandardURL>("mStandardURL")
                                   .Field<&QBNode::mTopicID>("mTopicID")
                                   .Field<&QBNode::mParentNode>("mParentNode")
                                   .Field<&QBNode::mQBNodes>("mQBNodes")
                                   .Property<&QBNode::QBNodeType, &QBNode::SetQBNodeType>("QBNodeType")
                                   .Property<&QBNode::CaptionType, &QBNode::SetCaptionType>("CaptionType")
                                   .Property<&QBNode::CaptionText, &QBNode::SetCaptionText>("CaptionText")
                                   .Property<&QBNode::Icon, &QBNode::SetIcon>("Icon")
                                   .Property<&QBNode::StandardURL, &QBNode::SetStandardURL>("StandardURL")
                                   .Property<&QBNode::TopicID, &QBNode::SetTopicID>("TopicID")
                                   .ReadOnly<&QBNode::Topic>("Topic")
                                   .Property<&QBNode::ParentNode, &QBNode::SetParentNode>("ParentNode")
                                   .Property<&QBNode::QBNodes, &QBNode::SetQBNodes>("QBNodes")
                                   .Done();
  return type;
}

}  // namespace quillbook
