// Many byte sequences that grow side by side, without waste.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

namespace quillbook::compile {

/// Holds any number of sequences that are appended to in any order. A sequence is a chain of blocks that double in
/// size up to a limit, out of pages that are never moved.
class ByteChains {
 public:
  struct Chain {
    std::uint32_t first = 0;  ///< place of the first block + 1; 0: empty
    std::uint32_t last = 0;
    std::uint16_t used = 0;  ///< of the last block
    std::uint16_t size = 0;  ///< of the last block, without its link
  };

  void Append(Chain& chain, std::string_view bytes) {
    while (!bytes.empty()) {
      if (chain.used == chain.size) AddBlock(chain);
      const auto count = std::min<std::size_t>(bytes.size(), chain.size - chain.used);
      std::memcpy(At(chain.last) + Link + chain.used, bytes.data(), count);
      chain.used = static_cast<std::uint16_t>(chain.used + count);
      bytes.remove_prefix(count);
    }
  }

  void Read(const Chain& chain, const std::function<void(std::string_view)>& sink) const {
    std::uint16_t size = SmallestBlock;
    for (auto block = chain.first; block != 0;) {
      const bool isLast = block == chain.last;
      sink({At(block) + Link, isLast ? chain.used : size});
      if (isLast) break;
      std::memcpy(&block, At(block), Link);
      size = NextSize(size);
    }
  }

  /// Bytes of memory that are taken.
  [[nodiscard]] std::size_t Size() const noexcept { return mPages.size() * PageSize; }

 private:
  static constexpr std::size_t PageSize = 1U << 16;
  static constexpr std::size_t Link = sizeof(std::uint32_t);
  static constexpr std::uint16_t SmallestBlock = 12;
  static constexpr std::uint16_t LargestBlock = 252;

  static constexpr std::uint16_t NextSize(std::uint16_t size) {
    return size >= LargestBlock / 2 ? LargestBlock : static_cast<std::uint16_t>(size * 2 + Link);
  }
  [[nodiscard]] char* At(std::uint32_t block) const {
    return mPages[(block - 1) / PageSize].get() + (block - 1) % PageSize;
  }

  void AddBlock(Chain& chain) {
    const auto size = chain.first == 0 ? SmallestBlock : NextSize(chain.size);
    if (mPages.empty() || mFree + Link + size > PageSize) {
      mPages.push_back(std::make_unique<char[]>(PageSize));
      mFree = 0;
    }
    const auto block = static_cast<std::uint32_t>((mPages.size() - 1) * PageSize + mFree + 1);
    mFree += Link + size;
    if (chain.first == 0)
      chain.first = block;
    else
      std::memcpy(At(chain.last), &block, Link);
    chain.last = block;
    chain.used = 0;
    chain.size = size;
  }

  std::vector<std::unique_ptr<char[]>> mPages;
  std::size_t mFree = 0;
};

}  // namespace quillbook::compile
