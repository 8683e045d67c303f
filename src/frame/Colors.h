// Arithmetic of colour values.
#pragma once

#include <cstdint>
#include <optional>

namespace quillbook {

/// The three channels of a colour that stands for itself.
struct Rgb {
  std::uint8_t red = 0, green = 0, blue = 0;

  friend bool operator==(const Rgb&, const Rgb&) = default;
};

/// Numbers of system colours as colour values.
enum SystemColor : std::int32_t {
  ApplicationWorkspace = static_cast<std::int32_t>(0x8000000CU),
  ButtonFace = static_cast<std::int32_t>(0x8000000FU),
};

/// Red in the lowest byte.
[[nodiscard]] constexpr std::int32_t ColorValue(Rgb color) noexcept {
  return color.red | color.green << 8 | color.blue << 16;
}
/// Resolves system colours; nothing for a value that is no colour.
[[nodiscard]] std::optional<Rgb> TranslateColor(std::int32_t color) noexcept;
/// `weight` of 255 parts of `a`, the rest of `b`.
[[nodiscard]] Rgb BlendColors(Rgb a, Rgb b, int weight) noexcept;

}  // namespace quillbook
