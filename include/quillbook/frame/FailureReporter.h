// Failure reports: the state dump, the pluggable error object, and the message box that stands in for it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "quillbook/base/Failure.h"
#include "quillbook/base/Object.h"
#include "quillbook/base/Variant.h"

namespace quillbook {

/// Takes failure reports in place of the message box, as an editor or a service does that keeps a log.
///
/// While a thread has one, each report ends with failure 65535 (`FailureNumber::AlreadyReported`) towards the caller,
/// whose own frame reports again: a chain of procedures is told from the inside out.
class ErrorObject {
 public:
  ErrorObject() = default;
  ErrorObject(const ErrorObject&) = delete;
  ErrorObject& operator=(const ErrorObject&) = delete;
  virtual ~ErrorObject() = default;

  /// `Variables` is the full state dump, `Version` the library's as `Major.Minor.Revision`. What it raises goes to
  /// the caller of the procedure that failed.
  virtual void ErrorHandler(std::int32_t ErrorNumber, std::string_view Library, std::string_view Module,
                            std::string_view Procedure, std::string_view ErrorDescription, std::int32_t ErrorLine,
                            std::string_view Variables, std::string_view Version) = 0;
  /// What shall be done about the failure that was handled last.
  [[nodiscard]] virtual std::string Action() const = 0;
};

/// Plugs an error object into the calling thread and gives the one that was there; nothing takes it out again.
std::shared_ptr<ErrorObject> SetErrorObject(std::shared_ptr<ErrorObject> object);
[[nodiscard]] bool HasErrorObject() noexcept;

/// What is known of the failure captured last, and the identity of this library; one set per thread. A captured
/// failure stays until the next one.
struct FailureVariables {
  std::int32_t fltnErrorNumber = 0;
  std::string fltnErrorDescription;
  std::int32_t fltnErrorLine = 0;
  std::string fltnErrorSource;
  std::string fltnVariableDump;  ///< locals; C++ keeps no names of them, so it stays empty
  bool fltnHasInitialised = false;
  std::int32_t fltnProjectId = 0;  ///< where the library is loaded, cut to 32 bits
  std::int32_t fltnProcessId = 0;
  std::string fltnModuleFilename;
  // Counting of objects for a diagnostics listener. There is none here, so these keep their values; debug builds count
  // live objects in `TypeInfo`.
  bool fltnDebuggerListening = false;
  bool fltnEnableInstanceCounts = false;
  std::int32_t fltnInstanceCountsServerHandle = 0;
  std::vector<std::int16_t> fltnInstanceCountComponentNames;
  std::vector<std::int16_t> fltnSkipInstanceCount;
  std::int32_t fltnComponentID = 0;
};

/// The calling thread's variables, initialised.
[[nodiscard]] FailureVariables& fltnVariables();

/// Copies number, description, line and source of a failure into the variables. `FrameLine` stands in for the line of
/// a failure that doesn't know its place.
void fltnCaptureError(const Failure& Err, std::int32_t FrameLine = 0);

/// One variable as text, never failing: what can't be read becomes "{Error n formatting for output}". Only the part of
/// `Name` before the first blank goes into the closing tag. `Depth` is handed down but limits nothing.
[[nodiscard]] std::string fltnDumpVariable(std::string_view Name, const Variant& Value, int Depth);
/// The library-wide variables as text.
[[nodiscard]] std::string fltnDumpGlobals();
/// All fields of an object as text, in declared order.
[[nodiscard]] std::string DumpModuleVariables(const Object& object);

/// Tells names and values of the library-wide variables that live in the object library.
using GlobalsWriter = void (*)(const Object::FieldVisitor& visitor);
/// Names the source of the first part of `fltnDumpGlobals`, for all threads; null takes it out.
void SetGlobalsWriter(GlobalsWriter writer) noexcept;

/// Hands a report to the error object and raises failure 65535; without one, shows a message box and returns. The
/// result is the error object's `Action`, which therefore reaches nobody.
std::string fltnReportError(std::int32_t ErrorNumber, std::string_view Module, std::string_view Procedure,
                            std::string_view ErrorDescription, std::int32_t ErrorLine, std::string_view LocalVariables,
                            std::string_view ModuleVariables, std::string_view Parameters);

}  // namespace quillbook
