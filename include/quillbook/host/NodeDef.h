// One entry of a table of contents definition.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "quillbook/base/Object.h"

namespace quillbook {

class TOCDefinition;

/// An entry of the contents that a build makes: a caption and where it leads. It knows its parent and its definition
/// without keeping either alive.
class NodeDef final : public Object {
 public:
  /// Kinds of node. The numbers are frozen.
  enum Kind : std::int32_t {
    Entry = 0,
    CompanionContents = 3,  ///< stands where the contents of the companion's project go
  };

  NodeDef();

  /// Unique within the process; the key under which the node stands in its definition.
  [[nodiscard]] const std::string& Key() const noexcept { return mKey; }

  std::int32_t NodeKind = Entry;
  /// The text that a reader sees. May hold character references, as pages do.
  std::string Caption;
  /// The page that the entry leads to, relative to the output folder, or another address; empty for a heading.
  std::string URL;
  /// The icon is `IconIndex`, not the one that the viewer gives books and pages.
  bool CustomIcon = false;
  /// From 0, in the viewer's own list of icons.
  std::int32_t IconIndex = 0;
  /// A node that isn't visible is passed over; its children take its place.
  bool Visible = false;

  /// Nothing for a node of the top level.
  [[nodiscard]] Ref<NodeDef> Parent() const { return mParent.Target(); }
  void SetParent(const Ref<NodeDef>& Parent) { mParent.SetTarget(Parent); }
  [[nodiscard]] Ref<quillbook::TOCDefinition> TOCDefinition() const;
  void SetTOCDefinition(const Ref<quillbook::TOCDefinition>& Definition);

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 private:
  std::string mKey;
  WeakReference<NodeDef> mParent;
  WeakReference<quillbook::TOCDefinition> mTOCDefinition;
};

}  // namespace quillbook
