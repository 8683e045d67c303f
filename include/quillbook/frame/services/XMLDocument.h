// XML documents: text in, elements, text out.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "quillbook/frame/services/XMLElement.h"

namespace quillbook {

/// How a text was taken.
struct XMLLoadResult {
  bool ok = true;
  std::string message;     ///< what is wrong, without the place; empty if `ok`
  std::size_t offset = 0;  ///< in bytes of the text
  /// Place of `offset`, both from 1, in lines ended by LF, CR or CR LF and code points. 0 until `Locate`.
  std::size_t line = 0;
  std::size_t column = 0;

  explicit operator bool() const noexcept { return ok; }
  /// Works out `line` and `column` from the text that was loaded. Loading takes the text apart where it stands, so
  /// that whoever wants the place gives the text once more.
  void Locate(std::string_view text);
};

/// A document. It begins with a root element that has no name yet.
///
/// Reading keeps all text as it stands: line ends, white space, control characters. Comments, processing instructions
/// and document types are passed over, and no entity is expanded but the five of XML and character references.
///
/// Writing puts every element on a line of its own, indented by tabs, wherever that adds nothing to a text. What
/// wouldn't come back by itself (CR in texts; CR, LF and TAB in attributes; other control characters; U+FFFE, U+FFFF)
/// is written as a character reference.
class XMLDocument {
 public:
  XMLDocument();
  XMLDocument(const XMLDocument&) = delete;
  XMLDocument& operator=(const XMLDocument&) = delete;
  XMLDocument(XMLDocument&&) noexcept = default;
  XMLDocument& operator=(XMLDocument&&) noexcept = default;

  [[nodiscard]] XMLElement DocumentElement() const;

  /// Replaces the document by the parsed UTF-8 text, whatever encoding a declaration in it names. Bad text leaves the
  /// empty root. Move the text in: it is parsed where it stands. Elements of the former document stay valid.
  XMLLoadResult LoadXML(std::string Text);
  /// Whether `LoadXML` would take the text, with the place of the fault in lines and columns.
  [[nodiscard]] static XMLLoadResult Check(std::string_view Text);

  /// The whole document, beginning with the XML declaration, without a line break at its end. Always well-formed
  /// UTF-8. The same document gives the same bytes.
  [[nodiscard]] std::string ToString() const;
  /// The same text in parts, for a file: a large document then never stands in memory a second time.
  void WriteTo(const std::function<void(std::string_view)>& Sink) const;

 private:
  Ref<detail::XMLTree> mTree;
};

}  // namespace quillbook
