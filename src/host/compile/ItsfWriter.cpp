#include "host/compile/ItsfWriter.h"

#include "host/compile/Bytes.h"
#include "host/compile/Directory.h"
#include "quillbook/base/Text.h"

namespace quillbook::compile {

namespace {

constexpr std::string_view FileGuid1 = "7C01FD10-7BAA-11D0-9E0C-00A0C922E6EC";
constexpr std::string_view FileGuid2 = "7C01FD11-7BAA-11D0-9E0C-00A0C922E6EC";
constexpr std::string_view DirectoryGuid = "5D02926A-212E-11D0-9DF9-00A0C922E6EC";
constexpr std::string_view TransformGuid = "7FC28940-9D31-11D0-9B27-00A0C91E9C7C";
constexpr std::size_t FileHeaderSize = 0x60;
constexpr std::size_t SizeSection = 0x18;
constexpr std::size_t DirectoryHeaderSize = 0x54;
constexpr std::uint32_t NoChunk = 0xFFFFFFFF;
constexpr DirectoryFormat Format{0x1000, 0x14, 8};

std::string ListingChunks(const std::vector<DirectoryChunk>& listing) {
  std::string bytes;
  for (std::size_t i = 0; i < listing.size(); ++i) {
    std::string header = "PMGL";
    PutDword(header, 0);
    PutDword(header, 0);
    PutDword(header, i == 0 ? NoChunk : i - 1);
    PutDword(header, i + 1 == listing.size() ? NoChunk : i + 1);
    bytes += FinishChunk(listing[i], std::move(header), Format);
  }
  return bytes;
}

struct DirectoryImage {
  std::string chunks;
  std::size_t count = 0;
  std::size_t listingCount = 0;
  std::size_t depth = 1;
  std::uint32_t root = NoChunk;
};

DirectoryImage BuildDirectory(const std::vector<StorageEntry>& entries) {
  DirectoryImage image;
  auto level = BuildListing(entries, Format);
  image.chunks = ListingChunks(level);
  image.count = image.listingCount = level.size();
  std::size_t firstOfLevel = 0;
  while (level.size() > 1) {
    const auto index = BuildIndex(level, firstOfLevel, Format);
    firstOfLevel = image.count;
    for (const auto& chunk : index) {
      std::string header = "PMGI";
      PutDword(header, 0);
      image.chunks += FinishChunk(chunk, std::move(header), Format);
    }
    image.count += index.size();
    image.root = static_cast<std::uint32_t>(image.count - 1);
    ++image.depth;
    level = index;
  }
  return image;
}

std::string DirectoryHeader(const DirectoryImage& image, std::uint32_t localeId) {
  std::string header = "ITSP";
  PutDword(header, 1);
  PutDword(header, DirectoryHeaderSize);
  PutDword(header, 10);
  PutDword(header, Format.chunkSize);
  PutDword(header, 2);  // density of the quick references
  PutDword(header, image.depth);
  PutDword(header, image.root);
  PutDword(header, 0);  // first listing chunk
  PutDword(header, image.listingCount - 1);
  PutDword(header, NoChunk);
  PutDword(header, image.count);
  PutDword(header, localeId);
  header += GuidBytes(DirectoryGuid);
  PutDword(header, DirectoryHeaderSize);
  for (int i = 0; i < 3; ++i) PutDword(header, NoChunk);
  return header;
}

}  // namespace

StorageTransform ItsfTransform() {
  // The list holds the first 38 bytes of the GUID's text in UTF-16: its length was once counted in characters.
  return {TransformGuid, ToUtf16Bytes("{" + std::string(TransformGuid) + "}").substr(0, 38)};
}

void WriteItsfFront(ByteSink& output, const StorageWriter& storage, std::uint32_t timeStamp, std::uint32_t localeId) {
  const auto directory = BuildDirectory(storage.Entries());
  const auto directorySize = DirectoryHeaderSize + directory.chunks.size();
  const auto contentOffset = FileHeaderSize + SizeSection + directorySize;
  std::string front = "ITSF";
  PutDword(front, 3);
  PutDword(front, FileHeaderSize);
  PutDword(front, 1);
  for (int shift = 24; shift >= 0; shift -= 8) front += static_cast<char>(timeStamp >> shift);
  PutDword(front, localeId);
  front += GuidBytes(FileGuid1) + GuidBytes(FileGuid2);
  PutQword(front, FileHeaderSize);
  PutQword(front, SizeSection);
  PutQword(front, FileHeaderSize + SizeSection);
  PutQword(front, directorySize);
  PutQword(front, contentOffset);
  PutDword(front, 0x1FE);
  PutDword(front, 0);
  PutQword(front, contentOffset + storage.ContentSize());
  PutQword(front, 0);
  front += DirectoryHeader(directory, localeId);
  output.Write(front);
  output.Write(directory.chunks);
}

}  // namespace quillbook::compile
