// Elements and attributes of an XML document.
#pragma once

#include <cstddef>
#include <iterator>
#include <optional>
#include <source_location>
#include <string>
#include <string_view>

#include "quillbook/base/Ref.h"
#include "quillbook/base/Variant.h"

namespace quillbook {

class XMLElement;

namespace detail {
class XMLTree;
}

/// An attribute of an element. A view like `XMLElement`.
class XMLAttribute {
 public:
  [[nodiscard]] std::string_view Name() const;
  /// Valid as long as the document or one of its elements lives.
  [[nodiscard]] std::string_view Value() const;

 private:
  friend class XMLAttributes;
  friend class XMLElement;
  XMLAttribute(Ref<detail::XMLTree> tree, void* attribute) : mTree(std::move(tree)), mAttribute(attribute) {}

  Ref<detail::XMLTree> mTree;
  void* mAttribute;
};

/// The attributes of an element. Names ignore case; of two that differ only in case the first one answers.
class XMLAttributes {
 public:
  /// Failure 5 for a name that isn't there.
  [[nodiscard]] XMLAttribute Item(std::string_view Name,
                                  std::source_location where = std::source_location::current()) const;
  /// The value, or none where `Item` would fail. Valid as long as the document or one of its elements lives.
  [[nodiscard]] std::optional<std::string_view> Find(std::string_view Name) const;
  [[nodiscard]] std::size_t Count() const;

 private:
  friend class XMLElement;
  XMLAttributes(Ref<detail::XMLTree> tree, void* node) : mTree(std::move(tree)), mNode(node) {}

  Ref<detail::XMLTree> mTree;
  void* mNode;
};

/// The child elements of an element in document order. Enumerate it as often as wanted; add none meanwhile.
class XMLChildElements {
 public:
  class Iterator {
   public:
    using difference_type = std::ptrdiff_t;
    using value_type = XMLElement;
    using iterator_category = std::input_iterator_tag;
    Iterator() = default;
    XMLElement operator*() const;
    Iterator& operator++();
    Iterator operator++(int) {
      auto before = *this;
      ++*this;
      return before;
    }
    friend bool operator==(const Iterator& left, const Iterator& right) { return left.mNode == right.mNode; }

   private:
    friend class XMLChildElements;
    Iterator(Ref<detail::XMLTree> tree, void* node) : mTree(std::move(tree)), mNode(node) {}
    Ref<detail::XMLTree> mTree;
    void* mNode = nullptr;
  };

  [[nodiscard]] Iterator begin() const;
  [[nodiscard]] Iterator end() const { return {}; }
  [[nodiscard]] std::size_t Count() const;

 private:
  friend class XMLElement;
  XMLChildElements(Ref<detail::XMLTree> tree, void* node) : mTree(std::move(tree)), mNode(node) {}

  Ref<detail::XMLTree> mTree;
  void* mNode;
};

/// One element of an `XMLDocument`, or nothing.
///
/// A light handle: copies stand for the same element, and any of them keeps the whole document alive. Using an empty
/// handle raises failure 91. Text and names go in and come back as they are; escaping is the document's own. Three
/// things have no form in XML and are replaced by U+FFFD: the character NUL when it comes in, and bytes that aren't
/// UTF-8 and surrogates when they are written.
class XMLElement {
 public:
  XMLElement() = default;

  /// False for the empty handle.
  explicit operator bool() const noexcept { return mNode != nullptr; }
  friend bool operator==(const XMLElement& left, const XMLElement& right) noexcept { return left.mNode == right.mNode; }

  /// With the case that the file has. Empty for the root of a new document.
  [[nodiscard]] std::string_view Name() const;
  /// Failure 5 for what can't be the name of an element.
  void SetName(std::string_view Name, std::source_location where = std::source_location::current());

  /// The element's own text: its pieces between comments, CDATA marks and child elements joined. White space that
  /// only separates child elements doesn't count.
  [[nodiscard]] std::string Text() const { return std::string(TextView()); }
  /// The same without a copy; valid until the document or its last element goes or this text is changed.
  [[nodiscard]] std::string_view TextView() const;
  void SetText(std::string_view Text);

  [[nodiscard]] XMLAttributes Attributes() const;
  [[nodiscard]] XMLChildElements ChildElements() const;

  /// Adds an attribute behind the others. The caller adds no name twice. Failure 5 for an impossible name.
  XMLAttribute AddAttribute(std::string_view Name, std::string_view Value,
                            std::source_location where = std::source_location::current());
  /// Adds a child element behind the others. Failure 5 for an impossible name.
  XMLElement AddChild(std::string_view Name, std::string_view Text = {},
                      std::source_location where = std::source_location::current());

  /// Where the element begins in the text that was loaded, in bytes; 0 for an element that was added since.
  [[nodiscard]] std::size_t SourceOffset() const;

  /// Takes the element and the white space before it out of the document and gives their memory back. For readers of
  /// large documents, which are done with an element when they have read it. No other handle of it, or of an element
  /// below it, may be used any more; the root can't be taken out.
  void Discard();
  /// The same for all that stands below the element.
  void DiscardChildren();

  /// For the state dump.
  operator Variant() const;

 private:
  friend class XMLDocument;
  friend class XMLOutput;
  friend class XMLChildElements::Iterator;
  XMLElement(Ref<detail::XMLTree> tree, void* node) : mTree(std::move(tree)), mNode(node) {}
  [[nodiscard]] void* Node() const;

  Ref<detail::XMLTree> mTree;
  void* mNode = nullptr;
};

}  // namespace quillbook
