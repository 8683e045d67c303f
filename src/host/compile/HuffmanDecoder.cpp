#include "host/compile/HuffmanDecoder.h"

#include <algorithm>

namespace quillbook::compile {

bool HuffmanDecoder::Build(std::span<const std::uint8_t> lengths) {
  std::array<std::uint32_t, MaximumLength + 1> count{};
  for (const auto length : lengths) {
    if (length > MaximumLength) return false;
    ++count[length];
  }
  mSymbols.clear();
  if (count[0] == lengths.size()) return true;
  std::uint32_t code = 0;
  std::uint32_t index = 0;
  for (int length = 1; length <= MaximumLength; ++length) {
    mFirstCode[length] = code;
    mFirstIndex[length] = index;
    code += count[length] << (MaximumLength - length);
    index += count[length];
  }
  mFirstIndex[MaximumLength + 1] = index;
  if (code != 1U << MaximumLength) return false;
  mSymbols.resize(index);
  auto next = mFirstIndex;
  for (std::size_t symbol = 0; symbol < lengths.size(); ++symbol)
    if (lengths[symbol]) mSymbols[next[lengths[symbol]]++] = static_cast<std::uint16_t>(symbol);
  FillTable(lengths);
  return true;
}

void HuffmanDecoder::FillTable(std::span<const std::uint8_t> lengths) {
  std::size_t at = 0;
  for (const auto symbol : mSymbols) {
    const auto length = lengths[symbol];
    if (length > TableBits) break;
    const auto copies = std::size_t{1} << (TableBits - length);
    std::fill_n(mTable.begin() + static_cast<std::ptrdiff_t>(at), copies, Symbol{symbol, length});
    at += copies;
  }
  std::fill(mTable.begin() + static_cast<std::ptrdiff_t>(at), mTable.end(), Symbol{0, 0});
}

HuffmanDecoder::Symbol HuffmanDecoder::DecodeLong(std::uint32_t bits) const noexcept {
  for (int length = TableBits + 1; length <= MaximumLength; ++length) {
    const auto offset = (bits - mFirstCode[length]) >> (MaximumLength - length);
    if (bits >= mFirstCode[length] && offset < mFirstIndex[length + 1] - mFirstIndex[length])
      return {mSymbols[mFirstIndex[length] + offset], static_cast<std::uint8_t>(length)};
  }
  return {0, 0};
}

}  // namespace quillbook::compile
