// What the operations of a project itself raise, and what they leave dirty.
#include "support/TemporaryFolder.h"
#include "unit/project/TrafficTest.h"

namespace quillbook {
namespace {

class ProjectTrafficTest : public TrafficTest {
 protected:
  static constexpr const char* loads =
      "LoadProgress(Loading Spelling Settings) LoadProgress(Loading Other Files List) LoadProgress(Loading Glossary) "
      "LoadProgress(Loading Table of Contents) LoadProgress(Loading Tasks) LoadProgress(Loading Build Profiles) "
      "LoadProgress(Loading Project Properties) | ";
};

TEST_F(ProjectTrafficTest, Settings) {
  const std::string told = "Changed Dirty | P";
  const std::string quiet = " | ";
  Check({
      {"Title", [](Scene& s) { s.project->SetTitle("x"); }, told, told, ""},
      {"Title, the same", [](Scene& s) { s.project->SetTitle(""); }, quiet, quiet, ""},
      {"DictionaryFileName", [](Scene& s) { s.project->SetDictionaryFileName("x"); }, told, told, ""},
      {"TemplateName", [](Scene& s) { s.project->SetTemplateName("x"); }, "Changed Dirty TopicTemplateChanged(x) | P",
       told, ""},
      {"SpellLastCheckDateTime", [](Scene& s) { s.project->SetSpellLastCheckDateTime(Date(1)); }, told, told, ""},
      {"SpellLastCheckDateTime, the same", [](Scene& s) { s.project->SetSpellLastCheckDateTime(Date()); }, quiet, quiet,
       ""},
      {"AutoGenerateIndexEntries", [](Scene& s) { s.project->SetAutoGenerateIndexEntries(false); }, told, told, ""},
      {"AutoGenerateCategoryIndex", [](Scene& s) { s.project->SetAutoGenerateCategoryIndex(true); }, told, told, ""},
      {"BuildMVProject", [](Scene& s) { s.project->SetBuildMVProject(false); }, told, told, ""},
      {"OutputDirectory", [](Scene& s) { s.project->SetOutputDirectory("\\help\\out"); }, told, told, ""},
      {"MVPFileName", [](Scene& s) { s.project->SetMVPFileName("\\help\\code.mvp"); }, told, told, ""},
      {"MVPFileName, none", [](Scene& s) { s.project->SetMVPFileName("\\\\\\"); }, quiet, quiet, ""},
      {"DefaultTopic", [](Scene& s) { s.project->SetDefaultTopic(s.a); }, told, told, ""},
      {"DefaultTopic, none", [](Scene& s) { s.project->SetDefaultTopic({}); }, quiet, quiet, ""},
      {"CurrentBuildProfile", [](Scene& s) { s.project->SetCurrentBuildProfile(s.profile); }, quiet, quiet, ""},
      {"ProjectType", [](Scene& s) { s.project->SetProjectType(ProjectTypeSeparateFiles); }, quiet, quiet, ""},
      {"SpellAddIgnoreAllWord", [](Scene& s) { s.project->SpellAddIgnoreAllWord("x"); }, quiet, quiet, ""},
      {"PauseEvents", [](Scene& s) { s.project->SetPauseEvents(false); }, quiet, quiet, ""},
  });
}

TEST_F(ProjectTrafficTest, Flags) {
  Check({
      {"Dirty", [](Scene& s) { s.project->SetDirty(true); }, "Dirty | P", "Dirty | P", ""},
      {"Dirty, False", [](Scene& s) { s.project->SetDirty(false); }, "Dirty | ", "Dirty | ", ""},
      {"TopicsDirty", [](Scene& s) { s.project->SetTopicsDirty(true); }, "Dirty | T", "Dirty | T", ""},
      {"TopicsDirty, False", [](Scene& s) { s.project->SetTopicsDirty(false); }, " | ", " | ", ""},
      {"QBNodes.Dirty", [](Scene& s) { s.project->QBNodes->SetDirty(true); }, "Dirty | N", " | N", ""},
      {"QBNodes.Dirty, False", [](Scene& s) { s.project->QBNodes->SetDirty(false); }, " | ", " | ", ""},
      {"GlossaryItems.Dirty", [](Scene& s) { s.project->GlossaryItems()->SetDirty(true); }, "Dirty | G", "Dirty | G",
       ""},
      {"GlossaryItems.Dirty, False", [](Scene& s) { s.project->GlossaryItems()->SetDirty(false); }, " | ", " | ", ""},
      {"Tasks.Dirty", [](Scene& s) { s.project->Tasks->SetDirty(true); }, "Dirty | K", "Dirty | K", ""},
      {"Tasks.Dirty, False", [](Scene& s) { s.project->Tasks->SetDirty(false); }, "Dirty | ", "Dirty | ", ""},
      {"Topic.Dirty", [](Scene& s) { s.a->SetDirty(true); }, "Dirty | Pt", "Dirty | Pt", ""},
      {"Topic.Dirty, False", [](Scene& s) { s.a->SetDirty(false); }, " | ", " | ", ""},
  });
}

TEST_F(ProjectTrafficTest, Factories) {
  const std::string quiet = " | ";
  Check({
      {"NewTopic", [](Scene& s) { (void)s.project->NewTopic(); }, quiet, quiet, ""},
      {"NewTopicCategory", [](Scene& s) { (void)s.project->NewTopicCategory(); }, quiet, quiet, ""},
      {"NewOtherFile", [](Scene& s) { (void)s.project->NewOtherFile("\\x"); }, quiet, quiet, ""},
      {"NewTask", [](Scene& s) { (void)s.project->NewTask(); }, quiet, quiet, ""},
      // An item tells of its term and definition although it stands nowhere yet.
      {"NewGlossaryItem", [](Scene& s) { (void)s.project->NewGlossaryItem("x", "y"); },
       "GlossaryItemChanged(x) Dirty GlossaryItemChanged(x) Dirty | G", "Dirty Dirty | G", ""},
      {"NewGlossaryItem, empty", [](Scene& s) { (void)s.project->NewGlossaryItem("", ""); }, quiet, quiet, ""},
      // A profile that isn't in the list is told to nobody, but dirties the project with each value that differs.
      {"NewBuildProfile", [](Scene& s) { (void)s.project->NewBuildProfile("x", "y", false, 2); },
       "Dirty Dirty Dirty Dirty | P", "Dirty Dirty Dirty Dirty | P", ""},
      {"NewBuildProfile, empty", [](Scene& s) { (void)s.project->NewBuildProfile(); }, quiet, quiet, ""},
      {"NewProjectProperty", [](Scene& s) { s.project->NewProjectProperty("x", pptHTML, "y"); },
       "Dirty ProjectPropertyAdded(x) | P", "Dirty ProjectPropertyAdded(x) | P", ""},
  });
}

TEST_F(ProjectTrafficTest, LoadAndSave) {
  const std::string defaultProfile = "BuildProfileAdded(Default) BuildProfilesChanged | ";
  Check({
      {"Load", [](Scene& s) { s.project->Load(s.saved); }, loads, loads, ""},
      // A file without profiles gets one, which is added as any other.
      {"Load, empty", [](Scene& s) { s.project->Load("<QBProject Title='x' TemplateName='y'/>"); }, defaultProfile,
       defaultProfile, ""},
      {"Load, template of an older file",
       [](Scene& s) { s.project->Load("<QBProject><VariableValue Name='Template'>x</VariableValue></QBProject>"); },
       "TopicTemplateChanged(x) " + defaultProfile, "TopicTemplateChanged(x) " + defaultProfile, ""},
      {"LoadFromFile, missing", [](Scene& s) { s.project->LoadFromFile("\\no\\such.qbp"); }, " | ", " | ", ""},
      {"Save", [](Scene& s) { (void)s.project->Save(); }, " | ", " | ", ""},
  });
}

TEST_F(ProjectTrafficTest, Save_LeavesTheProjectsFlags_AndClearsThoseOfItsTopics) {
  Scene scene;
  EXPECT_EQ(scene.Effect([](Scene& s) {
    s.project->SetTitle("x");
    s.node->SetIcon(1);
    s.item->SetTerm("x");
    s.task->SetTitle("x");
    s.a->SetTitle("x");
    (void)s.traffic.Take();
    (void)s.project->Save();
  }),
            " | PTNGK");
}

TEST_F(ProjectTrafficTest, OnDisk) {
  const support::TemporaryFolder folder;
  Scene scene;
  scene.project->Filename->SetFullName(folder.Stored("p.qbp"));
  EXPECT_EQ(scene.Effect([](Scene& s) {
    s.project->SetTitle("x");
    s.a->SetTitle("x");
    (void)s.traffic.Take();
    EXPECT_TRUE(s.project->SaveToDisk());
  }),
            "Dirty | ");
  EXPECT_EQ(scene.Effect([&](Scene& s) { s.project->LoadFromFile(folder.Stored("p.qbp")); }), loads);

  const auto topic = scene.AddTopic("x", "X");
  EXPECT_EQ(scene.Effect([](Scene& s) { s.project->Reload(); }),
            "LoadProgress(Loading Spelling Settings) LoadProgress(Loading Other Files List) LoadProgress(Loading Build "
            "Profiles) LoadProgress(Loading Project Properties) TopicRemoved(x) | ");
  EXPECT_TRUE(scene.project->Topics->Item(topic->Key)) << "taking it out is left to the listener";
  EXPECT_FALSE(scene.project->PauseEvents());
}

}  // namespace
}  // namespace quillbook
