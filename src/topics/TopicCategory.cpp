#include "quillbook/topics/TopicCategory.h"

#include "frame/Assign.h"
#include "quillbook/base/Text.h"
#include "quillbook/frame/Procedure.h"
#include "quillbook/frame/services/XMLElement.h"
#include "quillbook/project/QBProject.h"
#include "quillbook/topics/Topics.h"

namespace quillbook {

void TopicCategory::SetAutoIndexEntries(bool RHS) {
  Assign(*this, mAutoIndexEntries, RHS, "AutoIndexEntries", &TopicCategory::Changed);
}

void TopicCategory::SetName(std::string_view RHS) {
  Assign(*this, mName, RHS, "Name", &TopicCategory::Changed);
}

Ref<quillbook::QBProject> TopicCategory::QBProject() const {
  return mQBProject.Target();
}

void TopicCategory::SetQBProject(const Ref<quillbook::QBProject>& RHS) {
  mQBProject.SetTarget(RHS);
}

Ref<quillbook::Topics> TopicCategory::Topics() const {
  return Procedure(*this, "Topics").RunSetting(New<quillbook::Topics>(), [&](const auto& members) {
    const auto project = QBProject();
    if (!project) return;
    for (const auto& topic : *project->Topics)
      if (topic->TopicCategory().get() == this) members->Add(topic, topic->Key);
  });
}

void TopicCategory::Load(XMLElement e) {
  Procedure(*this, "Load", [&](auto& p) { p("e", e); }).Run([&] {
    const auto attributes = e.Attributes();
    mName = attributes.Item("Name").Value();
    Key = attributes.Item("Key").Value();
    if (const auto value = attributes.Find("AutoIndex")) mAutoIndexEntries = *value == "True";
  });
}

void TopicCategory::Save(XMLElement e) const {
  Procedure(*this, "Save", [&](auto& p) { p("e", e); }).Run([&] {
    e.AddAttribute("Name", mName);
    e.AddAttribute("Key", Key);
    e.AddAttribute("AutoIndex", BooleanText(mAutoIndexEntries));
  });
}

void TopicCategory::Changed() {
  Procedure(*this, "Changed").Run([&] {
    if (const auto project = QBProject()) project->FireTopicCategoryChanged(Ref(this));
  });
}

const TypeInfo& TopicCategory::StaticType() {
  static const TypeInfo type =
      Describe<TopicCategory>("TopicCategory")
          .Public<&TopicCategory::Key>("Key")
          .Field<&TopicCategory::mName>("mName")
          .Field<&TopicCategory::mAutoIndexEntries>("mAutoIndexEntries")
          .Field<&TopicCategory::mQBProject>("mQBProject")
          .Property<&TopicCategory::AutoIndexEntries, &TopicCategory::SetAutoIndexEntries>("AutoIndexEntries")
          .Property<&TopicCategory::Name, &TopicCategory::SetName>("Name")
          .Property<&TopicCategory::QBProject, &TopicCategory::SetQBProject>("QBProject")
          .ReadOnly<&TopicCategory::Topics>("Topics")
          .Done();
  return type;
}

}  // namespace quillbook
