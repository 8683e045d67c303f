// The text passes of the data provider.
#include "generation/TextPasses.h"
#include "quillbook/base/Text.h"
#include "quillbook/frame/Procedure.h"
#include "quillbook/generation/NullDataProvider.h"
#include "quillbook/generation/QBDataProvider.h"
#include "quillbook/generation/Registration.h"
#include "quillbook/host/CommonProvider.h"
#include "quillbook/host/MVProject.h"
#include "quillbook/host/NamespaceDef.h"
#include "quillbook/host/ParserTemplate.h"
#include "quillbook/project/QBProject.h"
#include "quillbook/structure/GlossaryItems.h"
#include "quillbook/structure/QBNodes.h"

namespace quillbook {
namespace {

Ref<ParserTemplate> CreateParserTemplate(std::string_view text) {
  auto parser = New<ParserTemplate>();
  parser->StartTagOpen = "<!--MVMETADATA start";
  parser->StartTagClose = "-->";
  parser->EndTagOpen = "<!--MVMETADATA end";
  parser->EndTagClose = "-->";
  parser->Load(text);
  return parser;
}

}  // namespace

std::string QBDataProvider::Parse(std::string_view Text) {
  return Procedure(*this, "Parse", [&](auto& p) { p("Text", Text); }).Run([&] {
    if (Text.empty()) return std::string();
    auto parsed = DataProvider_ParseForProperties(Text);
    return parsed.find("<crlf>") == std::string::npos ? std::move(parsed) : ReplaceAll(parsed, "<crlf>", "<br>");
  });
}

std::string QBDataProvider::ParseForAnchor(std::string_view Text) const {
  return textpasses::ParseForAnchor(Text);
}

std::string QBDataProvider::ParseForGlossaryItems(std::string_view Text) {
  return Procedure(*this, "ParseForGlossaryItems", [&](auto& p) { p("Text", Text); })
      .RunSetting(std::string(), [&](std::string& result) {
        Ref<QBDataProvider> items;
        Ref<NamespaceDef> kind;
        textpasses::ParseForGlossaryItems(Text, result,
                                          [&](std::string& term) { return GlossaryReference(term, items, kind); });
      });
}

/// `items` and `kind` are made by the first reference of a text and serve all of them.
std::string QBDataProvider::GlossaryReference(std::string& term, Ref<QBDataProvider>& items, Ref<NamespaceDef>& kind) {
  std::string caption = term;
  if (term.find(':') != std::string::npos) {
    caption = textpasses::BeforeColon(term);
    term = std::string(textpasses::AfterColon(term));
  }
  Ref<GlossaryItem> item;
  IgnoreFailures([&] { item = QBProject()->GlossaryItems()->ItemByTerm(term); });
  if (!item) return term;
  const auto host = MVProject();
  if (!items) {
    const auto kindName = std::string(QuillbookNamespace) + ":glossaryitem";
    IgnoreFailures([&] { kind = host->CurrentDocType()->Template()->NamespaceDefs()->Find(kindName); });
    items = ClonedDataProvider();
  }
  items->DataProvider_SetCurrentItem(kind, item, kind ? kind->ItemType() : std::string(), mCurrentItem);
  return items->ParsedForProperties(
      ReplaceAllIgnoringCase(host->Scrap("_GLOSSARYREFERENCE"), "%%GlossaryItemReference%%", caption));
}

std::string QBDataProvider::RemoveMVMetaData(std::string_view Text) const {
  return Procedure(*this, "RemoveMVMetaData", [&](auto& p) { p("Text", Text); }).Run([&] {
    const auto parser = CreateParserTemplate(Text);
    parser->RemoveTags = true;
    parser->DataProvider = New<NullDataProvider>();
    return parser->Result();
  });
}

void QBDataProvider::CreateTOC() {
  Procedure(*this, "CreateTOC").Run([&] {
    const auto type = MVProject()->CurrentDocType();
    const auto contents = New<TOCDefinition>();
    contents->Template = type->Template();
    auto& definitions = *type->TOCDefinitions();
    if (!definitions.IsEmpty()) definitions.Remove(1);
    definitions.Add(contents);
    const auto project = QBProject();
    for (const auto& node : *project->QBNodes)
      if (!node->ParentNode()) node->CreateNodeDef({}, contents);
  });
}

std::string QBDataProvider::TopicSectionEditSpan(const Ref<Object>& /*Item*/, std::string_view Name,
                                                 std::string_view /*DefaultName*/) const {
  std::string span = "<div class=\"qbedit\"><span CONTENTEDITABLE id=\"TopicSection|";
  return span.append(Name).append("\"></span></div>");
}

}  // namespace quillbook
