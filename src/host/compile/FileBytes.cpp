#include "host/compile/FileBytes.h"

#include <algorithm>

#include "quillbook/base/Failure.h"
#include "quillbook/platform/Platform.h"

namespace quillbook::compile {

namespace {

std::string ReadFrom(std::istream& stream, const std::string& path, std::uint64_t size, std::uint64_t offset,
                     std::size_t count) {
  if (offset >= size) return {};
  std::string bytes(static_cast<std::size_t>(std::min<std::uint64_t>(count, size - offset)), '\0');
  stream.clear();
  stream.seekg(static_cast<std::streamoff>(offset));
  stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (stream.bad() || static_cast<std::size_t>(stream.gcount()) != bytes.size())
    throw Failure(FailureNumber::DeviceError, path + ": reading failed");
  return bytes;
}

}  // namespace

FileSource::FileSource(const std::string& path) : mPath(path) {
  const auto status = Platform::Current().Files().GetStatus(path);
  if (!status.exists) throw Failure(FailureNumber::FileNotFound, path + ": there is no such file");
  if (status.isDirectory) throw Failure(FailureNumber::PathFileAccess, path + ": this is a folder");
  mStream.open(path, std::ios::binary);
  if (!mStream) throw Failure(FailureNumber::PermissionDenied, path + ": the file can't be opened");
  mSize = status.size;
}

std::string FileSource::Read(std::uint64_t offset, std::size_t count) const {
  return ReadFrom(mStream, mPath, mSize, offset, count);
}

SpoolFile::SpoolFile(const std::string& folder)
    : mPath(Platform::Current().Files().CreateUniqueFile(folder, ".quillbook-", ".spool")),
      mStream(mPath, std::ios::binary | std::ios::in | std::ios::out) {
  if (!mStream) throw Failure(FailureNumber::PermissionDenied, mPath + ": the file can't be opened");
}

SpoolFile::~SpoolFile() {
  mStream.close();
  try {
    Platform::Current().Files().RemoveFile(mPath);
  } catch (const Failure&) {  // somebody was quicker
  }
}

void SpoolFile::Write(std::string_view bytes) {
  mStream.seekp(static_cast<std::streamoff>(mSize));
  mStream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  // Flushed at once, so that a full disk is met here and not in a destructor.
  if (!mStream.flush()) throw Failure(FailureNumber::DiskFull, mPath + ": writing failed, the disk may be full");
  mSize += bytes.size();
}

std::string SpoolFile::Read(std::uint64_t offset, std::size_t count) const {
  return ReadFrom(mStream, mPath, mSize, offset, count);
}

std::string JoinedSource::Read(std::uint64_t offset, std::size_t count) const {
  const auto border = mFront.Size();
  if (offset >= border) return mBack.Read(offset - border, count);
  auto bytes = mFront.Read(offset, count);
  if (bytes.size() < count && offset + bytes.size() == border) bytes += mBack.Read(0, count - bytes.size());
  return bytes;
}

}  // namespace quillbook::compile
