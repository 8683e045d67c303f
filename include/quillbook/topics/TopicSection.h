// One named block of a topic's content.
#pragma once

#include <string>
#include <string_view>

#include "quillbook/base/Object.h"
#include "quillbook/base/Variant.h"

namespace quillbook {

class Topic;
class TopicSectionDef;

/// A block of HTML of one kind. Owned by its topic's `TopicSections`; knows its topic without keeping it alive.
class TopicSection final : public LibraryObject {
 public:
  /// For the caller's own use; never stored.
  Variant Tag;

  [[nodiscard]] Ref<quillbook::Topic> Topic() const;
  void SetTopic(const Ref<quillbook::Topic>& RHS);

  /// The content, normally HTML.
  [[nodiscard]] const std::string& Data() const noexcept { return mData; }
  /// Tells the project through the topic unless the topic is paused, also when the text is the same as before. The
  /// topic itself doesn't become dirty; `Topic::SetTopicSectionData` does that.
  void SetData(std::string_view RHS);

  /// The kind, found by its key anew at each read; nothing if there is no such kind.
  [[nodiscard]] Ref<quillbook::TopicSectionDef> TopicSectionDef() const;
  /// Nothing as the argument is reported as a failure.
  void SetTopicSectionDef(const Ref<quillbook::TopicSectionDef>& RHS);

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 private:
  WeakReference<quillbook::Topic> mTopic;
  std::string mData;
  std::string mTopicSectionDefKey;
};

}  // namespace quillbook
