// An HTML page in memory that can be read, changed and written back.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "quillbook/base/Object.h"
#include "quillbook/base/Ref.h"

namespace quillbook {

class HtmlElement;
class HtmlElements;

namespace html {
struct Node;
class Tree;
}  // namespace html

/// The tree of an HTML page, parsed as HTML5 says.
///
/// Members are named as authors of web pages know them. What isn't changed is written back as the author wrote it:
/// start tags with their letter case, attributes and quotes, text with its character references and line breaks,
/// comments of every kind. Elements that HTML5 implies (`html`, `head`, `body`, `tbody`) and end tags that were left
/// out are written. Elements with a prefix, such as `<MSHelp:link ... />`, may close themselves as in XML.
///
/// Text is UTF-8. A NUL and what isn't UTF-8 become U+FFFD. Of attributes that repeat in one tag the first counts. A
/// `plaintext` element, which no end tag can close, becomes a `pre`.
///
/// Parsing raises failure 28 where elements nest deeper than `MaximumDepth`, 7 where formatting elements that stay open
/// multiply beyond measure, 5 for a tag with thousands of attributes. Nothing has changed then. No operation recurses
/// over the depth of the tree; parsing and writing take time linear in the text.
///
/// Elements hold their document, so that an element outlives the last reference to its document; one that has been
/// removed stays readable but has no parent.
class HtmlDocument final : public Object {
 public:
  /// How deep elements may nest, implied ones and those whose end tags HTML lets authors leave out (`p`, `li`, `td`,
  /// ...) not counted. Browsers stop at 512.
  static constexpr std::size_t MaximumDepth = 1000;

  /// Empty, and "loading" until `Load`.
  HtmlDocument();
  ~HtmlDocument() override;

  /// Replaces the content by a page; "complete" from then on. A failure leaves the document as it was.
  void Load(std::string_view HTML);

  /// "loading" or "complete".
  [[nodiscard]] std::string_view readyState() const noexcept { return mComplete ? "complete" : "loading"; }
  /// All elements in document order, of which `tags(name)` gives those of one name.
  [[nodiscard]] Ref<HtmlElements> All() const;
  /// The `a` elements that have a name, in document order; `Item(name)` ignores case.
  [[nodiscard]] Ref<HtmlElements> anchors() const;
  /// The `html` element; nothing before `Load`.
  [[nodiscard]] Ref<HtmlElement> documentElement() const;
  /// The `body` or `frameset`; nothing before `Load`.
  [[nodiscard]] Ref<HtmlElement> body() const;
  /// The whole page: type declaration, comments and the `html` element.
  [[nodiscard]] std::string ToString() const;

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

  // Library-internal from here on: what elements ask of their document.

  /// The elements called `name`, ignoring case; "*" gives all.
  [[nodiscard]] Ref<HtmlElements> ElementsByTag(std::string_view name) const;
  /// The one object for an element of this document, made anew only where nobody holds it.
  [[nodiscard]] Ref<HtmlElement> ElementOf(html::Node* node) const;
  /// A reference made absolute against the document's first BASE element that has a "href". Without one only a bare
  /// fragment changes, to "about:blank#...".
  [[nodiscard]] std::string Resolve(std::string_view reference) const;
  [[nodiscard]] html::Tree& Nodes() const noexcept { return *mTree; }

 private:
  std::unique_ptr<html::Tree> mTree;
  bool mComplete = false;
};

}  // namespace quillbook
