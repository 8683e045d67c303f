#include "quillbook/topics/TopicSection.h"

#include "quillbook/frame/Procedure.h"
#include "quillbook/frame/modMain.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/TopicSectionDefs.h"

namespace quillbook {

Ref<quillbook::Topic> TopicSection::Topic() const {
  return mTopic.Target();
}

void TopicSection::SetTopic(const Ref<quillbook::Topic>& RHS) {
  mTopic.SetTarget(RHS);
}

void TopicSection::SetData(std::string_view RHS) {
  Procedure(*this, "Data", [&](auto& p) { p("RHS", RHS); }).Run([&] {
    mData = RHS;
    const auto topic = Topic();
    if (topic && !topic->PauseEvents()) topic->FireTopicSectionChanged(Ref(this));
  });
}

Ref<quillbook::TopicSectionDef> TopicSection::TopicSectionDef() const {
  return Procedure(*this, "TopicSectionDef").Run([&] {
    return modMain::TopicSectionDefs()->Item(mTopicSectionDefKey);
  });
}

void TopicSection::SetTopicSectionDef(const Ref<quillbook::TopicSectionDef>& RHS) {
  Procedure(*this, "TopicSectionDef", [&](auto& p) { p("RHS", RHS); }).Run([&] { mTopicSectionDefKey = RHS->Key; });
}

const TypeInfo& TopicSection::StaticType() {
  static const TypeInfo type =
      Describe<TopicSection>("TopicSection")
          .Field<&TopicSection::mTopic>("mTopic")
          .Field<&TopicSection::mData>("mData")
          .Public<&TopicSection::Tag>("Tag")
          .Field<&TopicSection::mTopicSectionDefKey>("mTopicSectionDefKey")
          .Property<&TopicSection::Topic, &TopicSection::SetTopic>("Topic")
          .Property<&TopicSection::Data, &TopicSection::SetData>("Data")
          .Property<&TopicSection::TopicSectionDef, &TopicSection::SetTopicSectionDef>("TopicSectionDef")
          .Done();
  return type;
}

}  // namespace quillbook
