#include "host/compile/HuffmanCode.h"

#include <gtest/gtest.h>

#include <numeric>
#include <vector>

#include "host/compile/HuffmanDecoder.h"

namespace quillbook::compile {
namespace {

std::vector<std::uint8_t> LengthsOf(const std::vector<std::uint32_t>& frequencies, int limit) {
  std::vector<std::uint8_t> lengths(frequencies.size());
  BuildCodeLengths(frequencies, limit, lengths);
  return lengths;
}

/// Sum of 2^-length in units of 2^-16; 65536 for a complete code.
std::uint32_t KraftSum(const std::vector<std::uint8_t>& lengths) {
  return std::accumulate(lengths.begin(), lengths.end(), 0U, [](std::uint32_t sum, std::uint8_t length) {
    return length ? sum + (65536U >> length) : sum;
  });
}

TEST(HuffmanCode, IsOptimal_ForATextbookCase) {
  EXPECT_EQ(LengthsOf({5, 9, 12, 13, 16, 45}, 16), (std::vector<std::uint8_t>{4, 4, 3, 3, 3, 1}));
}

TEST(HuffmanCode, SingleSymbol_GetsASecondOne_SoThatTheCodeIsComplete) {
  EXPECT_EQ(LengthsOf({0, 0, 7, 0}, 16), (std::vector<std::uint8_t>{1, 0, 1, 0}));
  EXPECT_EQ(LengthsOf({7, 0, 0}, 16), (std::vector<std::uint8_t>{1, 1, 0}));
}

TEST(HuffmanCode, NoSymbols_GiveNoCode) {
  EXPECT_EQ(LengthsOf({0, 0}, 16), (std::vector<std::uint8_t>{0, 0}));
}

TEST(HuffmanCode, StaysWithinTheLimit_AndComplete_WhereThePlainCodeWouldBeLonger) {
  std::vector<std::uint32_t> fibonacci{1, 1};
  while (fibonacci.size() < 40) fibonacci.push_back(fibonacci.end()[-1] + fibonacci.end()[-2]);
  for (const int limit : {7, 15, 16}) {
    const auto lengths =
        LengthsOf(limit == 7 ? std::vector(fibonacci.begin(), fibonacci.begin() + 30) : fibonacci, limit);
    EXPECT_LE(*std::max_element(lengths.begin(), lengths.end()), limit);
    EXPECT_EQ(KraftSum(lengths), 65536U) << limit;
  }
}

TEST(HuffmanDecoder, DecodesEveryWord_ThatTheEncoderMakes) {
  std::vector<std::uint32_t> frequencies(600);
  for (std::size_t i = 0; i < frequencies.size(); ++i)
    frequencies[i] = i % 3 ? static_cast<std::uint32_t>(1 + i * i) : 0;
  const auto lengths = LengthsOf(frequencies, 16);
  std::vector<std::uint16_t> words(lengths.size());
  BuildCodeWords(lengths, words);
  HuffmanDecoder decoder;
  ASSERT_TRUE(decoder.Build(lengths));
  for (std::size_t i = 0; i < lengths.size(); ++i) {
    if (!lengths[i]) continue;
    const auto bits = static_cast<std::uint32_t>(words[i]) << (16 - lengths[i]);
    const auto symbol = decoder.Decode(bits | ((1U << (16 - lengths[i])) - 1));
    EXPECT_EQ(symbol.value, i);
    EXPECT_EQ(symbol.bits, lengths[i]);
  }
}

TEST(HuffmanDecoder, RefusesCodes_ThatAreOverfullOrIncomplete) {
  HuffmanDecoder decoder;
  EXPECT_FALSE(decoder.Build(std::vector<std::uint8_t>{1, 1, 1}));
  EXPECT_FALSE(decoder.Build(std::vector<std::uint8_t>{1, 2}));
  EXPECT_FALSE(decoder.Build(std::vector<std::uint8_t>{17}));
  EXPECT_TRUE(decoder.Build(std::vector<std::uint8_t>{0, 0}));
}

}  // namespace
}  // namespace quillbook::compile
