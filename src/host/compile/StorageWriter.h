// The content of a compiled help container: a stored and a compressed section, shared by both formats.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/compile/ByteSink.h"
#include "host/compile/LzxEncoder.h"

namespace quillbook::compile {

/// One name in a container's directory.
struct StorageEntry {
  std::string name;           ///< UTF-8; files begin with "/", streams of the container with "::"
  std::uint32_t section = 0;  ///< 0 stored, 1 compressed
  std::uint64_t offset = 0;   ///< within the section
  std::uint64_t length = 0;
};

/// How a format names the transformation of its compressed section.
struct StorageTransform {
  std::string_view guid;  ///< as text, without braces
  std::string list;       ///< content of "Transform/List"
};

/// Writes files one after the other into a content stream. Compressed bytes go to the sink as they arise; memory
/// holds one reset interval, the directory and the small stored streams.
class StorageWriter {
 public:
  explicit StorageWriter(ByteSink& content) : mContent(content) {}

  /// Begins a compressed file; `Append` as often as needed adds to it.
  void BeginCompressed(std::string_view name);
  void Append(std::string_view bytes);
  void AddCompressed(std::string_view name, std::string_view bytes) {
    BeginCompressed(name);
    Append(bytes);
  }
  /// A stored stream. It is kept until `Finish`, so it should be small.
  void AddStored(std::string_view name, std::string bytes);

  /// Ends the compressed section and writes the stored streams and the container's own ones. Call it once.
  void Finish(const StorageTransform& transform);

  /// In the order of directories: by name, ignoring the case of ASCII letters. After `Finish`.
  [[nodiscard]] const std::vector<StorageEntry>& Entries() const noexcept { return mEntries; }
  /// Bytes given to the sink.
  [[nodiscard]] std::uint64_t ContentSize() const noexcept { return mContentSize; }

 private:
  void EncodePending();
  void FinishCompressed();
  void AddControlStreams(const StorageTransform& transform);
  void WriteContent(std::string_view bytes);
  [[nodiscard]] std::string ResetTable() const;

  ByteSink& mContent;
  LzxEncoder mEncoder;
  std::string mPending;  ///< input of the current interval
  std::string mEncoded;
  std::vector<std::size_t> mFrameStarts;
  std::vector<std::uint64_t> mFrameOffsets;  ///< of each frame in the compressed stream
  std::vector<StorageEntry> mEntries;
  std::vector<std::pair<std::string, std::string>> mStored;
  std::uint64_t mUncompressed = 0;
  std::uint64_t mCompressed = 0;
  std::uint64_t mContentSize = 0;
};

}  // namespace quillbook::compile
