#include "quillbook/config/BuildProfile.h"

#include <map>

#include "quillbook/config/BuildProfiles.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "support/ProjectLog.h"
#include "support/ProjectTest.h"

namespace quillbook {
namespace {

class BuildProfileRecordTest : public support::ProjectTest {
 protected:
  void SetUp() override {
    ProjectTest::SetUp();
    project->Filename->SetFullName("\\help\\my help.qbp");
  }
  /// The mandatory attributes, with some replaced, and whatever else there is.
  static std::string Record(const std::map<std::string, std::string>& given = {}, const std::string& inside = {}) {
    std::map<std::string, std::string> attributes = {{"ID", "{1}"},
                                                     {"Name", "n"},
                                                     {"OutputDirectory", ""},
                                                     {"CompileHelpFile", "True"},
                                                     {"HTMLHelpVersion", "1"},
                                                     {"H2Namespace", "ns"},
                                                     {"H2FileID", "id"},
                                                     {"HelpFileName", ""}};
    for (const auto& [name, value] : given) attributes[name] = value;
    std::string record = "<BuildProfile";
    for (const auto& [name, value] : attributes)
      if (value != Absent) record.append(" ").append(name).append("='").append(value).append("'");
    return record + ">" + inside + "</BuildProfile>";
  }
  Ref<BuildProfile> Loaded(const std::string& record) {
    const auto profile = New<BuildProfile>();
    profile->SetBuildProfiles(project->BuildProfiles);
    profile->Load(Parse(record).DocumentElement());
    return profile;
  }
  static constexpr const char* Absent = "(absent)";
};

TEST_F(BuildProfileRecordTest, Save_WritesEveryAttributeInOrder_AndTheOverridesThatHaveAValue) {
  const auto profile = project->NewBuildProfile("Web", "Title", false, 2);
  profile->SetVariableValue("a", "1 & 2");
  profile->SetVariableValue("empty", "");
  profile->SetProjectPropertyValue("{2}", "x");
  profile->SetLocaleID(1049);
  profile->SetOutputDirectory("\\help\\out");
  profile->SetHelpFileName("\\help\\a.hxs");
  auto text = Written(*profile);
  text.replace(text.find(profile->ID()), 38, "{1}");
  EXPECT_EQ(text,
            "<BuildProfile ID=\"{1}\" Name=\"Web\" OutputDirectory=\"out\\\" CompileHelpFile=\"False\" "
            "HTMLHelpVersion=\"2\" H2Namespace=\"\" H2FileID=\"\" H2PlugIn=\"\" HelpFileName=\"a.hxs\" "
            "UseBuildFlags=\"False\" ProjectTitle=\"Title\" RemoveOutputFiles=\"False\" BuildFlags=\"\" "
            "IncludeInBuild=\"False\" DefaultTopicID=\"\" LocaleID=\"1049\">\n"
            "\t<TemplateProperty Name=\"a\">1 &amp; 2</TemplateProperty>\n"
            "\t<ProjectProperty Name=\"{2}\">x</ProjectProperty>\n"
            "</BuildProfile>");
}

TEST_F(BuildProfileRecordTest, Load_ReadsWhatSaveWrote) {
  const auto profile = project->NewBuildProfile("Web", "Title", false, 2);
  profile->SetVariableValue("a", " 1\r\n2 ");
  profile->SetProjectPropertyValue("{2}", "x");
  profile->SetH2PlugIn("p");
  profile->SetRemoveOutputFiles(true);
  profile->SetIncludeInBuild(true);
  profile->SetH2Namespace("ns");
  profile->SetH2FileID("id");
  const auto text = Written(*profile);
  const auto loaded = Loaded(text);
  EXPECT_EQ(Written(*loaded), text);
  EXPECT_EQ(loaded->ID(), profile->ID());
  EXPECT_EQ(loaded->VariableValue("a"), " 1\r\n2 ");
}

TEST_F(BuildProfileRecordTest, Load_MakesEveryProfileAHelp2Profile) {
  const auto profile = Loaded(Record({{"HTMLHelpVersion", "1"}, {"HelpFileName", "a.chm"}}));
  EXPECT_EQ(profile->HTMLHelpVersion(), 2);
  EXPECT_EQ(profile->HelpFileName(), "\\help\\a.hxs");
}

TEST_F(BuildProfileRecordTest, Load_GivesTheHelpFileItsExtension) {
  const std::pair<const char*, const char*> cases[] = {{"", ""},
                                                       {".chm", ".chm"},
                                                       {"a.chm", "a.hxs"},
                                                       {"A.HXS", "A.HXS"},
                                                       {"helpfile", "help.hxs"},
                                                       {"abcd", "abcd"},
                                                       {"a\xC3\xA4\xC3\xB6\xC3\xBC\xC3\x9F", "a.hxs"},
                                                       {"\xF0\x9F\x98\x80"
                                                        "b.chm",
                                                        "\xF0\x9F\x98\x80"
                                                        "b.hxs"}};
  for (const auto& [stored, expected] : cases) {
    const auto text = Written(*Loaded(Record({{"HelpFileName", stored}})));
    EXPECT_NE(text.find(std::string("HelpFileName=\"") + expected + "\""), std::string::npos) << text;
  }
  Loaded(Record({{"HelpFileName", std::string(1'000'000, 'x')}}));  // in no time
}

TEST_F(BuildProfileRecordTest, Load_CompletesTheHelp2Names) {
  auto profile = Loaded(Record({{"H2Namespace", ""}, {"H2FileID", ""}}));
  EXPECT_EQ(profile->H2Namespace(), "my help");
  EXPECT_EQ(profile->H2FileID(), "my help");
  profile = Loaded(Record({{"H2FileID", ""}}));
  EXPECT_EQ(profile->H2FileID(), "ns");
}

TEST_F(BuildProfileRecordTest, Load_WithoutAMandatoryAttribute_IsAFailure) {
  for (const auto* name : {"ID", "Name", "OutputDirectory", "CompileHelpFile", "HTMLHelpVersion", "H2Namespace",
                           "H2FileID", "HelpFileName"}) {
    Loaded(Record({{name, Absent}}));
    EXPECT_EQ(failures.Take(), Failures{"BuildProfile.Load 5"}) << name;
  }
}

TEST_F(BuildProfileRecordTest, Load_OfAVersionThatIsNoNumber_IsAFailure) {
  for (const auto& [text, number] : {std::pair("", "13"), std::pair("one", "13"), std::pair("40000", "6")}) {
    Loaded(Record({{"HTMLHelpVersion", text}}));
    EXPECT_EQ(failures.Take(), Failures{std::string("BuildProfile.Load ") + number}) << text;
  }
}

TEST_F(BuildProfileRecordTest, Load_WithoutOptionalAttributes_KeepsTheDefaults) {
  const auto profile = Loaded(Record());
  EXPECT_EQ(profile->ProjectTitle(), "");
  EXPECT_FALSE(profile->RemoveOutputFiles());
  EXPECT_FALSE(profile->IncludeInBuild());
  EXPECT_EQ(profile->LocaleID(), 0);
  EXPECT_EQ(profile->H2PlugIn(), "");
}

TEST_F(BuildProfileRecordTest, Load_TakesTheLocaleByItsLeadingDigits) {
  const std::pair<const char*, int> cases[] = {{"1031", 1031}, {"1031x", 1031}, {"x", 0}, {"", 0}, {"99999999999", 0}};
  for (const auto& [text, id] : cases) EXPECT_EQ(Loaded(Record({{"LocaleID", text}}))->LocaleID(), id) << text;
}

TEST_F(BuildProfileRecordTest, Load_TakesExactlyTrueForTrue) {
  for (const auto* text : {"true", "1", "TRUE", ""}) {
    const auto profile =
        Loaded(Record({{"CompileHelpFile", text}, {"RemoveOutputFiles", text}, {"IncludeInBuild", text}}));
    EXPECT_FALSE(profile->CompileHelpFile()) << text;
    EXPECT_FALSE(profile->RemoveOutputFiles()) << text;
    EXPECT_FALSE(profile->IncludeInBuild()) << text;
  }
}

TEST_F(BuildProfileRecordTest, Load_ReadsNeitherUseBuildFlagsNorBuildFlags) {
  const auto text = Written(*Loaded(Record({{"UseBuildFlags", "True"}, {"BuildFlags", "a,b"}})));
  EXPECT_NE(text.find("UseBuildFlags=\"False\""), std::string::npos);
  EXPECT_NE(text.find("BuildFlags=\"\""), std::string::npos);
}

TEST_F(BuildProfileRecordTest, Load_IgnoresOtherElements_AndFailsAtARepeatedName) {
  const auto profile = Loaded(Record({},
                                     "<Other Name='x'>o</Other><templateproperty/>"
                                     "<TemplateProperty Name='a'>1</TemplateProperty>"
                                     "<ProjectProperty Name='a'>2</ProjectProperty>"
                                     "<TemplateProperty Name='A'>3</TemplateProperty>"
                                     "<TemplateProperty Name='b'>4</TemplateProperty>"));
  EXPECT_EQ(failures.Take(), Failures{"BuildProfile.Load 457"});
  EXPECT_EQ(profile->VariableValue("a"), "1");
  EXPECT_EQ(profile->ProjectPropertyValue("a"), "2");
  EXPECT_EQ(profile->VariableValue("b"), "");
  EXPECT_EQ(profile->VariableValue("x"), "");
}

TEST_F(BuildProfileRecordTest, AnOverrideWithAnEmptyValue_IsLostAtTheNextSave) {
  const auto profile = Loaded(Record({}, "<TemplateProperty Name='a'/>"));
  EXPECT_TRUE(profile->VariableValues()->Contains("a"));
  EXPECT_EQ(Written(*profile).find("TemplateProperty"), std::string::npos);
}

TEST_F(BuildProfileRecordTest, LoadOfTheList_TellsNobody_EmptiesNothing_AndFailsAtARepeatedID) {
  const auto profiles = project->BuildProfiles;
  support::ProjectLog log(project);
  profiles->Load(Parse("<l>" + Record() + "</l>").DocumentElement());
  auto other = Record({{"ID", "{2}"}});
  other.replace(1, 12, "AnotherNamed").replace(other.rfind("BuildProfile"), 12, "AnotherNamed");
  profiles->Load(Parse("<l>" + other + "</l>").DocumentElement());
  EXPECT_EQ(profiles->Count(), 2u);
  EXPECT_EQ(profiles->Item("{2}")->BuildProfiles(), profiles);
  profiles->Load(Parse("<l>" + Record() + Record({{"ID", "{3}"}}) + "</l>").DocumentElement());
  EXPECT_EQ(failures.Take(), Failures{"BuildProfiles.Load 457"});
  EXPECT_EQ(profiles->Count(), 2u);
  EXPECT_EQ(log.Take(), "");
  EXPECT_FALSE(project->Dirty());
}

TEST_F(BuildProfileRecordTest, SaveOfTheList_WritesEveryProfile) {
  const auto profiles = project->BuildProfiles;
  profiles->Load(Parse("<l>" + Record() + Record({{"ID", "{2}"}}) + "</l>").DocumentElement());
  const auto document = Parse(Written(*profiles));
  std::string ids;
  for (const auto& child : document.DocumentElement().ChildElements())
    ids.append(child.Name()).append(child.Attributes().Item("ID").Value()).append(" ");
  EXPECT_EQ(ids, "BuildProfile{1} BuildProfile{2} ");
}

}  // namespace
}  // namespace quillbook
