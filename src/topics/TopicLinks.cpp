#include "quillbook/topics/TopicLinks.h"

#include "quillbook/topics/Topic.h"

namespace quillbook {

Ref<quillbook::Topic> TopicLinks::Topic() const {
  return mTopic.Target();
}

void TopicLinks::SetTopic(const Ref<quillbook::Topic>& RHS) {
  mTopic.SetTarget(RHS);
}

void TopicLinks::MemberAdded(const Ref<TopicLink>& member, std::string_view) {
  Events.ItemAdded.Raise(member);
}

void TopicLinks::MemberRemoved(const Ref<TopicLink>& member) {
  Events.ItemRemoved.Raise(member);
}

const TypeInfo& TopicLinks::StaticType() {
  static const TypeInfo type = Describe<TopicLinks>("TopicLinks")
                                   .Field<&TopicLinks::mTopic>("mTopic")
                                   .Field<&TopicLinks::mCol>("mCol")
                                   .Property<&TopicLinks::Topic, &TopicLinks::SetTopic>("Topic")
                                   .ReadOnly<&TopicLinks::Count>("Count")
                                   .Done();
  return type;
}

}  // namespace quillbook
