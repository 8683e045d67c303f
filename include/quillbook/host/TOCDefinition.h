// The table of contents that a build works with.
#pragma once

#include "quillbook/base/Collection.h"
#include "quillbook/base/Object.h"
#include "quillbook/host/NodeDef.h"
#include "quillbook/host/PageTemplate.h"

namespace quillbook {

using NodeDefs = Collection<Ref<NodeDef>>;

/// All entries of the contents in one list, by their keys. A parent stands before its children, and the children of a
/// node in their order, so that the list reads as the contents do.
class TOCDefinition final : public Object {
 public:
  TOCDefinition();

  /// The template that the contents are made for, or nothing.
  Ref<PageTemplate> Template;
  /// Never nothing.
  [[nodiscard]] const Ref<quillbook::NodeDefs>& NodeDefs() const noexcept { return mNodeDefs; }

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 private:
  Ref<quillbook::NodeDefs> mNodeDefs;
};

}  // namespace quillbook
