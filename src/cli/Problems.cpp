#include "cli/Problems.h"

#include <fmt/format.h>

#include <iterator>
#include <unordered_map>
#include <utility>

#include "cli/Losses.h"
#include "cli/ProjectFile.h"
#include "cli/RecordLines.h"
#include "quillbook/base/Text.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/host/PageTemplate.h"
#include "quillbook/structure/OtherFile.h"
#include "quillbook/structure/OtherFiles.h"
#include "quillbook/structure/QBNode.h"
#include "quillbook/structure/QBNodes.h"
#include "quillbook/structure/Task.h"
#include "quillbook/structure/Tasks.h"
#include "quillbook/topics/TopicLink.h"
#include "quillbook/topics/TopicLinks.h"
#include "quillbook/topics/Topics.h"

namespace quillbook::cli {
namespace {

class Finder {
 public:
  Finder(const Ref<QBProject>& project, std::string_view text) : mProject(*project), mText(text), mLines(text) {}

  std::vector<Problem> Run() {
    CheckSettings();
    CheckLosses();
    CheckOtherFiles();
    CheckTopics();
    CheckNodes();
    CheckTasks();
    return std::move(mProblems);
  }

 private:
  void Add(std::string_view code, std::string message, std::size_t line = 0) {
    mProblems.push_back({std::string(code), std::move(message), line});
  }

  void CheckSettings() {
    if (!mProject.Template())
      Add("template.not-found", fmt::format("There is no template '{}'", mProject.TemplateName()));
    if (mProject.InvalidLiteProjectType)
      Add("project.separate-files", "The project keeps parts in files of their own; they were not read");
  }

  void CheckLosses() {
    auto losses = FindLosses(mText);
    mProblems.insert(mProblems.end(), std::make_move_iterator(losses.begin()), std::make_move_iterator(losses.end()));
  }

  void CheckOtherFiles() {
    for (const auto& file : *mProject.OtherFiles)
      if (!file->Filename->FileExists())
        Add("file.not-found", fmt::format("There is no file '{}'", file->Filename->NativePath()));
  }

  void CheckTopics() {
    std::unordered_map<std::string, std::string> pages;
    for (const auto& topic : *mProject.Topics) {
      const auto line = mLines.Find("topic", topic->Key);
      const auto [page, isNew] = pages.try_emplace(FoldCase(topic->QualifiedName()), topic->Name());
      if (!isNew)
        Add("topic.same-page",
            fmt::format("Topics '{}' and '{}' have one page, {}.html", page->second, topic->Name(),
                        topic->QualifiedName()),
            line);
      for (const auto& link : *topic->TopicLinks())
        if (link->TopicLinkType() == rttTopic && !link->ChildTopic())
          Add("link.no-target", fmt::format("A related link of topic '{}' leads to no topic", topic->Name()), line);
    }
  }

  void CheckNodes() {
    const auto nodes = mProject.QBNodes->AllNodes();
    for (const auto& node : *nodes)
      if (!node->TopicID().empty() && !node->Topic())
        Add("node.no-topic", fmt::format("A contents node leads to no topic: {}", node->TopicID()),
            mLines.Find("n", node->Key));
  }

  void CheckTasks() {
    for (const auto& task : *mProject.Tasks)
      if (!task->TopicID().empty() && !task->Topic())
        Add("task.no-topic", fmt::format("Task '{}' is about a topic that is not there", task->Title()),
            mLines.Find("task", task->Key()));
  }

  QBProject& mProject;
  std::string_view mText;
  RecordLines mLines;
  std::vector<Problem> mProblems;
};

}  // namespace

std::vector<Problem> FindProblems(const Ref<QBProject>& project, std::string_view text) {
  return Finder(project, text).Run();
}

}  // namespace quillbook::cli
