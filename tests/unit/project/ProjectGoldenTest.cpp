#include <gtest/gtest.h>

#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

#include "quillbook/frame/services/FileSystemObject.h"
#include "support/ProjectTest.h"
#include "unit/project/Masked.h"

// Each folder of tests/golden with an "input.qbp" is a case: the file is loaded and saved, and the text must be that of
// "expected.qbp". Run the tests with QUILLBOOK_UPDATE_GOLDENS=1 to write the expected texts anew, and read the
// difference before it is committed.

namespace quillbook {
namespace {

namespace fs = std::filesystem;

const fs::path kGoldens = fs::path(QUILLBOOK_SOURCE_DIR) / "tests" / "golden";
const fs::path kSchema = fs::path(QUILLBOOK_SOURCE_DIR) / "configuration" / "schema" / "qbp.rng";

std::vector<std::string> Cases() {
  std::vector<std::string> cases;
  for (const auto& entry : fs::directory_iterator(kGoldens))
    if (fs::exists(entry.path() / "input.qbp")) cases.push_back(entry.path().filename());
  std::sort(cases.begin(), cases.end());
  return cases;
}

std::string ReadFile(const fs::path& path) {
  std::ostringstream text;
  text << std::ifstream(path, std::ios::binary).rdbuf();
  return text.str();
}

bool IsGuidAt(const std::string& text, std::size_t at) {
  constexpr std::string_view form = "{xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx}";
  if (at + form.size() > text.size()) return false;
  for (std::size_t i = 0; i < form.size(); ++i) {
    const char c = text[at + i];
    if (form[i] == 'x' ? !std::isxdigit(static_cast<unsigned char>(c)) : c != form[i]) return false;
  }
  return true;
}

/// Keys that the load has made stand as "{new 1}", "{new 2}" and so on, in the order in which they appear.
std::string NameNewKeys(std::string text, const std::string& input) {
  std::map<std::string, std::string> names;
  for (auto at = text.find('{'); at != std::string::npos; at = text.find('{', at + 1)) {
    if (!IsGuidAt(text, at)) continue;
    const auto key = text.substr(at, 38);
    if (input.find(key) != std::string::npos) continue;
    const auto name = names.emplace(key, "{new " + std::to_string(names.size() + 1) + "}").first->second;
    text.replace(at, key.size(), name);
  }
  return text;
}

class ProjectGoldenTest : public support::ProjectTest, public testing::WithParamInterface<std::string> {
 protected:
  fs::path Folder() const { return kGoldens / GetParam(); }
  std::string LoadAndSave(const std::string& input) {
    project->Filename->SetFullName("c:\\help\\golden.qbp");
    project->Load(input);
    EXPECT_TRUE(project->LastLoadResult().Ok());
    return MaskSaveDateTime(project->Save());
  }
};

TEST_P(ProjectGoldenTest, IsSavedAsExpected) {
  const auto input = ReadFile(Folder() / "input.qbp");
  const auto saved = NameNewKeys(LoadAndSave(input), input) + "\n";
  if (std::getenv("QUILLBOOK_UPDATE_GOLDENS")) std::ofstream(Folder() / "expected.qbp", std::ios::binary) << saved;
  const auto expected = ReadFile(Folder() / "expected.qbp");
  if (saved == expected) return;
  const fs::path actual = fs::path(testing::TempDir()) / ("actual-" + GetParam() + ".qbp");
  std::ofstream(actual, std::ios::binary) << saved;
  EXPECT_EQ(saved, expected) << "see " << actual;
}

TEST_P(ProjectGoldenTest, IsSavedAgainByteForByte) {
  const auto first = LoadAndSave(ReadFile(Folder() / "input.qbp"));
  EXPECT_EQ(MaskSaveDateTime(project->Save()), first);
  project = New<QBProject>();
  const auto second = LoadAndSave(first);  // a profile that a load has made takes its lasting form by the next one
  project = New<QBProject>();
  EXPECT_EQ(LoadAndSave(second), second);
}

TEST_P(ProjectGoldenTest, IsValidAgainstTheSchema) {
  ASSERT_TRUE(fs::exists(kSchema));
  const fs::path saved = fs::path(testing::TempDir()) / ("saved-" + GetParam() + ".qbp");
  project->Filename->SetFullName("c:\\help\\golden.qbp");
  project->Load(ReadFile(Folder() / "input.qbp"));
  std::ofstream(saved, std::ios::binary) << project->Save();
  const auto command = "xmllint --noout --relaxng '" + kSchema.string() + "' '" + saved.string() + "' 2>&1";
  EXPECT_EQ(std::system(command.c_str()), 0) << saved;
  fs::remove(saved);
}

INSTANTIATE_TEST_SUITE_P(Cases, ProjectGoldenTest, testing::ValuesIn(Cases()), [](const auto& tested) {
  auto name = tested.param;
  for (auto& c : name)
    if (!std::isalnum(static_cast<unsigned char>(c))) c = '_';
  return name;
});

}  // namespace
}  // namespace quillbook
