// The frame of a procedure: what turns a failure into a report and an empty result.
#pragma once

#include <source_location>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "quillbook/base/Failure.h"
#include "quillbook/base/Object.h"

namespace quillbook {

/// Collects the dump of a procedure's parameters.
class ParameterDump {
 public:
  void operator()(std::string_view name, const Variant& value);
  [[nodiscard]] std::string Text() && { return std::move(mText); }

 private:
  std::string mText;
};

/// A module of free procedures, for the frame and the dump.
struct Module {
  std::string_view name;
  /// Names and values of the module's variables in declared order; may be null.
  void (*fields)(const Object::FieldVisitor& visitor) = nullptr;
};

namespace detail {

/// Writes the parameters of the failing procedure into the dump. A plain pair of pointers: nothing is allocated.
struct ParameterWriter {
  const void* context = nullptr;
  void (*write)(const void* context, ParameterDump& dump) = nullptr;
};

/// Captures and reports the exception that is being handled. Returns normally after a message box; raises failure
/// 65535 if the pluggable error object took the report.
void ReportCurrent(const Object* self, const Module* module, std::string_view procedure, ParameterWriter parameters,
                   std::source_location where);

struct NoParameters {
  void operator()(ParameterDump&) const {}
};

}  // namespace detail

/// The frame of one procedure call.
///
///     Ref<Topic> QBProject::TopicByName(std::string_view Name) {
///       return Procedure(*this, "TopicByName", [&](auto& p) { p("Name", Name); }).Run([&]() -> Ref<Topic> {
///         ...
///       });
///     }
///
/// A failure in the body is captured and reported with module, procedure, line, parameters, fields and globals, and
/// the call returns the empty value of its type. The normal path neither allocates nor formats: the parameters are
/// described by a function that runs only after a failure.
template <class Owner, class Parameters = detail::NoParameters>
class Procedure {
 public:
  Procedure(const Owner& owner, std::string_view name, Parameters parameters = {},
            std::source_location where = std::source_location::current()) noexcept
      : mOwner(owner), mName(name), mParameters(std::move(parameters)), mWhere(where) {}

  /// Runs the body and gives its result; the empty value if it failed.
  template <class Body>
  auto Run(Body&& body) -> std::invoke_result_t<Body&> {
    using Result = std::invoke_result_t<Body&>;
    try {
      return body();
    } catch (...) {
      Report();
    }
    if constexpr (!std::is_void_v<Result>) return Result{};
  }

  /// Runs a body that sets its result step by step: a failure leaves the result as far as it was set.
  template <class Result, class Body>
  Result RunSetting(Result result, Body&& body) {
    try {
      body(result);
    } catch (...) {
      Report();
    }
    return result;
  }

 private:
  [[gnu::cold]] void Report() const {
    const detail::ParameterWriter writer{&mParameters, [](const void* context, ParameterDump& dump) {
                                           (*static_cast<const Parameters*>(context))(dump);
                                         }};
    if constexpr (std::is_base_of_v<Object, Owner>)
      detail::ReportCurrent(&mOwner, nullptr, mName, writer, mWhere);
    else
      detail::ReportCurrent(nullptr, &mOwner, mName, writer, mWhere);
  }

  const Owner& mOwner;
  std::string_view mName;
  Parameters mParameters;
  std::source_location mWhere;
};

template <class Owner>
Procedure(const Owner&, std::string_view) -> Procedure<Owner>;

/// Runs one statement; if it fails, its target keeps its value and the next statement runs. True if it ran through.
template <class Statement>
bool IgnoreFailures(Statement&& statement) {
  try {
    statement();
    return true;
  } catch (...) {  // told by the rule of the caller: a failure here means "not there"
    return false;
  }
}

}  // namespace quillbook
