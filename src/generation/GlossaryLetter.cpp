#include "quillbook/generation/GlossaryLetter.h"

namespace quillbook {

const TypeInfo& GlossaryLetter::StaticType() {
  static const TypeInfo type = Describe<GlossaryLetter>("GlossaryLetter")
                                   .Public<&GlossaryLetter::Name>("Name")
                                   .Public<&GlossaryLetter::Value>("Value")
                                   .Done();
  return type;
}

}  // namespace quillbook
