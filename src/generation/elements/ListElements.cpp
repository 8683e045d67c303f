// The way in which a template reaches items other than the current one.
#include <vector>

#include "generation/elements/Elements.h"
#include "quillbook/base/Text.h"
#include "quillbook/frame/Procedure.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/generation/QBDataProvider.h"
#include "quillbook/host/CollectionServices.h"
#include "quillbook/host/MVProject.h"
#include "quillbook/host/NamespaceDef.h"
#include "quillbook/host/TemplateElement.h"
#include "quillbook/project/QBProject.h"

namespace quillbook::elements {
namespace {

struct ListRequest {
  std::string_view scrap;
  std::string_view definition;  ///< kind or namespace
  std::string_view filter;
  bool noHeader = false;
  bool noFooter = false;
};

/// A kind of item and who offers its items.
struct ItemSource {
  Ref<NamespaceDef> definition;
  Ref<INamespaceProvider> provider;
};

bool IsMissing(std::string_view scrap) noexcept {
  return scrap.starts_with("!MISSING");
}

ItemSource SourceIn(const Ref<DocType>& type, std::string_view definition) {
  ItemSource source;
  IgnoreFailures([&] { source.definition = type->Template()->NamespaceDefs()->Find(definition); });
  if (source.definition) source.provider = type->NamespaceProvider();
  return source;
}

/// The current doc type's own definitions come first, then those of the companion's, then all others.
ItemSource FindSource(MVProject& host, std::string_view definition) {
  if (auto source = SourceIn(host.CurrentDocType(), definition); source.definition) return source;
  if (const auto* companion = host.DocTypes()->Find("MV.NET"))
    if (auto source = SourceIn(*companion, definition); source.definition) return source;
  for (const auto& type : *host.DocTypes())
    if (auto source = SourceIn(type, definition); source.definition) return source;
  return {};
}

std::string RenderItems(QBDataProvider& outer, const ItemSource& source, const std::vector<Ref<Object>>& items,
                        const ListRequest& request, const std::string& scrap) {
  const auto host = outer.MVProject();
  const auto inner = outer.ClonedDataProvider();
  const auto select = [&](const Ref<Object>& item) {
    inner->DataProvider_SetCurrentItem(source.definition, item, source.definition->ItemType(), outer.CurrentItem());
  };
  std::string text;
  select(items.front());
  if (!request.noHeader)
    if (auto header = host->Scrap(scrap + "_header"); !IsMissing(header))
      text = inner->ParsedForProperties(std::move(header));

  auto separator = host->Scrap(scrap + "_SEPARATOR");
  if (IsMissing(separator)) separator.clear();
  const auto body = host->Scrap(scrap + "_body");
  for (const auto& item : items) {
    select(item);
    text += inner->DataProvider_ParseForProperties(body);
    // By identity: an item that stands in the list twice gets no separator at its first place either.
    if (item != items.back()) text += outer.Parse(separator);
  }

  // The footer isn't parsed here: the steps after the element do that, with the outer item.
  if (!request.noFooter)
    if (const auto footer = host->Scrap(scrap + "_footer"); !IsMissing(footer)) text += footer;
  return text;
}

std::string ListItems(QBDataProvider& outer, const Ref<Object>& parent, const ListRequest& request) {
  const auto scrap = request.scrap.starts_with('_') ? std::string(request.scrap) : "_" + std::string(request.scrap);
  const auto source = FindSource(*outer.MVProject(), request.definition);
  if (!source.definition) return "!ERROR: Namespace not found '" + std::string(request.definition) + "'!";
  const auto items = CollectionServices::Items(
      source.provider->INamespaceProvider_GetItems(source.definition, parent, request.filter));
  return items.empty() ? std::string() : RenderItems(outer, source, items, request, scrap);
}

}  // namespace

std::string FilteredItemList(Evaluation& e) {
  const auto scrap = e.Attribute("scrap");
  if (scrap.empty()) return {};
  const auto definition = LowerCase(e.Attribute("namespace"));
  const auto filter = LowerCase(e.Attribute("filter"));
  return ListItems(e.Provider(), e.Subject(), {.scrap = scrap, .definition = definition, .filter = filter});
}

}  // namespace quillbook::elements
