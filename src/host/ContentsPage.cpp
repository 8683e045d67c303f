#include "host/ContentsPage.h"

#include "host/ContentsLines.h"
#include "host/Markup.h"
#include "quillbook/host/MVProject.h"

namespace quillbook::detail {

namespace {

/// A list item, whose end tag HTML lets be left out.
std::string PlainNode(const NodeDef& node) {
  const auto caption = EscapeMarkup(PlainTitle(node.Caption));
  if (node.URL.empty()) return "\n<LI>" + caption;
  return "\n<LI><A HREF=\"" + EscapeMarkup(PlainTitle(node.URL)) + "\">" + caption + "</A>";
}

}  // namespace

std::string ContentsAsLists(const TOCDefinition& contents, const MVProject& project, DataProvider& data) {
  const auto lines = LinesOf(contents);
  if (lines.empty()) return {};
  const bool plain = project.NodeScrap.empty();
  const auto scrap = plain ? std::string() : project.Scrap(project.NodeScrap);
  const auto own = plain ? Ref<DataProvider>() : data.DataProvider_Clone();
  auto text = project.BookPrefix;
  ForEachNested(
      lines,
      [&](const ContentsLine& line) {
        if (own) {
          own->DataProvider_SetCurrentItem(nullptr, line.node, "NodeDef", line.node->Parent());
          text += own->DataProvider_ParseForProperties(scrap);
        } else {
          text += PlainNode(*line.node);
        }
        if (line.hasChildren) text += project.BookPrefix;
      },
      [&](const ContentsLine& line) {
        if (line.hasChildren) text += project.BookSuffix;
        text += project.NodeSuffix;
      });
  return text += project.BookSuffix;
}

}  // namespace quillbook::detail
