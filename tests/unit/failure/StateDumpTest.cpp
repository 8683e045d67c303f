#include <gtest/gtest.h>
#include <unistd.h>

#include "quillbook/base/Collection.h"
#include "quillbook/frame/FailureReporter.h"
#include "quillbook/frame/Procedure.h"

namespace quillbook {
namespace {

std::string Dump(std::string_view name, const Variant& value) {
  return fltnDumpVariable(name, value, 99);
}

class Plain final : public Object {
 public:
  static const TypeInfo& StaticType() {
    static const TypeInfo type = Describe<Plain>("Plain").Done();
    return type;
  }
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }
};

/// A list that breaks off with a failure.
class BrokenList final : public Object {
 public:
  static const TypeInfo& StaticType() {
    static const TypeInfo type = Describe<BrokenList>("BrokenList").Done();
    return type;
  }
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }
  [[nodiscard]] bool Enumerable() const override { return true; }
  void ForEachItem(const std::function<void(const Variant&)>& visit) const override {
    visit(Variant(1));
    throw Failure(FailureNumber::SubscriptOutOfRange);
  }
};

TEST(StateDump, Scalars_AreTheirUsualText) {
  EXPECT_EQ(Dump("Name", "text"), "<Name>text</Name>\r\n");
  EXPECT_EQ(Dump("Flag", true), "<Flag>True</Flag>\r\n");
  EXPECT_EQ(Dump("Count", -7), "<Count>-7</Count>\r\n");
  EXPECT_EQ(Dump("Share", 0.5), "<Share>0.5</Share>\r\n");
  EXPECT_EQ(Dump("Text", "<a> & \"b\""), "<Text><a> & \"b\"</Text>\r\n") << "nothing is escaped";
}

TEST(StateDump, ValuesWithoutText_HaveTheirWords) {
  EXPECT_EQ(Dump("a", Variant()), "<a>{Empty}</a>\r\n");
  EXPECT_EQ(Dump("a", Variant::Null()), "<a>{Null}</a>\r\n");
  EXPECT_EQ(Dump("a", Ref<Object>()), "<a>{Nothing}</a>\r\n");
  EXPECT_EQ(Dump("a", Variant::ErrorValue{5}), "<a></a>\r\n");
  EXPECT_EQ(Dump("a", Variant::Opaque{"{UDT - POINT}"}), "<a>{UDT - POINT}</a>\r\n");
  EXPECT_EQ(Dump("a", ""), "<a></a>\r\n");
}

TEST(StateDump, NulInAText_IsWrittenOut) {
  EXPECT_EQ(Dump("a", std::string_view("x\0y\0", 4)), "<a>x{Null}y{Null}</a>\r\n");
}

TEST(StateDump, NameWithABlank_ClosesWithThePartBeforeIt) {
  EXPECT_EQ(Dump("Name Index=\"3\"", 1), "<Name Index=\"3\">1</Name>\r\n");
  EXPECT_EQ(Dump("a b c", Variant()), "<a b c>{Empty}</a>\r\n");
}

TEST(StateDump, Objects_ShowTheirType_AndListsTheirItems) {
  EXPECT_EQ(Dump("a", New<Plain>()), "<a>{Plain}</a>\r\n");
  const auto list = New<Collection<std::string>>();
  EXPECT_EQ(Dump("list", list), "<list>\r\n</list>\r\n");
  list->Add("x");
  list->Add("y", "key");
  EXPECT_EQ(Dump("list", list), "<list>\r\n<list[1]>x</list[1]>\r\n<list[2]>y</list[2]>\r\n</list>\r\n");
}

TEST(StateDump, ItemsOfANameWithABlank_KeepTheWholeName) {
  const auto list = New<Collection<int>>();
  list->Add(5);
  EXPECT_EQ(Dump("a b", list), "<a b>\r\n<a b[1]>5</a>\r\n</a>\r\n");
}

TEST(StateDump, ListsInLists_AreDumpedToTheEnd) {
  const auto inner = New<Collection<int>>();
  inner->Add(1);
  const auto outer = New<Collection<Ref<Collection<int>>>>();
  outer->Add(inner);
  outer->Add(nullptr);
  EXPECT_EQ(Dump("a", outer), "<a>\r\n<a[1]>\r\n<a[1][1]>1</a[1][1]>\r\n</a[1]>\r\n<a[2]>{Nothing}</a[2]>\r\n</a>\r\n");
}

TEST(StateDump, AListThatHoldsItself_EndsInAFailureText) {
  const auto list = New<Collection<Ref<Object>>>();
  list->Add(Ref<Object>(list));
  EXPECT_NE(Dump("a", list).find("{Error 28 formatting for output}"), std::string::npos);
  list->Clear();
}

TEST(StateDump, AFailureInside_TakesThePlaceOfTheValue) {
  EXPECT_EQ(Dump("a", New<BrokenList>()), "<a>{Error 9 formatting for output}</a>\r\n");
}

TEST(StateDump, ArrayOfOneDimension_NamesEachElementByItsIndex) {
  VariantArray array;
  array.dimensions = {{2, 3}};
  array.elements = {"x", Variant()};
  EXPECT_EQ(Dump("a", array), "<a>\r\n<a Index=\"2\">x</a>\r\n<a Index=\"3\">{Empty}</a>\r\n</a>\r\n");
}

TEST(StateDump, ArrayOfTwoDimensions_JoinsBothIndices) {
  VariantArray array;
  array.dimensions = {{0, 1}, {1, 2}};
  array.elements = {1, 2, 3, 4};
  EXPECT_EQ(Dump("a", array),
            "<a>\r\n<a Index=\"0,1\">1</a>\r\n<a Index=\"0,2\">2</a>\r\n<a Index=\"1,1\">3</a>\r\n"
            "<a Index=\"1,2\">4</a>\r\n</a>\r\n");
}

TEST(StateDump, ArrayOfThreeDimensions_IsStillDumped) {
  VariantArray array;
  array.dimensions = {{0, 0}, {0, 0}, {-1, 0}};
  array.elements = {1, 2};
  EXPECT_EQ(Dump("a x", array), "<a x>\r\n<a Index=\"0,0,-1\">1</a>\r\n<a Index=\"0,0,0\">2</a>\r\n</a>\r\n");
}

TEST(StateDump, ArrayOfMoreDimensions_IsTruncated) {
  VariantArray array;
  array.dimensions = {{0, 0}, {0, 0}, {0, 0}, {0, 0}};
  array.elements = {1};
  EXPECT_EQ(Dump("a", array), "<a>\r\n{Dump truncated at 4 dimensions}\r\n</a>\r\n");
  array.dimensions.push_back({0, 0});
  EXPECT_EQ(Dump("a", array), "<a>\r\n{Dump truncated at 4 dimensions}\r\n</a>\r\n") << "counted no further";
}

TEST(StateDump, UnallocatedArrays_SayWhichDimension) {
  VariantArray array;
  EXPECT_EQ(Dump("a", array), "<a>\r\n{UnInitialised Array}</a>\r\n");
  array.dimensions = {{0, -1}};
  EXPECT_EQ(Dump("a", array), "<a>\r\n{UnInitialised Array}</a>\r\n");
  array.dimensions = {{0, 2}, {}};
  EXPECT_EQ(Dump("a", array), "<a>\r\n{UnInitialised Array Dimension 2}</a>\r\n");
  array.dimensions = {{0, 2}, {0, 2}, {}};
  EXPECT_EQ(Dump("a", array), "<a>\r\n{UnInitialised Array Dimension 3}</a>\r\n");
}

void TellGlobals(const Object::FieldVisitor& visit) {
  visit("RootIncrement", 2);
  visit("mCacheTopics", Ref<Object>());
}

TEST(StateDump, Globals_BeginWithTheRegisteredOnes) {
  const auto own = fltnDumpGlobals();
  EXPECT_EQ(own.find("<fltnProjectId>"), 0u);
  SetGlobalsWriter(&TellGlobals);
  const auto all = fltnDumpGlobals();
  SetGlobalsWriter(nullptr);
  EXPECT_EQ(all, "<RootIncrement>2</RootIncrement>\r\n<mCacheTopics>{Nothing}</mCacheTopics>\r\n" + own);
}

TEST(StateDump, Globals_OfTheReporter_ComeInTheirOrder) {
  fltnCaptureError(Failure(FailureNumber::TypeMismatch).WithoutPlace(), 12);
  const auto& variables = fltnVariables();
  EXPECT_EQ(variables.fltnProcessId, getpid());
  EXPECT_FALSE(variables.fltnModuleFilename.empty());
  std::string expected = "<fltnProjectId>" + std::to_string(variables.fltnProjectId) + "</fltnProjectId>\r\n";
  expected += "<fltnProcessId>" + std::to_string(getpid()) + "</fltnProcessId>\r\n";
  expected += "<fltnModuleFilename>" + variables.fltnModuleFilename + "</fltnModuleFilename>\r\n";
  expected +=
      "<fltnDebuggerListening>False</fltnDebuggerListening>\r\n"
      "<fltnEnableInstanceCounts>False</fltnEnableInstanceCounts>\r\n"
      "<fltnInstanceCountsServerHandle>0</fltnInstanceCountsServerHandle>\r\n"
      "<fltnInstanceCountComponentNames>\r\n{UnInitialised Array}</fltnInstanceCountComponentNames>\r\n"
      "<fltnSkipInstanceCount>\r\n{UnInitialised Array}</fltnSkipInstanceCount>\r\n"
      "<fltnComponentID>0</fltnComponentID>\r\n"
      "<fltnHasInitialised>True</fltnHasInitialised>\r\n"
      "<fltnVariableDump></fltnVariableDump>\r\n"
      "<fltnErrorNumber>13</fltnErrorNumber>\r\n"
      "<fltnErrorDescription>Type mismatch</fltnErrorDescription>\r\n"
      "<fltnErrorLine>12</fltnErrorLine>\r\n"
      "<fltnErrorSource>QBLiteObjects2</fltnErrorSource>\r\n";
  EXPECT_EQ(fltnDumpGlobals(), expected);
}

void FailToTell(const Object::FieldVisitor& visit) {
  visit("RootIncrement", 1);
  throw Failure(FailureNumber::ObjectNotSet);
}

TEST(StateDump, Globals_ThatFail_LeaveWhatWasTold) {
  SetGlobalsWriter(&FailToTell);
  const auto dump = fltnDumpGlobals();
  SetGlobalsWriter(nullptr);
  EXPECT_EQ(dump, "<RootIncrement>1</RootIncrement>\r\n{Error 91 formatting for output}");
}

/// A class of the object library with fields of every kind.
class Holder final : public LibraryObject {
 public:
  std::string mTitle = "T";
  Ref<Holder> mOther;
  Ref<Plain> mPlain;
  Collection<int> mCol;
  WeakReference<Holder> mParent;
  [[nodiscard]] int Unreadable() const { throw Failure(FailureNumber::PermissionDenied); }

  static const TypeInfo& StaticType() {
    static const TypeInfo type = Describe<Holder>("Holder")
                                     .Field<&Holder::mTitle>("mTitle")
                                     .Field<&Holder::mOther>("mOther")
                                     .ComputedField<&Holder::Unreadable>("mUnreadable")
                                     .Field<&Holder::mPlain>("mPlain")
                                     .Field<&Holder::mCol>("mCol")
                                     .Field<&Holder::mParent>("mParent")
                                     .Done();
    return type;
  }
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }
};

TEST(StateDump, ModuleVariables_DontOpenClassesOfTheLibrary) {
  const auto holder = New<Holder>();
  holder->mCol.Add(4);
  holder->mPlain = New<Plain>();
  EXPECT_EQ(DumpModuleVariables(*holder),
            "<mTitle>T</mTitle>\r\n"
            "<mOther>{Cannot dump external UDTs}</mOther>\r\n"
            "<mUnreadable>{Error 70 formatting for output}</mUnreadable>\r\n"
            "<mPlain>{Plain}</mPlain>\r\n"
            "<mCol>\r\n<mCol[1]>4</mCol[1]>\r\n</mCol>\r\n"
            "<mParent>{WeakReference}</mParent>\r\n");
}

TEST(StateDump, Parameters_DontOpenThemEither) {
  ParameterDump dump;
  dump("Name", "n");
  dump("Holder", New<Holder>());
  dump("Plain", New<Plain>());
  dump("None", Ref<Holder>());
  EXPECT_EQ(std::move(dump).Text(),
            "<Name>n</Name>\r\n<Holder>{Cannot dump external UDTs}</Holder>\r\n<Plain>{Plain}</Plain>\r\n"
            "<None>{Nothing}</None>\r\n");
}

}  // namespace
}  // namespace quillbook
