#include "cli/edit/TocKind.h"

#include <fmt/format.h>

#include "cli/edit/Assignments.h"
#include "cli/edit/Refusal.h"
#include "cli/edit/StoredValues.h"
#include "quillbook/base/Text.h"
#include "quillbook/platform/Platform.h"

namespace quillbook::cli {
namespace {

constexpr int kLowestIcon = -1;
constexpr int kHighestIcon = 9999;

const std::vector<std::string_view> kTypes = {"standard", "topic", "caption", "generator"};
const std::vector<std::string_view> kCaptionTypes = {"default", "specific"};

/// What a reader sees as the caption.
std::string ShownCaption(const QBNode& node) {
  if (node.CaptionType() == ctSpecific) return node.CaptionText();
  const auto topic = node.Topic();
  return topic ? topic->ContentsTitle() : node.CaptionText();
}

Field PathOfNode() {
  return {"path", "Place in the contents, such as 1.3.2; can't be set", FieldType::Text,
          [](QBProject&, const Record& record) { return Values{record.path}; }};
}

Field ShownField() {
  return {"shown", "Caption as a reader sees it; can't be set", FieldType::Text,
          [](QBProject&, const Record& record) { return Values{ShownCaption(record.As<QBNode>())}; }};
}

Field TopicField() {
  return {
      "topic", "Topic behind the node", FieldType::Topic,
      [](QBProject& project, const Record& record) {
        return Values{TopicNameFor(project, record.As<QBNode>().TopicID())};
      },
      [](QBProject&, const Record& record, const Values& values) { record.As<QBNode>().SetTopicID(values.front()); }};
}

/// The level that a place is on, and the node above it.
struct Level {
  Ref<QBNodes> nodes;
  Ref<QBNode> parent;
};

Level LevelOf(const Scope& scope, const Place& place) {
  if (place.neighbour.object) {
    const auto& neighbour = place.neighbour.As<QBNode>();
    return {neighbour.QBNodes(), neighbour.ParentNode()};
  }
  if (!place.parent.object) return {scope.project.QBNodes, {}};
  const Ref<QBNode> parent(&place.parent.As<QBNode>());
  return {parent->ChildNodes, parent};
}

/// Keys of the neighbours between which a place is.
struct Neighbours {
  std::string before;
  std::string after;
};

Neighbours NeighboursOf(const Place& place, const QBNodes& level) {
  switch (place.where) {
    case Place::Where::Before: return {place.neighbour.As<QBNode>().Key, {}};
    case Place::Where::After: return {{}, place.neighbour.As<QBNode>().Key};
    case Place::Where::First: return {level.Count() == 0 ? std::string() : (*level.begin())->Key, {}};
    default: return {};
  }
}

std::string ValueOf(QBProject& project, const RecordKind& kind, const Record& record,
                    std::vector<Assignment>& assignments, std::string_view field) {
  if (const auto* assigned = FindAssignment(assignments, field)) return assigned->values.front();
  return record.object ? kind.FindField(field)->ReadOne(project, record) : std::string();
}

[[noreturn]] void RefuseConflict(const std::string& what, std::string remedy) {
  throw Refusal("value.conflict", what, std::move(remedy));
}

/// The type that a node gets.
std::string CompleteType(const RecordKind& kind, const std::string& present, std::vector<Assignment>& assignments) {
  const bool topicGone = FindAssignment(assignments, "topic") && !IsGiven(assignments, "topic");
  if (IsGiven(assignments, "topic") && IsGiven(assignments, "url"))
    RefuseConflict("a node leads to a topic or to a URL, not to both", "give one of them");
  if (IsGiven(assignments, "topic")) Imply(kind, assignments, "type", {"topic"});
  if (IsGiven(assignments, "url") || (topicGone && present == "topic")) Imply(kind, assignments, "type", {"standard"});
  const auto* type = FindAssignment(assignments, "type");
  return type ? type->values.front() : present;
}

void CheckType(const std::string& type, const std::string& topic, std::vector<Assignment>& assignments) {
  if (type == "topic" && topic.empty()) RefuseConflict("a node of type topic needs a topic", "give it with topic=NAME");
  if (type != "topic" && IsGiven(assignments, "topic"))
    RefuseConflict(fmt::format("a node of type {} has no topic", type), "leave out one of them");
  if (type != "standard" && IsGiven(assignments, "url"))
    RefuseConflict(fmt::format("a node of type {} has no URL", type), "leave out one of them");
}

}  // namespace

const KindInfo& TocKind::Info() const {
  static const KindInfo info = [] {
    KindInfo toc{"toc", "contents node", "List, show and edit the table of contents",
                 "path of a node, such as 1.3.2, or its key"};
    toc.nameField = "path";
    toc.uniqueNames = false;
    toc.named = false;
    toc.tree = true;
    return toc;
  }();
  return info;
}

const std::vector<Field>& TocKind::Fields() const {
  static const std::vector<Field> fields = {
      PathOfNode().Listed(),
      ShownField().Listed(),
      // What the type empties comes after the type.
      ChoiceField("type", "What is behind the node: follows from topic or url", kTypes, ntStandard, &QBNode::QBNodeType,
                  &QBNode::SetQBNodeType),
      TopicField().Listed(),
      TextField("url", "URL behind the node", &QBNode::StandardURL, &QBNode::SetStandardURL).Listed(),
      ChoiceField("caption-type", "Caption of the topic, or of the node itself", kCaptionTypes, ctDefault,
                  &QBNode::CaptionType, &QBNode::SetCaptionType),
      TextField("caption", "Caption of the node itself; empty for the topic's", &QBNode::CaptionText,
                &QBNode::SetCaptionText),
      NumberField("icon", "Number of the icon, from 1; -1 for the usual one", &QBNode::Icon, &QBNode::SetIcon,
                  kLowestIcon, kHighestIcon),
      KeyField<QBNode>([](const QBNode& node) -> const std::string& { return node.Key; }).Listed(),
  };
  return fields;
}

std::vector<Record> TocKind::All(const Scope& scope) const {
  struct Open {
    Ref<QBNodes> level;
    std::size_t next;  ///< position, from 1
    std::string path;
  };
  std::vector<Record> records;
  std::vector<Open> open{{scope.project.QBNodes, 1, {}}};
  while (!open.empty()) {
    auto& level = open.back();
    if (level.next > level.level->Count()) {
      open.pop_back();
      continue;
    }
    const auto node = level.level->At(level.next);
    auto path = level.path + std::to_string(level.next++);
    records.push_back({node, {}, path});
    if (node->ChildNodes->Count() != 0) open.push_back({node->ChildNodes, 1, std::move(path) + "."});
  }
  return records;
}

Record TocKind::Add(const Scope& scope, const std::string&, const Place& place) const {
  const auto level = LevelOf(scope, place);
  const auto neighbours = NeighboursOf(place, *level.nodes);
  return {level.nodes->NewNode(level.parent, neighbours.before, neighbours.after)};
}

void TocKind::Remove(const Scope& scope, const Record& record) const {
  const auto& node = record.As<QBNode>();
  const auto below = node.ChildNodes->AllNodes()->Count();
  if (below != 0) {
    const auto answer = Platform::Current().Messages().Show(
        fmt::format("There are contents nodes below {}: {}. Do you want to delete those too?", record.path, below),
        MessageBox::YesNo | MessageBox::Question | MessageBox::DefaultSecond, "Remove contents nodes");
    if (answer != MessageBox::Yes)
      throw Refusal("edit.cancelled", fmt::format("{} stays", Describe(scope.project, record)), "nothing was changed",
                    NotBuilt);
  }
  node.QBNodes()->Remove(node.Key);
}

void TocKind::Move(const Scope& scope, const Record& record, const Place& place) const {
  const Ref<QBNode> node(&record.As<QBNode>());
  const auto level = LevelOf(scope, place);
  for (auto above = level.parent; above; above = above->ParentNode())
    if (above == node)
      throw Refusal("place.self", fmt::format("{} can't stand below itself", Describe(scope.project, record)),
                    "name another place");
  node->QBNodes()->Remove(node->Key);
  const auto neighbours = NeighboursOf(place, *level.nodes);
  node->SetQBNodes(level.nodes);
  node->SetParentNode(level.parent);
  level.nodes->Add(node, node->Key, neighbours.before.empty() ? KeyOrPosition() : KeyOrPosition(neighbours.before),
                   neighbours.after.empty() ? KeyOrPosition() : KeyOrPosition(neighbours.after));
}

void TocKind::Complete(QBProject& project, const Record& record, std::vector<Assignment>& assignments) const {
  const bool isNew = !record.object;
  if (isNew && !IsGiven(assignments, "caption") && !IsGiven(assignments, "topic") && !IsGiven(assignments, "url") &&
      !IsGiven(assignments, "type"))
    throw Refusal("value.missing", "a contents node shows something", "give caption=TEXT, topic=NAME or url=URL");
  const auto present = isNew ? std::string("standard") : ValueOf(project, *this, record, assignments, "type");
  const auto type = CompleteType(*this, present, assignments);
  CheckType(type, ValueOf(project, *this, record, assignments, "topic"), assignments);
  if (FindAssignment(assignments, "caption")) {
    const bool own = IsGiven(assignments, "caption") || type == "standard" || type == "caption";
    Imply(*this, assignments, "caption-type", {own ? "specific" : "default"});
  }
  if (IsGiven(assignments, "caption") && ValueOf(project, *this, record, assignments, "caption-type") == "default")
    RefuseConflict("a node with the default caption has none of its own", "leave out one of them");
}

Record TocKind::Refreshed(const Scope& scope, const Record& record) const {
  for (auto& one : All(scope))
    if (one.object == record.object) return one;
  return record;
}

std::string TocKind::Describe(QBProject& project, const Record& record) const {
  const auto path = record.path.empty() ? Refreshed({project}, record).path : record.path;
  return fmt::format("contents node {} \"{}\"", path, ShownCaption(record.As<QBNode>()));
}

}  // namespace quillbook::cli
