// The related links of a topic.
#pragma once

#include <string_view>

#include "quillbook/base/Event.h"
#include "quillbook/frame/MemberCollection.h"
#include "quillbook/topics/TopicLink.h"

namespace quillbook {

/// What a list of related links tells its listeners.
struct TopicLinksEvents {
  static constexpr std::string_view PublishedName = "__TopicLinks";

  Event<const Ref<TopicLink>&> ItemAdded;
  Event<const Ref<TopicLink>&> ItemRemoved;
};

/// Related links in order, normally without keys.
class TopicLinks final : public MemberCollection<TopicLink> {
 public:
  TopicLinksEvents Events;

  /// Nothing in a list that came with a loaded topic.
  [[nodiscard]] Ref<quillbook::Topic> Topic() const;
  void SetTopic(const Ref<quillbook::Topic>& RHS);

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 protected:
  void MemberAdded(const Ref<TopicLink>& member, std::string_view key) override;
  void MemberRemoved(const Ref<TopicLink>& member) override;

 private:
  WeakReference<quillbook::Topic> mTopic;
};

}  // namespace quillbook
