#include "quillbook/topics/TopicSectionDef.h"

namespace quillbook {

const TypeInfo& TopicSectionDef::StaticType() {
  static const TypeInfo type = Describe<TopicSectionDef>("TopicSectionDef")
                                   .Public<&TopicSectionDef::Key>("Key")
                                   .Public<&TopicSectionDef::Caption>("Caption")
                                   .Done();
  return type;
}

}  // namespace quillbook
