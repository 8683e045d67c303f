#include "quillbook/frame/FailureReporter.h"

#include <dlfcn.h>
#include <unistd.h>

#include <utility>

#include "quillbook/frame/Procedure.h"
#include "quillbook/platform/Platform.h"

namespace quillbook {

namespace {

constexpr std::string_view LibraryName = "QBLiteObjects2";

std::shared_ptr<ErrorObject>& CurrentErrorObject() {
  thread_local std::shared_ptr<ErrorObject> object;
  return object;
}

FailureVariables InitialVariables() {
  FailureVariables variables;
  variables.fltnProcessId = static_cast<std::int32_t>(getpid());
  Dl_info module{};
  // The address of anything in the library will do.
  if (dladdr(reinterpret_cast<const void*>(&CurrentErrorObject), &module) != 0) {
    variables.fltnProjectId = static_cast<std::int32_t>(reinterpret_cast<std::uintptr_t>(module.dli_fbase));
    if (module.dli_fname) variables.fltnModuleFilename = module.dli_fname;
  }
  variables.fltnHasInitialised = true;
  return variables;
}

void AppendSection(std::string& text, std::string_view name, std::string_view content) {
  text.append("<").append(name).append(">\r\n").append(content).append("</").append(name).append(">\r\n");
}

std::string FullDump(std::string_view locals, std::string_view fields, std::string_view parameters) {
  std::string text = "<Variables>\r\n";
  AppendSection(text, "LocalVariables", locals);
  AppendSection(text, "ModuleVariables", fields);
  AppendSection(text, "GlobalVariables", fltnDumpGlobals());
  return text.append("</Variables>\r\n<Parameters>\r\n").append(parameters).append("</Parameters>");
}

std::string BoxText(std::int32_t number, std::string_view module, std::string_view procedure,
                    std::string_view description, std::int32_t line) {
  return std::string(LibraryName)
      .append(" has encountered a problem. We are sorry for the inconvenience.\r\n\r\nModule: ")
      .append(module)
      .append("\r\nProcedure: ")
      .append(procedure)
      .append("\r\nLine Number: ")
      .append(std::to_string(line))
      .append("\r\n\r\n")
      .append(description)
      .append(" (")
      .append(std::to_string(number))
      .append(")");
}

}  // namespace

std::shared_ptr<ErrorObject> SetErrorObject(std::shared_ptr<ErrorObject> object) {
  return std::exchange(CurrentErrorObject(), std::move(object));
}

bool HasErrorObject() noexcept {
  return CurrentErrorObject() != nullptr;
}

FailureVariables& fltnVariables() {
  thread_local FailureVariables variables = InitialVariables();
  return variables;
}

void fltnCaptureError(const Failure& Err, std::int32_t FrameLine) {
  auto& variables = fltnVariables();
  variables.fltnErrorNumber = static_cast<std::int32_t>(Err.Number());
  variables.fltnErrorLine = Err.HasPlace() ? static_cast<std::int32_t>(Err.Where().line()) : FrameLine;
  variables.fltnErrorDescription = Err.Description();
  variables.fltnErrorSource = Err.Source();
}

std::string fltnReportError(std::int32_t ErrorNumber, std::string_view Module, std::string_view Procedure,
                            std::string_view ErrorDescription, std::int32_t ErrorLine, std::string_view LocalVariables,
                            std::string_view ModuleVariables, std::string_view Parameters) {
  // Held here, so that a handler may replace itself.
  if (const auto object = CurrentErrorObject()) {
    object->ErrorHandler(ErrorNumber, LibraryName, Module, Procedure, ErrorDescription, ErrorLine,
                         FullDump(LocalVariables, ModuleVariables, Parameters), QUILLBOOK_VERSION);
    (void)object->Action();
    throw Failure(FailureNumber::AlreadyReported).WithoutPlace();
  }
  // A box that can't be shown must not turn a reported failure into an exception that nobody expects.
  IgnoreFailures([&] {
    Platform::Current().Messages().Show(BoxText(ErrorNumber, Module, Procedure, ErrorDescription, ErrorLine),
                                        MessageBox::Critical, "Application Error");
  });
  return {};
}

}  // namespace quillbook
