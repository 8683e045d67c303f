// Bits into 16-bit little-endian words, most significant bit first.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace quillbook::compile {

class LzxBitWriter {
 public:
  explicit LzxBitWriter(std::string& output) : mOutput(output) {}

  /// `count` of at most 24; the value has no higher bits.
  void Write(std::uint32_t value, int count) {
    mBits = (mBits << count) | value;
    mCount += count;
    while (mCount >= 16) {
      mCount -= 16;
      const auto word = static_cast<std::uint16_t>(mBits >> mCount);
      const char bytes[2] = {static_cast<char>(word & 0xFF), static_cast<char>(word >> 8)};
      mOutput.append(bytes, 2);
    }
  }
  /// Fills up to the next 16-bit boundary with zeros.
  void Align() {
    if (mCount > 0) Write(0, 16 - mCount);
  }
  [[nodiscard]] bool IsAligned() const noexcept { return mCount == 0; }

 private:
  std::string& mOutput;
  std::uint64_t mBits = 0;
  int mCount = 0;
};

}  // namespace quillbook::compile
