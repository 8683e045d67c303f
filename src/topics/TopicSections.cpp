#include "quillbook/topics/TopicSections.h"

#include "quillbook/base/Text.h"
#include "quillbook/topics/TopicSectionDef.h"

namespace quillbook {

Variant TopicSections::TopicSectionByCaption(std::string_view Caption) const {
  return Procedure(*this, "TopicSectionByCaption", [&](auto& p) { p("Caption", Caption); }).Run([&]() -> Variant {
    for (const auto& section : mCol)
      if (EqualsIgnoringCase(section->TopicSectionDef()->Caption, Caption)) return section;
    return {};
  });
}

const TypeInfo& TopicSections::StaticType() {
  static const TypeInfo type = Describe<TopicSections>("TopicSections")
                                   .Field<&TopicSections::mCol>("mCol")
                                   .ReadOnly<&TopicSections::Count>("Count")
                                   .Done();
  return type;
}

}  // namespace quillbook
