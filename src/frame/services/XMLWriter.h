// Text of an XML tree.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "frame/services/XMLTree.h"

namespace quillbook::detail {

/// Writes an element and all below it, in parts that it hands to a sink. Nesting costs no stack.
class XMLWriter {
 public:
  using Sink = std::function<void(std::string_view)>;

  explicit XMLWriter(const Sink& sink) : mSink(sink) { mOut.reserve(2 * partSize); }

  /// The whole document.
  void Write(const pugi::xml_node& root);

  /// The document in pieces: everything before the root's children, the child elements that there are, and the end.
  void Open(const pugi::xml_node& root);
  void WriteChildren(const pugi::xml_node& root);
  void Close(const pugi::xml_node& root);

 private:
  /// A part that still fits the processor's cache: it never becomes memory of its own.
  static constexpr std::size_t partSize = 64 * 1024;

  void WriteDeclaration();
  void WriteElement(const pugi::xml_node& root);
  /// Writes the start of a node, or all of it; true if its children come next.
  bool Enter(const pugi::xml_node& node);
  void Leave(const pugi::xml_node& element);
  void StartLine();
  void HandOver();

  const Sink& mSink;
  std::string mOut;
  std::size_t mDepth = 0;
  /// Depth from which everything stands in one line, since line breaks would become text; 0: not now.
  std::size_t mInlineFrom = 0;
};

/// Appends text as the content of an element.
void AppendXMLText(std::string& out, std::string_view text);
/// Appends text as the value of an attribute in double quotes.
void AppendXMLAttribute(std::string& out, std::string_view text);

}  // namespace quillbook::detail
