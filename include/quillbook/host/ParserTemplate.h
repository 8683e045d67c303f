// Parses a text whose elements have tags of the caller's choice.
#pragma once

#include <string>
#include <string_view>

#include "quillbook/base/Object.h"
#include "quillbook/host/DataProvider.h"

namespace quillbook {

/// Elements that enclose text between a start tag and an end tag, such as "<!--MVMETADATA start" ... "-->" and
/// "<!--MVMETADATA end" ... "-->". Tags are found ignoring case. The provider is asked for each element, an inner one
/// before the one that encloses it. Tags without a partner are text.
class ParserTemplate final : public Object {
 public:
  std::string StartTagOpen;
  std::string StartTagClose;
  std::string EndTagOpen;
  std::string EndTagClose;
  /// True: the provider's answer takes the place of the element with its tags. False: the tags stay around it.
  bool RemoveTags = false;
  Ref<quillbook::DataProvider> DataProvider;

  void Load(std::string_view Text) { mText = Text; }
  /// The parsed text. Failure 91 without a provider, 28 for elements that nest more than 1,000 deep.
  [[nodiscard]] std::string Result();

  static const TypeInfo& StaticType();
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 private:
  std::string mText;
};

}  // namespace quillbook
