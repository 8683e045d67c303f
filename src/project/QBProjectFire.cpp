// What members report to their project, and what the project makes of it.
#include <utility>

#include "quillbook/config/BuildProfiles.h"
#include "quillbook/frame/Procedure.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/frame/services/TextHelper.h"
#include "quillbook/project/QBProject.h"
#include "quillbook/structure/GlossaryItem.h"
#include "quillbook/structure/GlossaryItems.h"
#include "quillbook/structure/OtherFile.h"
#include "quillbook/structure/OtherFiles.h"
#include "quillbook/structure/QBNode.h"
#include "quillbook/structure/QBNodes.h"
#include "quillbook/structure/Task.h"
#include "quillbook/structure/Tasks.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/TopicCategories.h"
#include "quillbook/topics/TopicLink.h"
#include "quillbook/topics/TopicSection.h"
#include "quillbook/topics/Topics.h"

namespace quillbook {
namespace {

/// Describes the only argument of an operation.
template <class Argument>
struct OneArgument {
  std::string_view name;
  const Ref<Argument>& value;
  void operator()(ParameterDump& dump) const { dump(name, value); }
};

/// Runs an operation with one object as its argument in the failure frame.
template <class Argument, class Body>
void Framed(const QBProject& project, std::string_view procedure, std::string_view name, const Ref<Argument>& argument,
            Body&& body) {
  Procedure(project, procedure, OneArgument<Argument>{name, argument}).Run(std::forward<Body>(body));
}

}  // namespace

// Topics.

void QBProject::FireTopicAdded(const Ref<quillbook::Topic>& Topic) {
  Framed(*this, "FireTopicAdded", "Topic", Topic, [&] {
    if (!Topics->PauseEvents) Events.TopicAdded.Raise(Topic);
    SetTopicsDirty(true);
    SetDirty(true);
  });
}

void QBProject::FireTopicRemoved(const Ref<quillbook::Topic>& Topic) {
  Framed(*this, "FireTopicRemoved", "Topic", Topic, [&] {
    if (!Topics->PauseEvents) Events.TopicRemoved.Raise(Topic);
    MakeNodesPlain(*Topic);
    SetTopicsDirty(true);
    SetDirty(true);
  });
}

void QBProject::FireTopicChanged(const Ref<quillbook::Topic>& Topic) {
  Framed(*this, "FireTopicChanged", "Topic", Topic, [&] {
    if (!Topics->PauseEvents) Events.TopicChanged.Raise(Topic);
    if (Topic->Dirty()) SetTopicsDirty(true);
  });
}

void QBProject::FireTopicTopicLinksChanged(const Ref<quillbook::Topic>& Topic) {
  Framed(*this, "FireTopicTopicLinksChanged", "Topic", Topic, [&] {
    if (!Topics->PauseEvents) Events.TopicTopicLinksChanged.Raise(Topic);
    SetTopicsDirty(true);
  });
}

void QBProject::FireTopicTopicLinkChanged(const Ref<quillbook::Topic>& Topic,
                                          const Ref<quillbook::TopicLink>& TopicLink) {
  Procedure(*this, "FireTopicTopicLinkChanged", [&](auto& p) {
    p("Topic", Topic);
    p("TopicLink", TopicLink);
  }).Run([&] {
    if (!Topic->PauseEvents() && !Topics->PauseEvents) Events.TopicTopicLinkChanged.Raise(Topic, TopicLink);
    MarkTopicPartChanged();
  });
}

void QBProject::FireTopicSectionChanged(const Ref<quillbook::Topic>& Topic,
                                        const Ref<quillbook::TopicSection>& TopicSection) {
  Procedure(*this, "FireTopicSectionChanged", [&](auto& p) {
    p("Topic", Topic);
    p("TopicSection", TopicSection);
  }).Run([&] {
    if (!Topic->PauseEvents() && !Topics->PauseEvents) Events.TopicSectionChanged.Raise(Topic, TopicSection);
    MarkTopicPartChanged();
  });
}

void QBProject::MarkTopicPartChanged() {
  if (SCCActivated())
    SetTopicsDirty(true);
  else
    SetDirty(true);
}

void QBProject::FireTopicReOrdered(const Ref<quillbook::Topic>& Topic) {
  Framed(*this, "FireTopicReOrdered", "Topic", Topic, [&] { Events.TopicReOrdered.Raise(Topic); });
}

// Categories and other files.

void QBProject::FireTopicCategoryAdded(const Ref<quillbook::TopicCategory>& TopicCategory) {
  Framed(*this, "FireTopicCategoryAdded", "TopicCategory", TopicCategory, [&] {
    if (!TopicCategories->PauseEvents) Events.TopicCategoryAdded.Raise(TopicCategory);
    SetDirty(true);
  });
}

void QBProject::FireTopicCategoryChanged(const Ref<quillbook::TopicCategory>& TopicCategory) {
  Framed(*this, "FireTopicCategoryChanged", "TopicCategory", TopicCategory, [&] {
    if (!TopicCategories->PauseEvents && TextHelper::InCollection(TopicCategory->Key, *TopicCategories))
      Events.TopicCategoryChanged.Raise(TopicCategory);
    SetDirty(true);
  });
}

void QBProject::FireTopicCategoryRemoved(const Ref<quillbook::TopicCategory>& TopicCategory) {
  Framed(*this, "FireTopicCategoryRemoved", "TopicCategory", TopicCategory, [&] {
    if (!TopicCategories->PauseEvents) Events.TopicCategoryRemoved.Raise(TopicCategory);
    SetDirty(true);
  });
}

void QBProject::FireTopicCategoryReOrdered(const Ref<quillbook::TopicCategory>& TopicCategory) {
  Framed(*this, "FireTopicCategoryReOrdered", "TopicCategory", TopicCategory,
         [&] { Events.TopicCategoryReOrdered.Raise(TopicCategory); });
}

void QBProject::FireOtherFileAdded(const Ref<quillbook::OtherFile>& OtherFile) {
  Framed(*this, "FireOtherFileAdded", "OtherFile", OtherFile, [&] {
    if (!OtherFiles->PauseEvents) Events.OtherFileAdded.Raise(OtherFile);
    SetDirty(true);
  });
}

void QBProject::FireOtherFileRemoved(const Ref<quillbook::OtherFile>& OtherFile) {
  Framed(*this, "FireOtherFileRemoved", "OtherFile", OtherFile, [&] {
    if (!OtherFiles->PauseEvents) Events.OtherFileRemoved.Raise(OtherFile);
    SetDirty(true);
  });
}

void QBProject::FireOtherFileChanged(const Ref<quillbook::OtherFile>& OtherFile) {
  Framed(*this, "FireOtherFileChanged", "OtherFile", OtherFile, [&] {
    if (!PauseEvents() && TextHelper::InCollection(OtherFile->Filename->FullName(), *OtherFiles))
      Events.OtherFileChanged.Raise(OtherFile);
    SetDirty(true);
  });
}

void QBProject::FireOtherFileCheckoutStatusChanged(const Ref<quillbook::OtherFile>& OtherFile) {
  Framed(*this, "FireOtherFileCheckoutStatusChanged", "OtherFile", OtherFile,
         [&] { Events.OtherFileCheckoutStatusChanged.Raise(OtherFile); });
}

// Table of contents.

void QBProject::FireQBNodeChanged(const Ref<quillbook::QBNode>& QBNode) {
  Framed(*this, "FireQBNodeChanged", "QBNode", QBNode, [&] {
    if (!QBNodes->PauseEvents) Events.QBNodeChanged.Raise(QBNode);
    QBNodes->SetDirty(true);
  });
}

void QBProject::FireQBNodeRemoved(const Ref<quillbook::QBNode>& QBNode) {
  Framed(*this, "FireQBNodeRemoved", "QBNode", QBNode, [&] {
    if (!QBNodes->PauseEvents) Events.QBNodeRemoved.Raise(QBNode);
    QBNodes->SetDirty(true);
  });
}

void QBProject::MakeNodesPlain(const quillbook::Topic& topic) {
  for (const auto& node : QBNodes->NodesNaming(topic.Key)) {
    if (node->QBNodeType() != ntSingleTopic) continue;
    const auto current = node->Topic();  // nothing once the topic has left `Topics`
    if (current && current.get() != &topic) continue;
    node->SetCaptionText(topic.ContentsTitle());
    node->SetQBNodeType(ntStandard);
  }
}

// Glossary and tasks.

void QBProject::FireGlossaryItemAdded(const Ref<GlossaryItem>& Item) {
  Framed(*this, "FireGlossaryItemAdded", "Item", Item, [&] {
    if (!GlossaryItems()->PauseEvents) Events.GlossaryItemAdded.Raise(Item);
    GlossaryItems()->SetDirty(true);
  });
}

void QBProject::FireGlossaryItemChanged(const Ref<GlossaryItem>& Item) {
  Framed(*this, "FireGlossaryItemChanged", "Item", Item, [&] {
    if (!GlossaryItems()->PauseEvents) Events.GlossaryItemChanged.Raise(Item);
    GlossaryItems()->SetDirty(true);
  });
}

void QBProject::FireGlossaryItemRemoved(const Ref<GlossaryItem>& Item) {
  Framed(*this, "FireGlossaryItemRemoved", "Item", Item, [&] {
    if (!GlossaryItems()->PauseEvents) Events.GlossaryItemRemoved.Raise(Item);
    GlossaryItems()->SetDirty(true);
  });
}

void QBProject::FireTaskAdded(const Ref<quillbook::Task>& Task) {
  Framed(*this, "FireTaskAdded", "Task", Task, [&] {
    if (!Tasks->PauseEvents) Events.TaskAdded.Raise(Task);
  });
}

void QBProject::FireTaskChanged(const Ref<quillbook::Task>& Task) {
  Framed(*this, "FireTaskChanged", "Task", Task, [&] {
    if (!Tasks->PauseEvents) Events.TaskChanged.Raise(Task);
  });
}

void QBProject::FireTaskRemoved(const Ref<quillbook::Task>& Task) {
  Framed(*this, "FireTaskRemoved", "Task", Task, [&] {
    if (!Tasks->PauseEvents) Events.TaskRemoved.Raise(Task);
  });
}

// Build profiles and builds.

void QBProject::FireBuildProfilesChanged() {
  Procedure(*this, "FireBuildProfilesChanged").Run([&] { Events.BuildProfilesChanged.Raise(); });
}

void QBProject::FireBuildProfileChanged(const Ref<quillbook::BuildProfile>& BuildProfile) {
  Framed(*this, "FireBuildProfileChanged", "BuildProfile", BuildProfile, [&] {
    if (!PauseEvents() && TextHelper::InCollection(BuildProfile->ID(), *BuildProfiles))
      Events.BuildProfileChanged.Raise(BuildProfile);
  });
}

void QBProject::FireBuildProfileAdded(const Ref<quillbook::BuildProfile>& BuildProfile) {
  Framed(*this, "FireBuildProfileAdded", "BuildProfile", BuildProfile, [&] {
    if (!PauseEvents()) Events.BuildProfileAdded.Raise(BuildProfile);
  });
}

void QBProject::FireBuildProfileRemoved(const Ref<quillbook::BuildProfile>& BuildProfile) {
  Framed(*this, "FireBuildProfileRemoved", "BuildProfile", BuildProfile, [&] {
    if (!PauseEvents()) Events.BuildProfileRemoved.Raise(BuildProfile);
  });
}

void QBProject::FireDirtyStateChanged() {
  if (mLoading) return;
  Procedure(*this, "FireDirtyStateChanged").Run([&] { Events.DirtyStateChanged.Raise(); });
}

void QBProject::FireBuildProgress(std::string_view Status) {
  Procedure(*this, "FireBuildProgress", [&](auto& p) { p("Status", Status); }).Run([&] {
    Events.BuildProgress.Raise(Status);
  });
}

void QBProject::FireBuildMessage(std::string_view Message, BuildMessageLevel Level) {
  Procedure(*this, "FireBuildMessage", [&](auto& p) {
    p("Message", Message);
    p("Level", Level);
  }).Run([&] { Events.BuildMessage.Raise(Message, Level); });
}

}  // namespace quillbook
