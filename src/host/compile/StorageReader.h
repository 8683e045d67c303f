// Reads the containers of compiled help, of this system's making and of others'.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/compile/ByteSink.h"
#include "host/compile/StorageWriter.h"

namespace quillbook::compile {

/// Directory and content of a container. Made for hostile input: every size and offset is checked before use, memory
/// stays bounded by the directory and one reset interval, and no loop follows a chain that the file makes up.
class StorageReader {
 public:
  enum class Format { HtmlHelp1, Help2 };

  /// Reads header and directory. Failure 5 with a description of what is wrong for anything that is no container.
  explicit StorageReader(const ByteSource& source);
  ~StorageReader();
  StorageReader(const StorageReader&) = delete;
  StorageReader& operator=(const StorageReader&) = delete;

  [[nodiscard]] Format GetFormat() const noexcept;
  /// Locale identifier and time stamp of the header; for HTML Help 1.x only, else 0.
  [[nodiscard]] std::uint32_t LocaleId() const noexcept;
  [[nodiscard]] std::uint32_t TimeStamp() const noexcept;
  /// All names in the order of the directory, the container's own streams too.
  [[nodiscard]] const std::vector<StorageEntry>& Entries() const noexcept;
  /// Ignores the case of ASCII letters; null if there is no such name.
  [[nodiscard]] const StorageEntry* Find(std::string_view name) const;
  /// Length of the compressed section before compression; 0 if there is none.
  [[nodiscard]] std::uint64_t UncompressedLength() const noexcept;
  /// What is odd about the directory, in words, without making it unreadable.
  [[nodiscard]] const std::vector<std::string>& Problems() const noexcept;

  /// Gives a file's bytes in pieces of at most one reset interval. Failure 5 where the file is damaged.
  void Read(const StorageEntry& entry, const std::function<void(std::string_view)>& piece) const;
  /// A whole file; failure 5 if it is longer than `limit`.
  [[nodiscard]] std::string ReadAll(const StorageEntry& entry, std::uint64_t limit = 64U << 20) const;

 private:
  struct State;
  std::unique_ptr<State> mState;
};

}  // namespace quillbook::compile
