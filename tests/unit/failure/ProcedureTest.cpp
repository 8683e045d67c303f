#include "quillbook/frame/Procedure.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>
#include <thread>
#include <vector>

#include "quillbook/frame/FailureReporter.h"
#include "quillbook/platform/Platform.h"

namespace quillbook {
namespace {

struct ShownBox {
  std::string prompt;
  int buttons;
  std::string title;
};

class RecordingMessageBox final : public MessageBox {
 public:
  std::vector<ShownBox> boxes;
  bool fails = false;

  int Show(std::string_view Prompt, int Buttons, std::string_view Title) override {
    boxes.push_back({std::string(Prompt), Buttons, std::string(Title)});
    if (fails) throw std::runtime_error("no screen");
    return Ok;
  }
};

struct Report {
  std::int32_t number;
  std::string library, module, procedure, description;
  std::int32_t line;
  std::string variables, version;
};

class RecordingErrorObject final : public ErrorObject {
 public:
  std::vector<Report> reports;
  mutable int actionsRead = 0;

  void ErrorHandler(std::int32_t ErrorNumber, std::string_view Library, std::string_view Module,
                    std::string_view Procedure, std::string_view ErrorDescription, std::int32_t ErrorLine,
                    std::string_view Variables, std::string_view Version) override {
    reports.push_back({ErrorNumber, std::string(Library), std::string(Module), std::string(Procedure),
                       std::string(ErrorDescription), ErrorLine, std::string(Variables), std::string(Version)});
  }
  [[nodiscard]] std::string Action() const override {
    ++actionsRead;
    return "continue";
  }
};

class Worker final : public LibraryObject {
 public:
  std::string mState = "idle";
  int failedAt = 0;
  int frameLine = 0;

  std::string Inner(std::string_view Name) {
    return Procedure(*this, "Inner", [&](auto& p) { p("Name", Name); }).Run([&]() -> std::string {
      failedAt = __LINE__ + 1;
      throw Failure(FailureNumber::FileNotFound);
    });
  }
  int Middle() {
    return Procedure(*this, "Middle").Run([&] {
      const auto text = Inner("x");
      mState = "after inner";
      return text.empty() ? 7 : 8;
    });
  }
  int Outer() {
    return Procedure(*this, "Outer").Run([&] { return Middle() + 1; });
  }
  template <class Body>
  auto Framed(Body&& body) {
    frameLine = __LINE__ + 1;
    return Procedure(*this, "Framed").Run(body);
  }

  static const TypeInfo& StaticType() {
    static const TypeInfo type = Describe<Worker>("Worker").Field<&Worker::mState>("mState").Done();
    return type;
  }
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }
};

/// Its only field fails in a frame of its own, which dumps the same field again.
class SelfDumper final : public LibraryObject {
 public:
  [[nodiscard]] int Fail() const {
    return Procedure(*this, "Fail").Run([]() -> int { throw Failure(FailureNumber::Overflow); });
  }
  static const TypeInfo& StaticType() {
    static const TypeInfo type = Describe<SelfDumper>("SelfDumper").ComputedField<&SelfDumper::Fail>("value").Done();
    return type;
  }
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }
};

class ProcedureTest : public testing::Test {
 protected:
  ~ProcedureTest() override { SetErrorObject(nullptr); }

  static std::shared_ptr<RecordingErrorObject> PlugInAnErrorObject() {
    auto object = std::make_shared<RecordingErrorObject>();
    SetErrorObject(object);
    return object;
  }
  [[nodiscard]] const std::vector<ShownBox>& Boxes() const { return mBox->boxes; }

  std::shared_ptr<RecordingMessageBox> mBox = std::make_shared<RecordingMessageBox>();
  PlatformOverride<MessageBox> mOverride{mBox};
  Ref<Worker> mWorker = New<Worker>();
};

TEST_F(ProcedureTest, WithoutAFailure_GivesTheResult_AndShowsNothing) {
  EXPECT_EQ(mWorker->Framed([] { return 5; }), 5);
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(ProcedureTest, WithoutAnErrorObject_OneBoxIsShown_AndTheCallersGoOn) {
  EXPECT_EQ(mWorker->Outer(), 8);
  EXPECT_EQ(mWorker->mState, "after inner");
  EXPECT_EQ(Boxes().size(), 1u);
}

TEST_F(ProcedureTest, TheBox_SaysWhatHappenedAndWhere) {
  EXPECT_EQ(mWorker->Inner("x"), "");
  ASSERT_EQ(Boxes().size(), 1u);
  EXPECT_EQ(Boxes()[0].buttons, 16);
  EXPECT_EQ(Boxes()[0].title, "Application Error");
  EXPECT_EQ(Boxes()[0].prompt,
            "QBLiteObjects2 has encountered a problem. We are sorry for the inconvenience.\r\n\r\n"
            "Module: Worker\r\nProcedure: Inner\r\nLine Number: " +
                std::to_string(mWorker->failedAt) + "\r\n\r\nFile not found (53)");
}

TEST_F(ProcedureTest, ABoxThatCannotBeShown_StopsNobody) {
  mBox->fails = true;
  EXPECT_EQ(mWorker->Outer(), 8);
}

TEST_F(ProcedureTest, ACapturedFailure_StaysUntilTheNext) {
  (void)mWorker->Inner("x");
  const auto& variables = fltnVariables();
  EXPECT_EQ(variables.fltnErrorNumber, 53);
  EXPECT_EQ(variables.fltnErrorDescription, "File not found");
  EXPECT_EQ(variables.fltnErrorLine, mWorker->failedAt);
  EXPECT_EQ(variables.fltnErrorSource, "QBLiteObjects2");
  EXPECT_EQ(mWorker->Framed([] { return 1; }), 1);
  EXPECT_EQ(variables.fltnErrorNumber, 53) << "nothing clears them";
  mWorker->Framed([] { throw Failure(FailureNumber::DiskFull); });
  EXPECT_EQ(variables.fltnErrorNumber, 61);
}

TEST_F(ProcedureTest, Variables_BelongToTheirThread) {
  (void)mWorker->Inner("x");
  std::thread([] { EXPECT_EQ(fltnVariables().fltnErrorNumber, 0); }).join();
}

TEST_F(ProcedureTest, WithAnErrorObject_EachFrameReports_FromTheInsideOut) {
  const auto object = PlugInAnErrorObject();
  try {
    (void)mWorker->Outer();
    FAIL() << "the failure must reach the caller";
  } catch (const Failure& failure) {
    EXPECT_EQ(static_cast<int>(failure.Number()), 65535);
  }
  ASSERT_EQ(object->reports.size(), 3u);
  EXPECT_EQ(object->reports[0].procedure, "Inner");
  EXPECT_EQ(object->reports[0].number, 53);
  EXPECT_EQ(object->reports[1].procedure, "Middle");
  EXPECT_EQ(object->reports[1].number, 65535);
  EXPECT_EQ(object->reports[2].procedure, "Outer");
  EXPECT_EQ(object->reports[2].number, 65535);
  EXPECT_EQ(object->actionsRead, 3);
  EXPECT_EQ(mWorker->mState, "idle") << "nothing behind the failed call may run";
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(ProcedureTest, TheErrorObject_GetsEightArguments_AndTheWholeDump) {
  const auto object = PlugInAnErrorObject();
  EXPECT_THROW((void)mWorker->Inner("the name"), Failure);
  ASSERT_EQ(object->reports.size(), 1u);
  const auto& report = object->reports[0];
  EXPECT_EQ(report.library, "QBLiteObjects2");
  EXPECT_EQ(report.module, "Worker");
  EXPECT_EQ(report.description, "File not found");
  EXPECT_EQ(report.line, mWorker->failedAt);
  EXPECT_EQ(report.version, QUILLBOOK_VERSION);
  EXPECT_EQ(report.variables,
            "<Variables>\r\n<LocalVariables>\r\n</LocalVariables>\r\n"
            "<ModuleVariables>\r\n<mState>idle</mState>\r\n</ModuleVariables>\r\n<GlobalVariables>\r\n" +
                fltnDumpGlobals() +
                "</GlobalVariables>\r\n</Variables>\r\n<Parameters>\r\n<Name>the name</Name>\r\n</Parameters>");
}

TEST_F(ProcedureTest, AParameterThatCannotBeRead_LeavesTheReportWhole) {
  const auto object = PlugInAnErrorObject();
  const auto unreadable = []() -> int { throw Failure(FailureNumber::TypeMismatch); };
  const auto parameters = [&](auto& p) {
    p("First", 1);
    p("Second", unreadable());
  };
  EXPECT_THROW(Procedure(*mWorker, "Odd", parameters).Run([] { throw Failure(FailureNumber::DiskFull); }), Failure);
  ASSERT_EQ(object->reports.size(), 1u);
  EXPECT_EQ(object->reports[0].number, 61);
  EXPECT_TRUE(object->reports[0].variables.ends_with(
      "<Parameters>\r\n<First>1</First>\r\n{Error 13 formatting for output}</Parameters>"))
      << object->reports[0].variables;
}

TEST_F(ProcedureTest, AFieldThatFailsInItsOwnFrame_IsNotDumpedForEver) {
  const auto object = PlugInAnErrorObject();
  EXPECT_THROW((void)New<SelfDumper>()->Fail(), Failure);
  ASSERT_EQ(object->reports.size(), 2u) << "the getter's own report, then the procedure's";
  EXPECT_NE(object->reports[1].variables.find("<value>{Error 65535 formatting for output}</value>"), std::string::npos);
  EXPECT_EQ(object->reports[1].number, 6);
}

TEST_F(ProcedureTest, ErrorLine_IsTheCallersStatement_WhenAHelperFails) {
  int line = 0;
  mWorker->Framed([&] {
    line = __LINE__ + 1;
    (void)Variant("no number").ToLong();
  });
  EXPECT_EQ(fltnVariables().fltnErrorLine, line);
}

TEST_F(ProcedureTest, ErrorLine_IsTheFramesOwn_WhereNoPlaceIsKnown) {
  mWorker->Framed([] { (void)Ref<Worker>()->mState.size(); });
  EXPECT_EQ(fltnVariables().fltnErrorNumber, 91);
  EXPECT_EQ(fltnVariables().fltnErrorLine, mWorker->frameLine);
}

TEST_F(ProcedureTest, OtherExceptions_AreReportedToo_AndNothingCrosses) {
  EXPECT_EQ(mWorker->Framed([]() -> int { throw std::bad_alloc(); }), 0);
  EXPECT_EQ(fltnVariables().fltnErrorNumber, 7);
  EXPECT_EQ(fltnVariables().fltnErrorDescription, "Out of memory");
  EXPECT_EQ(mWorker->Framed([]() -> std::string { throw std::runtime_error("odd"); }), "");
  EXPECT_EQ(fltnVariables().fltnErrorNumber, 51);
  EXPECT_EQ(fltnVariables().fltnErrorDescription, "odd");
  mWorker->Framed([] { throw 7; });
  EXPECT_EQ(fltnVariables().fltnErrorDescription, "Internal error");
  EXPECT_EQ(Boxes().size(), 3u);
}

TEST_F(ProcedureTest, RunSetting_KeepsTheResultAsFarAsItWasSet) {
  const auto result = Procedure(*mWorker, "Setting").RunSetting(std::vector<int>{}, [](std::vector<int>& list) {
    list.push_back(1);
    throw Failure(FailureNumber::DeviceError);
  });
  EXPECT_EQ(result, std::vector<int>{1});
  EXPECT_EQ(Boxes().size(), 1u);
}

TEST_F(ProcedureTest, AModuleOfFreeProcedures_DumpsItsVariables) {
  static constexpr Module module{"modMain", [](const Object::FieldVisitor& visit) { visit("counter", 3); }};
  static constexpr Module bare{"modBare"};
  const auto object = PlugInAnErrorObject();
  EXPECT_THROW(Procedure(module, "Free").Run([] { throw Failure(FailureNumber::InvalidCall); }), Failure);
  EXPECT_THROW(Procedure(bare, "Free").Run([] { throw Failure(FailureNumber::InvalidCall); }), Failure);
  ASSERT_EQ(object->reports.size(), 2u);
  EXPECT_EQ(object->reports[0].module, "modMain");
  EXPECT_NE(object->reports[0].variables.find("<ModuleVariables>\r\n<counter>3</counter>\r\n</ModuleVariables>"),
            std::string::npos);
  EXPECT_EQ(object->reports[1].module, "modBare");
  EXPECT_NE(object->reports[1].variables.find("<ModuleVariables>\r\n</ModuleVariables>"), std::string::npos);
}

TEST_F(ProcedureTest, TheErrorObject_MayLeaveWhileItHandles) {
  class Leaving final : public ErrorObject {
   public:
    void ErrorHandler(std::int32_t, std::string_view, std::string_view, std::string_view, std::string_view,
                      std::int32_t, std::string_view, std::string_view) override {
      SetErrorObject(nullptr);
    }
    [[nodiscard]] std::string Action() const override { return {}; }
  };
  SetErrorObject(std::make_shared<Leaving>());
  EXPECT_EQ(mWorker->Middle(), 0) << "this frame reports by a box, and its caller isn't told";
  ASSERT_EQ(Boxes().size(), 1u);
  EXPECT_NE(Boxes()[0].prompt.find("Procedure: Middle\r\n"), std::string::npos);
  EXPECT_TRUE(Boxes()[0].prompt.ends_with("Application-defined or object-defined error (65535)"));
}

TEST_F(ProcedureTest, IgnoredFailures_AreNotReported) {
  int value = 1;
  EXPECT_FALSE(IgnoreFailures([&] { value = Variant("x").ToLong(); }));
  EXPECT_EQ(value, 1);
  EXPECT_TRUE(IgnoreFailures([&] { value = 2; }));
  EXPECT_EQ(value, 2);
  EXPECT_TRUE(Boxes().empty());
}

}  // namespace
}  // namespace quillbook
