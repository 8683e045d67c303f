// The kinds of topic section that the library knows.
#pragma once

#include "quillbook/frame/MemberCollection.h"
#include "quillbook/topics/TopicSectionDef.h"

namespace quillbook {

/// The section kinds, each under its key. The library's own list comes from `modMain::TopicSectionDefs()`.
class TopicSectionDefs final : public MemberCollection<TopicSectionDef> {
 public:
  /// Adds the one kind that there is, the body, under "BodyText". A second call reports the key as known.
  void Populate();

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }
};

}  // namespace quillbook
