// Whole builds: sample project in, folder out.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

#include "quillbook/config/BuildProfiles.h"
#include "quillbook/generation/BuildResult.h"
#include "quillbook/host/TemplateStore.h"
#include "quillbook/project/QBProject.h"
#include "support/FailureLog.h"
#include "support/MemoryRegistryStore.h"
#include "support/TemporaryFolder.h"

namespace quillbook {
namespace {

namespace fs = std::filesystem;

std::string Contents(const fs::path& file) {
  std::ostringstream text;
  text << std::ifstream(file, std::ios::binary).rdbuf();
  return text.str();
}

std::map<std::string, std::string> FilesBelow(const fs::path& folder) {
  std::map<std::string, std::string> files;
  if (!fs::exists(folder)) return files;
  for (const auto& entry : fs::recursive_directory_iterator(folder))
    if (entry.is_regular_file()) files[fs::relative(entry.path(), folder).string()] = Contents(entry.path());
  return files;
}

fs::path Goldens() {
  return fs::path(QUILLBOOK_SOURCE_DIR) / "tests/golden";
}

/// Other kinds of golden files lie there too.
std::vector<std::string> Cases() {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(Goldens()))
    if (fs::exists(entry.path() / "project")) names.push_back(entry.path().filename().string());
  std::sort(names.begin(), names.end());
  return names;
}

class GoldenBuildTest : public testing::TestWithParam<std::string> {
 protected:
  void SetUp() override {
    for (const auto* part : {"project", "configuration"})
      fs::copy(Goldens() / GetParam() / part, folder.Native(part), fs::copy_options::recursive);
    fs::rename(folder.Native("configuration"), folder.Native("Configuration"));
    Platform::Current().Registry().SetValue(RegistryHive::LocalMachine, "Software\\Corvane\\Quillbook2",
                                            "LiteInstallDir", folder.Stored("."));
    fs::create_directories(folder.Native("out"));
  }
  void TearDown() override { TemplateStore::OfApartment()->Forget(); }

  /// Builds the first profile of the one project.
  void Build() {
    const auto project = New<QBProject>();
    project->LoadFromFile(folder.Stored("project/" + GetParam() + ".qbp"));
    ASSERT_TRUE(project->LastLoadResult().Ok()) << project->LastLoadResult().message;
    const auto result = project->Build("", false, project->BuildProfiles->Item(1), false, false);
    ASSERT_TRUE(result);
    EXPECT_FALSE(result->Cancelled);
    EXPECT_EQ(result->CompilerLog, "");
  }

  support::TemporaryFolder folder;
  support::FailureLog failures;
  PlatformOverride<RegistryStore> registry{std::make_shared<support::MemoryRegistryStore>()};
};

TEST_P(GoldenBuildTest, GivesTheExpectedFolder) {
  Build();
  EXPECT_EQ(failures.Take(), std::vector<std::string>());
  const auto expected = Goldens() / GetParam() / "expected";
  if (std::getenv("QUILLBOOK_UPDATE_GOLDEN")) {
    fs::remove_all(expected);
    fs::copy(folder.Native("out"), expected, fs::copy_options::recursive);
    GTEST_FAIL() << "the expected folder has been written anew; look at the change and run again without the setting";
  }
  EXPECT_EQ(FilesBelow(folder.Native("out")), FilesBelow(expected))
      << "run with QUILLBOOK_UPDATE_GOLDEN=1 to take the present output over";
}

TEST_P(GoldenBuildTest, SecondBuildChangesNothing) {
  Build();
  const auto first = FilesBelow(folder.Native("out"));
  Build();
  EXPECT_EQ(FilesBelow(folder.Native("out")), first);
  failures.Take();
}

INSTANTIATE_TEST_SUITE_P(Samples, GoldenBuildTest, testing::ValuesIn(Cases()),
                         [](const auto& info) { return info.param; });

}  // namespace
}  // namespace quillbook
