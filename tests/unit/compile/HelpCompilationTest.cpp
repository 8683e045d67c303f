// The old help file stays until a new one is whole, whatever goes wrong while that is written.
#include "quillbook/host/HelpCompilation.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>

#include <filesystem>
#include <memory>

#include "quillbook/platform/Platform.h"
#include "support/FaultyFileStore.h"
#include "support/TemporaryFolder.h"

namespace quillbook::compile {
namespace {

/// Files of this process can't grow beyond the limit while this lives, as on a disk that is full.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) : mOldHandler(signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &mOld);
    auto limit = mOld;
    limit.rlim_cur = bytes;
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;
  ~FileSizeLimit() {
    setrlimit(RLIMIT_FSIZE, &mOld);
    signal(SIGXFSZ, mOldHandler);
  }

 private:
  void (*mOldHandler)(int);
  rlimit mOld{};
};

/// Compiles the sample in the form of the parameter, over an old help file.
class OldHelpFile : public testing::TestWithParam<const char*> {
 protected:
  void SetUp() override { mFolder.Write("out", "old"); }

  CompileReport Run() {
    return CompileHelp({std::string(QUILLBOOK_SOURCE_DIR "/samples/help-project/") + GetParam(), mFolder / "out"});
  }
  void ExpectFailureThatLeavesItAlone() {
    const auto report = Run();
    EXPECT_EQ(report.outcome, CompileReport::Outcome::Failed);
    ASSERT_EQ(report.messages.Errors(), 1u);
    EXPECT_EQ(report.messages.All().back().code, "HC4001");
    EXPECT_EQ(report.messages.All().back().file, mFolder / "out");
    EXPECT_EQ(mFolder.Read("out"), "old");
    EXPECT_EQ(Entries(), 1) << "something is left beside the help file";
  }
  [[nodiscard]] std::ptrdiff_t Entries() const {
    return std::distance(std::filesystem::directory_iterator(mFolder.Path()), {});
  }

  support::TemporaryFolder mFolder;
  std::shared_ptr<support::FaultyFileStore> mStore = std::make_shared<support::FaultyFileStore>();
};

TEST_P(OldHelpFile, IsReplaced_WhenNothingFails) {
  EXPECT_EQ(Run().outcome, CompileReport::Outcome::Made);
  EXPECT_GT(mFolder.Read("out").size(), 10000u);
  EXPECT_EQ(Entries(), 1);
}

TEST_P(OldHelpFile, Stays_WhenTheDiskIsFullWhileTheNewOneArises) {
  const FileSizeLimit limit(4096);
  ExpectFailureThatLeavesItAlone();
}

TEST_P(OldHelpFile, Stays_WhenTheDiskIsFullWhileTheNewOneTakesItsPlace) {
  const PlatformOverride<FileStore> files(mStore);
  mStore->space = 10000;
  ExpectFailureThatLeavesItAlone();
}

TEST_P(OldHelpFile, Stays_WhenTheNewOneCantBeFlushedToDisk) {
  const PlatformOverride<FileStore> files(mStore);
  mStore->closing = FailureNumber::DiskFull;
  ExpectFailureThatLeavesItAlone();
}

TEST_P(OldHelpFile, Stays_WhenNoFileCanBeMadeBesideIt) {
  const PlatformOverride<FileStore> files(mStore);
  mStore->opening = FailureNumber::PermissionDenied;
  ExpectFailureThatLeavesItAlone();
}

TEST_P(OldHelpFile, Stays_WhenAnotherOneIsBeingWrittenInItsPlace) {
  {
    const auto other = Platform::Current().Files().ReplaceFile(mFolder / "out", true);
    const auto report = Run();
    EXPECT_EQ(report.outcome, CompileReport::Outcome::Failed);
    ASSERT_EQ(report.messages.Errors(), 1u);
    EXPECT_EQ(report.messages.All().back().code, "HC4001");
  }
  EXPECT_EQ(mFolder.Read("out"), "old");
  EXPECT_EQ(Entries(), 1);
}

TEST_P(OldHelpFile, IsNoFolder_WhichStaysAsItIs) {
  std::filesystem::remove(mFolder.Native("out"));
  mFolder.Write("out/inside", "kept");
  const auto report = Run();
  EXPECT_EQ(report.outcome, CompileReport::Outcome::Failed);
  EXPECT_EQ(report.messages.Errors(), 1u);
  EXPECT_EQ(mFolder.Read("out/inside"), "kept");
  EXPECT_EQ(Entries(), 1);
}

INSTANTIATE_TEST_SUITE_P(Forms, OldHelpFile, testing::Values("lumiere.hhp", "lumiere.HxC"));

}  // namespace
}  // namespace quillbook::compile
