#include "host/compile/Directory.h"

#include "host/compile/Bytes.h"
#include "quillbook/base/Failure.h"

namespace quillbook::compile {

namespace {

constexpr std::size_t Density = 2;
constexpr std::size_t EntriesPerReference = 1 + (1U << Density);

std::string ListingEntry(const StorageEntry& entry) {
  std::string bytes;
  PutEncInt(bytes, entry.name.size());
  bytes += entry.name;
  PutEncInt(bytes, entry.section);
  PutEncInt(bytes, entry.offset);
  PutEncInt(bytes, entry.length);
  return bytes;
}

/// Fills chunks in order, each as far as its entries and their quick references fit.
class ChunkFiller {
 public:
  ChunkFiller(std::size_t room, std::vector<DirectoryChunk>& chunks) : mRoom(room), mChunks(chunks) {}

  void Add(const std::string& name, const std::string& entry) {
    if (mChunks.empty() || !Fits(mChunks.back(), entry)) mChunks.emplace_back();
    auto& chunk = mChunks.back();
    if (!Fits(chunk, entry))
      throw Failure(FailureNumber::BadFileName, "The name '" + name + "' is too long for a compiled help file");
    if (chunk.count == 0) chunk.firstName = name;
    if (chunk.count > 0 && chunk.count % EntriesPerReference == 0)
      chunk.quickReferences.push_back(static_cast<std::uint16_t>(chunk.entries.size()));
    chunk.entries += entry;
    ++chunk.count;
  }

 private:
  [[nodiscard]] bool Fits(const DirectoryChunk& chunk, const std::string& entry) const {
    const auto references = chunk.count / EntriesPerReference;
    return chunk.entries.size() + entry.size() + 2 * (references + 1) <= mRoom;
  }

  std::size_t mRoom;
  std::vector<DirectoryChunk>& mChunks;
};

}  // namespace

std::vector<DirectoryChunk> BuildListing(const std::vector<StorageEntry>& entries, const DirectoryFormat& format) {
  std::vector<DirectoryChunk> chunks;
  ChunkFiller filler(format.chunkSize - format.listingHeader, chunks);
  for (const auto& entry : entries) filler.Add(entry.name, ListingEntry(entry));
  return chunks;
}

std::vector<DirectoryChunk> BuildIndex(const std::vector<DirectoryChunk>& below, std::uint64_t firstNumber,
                                       const DirectoryFormat& format) {
  std::vector<DirectoryChunk> chunks;
  ChunkFiller filler(format.chunkSize - format.indexHeader, chunks);
  for (const auto& chunk : below) {
    std::string entry;
    PutEncInt(entry, chunk.firstName.size());
    entry += chunk.firstName;
    PutEncInt(entry, firstNumber++);
    filler.Add(chunk.firstName, entry);
  }
  return chunks;
}

std::string FinishChunk(const DirectoryChunk& chunk, std::string header, const DirectoryFormat& format) {
  const auto used = header.size() + chunk.entries.size();
  SetLittleEndian<4>(header, 4, format.chunkSize - used);
  std::string bytes = std::move(header);
  bytes.reserve(format.chunkSize);
  bytes += chunk.entries;
  bytes.resize(format.chunkSize - 2 - 2 * chunk.quickReferences.size());
  for (auto i = chunk.quickReferences.size(); i-- > 0;) PutWord(bytes, chunk.quickReferences[i]);
  PutWord(bytes, chunk.count);
  return bytes;
}

}  // namespace quillbook::compile
