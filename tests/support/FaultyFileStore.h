// A file store whose operations fail when a test says so.
#pragma once

#include <cstddef>
#include <limits>
#include <memory>
#include <string>
#include <utility>

#include "quillbook/base/Failure.h"
#include "quillbook/platform/LinuxFileStore.h"

namespace quillbook::support {

/// Works on the real disk but for the faults that are switched on.
class FaultyFileStore final : public FileStore {
 public:
  static constexpr std::size_t unlimited = std::numeric_limits<std::size_t>::max();

  /// Bytes that can still be written before the disk is full (failure 61). The fitting part of a write is written.
  std::size_t space = unlimited;
  /// Reading, opening for writing, or finishing a file fails with this number, if it isn't `None`.
  FailureNumber reading = FailureNumber::None;
  FailureNumber opening = FailureNumber::None;
  FailureNumber closing = FailureNumber::None;
  /// The file of this path is listed, but gone when it is read.
  std::string vanished;
  /// Copying or removing a file fails with this number, if it isn't `None`.
  FailureNumber copying = FailureNumber::None;
  FailureNumber removing = FailureNumber::None;

  [[nodiscard]] FileStatus GetStatus(const std::string& path) const override { return mDisk.GetStatus(path); }
  [[nodiscard]] std::string ReadFile(const std::string& path) const override {
    FailIf(reading, path);
    if (path == vanished) Fail(FailureNumber::FileNotFound, path);
    return mDisk.ReadFile(path);
  }
  [[nodiscard]] std::vector<DirectoryEntry> ListDirectory(const std::string& path) const override {
    ++listings;
    return mDisk.ListDirectory(path);
  }
  void CreateDirectories(const std::string& path) override { mDisk.CreateDirectories(path); }
  [[nodiscard]] std::unique_ptr<FileWriter> CreateFile(const std::string& path) override {
    FailIf(opening, path);
    return std::make_unique<Writer>(*this, mDisk.CreateFile(path), path);
  }
  [[nodiscard]] std::unique_ptr<FileWriter> ReplaceFile(const std::string& path, bool exclusive) override {
    FailIf(opening, path);
    return std::make_unique<Writer>(*this, mDisk.ReplaceFile(path, exclusive), path);
  }
  [[nodiscard]] std::string CreateUniqueFile(const std::string& directory, std::string_view prefix,
                                             std::string_view suffix) override {
    FailIf(opening, directory);
    return mDisk.CreateUniqueFile(directory, prefix, suffix);
  }
  void RenameFile(const std::string& from, const std::string& to) override { mDisk.RenameFile(from, to); }
  void RemoveFile(const std::string& path) override {
    FailIf(removing, path);
    mDisk.RemoveFile(path);
  }
  void CopyFile(const std::string& from, const std::string& to) override {
    FailIf(copying, to);
    FailIf(opening, to);
    if (GetStatus(from).size > space) Fail(FailureNumber::DiskFull, to);
    mDisk.CopyFile(from, to);
  }
  [[nodiscard]] std::unique_ptr<FileLock> WaitForLock(const std::string& path) override {
    return mDisk.WaitForLock(path);
  }
  [[nodiscard]] bool IsLocked(const std::string& path) const override { return mDisk.IsLocked(path); }

  mutable std::size_t listings = 0;  ///< how often a folder was listed

 private:
  class Writer final : public FileWriter {
   public:
    Writer(FaultyFileStore& store, std::unique_ptr<FileWriter> writer, std::string path)
        : mStore(store), mWriter(std::move(writer)), mPath(std::move(path)) {}
    void Write(std::string_view bytes) override {
      const auto fitting = bytes.substr(0, mStore.space);
      mWriter->Write(fitting);
      if (mStore.space != unlimited) mStore.space -= fitting.size();
      if (fitting.size() < bytes.size()) Fail(FailureNumber::DiskFull, mPath);
    }
    void Close() override {
      FailIf(mStore.closing, mPath);
      mWriter->Close();
    }

   private:
    FaultyFileStore& mStore;
    std::unique_ptr<FileWriter> mWriter;
    std::string mPath;
  };

  [[noreturn]] static void Fail(FailureNumber number, const std::string& path) {
    throw Failure(number, std::string(FailureText(number)) + ": '" + path + "'");
  }
  static void FailIf(FailureNumber number, const std::string& path) {
    if (number != FailureNumber::None) Fail(number, path);
  }

  LinuxFileStore mDisk;
};

}  // namespace quillbook::support
