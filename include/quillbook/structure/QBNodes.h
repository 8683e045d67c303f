// One level of the table of contents.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "quillbook/base/Event.h"
#include "quillbook/frame/MemberCollection.h"
#include "quillbook/structure/QBNode.h"

namespace quillbook {

class TopicNodeIndex;

/// Source interface of `QBNodes`. Nothing raises these events; changes are told through the project.
struct QBNodesEvents {
  static constexpr std::string_view PublishedName = "__QBNodes";
  Event<const Ref<QBNode>&> ItemAdded;
  Event<const Ref<QBNode>&> ItemRemoved;
};

/// The nodes of one level, in the order of the table of contents, keyed by `QBNode::Key`.
class QBNodes final : public MemberCollection<QBNode> {
 public:
  QBNodes();
  ~QBNodes() override;

  QBNodesEvents Events;

  bool PauseEvents = false;

  [[nodiscard]] bool Dirty() const noexcept { return mDirty; }
  /// True is told to the project, unless `PauseEvents` is True.
  void SetDirty(bool value);
  [[nodiscard]] Ref<quillbook::QBProject> QBProject() const;
  void SetQBProject(const Ref<quillbook::QBProject>& value);

  /// The node with a key, sought on this level and then through the whole subtree, depth first. A position that this
  /// level doesn't have is sought in the same way in the child collections. Nothing if there is none.
  [[nodiscard]] Ref<QBNode> Item(KeyOrPosition Key) const;

  /// As in every collection, but a known `Key` without `Before` or `After` changes nothing and reports nothing. Sets no
  /// link on the node. Marks the collection dirty.
  void Add(const Ref<QBNode>& Item, std::string_view Key = {}, KeyOrPosition Before = {}, KeyOrPosition After = {});

  /// A new node of this level with a new key, before the node with the key `Before`, else after the one with the key
  /// `After`, else at the end. Tells nobody; filling its properties does.
  Ref<QBNode> NewNode(const Ref<QBNode>& Parent = {}, std::string_view Before = {}, std::string_view After = {});

  /// Adds the whole subtree in the order of the table of contents to `col`, or to a new collection, and gives it back.
  Ref<QBNodes> AllNodes(Ref<QBNodes> col = {});
  /// As `AllNodes`, but only the nodes whose `TopicID` is the key of `T`, whatever their type.
  Ref<QBNodes> NodesForTopic(const Ref<Topic>& T, Ref<QBNodes> col = {});

  /// Where the separate-file form of a project keeps its table of contents.
  [[nodiscard]] std::string LocalSpec() const;
  /// True if the table of contents has a file of its own that is read-only.
  [[nodiscard]] bool ReadOnly() const;

  // Library-internal

  /// Replaces the tree by the one stored below `e`, or in the file at `LocalSpec` for the separate-file form.
  void Load(XMLElement e);
  /// False, after a report, if the tree has a file of its own that could not be written.
  bool Save(XMLElement e);
  /// The node at a position of this level, from 1. Failure 9 if there is none.
  [[nodiscard]] const Ref<QBNode>& At(std::size_t position) const { return mCol.Item(position); }
  /// True if this very node stands on this level.
  [[nodiscard]] bool Holds(const QBNode& node) const;
  /// The nodes of the subtree whose `TopicID` equals `topicID` ignoring case, in the order of the contents. Asked
  /// repeatedly, it takes constant time as long as no node and no topic is added.
  [[nodiscard]] std::vector<Ref<QBNode>> NodesNaming(std::string_view topicID) const;
  /// The key under which the node at a position stands; empty for none.
  [[nodiscard]] const std::string& KeyAt(std::size_t position) const { return mCol.KeyAt(position); }

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 protected:
  void MemberRemoved(const Ref<QBNode>& member) override;

 private:
  /// Adds a node to the result of a search, which may be a new list.
  void Collect(const Ref<QBNode>& node, bool isNew);

  bool mDirty = false;
  WeakReference<quillbook::QBProject> mQBProject;
  mutable std::unique_ptr<TopicNodeIndex> mTopicNodes;  ///< made by the first question
};

}  // namespace quillbook
