#include "generation/BuildTest.h"

#include <sys/stat.h>

#include "quillbook/host/HelpCompiler.h"

namespace quillbook {
namespace {

namespace fs = std::filesystem;
using support::BuildTest;
using support::Prompt;

// The whole way.

TEST_F(BuildTest, WritesAPageForEachTopic) {
  AddTopic("One", "<p>1</p>", "First");
  AddTopic("Two: b", "<p>2</p>");
  AddTopic("Hidden")->SetIncludeInHelpFile(false);
  const auto result = Build();
  ASSERT_TRUE(result);
  EXPECT_FALSE(result->Cancelled);
  EXPECT_EQ(result->HelpCompileResult, 0);
  EXPECT_EQ(result->CompilerLog, "");
  EXPECT_EQ(Output(), "One.html,Two- b.html");
  EXPECT_EQ(folder.Read("out/One.html"), "<title>First</title><p>1</p>");
  EXPECT_EQ(profile->LastBuildResult, result);
  EXPECT_EQ(project->CurrentBuildProfile(), profile);
}

TEST_F(BuildTest, TellsItsProgressInOrder) {
  Build();
  EXPECT_EQ(progress,
            (std::vector<std::string>{"Validating the output path", "Copying other files to the output directory",
                                      "Generating content", ""}));
  EXPECT_EQ(log, "+-");
  EXPECT_FALSE(project->MVProject());
  EXPECT_TRUE(prompts.empty());
}

TEST_F(BuildTest, TellsItsProgressInOrder_WithACompilation) {
  CompileInto("help/demo.chm");
  profile->SetRemoveOutputFiles(true);
  Build();
  EXPECT_EQ(progress, (std::vector<std::string>{"Validating the output Help filename", "Validating the output path",
                                                "Copying other files to the output directory", "Generating content",
                                                "Removing the source output files", ""}));
}

TEST_F(BuildTest, SettingsReachTheHost_Help1) {
  profile->SetHTMLHelpVersion(1);
  profile->SetLocaleID(1049);
  profile->SetH2Namespace("ns");
  profile->SetH2FileID("id");
  profile->SetH2PlugIn("a,b");
  CompileInto("help/demo.chm");
  bool seen = false;
  onProgress = [&](std::string_view status) {
    if (status != "Generating content") return;
    const auto& settings = *project->MVProject();
    EXPECT_EQ(settings.OutputDirectory, folder.Stored("out/"));
    EXPECT_EQ(settings.HelpFileName, folder.Stored("help/demo.chm"));
    EXPECT_EQ(settings.HelpVersion, "1");
    EXPECT_EQ(settings.Help2Namespace, "ns");
    EXPECT_EQ(settings.Help2FileID, "id");
    EXPECT_FALSE(settings.RegisterPlugIn);
    EXPECT_EQ(settings.Title, "Demo");
    EXPECT_EQ(settings.CodePage, 1251);
    EXPECT_TRUE(settings.CompileHelpFile);
    EXPECT_EQ(settings.CurrentDocType()->ID(), "mv.quillbooklite");
    EXPECT_EQ(settings.CurrentTemplate()->Name(), "Plain");
    EXPECT_EQ(settings.RootItems()->Item("mv.quillbooklite"), project);
    EXPECT_TRUE(folder.Has("help"));
    seen = true;
  };
  Build();
  EXPECT_TRUE(seen);
}

TEST_F(BuildTest, SettingsReachTheHost_Help2) {
  profile->SetHTMLHelpVersion(2);
  profile->SetLocaleID(1049);
  profile->SetH2PlugIn("a,b");
  bool seen = false;
  onProgress = [&](std::string_view status) {
    if (status != "Generating content") return;
    const auto& settings = *project->MVProject();
    EXPECT_TRUE(settings.RegisterPlugIn);
    EXPECT_EQ(settings.PlugInNamespaces, "a,b");
    EXPECT_EQ(settings.CodePage, 65001);
    EXPECT_FALSE(settings.CompileHelpFile);
    seen = true;
  };
  Build();
  EXPECT_TRUE(seen);
}

TEST_F(BuildTest, CompilerIsTheCallersChoice) {
  CompileInto("help/demo.chm");
  InstallTemplate();
  onProgress = [&](std::string_view status) {
    if (status == "Generating content") {
      EXPECT_EQ(project->MVProject()->CompilerPath, "c:\\mine\\hhc.exe");
    }
  };
  project->Build("c:\\mine\\hhc.exe", false, profile, false, false);
}

TEST_F(BuildTest, PagesAreEncodedForTheLocale_OfHelp1) {
  profile->SetLocaleID(1049);
  AddTopic("A", "\u042f\u4e2d", "t");
  Build();
  EXPECT_EQ(folder.Read("out/A.html"), "<title>t</title>\xDF&#20013;");
}

TEST_F(BuildTest, ProjectsValuesReplaceTheTemplates_AndCountersStartAgain) {
  variables = "<variable name=\"Skin\" default=\"plain\"/>";
  Layout("Topic.html", "%%Skin%% %%incrementingvalue:Name=n%%");
  project->VariableValues->Add(New<VariableValue>("Skin", "own"), "Skin");
  project->IncrementingValues->Add(41, "n");
  AddTopic("A");
  onProgress = [&](std::string_view status) {
    if (status == "Generating content") {
      EXPECT_EQ(project->MVProject()->ValueOfVariable("skin"), "own");
    }
  };
  Build();
  EXPECT_EQ(folder.Read("out/A.html"), "own 1");
}

TEST_F(BuildTest, SecondBuildGivesTheSamePages) {
  AddTopic("A");
  Build();
  const auto first = folder.Read("out/A.html");
  const auto second = Build();
  EXPECT_FALSE(second->Cancelled);
  EXPECT_EQ(folder.Read("out/A.html"), first);
  EXPECT_EQ(log, "+-+-");
}

TEST_F(BuildTest, WithoutCompilerTheLogSaysSo) {
  CompileInto("help/demo.chm");
  profile->SetHTMLHelpVersion(3);
  AddTopic("A");
  const auto result = Build();
  EXPECT_FALSE(result->Cancelled);
  EXPECT_EQ(result->HelpCompileResult, static_cast<std::int32_t>(HelpCompileResult::NoCompiler));
  EXPECT_NE(result->CompilerLog.find("no help compiler"), std::string::npos);
  EXPECT_TRUE(folder.Has("out/A.html"));
}

TEST_F(BuildTest, NotesOfTheHostBecomeBuildMessages) {
  AddTopic("A");
  AddTopic("a");
  Build();
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_EQ(messages[0].buttons, static_cast<std::int32_t>(BuildMessageLevel::bmWarning));
}

TEST_F(BuildTest, FailureOfTheEngineReachesTheCallerInTheResult) {
  project->SetTemplateName("No such template");
  InstallTemplate();
  const auto result = project->Build("", false, profile, false, false);
  failures.Take();
  EXPECT_TRUE(!result || result->HelpCompileResult != 0);
}

// Layouts.

TEST_F(BuildTest, EachTopicTakesItsLayout) {
  layouts += "<layout name=\"Wide.html\" item=\"mv.quillbooklite:topic\" output=\"{QualifiedName}.html\"/>";
  Layout("Wide.html", "wide");
  AddTopic("A");
  AddTopic("B")->SetLayoutName("WIDE");
  AddTopic("C")->SetLayoutName("None");
  Build();
  EXPECT_EQ(Output(), "A.html,B.html");
  EXPECT_EQ(folder.Read("out/B.html"), "wide");
  EXPECT_TRUE(messages.empty());
}

TEST_F(BuildTest, DefaultLayoutIsTheTemplatesFirstForTopics) {
  layouts =
      "<layout name=\"Home.html\" item=\"mv.quillbooklite:qbproject\" output=\"index.html\"/>"
      "<layout name=\"Second.html\" item=\"MV.QUILLBOOKLITE:TOPIC\" output=\"{QualifiedName}.html\"/>" +
      layouts;
  Layout("Home.html", "home of %%projecttitle%%");
  Layout("Second.html", "second");
  AddTopic("A");
  Build();
  EXPECT_EQ(project->DefaultTopicLayout(), "Second.html");
  EXPECT_EQ(Output(), "A.html,index.html");
  EXPECT_EQ(folder.Read("out/A.html"), "second");
  EXPECT_EQ(folder.Read("out/index.html"), "home of Demo");
}

TEST_F(BuildTest, FileOfTheTemplateDoesNotReplaceAProjectFileOfTheSameName) {
  SupportFile("style.css", "template's");
  SupportFile("css/deep.css", "template's");
  SupportFile("other.css", "template's");
  AddFile("style.css", "project's");
  AddFile("css/deep.css", "project's");
  Build();
  EXPECT_EQ(folder.Read("out/style.css"), "project's");
  EXPECT_EQ(folder.Read("out/css/deep.css"), "project's");
  EXPECT_EQ(folder.Read("out/other.css"), "template's");
}

// Output folder and files.

TEST_F(BuildTest, MissingOutputFolderIsCreatedAfterAsking) {
  project->SetOutputDirectory(folder.Stored("new/deep"));
  answers = {MessageBox::Yes};
  AddTopic("A");
  EXPECT_FALSE(BuildIsCancelled());
  EXPECT_TRUE(folder.Has("new/deep/A.html"));
  EXPECT_EQ(prompts, (std::vector<Prompt>{{"The specified output path '" + folder.Stored("new/deep/") +
                                               "' doesn't exist. Would you like to create it?",
                                           36, "Path does not exist"}}));
}

TEST_F(BuildTest, RefusedOutputFolderCancels) {
  project->SetOutputDirectory(folder.Stored("new"));
  answers = {MessageBox::No, MessageBox::Ok};
  EXPECT_TRUE(BuildIsCancelled());
  EXPECT_FALSE(folder.Has("new"));
  ASSERT_EQ(prompts.size(), 2U);
  EXPECT_EQ(prompts[1], (Prompt{"Could not access output path, build cancelled", 64, ""}));
  EXPECT_EQ(progress.back(), "Validating the output path");
  EXPECT_FALSE(profile->LastBuildResult);
  EXPECT_TRUE(project->MVProject());  // stays until the next build
  EXPECT_EQ(log, "+");
}

TEST_F(BuildTest, HostProjectOfACancelledBuildIsReplacedByTheNext) {
  project->SetOutputDirectory(folder.Stored("new"));
  answers = {MessageBox::No, MessageBox::Ok, MessageBox::Yes};
  EXPECT_TRUE(BuildIsCancelled());
  const auto old = project->MVProject();
  EXPECT_FALSE(BuildIsCancelled());
  EXPECT_EQ(old->RootItems()->Count(), 0U);
  EXPECT_EQ(log, "++-");
}

TEST_F(BuildTest, SilentPromptsBecomeMessages_AndCount) {
  project->Silent = true;
  project->SetOutputDirectory(folder.Stored("new"));
  EXPECT_FALSE(BuildIsCancelled());  // 0 isn't No
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_EQ(messages[0].buttons, static_cast<std::int32_t>(BuildMessageLevel::bmWarning));
}

TEST_F(BuildTest, OtherFilesAreCopied_UnlessLeftOut) {
  AddFile("img/a.png", "picture");
  AddFile("b.txt")->SetIncludeInOutput(false);
  const auto gone = AddFile("gone.txt");
  fs::remove(folder.Native("project/gone.txt"));
  AddTopic("A");
  EXPECT_FALSE(BuildIsCancelled());
  EXPECT_EQ(Output(), "A.html,img/a.png");
  EXPECT_EQ(folder.Read("out/img/a.png"), "picture");
}

TEST_F(BuildTest, FileThatCannotBeCopiedIsTriedAgain) {
  AddFile("a.txt", "new");
  folder.Write("out/a.txt", "old");
  chmod(folder.Native("out/a.txt").c_str(), 0444);
  answers = {MessageBox::Retry, MessageBox::Cancel};
  EXPECT_TRUE(BuildIsCancelled());
  const Prompt expected{"Could not copy " + folder.Stored("project/a.txt") + " to the output path " +
                            folder.Stored("out/") +
                            ".\r\n\r\nCheck that you have permissions to write to the target directory and that the "
                            "target file is not read-only",
                        53, "Could not copy"};
  EXPECT_EQ(prompts, (std::vector<Prompt>{expected, expected}));
  EXPECT_EQ(folder.Read("out/a.txt"), "old");
}

TEST_F(BuildTest, SilentCopyGivesUp) {
  project->Silent = true;
  AddFile("a.txt", "new");
  folder.Write("out/a.txt", "old");
  chmod(folder.Native("out/a.txt").c_str(), 0444);
  EXPECT_TRUE(BuildIsCancelled());
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_EQ(messages[0].buttons, static_cast<std::int32_t>(BuildMessageLevel::bmError));
}

TEST_F(BuildTest, CopyOtherFilesMayMoveTheProjectsFiles) {
  const auto file = AddFile("img/a.png");
  file->SetIncludeInOutput(false);  // counts only while there is a profile
  EXPECT_TRUE(project->CopyOtherFiles(folder.Stored("copy/"), false, true));
  EXPECT_EQ(file->LocalSpec(), folder.Stored("copy/img/a.png"));
  EXPECT_TRUE(folder.Has("copy/img/a.png"));
}

TEST_F(BuildTest, IntoTheProjectsFolderNothingIsCopied) {
  project->SetOutputDirectory(folder.Stored("project"));
  const auto file = AddFile("a.txt");
  chmod(folder.Native("project/a.txt").c_str(), 0444);  // a copy onto itself would ask
  AddTopic("A");
  EXPECT_FALSE(BuildIsCancelled());
  EXPECT_TRUE(prompts.empty());
  EXPECT_EQ(Output("project"), "A.html,a.txt,demo.qbp");
}

}  // namespace
}  // namespace quillbook
