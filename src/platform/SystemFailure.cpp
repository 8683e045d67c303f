#include "platform/SystemFailure.h"

#include <sys/stat.h>

#include <cerrno>
#include <system_error>

#include "quillbook/base/Failure.h"

namespace quillbook::detail {

namespace {

bool IsFolder(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

FailureNumber NumberOf(int error, const std::string& path) {
  switch (error) {
    case ENOENT: return IsFolder(FolderOf(path)) ? FailureNumber::FileNotFound : FailureNumber::PathNotFound;
    case ENOTDIR: return FailureNumber::PathNotFound;
    case EISDIR:
    case ENOTEMPTY:
    case EEXIST: return FailureNumber::PathFileAccess;
    case EACCES:
    case EPERM:
    case EROFS:
    case ETXTBSY:
    case EWOULDBLOCK: return FailureNumber::PermissionDenied;
    case ENOSPC:
    case EDQUOT:
    case EFBIG: return FailureNumber::DiskFull;
    case ENAMETOOLONG:
    case EINVAL:
    case ELOOP: return FailureNumber::BadFileName;
    case ENOMEM: return FailureNumber::OutOfMemory;
    default: return FailureNumber::DeviceError;
  }
}

}  // namespace

void RaiseSystemFailure(int error, const std::string& path) {
  const auto number = NumberOf(error, path);
  auto description = std::string(FailureText(number)) + ": '" + path + "'";
  if (number == FailureNumber::DeviceError) description += " (" + std::generic_category().message(error) + ")";
  throw Failure(number, std::move(description));
}

std::string FolderOf(const std::string& path) {
  const auto slash = path.find_last_of('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

}  // namespace quillbook::detail
