// LZX compression as compiled help uses it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quillbook::compile {

/// Compresses a stream of bytes with a window of 64 KiB that is reset every 64 KiB, so that each reset interval stands
/// by itself. Memory is bounded by one interval. The same input gives the same output, always.
///
/// Source of the format: the published description of LZX in cabinet files, with the reset interval and the frame
/// alignment that compiled help adds.
class LzxEncoder {
 public:
  static constexpr std::size_t FrameSize = 0x8000;      ///< the output is aligned after each frame of input
  static constexpr std::size_t IntervalSize = 0x10000;  ///< two frames; the state is reset after each

  LzxEncoder();
  ~LzxEncoder();
  LzxEncoder(const LzxEncoder&) = delete;
  LzxEncoder& operator=(const LzxEncoder&) = delete;

  /// Compresses one interval and appends to `output`. `input` is a whole number of frames, one or two; the caller
  /// fills the last frame of the stream with zeros. `frameStarts` gets, for each frame, the place in `output` where
  /// its compressed bytes begin.
  void EncodeInterval(std::string_view input, std::string& output, std::vector<std::size_t>& frameStarts);

 private:
  struct State;
  std::unique_ptr<State> mState;
};

}  // namespace quillbook::compile
