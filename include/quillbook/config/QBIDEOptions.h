// Settings of the user of the authoring tool.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "quillbook/base/Object.h"

namespace quillbook {

/// Toolbar style of the user interface. Stored as a number; frozen values.
enum QBToolbarStyleEnum : std::int32_t {
  ToolbarStyleOfficeXP = 0,
  ToolbarStyleOffice2003 = 1,
  ToolbarStyleOffice2003NoThemes = 2,
};

/// The application-wide settings of the user. Nothing is kept here: every read and write goes to the store of
/// application values at the moment of the call, so that all objects of this class agree. A value that was never
/// written reads as its default, and the default isn't written back. A Boolean is True only if "True" is stored.
class QBIDEOptions final : public LibraryObject {
 public:
  /// Spell-check the property grids as one types.
  [[nodiscard]] bool DynamicSpellCheckProperties() const;
  void SetDynamicSpellCheckProperties(bool value);
  /// No blank lines for readability when formatting.
  [[nodiscard]] bool AutoFormatHTMLNoBlankLines() const;
  void SetAutoFormatHTMLNoBlankLines(bool value);
  /// Wrap column when `AutoFormatHTML` is True.
  [[nodiscard]] std::int32_t WrapCharacters() const;
  void SetWrapCharacters(std::int32_t value);
  /// Format topic HTML automatically.
  [[nodiscard]] bool AutoFormatHTML() const;
  void SetAutoFormatHTML(bool value);
  /// Show bitmaps as icons in the project explorer.
  [[nodiscard]] bool ShowBitmapsAsIcons() const;
  void SetShowBitmapsAsIcons(bool value);
  /// Show the group-by row of the link manager.
  [[nodiscard]] bool ShowLinkManagerGroupBy() const;
  void SetShowLinkManagerGroupBy(bool value);
  /// Reuse a topic edit window without unsaved changes.
  [[nodiscard]] bool ReUseTopicEditWindows() const;
  void SetReUseTopicEditWindows(bool value);
  /// Show the new-project help page on a new project.
  [[nodiscard]] bool ShowNewProjectHelp() const;
  void SetShowNewProjectHelp(bool value);
  /// Verify links and image references when a topic closes.
  [[nodiscard]] bool CheckLinksOnTopicClose() const;
  void SetCheckLinksOnTopicClose(bool value);
  /// Fill the title of a new topic.
  [[nodiscard]] bool AutoPopulateTopicTitles() const;
  void SetAutoPopulateTopicTitles(bool value);
  /// Fill the link category of a new link.
  [[nodiscard]] bool AutoPopulateLinkCategory() const;
  void SetAutoPopulateLinkCategory(bool value);
  /// HTML for a dragged thumbnail, an image whose name ends in "_thumb". Holds the placeholders `%UniqueID%`,
  /// `%ImageTitle%` and `%ThumbnailImageURL%`, which the editor fills.
  [[nodiscard]] std::string DraggedThumbnailImageHTML() const;
  void SetDraggedThumbnailImageHTML(std::string_view value);
  /// HTML for a dragged image. Holds the placeholders `%ImageURL%` and `%ImageTitle%`, which the editor fills.
  [[nodiscard]] std::string DraggedImageHTML() const;
  void SetDraggedImageHTML(std::string_view value);
  /// Ask for a title when an image is inserted.
  [[nodiscard]] bool PromptForImageTitle() const;
  void SetPromptForImageTitle(bool value);
  /// Save toolbar and window layout on exit.
  [[nodiscard]] bool SaveLayoutOnExit() const;
  void SetSaveLayoutOnExit(bool value);
  /// Save the open project periodically.
  [[nodiscard]] bool AutoSaveEnabled() const;
  void SetAutoSaveEnabled(bool value);
  /// Period of `AutoSaveEnabled`, in minutes.
  [[nodiscard]] std::int32_t AutoSaveMinutes() const;
  void SetAutoSaveMinutes(std::int32_t value);
  /// Open help in an internal document window.
  [[nodiscard]] bool InternalHelp() const;
  void SetInternalHelp(bool value);
  /// Toolbar style of the user interface.
  [[nodiscard]] QBToolbarStyleEnum ToolbarStyle() const;
  void SetToolbarStyle(QBToolbarStyleEnum value);
  /// Spell-check keywords as one types.
  [[nodiscard]] bool DynamicSpellCheckKeywords() const;
  void SetDynamicSpellCheckKeywords(bool value);
  /// Spell-check the table of contents editor.
  [[nodiscard]] bool DynamicSpellCheckTOCEditor() const;
  void SetDynamicSpellCheckTOCEditor(bool value);
  /// Spell-check the project explorer.
  [[nodiscard]] bool DynamicSpellCheckProjectExplorer() const;
  void SetDynamicSpellCheckProjectExplorer(bool value);
  /// Folder offered for new projects; the user's documents folder by default.
  [[nodiscard]] std::string DefaultPath() const;
  void SetDefaultPath(std::string_view value);

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }
};

}  // namespace quillbook
