// The sections of a topic.
#pragma once

#include <string_view>

#include "quillbook/frame/MemberCollection.h"
#include "quillbook/topics/TopicSection.h"

namespace quillbook {

/// A topic's sections, each under the key of its kind, so that there is at most one of a kind.
class TopicSections final : public MemberCollection<TopicSection> {
 public:
  /// The first section whose kind has this caption, ignoring case; an empty value if there is none.
  [[nodiscard]] Variant TopicSectionByCaption(std::string_view Caption) const;

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }
};

}  // namespace quillbook
