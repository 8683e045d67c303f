#include "cli/DisplayWidth.h"

#include <unicode/uchar.h>

#include "quillbook/base/Text.h"

namespace quillbook::cli {
namespace {

constexpr std::string_view kCutMark = "…";

std::size_t WidthOf(char32_t c) {
  const auto code = static_cast<UChar32>(c);
  switch (u_charType(code)) {
    case U_NON_SPACING_MARK:
    case U_ENCLOSING_MARK:
    case U_FORMAT_CHAR:
    case U_CONTROL_CHAR: return 0;
    default: break;
  }
  const auto width = u_getIntPropertyValue(code, UCHAR_EAST_ASIAN_WIDTH);
  return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
}

}  // namespace

std::size_t DisplayWidth(std::string_view text) {
  std::size_t width = 0;
  for (std::size_t at = 0; at < text.size();) width += WidthOf(NextCodePoint(text, at));
  return width;
}

std::string CutToWidth(std::string_view text, std::size_t columns) {
  if (columns == 0) return {};
  std::size_t width = 0;
  std::size_t fits = 0;  // as much as leaves a column for the mark
  for (std::size_t at = 0; at < text.size();) {
    width += WidthOf(NextCodePoint(text, at));
    if (width > columns) return std::string(text.substr(0, fits)).append(kCutMark);
    if (width < columns) fits = at;
  }
  return std::string(text);
}

}  // namespace quillbook::cli
