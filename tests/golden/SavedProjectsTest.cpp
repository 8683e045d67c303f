// Project files as they are saved: valid by the schema, the same at each save, and as they stand in the repository.
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>

#include "quillbook/platform/Platform.h"
#include "quillbook/project/QBProject.h"
#include "support/ScriptedMessageBox.h"
#include "support/TemporaryFolder.h"

namespace quillbook {
namespace {

std::string Source(const std::string& path) {
  return std::string(QUILLBOOK_SOURCE_DIR "/") + path;
}

std::string ReadFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// The text without what depends on the moment and on the machine's locale.
std::string Fixed(std::string text) {
  for (const std::string name : {"SaveDateTime=\"", "SpellLastCheckDateTime=\""}) {
    const auto at = text.find(name) + name.size();
    text.erase(at, text.find('"', at) - at);
  }
  return text;
}

std::string SavedFrom(const std::string& path) {
  // Some of the projects hold records that are reported.
  const PlatformOverride<MessageBox> messages(std::make_shared<support::ScriptedMessageBox>());
  const auto project = New<QBProject>();
  project->LoadFromFile(path);
  EXPECT_TRUE(project->LastLoadResult().Ok());
  return project->Save() + "\n";
}

class SavedProject : public testing::TestWithParam<const char*> {};

TEST_P(SavedProject, IsValidByTheSchema) {
  const support::TemporaryFolder folder;
  const auto saved = folder.Path() + "/saved.qbp";
  std::ofstream(saved, std::ios::binary) << SavedFrom(Source(GetParam()));
  const auto command = std::string(XMLLINT " --noout --relaxng ") + Source("configuration/schema/qbp.rng ") + saved;
  EXPECT_EQ(std::system(command.c_str()), 0);
}

TEST_P(SavedProject, IsTheSame_WhenLoadedAndSavedAgain) {
  const support::TemporaryFolder folder;
  const auto once = folder.Path() + "/once.qbp";
  const auto first = SavedFrom(Source(GetParam()));
  std::ofstream(once, std::ios::binary) << first;
  const auto second = SavedFrom(once);
  std::ofstream(once, std::ios::binary) << second;
  EXPECT_EQ(Fixed(SavedFrom(once)), Fixed(second));
}

INSTANTIATE_TEST_SUITE_P(Projects, SavedProject,
                         testing::Values("docs/manual/manual.qbp", "tests/cli/every_record/hand.qbp",
                                         "tests/cli/numbered_keys/old.qbp", "tests/cli/bad_records/bad.qbp",
                                         "tests/cli/missing_attributes/m.qbp", "tests/cli/one_line/one.qbp"));

TEST(Manual, StandsInTheRepository_AsItIsSaved) {
  const auto manual = Source("docs/manual/manual.qbp");
  EXPECT_EQ(Fixed(SavedFrom(manual)), Fixed(ReadFile(manual)));
}

}  // namespace
}  // namespace quillbook
