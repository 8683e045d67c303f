#include "quillbook/frame/services/UnicodeHelper.h"

#include "quillbook/base/Text.h"

namespace quillbook {

std::string UnicodeHelper::ToUTF8(std::string_view Text) {
  std::string result;
  result.reserve(Text.size());
  for (const char byte : Text) AppendCodePoint(result, static_cast<unsigned char>(byte));
  return result;
}

}  // namespace quillbook
