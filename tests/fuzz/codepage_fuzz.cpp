// Bytes in any code page become valid text, and text becomes bytes.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "quillbook/base/CodePage.h"
#include "quillbook/base/Text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quillbook;
  constexpr int kPages[] = {CodePageUtf8, CodePageWindows1252, 932, 936, 949, 950, 1250, 1251, 1255, 1258, 874};
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  for (const int page : kPages) {
    const auto text = DecodeCodePage(bytes, page);
    if (!IsValidUtf8(text)) std::abort();
    (void)EncodeCodePage(text, page, Unmappable::CharacterReference);
  }
  (void)FoldCase(bytes);
  if (!IsValidUtf8(FromUtf16Bytes(bytes))) std::abort();
  return 0;
}
