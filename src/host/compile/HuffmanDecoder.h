// Table-driven decoding of canonical Huffman codes.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace quillbook::compile {

/// Decodes codes of at most 16 bits. Short codes take one look-up, longer ones a walk over the lengths.
class HuffmanDecoder {
 public:
  static constexpr int MaximumLength = 16;

  /// False unless the lengths form a complete code. All lengths 0 is accepted as a code without symbols.
  [[nodiscard]] bool Build(std::span<const std::uint8_t> lengths);
  [[nodiscard]] bool IsEmpty() const noexcept { return mSymbols.empty(); }

  struct Symbol {
    std::uint16_t value;
    std::uint8_t bits;  ///< 0: no such code
  };
  /// `bits` holds the next 16 bits of the stream, most significant first.
  [[nodiscard]] Symbol Decode(std::uint32_t bits) const noexcept {
    const auto entry = mTable[bits >> (MaximumLength - TableBits)];
    return entry.bits ? entry : DecodeLong(bits);
  }

 private:
  static constexpr int TableBits = 11;

  [[nodiscard]] Symbol DecodeLong(std::uint32_t bits) const noexcept;
  void FillTable(std::span<const std::uint8_t> lengths);

  std::array<Symbol, 1U << TableBits> mTable{};
  std::array<std::uint32_t, MaximumLength + 1> mFirstCode{};   ///< of each length, left-aligned to 16 bits
  std::array<std::uint32_t, MaximumLength + 2> mFirstIndex{};  ///< of each length, into `mSymbols`
  std::vector<std::uint16_t> mSymbols;                         ///< in canonical order
};

}  // namespace quillbook::compile
