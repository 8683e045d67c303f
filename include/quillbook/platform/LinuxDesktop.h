// The session of a Linux user.
#pragma once

#include <string>

#include "quillbook/platform/Desktop.h"

namespace quillbook {

class LinuxDesktop final : public Desktop {
 public:
  /// Documents come from the XDG user directories, else `~/Documents` if it is there, else the home folder.
  [[nodiscard]] std::string SpecialFolder(int Id) const override;
  [[nodiscard]] std::string UserName() const override;
  [[nodiscard]] std::string TemporaryFolder() const override;
  int OpenWithViewer(const std::string& target) override;
  [[nodiscard]] int RegisterClipboardFormat(std::string_view Name) override;

  /// `$HOME`, or the home folder of the account.
  [[nodiscard]] static std::string HomeFolder();
};

}  // namespace quillbook
