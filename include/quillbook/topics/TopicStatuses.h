// The workflow steps of topics.
#pragma once

#include "quillbook/frame/MemberCollection.h"
#include "quillbook/topics/TopicStatus.h"

namespace quillbook {

/// The statuses of the installation in order, each under its name; the first is the status of a new topic. The
/// library's own list comes from `modMain::TopicStatuses()`.
class TopicStatuses final : public MemberCollection<TopicStatus> {
 public:
  // Library-internal
  /// Adds one status per child element, whatever its name. A name that is already there is reported and left out.
  void Load(XMLElement e);

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }
};

}  // namespace quillbook
