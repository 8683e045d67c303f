// One step of the workflow of topics.
#pragma once

#include <string>

#include "quillbook/base/Object.h"

namespace quillbook {

class XMLElement;

/// A status that topics name by its name, as plain text. Belongs to the installation, not to a project.
class TopicStatus final : public LibraryObject {
 public:
  /// What a topic stores; the key in the collection.
  std::string Name;
  /// Describes the status to a reader.
  std::string Caption;
  /// Icon file of the status.
  std::string Icon;

  // Library-internal
  /// Takes the fields from attributes "Name", "Caption" and "Icon"; each that is missing is a failure.
  void Load(XMLElement e);

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }
};

}  // namespace quillbook
