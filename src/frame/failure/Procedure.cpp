#include "quillbook/frame/Procedure.h"

#include "frame/failure/StateDump.h"
#include "quillbook/frame/FailureReporter.h"

namespace quillbook {

namespace {

std::string DumpParameters(const detail::ParameterWriter& parameters) {
  ParameterDump dump;
  std::string trouble;
  try {
    parameters.write(parameters.context, dump);
  } catch (...) {
    trouble = UnreadableText(CurrentFailure().Number());
  }
  return std::move(dump).Text() + trouble;
}

}  // namespace

void ParameterDump::operator()(std::string_view name, const Variant& value) {
  const bool ofTheLibrary =
      value.GetKind() == Variant::Kind::Object && dynamic_cast<const LibraryObject*>(value.ToObject().get()) != nullptr;
  mText += fltnDumpVariable(name, ofTheLibrary ? Variant(Variant::Opaque{"{Cannot dump external UDTs}"}) : value,
                            detail::AllDepths);
}

namespace detail {

void ReportCurrent(const Object* self, const Module* module, std::string_view procedure, ParameterWriter parameters,
                   std::source_location where) {
  const auto failure = CurrentFailure(where);
  fltnCaptureError(failure, static_cast<std::int32_t>(where.line()));
  const auto line = fltnVariables().fltnErrorLine;
  std::string fields;
  std::string arguments;
  // Only the error object reads the dump, and the fields of a large object are many.
  if (const DumpScope scope; HasErrorObject() && scope.IsOutermost()) {
    fields = self ? DumpModuleVariables(*self) : DumpModuleVariables(*module);
    arguments = DumpParameters(parameters);
  }
  fltnReportError(static_cast<std::int32_t>(failure.Number()), self ? self->TypeName() : module->name, procedure,
                  failure.Description(), line, fltnVariables().fltnVariableDump, fields, arguments);
}

}  // namespace detail

}  // namespace quillbook
