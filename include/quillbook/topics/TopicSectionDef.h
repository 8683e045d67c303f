// A kind of topic section.
#pragma once

#include <string>

#include "quillbook/base/Object.h"

namespace quillbook {

/// One kind of section that a topic's content may have. Shared by all projects.
class TopicSectionDef final : public LibraryObject {
 public:
  /// Identifies the kind; sections are filed and stored under it.
  std::string Key;
  /// What a user interface calls the kind.
  std::string Caption;

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }
};

}  // namespace quillbook
