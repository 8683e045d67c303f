// Where a container's bytes go to and come from.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace quillbook::compile {

/// Takes bytes one after the other. Raises a failure when it can't.
class ByteSink {
 public:
  virtual ~ByteSink() = default;
  virtual void Write(std::string_view bytes) = 0;
};

/// Gives bytes at any place.
class ByteSource {
 public:
  virtual ~ByteSource() = default;
  [[nodiscard]] virtual std::uint64_t Size() const = 0;
  /// As many of `count` bytes at `offset` as there are. Raises a failure when reading fails.
  [[nodiscard]] virtual std::string Read(std::uint64_t offset, std::size_t count) const = 0;
};

/// Bytes in memory.
class MemorySink final : public ByteSink {
 public:
  void Write(std::string_view bytes) override { mBytes.append(bytes); }
  [[nodiscard]] const std::string& Bytes() const noexcept { return mBytes; }

 private:
  std::string mBytes;
};

class MemorySource final : public ByteSource {
 public:
  explicit MemorySource(std::string_view bytes) : mBytes(bytes) {}
  [[nodiscard]] std::uint64_t Size() const override { return mBytes.size(); }
  [[nodiscard]] std::string Read(std::uint64_t offset, std::size_t count) const override {
    return offset < mBytes.size() ? std::string(mBytes.substr(static_cast<std::size_t>(offset), count)) : std::string();
  }

 private:
  std::string_view mBytes;
};

}  // namespace quillbook::compile
