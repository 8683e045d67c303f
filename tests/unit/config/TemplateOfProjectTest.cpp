// What profiles and files take from the project's template.
#include "quillbook/config/BuildProfile.h"
#include "quillbook/config/BuildProfiles.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/structure/OtherFile.h"
#include "quillbook/structure/OtherFiles.h"
#include "support/ProjectTest.h"
#include "support/TemporaryFolder.h"

namespace quillbook {
namespace {

class TemplateOfProjectTest : public support::ProjectTest {
 protected:
  void SetUp() override {
    ProjectTest::SetUp();
    Platform::Current().Registry().SetValue(RegistryHive::LocalMachine, "Software\\Corvane\\Quillbook2",
                                            "LiteInstallDir", folder.Stored("installed"));
    const std::string installed = "installed/Configuration/Templates/Plain/";
    folder.Write(installed + "template.xml",
                 "<template name='Plain' supports='Px'><namespace name='mv.quillbooklite'/>"
                 "<variable name='Accent' default='blue'/>"
                 "<layout name='Page.html' item='mv.quillbooklite:topic' output='{QualifiedName}.html'/>"
                 "<definition kind='mv.quillbooklite:topic'/></template>");
    folder.Write(installed + "layouts/Page.html", "page");
    folder.Write(installed + "stylesheets/site.css", "");
    project->Filename->SetFullName(folder.Stored("help\\p.qbp"));
    project->SetTemplateName("Plain");
  }
  support::TemporaryFolder folder;
};

TEST_F(TemplateOfProjectTest, RuntimeVariableValue_EndsWithTheTemplatesDefault_ButPrefersAnEmptyProjectValue) {
  const auto profile = project->NewBuildProfile();
  EXPECT_EQ(profile->RuntimeVariableValue("accent"), "blue");
  EXPECT_EQ(profile->RuntimeVariableValue("unknown"), "");
  project->VariableValues->Add(New<VariableValue>("Accent", ""), "Accent");
  EXPECT_EQ(profile->RuntimeVariableValue("Accent"), "");
  profile->SetVariableValue("Accent", "red");
  EXPECT_EQ(profile->RuntimeVariableValue("Accent"), "red");
}

TEST_F(TemplateOfProjectTest, RuntimeVariableValue_WithoutATemplate_IsEmpty) {
  project->SetTemplateName("Nowhere");
  EXPECT_EQ(project->NewBuildProfile()->RuntimeVariableValue("Accent"), "");
}

TEST_F(TemplateOfProjectTest, IsTemplateFile_ComparesTheRelativeName) {
  const auto isTemplateFile = [&](const std::string& name) {
    return project->NewOtherFile(folder.Stored(name))->IsTemplateFile();
  };
  EXPECT_TRUE(isTemplateFile("help\\stylesheets\\site.css"));
  EXPECT_FALSE(isTemplateFile("help\\stylesheets\\other.css"));
  EXPECT_FALSE(isTemplateFile("help\\site.css"));
  project->SetTemplateName("Nowhere");
  EXPECT_FALSE(isTemplateFile("help\\stylesheets\\site.css"));
}

}  // namespace
}  // namespace quillbook
