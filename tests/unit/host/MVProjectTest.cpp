#include "quillbook/host/MVProject.h"

#include <gtest/gtest.h>

#include "Toy.h"
#include "quillbook/host/TemplateStore.h"
#include "support/TemporaryFolder.h"

namespace quillbook {
namespace {

class MVProjectTest : public testing::Test {
 protected:
  MVProjectTest() {
    folder.Write("Templates/T/template.xml", R"(<template name="T">
      <namespace name="toy"/><variable name="Theme" default="light"/></template>)");
    folder.Write("Templates/T/scraps/Foot.html", "foot");
    TemplateStore::OfApartment()->SetConfigPath(folder.Stored());
  }
  ~MVProjectTest() override { TemplateStore::OfApartment()->SetConfigPath(""); }

  std::vector<std::string> calls;
  toy::Registration registration{&calls};
  support::TemporaryFolder folder;
  Ref<MVProject> project = New<MVProject>();
};

TEST_F(MVProjectTest, DocTypes_AreMadeOnceForEachRegisteredNamespace) {
  ASSERT_EQ(project->DocTypes()->Count(), 1u);
  const auto& toyType = project->DocTypes()->Item("TOY");
  EXPECT_EQ(toyType->ID(), "toy");
  EXPECT_TRUE(toyType->NamespaceProvider());
  EXPECT_TRUE(toyType->PlugIn());
  EXPECT_EQ(project->DocTypes()->Item("toy"), toyType);
  EXPECT_EQ(calls, std::vector<std::string>{"initialise"});
}

TEST_F(MVProjectTest, Scrap_IsOfTheCurrentTemplateOrMissing) {
  EXPECT_EQ(project->Scrap("foot"), "!MISSING SCRAP 'foot'!");
  const auto& docType = project->DocTypes()->Item("toy");
  docType->SetTemplate(TemplateStore::OfApartment()->Find("T"));
  project->SetCurrentDocType(docType);
  EXPECT_EQ(project->Scrap("FOOT"), "foot");
  EXPECT_EQ(project->Scrap("head").rfind("!MISSING", 0), 0u);
}

TEST_F(MVProjectTest, ValueOfVariable_PrefersTheProjectsOwn) {
  EXPECT_EQ(project->ValueOfVariable("theme"), "");
  const auto& docType = project->DocTypes()->Item("toy");
  docType->SetTemplate(TemplateStore::OfApartment()->Find("T"));
  project->SetCurrentDocType(docType);
  EXPECT_EQ(project->ValueOfVariable("theme"), "light");
  project->Variables()->Add(New<VariableValue>("Theme", ""), "Theme");
  EXPECT_EQ(project->ValueOfVariable("theme"), "") << "an empty value is a value";
}

TEST_F(MVProjectTest, Reset_EndsPlugInsAndLetsGo) {
  project->RootItems()->Add(New<toy::Item>("root"), "toy");
  project->Variables()->Add(New<VariableValue>("a", "b"), "a");
  project->SetCurrentDocType(project->DocTypes()->Item("toy"));
  project->OutputDirectory = "\\out\\";
  project->Cancel();
  project->Reset();
  EXPECT_EQ(calls, (std::vector<std::string>{"initialise", "terminate"}));
  EXPECT_TRUE(project->RootItems()->IsEmpty());
  EXPECT_TRUE(project->Variables()->IsEmpty());
  EXPECT_FALSE(project->CurrentDocType());
  EXPECT_FALSE(project->IsCancelled());
  EXPECT_EQ(project->OutputDirectory, "\\out\\");
  EXPECT_EQ(project->DocTypes()->Count(), 1u) << "it can be used again";
}

TEST_F(MVProjectTest, Progress_TellsStageAndMessageTogether) {
  std::vector<std::string> heard;
  const auto connection = project->ProgressChanged.Connect([&](std::string_view stage, std::string_view message) {
    heard.push_back(std::string(stage) + "/" + std::string(message));
  });
  project->SetProgressStage("writing");
  project->SetProgressMessage("Generating content");
  EXPECT_EQ(heard, (std::vector<std::string>{"writing/", "writing/Generating content"}));
}

TEST_F(MVProjectTest, LoadProject_SetsTheTemplatesOfDocTypes) {
  folder.Write("related.mvp", R"(<mvproject><doctype id="toy" template="T"/></mvproject>)");
  project->LoadProject(folder.Stored() + "related.mvp");
  ASSERT_EQ(project->DocTypes()->Count(), 1u);
  EXPECT_EQ(project->DocTypes()->Item("toy")->Template()->Name(), "T");
  EXPECT_EQ(calls, (std::vector<std::string>{"initialise", "loaded"}));
}

TEST_F(MVProjectTest, LoadProject_OfABadFileLeavesNoDocTypes) {
  std::vector<BuildNote> notes;
  const auto connection = project->NoteAdded.Connect([&](const BuildNote& note) { notes.push_back(note); });
  folder.Write("cut.mvp", "<mvproject>\n<doctype id=");
  folder.Write("root.mvp", "<other/>");
  folder.Write("unknown.mvp", "<mvproject><doctype id='nosuch'/></mvproject>");
  folder.Write("noid.mvp", "<mvproject><doctype/></mvproject>");
  for (const auto* file : {"missing.mvp", "cut.mvp", "root.mvp", "unknown.mvp", "noid.mvp"}) {
    notes.clear();
    project->LoadProject(folder.Stored() + file);
    EXPECT_TRUE(project->DocTypes()->IsEmpty()) << file;
    ASSERT_EQ(notes.size(), 1u) << file;
    EXPECT_EQ(notes[0].Code, "project.unreadable");
    EXPECT_NE(notes[0].Text.find(file), std::string::npos) << notes[0].Text;
  }
  project->LoadProject(folder.Stored() + "cut.mvp");
  EXPECT_EQ(notes.back().Line, 2u);
}

TEST_F(MVProjectTest, Cancel_MayComeFromASignalHandler) {
  EXPECT_TRUE(std::atomic<bool>::is_always_lock_free);
  project->Cancel();
  EXPECT_TRUE(project->IsCancelled());
}

}  // namespace
}  // namespace quillbook
