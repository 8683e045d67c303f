// The element that puts the table of contents into a page.
#include "generation/elements/Elements.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/generation/QBDataProvider.h"
#include "quillbook/generation/Registration.h"
#include "quillbook/host/MVProject.h"

namespace quillbook::elements {

/// The host writes the tree; the element itself has no text.
std::string TableOfContents(Evaluation& e) {
  const auto host = e.Provider().MVProject();
  const auto type = host->CurrentDocType();
  if (type->ID() != QuillbookNamespace) return {};
  e.Provider().CreateTOC();
  const auto prefix = e.Attribute("BookPrefix");
  const auto suffix = e.Attribute("BookSuffix");
  const auto scrap = e.Attribute("NodeScrap");
  const bool plain = prefix.empty() && suffix.empty() && scrap.empty();
  host->BookPrefix = plain ? "<UL>" : prefix;
  host->BookSuffix = plain ? "</UL>" : suffix;
  host->NodeScrap = scrap;
  host->NodeSuffix = plain ? "" : e.Attribute("Suffix");
  host->RenderTableOfContents(e.File(), type);
  return {};
}

}  // namespace quillbook::elements
