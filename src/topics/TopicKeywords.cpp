#include "quillbook/topics/TopicKeywords.h"

#include "quillbook/base/Text.h"
#include "quillbook/frame/services/XMLElement.h"
#include "quillbook/project/QBProject.h"
#include "quillbook/topics/Topic.h"

namespace quillbook {

Ref<quillbook::Topic> TopicKeywords::Topic() const {
  return mTopic.Target();
}

void TopicKeywords::SetTopic(const Ref<quillbook::Topic>& RHS) {
  mTopic.SetTarget(RHS);
}

Ref<quillbook::QBProject> TopicKeywords::QBProject() const {
  const auto topic = Topic();
  return topic ? topic->QBProject() : nullptr;
}

void TopicKeywords::MemberAdded(const Ref<TopicKeyword>& member, std::string_view) {
  Events.TopicKeywordAdded.Raise(member);
  if (const auto topic = Topic()) topic->FireChanged();
}

void TopicKeywords::Remove(KeyOrPosition Key) {
  Procedure(*this, "Remove", [&](auto& p) { p("Key", Key.ToVariant()); }).Run([&] {
    const auto keyword = Item(Key);
    if (!keyword) return;
    RemoveMember(Key);
    Events.TopicKeywordRemoved.Raise(keyword);
  });
}

Ref<TopicKeyword> TopicKeywords::AddKeyword(std::string_view Keyword) {
  return Procedure(*this, "AddKeyword", [&](auto& p) { p("Keyword", Keyword); }).Run([&] {
    auto keyword = New<TopicKeyword>();
    keyword->SetKeyword(Keyword);
    Add(keyword, keyword->ID());
    return keyword;
  });
}

bool TopicKeywords::KeywordExists(std::string_view Word) const {
  return Procedure(*this, "KeywordExists", [&](auto& p) { p("Word", Word); }).Run([&] {
    for (const auto& keyword : mCol)
      if (EqualsIgnoringCase(keyword->Keyword(), Word)) return true;
    return false;
  });
}

void TopicKeywords::Clear() {
  mCol.Clear();
}

void TopicKeywords::LoadKeyword(XMLElement c) {
  Procedure(*this, "LoadKeyword", [&](auto& p) { p("c", c); }).Run([&] {
    if (!EqualsIgnoringCase(c.Name(), "k")) return;
    const auto keyword = New<TopicKeyword>();
    keyword->SetKeyword(c.Attributes().Item("Value").Value());
    IgnoreFailures([&] { mCol.Add(keyword, keyword->ID()); });
  });
}

void TopicKeywords::SaveKeywords(XMLElement e) const {
  Procedure(*this, "SaveKeywords", [&](auto& p) { p("e", e); }).Run([&] {
    for (const auto& keyword : mCol) e.AddChild("K").AddAttribute("Value", keyword->Keyword());
  });
}

const TypeInfo& TopicKeywords::StaticType() {
  static const TypeInfo type = Describe<TopicKeywords>("TopicKeywords")
                                   .Field<&TopicKeywords::mTopic>("mTopic")
                                   .Field<&TopicKeywords::mCol>("mCol")
                                   .Property<&TopicKeywords::Topic, &TopicKeywords::SetTopic>("Topic")
                                   .Property<&TopicKeywords::QBProject, &TopicKeywords::SetQBProject>("QBProject")
                                   .ReadOnly<&TopicKeywords::Count>("Count")
                                   .Done();
  return type;
}

}  // namespace quillbook
