#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <thread>

#include "generation/GenerationTest.h"
#include "quillbook/generation/BuildResult.h"
#include "quillbook/host/HelpCompiler.h"
#include "quillbook/platform/MessageBox.h"
#include "quillbook/structure/OtherFiles.h"

namespace quillbook {
namespace {

namespace fs = std::filesystem;

struct Prompt {
  std::string message;
  std::int32_t buttons = 0;
  std::string title;
  bool operator==(const Prompt&) const = default;
};

class BuildTest : public support::GenerationTest {
 protected:
  void SetUp() override {
    GenerationTest::SetUp();
    layouts = "<layout name=\"Topic.html\" item=\"mv.quillbooklite:topic\" output=\"{QualifiedName}.html\"/>";
    Layout("Topic.html", "<title>%%topictitle%%</title>%%topicsection:name=bodytext%%");
    folder.Write("project/demo.qbp", "");
    fs::create_directories(folder.Native("out"));
    project->SetOutputDirectory(folder.Stored("out"));
    profile = AddProfile();
    Listen();
  }
  void TearDown() override {
    connections.clear();
    profile = {};
    GenerationTest::TearDown();
  }

  void Listen() {
    auto& events = project->Events;
    connections.push_back(events.BuildProgress.Connect([this](std::string_view status) {
      progress.emplace_back(status);
      if (onProgress) onProgress(status);
    }));
    connections.push_back(events.MVProjectChanged.Connect([this](const Ref<MVProject>& changed) {
      log += changed ? "+" : "-";
      if (changed && onHost) onHost(*changed);
    }));
    connections.push_back(
        events.MessageBox.Connect([this](std::string_view message, std::int32_t buttons, std::string_view title,
                                         std::int32_t& result, bool& cancelDefault) {
          prompts.push_back({std::string(message), buttons, std::string(title)});
          cancelDefault = !answers.empty();
          if (answers.empty()) return;
          result = answers.front();
          answers.erase(answers.begin());
        }));
    connections.push_back(events.BuildMessage.Connect([this](std::string_view message, BuildMessageLevel level) {
      messages.push_back({std::string(message), static_cast<std::int32_t>(level), {}});
    }));
  }

  Ref<BuildResult> Build() {
    InstallTemplate();
    return project->Build("", false, profile, false, false);
  }
  bool BuildIsCancelled() {
    const auto result = Build();
    return result && result->Cancelled;
  }
  Ref<OtherFile> AddFile(const std::string& name, const std::string& text = "file") {
    folder.Write("project/" + name, text);
    auto file = project->NewOtherFile(folder.Stored("project/" + name));
    project->OtherFiles->Add(file, file->LocalSpec());
    return file;
  }
  /// Names below the output folder, sorted, with "," between.
  std::string Output(const std::string& below = "out") {
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(folder.Native(below)))
      if (entry.is_regular_file()) names.push_back(fs::relative(entry.path(), folder.Native(below)).string());
    std::sort(names.begin(), names.end());
    std::string text;
    for (const auto& name : names) text.append(text.empty() ? "" : ",").append(name);
    return text;
  }
  void CompileInto(const std::string& helpFile) {
    profile->SetCompileHelpFile(true);
    profile->SetHelpFileName(folder.Stored(helpFile));
  }

  Ref<BuildProfile> profile;
  std::vector<std::string> progress;
  std::vector<Prompt> prompts;
  std::vector<Prompt> messages;
  std::vector<std::int32_t> answers;
  std::string log;
  std::function<void(std::string_view)> onProgress;
  std::function<void(MVProject&)> onHost;
  std::vector<Connection> connections;
};

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

// Removing the sources.

class RemoveTest : public BuildTest {
 protected:
  void SetUp() override {
    BuildTest::SetUp();
    profile->SetRemoveOutputFiles(true);
    for (const auto* name : {"col_master.hhc", "COL_x.hxt", "RegisterHelp2.bat", "unregisterhelp2.BAT", "style.css",
                             "demo_manifest.html", "demo_MANIFEST.html"})
      SupportFile(name, name);
    AddTopic("A");
    AddFile("own.txt");
  }
};

TEST_F(RemoveTest, WithoutCompilationNothingIsRemoved) {
  Build();
  EXPECT_EQ(Output(),
            "A.html,COL_x.hxt,RegisterHelp2.bat,col_master.hhc,demo_MANIFEST.html,demo_manifest.html,own.txt,"
            "style.css,unregisterhelp2.BAT");
}

TEST_F(RemoveTest, DeliveredFilesMoveToTheHelpFile_ManifestsStay) {
  CompileInto("help/demo.chm");
  folder.Write("out/not-generated.txt", "");
  Build();
  EXPECT_EQ(Output(), "demo_manifest.html,not-generated.txt");
  EXPECT_EQ(Output("help"), "COL_x.hxt,RegisterHelp2.bat,col_master.hhc,unregisterhelp2.BAT");
  EXPECT_EQ(folder.Read("help/col_master.hhc"), "col_master.hhc");
  EXPECT_TRUE(folder.Has("project/own.txt"));
}

TEST_F(RemoveTest, DeliveredFilesThatLieThereAlreadyStay) {
  CompileInto("out/demo.chm");
  Build();
  EXPECT_EQ(Output(), "COL_x.hxt,RegisterHelp2.bat,col_master.hhc,demo_manifest.html,unregisterhelp2.BAT");
}

TEST_F(RemoveTest, FileThatCannotBeRemovedIsNoFailure) {
  CompileInto("help/demo.chm");
  onProgress = [&](std::string_view status) {
    if (status == "Removing the source output files") fs::remove(folder.Native("out/A.html"));
  };
  EXPECT_FALSE(BuildIsCancelled());
  EXPECT_FALSE(folder.Has("out/style.css"));
}

TEST_F(RemoveTest, InTheProjectsFolderSupportFilesComeBack) {
  project->SetOutputDirectory(folder.Stored("project"));
  CompileInto("help/demo.chm");
  Build();
  EXPECT_TRUE(folder.Has("project/style.css"));
  EXPECT_TRUE(folder.Has("project/own.txt"));
  EXPECT_FALSE(folder.Has("project/A.html"));
}

TEST_F(BuildTest, CopySupportFilesBringsThemToTheProject) {
  SupportFile("css/style.css", "css");
  InstallTemplate();
  project->CopySupportFiles();
  EXPECT_EQ(folder.Read("project/css/style.css"), "css");
  EXPECT_FALSE(project->MVProject());
}

// A help file in use.

class LockedHelpFileTest : public BuildTest {
 protected:
  void SetUp() override {
    BuildTest::SetUp();
    CompileInto("help/demo.chm");
    folder.Write("help/demo.chm", "");
    lock = open(folder.Native("help/demo.chm").c_str(), O_RDWR);
    ASSERT_EQ(flock(lock, LOCK_EX), 0);
    AddTopic("A");
  }
  void TearDown() override {
    close(lock);
    BuildTest::TearDown();
  }
  int lock = -1;
};

TEST_F(LockedHelpFileTest, CancelEndsTheBuild) {
  answers = {MessageBox::Cancel};
  EXPECT_TRUE(BuildIsCancelled());
  EXPECT_EQ(prompts, (std::vector<Prompt>{{"The output filename is currently locked. If the file is open or in use, "
                                           "please close it and click OK to continue",
                                           49, "File in use"}}));
  EXPECT_EQ(Output(), "");
}

TEST_F(LockedHelpFileTest, OkGoesOn_EvenIfTheFileIsStillLocked) {
  answers = {MessageBox::Ok};
  EXPECT_FALSE(BuildIsCancelled());
  EXPECT_EQ(prompts.size(), 1U);
  EXPECT_EQ(Output(), "A.html");
}

TEST_F(LockedHelpFileTest, WithoutCompilationNobodyAsks) {
  profile->SetCompileHelpFile(false);
  EXPECT_FALSE(BuildIsCancelled());
  EXPECT_TRUE(prompts.empty());
}

// Cancelling.

TEST_F(BuildTest, CancelBeforeTheGenerationIsNoticed) {
  AddTopic("A");
  onProgress = [&](std::string_view status) {
    if (status.starts_with("Copying")) project->CancelBuild();
  };
  EXPECT_TRUE(BuildIsCancelled());
  EXPECT_EQ(progress.back(), "Copying other files to the output directory");
  EXPECT_EQ(Output(), "");
  onProgress = {};
  EXPECT_FALSE(BuildIsCancelled());  // the next build starts afresh
}

TEST_F(BuildTest, CancelAtTheStartOfTheGenerationIsNoticed) {
  AddTopic("A");
  onProgress = [&](std::string_view status) {
    if (status == "Generating content") project->CancelBuild();
  };
  EXPECT_TRUE(BuildIsCancelled());
  EXPECT_EQ(Output(), "");
}

TEST_F(BuildTest, CancelDuringTheGenerationLeavesWholePagesOnly) {
  for (const auto* name : {"A", "B", "C"}) AddTopic(name);
  SupportFile("style.css", "css");
  onHost = [&](MVProject& changed) {
    connections.push_back(changed.ContentCreated.Connect([&](std::string_view) { project->CancelBuild(); }));
  };
  const auto result = Build();
  ASSERT_TRUE(result);
  EXPECT_TRUE(result->Cancelled);
  EXPECT_EQ(result->HelpCompileResult, 0);
  EXPECT_EQ(profile->LastBuildResult, result);
  EXPECT_EQ(Output(), "A.html");
  EXPECT_EQ(folder.Read("out/A.html"), "<title>A</title><p>Body</p>");
  EXPECT_EQ(progress.back(), "");
}

TEST_F(BuildTest, CancelWithoutBuildDoesNothing) {
  project->CancelBuild();
  AddTopic("A");
  EXPECT_FALSE(BuildIsCancelled());
}

// A related project of the host.

/// Whether the full generator is installed is asked once a thread, so each of these tests has its own.
class RelatedProjectRig final : public BuildTest {
 public:
  static void Run(void (RelatedProjectRig::*test)()) {
    std::thread([test] {
      RelatedProjectRig rig;
      rig.SetUp();
      (rig.*test)();
      rig.TearDown();
    }).join();
  }
  void TestBody() override {}

  void SetUp() override {
    BuildTest::SetUp();
    AddTopic("A");
    project->SetMVPFileName(folder.Stored("project/related.mvp"));
    answers = {MessageBox::Ok};
  }
  void InstallGenerator() {
    Platform::Current().Registry().SetValue(RegistryHive::LocalMachine, "Software\\Corvane\\Mavenscript4",
                                            "MVFullInstall", "True");
  }

  void WithoutGeneratorItIsIgnored() {
    EXPECT_FALSE(BuildIsCancelled());
    EXPECT_TRUE(prompts.empty());
  }
  void VanishedFileStopsBeforeAnyHostProject() {
    InstallGenerator();
    EXPECT_TRUE(BuildIsCancelled());
    EXPECT_EQ(log, "");
    EXPECT_TRUE(progress.empty());
    EXPECT_EQ(prompts, (std::vector<Prompt>{{"The Mavenscript file '" + folder.Stored("project/related.mvp") +
                                                 "' could not be found. Build cancelled",
                                             48, "Mavenscript file not found"}}));
  }
  void InvalidFileStopsTheBuild() {
    InstallGenerator();
    folder.Write("project/related.mvp", "no project");
    EXPECT_TRUE(BuildIsCancelled());
    EXPECT_EQ(progress, std::vector<std::string>{"Loading Mavenscript project"});
    EXPECT_EQ(prompts, (std::vector<Prompt>{{"Could not load from Mavenscript project file '" +
                                                 folder.Stored("project/related.mvp") + "'. Build cancelled",
                                             48, "Mavenscript file invalid"}}));
  }
  void ValidFileIsLoaded() {
    InstallGenerator();
    folder.Write("project/related.mvp", "<mvproject><doctype id=\"mv.quillbooklite\"/></mvproject>");
    EXPECT_FALSE(BuildIsCancelled());
    EXPECT_EQ(progress.front(), "Loading Mavenscript project");
    EXPECT_EQ(Output(), "A.html");
  }
};

TEST(RelatedProject, IsIgnored_WithoutTheGenerator) {
  RelatedProjectRig::Run(&RelatedProjectRig::WithoutGeneratorItIsIgnored);
}

TEST(RelatedProject, StopsTheBuildBeforeAnyHostProject_WhenItsFileHasVanished) {
  RelatedProjectRig::Run(&RelatedProjectRig::VanishedFileStopsBeforeAnyHostProject);
}

TEST(RelatedProject, StopsTheBuild_WhenItCannotBeRead) {
  RelatedProjectRig::Run(&RelatedProjectRig::InvalidFileStopsTheBuild);
}

TEST(RelatedProject, IsLoaded) {
  RelatedProjectRig::Run(&RelatedProjectRig::ValidFileIsLoaded);
}

// Messages.

TEST_F(BuildTest, ListenerMayAnswerAMessage) {
  answers = {7};
  EXPECT_EQ(project->ShowMessageBox("m", 36, "t"), 7);
  EXPECT_EQ(prompts, (std::vector<Prompt>{{"m", 36, "t"}}));
  EXPECT_TRUE(failures.TakeBoxes().empty());
}

TEST_F(BuildTest, MessageIsShown_WhenNobodyTakesItOver) {
  EXPECT_EQ(project->ShowMessageBox("m", MessageBox::YesNo + MessageBox::Question, "t"), MessageBox::No);
  const auto boxes = failures.TakeBoxes();
  ASSERT_EQ(boxes.size(), 1U);
  EXPECT_EQ(boxes[0].Prompt, "m");
  EXPECT_EQ(boxes[0].Buttons, 36);
  EXPECT_EQ(boxes[0].Title, "t");
}

TEST_F(BuildTest, SilentMessageIsAnError_WhenItsIconHasTheBit) {
  project->Silent = true;
  for (const int buttons : {16, 36, 48, 49, 53, 64}) EXPECT_EQ(project->ShowMessageBox("m", buttons, "t"), 0);
  std::string levels;
  for (const auto& message : messages) levels += std::to_string(message.buttons);
  EXPECT_EQ(levels, "101110");
  EXPECT_TRUE(failures.TakeBoxes().empty());
}

// Template and profiles.

TEST_F(BuildTest, TemplateIsFoundByName) {
  InstallTemplate();
  project->SetTemplateName("PLAIN");
  ASSERT_TRUE(project->Template());
  EXPECT_EQ(project->Template()->Name(), "Plain");
  project->SetTemplateName("Other");
  EXPECT_FALSE(project->Template());
}

TEST_F(BuildTest, ProfilesTellTheHelpVersions) {
  profile->SetHTMLHelpVersion(2);
  EXPECT_FALSE(project->HasHTMLHelp1BuildProfile());
  EXPECT_TRUE(project->HasHelp2BuildProfile());
  AddProfile();
  EXPECT_TRUE(project->HasHTMLHelp1BuildProfile());
}

}  // namespace
}  // namespace quillbook
