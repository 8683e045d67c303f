#include "host/OutputFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "FailingFiles.h"
#include "Toy.h"
#include "quillbook/base/Failure.h"
#include "support/TemporaryFolder.h"

namespace quillbook::detail {
namespace {

class OutputFolderTest : public testing::Test {
 protected:
  using Outcome = OutputFolder::Outcome;
  support::TemporaryFolder folder;
  toy::FailingFiles files;
};

TEST_F(OutputFolderTest, NewFile_IsWrittenAtOnceUnderItsName) {
  OutputFolder output(files, folder / "not/there/yet/");
  EXPECT_EQ(output.Write("sub/a.html", "text"), Outcome::Written);
  EXPECT_EQ(folder.Read("not/there/yet/sub/a.html"), "text");
  EXPECT_EQ(files.Created, std::vector<std::string>{"a.html"});
}

TEST_F(OutputFolderTest, NewFiles_AreNotLookedAtOneByOne) {
  OutputFolder output(files, folder / "");
  for (int i = 0; i < 100; ++i) output.Write("p" + std::to_string(i), "text");
  EXPECT_LE(files.StatusCalls, 1);
  EXPECT_EQ(files.ReadCalls, 0);
}

TEST_F(OutputFolderTest, EqualFile_IsLeftAlone) {
  folder.Write("a.html", "same");
  OutputFolder output(files, folder / "");
  EXPECT_EQ(output.Write("a.html", "same"), Outcome::Unchanged);
  EXPECT_TRUE(files.Created.empty());
}

TEST_F(OutputFolderTest, ChangedFile_IsReplacedByAWholeOne) {
  folder.Write("a.html", "old");
  OutputFolder output(files, folder / "");
  files.Full = true;
  EXPECT_THROW(output.Write("a.html", "new"), Failure);
  EXPECT_EQ(folder.Read("a.html"), "old") << "a failure leaves the old version";
  files.Full = false;
  EXPECT_EQ(output.Write("a.html", "new"), Outcome::Written);
  EXPECT_EQ(folder.Read("a.html"), "new");
  EXPECT_EQ(folder.Files(), std::vector<std::string>{"a.html"}) << "nothing is left beside it";
}

TEST_F(OutputFolderTest, FailureOfANewFile_LeavesNoneUnderItsName) {
  OutputFolder output(files, folder / "");
  files.Full = true;
  EXPECT_THROW(output.Write("a.html", "new"), Failure);
  EXPECT_TRUE(folder.Files().empty());
}

TEST_F(OutputFolderTest, ReadOnlyFile_IsNotReplaced) {
  folder.Write("a.html", "old");
  ::chmod((folder / "a.html").c_str(), 0444);
  OutputFolder output(files, folder / "");
  EXPECT_EQ(output.Write("a.html", "old"), Outcome::Unchanged);
  try {
    output.Write("a.html", "new");
    FAIL() << "no failure";
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.Number(), FailureNumber::PermissionDenied);
    EXPECT_NE(failure.Description().find("a.html"), std::string::npos);
  }
  EXPECT_EQ(folder.Read("a.html"), "old");
}

TEST_F(OutputFolderTest, FolderOrFileInTheWay_IsAFailure) {
  folder.Write("taken/x", "");
  folder.Write("file", "");
  OutputFolder output(files, folder / "");
  EXPECT_THROW(output.Write("taken", "text"), Failure);
  EXPECT_THROW(output.Write("file/a.html", "text"), Failure);
}

}  // namespace
}  // namespace quillbook::detail
