// Files of a POSIX system.
#pragma once

#include "quillbook/platform/FileStore.h"

namespace quillbook {

class LinuxFileStore final : public FileStore {
 public:
  [[nodiscard]] FileStatus GetStatus(const std::string& path) const override;
  [[nodiscard]] std::string ReadFile(const std::string& path) const override;
  [[nodiscard]] std::vector<DirectoryEntry> ListDirectory(const std::string& path) const override;
  void CreateDirectories(const std::string& path) override;
  [[nodiscard]] std::unique_ptr<FileWriter> CreateFile(const std::string& path) override;
  [[nodiscard]] std::unique_ptr<FileWriter> ReplaceFile(const std::string& path, bool exclusive) override;
  [[nodiscard]] std::string CreateUniqueFile(const std::string& directory, std::string_view prefix,
                                             std::string_view suffix) override;
  void RenameFile(const std::string& from, const std::string& to) override;
  void RemoveFile(const std::string& path) override;
  void CopyFile(const std::string& from, const std::string& to) override;
  [[nodiscard]] std::unique_ptr<FileLock> WaitForLock(const std::string& path) override;
  [[nodiscard]] bool IsLocked(const std::string& path) const override;
};

}  // namespace quillbook
