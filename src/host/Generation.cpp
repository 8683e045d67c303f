#include "host/Generation.h"

#include "host/CompiledTemplate.h"
#include "host/OutputName.h"
#include "host/helpproject/HelpProjectWriter.h"
#include "quillbook/base/CodePage.h"
#include "quillbook/base/Failure.h"
#include "quillbook/base/Text.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/host/CollectionServices.h"

namespace quillbook::detail {

namespace {

constexpr int MaximumDepth = 100;

Ref<DocType> RequireDocType(const MVProject& project) {
  if (!project.CurrentDocType()) throw Failure(FailureNumber::ObjectNotSet, "The host project has no current doc type");
  if (!project.CurrentDocType()->Template()) throw Failure(FailureNumber::ObjectNotSet, "There is no template");
  return project.CurrentDocType();
}

}  // namespace

Generation::Generation(MVProject& project)
    : mProject(project),
      mTemplate(RequireDocType(project)->Template()),
      mProvider(project.CurrentDocType()->NamespaceProvider()),
      mData(mProvider->INamespaceProvider_DocumentDataProvider()),
      mOutput(project, mProvider) {
  if (!IsKnownCodePage(project.CodePage))
    throw Failure(FailureNumber::InvalidCall, "Unknown code page " + std::to_string(project.CodePage));
  mData->DataProvider_Initialise(Ref<Object>(&project));
}

Generation::~Generation() {
  mProject.SetCurrentPage({});
}

bool Generation::WritePages() {
  for (const auto& step : PlanSteps(*mTemplate->NamespaceDefs(), 0))
    for (const auto& root : ItemsOf(step, nullptr))
      if (!ProcessRootItem(step, root)) return false;
  return true;
}

bool Generation::CopySupportFiles() {
  mProject.SetCurrentPage({});
  return mOutput.CopySupportFiles(*mTemplate);
}

void Generation::WriteHelpProject() {
  HelpProjectWriter(mProject, mOutput).Write();
}

/// Definitions without a page at or below them are left out: templates ask for their items by elements.
std::vector<Generation::Step> Generation::PlanSteps(const NamespaceDefs& definitions, int depth) const {
  if (depth > MaximumDepth) throw Failure(FailureNumber::OutOfStackSpace, "The template's definitions nest too deeply");
  std::vector<Step> steps;
  for (const auto& definition : definitions) {
    Step step{definition, {}, PlanSteps(*definition->Children(), depth + 1)};
    for (const auto& layout : *mTemplate->Layouts())
      if (EqualsIgnoringCase(layout->ItemKind(), definition->Kind())) step.layouts.push_back(layout);
    if (!step.layouts.empty() || !step.below.empty()) steps.push_back(std::move(step));
  }
  return steps;
}

std::vector<Ref<Object>> Generation::ItemsOf(const Step& step, const Ref<Object>& parent) const {
  return CollectionServices::Items(
      mProvider->INamespaceProvider_GetItems(step.definition, parent, step.definition->Filter()));
}

bool Generation::ProcessRootItem(const Step& step, const Ref<Object>& root) {
  mData->SetDataProvider_CurrentRootItem(root);
  mProvider->INamespaceProvider_BeforeProcessRootItem(root);
  const bool finished = ProcessItem({step, root, nullptr, root});
  mProvider->INamespaceProvider_AfterProcessRootItem(root);
  return finished;
}

bool Generation::ProcessItem(const Position& at) {
  if (mProject.IsCancelled()) return false;
  mProvider->INamespaceProvider_BeforeProcessItem(at.item, at.root);
  for (const auto& layout : at.step.layouts) {
    if (mProject.IsCancelled()) return false;
    WritePage(at, layout);
  }
  if (!ProcessBelow(at)) return false;
  mProvider->INamespaceProvider_AfterProcessItem(at.item, at.root);
  return true;
}

bool Generation::ProcessBelow(const Position& at) {
  for (const auto& step : at.step.below)
    for (const auto& item : ItemsOf(step, at.item))
      if (!ProcessItem({step, item, at.item, at.root})) return false;
  return true;
}

void Generation::WritePage(const Position& at, const Ref<PageLayout>& layout) {
  bool leaveOut = false;
  mProject.BeforeOutputNamespacePage.Raise(layout, at.step.definition, at.item, leaveOut);
  if (leaveOut) return;
  const auto path = PathFor(at.item, *layout);
  if (!path || !mOutput.Claim(*path, at.item, layout)) return;
  Render(at, *layout, *path);
  if (mProject.CodePage == CodePageUtf8)
    mOutput.WritePage(*path, mPage, at.step.definition, at.item);
  else
    mOutput.WritePage(*path, EncodeCodePage(mPage, mProject.CodePage, Unmappable::CharacterReference),
                      at.step.definition, at.item);
}

std::optional<std::string> Generation::PathFor(const Ref<Object>& item, const PageLayout& layout) {
  const auto name = ExpandOutputName(layout.OutputName(), *item);
  auto path = ContainedPath(name);
  if (!path)
    mProject.AddNote({NoteLevel::Error, "page.outside-output",
                      "The page of '" + ItemCaption(item) + "' (layout '" + layout.Name() + "') was not written: '" +
                          name + "' names no file in the output folder"});
  return path;
}

void Generation::Render(const Position& at, const PageLayout& layout, const std::string& path) {
  auto file = mOutput.FileFor(path);
  mProject.SetCurrentPage(path);
  mData->DataProvider_SetCurrentItem(at.step.definition, at.item, at.step.definition->ItemType(), at.parent);
  mPage.clear();
  layout.Compiled().Evaluate(*mData, file, mPage);
}

}  // namespace quillbook::detail
