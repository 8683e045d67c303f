// The compiler of Microsoft Help 2: a collection in, a .hxs out.
#pragma once

#include "quillbook/host/HelpCompilation.h"

namespace quillbook::compile {

/// `CompileHelp` for a .HxC. The help file holds the pages, what they need, and the collection's sources. The private
/// streams in which the viewer of this format keeps its contents, index and search are documented nowhere in public
/// and are not made up.
[[nodiscard]] CompileReport CompileHxs(const CompileOptions& options);

}  // namespace quillbook::compile
