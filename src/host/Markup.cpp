#include "host/Markup.h"

#include "host/compile/TagScanner.h"

namespace quillbook::detail {

std::string EscapeMarkup(std::string_view text) {
  std::string escaped;
  escaped.reserve(text.size());
  for (const char c : text) {
    switch (c) {
      case '&': escaped += "&amp;"; break;
      case '<': escaped += "&lt;"; break;
      case '>': escaped += "&gt;"; break;
      case '"': escaped += "&quot;"; break;
      default: escaped += static_cast<unsigned char>(c) < 0x20 || c == 0x7F ? ' ' : c;
    }
  }
  return escaped;
}

std::string PlainTitle(std::string_view title) {
  return compile::ResolveReferences(title);
}

}  // namespace quillbook::detail
