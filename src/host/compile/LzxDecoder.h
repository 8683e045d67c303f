// LZX decompression of compiled help, safe on hostile input.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace quillbook::compile {

/// Decompresses reset intervals, each by itself.
class LzxDecoder {
 public:
  /// Smallest and largest window, as powers of two, that the format knows.
  static constexpr int MinimumWindowBits = 15;
  static constexpr int MaximumWindowBits = 21;

  /// Failure 5 for a window out of range.
  explicit LzxDecoder(int windowBits);
  ~LzxDecoder();
  LzxDecoder(const LzxDecoder&) = delete;
  LzxDecoder& operator=(const LzxDecoder&) = delete;

  /// Decompresses the frames of one interval. `size` is the number of bytes that must come out; `output` is replaced.
  /// False for data that is no valid LZX; `output` then holds what came out before the damage. Never reads outside
  /// `input` and never writes more than `size` bytes.
  [[nodiscard]] bool DecodeInterval(std::string_view input, std::size_t size, std::string& output);

 private:
  struct State;
  std::unique_ptr<State> mState;
};

}  // namespace quillbook::compile
