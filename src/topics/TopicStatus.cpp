#include "quillbook/topics/TopicStatus.h"

#include "quillbook/frame/Procedure.h"
#include "quillbook/frame/services/XMLElement.h"

namespace quillbook {

void TopicStatus::Load(XMLElement e) {
  Procedure(*this, "Load", [&](auto& p) { p("e", e); }).Run([&] {
    const auto attributes = e.Attributes();
    Name = attributes.Item("Name").Value();
    Caption = attributes.Item("Caption").Value();
    Icon = attributes.Item("Icon").Value();
  });
}

const TypeInfo& TopicStatus::StaticType() {
  static const TypeInfo type = Describe<TopicStatus>("TopicStatus")
                                   .Public<&TopicStatus::Name>("Name")
                                   .Public<&TopicStatus::Caption>("Caption")
                                   .Public<&TopicStatus::Icon>("Icon")
                                   .Done();
  return type;
}

}  // namespace quillbook
