// The ways of writing a file.
#pragma once

#include <string>

#include "platform/Descriptor.h"
#include "quillbook/platform/FileStore.h"

namespace quillbook::detail {

/// Writes all bytes. Failures name `path`.
void WriteAll(const Descriptor& file, std::string_view bytes, const std::string& path);
/// Opens a file that isn't there yet, `folder`/`prefix`<something new>`suffix`, and gives its path in `path`. Not open,
/// with `errno`, if the system refuses.
[[nodiscard]] Descriptor OpenNewFile(const std::string& folder, std::string_view prefix, std::string_view suffix,
                                     unsigned mode, std::string& path);
/// The prefix of the names under which new versions of a file are written.
[[nodiscard]] std::string TemporaryPrefix(const std::string& path);
/// Gives a new version of a file the old one's owner and mode.
void KeepOwnerAndMode(const Descriptor& file, const std::string& old);

/// Writes straight into the file.
class DirectWriter final : public FileWriter {
 public:
  DirectWriter(Descriptor file, std::string path) : mFile(std::move(file)), mPath(std::move(path)) {}
  void Write(std::string_view bytes) override { WriteAll(mFile, bytes, mPath); }
  void Close() override;

 private:
  Descriptor mFile;
  std::string mPath;
};

/// Whether bytes must be on the disk, and not only with the system, before they take a file's place.
enum class Flush { No, Yes };

/// Writes a new version beside the file and puts it in its place at the end.
class ReplacingWriter final : public FileWriter {
 public:
  /// `lock` is held until the new version is in place.
  ReplacingWriter(Descriptor file, std::string temporary, std::string path, Descriptor lock, Flush flush)
      : mFile(std::move(file)),
        mTemporary(std::move(temporary)),
        mPath(std::move(path)),
        mLock(std::move(lock)),
        mFlush(flush) {}
  ~ReplacingWriter() override;
  void Write(std::string_view bytes) override { WriteAll(mFile, bytes, mPath); }
  void Close() override;

 private:
  Descriptor mFile;
  std::string mTemporary;
  std::string mPath;
  Descriptor mLock;
  Flush mFlush;
};

/// Keeps the bytes until the end and then writes them over the file: for a folder that takes no new files. The open
/// descriptor is the proof that the file can be written.
class CollectingWriter final : public FileWriter {
 public:
  CollectingWriter(Descriptor file, std::string path, Descriptor lock)
      : mFile(std::move(file)), mPath(std::move(path)), mLock(std::move(lock)) {}
  void Write(std::string_view bytes) override { mBytes += bytes; }
  void Close() override;

 private:
  Descriptor mFile;
  std::string mPath;
  Descriptor mLock;
  std::string mBytes;
};

}  // namespace quillbook::detail
