// Base of tests that build: listens to everything that a build says and asks.
#pragma once

#include <algorithm>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "generation/GenerationTest.h"
#include "quillbook/generation/BuildResult.h"
#include "quillbook/platform/MessageBox.h"
#include "quillbook/structure/OtherFiles.h"

namespace quillbook::support {

namespace fs = std::filesystem;

struct Prompt {
  std::string message;
  std::int32_t buttons = 0;
  std::string title;
  bool operator==(const Prompt&) const = default;
};

class BuildTest : public support::GenerationTest {
 protected:
  void SetUp() override {
    GenerationTest::SetUp();
    layouts = "<layout name=\"Topic.html\" item=\"mv.quillbooklite:topic\" output=\"{QualifiedName}.html\"/>";
    Layout("Topic.html", "<title>%%topictitle%%</title>%%topicsection:name=bodytext%%");
    folder.Write("project/demo.qbp", "");
    fs::create_directories(folder.Native("out"));
    project->SetOutputDirectory(folder.Stored("out"));
    profile = AddProfile();
    Listen();
  }
  void TearDown() override {
    connections.clear();
    profile = {};
    GenerationTest::TearDown();
  }

  void Listen() {
    auto& events = project->Events;
    connections.push_back(events.BuildProgress.Connect([this](std::string_view status) {
      progress.emplace_back(status);
      if (onProgress) onProgress(status);
    }));
    connections.push_back(events.MVProjectChanged.Connect([this](const Ref<MVProject>& changed) {
      log += changed ? "+" : "-";
      if (changed && onHost) onHost(*changed);
    }));
    connections.push_back(
        events.MessageBox.Connect([this](std::string_view message, std::int32_t buttons, std::string_view title,
                                         std::int32_t& result, bool& cancelDefault) {
          prompts.push_back({std::string(message), buttons, std::string(title)});
          cancelDefault = !answers.empty();
          if (answers.empty()) return;
          result = answers.front();
          answers.erase(answers.begin());
        }));
    connections.push_back(events.BuildMessage.Connect([this](std::string_view message, BuildMessageLevel level) {
      messages.push_back({std::string(message), static_cast<std::int32_t>(level), {}});
    }));
  }

  Ref<BuildResult> Build() {
    InstallTemplate();
    return project->Build("", false, profile, false, false);
  }
  bool BuildIsCancelled() {
    const auto result = Build();
    return result && result->Cancelled;
  }
  Ref<OtherFile> AddFile(const std::string& name, const std::string& text = "file") {
    folder.Write("project/" + name, text);
    auto file = project->NewOtherFile(folder.Stored("project/" + name));
    project->OtherFiles->Add(file, file->LocalSpec());
    return file;
  }
  /// Names below the output folder, sorted, with "," between.
  std::string Output(const std::string& below = "out") {
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(folder.Native(below)))
      if (entry.is_regular_file()) names.push_back(fs::relative(entry.path(), folder.Native(below)).string());
    std::sort(names.begin(), names.end());
    std::string text;
    for (const auto& name : names) text.append(text.empty() ? "" : ",").append(name);
    return text;
  }
  void CompileInto(const std::string& helpFile) {
    profile->SetCompileHelpFile(true);
    profile->SetHelpFileName(folder.Stored(helpFile));
  }

  Ref<BuildProfile> profile;
  std::vector<std::string> progress;
  std::vector<Prompt> prompts;
  std::vector<Prompt> messages;
  std::vector<std::int32_t> answers;
  std::string log;
  std::function<void(std::string_view)> onProgress;
  std::function<void(MVProject&)> onHost;
  std::vector<Connection> connections;
};

}  // namespace quillbook::support
