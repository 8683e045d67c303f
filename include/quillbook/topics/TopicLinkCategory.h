// The related links of a topic that share a category.
#pragma once

#include <string>

#include "quillbook/base/Object.h"

namespace quillbook {

class Topic;
class TopicLinks;

/// Groups a topic's links for its page. Library-internal: the build makes one per category of a topic.
class TopicLinkCategory final : public LibraryObject {
 public:
  std::string Name;
  /// The topic whose links are grouped.
  Ref<quillbook::Topic> Topic;

  /// The links of this category, ignoring case, in the topic's order: all URLs, and the topics that exist and go into
  /// the help file. A new collection at each read.
  [[nodiscard]] Ref<TopicLinks> Links() const;

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }
};

}  // namespace quillbook
