// The template parser as data providers use it.
#pragma once

#include <string>
#include <string_view>

#include "quillbook/base/Ref.h"

namespace quillbook {

class DataProvider;
class FileSystemObject;
class Object;
class TemplateElement;

namespace ParserServices {

/// Whether the object is of the named class, ignoring case. False for nothing.
[[nodiscard]] bool IsTypeOf(const Ref<Object>& Item, std::string_view TypeName);

/// `Text` with the provider's answer in place of every element. `Flag` has no effect.
///
/// Linear in the text. A text is compiled once and kept; one without "%%" costs a search. An evaluation that nests
/// deeper than `MaximumDepth`, or asks for more than `MaximumElements` elements, raises failure 28 once; what is left
/// of that outermost evaluation then expands to nothing, so that elements which generate each other come to an end.
[[nodiscard]] std::string ParseText(std::string_view Text, DataProvider& Provider, Ref<FileSystemObject>& FileSystemObj,
                                    bool Flag = true);
/// For a text that goes to no file.
[[nodiscard]] std::string ParseText(std::string_view Text, DataProvider& Provider);

inline constexpr int MaximumDepth = 100;
inline constexpr long MaximumElements = 10'000'000;

/// The text that an element gives for a result that is not empty, or for an empty one; `Default` if it gives none.
[[nodiscard]] std::string ElementNotBlankText(const TemplateElement& Element, std::string_view Default = {});
[[nodiscard]] std::string ElementBlankText(const TemplateElement& Element, std::string_view Default = {});

}  // namespace ParserServices
}  // namespace quillbook
