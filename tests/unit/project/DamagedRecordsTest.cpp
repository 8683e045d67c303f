// Records of every class with one attribute damaged in every way.
#include <algorithm>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "quillbook/config/BuildProfile.h"
#include "quillbook/config/BuildProfiles.h"
#include "quillbook/config/ProjectProperties.h"
#include "quillbook/config/ProjectProperty.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/structure/GlossaryItem.h"
#include "quillbook/structure/GlossaryItems.h"
#include "quillbook/structure/OtherFile.h"
#include "quillbook/structure/OtherFiles.h"
#include "quillbook/structure/QBNode.h"
#include "quillbook/structure/QBNodes.h"
#include "quillbook/structure/Task.h"
#include "quillbook/structure/Tasks.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/TopicCategories.h"
#include "quillbook/topics/TopicCategory.h"
#include "quillbook/topics/TopicKeywords.h"
#include "quillbook/topics/TopicLink.h"
#include "quillbook/topics/TopicLinks.h"
#include "quillbook/topics/TopicStatus.h"
#include "quillbook/topics/TopicStatuses.h"
#include "quillbook/topics/Topics.h"
#include "support/ProjectTest.h"

namespace quillbook {
namespace {

/// Stands for any value.
constexpr const char* Any = "*";
/// Name of an "attribute" that is the element's text.
constexpr const char* Text = "(text)";

/// How a reader takes a value.
enum class Kind {
  Words,       ///< as it stands
  Flag,        ///< True for exactly "True", else False
  Number,      ///< 32 or 16 bits; anything else is no number
  Digits,      ///< by its leading digits; 0 without any
  Moment,      ///< a task's date and time; anything else is no date
  Day,         ///< a topic's date; anything else becomes the present day
  LocaleDate,  ///< a date in the system's form; anything else is passed over
};

struct Attribute {
  const char* name;
  Kind kind;
  bool mandatory;
  std::string good;
  std::string untouched;  ///< what is saved for it if it was never read
  /// What is saved for a value that was taken, where that isn't the value.
  std::function<std::string(const std::string&)> stored = [](const std::string& value) { return value; };
};

struct Record {
  const char* className;
  std::vector<Attribute> attributes;  ///< in the order of reading
  /// Loads a record from its text, and gives back the record that is saved then.
  std::function<XMLDocument(QBProject&, const std::string&)> loadedAndSaved;
};

struct Damage {
  const char* name;
  std::optional<std::string> value;  ///< none: the attribute is absent
  bool repeated = false;             ///< the good value comes first
};

struct Outcome {
  int failure = 0;
  std::string saved;
};

const std::vector<Damage>& Damages() {
  static const std::vector<Damage> damages = {{"absent", std::nullopt},
                                              {"empty", ""},
                                              {"a word", "wrong"},
                                              {"true in lower case", "true"},
                                              {"a megabyte", std::string(1 << 20, 'x')},
                                              {"400 digits", std::string(400, '9')},
                                              {"repeated", "wrong", true}};
  return damages;
}

/// What becomes of one damaged attribute, by the rules of the kinds.
Outcome Expected(const Attribute& attribute, const Damage& damage) {
  constexpr int InvalidCall = 5, Overflow = 6, TypeMismatch = 13;
  if (damage.repeated) return {0, attribute.stored(attribute.good)};
  if (!damage.value) return {attribute.mandatory ? InvalidCall : 0, attribute.untouched};
  const auto& value = *damage.value;
  const bool digits = value.starts_with('9');
  switch (attribute.kind) {
    case Kind::Words: return {0, attribute.stored(value)};
    case Kind::Flag: return {0, "False"};
    case Kind::Digits: return {0, "0"};
    case Kind::Day: return {0, Date::Now().Format("dd-mm-yyyy")};
    case Kind::LocaleDate: return {0, attribute.untouched};
    case Kind::Number: return {attribute.mandatory ? (digits ? Overflow : TypeMismatch) : 0, attribute.untouched};
    case Kind::Moment: return {digits ? InvalidCall : TypeMismatch, attribute.untouched};
  }
  return {};
}

std::string RecordText(const std::vector<Attribute>& attributes, std::size_t damaged, const Damage& damage) {
  std::string tag = "<QBProject";
  std::string text;
  for (std::size_t i = 0; i < attributes.size(); ++i) {
    const std::string name = attributes[i].name;
    const auto value = i == damaged && !damage.repeated ? damage.value : std::optional<std::string>(attributes[i].good);
    if (name == Text) {
      text = value.value_or("");
      continue;
    }
    if (value) tag += " " + name + "='" + *value + "'";
    if (i != damaged || !damage.repeated) continue;
    tag += " " + name + "='" + *damage.value + "' " + (name + "='").replace(0, 1, 1, name[0] ^ 0x20) + "again'";
  }
  return tag + ">" + text + "</QBProject>";
}

XMLDocument DocumentOf(const std::string& text) {
  XMLDocument document;
  EXPECT_TRUE(document.LoadXML(text));
  return document;
}

template <class Member>
XMLDocument LoadAndSave(QBProject& project, const std::string& text) {
  const auto member = New<Member>();
  if constexpr (requires { member->SetQBProject(Ref<QBProject>(&project)); })
    member->SetQBProject(Ref<QBProject>(&project));
  if constexpr (requires { member->SetBuildProfiles(project.BuildProfiles); })
    member->SetBuildProfiles(project.BuildProfiles);
  if constexpr (requires { member->SetQBNodes(project.QBNodes); }) member->SetQBNodes(project.QBNodes);
  member->Load(DocumentOf(text).DocumentElement());
  XMLDocument record;
  record.DocumentElement().SetName("r");
  member->Save(record.DocumentElement());
  return record;
}

XMLDocument LoadAndShowStatus(QBProject&, const std::string& text) {
  const auto status = New<TopicStatus>();  // never saved
  status->Load(DocumentOf(text).DocumentElement());
  XMLDocument record;
  record.DocumentElement().AddAttribute("Name", status->Name);
  record.DocumentElement().AddAttribute("Caption", status->Caption);
  record.DocumentElement().AddAttribute("Icon", status->Icon);
  return record;
}

XMLDocument LoadAndSaveProject(QBProject&, const std::string& text) {
  const auto project = New<QBProject>();
  project->Load(text);
  return DocumentOf(project->Save());
}

std::string WithHelp2Extension(const std::string& name) {
  return name.size() > 4 ? name.substr(0, name.size() - 4) + ".hxs" : name;
}

const std::string& MomentText() {
  static const std::string text = "01-02-2005 13:05:09";
  return text;
}

std::vector<Record> Records() {
  const auto elseThen = [](const char* given) {
    return [given](const std::string& value) { return value.empty() ? std::string(given) : value; };
  };
  const auto nothing = [](const std::string&) { return std::string(); };
  const Date day(40000);
  return {
      {"TopicCategory",
       {{"Name", Kind::Words, true, "n", ""},
        {"Key", Kind::Words, true, "k", ""},
        {"AutoIndex", Kind::Flag, false, "True", "True"}},
       &LoadAndSave<TopicCategory>},
      {"TopicLink",
       {{"t", Kind::Words, true, "k", ""},
        {"cat", Kind::Words, true, "c", ""},
        {"Title", Kind::Words, false, "l", ""},
        {"rt", Kind::Number, false, "1", "0"},
        {"URL", Kind::Words, false, "u", ""}},
       &LoadAndSave<TopicLink>},
      {"QBNode",
       {{"key", Kind::Words, true, "k", ""},
        {"nt", Kind::Number, true, "2", "0"},
        {"ct", Kind::Number, true, "1", "2"},
        {"c", Kind::Words, true, "c", ""},
        {"i", Kind::Number, true, "7", "-1"},
        {"cfn", Kind::Words, true, "f", ""},
        {"tid", Kind::Words, true, "t", ""},
        {"url", Kind::Words, true, "u", ""}},
       &LoadAndSave<QBNode>},
      {"GlossaryItem",
       {{"Key", Kind::Words, true, "k", ""}, {"Term", Kind::Words, true, "t", ""}, {Text, Kind::Words, false, "d", ""}},
       &LoadAndSave<GlossaryItem>},
      {"Task",
       {{"Key", Kind::Words, true, "k", ""},
        {"Priority", Kind::Words, true, "2", "Medium"},
        {"Title", Kind::Words, true, "t", ""},
        {Text, Kind::Words, false, "n", ""},
        {"AssignedTo", Kind::Words, true, "a", ""},
        {"TopicID", Kind::Words, true, "i", ""},
        {"Status", Kind::Words, true, "s", "Not Started"},
        {"CreatedOn", Kind::Moment, true, MomentText(), Any},
        {"CreatedBy", Kind::Words, true, "c", Any},
        {"ModifiedOn", Kind::Moment, true, MomentText(), "30-12-1899 00:00:00"},
        {"ModifiedBy", Kind::Words, true, "m", ""}},
       &LoadAndSave<Task>},
      {"OtherFile",
       {{"FileName", Kind::Words, true, "sub\\f.png", ""},
        {"CaptureInfo", Kind::Words, false, "c", ""},
        {"IncludeInOutput", Kind::Flag, false, "True", "True"}},
       &LoadAndSave<OtherFile>},
      {"BuildProfile",
       {{"ID", Kind::Words, true, "{1}", Any},
        {"Name", Kind::Words, true, "n", ""},
        {"OutputDirectory", Kind::Words, true, "out\\", ""},
        {"CompileHelpFile", Kind::Flag, true, "True", "True"},
        {"HTMLHelpVersion", Kind::Number, true, "2", "1"},
        {"H2Namespace", Kind::Words, true, "ns", "", elseThen("p")},
        {"H2FileID", Kind::Words, true, "id", "", elseThen("ns")},
        {"HelpFileName", Kind::Words, true, "a.hxs", "", &WithHelp2Extension},
        {"ProjectTitle", Kind::Words, false, "t", ""},
        {"RemoveOutputFiles", Kind::Flag, false, "True", "False"},
        {"IncludeInBuild", Kind::Flag, false, "True", "False"},
        {"DefaultTopicID", Kind::Words, false, "d", ""},
        {"LocaleID", Kind::Digits, false, "1033", "0"},
        {"H2PlugIn", Kind::Words, false, "p", ""}},
       &LoadAndSave<BuildProfile>},
      {"ProjectProperty",
       {{"PropertyName", Kind::Words, true, "n", ""},
        {"PropertyType", Kind::Digits, true, "4", "0"},
        {"PropertyValue", Kind::Words, true, "v", ""},
        {"ID", Kind::Words, true, "{1}", Any}},
       &LoadAndSave<ProjectProperty>},
      {"Topic",
       {{"Key", Kind::Words, false, "{1}", Any, elseThen(Any)},
        {"Name", Kind::Words, false, "n", ""},
        {"Title", Kind::Words, false, "t", ""},
        {"ContentsTitle", Kind::Words, false, "c", "t", elseThen("t")},
        {"Category", Kind::Words, false, "", "", nothing},
        {"Status", Kind::Words, false, "s", "In Progress", elseThen("In Progress")},
        {"CreatedOn", Kind::Day, false, "01-02-2005 00:00", Any},
        {"ModifiedOn", Kind::Day, false, "02-02-2005 00:00", Any},
        {"LayoutName", Kind::Words, false, "l", ""},
        {"AllStyleSheets", Kind::Flag, false, "True", "True"},
        {"AllScripts", Kind::Flag, false, "True", "True"},
        {"AutoGenerateIndexEntry", Kind::Flag, false, "True", "True"},
        {"IncludeInHelpFile", Kind::Flag, false, "True", "True"}},
       &LoadAndSave<Topic>},
      {"TopicStatus",
       {{"Name", Kind::Words, true, "n", ""},
        {"Caption", Kind::Words, true, "c", ""},
        {"Icon", Kind::Words, true, "i", ""}},
       &LoadAndShowStatus},
      {"QBProject",
       {{"MVPFileName", Kind::Words, false, "m", ""},
        {"TemplateName", Kind::Words, false, "t", ""},
        {"SpellLastCheckDateTime", Kind::LocaleDate, false, day.ToLocaleText(), Date().ToLocaleText()},
        {"Title", Kind::Words, false, "h", ""},
        {"OutputDirectory", Kind::Words, false, "out\\", ""},
        {"AutoGenerateIndexEntries", Kind::Flag, false, "True", "True"},
        {"AutoGenerateCategoryIndex", Kind::Flag, false, "True", "False"},
        {"BuildMVProject", Kind::Flag, false, "True", "True"},
        {"DefaultTopic", Kind::Words, false, "k", ""}},
       &LoadAndSaveProject},
  };
}

/// The damaged record of a class is loaded and saved again: what came before the damage must be as it was given, what
/// comes behind it too unless the load ended there.
class DamagedRecordsTest : public support::ProjectTest, public testing::WithParamInterface<std::size_t> {
 protected:
  void SetUp() override {
    ProjectTest::SetUp();
    project->Filename->SetFullName("\\help\\p.qbp");
  }
  static std::string ValueIn(const XMLDocument& document, const std::string& name) {
    if (name == Text) return document.DocumentElement().Text();
    return std::string(document.DocumentElement().Attributes().Item(name).Value());
  }
  static bool Agrees(const std::string& expected, const std::string& found) {
    const bool day = expected.size() == 10 && expected[2] == '-';  // the time is that of the test
    return expected == Any || expected == found || (day && found.starts_with(expected));
  }
  void CheckDamage(const Record& record, std::size_t damaged, const Damage& damage) {
    const auto& attributes = record.attributes;
    const auto outcome = Expected(attributes[damaged], damage);
    const auto document = record.loadedAndSaved(*project, RecordText(attributes, damaged, damage));
    Failures expectedFailures;
    if (outcome.failure != 0)
      expectedFailures.push_back(std::string(record.className) + ".Load " + std::to_string(outcome.failure));
    EXPECT_EQ(failures.Take(), expectedFailures);
    for (std::size_t i = 0; i < attributes.size(); ++i) {
      auto expected = attributes[i].good;
      if (i == damaged) expected = outcome.saved;
      if (i > damaged && outcome.failure != 0) expected = attributes[i].untouched;
      const auto found = ValueIn(document, attributes[i].name);
      EXPECT_TRUE(Agrees(expected, found))
          << attributes[i].name << " is '" << found.substr(0, 100) << "', not '" << expected.substr(0, 100) << "'";
    }
  }
};

TEST_P(DamagedRecordsTest, EveryDamage_HasTheOutcomeOfItsRule) {
  const auto record = Records()[GetParam()];
  for (std::size_t damaged = 0; damaged < record.attributes.size(); ++damaged)
    for (const auto& damage : Damages()) {
      const bool possible =
          record.attributes[damaged].name != std::string_view(Text) || (damage.value && !damage.repeated);
      if (!possible) continue;
      SCOPED_TRACE(std::string(record.attributes[damaged].name) + " is " + damage.name);
      CheckDamage(record, damaged, damage);
    }
}

INSTANTIATE_TEST_SUITE_P(Classes, DamagedRecordsTest, testing::Range<std::size_t>(0, Records().size()),
                         [](const auto& info) { return std::string(Records()[info.param].className); });

// What a list makes of a damaged record among good ones.

class DamagedListTest : public support::ProjectTest {
 protected:
  void SetUp() override {
    ProjectTest::SetUp();
    project->Filename->SetFullName("\\help\\p.qbp");
  }
  /// A project with these sections.
  void Load(const std::string& sections) { project->Load("<QBProject>" + sections + "</QBProject>"); }
};

TEST_F(DamagedListTest, Categories_AreReadOn_AndADamagedOneHasNoKey) {
  Load("<cat Name='a' Key='1'/><cat Name='b'/><cat Name='c' Key='3'/>");
  EXPECT_EQ(failures.Take(), Failures{"TopicCategory.Load 5"});
  ASSERT_EQ(project->TopicCategories->Count(), 3u);
  EXPECT_EQ(project->TopicCategories->Item(2)->Name(), "b");
  EXPECT_EQ(project->TopicCategories->Item("3")->Name(), "c");
}

TEST_F(DamagedListTest, Keywords_AreReadOn_WithoutTheDamagedOne) {
  Load("<Topic Key='1'><K Value='a'/><K/><K value='b'/><K Value=''/><K Value='c' Value='d' VALUE='e'/><K Value='" +
       std::string(1 << 20, 'x') + "'/></Topic>");
  EXPECT_EQ(failures.Take(), Failures{"TopicKeywords.LoadKeyword 5"});
  const auto keywords = project->Topics->Item(1)->Keywords();
  ASSERT_EQ(keywords->Count(), 5u);
  EXPECT_EQ(keywords->Item(2)->Keyword(), "b");
  EXPECT_EQ(keywords->Item(3)->Keyword(), "") << "an empty keyword is one";
  EXPECT_EQ(keywords->Item(4)->Keyword(), "c") << "of a repeated attribute the first counts";
  EXPECT_EQ(keywords->Item(5)->Keyword().size(), 1u << 20);
}

TEST_F(DamagedListTest, Links_AreReadOn_AndADamagedOneIsKept) {
  Load("<Topic Key='1'><r t='a' cat=''/><r cat='x'/><r t='c' cat=''/></Topic>");
  EXPECT_EQ(failures.Take(), Failures{"TopicLink.Load 5"});
  const auto links = project->Topics->Item(1)->TopicLinks();
  ASSERT_EQ(links->Count(), 3u);
  EXPECT_EQ(links->Item(3)->ChildTopicKey, "c");
}

TEST_F(DamagedListTest, Nodes_AreReadOn_AndADamagedOneIsKeptAsFarAsItGot) {
  const auto node = [](const std::string& key, const std::string& icon) {
    return "<n key='" + key + "' nt='0' ct='2' c='" + key + "' i='" + icon + "' cfn='' tid='' url=''/>";
  };
  Load("<Nodes>" + node("a", "1") + node("b", "many") + node("c", "3") + "</Nodes>");
  EXPECT_EQ(failures.Take(), Failures{"QBNode.Load 13"});
  ASSERT_EQ(project->QBNodes->Count(), 3u);
  EXPECT_EQ(project->QBNodes->Item("b")->CaptionText(), "b");
  EXPECT_EQ(project->QBNodes->Item("b")->Icon(), -1);
  EXPECT_EQ(project->QBNodes->Item("c")->Icon(), 3);
}

TEST_F(DamagedListTest, GlossaryItems_AreReadOn_UntilASecondOneHasNoKey) {
  Load(
      "<GlossaryItems><g Key='1' Term='a'/><g Key='2'/><g Term='c'/><g Key='4' Term='d'/><g Term='e'/>"
      "<g Key='6' Term='f'/></GlossaryItems>");
  EXPECT_EQ(failures.Take(),
            (Failures{"GlossaryItem.Load 5", "GlossaryItem.Load 5", "GlossaryItem.Load 5", "GlossaryItems.Load 457"}));
  ASSERT_EQ(project->GlossaryItems()->Count(), 4u) << "no key is a key that can't come twice";
  EXPECT_EQ(project->GlossaryItems()->Item(4)->Term(), "d");
}

TEST_F(DamagedListTest, Tasks_AreReadOn_AndADamagedOneStaysPaused) {
  const auto task = [](const std::string& key, const std::string& date) {
    return "<Task Key='" + key + "' Priority='1' Title='" + key + "' AssignedTo='' TopicID='' Status='s' CreatedOn='" +
           date + "' CreatedBy='' ModifiedOn='" + MomentText() + "' ModifiedBy=''/>";
  };
  Load("<Tasks>" + task("a", MomentText()) + task("b", "soon") + task("c", MomentText()) + "</Tasks>");
  EXPECT_EQ(failures.Take(), Failures{"Task.Load 13"});
  ASSERT_EQ(project->Tasks->Count(), 3u);
  EXPECT_EQ(project->Tasks->Item("b")->Title(), "b");
  EXPECT_TRUE(project->Tasks->Item("b")->PauseEvents()) << "its load came to no end";
  EXPECT_FALSE(project->Tasks->Item("c")->PauseEvents());
}

TEST_F(DamagedListTest, OtherFiles_AreReadOn) {
  Load("<file FileName='a'/><file CaptureInfo='x'/><file FileName='c'/>");
  EXPECT_EQ(failures.Take(), Failures{"OtherFile.Load 5"});
  EXPECT_TRUE(project->OtherFiles->Exists("\\help\\c"));
}

TEST_F(DamagedListTest, BuildProfiles_AreReadOn_AndADamagedOneGetsAnID) {
  const auto profile = [](const std::string& id, const std::string& version) {
    return "<BuildProfile " + id + " Name='n' OutputDirectory='' CompileHelpFile='True' HTMLHelpVersion='" + version +
           "' H2Namespace='' H2FileID='' HelpFileName=''><TemplateProperty "
           "Name='v'>1</TemplateProperty></BuildProfile>";
  };
  Load("<BuildProfiles>" + profile("ID='{1}'", "2") + profile("", "2") + profile("ID='{3}'", "two") +
       profile("ID='{4}'", "2") + "</BuildProfiles>");
  EXPECT_EQ(failures.Take(), (Failures{"BuildProfile.Load 5", "BuildProfile.Load 13"}));
  ASSERT_EQ(project->BuildProfiles->Count(), 4u);
  EXPECT_EQ(project->BuildProfiles->Item(2)->ID().size(), 38u);
  EXPECT_EQ(project->BuildProfiles->Item("{3}")->VariableValue("v"), "") << "its overrides come behind the damage";
  EXPECT_EQ(project->BuildProfiles->Item("{4}")->VariableValue("v"), "1");
}

TEST_F(DamagedListTest, OverridesOfAProfile_EndAtOneWithoutAName) {
  Load(
      "<BuildProfiles><BuildProfile ID='{1}' Name='n' OutputDirectory='' CompileHelpFile='True' HTMLHelpVersion='2' "
      "H2Namespace='' H2FileID='' HelpFileName='' LocaleID='1033'><TemplateProperty Name='a'>1</TemplateProperty>"
      "<TemplateProperty>2</TemplateProperty><TemplateProperty Name='c'>3</TemplateProperty></BuildProfile>"
      "</BuildProfiles>");
  EXPECT_EQ(failures.Take(), Failures{"BuildProfile.Load 5"});
  const auto profile = project->BuildProfiles->Item("{1}");
  EXPECT_EQ(profile->LocaleID(), 1033);
  EXPECT_EQ(profile->VariableValue("a"), "1");
  EXPECT_EQ(profile->VariableValue("c"), "");
}

TEST_F(DamagedListTest, ProjectProperties_AreReadOn_AndADamagedOneGetsAnID) {
  const auto property = [](const std::string& name, const std::string& type) {
    return "<ProjectProperty PropertyName='" + name + "' PropertyType='" + type + "' PropertyValue='v' ID='{" + name +
           "}'/>";
  };
  Load("<ProjectProperties>" + property("a", "1") + property("b", "99999999999") + property("c", "2") +
       "</ProjectProperties>");
  EXPECT_EQ(failures.Take(), Failures{"ProjectProperty.Load 6"}) << "digits, but none of 32 bits";
  ASSERT_EQ(project->ProjectProperties()->Count(), 3u);
  EXPECT_EQ(project->ProjectProperties()->Item("b")->ID().size(), 38u);
  EXPECT_EQ(project->ProjectProperties()->Item("{c}")->PropertyType(), pptNumber);
}

TEST_F(DamagedListTest, Statuses_AreReadOn) {
  const auto statuses = New<TopicStatuses>();
  statuses->Load(
      Parse("<s><s Name='a' Caption='' Icon=''/><s Caption='x' Icon=''/><s Name='c' Caption='' Icon=''/></s>")
          .DocumentElement());
  EXPECT_EQ(failures.Take(), Failures{"TopicStatus.Load 5"});
  EXPECT_EQ(statuses->Count(), 3u);
  EXPECT_EQ(statuses->Item(2)->Name, "");
  EXPECT_TRUE(statuses->Item("c"));
}

TEST_F(DamagedListTest, Sections_AreReadOn_WithoutOneOfAnUnknownKind) {
  Load("<Topic Key='1'><s>x</s><s k='Summary'>x</s><s k='BodyText'>a</s><s k='bodytext'>b</s><K Value='k'/></Topic>");
  EXPECT_EQ(failures.Take().size(), 5u) << "two for each unknown kind, one for the repeated one";
  const auto topic = project->Topics->Item(1);
  EXPECT_EQ(topic->TopicSectionData("BodyText"), "a");
  EXPECT_EQ(topic->Keywords()->Count(), 1u);
}

}  // namespace
}  // namespace quillbook
