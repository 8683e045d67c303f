// What a document and its elements share: the parsed tree and the text it points into.
#pragma once

#include <cstddef>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "quillbook/base/Object.h"

namespace quillbook::detail {

/// The attributes of the element that was asked last, side by side. Readers ask one element for all its attributes, one
/// after the other, and the parser keeps them in a chain.
class AttributeIndex {
 public:
  /// The first attribute of the element that has this name, ignoring case.
  [[nodiscard]] pugi::xml_attribute Find(const pugi::xml_node& element, std::string_view name);
  /// Elements may have gone.
  void Forget() noexcept { mElement = {}; }
  /// The element has changed.
  void Forget(const pugi::xml_node& element) noexcept {
    if (mElement == element) mElement = {};
  }

 private:
  struct Entry {
    std::string_view name;
    pugi::xml_attribute attribute;
  };
  void Read(const pugi::xml_node& element);

  pugi::xml_node mElement;
  std::vector<Entry> mEntries;
};

class XMLTree final : public Object {
 public:
  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

  /// Elements are about to go; what is kept of them goes first.
  void ForgetElements() noexcept {
    attributes.Forget();
    joinedTexts.clear();
  }
  /// The same text as a C string, valid until the next call; NUL, which would cut it off, becomes U+FFFD.
  const char* Terminated(std::string_view text);

  std::string source;           ///< parsed in place; declared first because `document` points into it
  pugi::xml_document document;  ///< its last child element is the root
  std::size_t contentSize = 0;  ///< bytes of all names and texts, as a measure for the output
  AttributeIndex attributes;
  std::unordered_map<const void*, std::string> joinedTexts;  ///< texts that lie in pieces, by element

 private:
  std::string mTerminated;
};

[[nodiscard]] inline pugi::xml_node NodeOf(void* node) {
  return pugi::xml_node(static_cast<pugi::xml_node_struct*>(node));
}

[[nodiscard]] inline bool IsTextPiece(const pugi::xml_node& node) {
  return node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata;
}

[[nodiscard]] inline bool IsWhiteSpace(std::string_view text) {
  return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

/// What an element holds beside its attributes.
enum class XMLContent {
  None,
  Text,      ///< text only, white space included
  Elements,  ///< child elements, with at most white space between them
  Mixed,     ///< child elements and text that counts
};
[[nodiscard]] XMLContent ContentOf(const pugi::xml_node& element);

}  // namespace quillbook::detail
