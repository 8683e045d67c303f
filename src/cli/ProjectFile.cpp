#include "cli/ProjectFile.h"

#include <filesystem>

#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/platform/Platform.h"

namespace quillbook::cli {
namespace {

constexpr std::string_view kNameProject = "name a project file, *.qbp";

/// Says why the file at `path` is no candidate; true if it is one.
bool CheckFile(const std::string& path, Journal& journal) {
  const auto status = Platform::Current().Files().GetStatus(path);
  if (!status.exists) {
    journal.Error("project.not-found", path + ": there is no such file", kNameProject);
  } else if (status.isDirectory) {
    journal.Error("project.folder", path + ": this is a folder", kNameProject);
  } else {
    return true;
  }
  return false;
}

void ReportLoad(const std::string& path, const ProjectLoadResult& result, Journal& journal) {
  using Outcome = ProjectLoadResult::Outcome;
  std::string place = path;
  if (result.line != 0) place += ":" + std::to_string(result.line) + ":" + std::to_string(result.column);
  switch (result.outcome) {
    case Outcome::NotXml:
      journal.Error("project.not-xml", place + ": " + result.message, "mend the XML there; the file was not changed");
      break;
    case Outcome::OtherRoot:
      journal.Error("project.other-root", place + ": the root element is '" + result.rootName + "', not 'QBProject'",
                    kNameProject);
      break;
    default: journal.Error("project.unreadable", place + ": " + result.message, "check that the file can be read");
  }
}

}  // namespace

Ref<QBProject> OpenProject(const std::string& path, Journal& journal) {
  if (!CheckFile(path, journal)) return {};
  auto project = New<QBProject>();
  const auto progress = project->Events.LoadProgress.Connect(
      [&journal](std::string_view caption) { journal.Screen().Progress(caption); });
  project->LoadFromFile(AbsoluteNativePath(path));
  journal.Screen().ClearProgress();
  const auto& result = project->LastLoadResult();
  if (result.Ok()) return project;
  ReportLoad(path, result, journal);
  return {};
}

std::string AbsoluteNativePath(const std::string& path) {
  std::error_code ignored;  // without a working directory a relative path stays one, and the disk says what is wrong
  return std::filesystem::absolute(path, ignored).lexically_normal().string();
}

std::string NativePath(std::string_view path) {
  auto native = path.empty() ? std::string() : New<FileSystemObject>(path)->NativePath();
  while (native.size() > 1 && native.back() == '/') native.pop_back();
  return native;
}

}  // namespace quillbook::cli
