// A letter under which the glossary lists terms.
#pragma once

#include <string>

#include "quillbook/base/Object.h"

namespace quillbook {

/// One letter, upper case, with the number of terms that begin with it.
class GlossaryLetter final : public LibraryObject {
 public:
  std::string Name;
  std::string Value = "0";  ///< a decimal number

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }
};

}  // namespace quillbook
