// samples/new-project/main.cpp: makes a project of one topic, saves it, and builds its page.
#include "quillbook/config/BuildProfile.h"
#include "quillbook/config/BuildProfiles.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/generation/BuildResult.h"
#include "quillbook/project/QBProject.h"
#include "quillbook/topics/Topics.h"

using namespace quillbook;

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  auto project = New<QBProject>();
  project->Filename->SetFullName(argv[1]);  // an absolute path, such as /home/ann/garden.qbp
  project->SetTitle("Garden help");
  project->SetTemplateName("Quillbook Web");

  auto topic = project->NewTopic();
  topic->SetName("watering");
  topic->SetTitle("Watering");
  topic->SetTopicSectionData("BodyText", "<p>Little and often.</p>");
  project->Topics->Add(topic, topic->Key);

  auto profile = project->NewBuildProfile("Web");
  profile->SetCompileHelpFile(false);
  profile->SetOutputDirectory(project->Filename->Path());
  project->BuildProfiles->Add(profile, profile->ID());

  if (!project->SaveToDisk()) return 1;
  auto result = project->Build("", false, profile, false, false);
  return result && !result->Cancelled ? 0 : 1;
}
