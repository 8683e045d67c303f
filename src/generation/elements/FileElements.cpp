// Elements that speak of the page's own file and of the project's other files.
#include "generation/OtherFileFacts.h"
#include "generation/elements/Elements.h"
#include "quillbook/base/Failure.h"
#include "quillbook/base/Text.h"
#include "quillbook/config/BuildProfile.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/frame/services/TextHelper.h"
#include "quillbook/generation/QBDataProvider.h"
#include "quillbook/host/CommonProvider.h"
#include "quillbook/host/MVProject.h"
#include "quillbook/host/TemplateElement.h"
#include "quillbook/project/QBProject.h"
#include "quillbook/structure/OtherFiles.h"
#include "quillbook/topics/Topic.h"

namespace quillbook::elements {
namespace {

/// One of the two kinds of file that a page links to.
struct LinkedKind {
  bool OtherFileFacts::Facts::*isOfKind;
  bool (Topic::*wantedBy)(std::string_view) const;
  bool allInBooklets;
  std::string_view linkStart;
  std::string_view linkEnd;
};

constexpr LinkedKind StyleSheetKind{&OtherFileFacts::Facts::styleSheet, &Topic::IncludeStylesheet, true,
                                    "<link rel=\"stylesheet\" type=\"text/css\" href=\"", "\">"};
constexpr LinkedKind ScriptKind{&OtherFileFacts::Facts::script, &Topic::IncludeScript, false,
                                "<script lang=\"javascript\" src=\"", "\"></script>"};

/// Only topics choose among the files; any other item can't be asked.
bool IsWanted(const Evaluation& e, const LinkedKind& kind, const OtherFileFacts::Facts& facts,
              const Ref<BuildProfile>& profile) {
  if (kind.allInBooklets && profile && profile->IsBooklet()) return true;
  const auto* topic = dynamic_cast<const Topic*>(e.Subject().get());
  if (!topic) throw Failure(FailureNumber::NoSuchMember);
  return (topic->*kind.wantedBy)(facts.relativeName);
}

std::string LinksTo(const Evaluation& e, const LinkedKind& kind) {
  const auto& project = *e.Provider().CurrentRootItem();
  const auto& profile = project.CurrentBuildProfile();
  auto* remembered = e.Provider().FileFacts();
  OtherFileFacts::Facts found;
  std::string links;
  for (const auto& file : *project.OtherFiles) {
    if (!remembered) found = OtherFileFacts::Find(*file);
    const auto& facts = remembered ? remembered->Of(file) : found;
    if (!(facts.*kind.isOfKind) || facts.templateFile || !IsWanted(e, kind, facts, profile)) continue;
    if (profile && !file->IncludeInOutput()) continue;
    if (!links.empty()) links += "\r\n";
    links.append(kind.linkStart).append(facts.url).append(kind.linkEnd);
  }
  return links;
}

std::string DesignTimeLink(const QBProject& project) {
  std::string_view folder = project.Template()->Folder();
  if (folder.ends_with('\\')) folder.remove_suffix(1);
  std::string link(StyleSheetKind.linkStart);
  return link.append(folder).append("/stylesheets/designtime.css").append(StyleSheetKind.linkEnd);
}

bool ProjectHasFile(const QBProject& project, const FileSystemObject& file) {
  return TextHelper::InCollection(project.Filename->Path() + file.NameWithExtension(), *project.OtherFiles) ||
         project.TopicByName(file.BaseName());
}

}  // namespace

std::string FileName(Evaluation& e) {
  return e.File() ? e.File()->BaseName() : std::string();
}

std::string HtmlBase(Evaluation& e) {
  return "<BASE href=\"" + e.File()->Path() + "\"/>";
}

std::string StyleSheets(Evaluation& e) {
  if (!e.Subject()) return {};
  auto links = LinksTo(e, StyleSheetKind);
  if (e.Provider().ForEdit) links += DesignTimeLink(e.Project());
  return links;
}

std::string Scripts(Evaluation& e) {
  return e.Subject() ? LinksTo(e, ScriptKind) : std::string();
}

std::string CheckForFile(Evaluation& e) {
  const auto name = e.Attribute("filename");
  if (name.empty()) return {};
  const auto folder = New<FileSystemObject>();
  folder->SetPath(e.Provider().MVProject()->OutputDirectory);
  const auto file = New<FileSystemObject>();
  file->SetRelativeTo(folder);
  file->SetFullName(name);
  if (!ProjectHasFile(e.Project(), *file)) return {};
  return EqualsIgnoringCase(e.Attribute("relative"), "false") ? file->FullName() : file->RelativeName();
}

}  // namespace quillbook::elements
