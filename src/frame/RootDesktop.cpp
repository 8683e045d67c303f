// The small services that an editor needs around its windows.
#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>

#include "frame/Apartment.h"
#include "frame/Colors.h"
#include "frame/services/FileIcons.h"
#include "frame/services/WindowsPath.h"
#include "quillbook/base/Text.h"
#include "quillbook/config/QBIDEOptions.h"
#include "quillbook/frame/Picture.h"
#include "quillbook/frame/Procedure.h"
#include "quillbook/frame/Root.h"
#include "quillbook/frame/modMain.h"
#include "quillbook/frame/services/AutoMessages.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/platform/Platform.h"

namespace quillbook {
namespace {

/// The texts of the clipboard's data types, from the type 1 on.
constexpr std::array<std::string_view, 4> dataTypeTexts = {"Topic", "OtherFile", "Category", "Node"};

std::string_view TextOfType(QBClipboardDataTypeEnum type) {
  const auto index = static_cast<std::size_t>(type) - 1;
  return index < dataTypeTexts.size() ? dataTypeTexts[index] : std::string_view();
}

QBClipboardDataTypeEnum TypeOfText(std::string_view text) {
  const auto* const found = std::find(dataTypeTexts.begin(), dataTypeTexts.end(), text);
  const auto index = found == dataTypeTexts.end() ? 0 : found - dataTypeTexts.begin() + 1;
  return static_cast<QBClipboardDataTypeEnum>(index);
}

void SetText(const Ref<Object>& data, std::string_view text, std::int16_t format) {
  data->Invoke("SetData", {Variant::Bytes{ToUtf16Bytes(text)}, format});
}

/// The text in a format, as bytes or as it is.
std::string GetText(const Ref<Object>& data, std::int16_t format) {
  return data->Invoke("GetData", {format}).ToText();
}

bool HasItem(const Ref<Object>& data) {
  return data->Invoke("GetFormat", {modMain::mClipboardTypeFormat()}).ToBoolean();
}

/// What a toolbar style is for the docking control.
struct DockLook {
  int commandBars;
  int dockWindows;
  int themeColors;
};

void Apply(const DockLook& look, const Ref<Object>& styleManager) {
  styleManager->Invoke("ApplyStandardCommandBarStyle", {look.commandBars, Variant::Omitted(), 3});
  styleManager->Invoke("ApplyStandardDockWindowStyle", {look.dockWindows});
  styleManager->SetMember("UseThemeColors", look.themeColors);
}

std::string Hexadecimal(unsigned value, int digits) {
  char text[16];
  return std::string(text, static_cast<std::size_t>(std::snprintf(text, sizeof text, "%0*X", digits, value)));
}

/// One channel of a web colour; what is no hexadecimal digit ends it, and without any it is 0.
std::uint8_t ChannelFromHexadecimal(std::string_view digits) {
  unsigned value = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
  return static_cast<std::uint8_t>(value);
}

/// The colour of the docking bars in the style of the 2003 office programs.
constexpr OleColor kDockingBarColor = SystemColor::ButtonFace;

constexpr int smallIconSize = 16;
constexpr int iconSize = 32;

detail::FileIcon IconOf(std::string_view filename, int size) {
  if (filename.empty()) return {};
  auto& icons = Apartment::Current().mFileIcons;
  if (!icons) icons = std::make_unique<detail::FileIcons>(Platform::Current().Session());
  const auto path = New<FileSystemObject>(filename)->NativePath();
  const bool isFolder = path.ends_with('/') || Platform::Current().Files().GetStatus(path).isDirectory;
  return icons->Find(path.substr(path.rfind('/') + 1), isFolder, size);
}

}  // namespace

std::int16_t Root::ClipboardTypeFormat() const noexcept {
  return modMain::mClipboardTypeFormat();
}
std::int16_t Root::ClipboardDataFormat() const noexcept {
  return modMain::mClipboardDataFormat();
}

void Root::SetClipboardData(const Ref<Object>& DataObject, QBClipboardDataTypeEnum DataType,
                            std::string_view Data) const {
  Procedure(*this, "SetClipboardData", [&](auto& p) {
    p("DataObject", DataObject);
    p("DataType", DataType);
    p("Data", Data);
  }).Run([&] {
    SetText(DataObject, TextOfType(DataType), ClipboardTypeFormat());
    SetText(DataObject, Data, ClipboardDataFormat());
  });
}

void Root::SetClipboardDataType(const Ref<Object>& DataObject, QBClipboardDataTypeEnum DataType) const {
  Procedure(*this, "SetClipboardDataType", [&](auto& p) {
    p("DataObject", DataObject);
    p("DataType", DataType);
  }).Run([&] { SetText(DataObject, TextOfType(DataType), ClipboardTypeFormat()); });
}

void Root::SetClipboardDataData(const Ref<Object>& DataObject, std::string_view Data) const {
  Procedure(*this, "SetClipboardDataData", [&](auto& p) {
    p("DataObject", DataObject);
    p("Data", Data);
  }).Run([&] { SetText(DataObject, Data, ClipboardDataFormat()); });
}

std::string Root::GetClipboardData(const Ref<Object>& DataObject) const {
  std::string data;
  IgnoreFailures([&] {
    if (HasItem(DataObject)) data = GetText(DataObject, ClipboardDataFormat());
  });
  return data;
}

QBClipboardDataTypeEnum Root::GetClipboardDataType(const Ref<Object>& DataObject) const {
  return Procedure(*this, "GetClipboardDataType", [&](auto& p) { p("DataObject", DataObject); }).Run([&] {
    return HasItem(DataObject) ? TypeOfText(GetText(DataObject, ClipboardTypeFormat())) : QBClipboardDataTypeEnum();
  });
}

Ref<Picture> Root::FileToIcon(std::string_view Filename, bool SmallIcon, OleColor MaskColor, std::string* FileType,
                              OleColor BackColor) const {
  return Procedure(*this, "FileToIcon",
                   [&](auto& p) {
                     p("Filename", Filename);
                     p("SmallIcon", SmallIcon);
                     p("MaskColor", MaskColor);
                     p("FileType", FileType ? *FileType : std::string());
                     p("BackColor", BackColor);
                   })
      .Run([&] {
        const int size = SmallIcon ? smallIconSize : iconSize;
        auto icon = IconOf(Filename, size);
        if (FileType) *FileType = std::move(icon.typeName);
        return New<Picture>(
            Picture::Content{size, MaskColor, BackColor, detail::WithBackslashes(icon.path), std::move(icon.bytes)});
      });
}

void Root::SetToolbarStyle(const Ref<Object>& Dock, QBToolbarStyleEnum ToolbarStyle) const {
  Procedure(*this, "SetToolbarStyle", [&](auto& p) {
    p("Dock", Dock);
    p("ToolbarStyle", ToolbarStyle);
  }).Run([&] {
    Dock->SetMember("Redraw", false);
    const auto apply = [&](const DockLook& look) { Apply(look, Dock->Member("StyleManager").ToObject()); };
    switch (ToolbarStyle) {
      case ToolbarStyleOffice2003: apply({4, 0, 1}); break;
      case ToolbarStyleOffice2003NoThemes: apply({4, 0, 0}); break;
      case ToolbarStyleOfficeXP: apply({3, 4, 0}); break;
    }
    Dock->SetMember("Redraw", true);
  });
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
  std::array<char, 7> characters{};
  std::size_t position = 0;
  for (auto character = characters.begin(); character != characters.end() && position < WebColor.size(); ++character) {
    const auto codePoint = NextCodePoint(WebColor, position);
    *character = codePoint < 0x80 ? static_cast<char>(codePoint) : '?';
  }
  const auto channel = [&](std::size_t place) { return ChannelFromHexadecimal({&characters[place], 2}); };
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

}  // namespace quillbook
