// A program that this process starts and listens to.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "quillbook/platform/Desktop.h"

namespace quillbook {

/// `Desktop::RunProgram` for a program by its native path.
[[nodiscard]] Desktop::ProgramRun RunToItsEnd(const std::string& program, const std::vector<std::string>& parameters,
                                              const std::string& folder, const std::function<bool()>& goOn);

}  // namespace quillbook
