// Longest earlier occurrences within one reset interval.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

namespace quillbook::compile {

/// Hash chains over the positions of one interval. All state fits the processor's second-level cache.
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
  static constexpr int HashBits = 15;
  static constexpr std::uint32_t MaximumChain = 32;
  static constexpr std::uint32_t GoodLength = 96;  ///< long enough to stop looking

  [[nodiscard]] std::uint32_t HashAt(std::uint32_t position) const noexcept;

  std::string_view mData;
  std::array<std::uint32_t, 1U << HashBits> mHead{};  ///< position + mBase; below mBase: empty
  std::array<std::uint32_t, 0x10000> mPrevious{};
  std::uint32_t mBase = 0;
  std::array<Match, MaximumChain> mFound{};
};

}  // namespace quillbook::compile
