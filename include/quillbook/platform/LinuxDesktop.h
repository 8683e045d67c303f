// The session of a Linux user.
#pragma once

#include <string>
#include <utility>

#include "quillbook/platform/Desktop.h"

namespace quillbook {

class LinuxDesktop final : public Desktop {
 public:
  /// `opener` is the program that opens files and URLs: a name to look for in `$PATH`, or a path.
  explicit LinuxDesktop(std::string opener = "xdg-open") : mOpener(std::move(opener)) {}

  /// Documents come from the XDG user directories, else `~/Documents` if it is there, else the home folder.
  [[nodiscard]] std::string SpecialFolder(int Id) const override;
  [[nodiscard]] std::string UserName() const override;
  [[nodiscard]] std::string TemporaryFolder() const override;
  int OpenWithViewer(const std::string& target) override;
  int StartProgram(const std::string& program, const std::string& parameters) override;
  [[nodiscard]] int RegisterClipboardFormat(std::string_view Name) override;

  /// `$HOME`, or the home folder of the account.
  [[nodiscard]] static std::string HomeFolder();
  /// `$XDG_CONFIG_HOME`, or `.config` in the home folder.
  [[nodiscard]] static std::string ConfigurationFolder();

 private:
  std::string mOpener;
};

}  // namespace quillbook
