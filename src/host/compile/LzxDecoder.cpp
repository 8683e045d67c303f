#include "host/compile/LzxDecoder.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

#include "host/compile/HuffmanDecoder.h"
#include "host/compile/LzxBitReader.h"
#include "quillbook/base/Failure.h"

namespace quillbook::compile {

namespace {

constexpr std::size_t FrameSize = 0x8000;
constexpr std::size_t Literals = 256;
constexpr std::size_t LengthSymbols = 249;
constexpr std::size_t MaximumSlots = 50;  // of a window of 2 MiB

struct SlotTable {
  std::array<std::uint32_t, MaximumSlots> base{};
  std::array<std::uint8_t, MaximumSlots> bits{};
};

constexpr SlotTable Slots = [] {
  SlotTable table;
  std::uint32_t base = 0;
  for (std::size_t slot = 0; slot < MaximumSlots; ++slot) {
    table.bits[slot] = static_cast<std::uint8_t>(slot < 4 ? 0 : std::min<std::size_t>(slot / 2 - 1, 17));
    table.base[slot] = base;
    base += 1U << table.bits[slot];
  }
  return table;
}();

std::size_t SlotCount(int windowBits) {
  if (windowBits == 20) return 42;
  if (windowBits == 21) return 50;
  return static_cast<std::size_t>(windowBits) * 2;
}

enum BlockType : std::uint32_t { None = 0, Verbatim = 1, Aligned = 2, Stored = 3 };

}  // namespace

struct LzxDecoder::State {
  explicit State(int windowBits) : mainSymbols(Literals + 8 * SlotCount(windowBits)), mainLengths(mainSymbols) {}

  std::size_t mainSymbols;
  std::vector<std::uint8_t> mainLengths;
  std::array<std::uint8_t, LengthSymbols> lengthLengths{};
  HuffmanDecoder mainTree, lengthTree, alignedTree, pretree;
  std::array<std::uint32_t, 3> recent{};
  std::uint32_t blockType = None;
  std::size_t blockLeft = 0;
  bool oddStored = false;

  void Reset();
  [[nodiscard]] bool ReadLengths(LzxBitReader& bits, std::span<std::uint8_t> lengths);
  [[nodiscard]] bool ReadBlockHeader(LzxBitReader& bits);
  [[nodiscard]] bool ReadTrees(LzxBitReader& bits);
  [[nodiscard]] bool ReadStoredHeader(LzxBitReader& bits);
  [[nodiscard]] bool DecodeCompressed(LzxBitReader& bits, char* begin, char*& at, char* end);
  [[nodiscard]] bool DecodeStored(LzxBitReader& bits, char*& at, char* end);
  [[nodiscard]] std::uint32_t ReadDistance(LzxBitReader& bits, std::size_t slot);
};

void LzxDecoder::State::Reset() {
  std::fill(mainLengths.begin(), mainLengths.end(), std::uint8_t{0});
  lengthLengths.fill(0);
  recent = {1, 1, 1};
  blockType = None;
  blockLeft = 0;
  oddStored = false;
}

bool LzxDecoder::State::ReadLengths(LzxBitReader& bits, std::span<std::uint8_t> lengths) {
  std::array<std::uint8_t, 20> pretreeLengths{};
  for (auto& length : pretreeLengths) length = static_cast<std::uint8_t>(bits.Read(4));
  if (!pretree.Build(pretreeLengths) || pretree.IsEmpty()) return false;
  const auto readSymbol = [&]() -> int {
    const auto symbol = pretree.Decode(bits.Peek16());
    bits.Skip(symbol.bits);
    return symbol.bits ? symbol.value : -1;
  };
  for (std::size_t i = 0; i < lengths.size();) {
    const int symbol = readSymbol();
    if (symbol < 0 || bits.Overrun()) return false;
    std::size_t run = 1;
    int delta = symbol;
    if (symbol == 17) run = 4 + bits.Read(4);
    if (symbol == 18) run = 20 + bits.Read(5);
    if (symbol == 19) {
      run = 4 + bits.Read(1);
      delta = readSymbol();
      if (delta < 0 || delta > 16) return false;
    }
    if (run > lengths.size() - i) return false;
    const bool zeros = symbol == 17 || symbol == 18;
    const auto value = zeros ? 0 : (lengths[i] + 17 - delta) % 17;
    std::fill_n(lengths.begin() + static_cast<std::ptrdiff_t>(i), run, static_cast<std::uint8_t>(value));
    i += run;
  }
  return true;
}

bool LzxDecoder::State::ReadTrees(LzxBitReader& bits) {
  if (blockType == Aligned) {
    std::array<std::uint8_t, 8> lengths{};
    for (auto& length : lengths) length = static_cast<std::uint8_t>(bits.Read(3));
    if (!alignedTree.Build(lengths) || alignedTree.IsEmpty()) return false;
  }
  const std::span<std::uint8_t> main(mainLengths);
  return ReadLengths(bits, main.first(Literals)) && ReadLengths(bits, main.subspan(Literals)) &&
         mainTree.Build(mainLengths) && !mainTree.IsEmpty() && ReadLengths(bits, lengthLengths) &&
         lengthTree.Build(lengthLengths);
}

bool LzxDecoder::State::ReadStoredHeader(LzxBitReader& bits) {
  if (bits.IsAligned())
    (void)bits.Read(16);
  else
    bits.Align();
  const auto header = bits.Bytes(12);
  if (header.empty()) return false;
  for (std::size_t i = 0; i < 3; ++i) std::memcpy(&recent[i], header.data() + 4 * i, 4);
  oddStored = blockLeft % 2 == 1;
  return true;
}

bool LzxDecoder::State::ReadBlockHeader(LzxBitReader& bits) {
  if (oddStored) (void)bits.Bytes(1);
  oddStored = false;
  blockType = bits.Read(3);
  blockLeft = bits.Read(24);
  if (bits.Overrun() || blockLeft == 0) return false;
  if (blockType == Stored) return ReadStoredHeader(bits);
  return (blockType == Verbatim || blockType == Aligned) && ReadTrees(bits);
}

std::uint32_t LzxDecoder::State::ReadDistance(LzxBitReader& bits, std::size_t slot) {
  if (slot < 3) {
    std::swap(recent[0], recent[slot]);
    return recent[0];
  }
  const int extra = Slots.bits[slot];
  std::uint32_t formatted = Slots.base[slot];
  if (blockType == Aligned && extra >= 3) {
    formatted += bits.Read(extra - 3) << 3;
    const auto low = alignedTree.Decode(bits.Peek16());
    bits.Skip(low.bits);
    formatted += low.value;
  } else {
    formatted += bits.Read(extra);
  }
  recent = {formatted - 2, recent[0], recent[1]};
  return recent[0];
}

bool LzxDecoder::State::DecodeCompressed(LzxBitReader& bits, char* begin, char*& at, char* end) {
  while (at < end) {
    const auto symbol = mainTree.Decode(bits.Peek16());
    if (!symbol.bits) return false;
    bits.Skip(symbol.bits);
    if (symbol.value < Literals) {
      *at++ = static_cast<char>(symbol.value);
      continue;
    }
    std::size_t length = symbol.value & 7U;
    if (length == 7) {
      if (lengthTree.IsEmpty()) return false;
      const auto more = lengthTree.Decode(bits.Peek16());
      bits.Skip(more.bits);
      length += more.value;
    }
    length += 2;
    const std::size_t distance = ReadDistance(bits, (symbol.value - Literals) >> 3);
    if (distance == 0 || distance > static_cast<std::size_t>(at - begin) ||
        length > static_cast<std::size_t>(end - at) || bits.Overrun())
      return false;
    const char* from = at - distance;
    if (distance >= length) {
      std::memcpy(at, from, length);
      at += length;
    } else {
      while (length-- > 0) *at++ = *from++;
    }
  }
  return !bits.Overrun();
}

bool LzxDecoder::State::DecodeStored(LzxBitReader& bits, char*& at, char* end) {
  const auto bytes = bits.Bytes(static_cast<std::size_t>(end - at));
  if (bytes.size() != static_cast<std::size_t>(end - at)) return false;
  std::memcpy(at, bytes.data(), bytes.size());
  at = end;
  return true;
}

LzxDecoder::LzxDecoder(int windowBits) {
  if (windowBits < MinimumWindowBits || windowBits > MaximumWindowBits)
    throw Failure(FailureNumber::InvalidCall, "LZX window of 2^" + std::to_string(windowBits) + " bytes is not known");
  mState = std::make_unique<State>(windowBits);
}

LzxDecoder::~LzxDecoder() = default;

bool LzxDecoder::DecodeInterval(std::string_view input, std::size_t size, std::string& output) {
  auto& state = *mState;
  state.Reset();
  output.resize(size);
  char* const begin = output.data();
  char* at = begin;
  LzxBitReader bits(input);
  // Content translated as x86 code is made by no help compiler; its 32-bit size would follow here.
  bool good = bits.Read(1) == 0;
  while (good && at < begin + size) {
    // The stream is aligned after each frame, also within a block.
    const auto inFrame = static_cast<std::size_t>(at - begin) % FrameSize;
    if (inFrame == 0 && at != begin && state.blockType != Stored) bits.Align();
    if (state.blockLeft == 0 && !state.ReadBlockHeader(bits)) {
      good = false;
      break;
    }
    const auto run = std::min({state.blockLeft, FrameSize - inFrame, size - static_cast<std::size_t>(at - begin)});
    char* const end = at + run;
    state.blockLeft -= run;
    good = state.blockType == Stored ? state.DecodeStored(bits, at, end) : state.DecodeCompressed(bits, begin, at, end);
  }
  if (!good) output.resize(static_cast<std::size_t>(at - begin));
  return good;
}

}  // namespace quillbook::compile
