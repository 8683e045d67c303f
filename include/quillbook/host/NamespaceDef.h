// The kinds of item that a template asks for, as a tree.
#pragma once

#include <string>
#include <string_view>

#include "quillbook/base/Collection.h"
#include "quillbook/base/Object.h"

namespace quillbook {

class NamespaceDef;

/// Namespace definitions in the order of the template.
class NamespaceDefs final : public Object {
 public:
  /// Failure 9 for a position out of range.
  [[nodiscard]] const Ref<NamespaceDef>& Item(std::size_t Position,
                                              std::source_location where = std::source_location::current()) const {
    return mDefinitions.Item(Position, where);
  }
  [[nodiscard]] std::size_t Count() const noexcept { return mDefinitions.Count(); }
  void Add(const Ref<NamespaceDef>& Definition) { mDefinitions.Add(Definition); }

  /// The first definition, in reading order and also below other definitions, of a qualified kind
  /// ("mv.quillbooklite:topic") or, for a text without ":", of a namespace. Ignores case. Nothing if there is none.
  [[nodiscard]] Ref<NamespaceDef> Find(std::string_view KindOrNamespace) const;
  /// All that `Find` would find, in reading order.
  [[nodiscard]] Ref<NamespaceDefs> Matching(std::string_view KindOrNamespace) const;

  auto begin() const noexcept { return mDefinitions.begin(); }
  auto end() const noexcept { return mDefinitions.end(); }

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }
  [[nodiscard]] bool Enumerable() const override { return true; }
  void ForEachItem(const std::function<void(const Variant&)>& visit) const override { mDefinitions.ForEachItem(visit); }

 private:
  Collection<Ref<NamespaceDef>> mDefinitions;
};

/// One kind of item. Its children are the kinds that the engine asks for below each item of this kind.
class NamespaceDef final : public Object {
 public:
  /// `Kind` is the qualified kind. Without `ItemType`, the type name of an item is the part behind the colon.
  explicit NamespaceDef(std::string_view Kind, std::string_view ItemType = {}, std::string_view Filter = {});

  /// "mv.quillbooklite" of "mv.quillbooklite:topic".
  [[nodiscard]] const std::string& Namespace() const noexcept { return mNamespace; }
  /// The qualified kind as the template spells it.
  [[nodiscard]] const std::string& Kind() const noexcept { return mKind; }
  /// Type name of the items, such as "Topic".
  [[nodiscard]] const std::string& ItemType() const noexcept { return mItemType; }
  /// What the engine gives `GetItems` as filter.
  [[nodiscard]] const std::string& Filter() const noexcept { return mFilter; }
  [[nodiscard]] const Ref<NamespaceDefs>& Children() const noexcept { return mChildren; }

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 private:
  std::string mNamespace;
  std::string mKind;
  std::string mItemType;
  std::string mFilter;
  Ref<NamespaceDefs> mChildren;
};

}  // namespace quillbook
