// The library's application object.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "quillbook/base/Object.h"
#include "quillbook/base/Ref.h"
#include "quillbook/host/PageTemplate.h"

namespace quillbook {

class HtmlDocument;
class MVProject;
class Picture;
class QBIDEOptions;
class Topic;
class TopicSectionDefs;
class TopicStatuses;

/// A colour as the object model holds it: red in the lowest byte, then green, then blue; the top bit marks the number
/// of a system colour.
using OleColor = std::int32_t;

/// What a clipboard item stands for. The values and their texts on the clipboard are frozen.
enum QBClipboardDataTypeEnum : std::int32_t {
  DataTypeTopic = 1,
  DataTypeOtherFile = 2,
  DataTypeCategory = 3,
  DataTypeNode = 4,
};
enum QBToolbarStyleEnum : std::int32_t;

/// The one object that needs no project. While a `Root` lives, what all projects share stays cached; hold one for a
/// whole session.
class Root final : public LibraryObject {
 public:
  Root();
  ~Root() override;

  [[nodiscard]] const std::string& SpellImagePath() const noexcept;
  void SetSpellImagePath(std::string_view RHS);
  [[nodiscard]] Ref<quillbook::TopicStatuses> TopicStatuses() const;
  [[nodiscard]] Ref<quillbook::TopicSectionDefs> TopicSectionDefs() const;
  /// The configuration directory in Windows form, with a trailing "\".
  [[nodiscard]] std::string QBConfigPath() const;
  [[nodiscard]] Ref<PageTemplates> QuillbookPageTemplates(std::string_view SupportsFlag = {}) const;
  /// See `modMain::BeforeDeleteTopic`.
  void BeforeDeleteTopic(const Ref<Topic>& T, bool& Cancel, bool& NoPrompt) const;
  [[nodiscard]] bool IsMavenscriptInstalled() const;
  /// A new object at every read.
  [[nodiscard]] Ref<quillbook::QBIDEOptions> QBIDEOptions() const;

  /// Numbers of the library's clipboard formats; they may differ at each run. Seen as unsigned they lie in 0xC000 to
  /// 0xFFFF.
  [[nodiscard]] std::int16_t ClipboardTypeFormat() const noexcept;
  [[nodiscard]] std::int16_t ClipboardDataFormat() const noexcept;

  // A clipboard item is a pair: the text of its type under the type format, a text of the caller's (a key or XML) under
  // the data format. Both are bytes of UTF-16LE without a terminator. The data object is a `DataObject` or any object
  // that has, late-bound, the methods `SetData(Value, Format)`, `GetFormat(Format)` and `GetData(Format)`; another one
  // is a reported failure 438, no object at all failure 91.

  /// Writes type and data. A value that is no type is written as the empty text.
  void SetClipboardData(const Ref<Object>& DataObject, QBClipboardDataTypeEnum DataType, std::string_view Data) const;
  void SetClipboardDataType(const Ref<Object>& DataObject, QBClipboardDataTypeEnum DataType) const;
  void SetClipboardDataData(const Ref<Object>& DataObject, std::string_view Data) const;
  /// The data of an item that has a type, whatever its text. Empty if there is none; no failure is reported.
  [[nodiscard]] std::string GetClipboardData(const Ref<Object>& DataObject) const;
  /// 0 if there is no item, or one of another type.
  [[nodiscard]] QBClipboardDataTypeEnum GetClipboardDataType(const Ref<Object>& DataObject) const;

  /// The icon that the desktop shows for a file, 16 pixels wide, or 32 if not `SmallIcon`. The file's name says its
  /// type, so that it needn't be there; only a folder is told by a look at the disk. A desktop that has no icon gives a
  /// picture without image. The colours are passed on to the picture. If `FileType` is given, it becomes what the
  /// desktop calls the type, in the user's language or in English: "HTML document". A type that it doesn't know is
  /// called by the name's ending, "XYZ file". An empty name has no icon and no type.
  ///
  /// What the desktop knows is read once and kept until the last `Root` goes.
  [[nodiscard]] Ref<Picture> FileToIcon(std::string_view Filename, bool SmallIcon = true, OleColor MaskColor = 16711935,
                                        std::string* FileType = nullptr, OleColor BackColor = -2147483643) const;

  /// Gives a docking control, by late binding, the look of a style; its `Redraw` is off meanwhile. A value that is no
  /// style changes nothing. If the control lacks a member that is needed, that is reported and `Redraw` stays off.
  void SetToolbarStyle(const Ref<Object>& Dock, QBToolbarStyleEnum ToolbarStyle) const;

  /// "&H00BBGGRR&", or "&H8" and seven digits for a system colour.
  [[nodiscard]] std::string ColorToVBHex(OleColor Color) const;
  /// "#RRGGBB"; system colours are resolved.
  [[nodiscard]] std::string ColorToWebHex(OleColor Color) const;
  /// The colour of "#RRGGBB"; the first character isn't looked at, missing digits count as 0.
  [[nodiscard]] OleColor WebHexToColor(std::string_view WebColor) const;
  /// Background of the application's work area under the chosen toolbar style.
  [[nodiscard]] OleColor AppWorkspaceColor() const;
  /// A message box with a check box that keeps the answer, unless it is Cancel, for the next time. The buttons and
  /// answers are those of an ordinary message box. See `AutoMessages`.
  std::int32_t AutoMsgBox(std::string_view Prompt, std::int32_t Buttons, std::string_view Title,
                          std::string_view MessageName,
                          std::string_view CheckBoxCaption = "Do this automatically next time") const;

  /// Templates with support flag "Px", "p", and all. The argument is accepted and ignored.
  [[nodiscard]] Ref<PageTemplates> OnLineTemplates(bool OnlyV2Plus = false) const;
  [[nodiscard]] Ref<PageTemplates> PrintTemplates(bool OnlyV2Plus = false) const;
  [[nodiscard]] Ref<PageTemplates> AllTemplates(bool OnlyV2Plus = false) const;
  /// See `modMain::CreateDOM`.
  [[nodiscard]] Ref<HtmlDocument> CreateDOM(std::string_view HTML) const;
  [[nodiscard]] std::string FileURLToFileName(std::string_view URL) const;
  [[nodiscard]] bool IsFileURL(std::string_view URL) const;
  [[nodiscard]] Ref<MVProject> NewMVProject() const;
  /// A plain slot for the caller; nothing in the library reads it.
  [[nodiscard]] bool ReloadFlag() const noexcept;
  void SetReloadFlag(bool RHS) noexcept;
  [[nodiscard]] std::string ReturnBody(std::string_view CompleteDocument) const;

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }
};

}  // namespace quillbook
