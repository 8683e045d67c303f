// Bits from 16-bit little-endian words, most significant bit first.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quillbook::compile {

/// Reads beyond the end give zeros and are remembered, so that callers can test once a while instead of at each bit.
class LzxBitReader {
 public:
  explicit LzxBitReader(std::string_view input) : mInput(input) {}

  /// The next 16 bits without taking them.
  [[nodiscard]] std::uint32_t Peek16() {
    if (mCount < 16) Fill();
    return static_cast<std::uint32_t>(mBits >> (mCount - 16)) & 0xFFFF;
  }
  void Skip(int count) { mCount -= count; }
  /// `count` of at most 24.
  [[nodiscard]] std::uint32_t Read(int count) {
    if (count == 0) return 0;
    while (mCount < count) Fill();
    mCount -= count;
    return static_cast<std::uint32_t>(mBits >> mCount) & ((1U << count) - 1);
  }
  /// Drops bits up to the next 16-bit boundary of the input.
  void Align() { mCount -= mCount % 16; }
  [[nodiscard]] bool IsAligned() const noexcept { return mCount % 16 == 0; }
  /// True if more bits have been taken than there were.
  [[nodiscard]] bool Overrun() const noexcept {
    return mPosition > mInput.size() + static_cast<std::size_t>(mCount) / 8;
  }

  /// Takes `count` whole bytes at a 16-bit boundary; an empty view if there aren't as many.
  [[nodiscard]] std::string_view Bytes(std::size_t count) {
    mPosition -= static_cast<std::size_t>(mCount) / 8;
    mCount = 0;
    if (mPosition > mInput.size() || count > mInput.size() - mPosition) return {};
    const auto bytes = mInput.substr(mPosition, count);
    mPosition += count;
    return bytes;
  }

 private:
  void Fill() {
    std::uint32_t word = 0;
    if (mPosition + 1 < mInput.size())
      word = static_cast<std::uint32_t>(static_cast<unsigned char>(mInput[mPosition]) |
                                        static_cast<unsigned char>(mInput[mPosition + 1]) << 8);
    mPosition += 2;
    mBits = (mBits << 16) | word;
    mCount += 16;
  }

  std::string_view mInput;
  std::size_t mPosition = 0;
  std::uint64_t mBits = 0;
  int mCount = 0;
};

}  // namespace quillbook::compile
