#include "quillbook/platform/LinuxFileStore.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <future>

#include "support/FailureOf.h"
#include "support/TemporaryFolder.h"

namespace quillbook {
namespace {

using support::DescriptionOfFailure;
using support::NumberOfFailure;

mode_t ModeOf(const std::string& path) {
  struct stat status {};
  ::stat(path.c_str(), &status);
  return status.st_mode & 07777;
}

class LinuxFileStoreTest : public testing::Test {
 protected:
  void MakeReadOnly(std::string_view name) { ::chmod((mFolder / name).c_str(), 0444); }

  support::TemporaryFolder mFolder;
  LinuxFileStore mStore;
};

TEST_F(LinuxFileStoreTest, ReadFile_GivesAllBytes) {
  const std::string bytes("a\0b\r\n\xFF", 6);
  mFolder.Write("f", bytes);
  EXPECT_EQ(mStore.ReadFile(mFolder / "f"), bytes);
}

TEST_F(LinuxFileStoreTest, ReadFile_OfUnknownSizeGoesOnToTheEnd) {
  EXPECT_FALSE(mStore.ReadFile("/proc/self/status").empty());
}

TEST_F(LinuxFileStoreTest, FailuresHaveClassicNumbersAndNameTheFile) {
  mFolder.Write("folder/f", "");
  const auto read = [&](std::string_view name) { return [this, name] { (void)mStore.ReadFile(mFolder / name); }; };
  EXPECT_EQ(NumberOfFailure(read("missing")), FailureNumber::FileNotFound);
  EXPECT_EQ(NumberOfFailure(read("nowhere/f")), FailureNumber::PathNotFound);
  EXPECT_EQ(NumberOfFailure(read("folder/f/x")), FailureNumber::PathNotFound);
  EXPECT_EQ(NumberOfFailure(read("folder")), FailureNumber::PathFileAccess);
  EXPECT_EQ(NumberOfFailure(read(std::string(300, 'x'))), FailureNumber::BadFileName);
  EXPECT_EQ(NumberOfFailure([&] { (void)mStore.ReadFile(mFolder / std::string_view("f\0g", 3)); }),
            FailureNumber::BadFileName);
  EXPECT_EQ(DescriptionOfFailure(read("missing")), "File not found: '" + (mFolder / "missing") + "'");
}

TEST_F(LinuxFileStoreTest, FullDevice_IsDiskFull) {
  const auto writer = mStore.CreateFile("/dev/full");
  EXPECT_EQ(NumberOfFailure([&] { writer->Write("x"); }), FailureNumber::DiskFull);
}

TEST_F(LinuxFileStoreTest, GetStatus_TellsKindSizeAndWritability) {
  mFolder.Write("f", "123");
  EXPECT_TRUE(mStore.GetStatus(mFolder / "f").exists);
  EXPECT_EQ(mStore.GetStatus(mFolder / "f").size, 3U);
  EXPECT_FALSE(mStore.GetStatus(mFolder / "f").readOnly);
  EXPECT_TRUE(mStore.GetStatus(mFolder.Path()).isDirectory);
  EXPECT_FALSE(mStore.GetStatus(mFolder / "g").exists);
  MakeReadOnly("f");
  EXPECT_TRUE(mStore.GetStatus(mFolder / "f").readOnly);
}

TEST_F(LinuxFileStoreTest, ListDirectory_IsInOrderOfNames) {
  mFolder.Write("b", "");
  mFolder.Write("a/x", "");
  mFolder.Write(".c", "");
  const auto entries = mStore.ListDirectory(mFolder.Path());
  ASSERT_EQ(entries.size(), 3U);
  EXPECT_EQ(entries[0].name, ".c");
  EXPECT_EQ(entries[1].name, "a");
  EXPECT_TRUE(entries[1].isDirectory);
  EXPECT_FALSE(entries[2].isDirectory);
  EXPECT_EQ(NumberOfFailure([&] { (void)mStore.ListDirectory(mFolder / "zz"); }), FailureNumber::FileNotFound);
}

TEST_F(LinuxFileStoreTest, CreateDirectories_MakesParentsAndAcceptsExisting) {
  mStore.CreateDirectories(mFolder / "a/b/c/");
  mStore.CreateDirectories(mFolder / "a/b");
  EXPECT_TRUE(mStore.GetStatus(mFolder / "a/b/c").isDirectory);
  mFolder.Write("file", "");
  EXPECT_EQ(NumberOfFailure([&] { mStore.CreateDirectories(mFolder / "file/x"); }), FailureNumber::PathFileAccess);
}

TEST_F(LinuxFileStoreTest, ReadOnlyFile_IsSafeFromRootToo) {
  mFolder.Write("f", "old");
  mFolder.Write("g", "new");
  MakeReadOnly("f");
  const auto path = mFolder / "f";
  EXPECT_EQ(NumberOfFailure([&] { (void)mStore.CreateFile(path); }), FailureNumber::PermissionDenied);
  EXPECT_EQ(NumberOfFailure([&] { (void)mStore.ReplaceFile(path, true); }), FailureNumber::PermissionDenied);
  EXPECT_EQ(NumberOfFailure([&] { mStore.CopyFile(mFolder / "g", path); }), FailureNumber::PermissionDenied);
  EXPECT_EQ(NumberOfFailure([&] { mStore.RemoveFile(path); }), FailureNumber::PermissionDenied);
  EXPECT_EQ(mFolder.Read("f"), "old");
  EXPECT_EQ(mFolder.Count(), 2U);
}

TEST_F(LinuxFileStoreTest, ReplaceFile_ShowsNothingBeforeClose) {
  mFolder.Write("f", "old");
  const auto writer = mStore.ReplaceFile(mFolder / "f", false);
  writer->Write("new");
  EXPECT_EQ(mFolder.Read("f"), "old");
  writer->Close();
  EXPECT_EQ(mFolder.Read("f"), "new");
  EXPECT_EQ(mFolder.Count(), 1U);
}

TEST_F(LinuxFileStoreTest, ReplaceFile_AbandonedLeavesNoTrace) {
  mFolder.Write("f", "old");
  mStore.ReplaceFile(mFolder / "f", true)->Write("half");
  mStore.ReplaceFile(mFolder / "new", true)->Write("half");
  EXPECT_EQ(mFolder.Read("f"), "old");
  EXPECT_EQ(mFolder.Count(), 1U);
}

TEST_F(LinuxFileStoreTest, ReplaceFile_KeepsModeAndOwner) {
  mFolder.Write("f", "old");
  ::chmod((mFolder / "f").c_str(), 0640);
  const auto owner = ::geteuid() == 0 ? 12 : ::geteuid();  // only root can give files away
  ASSERT_EQ(::chown((mFolder / "f").c_str(), owner, ::getegid()), 0);
  mStore.ReplaceFileWith(mFolder / "f", "new");
  struct stat status {};
  ASSERT_EQ(::stat((mFolder / "f").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0640U);
  EXPECT_EQ(status.st_uid, owner);
}

TEST_F(LinuxFileStoreTest, ReplaceFile_NewFileFollowsTheMask) {
  const auto before = ::umask(027);
  mStore.ReplaceFileWith(mFolder / "f", "x");
  ::umask(before);
  EXPECT_EQ(ModeOf(mFolder / "f"), 0640U);
}

TEST_F(LinuxFileStoreTest, ReplaceFile_FollowsLinks) {
  mFolder.Write("real/f", "old");
  ASSERT_EQ(::symlink("real/f", (mFolder / "link").c_str()), 0);
  mStore.ReplaceFileWith(mFolder / "link", "new");
  EXPECT_EQ(mFolder.Read("real/f"), "new");
  EXPECT_TRUE(std::filesystem::is_symlink(mFolder / "link"));
}

TEST_F(LinuxFileStoreTest, ReplaceFile_LongestNameWorks) {
  const std::string name(255, 'n');
  mStore.ReplaceFileWith(mFolder / name, "x");
  EXPECT_EQ(mFolder.Read(name), "x");
}

TEST_F(LinuxFileStoreTest, ReplaceFile_ExclusiveWritersExcludeEachOther) {
  mFolder.Write("f", "old");
  const auto first = mStore.ReplaceFile(mFolder / "f", true);
  EXPECT_EQ(NumberOfFailure([&] { (void)mStore.ReplaceFile(mFolder / "f", true); }), FailureNumber::PermissionDenied);
  EXPECT_TRUE(mStore.IsLocked(mFolder / "f"));
  first->Write("first");
  first->Close();
  EXPECT_FALSE(mStore.IsLocked(mFolder / "f"));
  const auto second = mStore.ReplaceFile(mFolder / "f", true);
  second->Close();
  EXPECT_EQ(mFolder.Read("f"), "");
}

/// Runs a statement as a user without privileges, in a process of its own; true if it returned true.
template <class Statement>
bool AsOrdinaryUser(Statement&& statement) {
  const auto child = ::fork();
  if (child == 0) {
    if (::geteuid() == 0 && (::setgid(65534) != 0 || ::setuid(65534) != 0)) ::_exit(2);
    bool result = false;
    try {
      result = statement();
    } catch (...) {
      ::_exit(3);
    }
    ::_exit(result ? 0 : 1);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

TEST_F(LinuxFileStoreTest, ReplaceFile_WritesInPlaceWhereNoNewFileMayBe) {
  mFolder.Write("f", "a long old text");
  ::chmod((mFolder / "f").c_str(), 0666);
  ::chmod(mFolder.Path().c_str(), 0555);
  EXPECT_TRUE(AsOrdinaryUser([&] {
    mStore.ReplaceFile(mFolder / "f", true)->Write("abandoned");
    if (mStore.ReadFile(mFolder / "f") != "a long old text") return false;
    mStore.ReplaceFileWith(mFolder / "f", "new");
    return mStore.ReadFile(mFolder / "f") == "new";
  }));
  EXPECT_TRUE(AsOrdinaryUser([&] {
    return NumberOfFailure([&] { (void)mStore.ReplaceFile(mFolder / "g", true); }) == FailureNumber::PermissionDenied;
  }));
  ::chmod(mFolder.Path().c_str(), 0755);
}

TEST_F(LinuxFileStoreTest, ReplaceFile_InPlaceWithoutRoom_LeavesTheOldText) {
  mFolder.Write("f", "an old text");
  ::chmod((mFolder / "f").c_str(), 0666);
  ::chmod(mFolder.Path().c_str(), 0555);
  EXPECT_TRUE(AsOrdinaryUser([&] {
    ::signal(SIGXFSZ, SIG_IGN);
    const struct rlimit limit { 1000, 1000 };
    if (::setrlimit(RLIMIT_FSIZE, &limit) != 0) return false;
    const auto number = NumberOfFailure([&] { mStore.ReplaceFileWith(mFolder / "f", std::string(2000, 'x')); });
    return number == FailureNumber::DiskFull && mStore.ReadFile(mFolder / "f") == "an old text";
  }));
  ::chmod(mFolder.Path().c_str(), 0755);
}

TEST_F(LinuxFileStoreTest, ForeignFile_IsDenied) {
  mFolder.Write("f", "old");
  ::chmod((mFolder / "f").c_str(), 0600);
  ::chmod(mFolder.Path().c_str(), 0777);
  EXPECT_TRUE(AsOrdinaryUser([&] {
    return NumberOfFailure([&] { (void)mStore.ReplaceFile(mFolder / "f", true); }) == FailureNumber::PermissionDenied;
  }));
}

TEST_F(LinuxFileStoreTest, CopyFile_ReplacesAndIsWritable) {
  mFolder.Write("from", std::string(200'000, 'x'));
  MakeReadOnly("from");
  mFolder.Write("to", "old");
  mStore.CopyFile(mFolder / "from", mFolder / "to");
  EXPECT_EQ(mFolder.Read("to"), std::string(200'000, 'x'));
  EXPECT_FALSE(mStore.GetStatus(mFolder / "to").readOnly);
}

TEST_F(LinuxFileStoreTest, CopyFile_OntoItselfKeepsIt) {
  mFolder.Write("f", "text");
  mStore.CopyFile(mFolder / "f", mFolder / "./f");
  EXPECT_EQ(mFolder.Read("f"), "text");
}

TEST_F(LinuxFileStoreTest, CopyFile_NeedsSourceAndFolder) {
  mFolder.Write("f", "text");
  EXPECT_EQ(NumberOfFailure([&] { mStore.CopyFile(mFolder / "x", mFolder / "y"); }), FailureNumber::FileNotFound);
  EXPECT_EQ(NumberOfFailure([&] { mStore.CopyFile(mFolder / "f", mFolder / "no/y"); }), FailureNumber::PathNotFound);
  EXPECT_EQ(mFolder.Count(), 1U);
}

TEST_F(LinuxFileStoreTest, CreateUniqueFile_MakesNewPrivateFiles) {
  const auto first = mStore.CreateUniqueFile(mFolder.Path(), "QB", ".html");
  const auto second = mStore.CreateUniqueFile(mFolder.Path(), "QB", ".html");
  EXPECT_NE(first, second);
  EXPECT_TRUE(first.starts_with(mFolder / "QB"));
  EXPECT_TRUE(first.ends_with(".html"));
  EXPECT_EQ(ModeOf(first), 0600U);
}

TEST_F(LinuxFileStoreTest, IsLocked_SeesLocksOfOtherProcesses) {
  mFolder.Write("f", "");
  EXPECT_FALSE(mStore.IsLocked(mFolder / "f"));
  EXPECT_FALSE(mStore.IsLocked(mFolder / "missing"));
  const int file = ::open((mFolder / "f").c_str(), O_RDWR);
  ::flock(file, LOCK_SH);
  EXPECT_TRUE(mStore.IsLocked(mFolder / "f"));
  ::close(file);
  EXPECT_FALSE(mStore.IsLocked(mFolder / "f"));
}

TEST_F(LinuxFileStoreTest, WaitForLock_LetsOneInAtATime) {
  auto first = mStore.WaitForLock(mFolder / "lock");
  auto second = std::async(std::launch::async, [&] { return mStore.WaitForLock(mFolder / "lock"); });
  EXPECT_EQ(second.wait_for(std::chrono::milliseconds(20)), std::future_status::timeout);
  first.reset();
  EXPECT_TRUE(second.get());
}

}  // namespace
}  // namespace quillbook
