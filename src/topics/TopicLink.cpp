#include "quillbook/topics/TopicLink.h"

#include "frame/Assign.h"
#include "quillbook/base/Variant.h"
#include "quillbook/frame/Procedure.h"
#include "quillbook/frame/services/XMLElement.h"
#include "quillbook/project/QBProject.h"
#include "quillbook/topics/Topics.h"

namespace quillbook {

void TopicLink::SetURL(std::string_view RHS) {
  Assign(*this, mURL, RHS, "URL", &TopicLink::Changed);
}

void TopicLink::SetTopicLinkType(TopicLinkTypeEnum RHS) {
  Assign(*this, mTopicLinkType, RHS, "TopicLinkType", &TopicLink::Changed);
}

void TopicLink::SetTitle(std::string_view RHS) {
  Assign(*this, mTitle, RHS, "Title", &TopicLink::Changed);
}

void TopicLink::SetCategory(std::string_view RHS) {
  Assign(*this, mCategory, RHS, "Category", &TopicLink::Changed);
}

Ref<Topic> TopicLink::ParentTopic() const {
  return mParentTopic.Target();
}

void TopicLink::SetParentTopic(const Ref<Topic>& RHS) {
  Procedure(*this, "ParentTopic", [&](auto& p) { p("RHS", RHS); }).Run([&] {
    if (ParentTopic() == RHS) return;
    mParentTopic.SetTarget(RHS);
    Changed();
  });
}

Ref<Topic> TopicLink::ChildTopic() const {
  return Procedure(*this, "ChildTopic").Run([&] { return ParentTopic()->QBProject()->Topics->Item(ChildTopicKey); });
}

void TopicLink::Load(XMLElement e) {
  Procedure(*this, "Load", [&](auto& p) { p("e", e); }).Run([&] {
    const auto attributes = e.Attributes();
    ChildTopicKey = attributes.Item("t").Value();
    mCategory = attributes.Item("cat").Value();
    if (const auto value = attributes.Find("Title")) mTitle = *value;
    if (const auto value = attributes.Find("rt"))
      IgnoreFailures([&] { mTopicLinkType = static_cast<TopicLinkTypeEnum>(LongFromText(*value)); });
    if (const auto value = attributes.Find("URL")) mURL = *value;
  });
}

void TopicLink::Save(XMLElement e) const {
  Procedure(*this, "Save", [&](auto& p) { p("e", e); }).Run([&] {
    e.AddAttribute("t", ChildTopicKey);
    e.AddAttribute("cat", mCategory);
    e.AddAttribute("Title", mTitle);
    e.AddAttribute("rt", std::to_string(mTopicLinkType));
    e.AddAttribute("URL", mURL);
  });
}

void TopicLink::Changed() {
  Procedure(*this, "Changed").Run([&] {
    if (const auto topic = ParentTopic()) topic->FireTopicLinkChanged(Ref(this));
  });
}

const TypeInfo& TopicLink::StaticType() {
  static const TypeInfo type = Describe<TopicLink>("TopicLink")
                                   .Public<&TopicLink::ChildTopicKey>("ChildTopicKey")
                                   .Field<&TopicLink::mCategory>("mCategory")
                                   .Field<&TopicLink::mTitle>("mTitle")
                                   .Field<&TopicLink::mTopicLinkType>("mTopicLinkType")
                                   .Field<&TopicLink::mURL>("mURL")
                                   .Field<&TopicLink::mParentTopic>("mParentTopic")
                                   .Property<&TopicLink::URL, &TopicLink::SetURL>("URL")
                                   .Property<&TopicLink::TopicLinkType, &TopicLink::SetTopicLinkType>("TopicLinkType")
                                   .Property<&TopicLink::Title, &TopicLink::SetTitle>("Title")
                                   .Property<&TopicLink::Category, &TopicLink::SetCategory>("Category")
                                   .Property<&TopicLink::ParentTopic, &TopicLink::SetParentTopic>("ParentTopic")
                                   .ReadOnly<&TopicLink::ChildTopic>("ChildTopic")
                                   .Done();
  return type;
}

}  // namespace quillbook
