// The common end of simple setters.
#pragma once

#include <functional>
#include <string_view>

#include "quillbook/frame/Procedure.h"

namespace quillbook {

/// Stores a value that differs and then calls `changed` on the object, in the frame of the property's write. The same
/// value does nothing.
template <class Owner, class Field, class Value, class Changed>
void Assign(Owner& owner, Field& field, const Value& value, std::string_view property, Changed changed) {
  if (field == value) return;
  Procedure(owner, property, [&](auto& p) { p("RHS", value); }).Run([&] {
    field = value;
    std::invoke(changed, owner);
  });
}

}  // namespace quillbook
