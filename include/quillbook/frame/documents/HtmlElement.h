// One element of an HTML document.
#pragma once

#include <string>
#include <string_view>

#include "quillbook/base/Object.h"
#include "quillbook/base/Ref.h"
#include "quillbook/frame/documents/HtmlDocument.h"
#include "quillbook/frame/documents/HtmlElements.h"

namespace quillbook {

/// An element, reached through its document. Two reads of the same element give the same object as long as it is held.
class HtmlElement final : public Object {
 public:
  /// Flag of `getAttribute`: the value as it stands, with nothing made absolute.
  static constexpr int AsWritten = 2;

  /// Library-internal; documents make elements.
  HtmlElement(Ref<HtmlDocument> document, html::Node& node);
  ~HtmlElement() override;

  /// In capitals ("A", "MSHELP:LINK") but for elements of SVG and MathML.
  [[nodiscard]] std::string tagName() const;
  /// Value with character references resolved; empty for an attribute that isn't there. Names ignore case. "href" and
  /// "src" are made absolute as `HtmlDocument::Resolve` says, unless `Flags` holds `AsWritten`, or the element is a
  /// BASE.
  [[nodiscard]] std::string getAttribute(std::string_view Name, int Flags = 0) const;
  [[nodiscard]] bool hasAttribute(std::string_view Name) const;
  /// Sets or adds an attribute; the rest of the tag stays as it is written. Names of HTML ignore case, so that `Flags`,
  /// which asks for case (1) or not (0), makes no difference. Failure 5 for what can't be a name.
  void setAttribute(std::string_view Name, std::string_view Value, int Flags = 1);

  /// The markup between the tags. Setting parses the text as content of this element, by the rules of HTML5 for
  /// fragments. Failure 5 for an element that has no content, such as IMG, and for script or style text that holds its
  /// own end tag; else those of parsing. A failure changes nothing.
  [[nodiscard]] std::string innerHTML() const;
  void SetInnerHTML(std::string_view RHS);
  /// The markup with the tags. Setting puts what the text holds in the element's place; empty text removes the element.
  /// Failure 5 for `html`, `head` and `body` and for an element that has been removed.
  [[nodiscard]] std::string outerHTML() const;
  void SetOuterHTML(std::string_view RHS);
  /// The text of the element and all within, references resolved, without scripts and styles.
  [[nodiscard]] std::string innerText() const;

  /// Nothing for `html` and for an element that has been removed.
  [[nodiscard]] Ref<HtmlElement> parentElement() const;
  /// The elements directly in this one.
  [[nodiscard]] Ref<HtmlElements> children() const;
  [[nodiscard]] Ref<HtmlDocument> document() const { return mDocument; }
  /// Attribute "href", as `getAttribute` gives it; of a BASE element as it is written.
  [[nodiscard]] std::string hRef() const { return getAttribute("href"); }
  /// Attribute "name".
  [[nodiscard]] std::string name() const { return getAttribute("name"); }

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 private:
  Ref<HtmlDocument> mDocument;
  html::Node& mNode;  // lives as long as the document's tree
};

}  // namespace quillbook
