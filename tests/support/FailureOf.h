// What a statement fails with.
#pragma once

#include <string>

#include "quillbook/base/Failure.h"

namespace quillbook::support {

/// Number of the failure that a statement raises; `None` if it runs through.
template <class Statement>
[[nodiscard]] FailureNumber NumberOfFailure(Statement&& statement) {
  try {
    statement();
  } catch (const Failure& failure) {
    return failure.Number();
  }
  return FailureNumber::None;
}

/// Description of the failure that a statement raises; empty if it runs through.
template <class Statement>
[[nodiscard]] std::string DescriptionOfFailure(Statement&& statement) {
  try {
    statement();
  } catch (const Failure& failure) {
    return failure.Description();
  }
  return {};
}

}  // namespace quillbook::support
