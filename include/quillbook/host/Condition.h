// The gate that an element's "condition" attribute sets up.
#pragma once

#include <string>
#include <string_view>

#include "quillbook/base/Object.h"

namespace quillbook {

class NamespaceDef;

/// A test of the current item or of the build, such as "kind:topic", "notblank:Title" or "not output:web". The
/// template language's page lists them all.
class Condition final : public Object {
 public:
  [[nodiscard]] const std::string& ConditionType() const noexcept { return mConditionType; }
  void SetConditionType(std::string_view Type) { mConditionType = Type; }
  /// Whether the type is one that `Evaluate` knows, with the argument that it needs.
  [[nodiscard]] bool IsValid() const;
  /// `Project` is a host project or any object whose member `MVProject` is one; tests of the build are false without.
  /// False for an invalid type, also for one that begins with "not".
  [[nodiscard]] bool Evaluate(const Ref<Object>& Item, const Ref<NamespaceDef>& Definition,
                              const Ref<Object>& Project) const;

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 private:
  std::string mConditionType;
};

}  // namespace quillbook
