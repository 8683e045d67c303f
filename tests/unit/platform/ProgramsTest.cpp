#include "platform/Programs.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

#include "support/EnvironmentOverride.h"
#include "support/TemporaryFolder.h"

namespace quillbook::detail {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds longEnough = std::chrono::seconds(20);

class ProgramsTest : public testing::Test {
 protected:
  std::string Script(const std::string& text) const {
    mFolder.Write("program", "#!/bin/sh\n" + text);
    ::chmod((mFolder / "program").c_str(), 0755);
    return mFolder / "program";
  }
  /// True once the process, whose number the script wrote to a file, isn't there any more.
  bool HasEnded(const std::string& file) const {
    const auto number = static_cast<pid_t>(std::stol(mFolder.Read(file)));
    for (int i = 0; i < 500; ++i) {
      if (::kill(number, 0) != 0 && errno == ESRCH) return true;
      ::usleep(10'000);
    }
    return false;
  }

  support::TemporaryFolder mFolder;
};

TEST_F(ProgramsTest, RunProgram_GivesTheOutput) {
  EXPECT_EQ(RunProgram(Script("printf '<%s>' \"$@\"; cat"), {"a b", "$HOME;", ""}, "in\nput", longEnough),
            "<a b><$HOME;><>in\nput");
  EXPECT_EQ(RunProgram(Script("exit 0"), {}, "not read", longEnough), "");
}

TEST_F(ProgramsTest, RunProgram_PassesMuchInBothDirections) {
  const std::string much(3'000'000, 'x');
  EXPECT_EQ(RunProgram(Script("cat; cat /dev/null"), {}, much, longEnough), much);
  EXPECT_EQ(RunProgram(Script("head -c 5"), {}, much, longEnough), "xxxxx") << "input that nobody reads is no failure";
}

TEST_F(ProgramsTest, RunProgram_IsNothing_WhenTheProgramFails) {
  EXPECT_EQ(RunProgram(Script("echo out; exit 1"), {}, "", longEnough), std::nullopt);
  EXPECT_EQ(RunProgram(Script("kill -9 $$"), {}, "", longEnough), std::nullopt);
  EXPECT_EQ(RunProgram(mFolder / "missing", {}, "", longEnough), std::nullopt);
}

TEST_F(ProgramsTest, RunProgram_EndsWhatTakesTooLong_WithItsChildren) {
  const auto program =
      Script("sleep 600 & echo $! > '" + (mFolder / "child") + "'; echo $$ > '" + (mFolder / "self") + "'; wait");
  EXPECT_EQ(RunProgram(program, {}, "", milliseconds(3'000)), std::nullopt);
  EXPECT_TRUE(HasEnded("self"));
  EXPECT_TRUE(HasEnded("child"));
}

TEST_F(ProgramsTest, RunProgram_LeavesRunningWhatTheProgramLeft) {
  const auto program = Script("(sleep 600 > /dev/null) & echo $! > '" + (mFolder / "left") + "'; echo done");
  EXPECT_EQ(RunProgram(program, {}, "", longEnough), "done\n");
  const auto left = static_cast<pid_t>(std::stol(mFolder.Read("left")));
  EXPECT_EQ(::kill(left, 0), 0);
  EXPECT_NE(::getpgid(left), ::getpgrp()) << "an interrupt at the terminal would end it";
  ::kill(left, SIGKILL);
}

TEST_F(ProgramsTest, FindProgram_LooksAtThePathInItsOrder) {
  mFolder.Write("one/tool", "");
  mFolder.Write("two/tool", "");
  ::chmod((mFolder / "two/tool").c_str(), 0755);
  const support::EnvironmentOverride path("PATH", (mFolder / "one") + "::" + (mFolder / "two"));
  EXPECT_EQ(FindProgram("tool"), mFolder / "two/tool") << "the first can't be run";
  EXPECT_EQ(FindProgram("nothing"), "");
  EXPECT_EQ(FindProgram(mFolder / "two/tool"), mFolder / "two/tool");
  EXPECT_EQ(FindProgram(mFolder / "one/tool"), "");
  const support::EnvironmentOverride none("PATH", std::nullopt);
  EXPECT_EQ(FindProgram("tool"), "");
}

}  // namespace
}  // namespace quillbook::detail
