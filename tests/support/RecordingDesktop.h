// A session without a desktop, which keeps what it is asked for.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "quillbook/base/Text.h"
#include "quillbook/platform/Desktop.h"

namespace quillbook::support {

class RecordingDesktop final : public Desktop {
 public:
  [[nodiscard]] std::string SpecialFolder(int) const override { return {}; }
  [[nodiscard]] std::string UserName() const override { return "user"; }
  [[nodiscard]] std::string TemporaryFolder() const override { return "/tmp"; }
  [[nodiscard]] std::vector<std::string> DataFolders() const override { return dataFolders; }
  [[nodiscard]] std::vector<std::string> Languages() const override { return languages; }
  [[nodiscard]] std::string IconTheme() const override { return iconTheme; }
  int OpenWithViewer(const std::string& target) override {
    asked = target;
    return result;
  }
  int StartProgram(const std::string& program, const std::string& parameters) override {
    asked = program + " " + parameters;
    return result;
  }
  [[nodiscard]] ProgramRun RunProgram(const std::string&, const std::vector<std::string>&, const std::string&,
                                      const std::function<bool()>&) override {
    return {};
  }
  [[nodiscard]] int RegisterClipboardFormat(std::string_view Name) override {
    for (std::size_t i = 0; i < formats.size(); ++i)
      if (EqualsIgnoringCase(formats[i], Name)) return firstFormat + static_cast<int>(i);
    formats.emplace_back(Name);
    return firstFormat + static_cast<int>(formats.size()) - 1;
  }
  [[nodiscard]] std::string ClipboardFormatName(int Number) const override {
    const auto index = static_cast<std::size_t>(Number - firstFormat);
    return index < formats.size() ? formats[index] : std::string();
  }
  bool SetClipboard(const ClipboardContent& content) override {
    if (clipboard) clipboard = content;
    return clipboard.has_value();
  }
  [[nodiscard]] ClipboardContent GetClipboard() override { return clipboard.value_or(ClipboardContent()); }

  static constexpr int firstFormat = 0xC100;
  int result = Opened;
  std::string asked;
  std::vector<std::string> dataFolders, languages;
  std::string iconTheme;
  std::vector<std::string> formats;
  std::optional<ClipboardContent> clipboard;  ///< nothing: there is none
};

}  // namespace quillbook::support
