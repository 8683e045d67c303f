// A named value for a variable of a template.
#pragma once

#include <string>

#include "quillbook/base/Collection.h"
#include "quillbook/base/Object.h"

namespace quillbook {

/// A plain pair; nobody is told of a change.
class VariableValue final : public Object {
 public:
  VariableValue() = default;
  VariableValue(std::string name, std::string value) : Name(std::move(name)), Value(std::move(value)) {}

  std::string Name;
  std::string Value;

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }
};

/// Values under their names.
using VariableValues = Collection<Ref<VariableValue>>;

}  // namespace quillbook
