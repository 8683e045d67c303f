// An element of a template text as the parser hands it over.
#pragma once

#include <string>
#include <string_view>

#include "quillbook/base/Collection.h"
#include "quillbook/base/Object.h"

namespace quillbook {

/// Unchanging: one element object serves all evaluations of a compiled text.
class TemplateElement final : public Object {
 public:
  explicit TemplateElement(std::string_view ElementType);

  /// The type as written; compare it ignoring case.
  [[nodiscard]] const std::string& ElementType() const noexcept { return mElementType; }
  /// Values by name, ignoring case; `Item` raises failure 5 for a missing one. "type" holds the element's type.
  [[nodiscard]] const Collection<std::string>& Attributes() const noexcept { return mAttributes; }
  /// The attribute's value; empty if it is missing.
  [[nodiscard]] std::string_view Attribute(std::string_view Name) const noexcept {
    const auto* value = mAttributes.Find(Name);
    return value ? std::string_view(*value) : std::string_view();
  }
  [[nodiscard]] bool HasAttribute(std::string_view Name) const noexcept { return mAttributes.Contains(Name); }
  /// The text between "%%type%%" and "%%/type%%" as written; empty if the element encloses nothing.
  [[nodiscard]] const std::string& Source() const noexcept { return mSource; }
  /// What stands between "%%notblank%%" and "%%/notblank%%" directly inside the element.
  [[nodiscard]] const std::string& NotBlankText() const noexcept { return mNotBlankText; }
  [[nodiscard]] const std::string& BlankText() const noexcept { return mBlankText; }

  /// For whoever makes the element, before anybody else sees it. A name that is there already keeps its value.
  void AddAttribute(std::string_view Name, std::string_view Value);
  void SetSource(std::string Source) { mSource = std::move(Source); }
  void SetNotBlankText(std::string Text) { mNotBlankText = std::move(Text); }
  void SetBlankText(std::string Text) { mBlankText = std::move(Text); }

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 private:
  std::string mElementType;
  Collection<std::string> mAttributes;
  std::string mSource;
  std::string mNotBlankText;
  std::string mBlankText;
};

}  // namespace quillbook
