#include "quillbook/config/QBIDEOptions.h"

#include "quillbook/base/Text.h"
#include "quillbook/frame/Procedure.h"
#include "quillbook/frame/modMain.h"
#include "quillbook/frame/services/TextHelper.h"
#include "quillbook/platform/Desktop.h"

namespace quillbook {

namespace {

constexpr std::string_view DragDropSection = "DragDrop";

constexpr std::string_view DefaultImageHTML = R"(<IMG border="0" src="%ImageURL%" alt="%ImageTitle%"/>)";

constexpr std::string_view DefaultThumbnailHTML =
    R"html(<div><img id="img_%UniqueID%" alt="%ImageTitle%" src="%ThumbnailImageURL%" border="0"><br>)html"
    R"html(<span class="qb-onlineonly">)html"
    R"html(<a href="#" onClick="javascript:qbEnlargeImage('img_%UniqueID%',this,true)">)html"
    R"html(<img style="MARGIN-BOTTOM: -4px" alt="Enlarge" hspace="2" src="images/qb-enlarge.gif" vspace="2" )html"
    R"html(border="0">Click to enlarge</a></span></div>)html";

std::string Text(const QBIDEOptions& options, std::string_view name, std::string_view fallback,
                 std::string_view section = {}) {
  return Procedure(options, name).Run([&] { return modMain::GetAppValue(name, fallback, section); });
}

void SetText(const QBIDEOptions& options, std::string_view name, std::string_view value,
             std::string_view section = {}) {
  Procedure(options, name, [&](auto& p) { p("RHS", value); }).Run([&] { modMain::SetAppValue(name, value, section); });
}

bool Boolean(const QBIDEOptions& options, std::string_view name, bool fallback) {
  return Text(options, name, BooleanText(fallback)) == "True";
}

void SetBoolean(const QBIDEOptions& options, std::string_view name, bool value) {
  SetText(options, name, BooleanText(value));
}

std::int32_t Long(const QBIDEOptions& options, std::string_view name, std::int32_t fallback) {
  return Procedure(options, name).Run([&] {
    return LongFromText(modMain::GetAppValue(name, std::to_string(fallback)));
  });
}

void SetLong(const QBIDEOptions& options, std::string_view name, std::int32_t value) {
  SetText(options, name, std::to_string(value));
}

}  // namespace

bool QBIDEOptions::DynamicSpellCheckProperties() const {
  return Boolean(*this, "DynamicSpellCheckProperties", true);
}
void QBIDEOptions::SetDynamicSpellCheckProperties(bool value) {
  SetBoolean(*this, "DynamicSpellCheckProperties", value);
}

bool QBIDEOptions::AutoFormatHTMLNoBlankLines() const {
  return Boolean(*this, "AutoFormatHTMLNoBlankLines", true);
}
void QBIDEOptions::SetAutoFormatHTMLNoBlankLines(bool value) {
  SetBoolean(*this, "AutoFormatHTMLNoBlankLines", value);
}

std::int32_t QBIDEOptions::WrapCharacters() const {
  return Long(*this, "WrapCharacters", 80);
}
void QBIDEOptions::SetWrapCharacters(std::int32_t value) {
  SetLong(*this, "WrapCharacters", value);
}

bool QBIDEOptions::AutoFormatHTML() const {
  return Boolean(*this, "AutoFormatHTML", true);
}
void QBIDEOptions::SetAutoFormatHTML(bool value) {
  SetBoolean(*this, "AutoFormatHTML", value);
}

bool QBIDEOptions::ShowBitmapsAsIcons() const {
  return Boolean(*this, "ShowBitmapsAsIcons", false);
}
void QBIDEOptions::SetShowBitmapsAsIcons(bool value) {
  SetBoolean(*this, "ShowBitmapsAsIcons", value);
}

bool QBIDEOptions::ShowLinkManagerGroupBy() const {
  return Boolean(*this, "ShowLinkManagerGroupBy", false);
}
void QBIDEOptions::SetShowLinkManagerGroupBy(bool value) {
  SetBoolean(*this, "ShowLinkManagerGroupBy", value);
}

bool QBIDEOptions::ReUseTopicEditWindows() const {
  return Boolean(*this, "ReUseTopicEditWindows", true);
}
void QBIDEOptions::SetReUseTopicEditWindows(bool value) {
  SetBoolean(*this, "ReUseTopicEditWindows", value);
}

bool QBIDEOptions::ShowNewProjectHelp() const {
  return Boolean(*this, "ShowNewProjectHelp", true);
}
void QBIDEOptions::SetShowNewProjectHelp(bool value) {
  SetBoolean(*this, "ShowNewProjectHelp", value);
}

bool QBIDEOptions::CheckLinksOnTopicClose() const {
  return Boolean(*this, "CheckLinksOnTopicClose", true);
}
void QBIDEOptions::SetCheckLinksOnTopicClose(bool value) {
  SetBoolean(*this, "CheckLinksOnTopicClose", value);
}

bool QBIDEOptions::AutoPopulateTopicTitles() const {
  return Boolean(*this, "AutoPopulateTopicTitles", true);
}
void QBIDEOptions::SetAutoPopulateTopicTitles(bool value) {
  SetBoolean(*this, "AutoPopulateTopicTitles", value);
}

bool QBIDEOptions::AutoPopulateLinkCategory() const {
  return Boolean(*this, "AutoPopulateLinkCategory", true);
}
void QBIDEOptions::SetAutoPopulateLinkCategory(bool value) {
  SetBoolean(*this, "AutoPopulateLinkCategory", value);
}

std::string QBIDEOptions::DraggedThumbnailImageHTML() const {
  return Text(*this, "DraggedThumbnailImageHTML", DefaultThumbnailHTML, DragDropSection);
}
void QBIDEOptions::SetDraggedThumbnailImageHTML(std::string_view value) {
  SetText(*this, "DraggedThumbnailImageHTML", value, DragDropSection);
}

std::string QBIDEOptions::DraggedImageHTML() const {
  return Text(*this, "DraggedImageHTML", DefaultImageHTML, DragDropSection);
}
void QBIDEOptions::SetDraggedImageHTML(std::string_view value) {
  SetText(*this, "DraggedImageHTML", value, DragDropSection);
}

bool QBIDEOptions::PromptForImageTitle() const {
  return Boolean(*this, "PromptForImageTitle", true);
}
void QBIDEOptions::SetPromptForImageTitle(bool value) {
  SetBoolean(*this, "PromptForImageTitle", value);
}

bool QBIDEOptions::SaveLayoutOnExit() const {
  return Boolean(*this, "SaveLayoutOnExit", true);
}
void QBIDEOptions::SetSaveLayoutOnExit(bool value) {
  SetBoolean(*this, "SaveLayoutOnExit", value);
}

bool QBIDEOptions::AutoSaveEnabled() const {
  return Boolean(*this, "AutoSaveEnabled", false);
}
void QBIDEOptions::SetAutoSaveEnabled(bool value) {
  SetBoolean(*this, "AutoSaveEnabled", value);
}

std::int32_t QBIDEOptions::AutoSaveMinutes() const {
  return Long(*this, "AutoSaveMinutes", 5);
}
void QBIDEOptions::SetAutoSaveMinutes(std::int32_t value) {
  SetLong(*this, "AutoSaveMinutes", value);
}

bool QBIDEOptions::InternalHelp() const {
  return Boolean(*this, "InternalHelp", true);
}
void QBIDEOptions::SetInternalHelp(bool value) {
  SetBoolean(*this, "InternalHelp", value);
}

QBToolbarStyleEnum QBIDEOptions::ToolbarStyle() const {
  return static_cast<QBToolbarStyleEnum>(Long(*this, "ToolbarStyle", ToolbarStyleOffice2003));
}
void QBIDEOptions::SetToolbarStyle(QBToolbarStyleEnum value) {
  SetLong(*this, "ToolbarStyle", value);
}

bool QBIDEOptions::DynamicSpellCheckKeywords() const {
  return Boolean(*this, "DynamicSpellCheckKeywords", true);
}
void QBIDEOptions::SetDynamicSpellCheckKeywords(bool value) {
  SetBoolean(*this, "DynamicSpellCheckKeywords", value);
}

bool QBIDEOptions::DynamicSpellCheckTOCEditor() const {
  return Boolean(*this, "DynamicSpellCheckTOCEditor", true);
}
void QBIDEOptions::SetDynamicSpellCheckTOCEditor(bool value) {
  SetBoolean(*this, "DynamicSpellCheckTOCEditor", value);
}

bool QBIDEOptions::DynamicSpellCheckProjectExplorer() const {
  return Boolean(*this, "DynamicSpellCheckProjectExplorer", true);
}
void QBIDEOptions::SetDynamicSpellCheckProjectExplorer(bool value) {
  SetBoolean(*this, "DynamicSpellCheckProjectExplorer", value);
}

std::string QBIDEOptions::DefaultPath() const {
  return Text(*this, "DefaultPath", TextHelper::SpecialFolder(Desktop::DocumentsFolder));
}
void QBIDEOptions::SetDefaultPath(std::string_view value) {
  SetText(*this, "DefaultPath", value);
}

const TypeInfo& QBIDEOptions::StaticType() {
  static const TypeInfo type =
      Describe<QBIDEOptions>("QBIDEOptions")
          .Property<&QBIDEOptions::DynamicSpellCheckProperties, &QBIDEOptions::SetDynamicSpellCheckProperties>(
              "DynamicSpellCheckProperties")
          .Property<&QBIDEOptions::AutoFormatHTMLNoBlankLines, &QBIDEOptions::SetAutoFormatHTMLNoBlankLines>(
              "AutoFormatHTMLNoBlankLines")
          .Property<&QBIDEOptions::WrapCharacters, &QBIDEOptions::SetWrapCharacters>("WrapCharacters")
          .Property<&QBIDEOptions::AutoFormatHTML, &QBIDEOptions::SetAutoFormatHTML>("AutoFormatHTML")
          .Property<&QBIDEOptions::ShowBitmapsAsIcons, &QBIDEOptions::SetShowBitmapsAsIcons>("ShowBitmapsAsIcons")
          .Property<&QBIDEOptions::ShowLinkManagerGroupBy, &QBIDEOptions::SetShowLinkManagerGroupBy>(
              "ShowLinkManagerGroupBy")
          .Property<&QBIDEOptions::ReUseTopicEditWindows, &QBIDEOptions::SetReUseTopicEditWindows>(
              "ReUseTopicEditWindows")
          .Property<&QBIDEOptions::ShowNewProjectHelp, &QBIDEOptions::SetShowNewProjectHelp>("ShowNewProjectHelp")
          .Property<&QBIDEOptions::CheckLinksOnTopicClose, &QBIDEOptions::SetCheckLinksOnTopicClose>(
              "CheckLinksOnTopicClose")
          .Property<&QBIDEOptions::AutoPopulateTopicTitles, &QBIDEOptions::SetAutoPopulateTopicTitles>(
              "AutoPopulateTopicTitles")
          .Property<&QBIDEOptions::AutoPopulateLinkCategory, &QBIDEOptions::SetAutoPopulateLinkCategory>(
              "AutoPopulateLinkCategory")
          .Property<&QBIDEOptions::DraggedThumbnailImageHTML, &QBIDEOptions::SetDraggedThumbnailImageHTML>(
              "DraggedThumbnailImageHTML")
          .Property<&QBIDEOptions::DraggedImageHTML, &QBIDEOptions::SetDraggedImageHTML>("DraggedImageHTML")
          .Property<&QBIDEOptions::PromptForImageTitle, &QBIDEOptions::SetPromptForImageTitle>("PromptForImageTitle")
          .Property<&QBIDEOptions::SaveLayoutOnExit, &QBIDEOptions::SetSaveLayoutOnExit>("SaveLayoutOnExit")
          .Property<&QBIDEOptions::AutoSaveEnabled, &QBIDEOptions::SetAutoSaveEnabled>("AutoSaveEnabled")
          .Property<&QBIDEOptions::AutoSaveMinutes, &QBIDEOptions::SetAutoSaveMinutes>("AutoSaveMinutes")
          .Property<&QBIDEOptions::InternalHelp, &QBIDEOptions::SetInternalHelp>("InternalHelp")
          .Property<&QBIDEOptions::ToolbarStyle, &QBIDEOptions::SetToolbarStyle>("ToolbarStyle")
          .Property<&QBIDEOptions::DynamicSpellCheckKeywords, &QBIDEOptions::SetDynamicSpellCheckKeywords>(
              "DynamicSpellCheckKeywords")
          .Property<&QBIDEOptions::DynamicSpellCheckTOCEditor, &QBIDEOptions::SetDynamicSpellCheckTOCEditor>(
              "DynamicSpellCheckTOCEditor")
          .Property<&QBIDEOptions::DynamicSpellCheckProjectExplorer,
                    &QBIDEOptions::SetDynamicSpellCheckProjectExplorer>("DynamicSpellCheckProjectExplorer")
          .Property<&QBIDEOptions::DefaultPath, &QBIDEOptions::SetDefaultPath>("DefaultPath")
          .Done();
  return type;
}

}  // namespace quillbook
