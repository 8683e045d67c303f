// What the table of contents, the glossary, the tasks and the other files raise, and what they leave dirty.
#include "unit/project/TrafficTest.h"

namespace quillbook {
namespace {

class StructureTrafficTest : public TrafficTest {
 protected:
  template <class Loaded>
  static void Load(Loaded& loaded, std::string text) {
    XMLDocument record;
    EXPECT_TRUE(record.LoadXML(std::move(text)));
    loaded.Load(record.DocumentElement());
  }
};

TEST_F(StructureTrafficTest, Nodes) {
  const std::string told = "QBNodeChanged(n) Dirty Dirty | N";
  const std::string held = " | N";
  const std::string quiet = " | ";
  const std::string record = "<n key='x' nt='0' ct='2' c='x' i='1' cfn='' tid='' url=''/>";
  Check({
      {"NewNode", [](Scene& s) { s.project->QBNodes->NewNode(); }, quiet, quiet, ""},
      {"Add", [](Scene& s) { Scene::AddNode(s.project->QBNodes, "x"); }, "Dirty | N", held, ""},
      {"Add, known key", [](Scene& s) { Scene::AddNode(s.project->QBNodes, "n"); }, "Dirty | N", held, ""},
      {"Add, known key before another",
       [](Scene& s) { s.project->QBNodes->Add(Scene::NewNode(s.project->QBNodes, "n"), "n", 1); }, quiet, quiet,
       "QBNodes.Add 457"},
      {"Remove", [](Scene& s) { s.project->QBNodes->Remove("n"); }, "QBNodeRemoved(n) Dirty Dirty | N", held, ""},
      {"Remove, unknown key", [](Scene& s) { s.project->QBNodes->Remove("m"); }, quiet, quiet, "QBNodes.Remove 5"},
      {"move",
       [](Scene& s) {
         s.project->QBNodes->Remove("n");
         s.project->QBNodes->Add(s.node, "n");
       },
       "QBNodeRemoved(n) Dirty Dirty Dirty | N", held, ""},
      {"CaptionText", [](Scene& s) { s.node->SetCaptionText("x"); }, told, held, ""},
      {"CaptionText, the same", [](Scene& s) { s.node->SetCaptionText(""); }, quiet, quiet, ""},
      {"CaptionType", [](Scene& s) { s.node->SetCaptionType(ctDefault); }, told, held, ""},
      {"Icon", [](Scene& s) { s.node->SetIcon(1); }, told, held, ""},
      {"StandardURL", [](Scene& s) { s.node->SetStandardURL("glossary.html"); }, told, held, ""},
      {"TopicID", [](Scene& s) { s.node->SetTopicID("x"); }, told, held, ""},
      {"SubContentsFileName", [](Scene& s) { s.node->SetSubContentsFileName("x"); }, told, held, ""},
      {"QBNodeType", [](Scene& s) { s.node->SetQBNodeType(ntSubContents); }, told, held, ""},
      {"FireChanged", [](Scene& s) { s.node->FireChanged(); }, told, held, ""},
      {"Key", [](Scene& s) { s.node->Key = "x"; }, quiet, quiet, ""},
      {"ParentNode", [](Scene& s) { s.child->SetParentNode({}); }, quiet, quiet, ""},
      {"QBNodes", [](Scene& s) { s.node->SetQBNodes({}); }, quiet, quiet, ""},
      {"change without a list",
       [](Scene& s) {
         s.node->SetQBNodes({});
         s.node->SetIcon(1);
       },
       quiet, quiet, ""},
      {"Clone", [](Scene& s) { s.node->Clone(s.project); }, quiet, quiet, ""},
      {"Load", [&](Scene& s) { Load(*s.node, record); }, quiet, quiet, ""},
      {"Load of the list", [&](Scene& s) { Load(*s.project->QBNodes, "<x>" + record + "</x>"); }, quiet, quiet, ""},
      {"Save of the list", [](Scene& s) { s.project->QBNodes->Save(XMLDocument().DocumentElement()); }, quiet, quiet,
       ""},
      {"AllNodes", [](Scene& s) { (void)s.project->QBNodes->AllNodes(); }, quiet, quiet, ""},
  });
}

TEST_F(StructureTrafficTest, NodesBelowANode) {
  // A list is paused by itself: the one below stays live when the project is paused.
  Check({
      {"NewNode", [](Scene& s) { s.node->ChildNodes->NewNode(s.node); }, " | ", " | ", ""},
      {"Add", [](Scene& s) { Scene::AddNode(s.node->ChildNodes, "x"); }, "Dirty | n", "Dirty | n", ""},
      {"Remove", [](Scene& s) { s.node->ChildNodes->Remove("m"); }, "QBNodeRemoved(m) Dirty Dirty | Nn", "Dirty | Nn",
       ""},
      {"Icon", [](Scene& s) { s.child->SetIcon(1); }, "QBNodeChanged(m) Dirty Dirty | Nn", "Dirty | Nn", ""},
  });
}

TEST_F(StructureTrafficTest, Glossary) {
  const std::string told = "GlossaryItemChanged(g) Dirty | G";
  const auto add = [](Scene& s) {
    const auto item = s.project->NewGlossaryItem("", "");
    s.project->GlossaryItems()->Add(item, item->Key, 1);
  };
  Check({
      {"Add", add, "GlossaryItemAdded() Dirty Dirty | G", "Dirty Dirty | G", ""},
      {"Add, known key", [](Scene& s) { s.project->GlossaryItems()->Add(s.item, s.item->Key); }, " | ", " | ",
       "GlossaryItems.Add 457"},
      {"Remove", [](Scene& s) { s.project->GlossaryItems()->Remove(1); }, "GlossaryItemRemoved(g) Dirty Dirty | G",
       "Dirty Dirty | G", ""},
      {"Remove, unknown key", [](Scene& s) { s.project->GlossaryItems()->Remove("x"); }, " | ", " | ",
       "GlossaryItems.Remove 5"},
      {"Term", [](Scene& s) { s.item->SetTerm("x"); }, "GlossaryItemChanged(x) Dirty | G", "Dirty | G", ""},
      {"Term, the same", [](Scene& s) { s.item->SetTerm("g"); }, " | ", " | ", ""},
      {"Definition", [](Scene& s) { s.item->SetDefinition("x"); }, told, "Dirty | G", ""},
      {"Definition, the same", [](Scene& s) { s.item->SetDefinition("d"); }, " | ", " | ", ""},
      {"Key", [](Scene& s) { s.item->Key = "x"; }, " | ", " | ", ""},
      // The copy tells of its term and definition when it is made, and of nothing when it is loaded.
      {"Clone", [](Scene& s) { (void)s.item->Clone(); },
       "GlossaryItemChanged(g) Dirty GlossaryItemChanged(g) Dirty | G", "Dirty Dirty | G", ""},
      {"Load", [](Scene& s) { Load(*s.item, "<x Key='x' Term='x'>x</x>"); }, " | ", " | ", ""},
      {"Load of the list", [](Scene& s) { Load(*s.project->GlossaryItems(), "<x><x Key='x' Term='x'>x</x></x>"); },
       " | ", " | ", ""},
      {"Save of the list", [](Scene& s) { s.project->GlossaryItems()->Save(XMLDocument().DocumentElement()); }, " | ",
       " | ", ""},
  });
}

TEST_F(StructureTrafficTest, Tasks) {
  const std::string told = "TaskChanged(t) Dirty | K";
  const std::string held = "Dirty | K";
  const std::string quiet = " | ";
  const std::string record =
      "<x Key='x' Priority='Low' Title='x' AssignedTo='' TopicID='' Status='' CreatedOn='01-02-2005 13:05:09' "
      "CreatedBy='' ModifiedOn='01-02-2005 13:05:09' ModifiedBy=''/>";
  Check({
      {"Add", [](Scene& s) { s.project->Tasks->Add(s.project->NewTask(), "x"); }, "TaskAdded() Dirty | K", held, ""},
      {"Add, known key", [](Scene& s) { s.project->Tasks->Add(s.task, s.task->Key()); }, quiet, quiet, "Tasks.Add 457"},
      {"Remove", [](Scene& s) { s.project->Tasks->Remove(1); }, "TaskRemoved(t) Dirty | K", held, ""},
      {"Remove, unknown key", [](Scene& s) { s.project->Tasks->Remove("x"); }, quiet, quiet, "Tasks.Remove 5"},
      {"Title", [](Scene& s) { s.task->SetTitle("x"); }, "TaskChanged(x) Dirty | K", held, ""},
      {"Title, the same", [](Scene& s) { s.task->SetTitle("t"); }, quiet, quiet, ""},
      {"Priority", [](Scene& s) { s.task->SetPriority("x"); }, told, held, ""},
      {"Notes", [](Scene& s) { s.task->SetNotes("x"); }, told, held, ""},
      {"AssignedTo", [](Scene& s) { s.task->SetAssignedTo("x"); }, told, held, ""},
      {"TopicID", [](Scene& s) { s.task->SetTopicID("x"); }, told, held, ""},
      {"Topic", [](Scene& s) { s.task->SetTopic(s.a); }, told, held, ""},
      {"Topic, none", [](Scene& s) { s.task->SetTopic({}); }, quiet, quiet, ""},
      {"Status", [](Scene& s) { s.task->SetStatus("x"); }, told, held, ""},
      {"CreatedOn", [](Scene& s) { s.task->SetCreatedOn(Date(1)); }, told, held, ""},
      {"CreatedBy", [](Scene& s) { s.task->SetCreatedBy("x"); }, told, held, ""},
      {"ModifiedOn", [](Scene& s) { s.task->SetModifiedOn(Date(1)); }, told, held, ""},
      {"ModifiedBy", [](Scene& s) { s.task->SetModifiedBy("x"); }, told, held, ""},
      {"FireChanged", [](Scene& s) { s.task->FireChanged(); }, told, held, ""},
      {"Key", [](Scene& s) { s.task->SetKey("x"); }, quiet, quiet, ""},
      {"change while it is paused",
       [](Scene& s) {
         s.task->SetPauseEvents(true);
         s.task->SetTitle("x");
         s.task->FireChanged();
       },
       quiet, quiet, ""},
      {"Clone", [](Scene& s) { (void)s.task->Clone(); }, quiet, quiet, ""},
      {"Load", [&](Scene& s) { Load(*s.task, record); }, quiet, quiet, ""},
      // The list tells of every write of its flag, also of the False at the end of a load.
      {"Load of the list", [&](Scene& s) { Load(*s.project->Tasks, "<x>" + record + "</x>"); }, "Dirty | ", "Dirty | ",
       ""},
      {"Save of the list", [](Scene& s) { s.project->Tasks->Save(XMLDocument().DocumentElement()); }, quiet, quiet, ""},
  });
}

TEST_F(StructureTrafficTest, OtherFiles) {
  const auto add = [](Scene& s) { s.project->OtherFiles->Add(s.project->NewOtherFile("\\help\\x.css"), "x"); };
  Check({
      {"Add", add, "OtherFileAdded(x.css) Dirty | P", " | ", ""},
      {"Add, known key", [](Scene& s) { s.project->OtherFiles->Add(s.file, s.file->LocalSpec()); },
       "OtherFileAdded(f.png) Dirty | P", " | ", ""},
      {"Remove", [](Scene& s) { s.project->OtherFiles->Remove(1); }, "OtherFileRemoved(f.png) Dirty | P", " | ", ""},
      {"Remove, unknown key", [](Scene& s) { s.project->OtherFiles->Remove("x"); }, " | ", " | ",
       "OtherFiles.Remove 5"},
      {"IncludeInOutput", [](Scene& s) { s.file->SetIncludeInOutput(false); }, "OtherFileChanged(f.png) Dirty | P",
       "Dirty | P", ""},
      {"IncludeInOutput, the same", [](Scene& s) { s.file->SetIncludeInOutput(true); }, " | ", " | ", ""},
      {"IncludeInOutput, of a file not added",
       [](Scene& s) { s.project->NewOtherFile("\\x")->SetIncludeInOutput(false); }, "Dirty | P", "Dirty | P", ""},
      {"CaptureInfo", [](Scene& s) { s.file->SetCaptureInfo("x"); }, "Dirty | P", "Dirty | P", ""},
      {"CaptureInfo, the same", [](Scene& s) { s.file->SetCaptureInfo(""); }, " | ", " | ", ""},
      {"NewFlag", [](Scene& s) { s.file->SetNewFlag(true); }, " | ", " | ", ""},
      {"Filename", [](Scene& s) { s.file->Filename->SetFullName("\\x"); }, " | ", " | ", ""},
      {"Load", [](Scene& s) { Load(*s.file, "<x FileName='x' IncludeInOutput='False' CaptureInfo='x'/>"); }, " | ",
       " | ", ""},
      {"Save", [](Scene& s) { s.file->Save(XMLDocument().DocumentElement()); }, " | ", " | ", ""},
      {"ResetDeletedFiles", [](Scene& s) { s.project->OtherFiles->ResetDeletedFiles(); }, " | ", " | ", ""},
  });
}

}  // namespace
}  // namespace quillbook
