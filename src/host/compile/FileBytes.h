// Containers in files.
#pragma once

#include <fstream>
#include <string>

#include "host/compile/ByteSink.h"

namespace quillbook::compile {

/// A file that is read in pieces. Failures 53, 70 and 75 where it can't be opened.
class FileSource final : public ByteSource {
 public:
  explicit FileSource(const std::string& path);
  [[nodiscard]] std::uint64_t Size() const override { return mSize; }
  [[nodiscard]] std::string Read(std::uint64_t offset, std::size_t count) const override;

 private:
  std::string mPath;
  mutable std::ifstream mStream;
  std::uint64_t mSize = 0;
};

/// A file of this process that grows and is read again, gone with the object. Failure 61 when the disk is full.
class SpoolFile final : public ByteSink, public ByteSource {
 public:
  explicit SpoolFile(const std::string& folder);
  SpoolFile(const SpoolFile&) = delete;
  SpoolFile& operator=(const SpoolFile&) = delete;
  ~SpoolFile() override;

  void Write(std::string_view bytes) override;
  [[nodiscard]] std::uint64_t Size() const override { return mSize; }
  [[nodiscard]] std::string Read(std::uint64_t offset, std::size_t count) const override;

 private:
  std::string mPath;
  mutable std::fstream mStream;
  std::uint64_t mSize = 0;
};

/// Two sources, one behind the other. They outlive this.
class JoinedSource final : public ByteSource {
 public:
  JoinedSource(const ByteSource& front, const ByteSource& back) : mFront(front), mBack(back) {}
  [[nodiscard]] std::uint64_t Size() const override { return mFront.Size() + mBack.Size(); }
  [[nodiscard]] std::string Read(std::uint64_t offset, std::size_t count) const override;

 private:
  const ByteSource& mFront;
  const ByteSource& mBack;
};

}  // namespace quillbook::compile
