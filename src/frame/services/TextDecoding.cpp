#include "frame/services/TextDecoding.h"

#include <string_view>

#include "quillbook/base/CodePage.h"
#include "quillbook/base/Text.h"

namespace quillbook::detail {

namespace {

/// Code page named by the XML declaration that the bytes begin with; 0 if there is none, or one that isn't known.
int DeclaredCodePage(std::string_view bytes) {
  if (!bytes.starts_with("<?xml")) return 0;
  constexpr std::size_t longestDeclaration = 256;
  bytes = bytes.substr(0, longestDeclaration);
  bytes = bytes.substr(0, bytes.find("?>"));
  auto at = bytes.find("encoding");
  if (at == std::string_view::npos) return 0;
  at = bytes.find_first_of("\"'", at);
  if (at == std::string_view::npos) return 0;
  const auto end = bytes.find(bytes[at], at + 1);
  return end == std::string_view::npos ? 0 : CodePageFromCharset(bytes.substr(at + 1, end - at - 1));
}

}  // namespace

std::string DecodeText(std::string bytes) {
  const std::string_view view = bytes;
  constexpr std::string_view littleStart("<\0", 2);
  constexpr std::string_view bigStart("\0<", 2);
  if (view.starts_with("\xFF\xFE")) return FromUtf16Bytes(view.substr(2));
  if (view.starts_with("\xFE\xFF")) return FromUtf16Bytes(view.substr(2), true);
  if (view.starts_with(littleStart)) return FromUtf16Bytes(view);
  if (view.starts_with(bigStart)) return FromUtf16Bytes(view, true);
  if (view.starts_with("\xEF\xBB\xBF")) {
    bytes.erase(0, 3);
    if (!IsValidUtf8(bytes)) return DecodeCodePage(bytes, CodePageUtf8);
    return bytes;
  }
  const int declared = DeclaredCodePage(view);
  if (declared != 0 && declared != CodePageUtf8) return DecodeCodePage(view, declared);
  if (!IsValidUtf8(view)) return DecodeCodePage(view, CodePageWindows1252);
  return bytes;
}

}  // namespace quillbook::detail
