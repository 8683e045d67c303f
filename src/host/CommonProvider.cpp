#include "quillbook/host/CommonProvider.h"

#include <algorithm>
#include <string>

#include "host/Markup.h"
#include "quillbook/base/Text.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/host/MVProject.h"
#include "quillbook/host/NamespaceDef.h"
#include "quillbook/host/ParserServices.h"
#include "quillbook/host/TemplateElement.h"

namespace quillbook {

namespace {

std::string FileNameOf(std::string_view path) {
  const auto separator = path.find_last_of("\\/");
  return std::string(separator == std::string_view::npos ? path : path.substr(separator + 1));
}

std::string ItemTypeName(const CommonProvider& provider) {
  const auto item = provider.DataProvider_CurrentItem();
  const auto type = provider.DataProvider_CurrentItemType();
  return type.empty() && item ? std::string(item->TypeName()) : type;
}

std::string ItemKind(const CommonProvider& provider) {
  const auto definition = provider.DataProvider_NamespaceDef();
  return definition ? definition->Kind() : std::string();
}

/// Members of the host project, as long as there is one.
template <auto Read>
std::string OfProject(const CommonProvider& provider) {
  const auto project = provider.MVProject();
  return project ? Read(*project) : std::string();
}

std::string RootPath(const MVProject& project) {
  const auto& page = project.CurrentPage();
  std::string path;
  for (auto depth = std::count(page.begin(), page.end(), '/'); depth > 0; --depth) path += "../";
  return path;
}

std::string TemplateName(const MVProject& project) {
  const auto pageTemplate = project.CurrentTemplate();
  return pageTemplate ? pageTemplate->Name() : std::string();
}

/// Of an entry of the contents; empty for any other item.
template <auto Read>
std::string OfNode(const CommonProvider& provider) {
  const auto item = provider.DataProvider_CurrentItem();
  const auto* node = dynamic_cast<const NodeDef*>(item.get());
  return node ? detail::EscapeMarkup(detail::PlainTitle(Read(*node))) : std::string();
}

struct Name {
  std::string_view name;
  std::string (*value)(const CommonProvider& provider);
};

// Names that data providers answer by themselves must not stand here: they ask this provider first.
constexpr Name Names[] = {
    {"itemtypename", ItemTypeName},
    {"itemkind", ItemKind},
    {"defaultpage", OfProject<[](const MVProject& p) { return p.DefaultPage; }>},
    {"outputfilename", OfProject<[](const MVProject& p) { return FileNameOf(p.CurrentPage()); }>},
    {"outputpath", OfProject<[](const MVProject& p) { return p.CurrentPage(); }>},
    {"rootpath", OfProject<RootPath>},
    {"helpversion", OfProject<[](const MVProject& p) { return p.HelpVersion; }>},
    {"helpfilename", OfProject<[](const MVProject& p) { return FileNameOf(p.HelpFileName); }>},
    {"helpprojectfilename", OfProject<[](const MVProject& p) { return FileNameOf(p.HelpProjectFile); }>},
    {"outputcodepage", OfProject<[](const MVProject& p) { return std::to_string(p.CodePage); }>},
    {"nodecaption", OfNode<[](const NodeDef& n) { return n.Caption; }>},
    {"nodeurl", OfNode<[](const NodeDef& n) { return n.URL; }>},
    {"templatename", OfProject<TemplateName>},
};

const Name* FindName(std::string_view name) {
  for (const auto& known : Names)
    if (EqualsIgnoringCase(known.name, name)) return &known;
  return nullptr;
}

}  // namespace

void CommonProvider::SetMVProject(const Ref<quillbook::MVProject>& Project) {
  mMVProject.SetTarget(Project);
}

Ref<MVProject> CommonProvider::MVProject() const {
  return mMVProject.Target();
}

void CommonProvider::Reset() {
  mMVProject.SetTarget(nullptr);
  mCurrentRootItem = nullptr;
  DataProvider_SetCurrentItem(nullptr, nullptr, {}, nullptr);
}

std::string CommonProvider::DataProvider_ProvideData(const Ref<TemplateElement>& Element, Ref<FileSystemObject>&) {
  if (EqualsIgnoringCase(Element->ElementType(), "ReplaceInQuotes")) return std::string(Discard);
  const auto* known = FindName(Element->ElementType());
  return known ? known->value(*this) : std::string();
}

void CommonProvider::DataProvider_Initialise(const Ref<Object>& Host) {
  SetMVProject(Ref<quillbook::MVProject>(dynamic_cast<quillbook::MVProject*>(Host.get())));
}

void CommonProvider::DataProvider_Terminate() {
  Reset();
}

void CommonProvider::SetDataProvider_NamespaceDef(const Ref<NamespaceDef>& Definition) {
  mNamespaceDef = Definition;
}

Ref<NamespaceDef> CommonProvider::DataProvider_NamespaceDef() const {
  return mNamespaceDef;
}

void CommonProvider::DataProvider_SetCurrentItem(const Ref<NamespaceDef>& Definition, const Ref<Object>& Item,
                                                 std::string_view ItemType, const Ref<Object>& ParentItem) {
  mNamespaceDef = Definition;
  mCurrentItem = Item;
  mCurrentItemType = ItemType;
  mCurrentParentItem = ParentItem;
}

std::string CommonProvider::DataProvider_ParseForProperties(std::string_view Text) {
  return ParserServices::ParseText(Text, *this);
}

std::string CommonProvider::DataProvider_GetProperty(std::string_view Name) {
  if (const auto* known = FindName(Name)) return known->value(*this);
  return "!UNCRECOGNISED ELEMENT '" + std::string(Name) + "'!";
}

Ref<DataProvider> CommonProvider::DataProvider_Clone() {
  auto clone = New<CommonProvider>();
  clone->SetMVProject(MVProject());
  clone->mCurrentRootItem = mCurrentRootItem;
  clone->DataProvider_SetCurrentItem(mNamespaceDef, mCurrentItem, mCurrentItemType, mCurrentParentItem);
  return clone;
}

const TypeInfo& CommonProvider::StaticType() {
  static const TypeInfo type = Describe<CommonProvider>("CommonProvider")
                                   .Field<&CommonProvider::mMVProject>("mMVProject")
                                   .Field<&CommonProvider::mCurrentRootItem>("mCurrentRootItem")
                                   .Field<&CommonProvider::mCurrentParentItem>("mCurrentParentItem")
                                   .Field<&CommonProvider::mCurrentItem>("mCurrentItem")
                                   .Field<&CommonProvider::mCurrentItemType>("mCurrentItemType")
                                   .Field<&CommonProvider::mNamespaceDef>("mNamespaceDef")
                                   .Done();
  return type;
}

}  // namespace quillbook
