// An open file of the operating system.
#pragma once

#include <unistd.h>

#include <utility>

namespace quillbook::detail {

class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int number) noexcept : mNumber(number) {}
  Descriptor(Descriptor&& other) noexcept : mNumber(std::exchange(other.mNumber, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(mNumber, other.mNumber);
    return *this;
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (mNumber >= 0) ::close(mNumber);
  }

  [[nodiscard]] bool IsOpen() const noexcept { return mNumber >= 0; }
  [[nodiscard]] int Number() const noexcept { return mNumber; }
  /// False if the system lost bytes that it had taken.
  [[nodiscard]] bool Close() noexcept { return ::close(std::exchange(mNumber, -1)) == 0; }

 private:
  int mNumber = -1;
};

}  // namespace quillbook::detail
