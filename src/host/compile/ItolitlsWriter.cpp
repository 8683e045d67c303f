#include "host/compile/ItolitlsWriter.h"

#include "host/compile/Bytes.h"
#include "host/compile/Directory.h"

namespace quillbook::compile {

namespace {

constexpr std::string_view FileGuid = "0A9007C1-4076-11D3-8789-0000F8105754";
constexpr std::string_view Section3Guid = "0A9007C3-4076-11D3-8789-0000F8105754";
constexpr std::string_view Section4Guid = "0A9007C4-4076-11D3-8789-0000F8105754";
constexpr std::string_view TransformGuid = "0A9007C6-4076-11D3-8789-0000F8105754";
constexpr std::uint64_t None = ~std::uint64_t{0};
constexpr std::size_t ListingChunkSize = 0x2000;
constexpr std::size_t IndexChunkSize = 0x200;
constexpr std::size_t ListingLimit = 0x100000;
constexpr std::size_t IndexLimit = 0x20000;
constexpr std::size_t HeaderSize = 0x28 + 5 * 16;
constexpr std::size_t PostHeaderSize = 0xE8;
constexpr DirectoryFormat ListingFormat{ListingChunkSize, 0x30, 0x10};
constexpr DirectoryFormat IndexFormat{IndexChunkSize, 0x30, 0x10};

struct DirectoryImage {
  std::string chunks;
  std::size_t count = 0;
  std::size_t listingCount = 0;
  std::size_t depth = 1;
  std::uint64_t root = None;
  std::uint64_t entries = 0;
};

std::string ListingHeader(std::size_t number, std::size_t count, std::uint64_t firstEntry) {
  std::string header = "AOLL";
  PutDword(header, 0);
  PutQword(header, number);
  PutQword(header, number == 0 ? None : number - 1);
  PutQword(header, number + 1 == count ? None : number + 1);
  PutQword(header, firstEntry);
  PutDword(header, 1);
  PutDword(header, 0);
  return header;
}

DirectoryImage BuildDirectory(const std::vector<StorageEntry>& entries, const DirectoryFormat& format) {
  DirectoryImage image;
  auto level = BuildListing(entries, format);
  if (level.empty()) level.emplace_back();  // an index without entries still has its one chunk
  for (std::size_t i = 0; i < level.size(); ++i) {
    image.chunks += FinishChunk(level[i], ListingHeader(i, level.size(), image.entries), format);
    image.entries += level[i].count;
  }
  image.count = image.listingCount = level.size();
  std::size_t firstOfLevel = 0;
  while (level.size() > 1) {
    const auto index = BuildIndex(level, firstOfLevel, format);
    firstOfLevel = image.count;
    for (std::size_t i = 0; i < index.size(); ++i) {
      std::string header = "AOLI";
      PutDword(header, 0);
      PutQword(header, image.count + i);
      image.chunks += FinishChunk(index[i], std::move(header), format);
    }
    image.count += index.size();
    image.root = image.count - 1;
    ++image.depth;
    level = index;
  }
  return image;
}

std::string ChunkArea(const DirectoryImage& image, std::size_t chunkSize, std::size_t limit) {
  std::string area = "IFCM";
  PutDword(area, 1);
  PutDword(area, chunkSize);
  PutDword(area, limit);
  PutDword(area, 0xFFFFFFFF);
  PutDword(area, 0xFFFFFFFF);
  PutDword(area, image.count);
  PutDword(area, 0);
  return area + image.chunks;
}

std::string DirectoryFields(const DirectoryImage& image, std::size_t chunkSize, std::uint64_t kind) {
  std::string fields;
  PutQword(fields, image.root);
  PutQword(fields, 0);
  PutQword(fields, image.listingCount - 1);
  PutQword(fields, kind);
  PutDword(fields, chunkSize);
  PutDword(fields, 2);  // density of the quick references
  PutDword(fields, 0);
  PutDword(fields, image.depth);
  PutQword(fields, 0);
  PutQword(fields, image.entries);
  return fields;
}

std::string PostHeader(const DirectoryImage& directory, const DirectoryImage& index, std::uint64_t content,
                       std::uint32_t timeStamp, std::uint32_t localeId) {
  std::string post;
  PutDword(post, 2);
  PutDword(post, 0x98);
  post += DirectoryFields(directory, ListingChunkSize, 0) + DirectoryFields(index, IndexChunkSize, 1);
  PutDword(post, ListingLimit);
  PutDword(post, IndexLimit);
  PutQword(post, 0);
  post += "CAOL";
  PutDword(post, 2);
  PutDword(post, 0x50);
  post += "HH";
  PutWord(post, 0);
  PutDword(post, 0);
  for (const auto value : {ListingChunkSize, IndexChunkSize, ListingLimit, IndexLimit}) PutDword(post, value);
  for (int i = 0; i < 3; ++i) PutDword(post, 0);
  post += "ITSF";
  PutDword(post, 4);
  PutDword(post, 0x20);
  PutDword(post, 1);
  PutQword(post, content);
  PutDword(post, timeStamp);
  PutDword(post, localeId);
  return post;
}

/// A program file with one empty section, as viewers expect before the container.
std::string ProgramStub() {
  std::string stub = "MZ";
  stub.resize(0x3C);
  PutDword(stub, 0x80);
  stub.resize(0x80);
  stub += std::string_view("PE\0\0", 4);
  PutWord(stub, 0x14C);  // 80386
  PutWord(stub, 1);      // sections
  for (int i = 0; i < 3; ++i) PutDword(stub, 0);
  PutWord(stub, 0xE0);    // size of the optional header
  PutWord(stub, 0x2102);  // a 32-bit library
  std::string optional;
  PutWord(optional, 0x10B);
  PutWord(optional, 0);
  for (int i = 0; i < 4; ++i) PutDword(optional, 0);  // sizes and entry point: no code
  PutDword(optional, 0x1000);
  PutDword(optional, 0x1000);
  PutDword(optional, 0x400000);  // image base
  PutDword(optional, 0x1000);    // section alignment
  PutDword(optional, 0x200);     // file alignment
  PutDword(optional, 4);
  PutDword(optional, 0);
  PutDword(optional, 4);
  PutDword(optional, 0);
  PutDword(optional, 0x2000);  // size of the image
  PutDword(optional, 0x200);   // size of the headers
  PutDword(optional, 0);
  PutWord(optional, 2);  // graphical subsystem
  PutWord(optional, 0);
  for (const std::uint32_t size : {0x100000, 0x1000, 0x100000, 0x1000, 0, 16}) PutDword(optional, size);
  optional.resize(0xE0);
  stub += optional;
  stub += std::string_view(".its\0\0\0\0", 8);
  for (const std::uint32_t value : {0x200, 0x1000, 0x200, 0x200, 0, 0, 0}) PutDword(stub, value);
  PutDword(stub, 0x40000040);  // initialised data, readable
  stub.resize(0x400);
  return stub;
}

std::string GuidSection(std::string_view guid) {
  return GuidBytes(guid);
}

}  // namespace

StorageTransform ItolitlsTransform() {
  return {TransformGuid, GuidBytes(TransformGuid)};
}

void WriteItolitlsFront(ByteSink& output, const StorageWriter& storage, std::uint32_t timeStamp,
                        std::uint32_t localeId) {
  const auto directory = BuildDirectory(storage.Entries(), ListingFormat);
  const auto index = BuildDirectory({}, IndexFormat);
  std::string sizes;
  PutDword(sizes, 0x1FE);
  PutDword(sizes, 0);
  sizes.resize(0x18);
  const std::string sections[5] = {sizes, ChunkArea(directory, ListingChunkSize, ListingLimit),
                                   ChunkArea(index, IndexChunkSize, IndexLimit), GuidSection(Section3Guid),
                                   GuidSection(Section4Guid)};
  std::string table;
  std::uint64_t at = HeaderSize + PostHeaderSize;
  for (const auto& section : sections) {
    PutQword(table, at);
    PutQword(table, section.size());
    at += section.size();
  }
  std::string front = "ITOLITLS";
  PutDword(front, 1);
  PutDword(front, 0x28);
  PutDword(front, 5);
  PutDword(front, PostHeaderSize);
  front += GuidBytes(FileGuid) + table + PostHeader(directory, index, at, timeStamp, localeId);
  SetLittleEndian<8>(sizes, 8, at + storage.ContentSize());
  output.Write(ProgramStub());
  output.Write(front);
  output.Write(sizes);
  for (std::size_t i = 1; i < 5; ++i) output.Write(sections[i]);
}

}  // namespace quillbook::compile
