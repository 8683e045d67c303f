// Runs the cases of tests/evaluator, a folder each, and the examples of the template language's page.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include "EvaluatorCase.h"
#include "support/DocumentedExamples.h"

namespace quillbook {
namespace {

std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream stream(path, std::ios::binary);
  if (!stream) throw std::runtime_error("cannot read " + path.string());
  std::ostringstream text;
  text << stream.rdbuf();
  return text.str();
}

/// Editors end a file with a line break, which is no part of a case.
std::string ReadCaseFile(const std::filesystem::path& path) {
  auto text = ReadFile(path);
  if (text.ends_with('\n')) text.pop_back();
  return text;
}

TEST(EvaluatorCases, EveryFolder_GivesWhatItExpects) {
  std::set<std::filesystem::path> cases;
  for (const auto& entry : std::filesystem::directory_iterator(QUILLBOOK_SOURCE_DIR "/tests/evaluator"))
    if (entry.is_directory()) cases.insert(entry.path());
  ASSERT_GT(cases.size(), 10u);
  for (const auto& folder : cases) {
    SCOPED_TRACE(folder.filename().string());
    const auto actual = toy::EvaluateCase(ReadCaseFile(folder / "template"), ReadCaseFile(folder / "data"));
    EXPECT_EQ(actual, ReadCaseFile(folder / "expected"));
  }
}

TEST(EvaluatorCases, EveryDocumentedExample_GivesItsResult) {
  const auto examples = support::ReadExamples(QUILLBOOK_SOURCE_DIR "/docs/template-language.md", "template");
  ASSERT_GT(examples.size(), 20u);
  for (const auto& example : examples) {
    SCOPED_TRACE("docs/template-language.md:" + std::to_string(example.line));
    EXPECT_EQ(toy::EvaluateCase(example.text, example.data), example.result);
  }
}

}  // namespace
}  // namespace quillbook
