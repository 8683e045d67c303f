#include "project/ProjectIntegrity.h"

#include "quillbook/config/BuildProfile.h"
#include "quillbook/config/BuildProfiles.h"
#include "quillbook/structure/GlossaryItem.h"
#include "quillbook/structure/GlossaryItems.h"
#include "quillbook/structure/OtherFile.h"
#include "quillbook/structure/OtherFiles.h"
#include "quillbook/structure/Task.h"
#include "quillbook/structure/Tasks.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/TopicCategories.h"
#include "quillbook/topics/TopicCategory.h"
#include "quillbook/topics/Topics.h"
#include "structure/NodeWalk.h"

namespace quillbook {
namespace {

/// A collection whose members know the project and stand under their keys. A record without its key leaves a member
/// that is found by its position only.
template <class List, class KeyOf>
std::string FindMemberFault(const QBProject& project, const List& list, std::string_view name, KeyOf keyOf) {
  if (list.QBProject().get() != &project) return std::string(name) + " belongs to another project";
  std::size_t count = 0;
  for (const auto& member : list) {
    ++count;
    if (member->QBProject().get() != &project) return "a member of " + std::string(name) + " has another project";
    const std::string key = keyOf(*member);
    if (!key.empty() && list.Item(key) != member) return std::string(name) + " doesn't find the key " + key;
  }
  return count == list.Count() ? std::string() : std::string(name) + " miscounts";
}

std::string FindNodeFault(const QBNodes& top) {
  std::string fault;
  ForEachNode(top, [&fault](const Ref<QBNode>& node) {
    for (const auto& child : *node->ChildNodes) {
      if (child->ParentNode() != node) fault = "the node " + child->Key + " doesn't know its parent";
      if (child->QBNodes() != node->ChildNodes) fault = "the node " + child->Key + " doesn't know its collection";
    }
  });
  for (const auto& node : top)
    if (node->ParentNode()) fault = "the node " + node->Key + " of the top level has a parent";
  return fault;
}

}  // namespace

std::string FindIntegrityFault(QBProject& project) {
  const auto byKey = [](const auto& member) { return member.Key; };
  auto fault = FindMemberFault(project, *project.Topics, "Topics", byKey);
  if (fault.empty()) fault = FindMemberFault(project, *project.TopicCategories, "TopicCategories", byKey);
  if (fault.empty()) fault = FindMemberFault(project, *project.GlossaryItems(), "GlossaryItems", byKey);
  if (fault.empty())
    fault = FindMemberFault(project, *project.Tasks, "Tasks", [](const Task& task) { return task.Key(); });
  if (fault.empty())
    fault = FindMemberFault(project, *project.OtherFiles, "OtherFiles", [](const OtherFile&) { return ""; });
  if (fault.empty()) fault = FindNodeFault(*project.QBNodes);
  return fault;
}

void AssertIntegrity([[maybe_unused]] QBProject& project) {
#ifndef NDEBUG
  if (auto fault = FindIntegrityFault(project); !fault.empty())
    throw Failure(FailureNumber::InternalError, std::move(fault));
#endif
}

}  // namespace quillbook
