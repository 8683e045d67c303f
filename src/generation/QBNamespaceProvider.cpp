#include "quillbook/generation/QBNamespaceProvider.h"

#include <string>

#include "quillbook/base/SortedCollection.h"
#include "quillbook/base/Text.h"
#include "quillbook/config/BuildProfile.h"
#include "quillbook/frame/Procedure.h"
#include "quillbook/frame/modMain.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/generation/Filter.h"
#include "quillbook/generation/GlossaryLetter.h"
#include "quillbook/generation/Registration.h"
#include "quillbook/host/CommonProvider.h"
#include "quillbook/host/Keywords.h"
#include "quillbook/host/MVProject.h"
#include "quillbook/host/NamespaceDef.h"
#include "quillbook/project/QBProject.h"
#include "quillbook/structure/GlossaryItems.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/TopicLink.h"
#include "quillbook/topics/TopicLinkCategory.h"
#include "quillbook/topics/TopicLinks.h"
#include "quillbook/topics/Topics.h"

namespace quillbook {
namespace {

using ObjectCollection = Collection<Ref<Object>>;

bool PassesFilter(const TopicLink& link, std::string_view filter) {
  if (filter.empty()) return true;
  if (EqualsIgnoringCase(filter, "blank")) return link.Category().empty();
  return EqualsIgnoringCase(filter, "notblank") && !link.Category().empty();
}

/// A link to a topic counts only if the build has that topic.
bool LeadsSomewhere(const TopicLink& link) {
  if (link.TopicLinkType() != rttTopic) return true;
  const auto child = link.ChildTopic();
  return child && child->RuntimeIncludeInHelpFile();
}

/// One category for each that a passing link names, in the order of first appearance.
Ref<Object> LinkCategories(const Ref<Object>& parent, std::string_view filter) {
  const Ref<Topic> topic(dynamic_cast<Topic*>(parent.get()));
  if (!topic) return {};
  auto categories = New<ObjectCollection>();
  for (const auto& link : *topic->TopicLinks()) {
    if (!PassesFilter(*link, filter) || !LeadsSomewhere(*link) || categories->PositionOfKey(link->Category()) > 0)
      continue;
    auto category = New<TopicLinkCategory>();
    category->Name = link->Category();
    category->Topic = topic;
    categories->AddKeyed(category, category->Name);
  }
  return categories;
}

Ref<Object> LinksOfCategory(const Ref<Object>& parent) {
  const auto* category = dynamic_cast<const TopicLinkCategory*>(parent.get());
  return category ? Ref<Object>(category->Links()) : Ref<Object>();
}

Ref<Object> ChildKeywords(const Ref<Object>& parent) {
  auto* keyword = dynamic_cast<Keyword*>(parent.get());
  return keyword && keyword->HasChildKeywords() ? Ref<Object>(keyword->ChildKeywords()) : Ref<Object>();
}

Ref<Object> KeywordJumps(const Ref<Object>& parent) {
  auto* keyword = dynamic_cast<Keyword*>(parent.get());
  return keyword ? Ref<Object>(keyword->Jumps()) : Ref<Object>();
}

/// First character of the trimmed term in upper case; empty for a term of blanks.
std::string LetterOf(std::string_view term) {
  term = TrimBlanks(term);
  std::size_t length = 0;
  if (term.empty()) return {};
  static_cast<void>(NextCodePoint(term, length));
  const auto first = term.substr(0, length);
  auto upper = UpperCase(first);
  std::size_t upperLength = 0;
  static_cast<void>(NextCodePoint(upper, upperLength));
  // A character whose capital is two, as that of the sharp s, stays as it is.
  return upperLength == upper.size() ? upper : std::string(first);
}

Ref<GlossaryLetter> NewLetter(std::string_view name, std::string_view value) {
  auto letter = New<GlossaryLetter>();
  letter->Name = name;
  letter->Value = value;
  return letter;
}

Ref<SortedCollection> NewSortedCollection() {
  auto items = New<SortedCollection>();
  items->Sorted = true;
  return items;
}

}  // namespace

QBNamespaceProvider::QBNamespaceProvider() : DDP(New<QBDataProvider>()) {}

Ref<QBProject> QBNamespaceProvider::QBProject() const {
  return modMain::GetQBProject(mMVProject.Target());
}

void QBNamespaceProvider::Reset() {
  Procedure(*this, "Reset").Run([&] {
    DDP->Reset();
    mMVProject.SetTarget({});
  });
}

void QBNamespaceProvider::INamespaceProvider_Initialise(const Ref<MVProject>& Project) {
  mMVProject.SetTarget(Project);
  DDP->SetMVProject(Project);
}

std::string QBNamespaceProvider::INamespaceProvider_Name() {
  return std::string(QuillbookNamespace);
}

Ref<Collection<Ref<Object>>> QBNamespaceProvider::INamespaceProvider_GetModuleItems() {
  return New<ObjectCollection>();
}

// Items.

Ref<Object> QBNamespaceProvider::INamespaceProvider_GetItems(const Ref<NamespaceDef>& Definition,
                                                             const Ref<Object>& ParentItem, std::string_view Filter) {
  auto items = Procedure(*this, "INamespaceProvider_GetItems", [&](auto& p) {
                 p("NamespaceDef", Definition);
                 p("ParentItem", ParentItem);
                 p("Filter", Filter);
               }).Run([&]() -> Ref<Object> {
    if (!Definition) return {};
    const auto filter = New<quillbook::Filter>();
    filter->Load(Filter);
    return ItemsOfKind(LowerCase(Definition->Kind()), ParentItem, filter->TypeID);
  });
  return items ? items : Ref<Object>(New<ObjectCollection>());
}

/// Nothing for an unknown kind and for a parent of the wrong kind.
Ref<Object> QBNamespaceProvider::ItemsOfKind(std::string_view kind, const Ref<Object>& parent,
                                             std::string_view filter) const {
  if (!kind.starts_with(QuillbookNamespace)) return {};
  kind.remove_prefix(QuillbookNamespace.size());
  if (kind == ":qbproject" || kind == ":topicset") return ProjectItems();
  if (kind == ":topic") return TopicItems(parent);
  if (kind == ":linkcategory") return LinkCategories(parent, filter);
  if (kind == ":link") return LinksOfCategory(parent);
  if (kind == ":glossaryletter") return GlossaryLetters(filter == "all");
  if (kind == ":glossaryitem") return GlossaryItemsUnder(parent);
  if (kind == ":keyword") return ChildKeywords(parent);
  if (kind == ":keywordjump") return KeywordJumps(parent);
  return {};
}

Ref<Object> QBNamespaceProvider::ProjectItems() const {
  auto items = NewSortedCollection();
  const auto project = QBProject();
  items->Add(project, project->Title());
  return items;
}

Ref<Object> QBNamespaceProvider::TopicItems(const Ref<Object>& parent) const {
  auto items = NewSortedCollection();
  const auto own = QBProject();
  const auto* given = dynamic_cast<const quillbook::QBProject*>(parent.get());
  const auto& project = given ? *given : *own;
  for (const auto& topic : *project.Topics)
    if (topic->RuntimeIncludeInHelpFile()) items->Add(topic, {});
  return items;
}

Ref<Object> QBNamespaceProvider::GlossaryLetters(bool wholeAlphabet) const {
  Collection<Ref<GlossaryLetter>> letters;
  if (wholeAlphabet)
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
      const std::string name(1, letter);
      letters.Add(NewLetter(name, "0"), name);
    }
  for (const auto& item : *QBProject()->GlossaryItems()) {
    if (item->Term().empty()) continue;
    const auto name = LetterOf(item->Term());
    if (auto* known = letters.Find(std::string_view(name)))
      (*known)->Value = std::to_string(LongFromText((*known)->Value) + 1);
    else
      letters.AddKeyed(NewLetter(name, "1"), name);
  }
  auto items = NewSortedCollection();
  for (const auto& letter : letters) items->Add(letter, letter->Name);
  return items;
}

Ref<Object> QBNamespaceProvider::GlossaryItemsUnder(const Ref<Object>& letter) const {
  if (!letter || !letter->HasMember("Name")) return {};
  const auto name = letter->Member("Name").ToText();
  auto items = NewSortedCollection();
  for (const auto& item : *QBProject()->GlossaryItems())
    if (!item->Term().empty() && LetterOf(item->Term()) == name) items->Add(item, item->Term());
  return items;
}

Ref<Object> QBNamespaceProvider::INamespaceProvider_GetObjectFromQualifiedName(std::string_view QualifiedName) {
  return Procedure(*this, "INamespaceProvider_GetObjectFromQualifiedName",
                   [&](auto& p) { p("QualifiedName", QualifiedName); })
      .Run([&]() -> Ref<Object> {
        const auto project = QBProject();
        if (project->Filename->FullName() == QualifiedName) return project;
        return project->Topics->Item(QualifiedName);
      });
}

// Around a root item.

void QBNamespaceProvider::INamespaceProvider_BeforeProcessRootItem(const Ref<Object>& RootItem) {
  Procedure(*this, "INamespaceProvider_BeforeProcessRootItem", [&](auto& p) { p("RootItem", RootItem); }).Run([&] {
    const auto host = mMVProject.Target();
    host->SetProgressStage("writing");
    host->SetProgressMessage("Generating content");
    DDP->BeginGeneration();
    if (const auto* project = dynamic_cast<const quillbook::QBProject*>(RootItem.get())) SetDefaultPage(*project);
  });
}

void QBNamespaceProvider::INamespaceProvider_AfterProcessRootItem(const Ref<Object>& RootItem) {
  Procedure(*this, "INamespaceProvider_AfterProcessRootItem", [&](auto& p) { p("RootItem", RootItem); }).Run([&] {
    DDP->EndGeneration();
    SetDefaultPage(*QBProject());
  });
}

void QBNamespaceProvider::SetDefaultPage(const quillbook::QBProject& project) {
  const auto& profile = project.CurrentBuildProfile();
  const auto topic = profile ? profile->DefaultTopic() : Ref<Topic>();
  mMVProject.Target()->DefaultPage = topic ? topic->QualifiedName() + ".html" : std::string();
}

void QBNamespaceProvider::INamespaceProvider_AfterProcessItem(const Ref<Object>& Item, const Ref<Object>& RootItem) {
  Procedure(*this, "INamespaceProvider_AfterProcessItem", [&](auto& p) {
    p("Item", Item);
    p("RootItem", RootItem);
  }).Run([&] {
    const auto host = mMVProject.Target();
    const bool help2 = NumberFromText(host->HelpVersion) == 2;
    host->HelpProjectFile = host->OutputDirectory + QBProject()->Filename->BaseName() + (help2 ? ".hxc" : ".hhp");
  });
}

// State dump.

Variant QBNamespaceProvider::DumpedTopicMap() const {
  VariantArray array;
  if (mTopicMapInitialised) array.dimensions.push_back({0, static_cast<int>(mTopicMap.size()) - 1});
  for (const auto& path : mTopicMap) array.elements.emplace_back(path);
  return array;
}

const TypeInfo& QBNamespaceProvider::StaticType() {
  static const TypeInfo type = Describe<QBNamespaceProvider>("QBNamespaceProvider")
                                   .Field<&QBNamespaceProvider::mFiles>("mFiles")
                                   .Field<&QBNamespaceProvider::mMVProject>("mMVProject")
                                   .ComputedField<&QBNamespaceProvider::DumpedProvider>("DDP")
                                   .ComputedField<&QBNamespaceProvider::DumpedTopicMap>("mTopicMap")
                                   .Field<&QBNamespaceProvider::mTopicMapInitialised>("mTopicMapInitialised")
                                   .Field<&QBNamespaceProvider::mTopicMapCount>("mTopicMapCount")
                                   .Field<&QBNamespaceProvider::HH2>("HH2")
                                   .ReadOnly<&QBNamespaceProvider::QBProject>("QBProject")
                                   .Done();
  return type;
}

}  // namespace quillbook
