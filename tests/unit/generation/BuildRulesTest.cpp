// Removal of sources, locked help files, cancelling, related projects and messages of a build.
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <thread>

#include "generation/BuildTest.h"

namespace quillbook {
namespace {

namespace fs = std::filesystem;
using support::BuildTest;
using support::Prompt;

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
  EXPECT_EQ(Output("help"), "COL_x.hxt,RegisterHelp2.bat,col_master.hhc,demo.chm,unregisterhelp2.BAT");
  EXPECT_EQ(folder.Read("help/col_master.hhc"), "col_master.hhc");
  EXPECT_TRUE(folder.Has("project/own.txt"));
}

TEST_F(RemoveTest, DeliveredFilesThatLieThereAlreadyStay) {
  CompileInto("out/demo.chm");
  Build();
  EXPECT_EQ(Output(), "COL_x.hxt,RegisterHelp2.bat,col_master.hhc,demo.chm,demo_manifest.html,unregisterhelp2.BAT");
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
  EXPECT_EQ(Output(), "A.html,demo.hhk,demo.hhp");
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
