#include "quillbook/frame/Root.h"

#include <charconv>
#include <cstdio>

#include "frame/Apartment.h"
#include "frame/Colors.h"
#include "quillbook/config/QBIDEOptions.h"
#include "quillbook/frame/Procedure.h"
#include "quillbook/frame/modMain.h"
#include "quillbook/frame/services/AutoMessages.h"
#include "quillbook/host/MVProject.h"
#include "quillbook/host/PageTemplate.h"
#include "quillbook/platform/Platform.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/TopicSectionDefs.h"
#include "quillbook/topics/TopicStatuses.h"

namespace quillbook {
namespace {

void RegisterClipboardFormats(Apartment& apartment) {
  // The registered names end in a NUL, which is part of them.
  using namespace std::string_view_literals;
  auto& session = Platform::Current().Session();
  apartment.mClipboardDataFormat = static_cast<std::int16_t>(session.RegisterClipboardFormat("#Quillbook.Data#\0"sv));
  apartment.mClipboardTypeFormat = static_cast<std::int16_t>(session.RegisterClipboardFormat("#Quillbook.Type#\0"sv));
}

std::string Hexadecimal(unsigned value, int digits) {
  char text[16];
  return std::string(text, static_cast<std::size_t>(std::snprintf(text, sizeof text, "%0*X", digits, value)));
}

std::string ChannelPair(std::string_view text, std::size_t position) {
  return std::string(position < text.size() ? text.substr(position, 2) : std::string_view());
}

std::uint8_t ChannelFromHexadecimal(const std::string& digits) {
  unsigned value = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
  return static_cast<std::uint8_t>(value);
}

/// The colour of the docking bars in the style of the 2003 office programs.
constexpr OleColor kDockingBarColor = SystemColor::ButtonFace;

}  // namespace

Root::Root() {
  auto& apartment = Apartment::Current();
  ++apartment.RootIncrement;
  if (apartment.mClipboardDataFormat == 0) RegisterClipboardFormats(apartment);
}

Root::~Root() {
  auto& apartment = Apartment::Current();
  if (--apartment.RootIncrement == 0) apartment.DropCaches();
}

const std::string& Root::SpellImagePath() const noexcept {
  return modMain::mSpellImagePath();
}
void Root::SetSpellImagePath(std::string_view RHS) {
  modMain::mSpellImagePath() = RHS;
}
bool Root::ReloadFlag() const noexcept {
  return modMain::mReloadFlag();
}
void Root::SetReloadFlag(bool RHS) noexcept {
  modMain::mReloadFlag() = RHS;
}
std::int16_t Root::ClipboardTypeFormat() const noexcept {
  return modMain::mClipboardTypeFormat();
}
std::int16_t Root::ClipboardDataFormat() const noexcept {
  return modMain::mClipboardDataFormat();
}

Ref<quillbook::TopicStatuses> Root::TopicStatuses() const {
  return modMain::TopicStatuses();
}
Ref<quillbook::TopicSectionDefs> Root::TopicSectionDefs() const {
  return modMain::TopicSectionDefs();
}
std::string Root::QBConfigPath() const {
  return modMain::ConfigPath();
}
bool Root::IsMavenscriptInstalled() const {
  return modMain::IsMavenscriptInstalled();
}
Ref<MVProject> Root::NewMVProject() const {
  return modMain::NewMVProject();
}
std::string Root::FileURLToFileName(std::string_view URL) const {
  return modMain::FileURLToFileName(URL);
}
bool Root::IsFileURL(std::string_view URL) const {
  return modMain::IsFileURL(URL);
}
std::string Root::ReturnBody(std::string_view CompleteDocument) const {
  return modMain::ReturnBody(CompleteDocument);
}

Ref<PageTemplates> Root::QuillbookPageTemplates(std::string_view SupportsFlag) const {
  return modMain::QuillbookPageTemplates(SupportsFlag);
}
Ref<PageTemplates> Root::OnLineTemplates(bool) const {
  return QuillbookPageTemplates("Px");
}
Ref<PageTemplates> Root::PrintTemplates(bool) const {
  return QuillbookPageTemplates("p");
}
Ref<PageTemplates> Root::AllTemplates(bool) const {
  return QuillbookPageTemplates("");
}

void Root::BeforeDeleteTopic(const Ref<Topic>& T, bool& Cancel, bool& NoPrompt) const {
  modMain::BeforeDeleteTopic(T, Cancel, NoPrompt);
}

Ref<quillbook::QBIDEOptions> Root::QBIDEOptions() const {
  return Procedure(*this, "QBIDEOptions").Run([] { return New<quillbook::QBIDEOptions>(); });
}

std::string Root::ColorToWebHex(OleColor Color) const {
  const auto channels = TranslateColor(Color).value_or(Rgb{});
  return "#" + Hexadecimal(channels.red, 2) + Hexadecimal(channels.green, 2) + Hexadecimal(channels.blue, 2);
}

std::string Root::ColorToVBHex(OleColor Color) const {
  if (Color < 0) return "&H8" + Hexadecimal(static_cast<std::uint16_t>(Color), 7) + "&";
  const auto web = ColorToWebHex(Color);
  return "&H00" + web.substr(5, 2) + web.substr(3, 2) + web.substr(1, 2) + "&";
}

OleColor Root::WebHexToColor(std::string_view WebColor) const {
  const auto channel = [&](std::size_t position) { return ChannelFromHexadecimal(ChannelPair(WebColor, position)); };
  return ColorValue({channel(1), channel(3), channel(5)});
}

OleColor Root::AppWorkspaceColor() const {
  return Procedure(*this, "AppWorkspaceColor").Run([&]() -> OleColor {
    if (QBIDEOptions()->ToolbarStyle() != ToolbarStyleOffice2003) return SystemColor::ApplicationWorkspace;
    constexpr int weight = 128;
    return ColorValue(BlendColors(TranslateColor(SystemColor::ApplicationWorkspace).value(),
                                  TranslateColor(kDockingBarColor).value(), weight));
  });
}

std::int32_t Root::AutoMsgBox(std::string_view Prompt, std::int32_t Buttons, std::string_view Title,
                              std::string_view MessageName, std::string_view CheckBoxCaption) const {
  return Procedure(*this, "AutoMsgBox",
                   [&](auto& p) {
                     p("Prompt", Prompt);
                     p("Buttons", Buttons);
                     p("Title", Title);
                     p("MessageName", MessageName);
                     p("CheckBoxCaption", CheckBoxCaption);
                   })
      .Run([&] { return AutoMessages::MsgBox(Prompt, Buttons, Title, MessageName, CheckBoxCaption); });
}

const TypeInfo& Root::StaticType() {
  static const TypeInfo type = Describe<Root>("Root")
                                   .Property<&Root::SpellImagePath, &Root::SetSpellImagePath>("SpellImagePath")
                                   .ReadOnly<&Root::TopicStatuses>("TopicStatuses")
                                   .ReadOnly<&Root::TopicSectionDefs>("TopicSectionDefs")
                                   .ReadOnly<&Root::QBConfigPath>("QBConfigPath")
                                   .ReadOnly<&Root::IsMavenscriptInstalled>("IsMavenscriptInstalled")
                                   .ReadOnly<&Root::QBIDEOptions>("QBIDEOptions")
                                   .ReadOnly<&Root::ClipboardTypeFormat>("ClipboardTypeFormat")
                                   .ReadOnly<&Root::ClipboardDataFormat>("ClipboardDataFormat")
                                   .ReadOnly<&Root::AppWorkspaceColor>("AppWorkspaceColor")
                                   .Property<&Root::ReloadFlag, &Root::SetReloadFlag>("ReloadFlag")
                                   .Done();
  return type;
}

}  // namespace quillbook
