// How fast and how small the encoder of compiled help is, by itself: lzx_speed FILE...
//
// Each file is compressed in reset intervals, five times; the quickest time of the processor (not of the wall) counts,
// so that other programs disturb little. `taskset -c 0` in front keeps the processor's caches warm.
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "host/compile/LzxEncoder.h"

namespace {

using quillbook::compile::LzxEncoder;

constexpr int Rounds = 5;

/// Compresses all of `input`; returns the size.
std::size_t Encode(LzxEncoder& encoder, std::string_view input) {
  std::size_t size = 0;
  std::string output;
  std::vector<std::size_t> frames;
  for (; !input.empty(); input.remove_prefix(std::min(input.size(), LzxEncoder::IntervalSize))) {
    output.clear();
    frames.clear();
    encoder.EncodeInterval(input.substr(0, LzxEncoder::IntervalSize), output, frames);
    size += output.size();
  }
  return size;
}

void Measure(const char* path) {
  std::ifstream file(path, std::ios::binary);
  std::string input(std::istreambuf_iterator<char>(file), {});
  input.resize((input.size() + LzxEncoder::FrameSize - 1) / LzxEncoder::FrameSize * LzxEncoder::FrameSize);
  LzxEncoder encoder;
  std::size_t size = 0;
  std::clock_t best = 0;
  for (int round = 0; round < Rounds; ++round) {
    const auto start = std::clock();
    size = Encode(encoder, input);
    const auto time = std::clock() - start;
    best = round == 0 ? time : std::min(best, time);
  }
  const auto megabytes = static_cast<double>(input.size()) / 1e6;
  std::printf("%8.2f MB  %6.1f MB/s  %10zu bytes  %6.3f %%  %s\n", megabytes,
              megabytes / (static_cast<double>(best) / CLOCKS_PER_SEC), size,
              100.0 * static_cast<double>(size) / static_cast<double>(input.size()), path);
}

}  // namespace

int main(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) Measure(argv[i]);
  return argc > 1 ? 0 : 2;
}
