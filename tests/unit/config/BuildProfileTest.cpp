#include "quillbook/config/BuildProfile.h"

#include "quillbook/base/Locale.h"
#include "quillbook/config/BuildProfiles.h"
#include "quillbook/config/ProjectProperties.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/generation/BuildResult.h"
#include "quillbook/structure/QBNodes.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/Topics.h"
#include "support/ProjectLog.h"
#include "support/ProjectTest.h"
#include "support/RecordingDesktop.h"
#include "support/TemporaryFolder.h"

namespace quillbook {
namespace {

class BuildProfileTest : public support::ProjectTest {
 protected:
  void SetUp() override {
    ProjectTest::SetUp();
    project->Filename->SetFullName(folder.Stored("my help.qbp"));
    profile = project->NewBuildProfile("Web");
    project->BuildProfiles->Add(profile, profile->ID());
    project->SetDirty(false);
  }
  void TearDown() override {
    profile = nullptr;
    ProjectTest::TearDown();
  }
  Ref<Topic> AddTopic(bool included = true) {
    const auto topic = project->NewTopic();
    topic->SetIncludeInHelpFile(included);
    project->Topics->Add(topic, topic->Key);
    return topic;
  }
  void AddNodeFor(const Ref<Topic>& topic) { project->QBNodes->NewNode()->SetTopicID(topic->Key); }

  support::TemporaryFolder folder;
  Ref<BuildProfile> profile;
};

TEST_F(BuildProfileTest, ANewProfile_HasItsDefaults) {
  const auto fresh = New<BuildProfile>();
  EXPECT_EQ(fresh->ID().size(), 38u);
  EXPECT_NE(fresh->ID(), profile->ID());
  EXPECT_TRUE(fresh->CompileHelpFile());
  EXPECT_EQ(fresh->HTMLHelpVersion(), 1);
  EXPECT_EQ(fresh->LocaleID(), 0);
  EXPECT_EQ(fresh->CodePage(), 65001);
  EXPECT_FALSE(fresh->GetLocale());
  EXPECT_FALSE(fresh->RemoveOutputFiles());
  EXPECT_FALSE(fresh->IncludeInBuild());
  EXPECT_FALSE(fresh->LastBuildResult);
  EXPECT_FALSE(fresh->UseBuildFlags());
  EXPECT_FALSE(fresh->IsBooklet());
  EXPECT_EQ(fresh->HelpFileName(), "");
}

TEST_F(BuildProfileTest, Setters_TellOfARealChange_AndMarkTheProject) {
  support::ProjectLog log(project);
  const std::string change = "BuildProfileChanged Dirty";
  const auto told = [&](auto set) {
    set(*profile);
    const auto first = log.Take();
    set(*profile);  // no change any more
    return first + log.Take();
  };
  EXPECT_EQ(told([](BuildProfile& p) { p.SetName("web"); }), change);
  EXPECT_EQ(told([](BuildProfile& p) { p.SetCompileHelpFile(false); }), change);
  EXPECT_EQ(told([](BuildProfile& p) { p.SetHTMLHelpVersion(2); }), change);
  EXPECT_EQ(told([](BuildProfile& p) { p.SetH2Namespace("n"); }), change);
  EXPECT_EQ(told([](BuildProfile& p) { p.SetH2FileID("i"); }), change);
  EXPECT_EQ(told([](BuildProfile& p) { p.SetH2PlugIn("p"); }), change);
  EXPECT_EQ(told([](BuildProfile& p) { p.SetProjectTitle("t"); }), change);
  EXPECT_EQ(told([](BuildProfile& p) { p.SetRemoveOutputFiles(true); }), change);
  EXPECT_EQ(told([](BuildProfile& p) { p.SetIncludeInBuild(true); }), change);
  EXPECT_EQ(told([](BuildProfile& p) { p.SetLocaleID(0x409); }), change);
  EXPECT_EQ(told([&](BuildProfile& p) { p.SetHelpFileName(folder.Stored("a.chm")); }), change);
  EXPECT_EQ(told([&](BuildProfile& p) { p.SetOutputDirectory(folder.Stored("out")); }), change);
  EXPECT_TRUE(project->ProjectDirty());
  New<BuildProfile>()->SetName("no parent");
}

TEST_F(BuildProfileTest, AProfileNotYetAdded_RaisesNoEvent_ButMarksTheProject) {
  const auto fresh = project->NewBuildProfile();
  project->SetDirty(false);
  support::ProjectLog log(project);
  fresh->SetName("x");
  EXPECT_EQ(log.Take(), "Dirty");
  EXPECT_TRUE(project->Dirty());
}

TEST_F(BuildProfileTest, Paths_MoveWithTheProject) {
  profile->SetHelpFileName(folder.Stored("build/a.chm"));
  profile->SetOutputDirectory(folder.Stored("build/out"));
  EXPECT_EQ(profile->HelpFileName(), folder.Stored("build/a.chm"));
  EXPECT_EQ(profile->OutputDirectory(), folder.Stored("build/out") + "\\");
  project->Filename->SetFullName("\\elsewhere\\my help.qbp");
  EXPECT_EQ(profile->HelpFileName(), "\\elsewhere\\build\\a.chm");
  EXPECT_EQ(profile->OutputDirectory(), "\\elsewhere\\build\\out\\");
  profile->SetHelpFileName("");
  EXPECT_EQ(profile->HelpFileName(), "");
}

TEST_F(BuildProfileTest, AnEmptyOutputDirectory_ReadsAsTheProjects) {
  EXPECT_EQ(profile->OutputDirectory(), project->OutputDirectory());
  project->SetOutputDirectory(folder.Stored("out"));
  EXPECT_EQ(profile->OutputDirectory(), folder.Stored("out") + "\\");
}

TEST_F(BuildProfileTest, AnEmptyOutputDirectory_ReadsWithASeparator_WhereTheProjectsHasOne) {
  project->Filename->SetFullName("\\help\\p.qbp");
  EXPECT_EQ(profile->OutputDirectory(), "") << "no folder, no separator";
  const std::pair<const char*, const char*> cases[] = {{"\\help\\out", "\\help\\out\\"},
                                                       {"\\help\\out\\", "\\help\\out\\"},
                                                       {"\\help", "\\help\\"},
                                                       {"\\", "\\"},
                                                       {"c:\\", "c:\\"},
                                                       {"c:\\out", "c:\\out\\"}};
  for (const auto& [directory, expected] : cases) {
    project->SetOutputDirectory(directory);
    EXPECT_EQ(profile->OutputDirectory(), expected);
  }
}

TEST_F(BuildProfileTest, AnOutputDirectory_ReadsWithASeparator_AlsoWhereItIsStoredWithout) {
  project->Filename->SetFullName("\\help\\p.qbp");
  const std::pair<const char*, const char*> cases[] = {{"out", "\\help\\out\\"},
                                                       {"out\\", "\\help\\out\\"},
                                                       {".\\", "\\help\\"},
                                                       {"..\\out", "\\out\\"},
                                                       {"c:\\out", "c:\\out\\"}};
  for (const auto& [stored, expected] : cases) {
    const auto loaded = New<BuildProfile>();
    loaded->SetBuildProfiles(project->BuildProfiles);
    loaded->Load(Parse("<p ID='{1}' Name='' OutputDirectory='" + std::string(stored) +
                       "' CompileHelpFile='True' HTMLHelpVersion='2' H2Namespace='' H2FileID='' HelpFileName=''/>")
                     .DocumentElement());
    EXPECT_EQ(loaded->OutputDirectory(), expected) << stored;
  }
}

TEST_F(BuildProfileTest, DefaultTopic_IsItsOwn_ElseTheProjects) {
  const auto own = AddTopic();
  const auto projects = AddTopic();
  EXPECT_FALSE(profile->DefaultTopic());
  project->SetDefaultTopic(projects);
  EXPECT_EQ(profile->DefaultTopic(), projects);
  project->SetDirty(false);
  profile->SetDefaultTopic(own);
  EXPECT_TRUE(project->ProjectDirty());
  EXPECT_EQ(profile->DefaultTopic(), own);
  profile->SetDefaultTopic({});
  EXPECT_EQ(profile->DefaultTopic(), projects);
}

TEST_F(BuildProfileTest, DefaultTopic_KeptOutOfTheHelpFile_GivesWayToTheFirstIncludedNode) {
  const auto own = AddTopic(false);
  const auto projects = AddTopic();
  project->SetDefaultTopic(projects);
  profile->SetDefaultTopic(own);
  EXPECT_FALSE(profile->DefaultTopic());  // not even the project's
  project->QBNodes->NewNode();
  AddNodeFor(AddTopic(false));
  const auto shown = AddTopic();
  AddNodeFor(shown);
  AddNodeFor(projects);
  EXPECT_EQ(profile->DefaultTopic(), shown);
}

TEST_F(BuildProfileTest, CodePage_FollowsTheLocale) {
  EXPECT_EQ(profile->CodePage(), 65001);
  profile->SetLocaleID(0x0419);
  EXPECT_EQ(profile->CodePage(), 1251);
  EXPECT_EQ(profile->GetLocale()->Name(), "Russian (Russia)");
  profile->SetLocaleID(0x03FF);  // no such language
  EXPECT_FALSE(profile->GetLocale());
  EXPECT_EQ(profile->CodePage(), 65001);
}

TEST_F(BuildProfileTest, AnOverride_IsSilentAtFirst_AndToldWhenItChanges) {
  support::ProjectLog log(project);
  profile->SetVariableValue("Colour", "red");
  EXPECT_EQ(log.Take(), "");
  EXPECT_FALSE(project->Dirty());
  profile->SetVariableValue("COLOUR", "red");
  EXPECT_EQ(log.Take(), "");
  profile->SetVariableValue("colour", "Red");
  EXPECT_EQ(log.Take(), "BuildProfileChanged Dirty");
  EXPECT_EQ(profile->VariableValue("Colour"), "Red");
  EXPECT_EQ(profile->VariableValue("other"), "");
  profile->SetProjectPropertyValue("{1}", "x");
  EXPECT_EQ(log.Take(), "");
  profile->SetProjectPropertyValue("{1}", "y");
  EXPECT_EQ(log.Take(), "BuildProfileChanged Dirty");
  EXPECT_EQ(profile->ProjectPropertyValue("{1}"), "y");
  profile->ClearVariableValues();
  EXPECT_EQ(log.Take(), "");
  EXPECT_EQ(profile->VariableValue("Colour"), "");
  EXPECT_EQ(profile->ProjectPropertyValue("{1}"), "y");
}

TEST_F(BuildProfileTest, RuntimeVariableValue_PrefersTheProfile_ThenTheProject) {
  EXPECT_EQ(profile->RuntimeVariableValue("v"), "");
  const auto value = New<VariableValue>("v", "project");
  project->VariableValues->Add(value, "v");
  EXPECT_EQ(profile->RuntimeVariableValue("V"), "project");
  profile->SetVariableValue("v", "profile");
  EXPECT_EQ(profile->RuntimeVariableValue("v"), "profile");
  profile->SetVariableValue("v", "");
  EXPECT_EQ(profile->RuntimeVariableValue("v"), "project");
}

TEST_F(BuildProfileTest, RuntimeProjectProperty_PrefersTheProfilesValue) {
  EXPECT_EQ(profile->RuntimeProjectProperty("Company"), "");
  const auto property = project->NewProjectProperty("Company", pptText, "own");
  EXPECT_EQ(profile->RuntimeProjectProperty("company"), "own");
  EXPECT_EQ(profile->RuntimeProjectProperty(property->ID()), "own");
  profile->SetProjectPropertyValue(property->ID(), "profile");
  EXPECT_EQ(profile->RuntimeProjectProperty("Company"), "profile");
}

TEST_F(BuildProfileTest, RuntimeProjectTitle_IsItsOwn_ElseTheProjects) {
  project->SetTitle("Project");
  EXPECT_EQ(profile->RuntimeProjectTitle(), "Project");
  profile->SetProjectTitle("Profile");
  EXPECT_EQ(profile->RuntimeProjectTitle(), "Profile");
}

TEST_F(BuildProfileTest, Summary_NamesTheOutput) {
  EXPECT_EQ(profile->Summary(), "Web (HTML Help 1.x)");
  profile->SetHTMLHelpVersion(2);
  EXPECT_EQ(profile->Summary(), "Web (Microsoft Help 2.x)");
  profile->SetCompileHelpFile(false);
  EXPECT_EQ(profile->Summary(), "Web");
}

// Showing the help file.

class ShowHelpFileTest : public BuildProfileTest {
 protected:
  void SetUp() override {
    BuildProfileTest::SetUp();
    folder.Write("a.chm", "");
    profile->SetHelpFileName(folder.Stored("a.chm"));
  }
  std::shared_ptr<support::RecordingDesktop> desktop = std::make_shared<support::RecordingDesktop>();
  PlatformOverride<Desktop> session{desktop};
};

TEST_F(ShowHelpFileTest, AMissingFile_IsToldWithItsPath) {
  profile->SetHelpFileName(folder.Stored("b.chm"));
  EXPECT_FALSE(profile->ShowLastBuiltHelpFile());
  const auto boxes = failures.TakeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(boxes[0].Prompt, "Could not find any previously built help file at '" + folder.Stored("b.chm") + "'");
  EXPECT_EQ(boxes[0].Buttons, 48);
  EXPECT_EQ(boxes[0].Title, "File not found");
  EXPECT_EQ(desktop->asked, "");
}

TEST_F(ShowHelpFileTest, HtmlHelp_OpensTheFile) {
  EXPECT_TRUE(profile->ShowLastBuiltHelpFile());
  EXPECT_EQ(desktop->asked, folder.Native("a.chm"));
}

TEST_F(ShowHelpFileTest, Help2_OpensItsNamespace) {
  profile->SetHTMLHelpVersion(2);
  profile->SetH2Namespace("My.Help");
  EXPECT_TRUE(profile->ShowLastBuiltHelpFile());
  EXPECT_EQ(desktop->asked, "dexplore /helpcol \"ms-help://My.Help\"");
}

TEST_F(ShowHelpFileTest, WithoutAViewer_TheUserIsTold) {
  desktop->result = Desktop::NoViewer;
  EXPECT_FALSE(profile->ShowLastBuiltHelpFile());
  profile->SetHTMLHelpVersion(2);
  EXPECT_FALSE(profile->ShowLastBuiltHelpFile());
  const auto boxes = failures.TakeBoxes();
  ASSERT_EQ(boxes.size(), 2u);
  EXPECT_EQ(boxes[0].Prompt, "Could not show the HTML Help file.");
  EXPECT_EQ(boxes[0].Buttons, 48);
  EXPECT_EQ(boxes[0].Title, "No Viewer");
  EXPECT_EQ(boxes[1].Prompt,
            "Could not show the Microsoft Help 2.x file.  In order to view Microsoft Help 2.x files you need to have "
            "the dexplore.exe viewer installed.  Dexplore.exe is usually installed by Visual Studio.NET or the Visual "
            "Studio.NET Help Integration Kit");
  EXPECT_EQ(boxes[1].Title, "No Microsoft Help 2.x Viewer");
}

TEST_F(ShowHelpFileTest, AnyOtherFailureOfTheViewer_CountsAsSuccess) {
  desktop->result = 2;
  EXPECT_TRUE(profile->ShowLastBuiltHelpFile());
  profile->SetHTMLHelpVersion(2);
  EXPECT_TRUE(profile->ShowLastBuiltHelpFile());
}

// The list.

TEST_F(BuildProfileTest, AddAndRemove_TellTheProject_AndMarkIt) {
  support::ProjectLog log(project);
  const auto fresh = New<BuildProfile>();
  project->BuildProfiles->Add(fresh, fresh->ID());
  EXPECT_EQ(log.Take(), "BuildProfileAdded BuildProfilesChanged Dirty");
  EXPECT_FALSE(fresh->BuildProfiles());
  EXPECT_EQ(project->BuildProfiles->Item(fresh->ID()), fresh);
  project->BuildProfiles->Add(fresh, fresh->ID());
  EXPECT_EQ(failures.Take(), Failures{"BuildProfiles.Add 457"});
  EXPECT_EQ(log.Take(), "");
  project->BuildProfiles->Remove(fresh->ID());
  EXPECT_EQ(log.Take(), "BuildProfileRemoved BuildProfilesChanged Dirty");
  EXPECT_FALSE(project->BuildProfiles->Item(fresh->ID()));
  project->BuildProfiles->Remove("nowhere");
  EXPECT_EQ(failures.Take(), Failures{"BuildProfiles.Remove 5"});
}

}  // namespace
}  // namespace quillbook
