#include "quillbook/topics/TopicSectionDefs.h"

namespace quillbook {

void TopicSectionDefs::Populate() {
  Procedure(*this, "Populate").Run([&] {
    const auto body = New<TopicSectionDef>();
    body->Key = "BodyText";
    body->Caption = "Body Text";
    Add(body, body->Key);
  });
}

const TypeInfo& TopicSectionDefs::StaticType() {
  static const TypeInfo type = Describe<TopicSectionDefs>("TopicSectionDefs")
                                   .Field<&TopicSectionDefs::mCol>("mCol")
                                   .ReadOnly<&TopicSectionDefs::Count>("Count")
                                   .Done();
  return type;
}

}  // namespace quillbook
