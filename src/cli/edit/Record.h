// The records that the editing commands work on.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "quillbook/base/Object.h"
#include "quillbook/project/QBProject.h"
#include "quillbook/topics/Topic.h"

namespace quillbook::cli {

/// One record of a project.
struct Record {
  Ref<Object> object;
  Ref<Topic> topic = {};  ///< the topic that a keyword or a related link belongs to
  std::string path = {};  ///< of a contents node: its place, such as "1.3.2"

  template <class T>
  [[nodiscard]] T& As() const {
    return static_cast<T&>(*object);
  }
};

/// Where an action looks for records: a project, or one of its topics.
struct Scope {
  QBProject& project;
  Ref<Topic> topic = {};
};

/// Where a record goes among its like.
struct Place {
  enum class Where : std::uint8_t { Last, First, Before, After };
  Where where = Where::Last;
  Record neighbour = {};  ///< for `Before` and `After`
  Record parent = {};     ///< of a contents node; nothing for the top level
};

}  // namespace quillbook::cli
