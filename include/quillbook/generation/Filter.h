// The filter text of a list element, taken apart.
#pragma once

#include <string>
#include <string_view>

#include "quillbook/base/Object.h"

namespace quillbook {

/// Settings of a filter text: comma-separated `name=value` pairs, as in `type=notblank,forpagegeneration=true`.
/// A part without "=" has no effect, and nothing is trimmed.
class Filter final : public LibraryObject {
 public:
  bool ForPageGeneration = false;
  /// In lower case.
  std::string TypeID;

  /// Takes over the settings that `Source` names; the others keep their values. Of equal names the last wins.
  void Load(std::string_view Source);

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }
};

}  // namespace quillbook
