// The library's application object.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "quillbook/base/Object.h"
#include "quillbook/base/Ref.h"
#include "quillbook/host/PageTemplate.h"

namespace quillbook {

class MVProject;
class QBIDEOptions;
class Topic;
class TopicSectionDefs;
class TopicStatuses;

/// A colour as the object model holds it: red in the lowest byte, then green, then blue; the top bit marks the number
/// of a system colour.
using OleColor = std::int32_t;

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

  /// Numbers of the library's clipboard formats; they may differ at each run.
  [[nodiscard]] std::int16_t ClipboardTypeFormat() const noexcept;
  [[nodiscard]] std::int16_t ClipboardDataFormat() const noexcept;

  /// "&H00BBGGRR&", or "&H8" and seven digits for a system colour.
  [[nodiscard]] std::string ColorToVBHex(OleColor Color) const;
  /// "#RRGGBB"; system colours are resolved.
  [[nodiscard]] std::string ColorToWebHex(OleColor Color) const;
  /// The colour of "#RRGGBB"; the first character isn't looked at, missing digits count as 0.
  [[nodiscard]] OleColor WebHexToColor(std::string_view WebColor) const;
  /// Background of the application's work area under the chosen toolbar style.
  [[nodiscard]] OleColor AppWorkspaceColor() const;
  /// A message box with a check box that keeps the answer for the next time. The buttons and answers are those of an
  /// ordinary message box.
  std::int32_t AutoMsgBox(std::string_view Prompt, std::int32_t Buttons, std::string_view Title,
                          std::string_view MessageName,
                          std::string_view CheckBoxCaption = "Do this automatically next time") const;

  /// Templates with support flag "Px", "p", and all. The argument is accepted and ignored.
  [[nodiscard]] Ref<PageTemplates> OnLineTemplates(bool OnlyV2Plus = false) const;
  [[nodiscard]] Ref<PageTemplates> PrintTemplates(bool OnlyV2Plus = false) const;
  [[nodiscard]] Ref<PageTemplates> AllTemplates(bool OnlyV2Plus = false) const;
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
