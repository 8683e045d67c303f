#include "quillbook/topics/TopicLinkCategory.h"

#include "quillbook/base/Text.h"
#include "quillbook/frame/Procedure.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/TopicLinks.h"

namespace quillbook {

namespace {

bool IsShown(const TopicLink& link) {
  if (link.TopicLinkType() == rttURL) return true;
  if (link.TopicLinkType() != rttTopic) return false;
  const auto target = link.ChildTopic();
  return target && target->RuntimeIncludeInHelpFile();
}

}  // namespace

Ref<TopicLinks> TopicLinkCategory::Links() const {
  return Procedure(*this, "Links").RunSetting(New<TopicLinks>(), [&](const auto& links) {
    for (const auto& link : *Topic->TopicLinks())
      if (EqualsIgnoringCase(link->Category(), Name) && IsShown(*link)) links->Add(link);
  });
}

const TypeInfo& TopicLinkCategory::StaticType() {
  static const TypeInfo type = Describe<TopicLinkCategory>("TopicLinkCategory")
                                   .Public<&TopicLinkCategory::Name>("Name")
                                   .Public<&TopicLinkCategory::Topic>("Topic")
                                   .ReadOnly<&TopicLinkCategory::Links>("Links")
                                   .Done();
  return type;
}

}  // namespace quillbook
