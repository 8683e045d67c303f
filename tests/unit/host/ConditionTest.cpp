#include "quillbook/host/Condition.h"

#include <gtest/gtest.h>

#include "Toy.h"

namespace quillbook {
namespace {

class AuthorsProject final : public Object {
 public:
  Ref<quillbook::MVProject> MVProject;
  static const TypeInfo& StaticType() {
    static const TypeInfo type =
        Describe<AuthorsProject>("AuthorsProject").Public<&AuthorsProject::MVProject>("MVProject").Done();
    return type;
  }
  const TypeInfo& Type() const override { return StaticType(); }
};

class ConditionTest : public testing::Test {
 protected:
  bool Holds(std::string_view type, const Ref<Object>& project) {
    Condition condition;
    condition.SetConditionType(type);
    EXPECT_TRUE(condition.IsValid()) << type;
    return condition.Evaluate(item, definition, project);
  }
  bool Holds(std::string_view type) { return Holds(type, host); }
  static bool IsValid(std::string_view type) {
    Condition condition;
    condition.SetConditionType(type);
    return condition.IsValid();
  }

  Ref<MVProject> host = New<MVProject>();
  Ref<toy::Item> item = New<toy::Item>("Title");
  Ref<NamespaceDef> definition = New<NamespaceDef>("toy:page", "ToyItem");
};

TEST_F(ConditionTest, InvalidTypes_AreToldAndNeverHold) {
  for (const auto* type : {"", "nosuch", "kind", "kind:", "kind: ", "defaultpage:x", "output:paper", "help:3", "not",
                           "not nosuch", "not not kind:page", "blank"}) {
    EXPECT_FALSE(IsValid(type)) << type;
    Condition condition;
    condition.SetConditionType(type);
    EXPECT_FALSE(condition.Evaluate(item, definition, host)) << type;
  }
}

TEST_F(ConditionTest, Kind_MatchesWithAndWithoutNamespace) {
  EXPECT_TRUE(Holds("kind:page"));
  EXPECT_TRUE(Holds("KIND:Toy:Page"));
  EXPECT_FALSE(Holds("kind:other:page"));
  EXPECT_FALSE(Holds("kind:toy"));
  definition = nullptr;
  EXPECT_FALSE(Holds("kind:page"));
}

TEST_F(ConditionTest, Type_IsTheItemsClass) {
  EXPECT_TRUE(Holds("type:toyitem"));
  EXPECT_FALSE(Holds("type:Topic"));
  EXPECT_TRUE(Holds("not type:Topic"));
}

TEST_F(ConditionTest, Blank_CountsEmptyTextsEmptyListsAndMissingMembers) {
  EXPECT_TRUE(Holds("notblank:Title"));
  EXPECT_TRUE(Holds("blank:Summary"));
  EXPECT_TRUE(Holds("blank:NoSuchMember"));
  EXPECT_TRUE(Holds("blank:Children"));
  item->Children->Add(New<toy::Item>("child"));
  EXPECT_TRUE(Holds("notblank:Children"));
  EXPECT_TRUE(Holds("notblank:Draft")) << "a Boolean always has a value";
  item = nullptr;
  EXPECT_TRUE(Holds("blank:Title"));
  EXPECT_FALSE(Holds("notblank:Title"));
}

TEST_F(ConditionTest, True_AsksForTheValueTrue) {
  EXPECT_FALSE(Holds("true:Draft"));
  item->Draft = true;
  EXPECT_TRUE(Holds("true:Draft"));
  item->Summary = "True";
  EXPECT_TRUE(Holds("true:Summary"));
  item->Summary = "true";
  EXPECT_FALSE(Holds("true:Summary"));
  EXPECT_FALSE(Holds("true:NoSuchMember"));
}

TEST_F(ConditionTest, Variable_HasAnyValueOrThisOne) {
  EXPECT_FALSE(Holds("variable:Theme"));
  host->Variables()->Add(New<VariableValue>("Theme", "a=b"), "Theme");
  EXPECT_TRUE(Holds("variable:theme"));
  EXPECT_TRUE(Holds("variable:Theme=a=b"));
  EXPECT_FALSE(Holds("variable:Theme=a"));
}

TEST_F(ConditionTest, Build_IsReachedThroughTheAuthorsProject) {
  const auto authors = New<AuthorsProject>();
  EXPECT_FALSE(Holds("output:web", authors)) << "without a host project there is no build";
  authors->MVProject = host;
  host->HelpVersion = "2";
  EXPECT_TRUE(Holds("output:web", authors));
  EXPECT_TRUE(Holds("help:2", authors));
  host->CompileHelpFile = true;
  EXPECT_TRUE(Holds("output:compiled", authors));
  EXPECT_FALSE(Holds("output:web", authors));
  EXPECT_FALSE(Holds("help:2", item));
}

TEST_F(ConditionTest, DefaultPage_NeedsAPageToBe) {
  EXPECT_FALSE(Holds("defaultpage"));
  host->DefaultPage = "Start.html";
  host->SetCurrentPage("start.html");
  EXPECT_TRUE(Holds("defaultpage"));
  EXPECT_FALSE(Holds("not defaultpage"));
}

}  // namespace
}  // namespace quillbook
