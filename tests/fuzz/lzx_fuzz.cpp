// Any bytes as compressed data, which must not lead the decoder astray; and any bytes as content, which must come back.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "host/compile/LzxDecoder.h"
#include "host/compile/LzxEncoder.h"

namespace {

using quillbook::compile::LzxDecoder;
using quillbook::compile::LzxEncoder;

void DecodeAnything(std::string_view bytes) {
  if (bytes.empty()) return;
  const int windowBits = LzxDecoder::MinimumWindowBits + static_cast<unsigned char>(bytes.front()) % 7;
  std::string output;
  (void)LzxDecoder(windowBits).DecodeInterval(bytes.substr(1), 3 * LzxEncoder::FrameSize, output);
}

void RoundTrip(std::string_view bytes) {
  std::string input(bytes.substr(0, LzxEncoder::IntervalSize));
  const auto frames = (input.size() + LzxEncoder::FrameSize - 1) / LzxEncoder::FrameSize;
  input.resize(std::max<std::size_t>(frames, 1) * LzxEncoder::FrameSize);
  static LzxEncoder encoder;  // used before, as in a compile
  std::string encoded;
  std::string decoded;
  std::vector<std::size_t> starts;
  encoder.EncodeInterval(input, encoded, starts);
  if (!LzxDecoder(16).DecodeInterval(encoded, input.size(), decoded) || decoded != input) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  DecodeAnything(bytes);
  RoundTrip(bytes);
  return 0;
}
