// The file system of the machine, with faults and counts.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "quillbook/base/Failure.h"
#include "quillbook/platform/LinuxFileStore.h"

namespace quillbook::toy {

class FailingFiles final : public FileStore {
 public:
  bool Full = false;                 ///< writing takes half of the bytes and then fails with 61
  std::string Denied;                ///< creating a file with this name fails with 70
  std::vector<std::string> Created;  ///< names of files in the order of creating
  mutable int StatusCalls = 0;
  mutable int ReadCalls = 0;

  FileStatus GetStatus(const std::string& path) const override {
    ++StatusCalls;
    return mFiles.GetStatus(path);
  }
  std::string ReadFile(const std::string& path) const override {
    ++ReadCalls;
    return mFiles.ReadFile(path);
  }
  std::vector<DirectoryEntry> ListDirectory(const std::string& path) const override {
    return mFiles.ListDirectory(path);
  }
  void CreateDirectories(const std::string& path) override { mFiles.CreateDirectories(path); }
  std::unique_ptr<FileWriter> CreateFile(const std::string& path) override {
    const auto name = path.substr(path.rfind('/') + 1);
    if (name == Denied) throw Failure(FailureNumber::PermissionDenied, "No access to '" + path + "'");
    Created.push_back(name);
    auto writer = mFiles.CreateFile(path);
    if (Full) return std::make_unique<FullDisk>(std::move(writer), path);
    return writer;
  }
  std::unique_ptr<FileWriter> ReplaceFile(const std::string& path, bool exclusive) override {
    return mFiles.ReplaceFile(path, exclusive);
  }
  std::string CreateUniqueFile(const std::string& directory, std::string_view prefix,
                               std::string_view suffix) override {
    return mFiles.CreateUniqueFile(directory, prefix, suffix);
  }
  void RenameFile(const std::string& from, const std::string& to) override { mFiles.RenameFile(from, to); }
  void RemoveFile(const std::string& path) override { mFiles.RemoveFile(path); }
  void CopyFile(const std::string& from, const std::string& to) override { mFiles.CopyFile(from, to); }
  std::unique_ptr<FileLock> WaitForLock(const std::string& path) override { return mFiles.WaitForLock(path); }
  bool IsLocked(const std::string& path) const override { return mFiles.IsLocked(path); }

 private:
  class FullDisk final : public FileWriter {
   public:
    FullDisk(std::unique_ptr<FileWriter> writer, std::string path)
        : mWriter(std::move(writer)), mPath(std::move(path)) {}
    void Write(std::string_view bytes) override {
      mWriter->Write(bytes.substr(0, bytes.size() / 2));
      throw Failure(FailureNumber::DiskFull, "The disk is full; '" + mPath + "' could not be written");
    }
    void Close() override { mWriter->Close(); }

   private:
    std::unique_ptr<FileWriter> mWriter;
    std::string mPath;
  };

  LinuxFileStore mFiles;
};

}  // namespace quillbook::toy
