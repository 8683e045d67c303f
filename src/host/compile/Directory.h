// The chunks of a container's directory, shared by both formats.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/compile/StorageWriter.h"

namespace quillbook::compile {

/// How a format builds its chunks.
struct DirectoryFormat {
  std::size_t chunkSize = 0x1000;
  std::size_t listingHeader = 0x14;  ///< bytes before the entries of a listing chunk
  std::size_t indexHeader = 8;       ///< bytes before the entries of an index chunk
};

/// A chunk's entries in their stored form, before the header of the format is put in front.
struct DirectoryChunk {
  std::string entries;
  std::string firstName;
  std::size_t count = 0;
  std::vector<std::uint16_t> quickReferences;  ///< offsets of every fifth entry
};

/// Distributes entries over listing chunks. A name too long for a chunk is failure 52.
[[nodiscard]] std::vector<DirectoryChunk> BuildListing(const std::vector<StorageEntry>& entries,
                                                       const DirectoryFormat& format);
/// One level of index over chunks numbered from `firstNumber`.
[[nodiscard]] std::vector<DirectoryChunk> BuildIndex(const std::vector<DirectoryChunk>& below,
                                                     std::uint64_t firstNumber, const DirectoryFormat& format);
/// Puts header, entries, gap and quick references together to one chunk. The header's second DWORD gets the number
/// of bytes behind the entries.
[[nodiscard]] std::string FinishChunk(const DirectoryChunk& chunk, std::string header, const DirectoryFormat& format);

}  // namespace quillbook::compile
