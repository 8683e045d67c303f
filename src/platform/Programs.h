// Programs that this process starts. None of them is started through a shell.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillbook::detail {

/// Native path of a program: a name is looked for in `$PATH`, a path is taken as it is. Empty if it isn't there or
/// can't be run.
[[nodiscard]] std::string FindProgram(const std::string& name);

/// Parameters stand between blanks; double quotes hold one together that has blanks of its own.
[[nodiscard]] std::vector<std::string> SplitCommandLine(std::string_view line);

/// Starts a program that this process needn't wait for: its parent ends at once, so that the system takes it over.
bool StartDetached(const std::string& program, const std::vector<std::string>& parameters);

/// Runs a program in a session of its own, with `input` as its input, and gives its output if it ends with status 0.
/// One that hasn't ended when `patience` is over is ended, with all that it started in its session. What it leaves
/// running when it ends by itself goes on.
[[nodiscard]] std::optional<std::string> RunProgram(const std::string& program,
                                                    const std::vector<std::string>& parameters, std::string_view input,
                                                    std::chrono::milliseconds patience);

}  // namespace quillbook::detail
