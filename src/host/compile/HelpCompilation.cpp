#include "quillbook/host/HelpCompilation.h"

#include "host/compile/ChmCompiler.h"
#include "host/compile/HxsCompiler.h"
#include "quillbook/base/Text.h"

namespace quillbook::compile {

CompileReport CompileHelp(const CompileOptions& options) {
  return EndsWithIgnoringCase(options.project, ".HxC") ? CompileHxs(options) : CompileChm(options);
}

}  // namespace quillbook::compile
