// The one way in which an operation says that it failed.
#pragma once

#include <exception>
#include <source_location>
#include <string>
#include <string_view>

namespace quillbook {

/// Numbers of failures. The values are the classic ones of the object model and are frozen: clients compare them.
enum class FailureNumber : int {
  None = 0,
  InvalidCall = 5,
  Overflow = 6,
  OutOfMemory = 7,
  SubscriptOutOfRange = 9,
  DivisionByZero = 11,
  TypeMismatch = 13,
  OutOfStackSpace = 28,
  InternalError = 51,
  BadFileName = 52,
  FileNotFound = 53,
  FileAlreadyOpen = 55,
  DeviceError = 57,
  DiskFull = 61,
  PermissionDenied = 70,
  PathFileAccess = 75,
  PathNotFound = 76,
  ObjectNotSet = 91,
  NoSuchMember = 438,
  ArgumentNotOptional = 449,
  WrongArgumentCount = 450,
  KeyAlreadyExists = 457,
  FormatNotMatching = 461,
  /// Raised by the failure reporter towards the caller after the pluggable error object has taken a report.
  AlreadyReported = 65535,
};

/// The classic text of a number, such as "Type mismatch".
[[nodiscard]] std::string_view FailureText(FailureNumber number) noexcept;

/// What a state dump shows in place of a value whose reading failed.
[[nodiscard]] std::string UnreadableText(FailureNumber number);

/// A failure on its way to the procedure that handles or reports it.
class Failure : public std::exception {
 public:
  /// `description` empty takes the classic text of the number.
  explicit Failure(FailureNumber number, std::string description = {},
                   std::source_location where = std::source_location::current(), std::string source = "QBLiteObjects2");

  [[nodiscard]] FailureNumber Number() const noexcept { return mNumber; }
  [[nodiscard]] const std::string& Description() const noexcept { return mDescription; }
  [[nodiscard]] const std::string& Source() const noexcept { return mSource; }
  /// Where the failure arose: the statement that called the failing helper, as far as helpers pass it on.
  [[nodiscard]] const std::source_location& Where() const noexcept { return mWhere; }
  /// False for a failure that arose where no caller's statement is known, as in `->` on nothing; the frame's own
  /// line then stands in for it.
  [[nodiscard]] bool HasPlace() const noexcept { return mHasPlace; }
  [[nodiscard]] Failure WithoutPlace() const;
  [[nodiscard]] const char* what() const noexcept override { return mDescription.c_str(); }

 private:
  FailureNumber mNumber;
  std::string mDescription;
  std::string mSource;
  std::source_location mWhere;
  bool mHasPlace = true;
};

/// Turns the exception that is being handled into a failure: a `Failure` stays, lack of memory becomes number 7,
/// any other exception number 51. Call it only inside a catch clause.
[[nodiscard]] Failure CurrentFailure(std::source_location where = std::source_location::current());

}  // namespace quillbook
