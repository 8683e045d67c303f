#include "quillbook/topics/TopicStatuses.h"

#include "quillbook/frame/services/XMLElement.h"

namespace quillbook {

void TopicStatuses::Load(XMLElement e) {
  Procedure(*this, "Load", [&](auto& p) { p("e", e); }).Run([&] {
    for (const auto child : e.ChildElements()) {
      const auto status = New<TopicStatus>();
      status->Load(child);
      Add(status, status->Name);
    }
  });
}

const TypeInfo& TopicStatuses::StaticType() {
  static const TypeInfo type = Describe<TopicStatuses>("TopicStatuses")
                                   .Field<&TopicStatuses::mCol>("mCol")
                                   .ReadOnly<&TopicStatuses::Count>("Count")
                                   .Done();
  return type;
}

}  // namespace quillbook
