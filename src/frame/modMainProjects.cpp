// Helpers of the library that know projects and the host engine.
#include "frame/Apartment.h"
#include "quillbook/base/Text.h"
#include "quillbook/frame/Procedure.h"
#include "quillbook/frame/modMain.h"
#include "quillbook/frame/services/AutoMessages.h"
#include "quillbook/generation/Registration.h"
#include "quillbook/host/MVProject.h"
#include "quillbook/host/TemplateStore.h"
#include "quillbook/platform/MessageBox.h"
#include "quillbook/project/QBProject.h"
#include "quillbook/structure/QBNode.h"
#include "quillbook/structure/QBNodes.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/TopicLink.h"
#include "quillbook/topics/TopicLinks.h"
#include "quillbook/topics/Topics.h"

namespace quillbook::modMain {
namespace {

/// What this library's templates, doc type and items are filed under at the host.
constexpr std::string_view kNamespace = "mv.quillbooklite";

int AskAboutNodes(const Topic& topic) {
  return AutoMessages::MsgBox("There are one or more Table of Contents nodes that point to this Topic ('" +
                                  topic.Name() + "'). Do you want to delete those too ?",
                              MessageBox::YesNoCancel + MessageBox::Question, "Remove TOC Entries", "RemoveTOCEntries",
                              "Do this automatically next time");
}

void RemoveNode(const QBProject& project, const QBNode& node) {
  const auto parent = node.ParentNode();
  (parent ? parent->ChildNodes : project.QBNodes)->Remove(node.Key);
}

void MakePlainEntry(QBNode& node, const Topic& topic) {
  node.SetCaptionText(topic.ContentsTitle());
  node.SetCaptionType(ctSpecific);
  node.SetQBNodeType(ntStandard);
}

/// False if the user cancelled; what was already done stays done.
bool ReleaseNodes(const QBProject& project, const Ref<Topic>& topic, bool& noPrompt) {
  bool shownMessage = false;
  bool deleteNodes = false;
  const auto nodes = project.QBNodes->NodesForTopic(topic);
  for (const auto& node : *nodes) {
    if (!shownMessage) {
      const int answer = AskAboutNodes(*topic);
      if (answer == MessageBox::Cancel) return false;
      deleteNodes = answer == MessageBox::Yes;
      shownMessage = true;
      noPrompt = true;
    }
    if (deleteNodes)
      RemoveNode(project, *node);
    else
      MakePlainEntry(*node, *topic);
  }
  return true;
}

void RemoveLinksTo(const Topic& topic, TopicLinks& links) {
  // The position moves on after a removal too, so of two neighbouring links the second stays. Files and editors count
  // on that.
  const auto count = links.Count();
  for (std::size_t position = 1; position <= count && position <= links.Count(); ++position)
    if (links.Item(position)->ChildTopicKey == topic.Key) links.Remove(position);
}

}  // namespace

Ref<TemplateStore> InstalledTemplates() {
  auto store = TemplateStore::OfApartment();
  store->SetConfigPath(ConfigPath());
  return store;
}

Ref<PageTemplates> QuillbookPageTemplates(std::string_view SupportsFlag) {
  return Procedure(modMainModule(), "QuillbookPageTemplates", [&](auto& p) { p("SupportsFlag", SupportsFlag); })
      .Run([&] {
        auto result = New<PageTemplates>();
        const auto store = InstalledTemplates();
        for (const auto& candidate : *store->Templates()) {
          // A template that names the namespace twice is added twice, and fails as a duplicate.
          for (const auto& name : *candidate->Namespaces())
            if (EqualsIgnoringCase(name, kNamespace) && candidate->Supports().find(SupportsFlag) != std::string::npos)
              result->Add(candidate, candidate->Name());
        }
        return result;
      });
}

Ref<MVProject> NewMVProject() {
  return Procedure(modMainModule(), "NewMVProject").Run([] {
    RegisterQuillbookNamespace();
    auto project = New<MVProject>();
    project->CopySupportFiles = true;
    return project;
  });
}

Ref<QBProject> GetQBProject(const Ref<MVProject>& Project) {
  Ref<QBProject> result;
  IgnoreFailures([&] {
    const auto item = Project->RootItems()->Item(kNamespace);
    result = Ref<QBProject>(dynamic_cast<QBProject*>(item.get()));
  });
  return result;
}

void BeforeDeleteTopic(const Ref<Topic>& T, bool& Cancel, bool& NoPrompt) {
  Procedure(modMainModule(), "BeforeDeleteTopic", [&](auto& p) {
    p("T", T);
    p("Cancel", Cancel);
    p("NoPrompt", NoPrompt);
  }).Run([&] {
    const auto project = T->QBProject();
    if (!ReleaseNodes(*project, T, NoPrompt)) {
      Cancel = true;
      return;
    }
    for (const auto& other : *project->Topics)
      if (other != T) RemoveLinksTo(*T, *other->TopicLinks());
  });
}

}  // namespace quillbook::modMain
