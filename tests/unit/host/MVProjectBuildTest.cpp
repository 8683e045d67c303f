#include "quillbook/host/MVProjectBuild.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "FailingFiles.h"
#include "Toy.h"
#include "quillbook/base/Failure.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/host/TemplateStore.h"
#include "quillbook/platform/Platform.h"
#include "support/TemporaryFolder.h"

namespace quillbook {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class Compiler final : public HelpCompiler {
 public:
  Outcome Compile(std::string_view ProjectFile, std::string_view HelpFile, const GoOn& goOn) override {
    if (!goOn(1, 2)) return {HelpCompileResult::Cancelled, {}, {}};
    return {HelpCompileResult::Warnings,
            std::string(ProjectFile) + " to " + std::string(HelpFile),
            {{NoteLevel::Warning, "toy.warning", "A warning"}}};
  }
  static const TypeInfo& StaticType() {
    static const TypeInfo type = Describe<Compiler>("ToyCompiler").Done();
    return type;
  }
  const TypeInfo& Type() const override { return StaticType(); }
};

class MVProjectBuildTest : public testing::Test {
 protected:
  MVProjectBuildTest() {
    WriteTemplate(R"(<template name="T">
      <layout name="Index.html" item="toy:project"/>
      <layout name="Page.html" item="toy:page" output="{QualifiedName}.html"/>
      <definition kind="toy:project"><definition kind="toy:page" filter="all"/></definition></template>)");
    Layout("Index.html", "index of %%title%%");
    Layout("Page.html", "<h1>%%title%%</h1>");
    root->Title = "Root";
    project->OutputDirectory = out.Stored();
  }
  ~MVProjectBuildTest() override { TemplateStore::OfApartment()->SetConfigPath(""); }

  void WriteTemplate(std::string_view definition) { config.Write("Templates/T/template.xml", definition); }
  void Layout(const std::string& name, std::string_view text) { config.Write("Templates/T/layouts/" + name, text); }
  Ref<toy::Item> AddPage(std::string title) {
    auto page = New<toy::Item>(std::move(title));
    root->Children->Add(page);
    return page;
  }
  void SetUpProject() {
    TemplateStore::OfApartment()->SetConfigPath(config.Stored());
    TemplateStore::OfApartment()->Forget();
    const auto& docType = project->DocTypes()->Item("toy");
    docType->SetTemplate(TemplateStore::OfApartment()->Find("T"));
    project->SetCurrentDocType(docType);
    if (!project->RootItems()->Contains("toy")) project->RootItems()->Add(root, "toy");
  }
  toy::Provider& Provider() {
    return dynamic_cast<toy::Provider&>(*project->DocTypes()->Item("toy")->NamespaceProvider());
  }
  BuildStatus Build() {
    SetUpProject();
    build = New<MVProjectBuild>();
    return build->Build(project);
  }
  std::vector<std::string> Codes() const {
    std::vector<std::string> codes;
    for (const auto& note : build->Notes()) codes.push_back(note.Code);
    return codes;
  }

  std::vector<std::string> plugInCalls;
  toy::Registration registration{&plugInCalls};
  support::TemporaryFolder config;
  support::TemporaryFolder out;
  std::shared_ptr<toy::FailingFiles> files = std::make_shared<toy::FailingFiles>();
  PlatformOverride<FileStore> override{files};
  Ref<toy::Item> root = New<toy::Item>();
  Ref<MVProject> project = New<MVProject>();
  Ref<MVProjectBuild> build;
};

TEST_F(MVProjectBuildTest, Pages_AreWrittenForEveryItemAndLayout) {
  AddPage("One");
  AddPage("Two");
  config.Write("Templates/T/styles/a.css", "css");
  EXPECT_EQ(Build(), BuildStatus::Done);
  EXPECT_THAT(out.Files(), ElementsAre("Index.html", "One.html", "Two.html", "styles/a.css"));
  EXPECT_EQ(out.Read("Index.html"), "index of Root");
  EXPECT_EQ(out.Read("Two.html"), "<h1>Two</h1>");
  EXPECT_EQ(out.Read("styles/a.css"), "css");
  EXPECT_EQ(build->PageCount(), 3u);
  EXPECT_EQ(build->SupportFileCount(), 1u);
  EXPECT_EQ(build->UnchangedCount(), 0u);
  EXPECT_TRUE(build->Notes().empty());
  EXPECT_EQ(build->CompileResult(), HelpCompileResult::None);
}

TEST_F(MVProjectBuildTest, Walk_CallsTheProviderAndThePlugInInOrder) {
  AddPage("One");
  config.Write("Templates/T/a.css", "css");
  Build();
  EXPECT_THAT(Provider().Calls,
              ElementsAre("before root Root", "before Root", "created Index.html as page of toy:project", "before One",
                          "created One.html as page of toy:page", "after One", "after Root", "after root Root",
                          "created a.css as FileSystemObject"));
  EXPECT_THAT(Provider().Filters, ElementsAre("", "all"));
  EXPECT_THAT(plugInCalls, ElementsAre("initialise", "before build", "after build"));
}

TEST_F(MVProjectBuildTest, DataProvider_KnowsItemParentAndRoot) {
  Layout("Page.html", "%%itemtypename%% %%itemkind%% %%probe%%");
  AddPage("One");
  SetUpProject();
  Provider().Data->BeforeAnswer = [this](const TemplateElement&) {
    const auto& data = *Provider().Data;
    if (data.DataProvider_CurrentItem() == root) return;
    EXPECT_EQ(data.DataProvider_CurrentParentItem(), root);
    EXPECT_EQ(data.DataProvider_CurrentRootItem(), root);
    EXPECT_EQ(project->CurrentPage(), "One.html");
  };
  Build();
  EXPECT_THAT(out.Read("One.html"), HasSubstr("page toy:page !UNCRECOGNISED ELEMENT 'probe'!"));
  EXPECT_EQ(project->CurrentPage(), "") << "no page is being written any more";
}

TEST_F(MVProjectBuildTest, ContentCreated_TellsFullStoredPaths) {
  AddPage("a\\One");
  std::vector<std::string> created;
  const auto connection = project->ContentCreated.Connect([&](std::string_view file) { created.emplace_back(file); });
  project->OutputDirectory.pop_back();  // the separator at the end doesn't matter
  Build();
  EXPECT_THAT(created, ElementsAre(out.Stored() + "Index.html", out.Stored() + "a\\One.html"));
  EXPECT_EQ(out.Read("a/One.html"), "<h1>a\\One</h1>");
}

TEST_F(MVProjectBuildTest, Listener_ChoosesLayoutsAndSupportFiles) {
  WriteTemplate(R"(<template name="T">
      <layout name="Page.html" item="toy:page" output="{QualifiedName}.html"/>
      <layout name="Wide.html" item="toy:page" output="{QualifiedName}.html"/>
      <definition kind="toy:page"/></template>)");
  Layout("Wide.html", "wide");
  config.Write("Templates/T/styles/mine.css", "theirs");
  config.Write("Templates/T/styles/other.css", "theirs");
  AddPage("One");
  std::vector<std::string> offered;
  const auto connection = project->BeforeOutputNamespacePage.Connect(
      [&](const Ref<PageLayout>& layout, const Ref<NamespaceDef>& definition, const Ref<Object>& item, bool& leaveOut) {
        if (layout) {
          offered.push_back(layout->Name() + " " + definition->Kind());
          leaveOut = layout->Name() == "Page.html";
        } else {
          const auto& file = dynamic_cast<FileSystemObject&>(*item);
          offered.push_back(file.RelativeName() + " " + file.NameWithExtension());
          leaveOut = file.NameWithExtension() == "mine.css";
        }
      });
  Build();
  EXPECT_THAT(offered, ElementsAre("Page.html toy:page", "Wide.html toy:page", "styles\\mine.css mine.css",
                                   "styles\\other.css other.css"));
  EXPECT_THAT(out.Files(), ElementsAre("One.html", "styles/other.css"));
  EXPECT_EQ(out.Read("One.html"), "wide");
}

TEST_F(MVProjectBuildTest, SecondBuild_LeavesEqualFilesAlone) {
  AddPage("One");
  AddPage("Two");
  Build();
  files->Created.clear();
  root->Children->Item(2)->Title = "Zwei";
  EXPECT_EQ(Build(), BuildStatus::Done);
  EXPECT_EQ(build->UnchangedCount(), 2u);
  EXPECT_EQ(build->PageCount(), 3u);
  EXPECT_EQ(files->Created.size(), 1u);
  EXPECT_EQ(out.Read("Two.html"), "<h1>Zwei</h1>");
}

TEST_F(MVProjectBuildTest, CodePage_LackingACharacterTakesAReference) {
  project->CodePage = 1252;
  AddPage("One")->Title = "é Ω 😀";
  Build();
  EXPECT_EQ(out.Read("One.html"), "<h1>\xE9 &#937; &#128512;</h1>");
}

TEST_F(MVProjectBuildTest, UnknownCodePage_FailsBeforeAnythingIsWritten) {
  project->CodePage = 4711;
  EXPECT_EQ(Build(), BuildStatus::Failed);
  EXPECT_THAT(project->CompilerLog, HasSubstr("4711"));
  EXPECT_TRUE(out.Files().empty());
}

TEST_F(MVProjectBuildTest, SameFileTwice_IsWrittenOnceAndToldWithBothNames) {
  AddPage("One");
  AddPage("Another")->QualifiedName = "One";
  EXPECT_EQ(Build(), BuildStatus::Done);
  EXPECT_EQ(out.Read("One.html"), "<h1>One</h1>");
  ASSERT_THAT(Codes(), ElementsAre("page.duplicate-file"));
  EXPECT_EQ(build->Notes()[0].Level, NoteLevel::Warning);
  EXPECT_THAT(build->Notes()[0].Text, HasSubstr("'One' (layout 'Page.html')"));
  EXPECT_THAT(build->Notes()[0].Text, HasSubstr("'Another' (layout 'Page.html')"));
}

TEST_F(MVProjectBuildTest, NamesThatDifferInCase_AreBothWrittenAndTold) {
  AddPage("Straße");
  AddPage("STRAßE");
  Build();
  EXPECT_THAT(Codes(), ElementsAre("page.duplicate-file"));
  EXPECT_TRUE(out.Has("Straße.html"));
  EXPECT_TRUE(out.Has("STRAßE.html"));
}

TEST_F(MVProjectBuildTest, PageAndSupportFileOfOneName_KeepThePage) {
  config.Write("Templates/T/One.html", "support");
  AddPage("One");
  Build();
  EXPECT_EQ(out.Read("One.html"), "<h1>One</h1>");
  EXPECT_THAT(Codes(), ElementsAre("support.duplicate-file"));
  EXPECT_THAT(build->Notes()[0].Text, HasSubstr("the template's file 'One.html'"));
}

TEST_F(MVProjectBuildTest, PagesOutsideTheOutputFolder_AreToldAndNotWritten) {
  for (const auto* name : {"../escape", "/tmp/escape", "a/../../escape", "..\\escape", "C:\\escape"}) AddPage(name);
  AddPage("Good");
  EXPECT_EQ(Build(), BuildStatus::Done);
  EXPECT_THAT(out.Files(), ElementsAre("Good.html", "Index.html"));
  EXPECT_EQ(Codes(), std::vector<std::string>(5, "page.outside-output"));
  EXPECT_EQ(build->Notes()[0].Level, NoteLevel::Error);
  EXPECT_THAT(build->Notes()[0].Text, HasSubstr("../escape.html"));
}

TEST_F(MVProjectBuildTest, OutputNameWithAnUnknownMember_FailsTheBuild) {
  WriteTemplate(R"(<template name="T"><layout name="Page.html" item="toy:page" output="{Nothing}.html"/>
      <definition kind="toy:page"/></template>)");
  AddPage("One");
  EXPECT_EQ(Build(), BuildStatus::Failed);
  EXPECT_THAT(project->CompilerLog, HasSubstr("Nothing"));
}

TEST_F(MVProjectBuildTest, Cancel_StopsBetweenPages) {
  for (int i = 0; i < 10; ++i) AddPage("P" + std::to_string(i));
  const auto connection = project->ContentCreated.Connect([&](std::string_view file) {
    if (file.ends_with("P3.html")) project->Cancel();
  });
  EXPECT_EQ(Build(), BuildStatus::Cancelled);
  EXPECT_THAT(out.Files(), ElementsAre("Index.html", "P0.html", "P1.html", "P2.html", "P3.html"));
  EXPECT_EQ(Provider().Calls.back(), "after root Root");
}

TEST_F(MVProjectBuildTest, CancelBeforeTheBuild_WritesNothing) {
  SetUpProject();
  project->Cancel();
  EXPECT_EQ(Build(), BuildStatus::Cancelled);
  EXPECT_TRUE(out.Files().empty());
}

TEST_F(MVProjectBuildTest, FullDisk_EndsTheBuildAndNamesTheFile) {
  AddPage("One");
  files->Full = true;
  EXPECT_EQ(Build(), BuildStatus::Failed);
  EXPECT_EQ(build->CompileResult(), HelpCompileResult::GenerationFailed);
  ASSERT_THAT(Codes(), ElementsAre("build.failed"));
  EXPECT_THAT(build->Notes()[0].Text, HasSubstr(out / "Index.html"));
  EXPECT_THAT(build->Notes()[0].Text, HasSubstr("disk is full"));
  EXPECT_EQ(project->CompilerLog, build->Notes()[0].Text);
  EXPECT_TRUE(out.Files().empty()) << "no half-written page";
}

TEST_F(MVProjectBuildTest, DeniedFile_EndsTheBuildAfterWhatWasWritten) {
  AddPage("One");
  AddPage("Two");
  files->Denied = "Two.html";
  EXPECT_EQ(Build(), BuildStatus::Failed);
  EXPECT_THAT(out.Files(), ElementsAre("Index.html", "One.html"));
  EXPECT_EQ(build->PageCount(), 2u);
  EXPECT_THAT(build->Notes()[0].Text, HasSubstr("Two.html"));
}

TEST_F(MVProjectBuildTest, FileInPlaceOfTheOutputFolder_EndsTheBuild) {
  out.Write("taken", "");
  project->OutputDirectory = out.Stored() + "taken\\";
  AddPage("One");
  EXPECT_EQ(Build(), BuildStatus::Failed);
  EXPECT_THAT(build->Notes()[0].Text, HasSubstr("taken"));
}

TEST_F(MVProjectBuildTest, MissingSettings_EndTheBuild) {
  project->OutputDirectory.clear();
  EXPECT_EQ(Build(), BuildStatus::Failed);
  EXPECT_THAT(project->CompilerLog, HasSubstr("output folder"));
  project->OutputDirectory = out.Stored();
  project->CurrentDocType()->SetTemplate(nullptr);
  build = New<MVProjectBuild>();
  EXPECT_EQ(build->Build(project), BuildStatus::Failed);
  project->SetCurrentDocType(nullptr);
  EXPECT_EQ(New<MVProjectBuild>()->Build(project), BuildStatus::Failed);
}

TEST_F(MVProjectBuildTest, EndlessElements_EndTheBuildWithAFailure) {
  Layout("Page.html", "%%again%%");
  AddPage("One");
  EXPECT_EQ(Build(), BuildStatus::Failed);
  EXPECT_THAT(project->CompilerLog, HasSubstr("again"));
  EXPECT_FALSE(out.Has("One.html"));
}

TEST_F(MVProjectBuildTest, CompilationWithoutCompiler_SaysSo) {
  project->CompileHelpFile = true;
  project->HelpVersion = "3";
  AddPage("One");
  EXPECT_EQ(Build(), BuildStatus::Done);
  EXPECT_EQ(build->CompileResult(), HelpCompileResult::NoCompiler);
  EXPECT_THAT(project->CompilerLog, HasSubstr("no help compiler"));
  EXPECT_THAT(Codes(), ElementsAre("compile.no-compiler"));
  EXPECT_TRUE(out.Has("One.html"));
}

TEST_F(MVProjectBuildTest, Compiler_GetsTheProjectFileAndGivesResultAndLog) {
  project->CompileHelpFile = true;
  project->Compiler = New<Compiler>();
  project->HelpProjectFile = "\\out\\p.hhp";
  project->HelpFileName = "\\out\\p.chm";
  EXPECT_EQ(Build(), BuildStatus::Done);
  EXPECT_EQ(build->CompileResult(), HelpCompileResult::Warnings);
  EXPECT_EQ(project->CompilerLog, "\\out\\p.hhp to \\out\\p.chm");
  EXPECT_THAT(Codes(), ElementsAre("toy.warning"));
  EXPECT_THAT(plugInCalls, ElementsAre("initialise", "before build", "before compile", "after build"));
}

TEST_F(MVProjectBuildTest, SupportFiles_CanBeCopiedWithoutABuildOrLeftOut) {
  config.Write("Templates/T/a.css", "css");
  SetUpProject();
  project->CurrentDocType()->CopyTemplateFiles();
  EXPECT_THAT(out.Files(), ElementsAre("a.css"));
  ::remove((out / "a.css").c_str());
  project->CopySupportFiles = false;
  Build();
  EXPECT_THAT(out.Files(), ElementsAre("Index.html"));
}

TEST_F(MVProjectBuildTest, DefinitionsWithoutPages_AreNotAsked) {
  WriteTemplate(R"(<template name="T"><layout name="Index.html" item="toy:project"/>
      <definition kind="toy:project"><definition kind="toy:page"/></definition></template>)");
  AddPage("One");
  Build();
  EXPECT_THAT(Provider().Filters, ElementsAre("")) << "pages are for lists only";
}

TEST_F(MVProjectBuildTest, NothingStaysAlive_WhenProjectAndBuildHaveGone) {
  AddPage("One");
  Build();
  WeakReference<MVProject> watched;
  watched.SetTarget(project);
  build = nullptr;
  project = nullptr;
  EXPECT_FALSE(watched.Target());
}

}  // namespace
}  // namespace quillbook
