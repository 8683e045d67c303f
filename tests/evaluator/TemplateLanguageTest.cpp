// Runs the examples of the template language's page that need a help project.
#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <utility>
#include <vector>

#include "generation/GenerationTest.h"
#include "quillbook/base/Date.h"
#include "quillbook/base/Text.h"
#include "quillbook/config/ProjectProperties.h"
#include "quillbook/structure/OtherFile.h"
#include "quillbook/structure/OtherFiles.h"
#include "quillbook/structure/QBNode.h"
#include "quillbook/structure/QBNodes.h"
#include "support/DocumentedExamples.h"

namespace quillbook {
namespace {

/// Data of an example, a line each:
///
///   item=project|link|term   the current item, instead of the topic
///   title, body, created     of the topic
///   topic.NAME=body          another topic
///   link.CATEGORY=title>url  a related link of the topic
///   term.TERM=definition     a term of the glossary
///   file=PATH                a file of the project
///   node=caption>url         an entry of the contents; child=caption>url stands below the last of them
///   property.NAME=value      a property of the project
///   variable.NAME=default, colour.NAME=default, scrap.NAME=text   of the template
///   locale=number            of the build profile
///   page=path                the file that the page goes to
class TemplateLanguageTest : public support::GenerationTest {
 protected:
  /// Leaves nothing of the last example.
  void StartAfresh() {
    TearDown();
    std::filesystem::remove_all(folder / "install");
    files.clear();
    variables.clear();
    page.clear();
    SetUp();
  }
  void TearDown() override {
    link = {};
    term = {};
    node = {};
    GenerationTest::TearDown();
  }

  std::string Evaluate(const support::DocumentedExample& example) {
    const auto lines = ReadData(example.data);
    for (const auto& [name, value] : lines) TakeForTemplate(name, value);
    SetUpHost();
    project->SetCurrentBuildProfile(AddProfile());
    const auto topic = AddTopic("Start", "<p>Body</p>", "Start page");
    Ref<Object> item = topic;
    for (const auto& [name, value] : lines) {
      TakeForProject(topic, name, value);
      if (name == "item") item = value == "project" ? Ref<Object>(project) : value == "link" ? link : term;
    }
    if (item == nullptr) throw std::runtime_error("the item stands before what it is");
    Select(item, item->TypeName());
    Ref<FileSystemObject> file;
    if (!page.empty()) file = New<FileSystemObject>(folder.Stored(page));
    auto result = ParserServices::ParseText(example.text, *provider, file);
    // The page is read by lines, in which a carriage return can't be seen.
    return ReplaceAll(result, "\r\n", "\n");
  }

 private:
  using Lines = std::vector<std::pair<std::string, std::string>>;

  static Lines ReadData(std::string_view data) {
    Lines lines;
    for (const auto line : Split(data, '\n')) {
      if (line.empty()) continue;
      const auto equals = line.find('=');
      if (equals == std::string_view::npos) throw std::runtime_error("no name=value: " + std::string(line));
      lines.emplace_back(line.substr(0, equals), ReplaceAll(line.substr(equals + 1), "\\\\", "\\"));
    }
    // What an item is comes before which one it is.
    std::stable_partition(lines.begin(), lines.end(), [](const auto& line) { return line.first != "item"; });
    return lines;
  }

  static std::string After(const std::string& name) { return name.substr(name.find('.') + 1); }

  void TakeForTemplate(const std::string& name, const std::string& value) {
    const auto variable = [&](std::string_view type) {
      variables += "<variable name=\"" + After(name) + "\" type=\"" + std::string(type) + "\">" + value + "</variable>";
    };
    if (name.starts_with("scrap.")) Scrap(After(name), value);
    if (name.starts_with("variable.")) variable("text");
    if (name.starts_with("colour.")) variable("colour");
  }

  void TakeForProject(const Ref<Topic>& topic, const std::string& name, const std::string& value) {
    if (name == "title") topic->SetTitle(value);
    if (name == "body") topic->SetTopicSectionData("BodyText", value);
    if (name == "created") topic->SetCreatedOn(DateOf(value));
    if (name == "page") page = value;
    if (name == "locale") project->CurrentBuildProfile()->SetLocaleID(std::stoi(value));
    if (name == "file") AddFile(value);
    if (name == "node") node = AddNode(value, {});
    if (name == "child") AddNode(value, node);
    if (name.starts_with("topic.")) AddTopic(After(name), value);
    if (name.starts_with("term.")) term = AddTerm(After(name), value);
    if (name.starts_with("property.")) project->NewProjectProperty(After(name), pptText, value);
    if (name.starts_with("link."))
      link =
          topic->NewTopicLink(rttURL, After(name), value.substr(0, value.find('>')), value.substr(value.find('>') + 1));
  }

  static Date DateOf(const std::string& value) {
    return *Date::FromParts({.year = std::stoi(value.substr(0, 4)),
                             .month = std::stoi(value.substr(5, 2)),
                             .day = std::stoi(value.substr(8, 2))});
  }

  Ref<QBNode> AddNode(const std::string& value, const Ref<QBNode>& parent) {
    const auto added = (parent ? parent->ChildNodes : project->QBNodes)->NewNode(parent);
    added->SetCaptionText(value.substr(0, value.find('>')));
    added->SetStandardURL(value.substr(value.find('>') + 1));
    return added;
  }

  void AddFile(const std::string& name) {
    auto file = project->NewOtherFile(project->Filename->Path() + name);
    project->OtherFiles->Add(file, file->LocalSpec());
  }

  std::string page;
  Ref<Object> link;
  Ref<Object> term;
  Ref<QBNode> node;
};

TEST_F(TemplateLanguageTest, EveryDocumentedExample_GivesItsResult) {
  const auto examples = support::ReadExamples(QUILLBOOK_SOURCE_DIR "/docs/template-language.md", "template-project");
  ASSERT_GT(examples.size(), 20u);
  for (const auto& example : examples) {
    SCOPED_TRACE("docs/template-language.md:" + std::to_string(example.line));
    StartAfresh();
    EXPECT_EQ(Evaluate(example), example.result);
    EXPECT_EQ(failures.Take(), Failures());
  }
}

}  // namespace
}  // namespace quillbook
