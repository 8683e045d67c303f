// The file operations of the operating system, replaceable by a double.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quillbook {

/// A file being written. Dropping it without `Close` abandons the writing.
class FileWriter {
 public:
  FileWriter() = default;
  FileWriter(const FileWriter&) = delete;
  FileWriter& operator=(const FileWriter&) = delete;
  virtual ~FileWriter() = default;

  /// Appends bytes. Failure 61 (disk full), 57 or 70 with the name of the file.
  virtual void Write(std::string_view bytes) = 0;
  /// Finishes the file, which only now has all its bytes under its name. Failures as for `Write`; call it once.
  virtual void Close() = 0;
};

/// Holds a lock for as long as it lives.
class FileLock {
 public:
  FileLock() = default;
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;
  virtual ~FileLock() = default;
};

/// What is known of a path without opening it.
struct FileStatus {
  bool exists = false;
  bool isDirectory = false;
  /// The owner's write bit is off. Counts for everybody, also for root, who could write all the same.
  bool readOnly = false;
  std::uint64_t size = 0;
};

struct DirectoryEntry {
  std::string name;  ///< without its folder
  bool isDirectory = false;
};

/// Files by native path: UTF-8 bytes, "/" between names, relative ones against the working directory.
///
/// What fails raises a `Failure` whose description names the file: 53 no such file, 76 no such folder, 70 not allowed
/// or read-only, 75 a folder where a file is meant or the reverse, 61 disk full, 52 impossible name, 57 anything else
/// of the device.
class FileStore {
 public:
  FileStore() = default;
  FileStore(const FileStore&) = delete;
  FileStore& operator=(const FileStore&) = delete;
  virtual ~FileStore() = default;

  /// Follows links. What can't be looked at doesn't exist.
  [[nodiscard]] virtual FileStatus GetStatus(const std::string& path) const = 0;
  [[nodiscard]] virtual std::string ReadFile(const std::string& path) const = 0;
  /// Entries without "." and "..", in byte order of their names.
  [[nodiscard]] virtual std::vector<DirectoryEntry> ListDirectory(const std::string& path) const = 0;
  /// With all parents; an existing folder is no failure.
  virtual void CreateDirectories(const std::string& path) = 0;

  /// Creates the file or cuts it to nothing, and writes it in place.
  [[nodiscard]] virtual std::unique_ptr<FileWriter> CreateFile(const std::string& path) = 0;
  /// Writes a new version beside the file. `Close` flushes it to disk and puts it in the file's place in one step,
  /// keeping owner and mode; until then, and if it never comes, the file stays as it was. In a folder that takes no
  /// new files the file is written in place. `exclusive` keeps other exclusive writers out meanwhile: theirs fails
  /// with 70.
  [[nodiscard]] virtual std::unique_ptr<FileWriter> ReplaceFile(const std::string& path, bool exclusive) = 0;
  /// Creates an empty file for this user alone, `directory`/`prefix`<something new>`suffix`, and gives its path.
  [[nodiscard]] virtual std::string CreateUniqueFile(const std::string& directory, std::string_view prefix,
                                                     std::string_view suffix) = 0;

  virtual void RenameFile(const std::string& from, const std::string& to) = 0;
  virtual void RemoveFile(const std::string& path) = 0;
  /// Replaces what is at `to`, unless that is read-only. The copy is writable.
  virtual void CopyFile(const std::string& from, const std::string& to) = 0;
  /// Waits until nobody else holds the lock that this file stands for, here or in another process. Creates the file.
  [[nodiscard]] virtual std::unique_ptr<FileLock> WaitForLock(const std::string& path) = 0;
  /// True if another process holds a lock on the file or runs it.
  [[nodiscard]] virtual bool IsLocked(const std::string& path) const = 0;

  /// Writes a whole file in place.
  void WriteFile(const std::string& path, std::string_view bytes);
  /// Puts a whole new version in the file's place, as `ReplaceFile` does.
  void ReplaceFileWith(const std::string& path, std::string_view bytes);
};

}  // namespace quillbook
