#include "host/compile/LzxEncoder.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

#include "host/compile/HuffmanCode.h"
#include "host/compile/LzxBitWriter.h"
#include "host/compile/LzxMatchFinder.h"

namespace quillbook::compile {

namespace {

constexpr std::size_t Literals = 256;
constexpr std::size_t Slots = 32;  // for a window of 64 KiB
constexpr std::size_t MainSymbols = Literals + 8 * Slots;
constexpr std::size_t LengthSymbols = 249;
constexpr std::size_t AlignedSymbols = 8;
constexpr std::size_t PretreeSymbols = 20;
constexpr std::uint32_t MaximumDistance = LzxEncoder::IntervalSize - 3;
constexpr std::uint16_t NoLengthSymbol = 0xFFFF;

enum BlockType : std::uint32_t { Verbatim = 1, Aligned = 2, Stored = 3 };

constexpr int ExtraBits(std::size_t slot) {
  return slot < 4 ? 0 : static_cast<int>(slot / 2) - 1;
}

constexpr std::uint32_t SlotBase(std::size_t slot) {
  std::uint32_t base = 0;
  for (std::size_t i = 0; i < slot; ++i) base += 1U << ExtraBits(i);
  return base;
}

constexpr auto SlotBases = [] {
  std::array<std::uint32_t, Slots> bases{};
  for (std::size_t slot = 0; slot < Slots; ++slot) bases[slot] = SlotBase(slot);
  return bases;
}();

/// Slot of a formatted offset (distance + 2) of at least 3.
std::size_t SlotOf(std::uint32_t formatted) {
  if (formatted < 4) return formatted;
  const auto log = static_cast<std::size_t>(std::bit_width(formatted)) - 1;
  return 2 * log + ((formatted >> (log - 1)) & 1);
}

/// One literal or match as it will be written.
struct Token {
  std::uint16_t mainSymbol = 0;
  std::uint16_t lengthSymbol = NoLengthSymbol;
  std::uint16_t extra = 0;
  std::uint8_t extraBits = 0;
};

constexpr std::uint32_t FirstLearning = 0x1000;

/// A match that could be taken at a place, with the bits that it is expected to save against literals.
struct Choice {
  std::uint32_t length = 1;
  std::uint32_t distance = 0;
  int saved = 0;
};

/// What symbols are expected to cost in bits: at first as much as in HTML of all kinds, then as much as they would have
/// so far in the interval. What didn't occur yet costs as much as a rare symbol does.
class SymbolCosts {
 public:
  void Begin() {
    mMain.fill(7);
    std::fill(mMain.begin(), mMain.begin() + Literals, std::uint8_t{6});
    mLength.fill(6);
  }

  void Learn(std::span<const std::uint8_t> mainLengths, std::span<const std::uint8_t> lengthLengths) {
    for (std::size_t i = 0; i < mMain.size(); ++i) mMain[i] = mainLengths[i] ? mainLengths[i] : RareMain;
    for (std::size_t i = 0; i < mLength.size(); ++i) mLength[i] = lengthLengths[i] ? lengthLengths[i] : RareLength;
  }

  /// Sums up what the bytes of the input cost as literals, from a place on.
  void Measure(std::string_view input, std::size_t from) {
    std::uint16_t sum = 0;
    for (auto i = from; i < input.size(); ++i) {
      mBefore[i] = sum;
      sum = static_cast<std::uint16_t>(sum + mMain[static_cast<unsigned char>(input[i])]);
    }
    mBefore[input.size()] = sum;
  }

  /// Bits that a match saves against literals.
  [[nodiscard]] int SavedBy(std::uint32_t position, std::uint32_t length, std::size_t slot) const noexcept {
    const auto header = std::min(length - 2, 7U);
    const int cost = mMain[Literals + slot * 8 + header] + (header == 7 ? mLength[length - 9] : 0) + ExtraBits(slot);
    return static_cast<std::uint16_t>(mBefore[position + length] - mBefore[position]) - cost;
  }

 private:
  static constexpr std::uint8_t RareMain = 12;
  static constexpr std::uint8_t RareLength = 9;

  std::array<std::uint8_t, MainSymbols> mMain{};
  std::array<std::uint8_t, LengthSymbols> mLength{};
  std::array<std::uint16_t, LzxEncoder::IntervalSize + 1> mBefore{};  ///< modulo 2^16: a match costs less
};

}  // namespace

struct LzxEncoder::State {
  LzxMatchFinder finder;
  SymbolCosts costs;
  std::uint32_t nextLearning = 0;  ///< where to look again at what symbols cost
  std::vector<Token> tokens;
  std::size_t firstFrameTokens = 0;
  std::array<std::uint32_t, 3> recent{1, 1, 1};
  std::array<std::uint32_t, MainSymbols> mainCounts{};
  std::array<std::uint32_t, LengthSymbols> lengthCounts{};
  std::array<std::uint32_t, AlignedSymbols> alignedCounts{};
  std::array<std::uint8_t, MainSymbols> mainLengths{};
  std::array<std::uint8_t, LengthSymbols> lengthLengths{};
  std::array<std::uint8_t, AlignedSymbols> alignedLengths{};
  std::array<std::uint16_t, MainSymbols> mainWords{};
  std::array<std::uint16_t, LengthSymbols> lengthWords{};
  std::array<std::uint16_t, AlignedSymbols> alignedWords{};

  void Begin(std::string_view input);
  void Parse(std::string_view input);
  Choice Best(std::string_view input, std::uint32_t position, std::uint32_t limit, const Choice& toBeat);
  void LearnCosts(std::string_view input, std::uint32_t position);
  void AddLiteral(char byte);
  void AddMatch(const Choice& match);
  void BuildTrees();
  [[nodiscard]] bool AlignedPays() const;
  void WriteTrees(LzxBitWriter& bits, bool aligned) const;
  void WriteTokens(LzxBitWriter& bits, bool aligned, std::size_t from, std::size_t to) const;
};

void LzxEncoder::State::Begin(std::string_view input) {
  finder.Begin(input);
  costs.Begin();
  costs.Measure(input, 0);
  nextLearning = FirstLearning;
  tokens.clear();
  firstFrameTokens = 0;
  recent = {1, 1, 1};
  mainCounts.fill(0);
  lengthCounts.fill(0);
  alignedCounts.fill(0);
}

/// What saves more here than `toBeat` does a byte before; without distance if nothing does. Found matches are at least
/// as long, since a shorter one rarely saves more.
Choice LzxEncoder::State::Best(std::string_view input, std::uint32_t position, std::uint32_t limit,
                               const Choice& toBeat) {
  Choice best{1, 0, toBeat.saved};
  if (limit < 2) return best;
  const char* here = input.data() + position;
  for (std::size_t slot = 0; slot < recent.size(); ++slot) {
    const auto distance = recent[slot];
    if (distance > position || std::memcmp(here, here - distance, 2) != 0) continue;
    const auto length = LzxMatchFinder::CommonLength(here, here - distance, limit);
    const auto saved = costs.SavedBy(position, length, slot);
    if (saved > best.saved) best = {length, distance, saved};
  }
  const auto longerThan = std::max(toBeat.length - 1, best.distance ? best.length : 0);
  for (const auto& match : finder.FindAndInsert(position, limit, longerThan)) {
    if (match.distance > MaximumDistance) break;
    const auto saved = costs.SavedBy(position, match.length, SlotOf(match.distance + 2));
    if (saved > best.saved) best = {match.length, match.distance, saved};
  }
  return best;
}

void LzxEncoder::State::Parse(std::string_view input) {
  const auto size = static_cast<std::uint32_t>(input.size());
  Choice pending;  // what was found one place ahead, if anything
  bool havePending = false;
  for (std::uint32_t position = 0; position < size;) {
    if (position >= nextLearning) LearnCosts(input, position);
    if (position == FrameSize) firstFrameTokens = tokens.size();
    const auto frameEnd = (position / FrameSize + 1) * FrameSize;
    const auto room = static_cast<std::uint32_t>(frameEnd) - position;
    const auto limit = std::min(LzxMatchFinder::MaximumLength, room);
    const auto current = havePending ? pending : Best(input, position, limit, {});
    havePending = false;
    if (!current.distance) {
      AddLiteral(input[position++]);
      continue;
    }
    // A better match one byte on is worth a literal here.
    auto inserted = position + 1;
    if (current.length < 64 && room > 1) {
      pending = Best(input, position + 1, std::min(LzxMatchFinder::MaximumLength, room - 1), current);
      ++inserted;
      if (pending.distance) {
        havePending = true;
        AddLiteral(input[position++]);
        continue;
      }
    }
    AddMatch(current);
    position += current.length;
    for (; inserted < position; ++inserted) finder.Insert(inserted);
  }
  if (size <= FrameSize) firstFrameTokens = tokens.size();
}

void LzxEncoder::State::LearnCosts(std::string_view input, std::uint32_t position) {
  BuildCodeLengths(mainCounts, 16, mainLengths);
  BuildCodeLengths(lengthCounts, 16, lengthLengths);
  costs.Learn(mainLengths, lengthLengths);
  costs.Measure(input, position);
  nextLearning *= 2;
}

void LzxEncoder::State::AddLiteral(char byte) {
  Token token;
  token.mainSymbol = static_cast<unsigned char>(byte);
  ++mainCounts[token.mainSymbol];
  tokens.push_back(token);
}

void LzxEncoder::State::AddMatch(const Choice& match) {
  Token token;
  std::size_t slot = 0;
  const auto known = std::find(recent.begin(), recent.end(), match.distance);
  if (known != recent.end()) {
    slot = static_cast<std::size_t>(known - recent.begin());
    std::swap(recent[0], *known);
  } else {
    const auto formatted = match.distance + 2;
    slot = SlotOf(formatted);
    token.extraBits = static_cast<std::uint8_t>(ExtraBits(slot));
    token.extra = static_cast<std::uint16_t>(formatted - SlotBases[slot]);
    if (token.extraBits >= 3) ++alignedCounts[token.extra & 7];
    recent = {match.distance, recent[0], recent[1]};
  }
  const auto header = std::min(match.length - 2, 7U);
  if (header == 7) {
    token.lengthSymbol = static_cast<std::uint16_t>(match.length - 9);
    ++lengthCounts[token.lengthSymbol];
  }
  token.mainSymbol = static_cast<std::uint16_t>(Literals + slot * 8 + header);
  ++mainCounts[token.mainSymbol];
  tokens.push_back(token);
}

void LzxEncoder::State::BuildTrees() {
  BuildCodeLengths(mainCounts, 16, mainLengths);
  BuildCodeLengths(lengthCounts, 16, lengthLengths);
  BuildCodeLengths(alignedCounts, 7, alignedLengths);
  BuildCodeWords(mainLengths, mainWords);
  BuildCodeWords(lengthLengths, lengthWords);
  BuildCodeWords(alignedLengths, alignedWords);
}

/// Whether coding the low three bits of offsets by a tree saves more than the tree's own 24 bits.
bool LzxEncoder::State::AlignedPays() const {
  std::uint64_t plain = 0;
  std::uint64_t coded = 24;
  for (std::size_t symbol = 0; symbol < AlignedSymbols; ++symbol) {
    plain += 3ULL * alignedCounts[symbol];
    coded += static_cast<std::uint64_t>(alignedLengths[symbol]) * alignedCounts[symbol];
  }
  return coded < plain;
}

namespace {

struct PretreeCode {
  std::uint8_t symbol = 0;
  std::uint8_t extra = 0;
  std::uint8_t extraBits = 0;
};

/// Writes code lengths by way of a pretree. The lengths before are all 0, since the state was just reset, so the
/// difference that the format stores is (0 - length) modulo 17.
void WriteLengths(LzxBitWriter& bits, std::span<const std::uint8_t> lengths) {
  std::vector<PretreeCode> codes;
  const auto delta = [](std::uint8_t length) { return static_cast<std::uint8_t>((17 - length) % 17); };
  for (std::size_t i = 0; i < lengths.size();) {
    std::size_t run = 1;
    while (i + run < lengths.size() && lengths[i + run] == lengths[i]) ++run;
    if (lengths[i] == 0 && run >= 20) {
      run = std::min<std::size_t>(run, 51);
      codes.push_back({18, static_cast<std::uint8_t>(run - 20), 5});
    } else if (lengths[i] == 0 && run >= 4) {
      run = std::min<std::size_t>(run, 19);
      codes.push_back({17, static_cast<std::uint8_t>(run - 4), 4});
    } else if (run >= 4) {
      run = std::min<std::size_t>(run, 5);
      codes.push_back({19, static_cast<std::uint8_t>(run - 4), 1});
      codes.push_back({delta(lengths[i]), 0, 0});
    } else {
      run = 1;
      codes.push_back({delta(lengths[i]), 0, 0});
    }
    i += run;
  }
  std::array<std::uint32_t, PretreeSymbols> counts{};
  for (const auto& code : codes) ++counts[code.symbol];
  std::array<std::uint8_t, PretreeSymbols> pretree{};
  std::array<std::uint16_t, PretreeSymbols> words{};
  BuildCodeLengths(counts, 15, pretree);
  BuildCodeWords(pretree, words);
  for (const auto length : pretree) bits.Write(length, 4);
  for (const auto& code : codes) {
    bits.Write(words[code.symbol], pretree[code.symbol]);
    if (code.extraBits) bits.Write(code.extra, code.extraBits);
  }
}

void AppendLittleEndian(std::string& output, std::uint32_t value) {
  for (int shift = 0; shift < 32; shift += 8) output += static_cast<char>(value >> shift);
}

/// The interval as it stands: for data that doesn't compress.
void WriteStored(std::string_view input, std::string& output, std::vector<std::size_t>& frameStarts) {
  frameStarts.push_back(output.size());
  {
    LzxBitWriter bits(output);
    bits.Write(0, 1);
    bits.Write(Stored, 3);
    bits.Write(static_cast<std::uint32_t>(input.size()), 24);
    bits.Align();
  }
  for (int i = 0; i < 3; ++i) AppendLittleEndian(output, 1);
  if (input.size() > LzxEncoder::FrameSize) frameStarts.push_back(output.size() + LzxEncoder::FrameSize);
  output.append(input);
}

}  // namespace

void LzxEncoder::State::WriteTrees(LzxBitWriter& bits, bool aligned) const {
  if (aligned)
    for (const auto length : alignedLengths) bits.Write(length, 3);
  const std::span<const std::uint8_t> main(mainLengths);
  WriteLengths(bits, main.first(Literals));
  WriteLengths(bits, main.subspan(Literals));
  WriteLengths(bits, lengthLengths);
}

void LzxEncoder::State::WriteTokens(LzxBitWriter& bits, bool aligned, std::size_t from, std::size_t to) const {
  for (auto i = from; i < to; ++i) {
    const auto& token = tokens[i];
    bits.Write(mainWords[token.mainSymbol], mainLengths[token.mainSymbol]);
    if (token.lengthSymbol != NoLengthSymbol)
      bits.Write(lengthWords[token.lengthSymbol], lengthLengths[token.lengthSymbol]);
    if (token.extraBits == 0) continue;
    if (aligned && token.extraBits >= 3) {
      if (token.extraBits > 3) bits.Write(token.extra >> 3U, token.extraBits - 3);
      bits.Write(alignedWords[token.extra & 7], alignedLengths[token.extra & 7]);
    } else {
      bits.Write(token.extra, token.extraBits);
    }
  }
}

LzxEncoder::LzxEncoder() : mState(std::make_unique<State>()) {}
LzxEncoder::~LzxEncoder() = default;

void LzxEncoder::EncodeInterval(std::string_view input, std::string& output, std::vector<std::size_t>& frameStarts) {
  auto& state = *mState;
  state.Begin(input);
  state.Parse(input);
  state.BuildTrees();
  const auto outputStart = output.size();
  const auto frames = frameStarts.size();
  const bool aligned = state.AlignedPays();
  frameStarts.push_back(outputStart);
  LzxBitWriter bits(output);
  bits.Write(0, 1);  // no translation of calls in programs
  bits.Write(aligned ? Aligned : Verbatim, 3);
  bits.Write(static_cast<std::uint32_t>(input.size()), 24);
  state.WriteTrees(bits, aligned);
  state.WriteTokens(bits, aligned, 0, state.firstFrameTokens);
  bits.Align();
  if (input.size() > FrameSize) {
    frameStarts.push_back(output.size());
    state.WriteTokens(bits, aligned, state.firstFrameTokens, state.tokens.size());
    bits.Align();
  }
  if (output.size() - outputStart > input.size() + 16) {
    output.resize(outputStart);
    frameStarts.resize(frames);
    WriteStored(input, output, frameStarts);
  }
}

}  // namespace quillbook::compile
