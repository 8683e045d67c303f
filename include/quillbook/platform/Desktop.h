// What the user's session offers: folders, name, looks, viewers, the clipboard.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace quillbook {

/// What stands on a clipboard: bytes by the name of their format.
using ClipboardContent = std::map<std::string, std::string>;

class Desktop {
 public:
  /// Result of `OpenWithViewer`. Callers compare with `NoViewer`.
  enum OpenResult : int { NoViewer = 31, Opened = 33 };
  static constexpr int DocumentsFolder = 5;
  /// How the run of a program went.
  struct ProgramRun {
    enum class End {
      Finished,
      NotFound,
      NotRunnable,  ///< no program of this system, or not allowed to run
      Stopped,
    };
    End end = End::NotFound;
    int exitCode = 0;    ///< of a program that finished; 128 and the signal's number for one that was killed
    std::string output;  ///< the bytes that it printed as results and errors, the first megabytes of them
  };

  Desktop() = default;
  Desktop(const Desktop&) = delete;
  Desktop& operator=(const Desktop&) = delete;
  virtual ~Desktop() = default;

  /// Native path of a folder by its number, without "/" at its end; empty for a number that isn't known.
  [[nodiscard]] virtual std::string SpecialFolder(int Id) const = 0;
  [[nodiscard]] virtual std::string UserName() const = 0;
  /// Native path without "/" at its end.
  [[nodiscard]] virtual std::string TemporaryFolder() const = 0;
  /// Folders with data that programs share, such as icons: native paths without "/" at their ends, the user's own
  /// first. They needn't be there.
  [[nodiscard]] virtual std::vector<std::string> DataFolders() const = 0;
  /// Locale names such as "sr_RS@latin", "sr_RS", "sr@latin", "sr" in the order in which the user wants to read them;
  /// empty if nothing else than English is asked for.
  [[nodiscard]] virtual std::vector<std::string> Languages() const = 0;
  /// Name of the icon theme that the user chose; empty if that isn't known.
  [[nodiscard]] virtual std::string IconTheme() const = 0;
  /// Hands a file (native path) or URL to the program that views it and doesn't wait for it. `NoViewer` if there is
  /// none.
  virtual int OpenWithViewer(const std::string& target) = 0;
  /// Starts a program and doesn't wait for it. `parameters` is a command line: parameters stand between blanks, and
  /// double quotes hold one together that has blanks of its own. `NoViewer` if there is no such program.
  virtual int StartProgram(const std::string& program, const std::string& parameters) = 0;
  /// Runs a program to its end, in `folder` (native path), without a shell between. Now and then it asks `goOn`; False
  /// stops the program. `program` is a path or a name to look for.
  [[nodiscard]] virtual ProgramRun RunProgram(const std::string& program, const std::vector<std::string>& parameters,
                                              const std::string& folder, const std::function<bool()>& goOn) = 0;

  /// The number of a clipboard format in this process, 0xC000 to 0xFFFF: the same for the same name, ignoring case. A
  /// name ends at its first NUL. 0 for an empty name, and when all numbers are taken.
  [[nodiscard]] virtual int RegisterClipboardFormat(std::string_view Name) = 0;
  /// The name that a number stands for; empty if it was given to none.
  [[nodiscard]] virtual std::string ClipboardFormatName(int Number) const = 0;
  /// Puts `content` in the place of what stands on the session's clipboard, for this and other programs. False where
  /// there is no clipboard, or where it can't be reached.
  virtual bool SetClipboard(const ClipboardContent& content) = 0;
  /// What `SetClipboard` put there, in this process or another; empty if it is something else or can't be reached.
  [[nodiscard]] virtual ClipboardContent GetClipboard() = 0;
};

}  // namespace quillbook
