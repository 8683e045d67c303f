#include "quillbook/host/ParserServices.h"

#include "host/CompiledTemplateCache.h"
#include "host/TemplateLexer.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/host/DataProvider.h"
#include "quillbook/host/TemplateElement.h"

namespace quillbook::ParserServices {

bool IsTypeOf(const Ref<Object>& Item, std::string_view TypeName) {
  return Item && Item->IsOfType(TypeName);
}

std::string ParseText(std::string_view Text, DataProvider& Provider, Ref<FileSystemObject>& FileSystemObj,
                      bool /*Flag*/) {
  if (detail::FindDelimiter(Text, 0) == std::string_view::npos) return std::string(Text);
  const auto compiled = detail::CompiledTemplateCache::OfApartment().Get(Text);
  std::string result;
  result.reserve(Text.size());
  compiled->Evaluate(Provider, FileSystemObj, result);
  return result;
}

std::string ParseText(std::string_view Text, DataProvider& Provider) {
  Ref<FileSystemObject> none;
  return ParseText(Text, Provider, none);
}

std::string ElementNotBlankText(const TemplateElement& Element, std::string_view Default) {
  return Element.NotBlankText().empty() ? std::string(Default) : Element.NotBlankText();
}

std::string ElementBlankText(const TemplateElement& Element, std::string_view Default) {
  return Element.BlankText().empty() ? std::string(Default) : Element.BlankText();
}

}  // namespace quillbook::ParserServices
