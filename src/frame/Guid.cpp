// Keys of the object model.
#include <sys/random.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "quillbook/frame/modMain.h"

namespace quillbook::modMain {
namespace {

using GuidBytes = std::array<std::uint8_t, 16>;

/// Random bytes from the system, fetched in batches: a project file without keys needs one for every topic.
class RandomSource {
 public:
  /// False if the system gave none.
  bool Next(GuidBytes& bytes) {
    if (mUsed == mPool.size() && !Refill()) return false;
    std::memcpy(bytes.data(), mPool.data() + mUsed, bytes.size());
    mUsed += bytes.size();
    return true;
  }

 private:
  bool Refill() {
    std::size_t filled = 0;
    while (filled < mPool.size()) {
      const auto got = getrandom(mPool.data() + filled, mPool.size() - filled, 0);
      if (got < 0 && errno != EINTR) return false;
      if (got > 0) filled += static_cast<std::size_t>(got);
    }
    mUsed = 0;
    return true;
  }

  std::array<std::uint8_t, 4096> mPool;
  std::size_t mUsed = mPool.size();
};

std::string FormatGuid(const GuidBytes& bytes) {
  constexpr char digits[] = "0123456789ABCDEF";
  std::string text(38, '-');
  text.front() = '{';
  text.back() = '}';
  std::size_t at = 1;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (i == 4 || i == 6 || i == 8 || i == 10) ++at;
    text[at++] = digits[bytes[i] >> 4];
    text[at++] = digits[bytes[i] & 15];
  }
  return text;
}

}  // namespace

std::string CreateGUID() {
  thread_local RandomSource source;
  GuidBytes bytes;
  if (!source.Next(bytes)) return {};
  bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0F) | 0x40);  // version 4: random
  bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3F) | 0x80);
  return FormatGuid(bytes);
}

}  // namespace quillbook::modMain
