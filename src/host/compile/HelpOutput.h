// One help file while it arises.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/compile/FileBytes.h"
#include "host/compile/StorageReader.h"
#include "host/compile/StorageWriter.h"
#include "quillbook/host/CompileMessage.h"

namespace quillbook::compile {

/// A quick number for the content of a file; different for files that differ by an accident.
[[nodiscard]] std::uint64_t HashOfBytes(std::string_view bytes) noexcept;

/// Takes files, puts the container together beside the output, compares it with what went in, and only then gives it
/// the output's name. Until then an old output stays.
class HelpOutput {
 public:
  explicit HelpOutput(const std::string& path);

  /// Where the container arises: the folder of the output.
  [[nodiscard]] std::string WorkFolder() const;
  /// A file of the project, "/name".
  void AddFile(const std::string& name, std::string_view bytes);
  /// A file that the compiler makes itself.
  void AddTable(std::string_view name, std::string_view bytes) { mStorage.AddCompressed(name, bytes); }
  /// Folders are entries without content; `paths` are the files' without "/" in front.
  void AddFolders(const std::vector<std::string>& paths);
  [[nodiscard]] StorageWriter& Storage() noexcept { return mStorage; }

  /// Ends the container. Call it once.
  void Finish(StorageReader::Format format, std::uint32_t timeStamp, std::uint32_t localeId);

  // After `Finish`.
  [[nodiscard]] const ByteSource& Bytes() const noexcept { return mBytes; }
  [[nodiscard]] std::uint64_t Size() const { return mBytes.Size(); }
  /// Every file that doesn't come back byte for byte is an error.
  void CheckFiles(const StorageReader& reader, MessageList& messages) const;
  void Publish() const;

 private:
  struct File {
    std::string name;
    std::uint64_t size = 0;
    std::uint64_t hash = 0;
  };
  /// Header and directory, which are known last and stand first.
  class Front final : public ByteSink, public ByteSource {
   public:
    void Write(std::string_view bytes) override { mBytes.append(bytes); }
    [[nodiscard]] std::uint64_t Size() const override { return mBytes.size(); }
    [[nodiscard]] std::string Read(std::uint64_t offset, std::size_t count) const override {
      return MemorySource(mBytes).Read(offset, count);
    }

   private:
    std::string mBytes;
  };

  std::string mPath;
  SpoolFile mSpool;
  StorageWriter mStorage{mSpool};
  Front mFront;
  JoinedSource mBytes{mFront, mSpool};
  std::vector<File> mFiles;
};

/// The time stamp of a reproducible build: that of SOURCE_DATE_EPOCH, else 0.
[[nodiscard]] std::uint32_t TimeStampOfEnvironment();

}  // namespace quillbook::compile
