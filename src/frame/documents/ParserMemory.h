// Memory for one run of the parser.
#pragma once

#include <algorithm>
#include <csetjmp>
#include <cstddef>
#include <memory>
#include <new>
#include <vector>

namespace quillbook::html {

/// Gives memory from large blocks and frees it all at once. The parser underneath frees its tree by recursion, which no
/// call stack bears for a deep one; here it never needs to. Nor does it look whether it was given memory, so that one
/// that wants too much is left by a jump: its C code holds nothing but what lies in here.
class ParserMemory {
 public:
  explicit ParserMemory(std::size_t limit) : mLeft(limit) {}

  /// To be set before the parser runs. Comes back with a value when the parser wants more than the limit.
  std::jmp_buf tooMuch{};

  void* Take(std::size_t size) {
    constexpr std::size_t alignment = alignof(std::max_align_t);
    size = (size + alignment - 1) / alignment * alignment;
    if (size > mLeft) std::longjmp(tooMuch, 1);
    mLeft -= size;
    if (size > mRoom && !AddBlock(size)) std::longjmp(tooMuch, 1);
    auto* memory = mNext;
    mNext += size;
    mRoom -= size;
    return memory;
  }

 private:
  static constexpr std::size_t BlockSize = 64 * 1024;

  [[nodiscard]] bool AddBlock(std::size_t size) noexcept {
    try {
      mRoom = std::max(size, BlockSize);
      mBlocks.push_back(std::unique_ptr<std::byte[]>(new std::byte[mRoom]));
      mNext = mBlocks.back().get();
      return true;
    } catch (const std::bad_alloc&) {
      return false;
    }
  }

  std::size_t mLeft;
  std::vector<std::unique_ptr<std::byte[]>> mBlocks;
  std::byte* mNext = nullptr;
  std::size_t mRoom = 0;
};

}  // namespace quillbook::html
