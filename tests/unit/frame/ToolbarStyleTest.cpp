#include <gtest/gtest.h>

#include "quillbook/config/QBIDEOptions.h"
#include "quillbook/frame/Root.h"
#include "support/FailureLog.h"

namespace quillbook {
namespace {

std::string Told(const Variant& value) {
  return value.IsOmitted() ? "omitted" : value.ToText();
}

/// Notes what is done to it, in one list with the control that it belongs to.
class FakeStyleManager final : public Object {
 public:
  explicit FakeStyleManager(std::string& log) : mLog(log) {}
  void ApplyStandardCommandBarStyle(const Variant& a, const Variant& b, const Variant& c) {
    mLog += "bars(" + Told(a) + "," + Told(b) + "," + Told(c) + ") ";
  }
  void ApplyStandardDockWindowStyle(const Variant& a) { mLog += "windows(" + Told(a) + ") "; }
  int UseThemeColors() const { return 0; }
  void SetUseThemeColors(int value) { mLog += "theme=" + std::to_string(value) + " "; }

  static const TypeInfo& StaticType() {
    static const TypeInfo type =
        Describe<FakeStyleManager>("FakeStyleManager")
            .Method<&FakeStyleManager::ApplyStandardCommandBarStyle>("ApplyStandardCommandBarStyle")
            .Method<&FakeStyleManager::ApplyStandardDockWindowStyle>("ApplyStandardDockWindowStyle")
            .Property<&FakeStyleManager::UseThemeColors, &FakeStyleManager::SetUseThemeColors>("UseThemeColors")
            .Done();
    return type;
  }
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 private:
  std::string& mLog;
};

class FakeDock final : public Object {
 public:
  bool Redraw() const { return true; }
  void SetRedraw(bool value) { log += value ? "redraw " : "hold "; }
  Ref<FakeStyleManager> StyleManager() {
    if (!styleManager) log += "none ";
    return styleManager;
  }

  std::string log;
  Ref<FakeStyleManager> styleManager = New<FakeStyleManager>(log);

  static const TypeInfo& StaticType() {
    static const TypeInfo type = Describe<FakeDock>("FakeDock")
                                     .Property<&FakeDock::Redraw, &FakeDock::SetRedraw>("Redraw")
                                     .ReadOnly<&FakeDock::StyleManager>("StyleManager")
                                     .Done();
    return type;
  }
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }
};

class ToolbarStyleTest : public testing::Test {
 protected:
  std::string Set(int style) {
    dock->log.clear();
    root->SetToolbarStyle(dock, static_cast<QBToolbarStyleEnum>(style));
    return dock->log;
  }

  support::FailureLog failures;
  Ref<Root> root = New<Root>();
  Ref<FakeDock> dock = New<FakeDock>();
};

TEST_F(ToolbarStyleTest, EachStyleHasItsLook) {
  EXPECT_EQ(Set(ToolbarStyleOffice2003), "hold bars(4,omitted,3) windows(0) theme=1 redraw ");
  EXPECT_EQ(Set(ToolbarStyleOffice2003NoThemes), "hold bars(4,omitted,3) windows(0) theme=0 redraw ");
  EXPECT_EQ(Set(ToolbarStyleOfficeXP), "hold bars(3,omitted,3) windows(4) theme=0 redraw ");
  EXPECT_EQ(failures.Take(), std::vector<std::string>());
}

TEST_F(ToolbarStyleTest, AnyOtherStyle_ChangesOnlyTheRedrawFlag) {
  dock->styleManager = nullptr;
  for (const int style : {3, -1, 99}) EXPECT_EQ(Set(style), "hold redraw ") << style;
  EXPECT_EQ(failures.Take(), std::vector<std::string>());
}

TEST_F(ToolbarStyleTest, AControlThatLacksWhatIsNeeded_IsReported) {
  dock->styleManager = nullptr;
  EXPECT_EQ(Set(ToolbarStyleOfficeXP), "hold none ");
  root->SetToolbarStyle(root, ToolbarStyleOfficeXP);
  root->SetToolbarStyle({}, ToolbarStyleOfficeXP);
  EXPECT_EQ(failures.Take(), std::vector<std::string>(
                                 {"Root.SetToolbarStyle 91", "Root.SetToolbarStyle 438", "Root.SetToolbarStyle 91"}));
}

}  // namespace
}  // namespace quillbook
