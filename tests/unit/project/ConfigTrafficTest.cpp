// What build profiles and project properties raise, and what they leave dirty.
#include "unit/project/TrafficTest.h"

namespace quillbook {
namespace {

using ConfigTrafficTest = TrafficTest;

TEST_F(ConfigTrafficTest, BuildProfiles) {
  const std::string told = "BuildProfileChanged(p) Dirty | P";
  const std::string held = "Dirty | P";
  const std::string quiet = " | ";
  Check({
      {"Add", [](Scene& s) { s.project->BuildProfiles->Add(New<BuildProfile>(), "x"); },
       "BuildProfileAdded() BuildProfilesChanged Dirty | P", "BuildProfilesChanged Dirty | P", ""},
      {"Add, known key", [](Scene& s) { s.project->BuildProfiles->Add(s.profile, s.profile->ID()); }, quiet, quiet,
       "BuildProfiles.Add 457"},
      {"Remove", [](Scene& s) { s.project->BuildProfiles->Remove(1); },
       "BuildProfileRemoved(p) BuildProfilesChanged Dirty | P", "BuildProfilesChanged Dirty | P", ""},
      {"Remove, unknown key", [](Scene& s) { s.project->BuildProfiles->Remove("x"); }, quiet, quiet,
       "BuildProfiles.Remove 5"},
      {"Name", [](Scene& s) { s.profile->SetName("x"); }, "BuildProfileChanged(x) Dirty | P", held, ""},
      {"Name, the same", [](Scene& s) { s.profile->SetName("p"); }, quiet, quiet, ""},
      {"OutputDirectory", [](Scene& s) { s.profile->SetOutputDirectory("\\help\\x"); }, told, held, ""},
      {"OutputDirectory, none", [](Scene& s) { s.profile->SetOutputDirectory(""); }, quiet, quiet, ""},
      {"CompileHelpFile", [](Scene& s) { s.profile->SetCompileHelpFile(false); }, told, held, ""},
      {"HTMLHelpVersion", [](Scene& s) { s.profile->SetHTMLHelpVersion(2); }, told, held, ""},
      {"H2Namespace", [](Scene& s) { s.profile->SetH2Namespace("x"); }, told, held, ""},
      {"H2FileID", [](Scene& s) { s.profile->SetH2FileID("x"); }, told, held, ""},
      {"H2PlugIn", [](Scene& s) { s.profile->SetH2PlugIn("x"); }, told, held, ""},
      {"HelpFileName", [](Scene& s) { s.profile->SetHelpFileName("\\help\\x.chm"); }, told, held, ""},
      {"HelpFileName, none", [](Scene& s) { s.profile->SetHelpFileName(""); }, quiet, quiet, ""},
      {"ProjectTitle", [](Scene& s) { s.profile->SetProjectTitle("x"); }, told, held, ""},
      {"RemoveOutputFiles", [](Scene& s) { s.profile->SetRemoveOutputFiles(true); }, told, held, ""},
      {"IncludeInBuild", [](Scene& s) { s.profile->SetIncludeInBuild(true); }, told, held, ""},
      {"DefaultTopic", [](Scene& s) { s.profile->SetDefaultTopic(s.a); }, told, held, ""},
      {"DefaultTopic, none", [](Scene& s) { s.profile->SetDefaultTopic({}); }, quiet, quiet, ""},
      {"LocaleID", [](Scene& s) { s.profile->SetLocaleID(1033); }, told, held, ""},
      {"LocaleID, the same", [](Scene& s) { s.profile->SetLocaleID(0); }, quiet, quiet, ""},
      {"BuildProfiles", [](Scene& s) { s.profile->SetBuildProfiles({}); }, quiet, quiet, ""},
      {"change without a list",
       [](Scene& s) {
         s.profile->SetBuildProfiles({});
         s.profile->SetName("x");
       },
       quiet, quiet, ""},
      {"VariableValue, new", [](Scene& s) { s.profile->SetVariableValue("x", "1"); }, quiet, quiet, ""},
      {"VariableValue, changed",
       [](Scene& s) {
         s.profile->SetVariableValue("x", "1");
         s.profile->SetVariableValue("X", "2");
         s.profile->SetVariableValue("x", "2");
       },
       told, held, ""},
      {"ProjectPropertyValue, new", [](Scene& s) { s.profile->SetProjectPropertyValue("x", "1"); }, quiet, quiet, ""},
      {"ProjectPropertyValue, changed",
       [](Scene& s) {
         s.profile->SetProjectPropertyValue("x", "1");
         s.profile->SetProjectPropertyValue("x", "2");
       },
       told, held, ""},
      {"ClearVariableValues", [](Scene& s) { s.profile->ClearVariableValues(); }, quiet, quiet, ""},
      {"Load of the list",
       [](Scene& s) {
         XMLDocument record;
         record.LoadXML(
             "<x><x ID='x' Name='x' OutputDirectory='x' CompileHelpFile='False' HTMLHelpVersion='1' H2Namespace='' "
             "H2FileID='' HelpFileName='x.chm' LocaleID='1033'/></x>");
         s.project->BuildProfiles->Load(record.DocumentElement());
       },
       quiet, quiet, ""},
      {"Save of the list", [](Scene& s) { s.project->BuildProfiles->Save(XMLDocument().DocumentElement()); }, quiet,
       quiet, ""},
  });
}

TEST_F(ConfigTrafficTest, ProjectProperties) {
  // The project hears first, since it was there first, and hasn't a pause for its properties.
  const std::string told = "Dirty ProjectPropertyChanged(q) | P";
  const std::string quiet = " | ";
  Check({
      {"Add", [](Scene& s) { s.project->ProjectProperties()->Add(New<ProjectProperty>(), "{x}"); },
       "Dirty ProjectPropertyAdded() | P", "Dirty ProjectPropertyAdded() | P", ""},
      {"Add, known key", [](Scene& s) { s.project->ProjectProperties()->Add(s.property, s.property->ID()); }, quiet,
       quiet, "ProjectProperties.Add 457"},
      {"Remove", [](Scene& s) { s.project->ProjectProperties()->Remove(s.property->ID()); },
       "Dirty ProjectPropertyRemoved(q) | P", "Dirty ProjectPropertyRemoved(q) | P", ""},
      {"Remove, unknown key", [](Scene& s) { s.project->ProjectProperties()->Remove("q"); }, quiet, quiet, ""},
      {"PropertyName", [](Scene& s) { s.property->SetPropertyName("x"); }, "Dirty ProjectPropertyChanged(x) | P",
       "Dirty ProjectPropertyChanged(x) | P", ""},
      {"PropertyType", [](Scene& s) { s.property->SetPropertyType(pptColor); }, told, told, ""},
      {"PropertyValue", [](Scene& s) { s.property->SetPropertyValue("x"); }, told, told, ""},
      {"PropertyValue, the same", [](Scene& s) { s.property->SetPropertyValue("v"); }, quiet, quiet, ""},
      {"ProjectProperties", [](Scene& s) { s.property->SetProjectProperties({}); }, quiet, quiet, ""},
      {"change without a list",
       [](Scene& s) {
         s.property->SetProjectProperties({});
         s.property->SetPropertyValue("x");
       },
       quiet, quiet, ""},
      {"Load of the list",
       [](Scene& s) {
         XMLDocument record;
         record.LoadXML("<x><ProjectProperty PropertyName='x' PropertyType='0' PropertyValue='' ID='{x}'/></x>");
         s.project->ProjectProperties()->Load(record.DocumentElement());
       },
       quiet, quiet, ""},
      {"Save of the list", [](Scene& s) { s.project->ProjectProperties()->Save(XMLDocument().DocumentElement()); },
       quiet, quiet, ""},
  });
}

}  // namespace
}  // namespace quillbook
