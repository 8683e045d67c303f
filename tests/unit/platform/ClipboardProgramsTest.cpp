#include "platform/ClipboardPrograms.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <optional>

#include "quillbook/platform/LinuxDesktop.h"
#include "support/EnvironmentOverride.h"
#include "support/TemporaryFolder.h"

namespace quillbook {
namespace {

using support::EnvironmentOverride;

/// A session whose clipboard is a file, reached through programs that stand in `$PATH`.
class ClipboardProgramsTest : public testing::Test {
 protected:
  void Install(const std::string& name, const std::string& script) const {
    mFolder.Write(name, "#!/bin/sh\n" + script);
    ::chmod((mFolder / name).c_str(), 0755);
  }
  std::string File(const std::string& name) const { return "'" + (mFolder / name) + "'"; }
  /// Programs that note their parameters and keep what they get.
  void InstallWayland() const {
    Install("wl-copy", "echo \"$@\" > " + File("parameters") + "; /bin/cat > " + File("clipboard"));
    Install("wl-paste", "echo \"$@\" > " + File("parameters") + "; /bin/cat " + File("clipboard"));
  }
  void InstallX() const {
    Install("xclip", "echo \"$@\" > " + File("parameters") + "\ncase \"$1\" in -in) /bin/cat > " + File("clipboard") +
                         ";; -out) /bin/cat " + File("clipboard") + ";; *) exit 1;; esac");
  }

  support::TemporaryFolder mFolder;
  EnvironmentOverride mPath{"PATH", mFolder.Path()};
  EnvironmentOverride mWayland{"WAYLAND_DISPLAY", std::nullopt};
  EnvironmentOverride mX{"DISPLAY", std::nullopt};
  ClipboardContent mContent{{"#Quillbook.Data#", std::string("<\0\n\0", 4)}, {"#Quillbook.Type#", "T"}};
  LinuxDesktop mDesktop{"", std::chrono::seconds(20)};
};

TEST_F(ClipboardProgramsTest, WithoutADisplay_ThereIsNoClipboard) {
  InstallWayland();
  InstallX();
  EXPECT_FALSE(mDesktop.SetClipboard(mContent));
  EXPECT_TRUE(mDesktop.GetClipboard().empty());
  EXPECT_FALSE(mFolder.Has("parameters")) << "nothing was started";
}

TEST_F(ClipboardProgramsTest, WithoutThePrograms_ThereIsNoClipboard) {
  const EnvironmentOverride wayland("WAYLAND_DISPLAY", "wayland-0");
  const EnvironmentOverride x("DISPLAY", ":0");
  EXPECT_FALSE(mDesktop.SetClipboard(mContent));
  EXPECT_TRUE(mDesktop.GetClipboard().empty());
}

TEST_F(ClipboardProgramsTest, OnWayland_ContentGoesThroughWlCopyAndWlPaste) {
  InstallWayland();
  InstallX();
  const EnvironmentOverride wayland("WAYLAND_DISPLAY", "wayland-0");
  const EnvironmentOverride x("DISPLAY", ":0");
  EXPECT_TRUE(mDesktop.SetClipboard(mContent));
  EXPECT_EQ(mFolder.Read("parameters"), "--type application/x-quillbook-data\n");
  EXPECT_EQ(mDesktop.GetClipboard(), mContent);
  EXPECT_EQ(mFolder.Read("parameters"), "--no-newline --type application/x-quillbook-data\n");
}

TEST_F(ClipboardProgramsTest, OnX_ContentGoesThroughXclip) {
  InstallX();
  const EnvironmentOverride wayland("WAYLAND_DISPLAY", "");
  const EnvironmentOverride x("DISPLAY", ":0");
  EXPECT_TRUE(mDesktop.SetClipboard(mContent));
  EXPECT_EQ(mFolder.Read("parameters"), "-in -selection clipboard -target application/x-quillbook-data\n");
  EXPECT_EQ(mDesktop.GetClipboard(), mContent);
  EXPECT_EQ(mFolder.Read("parameters"), "-out -selection clipboard -target application/x-quillbook-data\n");
}

TEST_F(ClipboardProgramsTest, XclipServesWaylandToo_WhereItAloneIsInstalled) {
  InstallX();
  const EnvironmentOverride wayland("WAYLAND_DISPLAY", "wayland-0");
  const EnvironmentOverride x("DISPLAY", ":0");
  EXPECT_TRUE(mDesktop.SetClipboard(mContent));
  EXPECT_EQ(mDesktop.GetClipboard(), mContent);
}

TEST_F(ClipboardProgramsTest, AFailingProgram_LeavesNothing) {
  const EnvironmentOverride wayland("WAYLAND_DISPLAY", "wayland-0");
  Install("wl-copy", "/bin/cat > /dev/null; exit 1");
  Install("wl-paste", "printf 'Quillbook clipboard 1\\n1 1\\nab'; exit 1");
  EXPECT_FALSE(mDesktop.SetClipboard(mContent));
  EXPECT_TRUE(mDesktop.GetClipboard().empty());
}

TEST_F(ClipboardProgramsTest, AnotherProgramsText_IsNoContent) {
  const EnvironmentOverride wayland("WAYLAND_DISPLAY", "wayland-0");
  Install("wl-paste", "echo 'somebody else'");
  EXPECT_TRUE(mDesktop.GetClipboard().empty());
}

TEST_F(ClipboardProgramsTest, AProgramThatHangs_IsGivenUp) {
  const EnvironmentOverride wayland("WAYLAND_DISPLAY", "wayland-0");
  Install("wl-copy", "/bin/sleep 600");
  Install("wl-paste", "/bin/sleep 600");
  LinuxDesktop hurried("", std::chrono::milliseconds(50));
  EXPECT_FALSE(hurried.SetClipboard(mContent));
  EXPECT_TRUE(hurried.GetClipboard().empty());
}

}  // namespace
}  // namespace quillbook
