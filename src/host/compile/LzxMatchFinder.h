// Longest earlier occurrences within one reset interval.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

namespace quillbook::compile {

/// Hash chains over the positions of one interval: all occurrences of four bytes, and the latest of three, since a
/// short match that is far away saves nothing. All state fits the processor's second-level cache.
class LzxMatchFinder {
 public:
  struct Match {
    std::uint32_t length = 0;
    std::uint32_t distance = 0;
  };
  static constexpr std::uint32_t MinimumLength = 3;
  static constexpr std::uint32_t MaximumLength = 257;

  /// Begins with new data of at most 64 KiB.
  void Begin(std::string_view data);
  /// Matches at a position, at most `limit` long and longer than `longerThan`, each longer and farther away than the
  /// one before; none if there is none of three bytes. The position is entered into the chains. The list is good until
  /// the next call.
  [[nodiscard]] std::span<const Match> FindAndInsert(std::uint32_t position, std::uint32_t limit,
                                                     std::uint32_t longerThan);
  void Insert(std::uint32_t position);

  /// Bytes that two places have in common, at most `limit`.
  [[nodiscard]] static std::uint32_t CommonLength(const char* left, const char* right, std::uint32_t limit) noexcept;

 private:
  static constexpr std::size_t IntervalSize = 0x10000;
  static constexpr int BitsOfFour = 15;
  static constexpr int BitsOfThree = 14;
  static constexpr std::uint32_t HashedLength = 4;  ///< of the chains
  static constexpr std::uint32_t MaximumChain = 32;
  static constexpr std::uint32_t GoodLength = 96;  ///< long enough to stop looking

  /// Positions that begin with the same bytes, counted from 1; 0 is none.
  struct Latest {
    std::uint32_t ofThree = 0;
    std::uint32_t ofFour = 0;
  };
  /// Enters a position; tells what was the latest before.
  Latest Enter(std::uint32_t position) noexcept;
  /// Follows the chain from `candidate` on and adds what is longer than `best`, which is at least 3.
  void FindLonger(std::uint32_t position, std::uint32_t limit, std::uint32_t best, std::uint32_t candidate);

  std::string_view mData;
  // Counted from 1 positions still fit 16 bits: the last three of an interval have no four bytes and aren't entered.
  std::array<std::uint16_t, 1U << BitsOfFour> mLatestOfFour{};
  std::array<std::uint16_t, 1U << BitsOfThree> mLatestOfThree{};
  std::array<std::uint16_t, IntervalSize> mPrevious{};
  std::array<Match, MaximumChain + 1> mFound{};
  std::size_t mFoundCount = 0;
};

}  // namespace quillbook::compile
