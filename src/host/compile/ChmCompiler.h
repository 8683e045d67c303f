// The compiler of HTML Help: a project in, a .chm out.
#pragma once

#include "quillbook/host/HelpCompilation.h"

namespace quillbook::compile {

/// `CompileHelp` for a .hhp.
[[nodiscard]] CompileReport CompileChm(const CompileOptions& options);

}  // namespace quillbook::compile
