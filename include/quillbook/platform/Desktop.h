// What the user's session offers: folders, name, viewers, clipboard formats.
#pragma once

#include <string>
#include <string_view>

namespace quillbook {

class Desktop {
 public:
  /// Result of `OpenWithViewer`. Callers compare with `NoViewer`.
  enum OpenResult : int { NoViewer = 31, Opened = 33 };
  static constexpr int DocumentsFolder = 5;

  Desktop() = default;
  Desktop(const Desktop&) = delete;
  Desktop& operator=(const Desktop&) = delete;
  virtual ~Desktop() = default;

  /// Native path of a folder by its number, without "/" at its end; empty for a number that isn't known.
  [[nodiscard]] virtual std::string SpecialFolder(int Id) const = 0;
  [[nodiscard]] virtual std::string UserName() const = 0;
  /// Native path without "/" at its end.
  [[nodiscard]] virtual std::string TemporaryFolder() const = 0;
  /// Hands a file (native path) or URL to the program that views it and doesn't wait for it. `NoViewer` if there is
  /// none.
  virtual int OpenWithViewer(const std::string& target) = 0;
  /// Starts a program and doesn't wait for it. `parameters` is a command line: parameters stand between blanks, and
  /// double quotes hold one together that has blanks of its own. `NoViewer` if there is no such program.
  virtual int StartProgram(const std::string& program, const std::string& parameters) = 0;
  /// The number of a clipboard format in this process: the same for the same name, ignoring case.
  [[nodiscard]] virtual int RegisterClipboardFormat(std::string_view Name) = 0;
};

}  // namespace quillbook
