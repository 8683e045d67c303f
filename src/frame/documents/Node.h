// A node of an HTML page.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quillbook {
class HtmlElement;
}

namespace quillbook::html {

enum class Space : std::uint8_t { Html, Svg, MathMl };

/// One attribute of a start tag, and where it stands in the tag's text.
struct Attribute {
  std::string name;       ///< as it is written
  std::string value;      ///< references resolved
  std::size_t start = 0;  ///< of the name
  std::size_t end = 0;    ///< behind the value, or the name where there is none
};

/// A node, owned by its `Tree`. Nodes are linked, so that going through them needs no stack.
struct Node {
  enum class Kind : std::uint8_t { Document, Declaration, Comment, Text, Element };

  Kind kind = Kind::Document;
  Space space = Space::Html;
  bool sourceIsText = true;    ///< of a text: what is written is what is meant
  bool closesItself = false;   ///< of an element: its start tag ends in "/>", and that counts
  std::uint8_t lineBreak = 0;  ///< bytes of the line break behind the start tag, which belongs to no text: 0, 1 or 2

  Node* parent = nullptr;
  Node* previous = nullptr;
  Node* next = nullptr;
  Node* firstChild = nullptr;
  Node* lastChild = nullptr;
  HtmlElement* handle = nullptr;  ///< the object that stands for this element, while somebody holds it

  std::string name;    ///< of an element, in small letters
  std::string source;  ///< how the node is written; of an element, its start tag
  std::string text;    ///< of a text whose source isn't it: what it means
  std::vector<Attribute> attributes;

  [[nodiscard]] bool IsElement() const noexcept { return kind == Kind::Element; }
  [[nodiscard]] bool IsHtml(std::string_view elementName) const noexcept {
    return kind == Kind::Element && space == Space::Html && name == elementName;
  }
  /// What a text means.
  [[nodiscard]] std::string_view Meaning() const noexcept { return sourceIsText ? source : text; }
  /// The name as it stands in the start tag.
  [[nodiscard]] std::string_view SpelledName() const noexcept {
    return std::string_view(source).substr(1, name.size());
  }
};

/// The node behind `node` in document order within `root`; null at the end.
[[nodiscard]] Node* NextWithin(const Node& root, Node* node) noexcept;
/// As `NextWithin`, but passes over what is in `node`.
[[nodiscard]] Node* NextBehind(const Node& root, Node* node) noexcept;

/// Links `node` behind the last child of `parent`.
void Append(Node& parent, Node& node) noexcept;
/// Takes `node` out of its parent.
void Unlink(Node& node) noexcept;
/// Moves all children of `from` to the place before `place`, a child of `parent`; null means the end.
void MoveChildren(Node& from, Node& parent, Node* place) noexcept;

}  // namespace quillbook::html
