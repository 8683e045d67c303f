// A help compiler that is a program of its own.
#pragma once

#include <string_view>

#include "quillbook/host/HelpCompiler.h"

namespace quillbook {

/// Runs the program (path in the form of stored paths) in the folder of the help project, with the project's file name
/// as its one argument. Such programs are known by what they make, not by their exit code: the compilation has
/// succeeded if the help file that the project names is there afterwards and isn't empty. An old one is put aside
/// meanwhile and comes back if no new one is made.
[[nodiscard]] Ref<HelpCompiler> MakeExternalHelpCompiler(std::string_view Program);

}  // namespace quillbook
