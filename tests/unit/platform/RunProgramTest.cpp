// Programs that are waited for.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>

#include "quillbook/platform/LinuxDesktop.h"
#include "support/TemporaryFolder.h"

namespace quillbook {
namespace {

using End = Desktop::ProgramRun::End;

class RunProgramTest : public testing::Test {
 protected:
  Desktop::ProgramRun Run(const std::string& program, const std::vector<std::string>& parameters = {}) {
    return LinuxDesktop().RunProgram(program, parameters, folder.Path(), goOn);
  }
  std::string Script(const std::string& text) {
    folder.Write("script", text);
    chmod((folder / "script").c_str(), 0755);
    return folder / "script";
  }
  support::TemporaryFolder folder;
  std::function<bool()> goOn;
};

TEST_F(RunProgramTest, GivesWhatTheProgramPrints_AndItsExitCode) {
  const auto run = Run(Script("#!/bin/sh\npwd; echo \"$1|$2\" >&2; exit 3\n"), {"a b", "$HOME; \"x\""});
  EXPECT_EQ(run.end, End::Finished);
  EXPECT_EQ(run.exitCode, 3);
  EXPECT_EQ(run.output, folder.Path() + "\na b|$HOME; \"x\"\n");
}

TEST_F(RunProgramTest, LooksForANameAmongThePrograms) {
  EXPECT_EQ(Run("printf", {"%s", "found"}).output, "found");
  EXPECT_EQ(Run("no-such-program-anywhere").end, End::NotFound);
}

TEST_F(RunProgramTest, TellsMissingFromUnfitPrograms) {
  EXPECT_EQ(Run(folder / "none").end, End::NotFound);
  EXPECT_EQ(Run(Script("MZ of another system")).end, End::NotRunnable);
  folder.Write("plain", "#!/bin/sh\n");
  EXPECT_EQ(Run(folder / "plain").end, End::NotRunnable);  // nobody may run it
}

TEST_F(RunProgramTest, HasNothingToRead) {
  EXPECT_EQ(Run("cat").output, "");
}

TEST_F(RunProgramTest, LongOutputIsCut_AndTheProgramEndsAllTheSame) {
  const auto run = Run("seq", {"1000000"});
  EXPECT_EQ(run.end, End::Finished);
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(run.output.size(), 4U << 20);
}

TEST_F(RunProgramTest, KilledProgram_HasTheSignalAsExitCode) {
  EXPECT_EQ(Run(Script("#!/bin/sh\nkill -9 $$\n")).exitCode, 128 + 9);
}

TEST_F(RunProgramTest, EndsWithTheProgram_NotWithWhatItLeavesBehind) {
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(Run(Script("#!/bin/sh\necho out\nsleep 30 &\n")).output, "out\n");
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}

TEST_F(RunProgramTest, StopsWhenToldTo) {
  int asked = 0;
  goOn = [&] { return ++asked < 2; };
  EXPECT_EQ(Run("sleep", {"60"}).end, End::Stopped);
  EXPECT_EQ(asked, 2);  // nobody is asked again
}

TEST_F(RunProgramTest, StopsAProgramThatWillNot) {
  goOn = [] { return false; };
  const auto run = Run(Script("#!/bin/sh\ntrap '' TERM\nwhile :; do sleep 1; done\n"));
  EXPECT_EQ(run.end, End::Stopped);
  EXPECT_EQ(run.exitCode, 128 + 9);
}

}  // namespace
}  // namespace quillbook
