// Makes HTML documents.
#pragma once

#include <string_view>

#include "quillbook/base/Object.h"
#include "quillbook/base/Ref.h"

namespace quillbook {

class HtmlDocument;

/// Makes documents of texts and files. Derive from it to have the library work with documents that come otherwise, and
/// put an object of that class into `modMain::mDOMFactory`.
class DocumentFactory : public Object {
 public:
  /// A document with that content, complete.
  [[nodiscard]] virtual Ref<HtmlDocument> FromString(std::string_view HTML);
  /// Starts to load a page from a "file://" URL or a path in Windows form. This factory has read the file when it
  /// returns; others may give a document that is still "loading".
  ///
  /// The bytes are text by their byte order mark, else by the charset that the page states, else UTF-8 if they are
  /// valid, else Windows-1252. Failure 5 for another kind of URL, 53 for a file that isn't there, and those of
  /// `HtmlDocument::Load`.
  [[nodiscard]] virtual Ref<HtmlDocument> FromURL(std::string_view URL);

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }
};

}  // namespace quillbook
