#include "quillbook/base/Failure.h"

#include <new>

namespace quillbook {

std::string_view FailureText(FailureNumber number) noexcept {
  switch (number) {
    case FailureNumber::None: return "";
    case FailureNumber::InvalidCall: return "Invalid procedure call or argument";
    case FailureNumber::Overflow: return "Overflow";
    case FailureNumber::OutOfMemory: return "Out of memory";
    case FailureNumber::SubscriptOutOfRange: return "Subscript out of range";
    case FailureNumber::DivisionByZero: return "Division by zero";
    case FailureNumber::TypeMismatch: return "Type mismatch";
    case FailureNumber::OutOfStackSpace: return "Out of stack space";
    case FailureNumber::InternalError: return "Internal error";
    case FailureNumber::BadFileName: return "Bad file name or number";
    case FailureNumber::FileNotFound: return "File not found";
    case FailureNumber::FileAlreadyOpen: return "File already open";
    case FailureNumber::DeviceError: return "Device I/O error";
    case FailureNumber::DiskFull: return "Disk full";
    case FailureNumber::PermissionDenied: return "Permission denied";
    case FailureNumber::PathFileAccess: return "Path/File access error";
    case FailureNumber::PathNotFound: return "Path not found";
    case FailureNumber::ObjectNotSet: return "Object variable or With block variable not set";
    case FailureNumber::NoSuchMember: return "Object doesn't support this property or method";
    case FailureNumber::ArgumentNotOptional: return "Argument not optional";
    case FailureNumber::WrongArgumentCount: return "Wrong number of arguments or invalid property assignment";
    case FailureNumber::KeyAlreadyExists: return "This key is already associated with an element of this collection";
    case FailureNumber::FormatNotMatching: return "Specified format doesn't match format of data";
    case FailureNumber::AlreadyReported: return "Application-defined or object-defined error";
  }
  return "Application-defined or object-defined error";
}

std::string UnreadableText(FailureNumber number) {
  return "{Error " + std::to_string(static_cast<int>(number)) + " formatting for output}";
}

Failure::Failure(FailureNumber number, std::string description, std::source_location where, std::string source)
    : mNumber(number),
      mDescription(description.empty() ? std::string(FailureText(number)) : std::move(description)),
      mSource(std::move(source)),
      mWhere(where) {}

Failure Failure::WithoutPlace() const {
  Failure copy = *this;
  copy.mHasPlace = false;
  return copy;
}

Failure CurrentFailure(std::source_location where) {
  try {
    throw;
  } catch (const Failure& failure) {
    return failure;
  } catch (const std::bad_alloc&) {
    return Failure(FailureNumber::OutOfMemory, {}, where).WithoutPlace();
  } catch (const std::exception& exception) {
    return Failure(FailureNumber::InternalError, exception.what(), where).WithoutPlace();
  } catch (...) {
    return Failure(FailureNumber::InternalError, {}, where).WithoutPlace();
  }
}

}  // namespace quillbook
