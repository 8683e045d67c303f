#include "quillbook/generation/BuildResult.h"

namespace quillbook {

const TypeInfo& BuildResult::StaticType() {
  static const TypeInfo type = Describe<BuildResult>("BuildResult")
                                   .Public<&BuildResult::Cancelled>("Cancelled")
                                   .Public<&BuildResult::CompilerLog>("CompilerLog")
                                   .Public<&BuildResult::HelpCompileResult>("HelpCompileResult")
                                   .Done();
  return type;
}

}  // namespace quillbook
