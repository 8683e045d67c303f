#include "quillbook/config/ProjectProperties.h"

#include "support/ProjectLog.h"
#include "support/ProjectTest.h"

namespace quillbook {
namespace {

class ProjectPropertiesTest : public support::ProjectTest {
 protected:
  void SetUp() override {
    ProjectTest::SetUp();
    properties = project->ProjectProperties();
  }
  void TearDown() override {
    properties = nullptr;
    ProjectTest::TearDown();
  }
  Ref<ProjectProperty> AddProperty(const std::string& name, const std::string& value = {}) {
    return project->NewProjectProperty(name, pptText, value);
  }
  static std::string Record(const std::string& id, const std::string& name, const std::string& type = "0") {
    return "<ProjectProperty PropertyName='" + name + "' PropertyType='" + type + "' PropertyValue='v' ID='" + id +
           "'/>";
  }
  void Load(const std::string& records) {
    properties->Load(Parse("<ProjectProperties>" + records + "</ProjectProperties>").DocumentElement());
  }

  Ref<ProjectProperties> properties;
};

TEST_F(ProjectPropertiesTest, ANewProperty_IsInItsCollection) {
  const auto property = project->NewProjectProperty("Company", pptHTML, "<b>x</b>");
  EXPECT_EQ(property->ID().size(), 38u);
  EXPECT_EQ(property->PropertyName(), "Company");
  EXPECT_EQ(property->PropertyType(), pptHTML);
  EXPECT_EQ(property->PropertyValue(), "<b>x</b>");
  EXPECT_EQ(property->ProjectProperties(), properties);
  EXPECT_EQ(properties->Item(property->ID()), property);
}

TEST_F(ProjectPropertiesTest, Events_MarkTheProjectDirty_AndArentForwarded) {
  std::string heard;
  const auto added = properties->Events.ProjectPropertyAdded.Connect([&](auto&) { heard += "added "; });
  const auto changed = properties->Events.ProjectPropertyChanged.Connect([&](auto&) { heard += "changed "; });
  const auto removed = properties->Events.ProjectPropertyRemoved.Connect([&](auto&) { heard += "removed "; });
  support::ProjectLog log(project);
  const auto property = AddProperty("a", "b");
  EXPECT_TRUE(heard.ends_with("added "));
  EXPECT_TRUE(project->Dirty());
  heard.clear();
  log.Take();
  property->SetPropertyName("A");
  property->SetPropertyType(pptColor);
  property->SetPropertyValue("c");
  EXPECT_EQ(heard, "changed changed changed ");
  EXPECT_EQ(log.Take(), "Dirty Dirty Dirty");
  heard.clear();
  properties->Remove(property->ID());
  EXPECT_EQ(heard, "removed ");
  EXPECT_EQ(log.Take(), "Dirty");
  EXPECT_EQ(ProjectPropertiesEvents::PublishedName, "__ProjectProperties");
}

TEST_F(ProjectPropertiesTest, SettingThePresentValue_MarksNothing) {
  const auto property = AddProperty("a", "b");
  project->SetDirty(false);
  support::ProjectLog log(project);
  property->SetPropertyName("a");
  property->SetPropertyType(pptText);
  property->SetPropertyValue("b");
  EXPECT_EQ(log.Take(), "");
  EXPECT_FALSE(project->Dirty());
  New<ProjectProperty>()->SetPropertyName("no parent");
}

TEST_F(ProjectPropertiesTest, Item_WithABrace_NeverSearchesByName) {
  AddProperty("{name}");
  EXPECT_FALSE(properties->Item("{name}"));
}

TEST_F(ProjectPropertiesTest, Item_ByName_IgnoresCase_AndGivesTheFirst_AlsoAfterRenames) {
  const auto first = AddProperty("Company");
  const auto second = AddProperty("company");
  EXPECT_EQ(properties->Item("COMPANY"), first);
  first->SetPropertyName("Other");
  EXPECT_EQ(properties->Item("COMPANY"), second);
  first->SetPropertyName("COMPANY");
  EXPECT_EQ(properties->Item("company"), first);
  EXPECT_FALSE(properties->Item("unknown"));
  EXPECT_FALSE(properties->Item(""));
}

TEST_F(ProjectPropertiesTest, Item_ByPosition_IsNothingOutOfRange) {
  const auto property = AddProperty("2");
  EXPECT_EQ(properties->Item(1), property);
  EXPECT_FALSE(properties->Item(2));
  EXPECT_FALSE(properties->Item(0));
  EXPECT_EQ(properties->Item("2"), property);  // a text is a name, whatever it looks like
}

TEST_F(ProjectPropertiesTest, Add_OfAKnownKey_IsAFailure_AndRaisesNothing) {
  const auto property = AddProperty("a");
  int raised = 0;
  const auto added = properties->Events.ProjectPropertyAdded.Connect([&](auto&) { ++raised; });
  properties->Add(property, property->ID());
  EXPECT_EQ(failures.Take(), Failures{"ProjectProperties.Add 457"});
  EXPECT_EQ(raised, 0);
}

TEST_F(ProjectPropertiesTest, Remove_OfAnUnknownKey_DoesNothing) {
  AddProperty("a");
  int raised = 0;
  const auto removed = properties->Events.ProjectPropertyRemoved.Connect([&](auto&) { ++raised; });
  properties->Remove("a");  // a name is no key
  properties->Remove("{unknown}");
  properties->Remove(2);
  EXPECT_EQ(raised, 0);
  EXPECT_EQ(properties->Count(), 1u);
  properties->Remove(1);
  EXPECT_EQ(raised, 1);
  EXPECT_FALSE(properties->Item("a"));
}

// Record.

TEST_F(ProjectPropertiesTest, Save_WritesEveryProperty_AlsoWithoutValue) {
  Load(Record("{1}", "a", "4"));
  properties->Item(1)->SetPropertyValue("");
  EXPECT_EQ(Written(*properties),
            "<r>\n\t<ProjectProperty PropertyName=\"a\" PropertyType=\"4\" PropertyValue=\"\" ID=\"{1}\"/>\n</r>");
}

TEST_F(ProjectPropertiesTest, Load_TakesTheTypeByItsLeadingDigits) {
  Load(Record("{1}", "a", "abc") + Record("{2}", "b", "9") + Record("{3}", "c", "2x") + Record("{4}", "d", ""));
  EXPECT_EQ(properties->Item(1)->PropertyType(), pptText);
  EXPECT_EQ(static_cast<int>(properties->Item(2)->PropertyType()), 9);
  EXPECT_EQ(properties->Item(3)->PropertyType(), pptNumber);
  EXPECT_EQ(properties->Item(4)->PropertyType(), pptText);
}

TEST_F(ProjectPropertiesTest, Load_DropsAKnownID_Silently_AndSkipsOtherElements) {
  Load(Record("{1}", "first"));
  support::ProjectLog log(project);
  Load(Record("{1}", "second") + "<projectproperty/>" + Record("{2}", "third"));
  EXPECT_EQ(log.Take(), "");
  ASSERT_EQ(properties->Count(), 2u);
  EXPECT_EQ(properties->Item("{1}")->PropertyName(), "first");
  EXPECT_FALSE(properties->Item("second"));
  EXPECT_EQ(properties->Item("Third")->ProjectProperties(), properties);
}

TEST_F(ProjectPropertiesTest, Load_WithoutAnAttribute_IsAFailure) {
  for (const std::string name : {"PropertyName", "PropertyType", "PropertyValue", "ID"}) {
    auto record = Record("{1}", "a");
    record.replace(record.find(" " + name + "="), name.size() + 1, " Other" + name);
    New<ProjectProperty>()->Load(Parse(record).DocumentElement());
    EXPECT_EQ(failures.Take(), Failures{"ProjectProperty.Load 5"}) << name;
  }
}

TEST_F(ProjectPropertiesTest, ALoadedProject_FindsItsPropertiesByName) {
  project->Load("<QBProject><ProjectProperties>" + Record("{1}", "Company") + "</ProjectProperties></QBProject>");
  EXPECT_EQ(project->ProjectProperties()->Item("company")->ID(), "{1}");
  EXPECT_FALSE(project->Dirty());
}

}  // namespace
}  // namespace quillbook
