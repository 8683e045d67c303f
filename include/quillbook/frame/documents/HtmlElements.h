// A list of elements.
#pragma once

#include <cstddef>
#include <functional>
#include <string_view>
#include <vector>

#include "quillbook/base/KeyOrPosition.h"
#include "quillbook/base/Object.h"
#include "quillbook/base/Ref.h"

namespace quillbook {

class HtmlDocument;
class HtmlElement;

/// Elements in document order, as they were when the list was asked for: changing the document meanwhile changes no
/// list that somebody goes through.
///
/// Positions count from 0, other than in the collections of the object library: web pages count so. Hold the list while
/// you go through it: `const auto links = document->All()->tags("a"); for (const auto& link : *links) ...`.
class HtmlElements final : public Object {
 public:
  /// Library-internal: the list of these elements.
  explicit HtmlElements(std::vector<Ref<HtmlElement>> elements);
  /// Library-internal: all elements of a document, gathered when somebody asks for more than `tags`.
  explicit HtmlElements(Ref<HtmlDocument> document);
  ~HtmlElements() override;

  /// Those called `Name`, ignoring case; "*" gives all.
  [[nodiscard]] Ref<HtmlElements> tags(std::string_view Name);
  /// The element at a position from 0, or the first one whose "name", else "id", equals a key ignoring case; nothing if
  /// there is none.
  [[nodiscard]] Ref<HtmlElement> Item(KeyOrPosition Which);
  [[nodiscard]] std::size_t Count();
  [[nodiscard]] std::size_t length() { return Count(); }

  auto begin() { return List().begin(); }
  auto end() { return List().end(); }

  [[nodiscard]] bool Enumerable() const override { return true; }
  void ForEachItem(const std::function<void(const Variant&)>& visit) const override;

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 private:
  const std::vector<Ref<HtmlElement>>& List();

  Ref<HtmlDocument> mDocument;  ///< of a list not yet gathered
  std::vector<Ref<HtmlElement>> mElements;
};

}  // namespace quillbook
