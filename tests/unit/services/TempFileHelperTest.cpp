#include "quillbook/frame/services/TempFileHelper.h"

#include <gtest/gtest.h>

#include "quillbook/frame/services/FileSystemObject.h"
#include "support/EnvironmentOverride.h"
#include "support/FailureOf.h"
#include "support/TemporaryFolder.h"

namespace quillbook {
namespace {

TEST(TempFileHelper, NamesAreNewFilesInTheTemporaryFolder) {
  const support::TemporaryFolder folder;
  const support::EnvironmentOverride variable("TMPDIR", folder.Path());
  const FileSystemObject first(TempFileHelper::TempFileName("QB", "htm"));
  const FileSystemObject second(TempFileHelper::TempFileName("QB", "htm"));
  EXPECT_NE(first.FullName(), second.FullName());
  EXPECT_TRUE(first.FullName().starts_with(folder.Stored("QB"))) << first.FullName();
  EXPECT_EQ(first.Extension(), "htm");
  EXPECT_TRUE(first.FileExists());
}

TEST(TempFileHelper, EmptyExtension_HasNoPoint) {
  const support::TemporaryFolder folder;
  const support::EnvironmentOverride variable("TMPDIR", folder.Path());
  EXPECT_EQ(TempFileHelper::TempFileName("QB", "").find('.', folder.Path().size()), std::string::npos);
}

TEST(TempFileHelper, MissingTemporaryFolder_Fails) {
  const support::EnvironmentOverride variable("TMPDIR", "/no/such/folder");
  EXPECT_EQ(support::NumberOfFailure([] { (void)TempFileHelper::TempFileName("QB", ""); }),
            FailureNumber::PathNotFound);
}

}  // namespace
}  // namespace quillbook
