#include "host/compile/StorageReader.h"

#include <algorithm>
#include <numeric>

#include "host/compile/Bytes.h"
#include "host/compile/LzxDecoder.h"
#include "host/compile/Names.h"
#include "quillbook/base/Failure.h"
#include "quillbook/base/Text.h"

namespace quillbook::compile {

namespace {

constexpr std::uint64_t FrameSize = 0x8000;
constexpr std::uint64_t MaximumInterval = 16U << 20;
constexpr std::size_t MaximumChunk = 1U << 20;
constexpr std::uint64_t MaximumControlStream = 64U << 20;
constexpr std::string_view Stream = "::DataSpace/Storage/MSCompressed/";

[[noreturn]] void Damaged(const std::string& what) {
  throw Failure(FailureNumber::InvalidCall, "The compiled help file is damaged: " + what);
}

/// Where the parts of a container lie in its file.
struct Layout {
  StorageReader::Format format = StorageReader::Format::HtmlHelp1;
  std::uint64_t start = 0;    ///< of the container
  std::uint64_t content = 0;  ///< of the content sections, in the file
  std::uint64_t chunks = 0;   ///< of the first directory chunk, in the file
  std::uint64_t chunkCount = 0;
  std::size_t chunkSize = 0;
  std::size_t listingHeader = 0;
  std::string_view listingMagic;
  std::uint32_t localeId = 0;
  std::uint32_t timeStamp = 0;
};

std::uint64_t CheckedSum(std::uint64_t left, std::uint64_t right, std::uint64_t limit, const char* what) {
  if (left > limit || right > limit - left) Damaged(std::string(what) + " lies outside the file");
  return left + right;
}

void CheckChunks(Layout& layout, std::uint64_t directoryEnd) {
  if (layout.chunkSize < 64 || layout.chunkSize > MaximumChunk) Damaged("the size of a directory chunk is impossible");
  if (layout.chunks > directoryEnd) Damaged("the directory is shorter than its header");
  layout.chunkCount = std::min(layout.chunkCount, (directoryEnd - layout.chunks) / layout.chunkSize);
}

Layout ReadHtmlHelpLayout(const ByteSource& source, std::string_view header) {
  Layout layout;
  const auto version = GetDword(header, 4);
  if (version != 2 && version != 3) Damaged("its version is not known");
  for (std::size_t i = 0; i < 4; ++i)
    layout.timeStamp = layout.timeStamp << 8 | static_cast<unsigned char>(header[0x10 + i]);
  layout.localeId = GetDword(header, 0x14);
  const auto directory = GetQword(header, 0x48);
  const auto end = CheckedSum(directory, GetQword(header, 0x50), source.Size(), "the directory");
  const auto head = source.Read(directory, 0x54);
  if (head.size() < 0x54 || head.substr(0, 4) != "ITSP") Damaged("it has no directory");
  layout.chunks = CheckedSum(directory, GetDword(head, 8), source.Size(), "the directory");
  layout.chunkSize = GetDword(head, 0x10);
  layout.chunkCount = GetDword(head, 0x2C);
  layout.listingHeader = 0x14;
  layout.listingMagic = "PMGL";
  // Version 2 has no field for the content, which then follows the directory.
  layout.content = version == 3 ? GetQword(header, 0x58) : end;
  CheckChunks(layout, end);
  return layout;
}

Layout ReadHelp2Layout(const ByteSource& source, std::uint64_t start) {
  Layout layout;
  layout.format = StorageReader::Format::Help2;
  layout.start = start;
  const auto header = source.Read(start, 0x78);
  const auto postLength = GetDword(header, 0x14);
  if (header.size() < 0x78 || postLength < 0xE8 || postLength > 0x1000) Damaged("its header is cut");
  const auto post = source.Read(start + GetDword(header, 0x0C) + 5 * 16, postLength);
  const auto caol = GetDword(post, 4);
  if (caol > post.size() || post.substr(caol, 4) != "CAOL") Damaged("its second header is missing");
  const auto itsf = post.find("ITSF", caol);
  if (itsf == std::string::npos) Damaged("its second header is cut");
  layout.content = CheckedSum(start, GetQword(post, itsf + 0x10), source.Size(), "the content");
  layout.timeStamp = GetDword(post, itsf + 0x18);
  layout.localeId = GetDword(post, itsf + 0x1C);
  const auto directory = CheckedSum(start, GetQword(header, 0x38), source.Size(), "the directory");
  const auto end = CheckedSum(directory, GetQword(header, 0x40), source.Size(), "the directory");
  const auto head = source.Read(directory, 0x20);
  if (head.substr(0, 4) != "IFCM") Damaged("it has no directory");
  layout.chunks = directory + 0x20;
  layout.chunkSize = GetDword(head, 8);
  layout.chunkCount = GetDword(head, 0x18);
  layout.listingHeader = 0x30;
  layout.listingMagic = "AOLL";
  CheckChunks(layout, end);
  return layout;
}

/// A Help 2 file is a program file without code; the container follows its headers.
std::uint64_t FindHelp2Start(const ByteSource& source) {
  const auto front = source.Read(0, 0x2000);
  for (auto at = front.find("ITOLITLS"); at != std::string::npos; at = front.find("ITOLITLS", at + 1))
    if (GetDword(front, at + 8) == 1) return at;
  throw Failure(FailureNumber::InvalidCall, "The file is no compiled help file");
}

Layout ReadLayout(const ByteSource& source) {
  const auto front = source.Read(0, 0x60);
  if (front.substr(0, 4) == "ITSF") {
    if (front.size() < 0x60) Damaged("its header is cut");
    return ReadHtmlHelpLayout(source, front);
  }
  return ReadHelp2Layout(source, FindHelp2Start(source));
}

}  // namespace

struct StorageReader::State {
  explicit State(const ByteSource& from) : source(from), layout(ReadLayout(from)) {}

  const ByteSource& source;
  Layout layout;
  std::vector<StorageEntry> entries;
  std::vector<std::uint32_t> byName;  ///< numbers of entries; no hashes, which a file could make collide
  std::vector<std::string> problems;

  // The compressed section.
  std::uint64_t uncompressed = 0;
  std::uint64_t compressed = 0;
  std::uint64_t compressedStart = 0;
  std::uint64_t intervalSize = 0;
  std::string resetTable;
  std::size_t tableStart = 0;
  std::uint64_t frames = 0;
  mutable std::unique_ptr<LzxDecoder> decoder;
  mutable std::string interval;
  mutable std::uint64_t intervalNumber = ~std::uint64_t{0};

  void ReadDirectory();
  [[nodiscard]] const StorageEntry* Find(std::string_view name) const;
  void ReadChunk(std::string_view chunk);
  void PrepareCompressed(const StorageReader& reader);
  [[nodiscard]] std::uint64_t FrameOffset(std::uint64_t frame) const;
  [[nodiscard]] const std::string& Interval(std::uint64_t number) const;
};

void StorageReader::State::ReadDirectory() {
  bool sawListing = false;
  // Every chunk is looked at once, in file order: chains of chunk numbers can lie or run in circles.
  for (std::uint64_t i = 0; i < layout.chunkCount; ++i) {
    const auto chunk = source.Read(layout.chunks + i * layout.chunkSize, layout.chunkSize);
    if (chunk.size() < layout.chunkSize) Damaged("the directory is cut");
    if (std::string_view(chunk).substr(0, 4) != layout.listingMagic) continue;
    sawListing = true;
    ReadChunk(chunk);
  }
  if (!sawListing) Damaged("its directory lists nothing");
  byName.resize(entries.size());
  std::iota(byName.begin(), byName.end(), 0U);
  const auto less = [&](std::uint32_t left, std::uint32_t right) {
    return NameLess(entries[left].name, entries[right].name);
  };
  if (!std::is_sorted(byName.begin(), byName.end(), less)) std::stable_sort(byName.begin(), byName.end(), less);
  for (std::size_t i = 1; i < byName.size(); ++i)
    if (NameEquals(entries[byName[i - 1]].name, entries[byName[i]].name))
      problems.push_back("the name '" + entries[byName[i]].name + "' occurs more than once");
}

const StorageEntry* StorageReader::State::Find(std::string_view name) const {
  const auto found = std::lower_bound(
      byName.begin(), byName.end(), name,
      [&](std::uint32_t number, std::string_view wanted) { return NameLess(entries[number].name, wanted); });
  return found != byName.end() && NameEquals(entries[*found].name, name) ? &entries[*found] : nullptr;
}

void StorageReader::State::ReadChunk(std::string_view chunk) {
  const auto free = GetDword(chunk, 4);
  if (free > chunk.size() - layout.listingHeader) Damaged("a directory chunk has impossible sizes");
  const auto used = chunk.substr(0, chunk.size() - free);
  for (std::size_t at = layout.listingHeader; at < used.size();) {
    StorageEntry entry;
    std::uint64_t nameLength = 0;
    std::uint64_t section = 0;
    if (!GetEncInt(used, at, nameLength) || nameLength > used.size() - at) Damaged("a directory entry is cut");
    entry.name = used.substr(at, static_cast<std::size_t>(nameLength));
    at += static_cast<std::size_t>(nameLength);
    if (!GetEncInt(used, at, section) || !GetEncInt(used, at, entry.offset) || !GetEncInt(used, at, entry.length))
      Damaged("a directory entry is cut");
    entry.section = static_cast<std::uint32_t>(std::min<std::uint64_t>(section, 0xFFFF));
    entries.push_back(std::move(entry));
  }
}

void StorageReader::State::PrepareCompressed(const StorageReader& reader) {
  const std::string stream(Stream);
  const auto* content = reader.Find(stream + "Content");
  const auto* control = reader.Find(stream + "ControlData");
  if (!content || !control) return;
  const auto data = reader.ReadAll(*control, 1024);
  if (data.size() < 0x18 || data.substr(4, 4) != "LZXC") Damaged("its compression is not known");
  const std::uint64_t unit = GetDword(data, 8) >= 2 ? FrameSize : 1;
  const auto reset = GetDword(data, 12) * unit;
  const auto window = GetDword(data, 16) * unit;
  int windowBits = LzxDecoder::MinimumWindowBits;
  while (windowBits < LzxDecoder::MaximumWindowBits && (std::uint64_t{1} << windowBits) < window) ++windowBits;
  if (window != std::uint64_t{1} << windowBits) Damaged("its compression window is impossible");
  if (reset < FrameSize || reset > MaximumInterval || reset % FrameSize) Damaged("its reset interval is impossible");
  for (const auto& entry : entries)
    if (entry.name.starts_with(stream) && entry.name.ends_with("/InstanceData/ResetTable"))
      resetTable = reader.ReadAll(entry, MaximumControlStream);
  if (resetTable.size() < 0x28) Damaged("its reset table is missing");
  tableStart = GetDword(resetTable, 12);
  frames = GetDword(resetTable, 4);
  if (tableStart > resetTable.size() || frames > (resetTable.size() - tableStart) / 8)
    Damaged("its reset table is cut");
  uncompressed = GetQword(resetTable, 16);
  compressed = GetQword(resetTable, 24);
  if (uncompressed > frames * FrameSize || compressed > content->length) Damaged("its reset table is impossible");
  compressedStart = CheckedSum(layout.content, content->offset, source.Size(), "the compressed content");
  (void)CheckedSum(compressedStart, compressed, source.Size(), "the compressed content");
  intervalSize = reset;
  decoder = std::make_unique<LzxDecoder>(windowBits);
}

std::uint64_t StorageReader::State::FrameOffset(std::uint64_t frame) const {
  return frame < frames ? GetQword(resetTable, tableStart + static_cast<std::size_t>(frame) * 8) : compressed;
}

const std::string& StorageReader::State::Interval(std::uint64_t number) const {
  if (number == intervalNumber) return interval;
  const auto perInterval = intervalSize / FrameSize;
  const auto begin = FrameOffset(number * perInterval);
  const auto end = FrameOffset((number + 1) * perInterval);
  // Even incompressible data grows by a few bytes a frame only, so a longer piece is no real one.
  if (begin > end || end > compressed || end - begin > 2 * intervalSize) Damaged("its reset table is impossible");
  const auto size = std::min(intervalSize, frames * FrameSize - number * intervalSize);
  const auto wanted = std::min(size, uncompressed - number * intervalSize);
  intervalNumber = ~std::uint64_t{0};
  const auto input = source.Read(compressedStart + begin, static_cast<std::size_t>(end - begin));
  if (!decoder->DecodeInterval(input, static_cast<std::size_t>(size), interval) && interval.size() < wanted)
    Damaged("compressed data at " + std::to_string(compressedStart + begin) + " doesn't decode");
  intervalNumber = number;
  return interval;
}

StorageReader::StorageReader(const ByteSource& source) : mState(std::make_unique<State>(source)) {
  mState->ReadDirectory();
  mState->PrepareCompressed(*this);
}

StorageReader::~StorageReader() = default;

StorageReader::Format StorageReader::GetFormat() const noexcept {
  return mState->layout.format;
}
std::uint32_t StorageReader::LocaleId() const noexcept {
  return mState->layout.localeId;
}
std::uint32_t StorageReader::TimeStamp() const noexcept {
  return mState->layout.timeStamp;
}
const std::vector<StorageEntry>& StorageReader::Entries() const noexcept {
  return mState->entries;
}
std::uint64_t StorageReader::UncompressedLength() const noexcept {
  return mState->uncompressed;
}
const std::vector<std::string>& StorageReader::Problems() const noexcept {
  return mState->problems;
}

const StorageEntry* StorageReader::Find(std::string_view name) const {
  return mState->Find(name);
}

void StorageReader::Read(const StorageEntry& entry, const std::function<void(std::string_view)>& piece) const {
  const auto& state = *mState;
  if (entry.length == 0) return;
  if (entry.section == 0) {
    const auto start = CheckedSum(state.layout.content, entry.offset, state.source.Size(), "a file");
    (void)CheckedSum(start, entry.length, state.source.Size(), "a file");
    constexpr std::uint64_t step = 0x10000;
    for (std::uint64_t done = 0; done < entry.length; done += step)
      piece(state.source.Read(start + done, static_cast<std::size_t>(std::min(step, entry.length - done))));
    return;
  }
  if (entry.section != 1 || !state.decoder) Damaged("'" + entry.name + "' lies in a section that isn't there");
  (void)CheckedSum(entry.offset, entry.length, state.uncompressed, entry.name.c_str());
  for (auto at = entry.offset; at < entry.offset + entry.length;) {
    const auto& interval = state.Interval(at / state.intervalSize);
    const auto from = static_cast<std::size_t>(at % state.intervalSize);
    const auto count = std::min<std::uint64_t>(entry.offset + entry.length - at, interval.size() - from);
    piece(std::string_view(interval).substr(from, static_cast<std::size_t>(count)));
    at += count;
  }
}

std::string StorageReader::ReadAll(const StorageEntry& entry, std::uint64_t limit) const {
  if (entry.length > limit) Damaged("'" + entry.name + "' is impossibly long");
  std::string bytes;
  bytes.reserve(static_cast<std::size_t>(entry.length));
  Read(entry, [&](std::string_view piece) { bytes.append(piece); });
  return bytes;
}

}  // namespace quillbook::compile
