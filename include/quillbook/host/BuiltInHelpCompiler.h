// The help compilers that this system brings along.
#pragma once

#include "quillbook/host/HelpCompiler.h"

namespace quillbook {

/// The compiler for a help version: 1 for HTML Help, 2 for Microsoft Help 2. Nothing for other versions.
[[nodiscard]] Ref<HelpCompiler> MakeBuiltInHelpCompiler(int helpVersion);

}  // namespace quillbook
