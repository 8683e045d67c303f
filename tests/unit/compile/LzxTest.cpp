#include <gtest/gtest.h>

#include <cstring>
#include <random>

#include "host/compile/LzxDecoder.h"
#include "host/compile/LzxEncoder.h"
#include "support/SomeFiles.h"

namespace quillbook::compile {
namespace {

struct Encoded {
  std::string padded;  ///< the input as far as frames reach
  std::string bytes;
  std::vector<std::size_t> intervals;  ///< begin of each, and the end
};

Encoded Encode(std::string input) {
  Encoded result;
  input.resize((input.size() + LzxEncoder::FrameSize - 1) / LzxEncoder::FrameSize * LzxEncoder::FrameSize);
  LzxEncoder encoder;
  std::vector<std::size_t> frames;
  for (std::size_t at = 0; at < input.size(); at += LzxEncoder::IntervalSize) {
    result.intervals.push_back(result.bytes.size());
    encoder.EncodeInterval(std::string_view(input).substr(at, LzxEncoder::IntervalSize), result.bytes, frames);
  }
  result.intervals.push_back(result.bytes.size());
  EXPECT_EQ(frames.size(), input.size() / LzxEncoder::FrameSize);
  EXPECT_TRUE(std::is_sorted(frames.begin(), frames.end()));
  result.padded = std::move(input);
  return result;
}

void ExpectRoundTrip(const std::string& input) {
  const auto encoded = Encode(input);
  LzxDecoder decoder(16);
  std::string interval;
  for (std::size_t i = 0; i + 1 < encoded.intervals.size(); ++i) {
    const auto expected =
        std::string_view(encoded.padded).substr(i * LzxEncoder::IntervalSize, LzxEncoder::IntervalSize);
    const auto bytes =
        std::string_view(encoded.bytes).substr(encoded.intervals[i], encoded.intervals[i + 1] - encoded.intervals[i]);
    ASSERT_TRUE(decoder.DecodeInterval(bytes, expected.size(), interval)) << "interval " << i;
    ASSERT_TRUE(interval == expected) << "interval " << i;
  }
}

using support::RandomBytes;

TEST(Lzx, AllZeros_ComeBack_AndTakeAlmostNothing) {
  const std::string zeros(500'000, '\0');
  ExpectRoundTrip(zeros);
  EXPECT_LT(Encode(zeros).bytes.size(), 2'000u);
}

TEST(Lzx, RandomBytes_ComeBack_AndGrowOnlyByBlockHeaders) {
  const auto random = RandomBytes(300'000, 256, 1);
  ExpectRoundTrip(random);
  const auto encoded = Encode(random);
  EXPECT_LE(encoded.bytes.size(), encoded.padded.size() + 16 * (encoded.intervals.size() - 1));
}

TEST(Lzx, PeriodicData_ComesBack) {
  for (const std::size_t period : {1, 2, 3, 7, 255, 256, 257, 258, 4095, 32767, 32768, 32769}) {
    const auto unit = RandomBytes(period, 256, static_cast<unsigned>(period));
    std::string data;
    while (data.size() < 140'000) data += unit;
    ExpectRoundTrip(data);
  }
}

TEST(Lzx, SizesAtTheBorders_OfFramesAndIntervals_ComeBack) {
  for (const std::size_t size : {1, 2, 3, 32766, 32767, 32768, 32769, 65535, 65536, 65537, 98303, 98304, 98305})
    ExpectRoundTrip(RandomBytes(size, 5, static_cast<unsigned>(size)));
}

TEST(Lzx, MixturesOfCopiesAndNoise_ComeBack) {
  std::mt19937 random(3);
  for (int round = 0; round < 60; ++round) {
    auto data = RandomBytes(random() % 140'000 + 600, random() % 255 + 1, random());
    for (int copy = 0; copy < 80; ++copy) {
      const auto length = random() % 500;
      std::memmove(&data[random() % (data.size() - 500)], &data[random() % (data.size() - 500)], length);
    }
    ExpectRoundTrip(data);
  }
}

TEST(Lzx, SameInput_GivesTheSameBytes_AlsoFromAUsedEncoder) {
  const auto input = RandomBytes(65536, 9, 4);
  LzxEncoder encoder;
  std::string first;
  std::string second;
  std::vector<std::size_t> frames;
  encoder.EncodeInterval(input, first, frames);
  encoder.EncodeInterval(RandomBytes(65536, 200, 5), second, frames);
  second.clear();
  encoder.EncodeInterval(input, second, frames);
  EXPECT_EQ(first, second);
}

TEST(LzxDecoder, DamagedInput_IsRefusedOrDecoded_ButNeverReadOutside) {
  const auto encoded = Encode(RandomBytes(65536, 20, 6));
  std::mt19937 random(8);
  LzxDecoder decoder(16);
  std::string output;
  int refused = 0;
  for (int round = 0; round < 3'000; ++round) {
    auto bytes = encoded.bytes;
    for (unsigned i = 0, n = 1 + random() % 4; i < n; ++i) bytes[random() % bytes.size()] = static_cast<char>(random());
    if (random() % 4 == 0) bytes.resize(random() % bytes.size());
    refused += !decoder.DecodeInterval(bytes, 65536, output);
    ASSERT_LE(output.size(), 65536u);
  }
  EXPECT_GT(refused, 500);
}

}  // namespace
}  // namespace quillbook::compile
