// One entry of the table of contents.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "quillbook/base/Object.h"

namespace quillbook {

class BuildProfile;
class NodeDef;
class QBNodes;
class QBProject;
class TOCDefinition;
class Topic;
class XMLElement;

/// What an entry of the table of contents points to. The values are stored in project files.
enum QBNodeTypeEnum : std::int32_t {
  ntStandard = 0,     ///< `StandardURL`, or nothing
  ntSingleTopic = 1,  ///< one topic of the project, by `TopicID`
  ntSubContents = 2,  ///< a caption only
  ntMVContents = 3,   ///< placeholder for contents that the companion generator inserts
};

/// Where an entry takes its caption from. The values are stored in project files.
enum QBNodeCaptionTypeEnum : std::int32_t {
  ctDefault = 1,   ///< from what the node points to: the topic's `ContentsTitle`, or the glossary title
  ctSpecific = 2,  ///< the node's own `CaptionText`
};

/// An entry of the table of contents: a caption with a URL, a topic or a placeholder behind it, and child entries.
///
/// A setter compares first, with regard to case; a real change is told to the project (`QBNodeChanged`) through the
/// collection that holds the node, and marks that collection and the project's top level dirty. A node without a
/// collection tells nobody. The node doesn't keep its parent, its collection or its project alive.
class QBNode final : public LibraryObject {
 public:
  QBNode();

  /// Unique within a project. Assigning it tells nobody.
  std::string Key;
  /// The entries below this one; never nothing.
  Ref<quillbook::QBNodes> ChildNodes;

  [[nodiscard]] QBNodeTypeEnum QBNodeType() const noexcept { return mQBNodeType; }
  /// A node that leaves `ntStandard` stops being the glossary node. What the new type doesn't use is emptied, and the
  /// caption type follows: `ctDefault` for a topic or companion contents, `ctSpecific` for a standard node.
  void SetQBNodeType(QBNodeTypeEnum value);

  [[nodiscard]] QBNodeCaptionTypeEnum CaptionType() const noexcept { return mCaptionType; }
  /// `ctDefault` also empties `CaptionText`.
  void SetCaptionType(QBNodeCaptionTypeEnum value);
  [[nodiscard]] const std::string& CaptionText() const noexcept { return mCaptionText; }
  void SetCaptionText(std::string_view value);

  /// Icon number from 1; -1 is the default icon, a book for a node with children and a topic for one without.
  [[nodiscard]] std::int32_t Icon() const noexcept { return mIcon; }
  void SetIcon(std::int32_t value);

  [[nodiscard]] const std::string& StandardURL() const noexcept { return mStandardURL; }
  /// "glossary.html" in any case on a node without caption also makes the caption type `ctDefault`.
  void SetStandardURL(std::string_view value);

  /// `Key` of a topic.
  [[nodiscard]] const std::string& TopicID() const noexcept { return mTopicID; }
  void SetTopicID(std::string_view value);
  /// The topic that `TopicID` names, whatever the node type; nothing if it names none.
  [[nodiscard]] Ref<quillbook::Topic> Topic() const;

  /// Nothing for a node of the top level.
  [[nodiscard]] Ref<QBNode> ParentNode() const;
  void SetParentNode(const Ref<QBNode>& value);
  /// The collection that holds this node.
  [[nodiscard]] Ref<quillbook::QBNodes> QBNodes() const;
  void SetQBNodes(const Ref<quillbook::QBNodes>& value);

  /// A copy of the node and its subtree at the end of the top level of `NewParentProject`. The copy has a new key;
  /// a descendant gets a new key if its own is known there already. `NewParentNode` is disregarded.
  Ref<QBNode> Clone(const Ref<QBProject>& NewParentProject, const Ref<QBNode>& NewParentNode = {});

  /// `IncludeInHelpFile` of the node's topic; True for a node without one. Both arguments are disregarded: inclusion
  /// is decided by the topic alone, in every profile alike.
  [[nodiscard]] bool IncludedInBuildProfile(const Ref<quillbook::BuildProfile>& BuildProfile, bool UseBuildFlag) const;

  /// Adds what a build's contents show of this node and its subtree to `Definition`, each node before its children,
  /// and gives the first of them. A node whose topic isn't part of the output is left out with its subtree, which a
  /// build message tells once; nothing is then given back.
  Ref<NodeDef> CreateNodeDef(const Ref<NodeDef>& Parent, const Ref<TOCDefinition>& Definition);

  // Library-internal

  [[nodiscard]] const std::string& SubContentsFileName() const noexcept { return mSubContentsFileName; }
  void SetSubContentsFileName(std::string_view value);
  /// Reads the record of the node and of its subtree straight into the fields. All attributes are mandatory. The
  /// stored key is taken only into an empty `Key`. A nesting of any depth is read without deep recursion.
  void Load(XMLElement e);
  void Save(XMLElement e);
  /// Tells of a change as a setter does.
  void FireChanged();

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 private:
  friend class NodeReader;
  friend class NodeWriter;

  void Changed();
  [[nodiscard]] Ref<NodeDef> CreateOwnNodeDef(const Ref<NodeDef>& parent, const Ref<TOCDefinition>& definition);
  [[nodiscard]] std::string RuntimeCaption() const;
  [[nodiscard]] bool SetTarget(NodeDef& made) const;

  QBNodeTypeEnum mQBNodeType = ntStandard;
  QBNodeCaptionTypeEnum mCaptionType = ctSpecific;
  std::string mCaptionText;
  std::int32_t mIcon = -1;
  std::string mSubContentsFileName;
  std::string mStandardURL;
  std::string mTopicID;
  WeakReference<QBNode> mParentNode;
  WeakReference<quillbook::QBNodes> mQBNodes;
};

}  // namespace quillbook
