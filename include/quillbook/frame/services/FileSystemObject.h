// A file path and the file behind it.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "quillbook/base/Object.h"

namespace quillbook {

class FileWriter;

/// One path, in Windows form: "\home\ann\a.qbp" stands for /home/ann/a.qbp. Both separators are accepted; a drive
/// letter stands for the folder that the current user's registry value of its name under
/// "Software\Corvane\Quillbook2\Drives" gives, and without one for nothing that exists. Only at the disk the path
/// becomes a native one: the exact name if it is there, else the first that is equal ignoring case.
///
/// The object can hold one open file. Failures name the file in their description; their numbers are those of
/// `FileStore`.
class FileSystemObject final : public Object {
 public:
  /// Numbers that `Open` takes.
  static constexpr int ModeCreate = 4;
  static constexpr int AccessRead = 1;
  static constexpr int AccessWrite = 2;
  static constexpr int LockShared = 1;
  static constexpr int LockWriters = 3;

  FileSystemObject();
  explicit FileSystemObject(std::string_view FullName);
  ~FileSystemObject() override;

  /// The whole path; with a base in `RelativeTo` the absolute path against that base.
  [[nodiscard]] std::string FullName() const;
  void SetFullName(std::string_view FullName);
  /// The path as it was given, without regard to a base.
  [[nodiscard]] const std::string& GivenName() const noexcept { return mFullName; }
  /// The folder alone, ending in "\"; empty for a name without folder. Writing it makes the object stand for a folder.
  [[nodiscard]] std::string Path() const;
  void SetPath(std::string_view Path);
  [[nodiscard]] std::string BaseName() const;
  void SetBaseName(std::string_view BaseName);
  /// Without the point; empty if there is none.
  [[nodiscard]] std::string Extension() const;
  void SetExtension(std::string_view Extension);
  /// Base name, point and extension.
  [[nodiscard]] std::string NameWithExtension() const;

  /// The base for relative names, or nothing. Held, not copied: a later change of it counts.
  [[nodiscard]] const Ref<FileSystemObject>& RelativeTo() const noexcept { return mRelativeTo; }
  void SetRelativeTo(Ref<FileSystemObject> Base) { mRelativeTo = std::move(Base); }
  /// The path relative to the base; without a base, or on another drive, the whole path.
  [[nodiscard]] std::string RelativeName() const;
  /// There are no short names here: the whole path.
  [[nodiscard]] std::string LongName() const { return FullName(); }

  [[nodiscard]] bool FileExists() const;
  /// Of the folder of the path.
  [[nodiscard]] bool DirectoryExists() const;
  /// The owner's write bit of the file is off.
  [[nodiscard]] bool ReadOnly() const;
  /// Another process holds the file.
  [[nodiscard]] bool Locked() const;
  /// Creates the folder of the path with its parents; an existing one is no failure.
  void CreateDirectory();

  /// The whole file as text, by its byte order mark, else the encoding in its XML declaration, else UTF-8 if it is
  /// valid, else Windows-1252.
  [[nodiscard]] std::string ReadAll() const;
  /// Opens for writing, replacing the file. `LockWriters` keeps other such writers out and writes a new version that
  /// takes the file's place only on `Close`; `LockShared` writes in place. A read-only file fails with 70, also for
  /// root. `AccessRead` only tests that the file can be read. Fails with 55 while a file is open, with 5 for any other
  /// number.
  void Open(int Mode, int Access, int Lock, int RecordLength);
  /// False: `WriteLine` writes one byte a character, characters up to U+00FF as that byte, others as Windows-1252 has
  /// them, or "?". True, the default: UTF-8.
  void SetUnicode(bool Unicode) noexcept { mUnicode = Unicode; }
  /// From now on what is written is kept in memory, for `TakeText`, until `Close`. Fails with 55 while a file is open.
  void OpenInMemory();
  [[nodiscard]] bool IsOpen() const noexcept { return mWriter || mText; }
  /// What was written to memory since the last call.
  [[nodiscard]] std::string TakeText();
  /// Writes the text and a line break (LF). Failure 52 if no file is open.
  void WriteLine(std::string_view Text);
  /// Writes the text alone.
  void WriteText(std::string_view Text);
  /// Appends a line, as `WriteLine`.
  void Write(std::string_view Text) { WriteLine(Text); }
  /// Finishes the open file, or forgets what is in memory; nothing if none is open.
  void Close();
  /// Removes the file. 53 if there is none, 70 if it is read-only.
  void Delete();
  /// Copies the file over `Target`, whose folder must exist. 70 if `Target` is read-only.
  void CopyTo(const FileSystemObject& Target) const;

  /// The files, not folders, of the folder whose names match a pattern of "*" and "?", ignoring case; in the order of
  /// their names.
  [[nodiscard]] std::vector<Ref<FileSystemObject>> FindFiles(std::string_view Pattern) const;

  /// The path as the system has it, letter case as on disk. A path on an unknown drive keeps its drive ("C:/a.txt")
  /// and is for messages only.
  [[nodiscard]] std::string NativePath() const;

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 private:
  [[nodiscard]] std::string ExistingFile() const;

  std::string mFullName;
  Ref<FileSystemObject> mRelativeTo;
  bool mUnicode = true;
  std::unique_ptr<FileWriter> mWriter;
  std::optional<std::string> mText;  ///< of a file in memory
};

/// While one lives on this thread, looking for names ignoring case reads every folder only once. For stretches of
/// work in which nobody else adds files, such as a build.
class [[nodiscard]] DirectoryCacheScope {
 public:
  DirectoryCacheScope();
  DirectoryCacheScope(const DirectoryCacheScope&) = delete;
  DirectoryCacheScope& operator=(const DirectoryCacheScope&) = delete;
  ~DirectoryCacheScope();
};

}  // namespace quillbook
