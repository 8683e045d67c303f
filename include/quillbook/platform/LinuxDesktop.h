// The session of a Linux user.
#pragma once

#include <chrono>
#include <string>
#include <utility>
#include <vector>

#include "quillbook/platform/Desktop.h"

namespace quillbook {

class LinuxDesktop final : public Desktop {
 public:
  /// `opener` is the program that opens files and URLs: a name to look for in `$PATH`, or a path. `patience` is how
  /// long a program that reaches the clipboard may take.
  explicit LinuxDesktop(std::string opener = "xdg-open", std::chrono::milliseconds patience = std::chrono::seconds(3))
      : mOpener(std::move(opener)), mPatience(patience) {}

  /// Documents come from the XDG user directories, else `~/Documents` if it is there, else the home folder.
  [[nodiscard]] std::string SpecialFolder(int Id) const override;
  [[nodiscard]] std::string UserName() const override;
  [[nodiscard]] std::string TemporaryFolder() const override;
  /// `$XDG_DATA_HOME`, then those of `$XDG_DATA_DIRS`, with their usual values where they aren't set.
  [[nodiscard]] std::vector<std::string> DataFolders() const override;
  /// From `$LANGUAGE`, `$LC_ALL`, `$LC_MESSAGES` and `$LANG`, as the C library takes them.
  [[nodiscard]] std::vector<std::string> Languages() const override;
  /// From the settings files of GTK 4, GTK 3 and KDE, in this order.
  [[nodiscard]] std::string IconTheme() const override;
  int OpenWithViewer(const std::string& target) override;
  int StartProgram(const std::string& program, const std::string& parameters) override;
  [[nodiscard]] ProgramRun RunProgram(const std::string& program, const std::vector<std::string>& parameters,
                                      const std::string& folder, const std::function<bool()>& goOn) override;
  [[nodiscard]] int RegisterClipboardFormat(std::string_view Name) override;
  [[nodiscard]] std::string ClipboardFormatName(int Number) const override;
  /// Through `wl-copy` where `$WAYLAND_DISPLAY` is set, else through `xclip` where `$DISPLAY` is; they keep the content
  /// when this process has ended. Under the MIME type "application/x-quillbook-data".
  bool SetClipboard(const ClipboardContent& content) override;
  /// Through `wl-paste` or `xclip`.
  [[nodiscard]] ClipboardContent GetClipboard() override;

  /// `$HOME`, or the home folder of the account.
  [[nodiscard]] static std::string HomeFolder();
  /// `$XDG_CONFIG_HOME`, or `.config` in the home folder.
  [[nodiscard]] static std::string ConfigurationFolder();

 private:
  std::string mOpener;
  std::chrono::milliseconds mPatience;
};

}  // namespace quillbook
