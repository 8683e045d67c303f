#include "frame/Colors.h"

#include <array>
#include <cmath>

namespace quillbook {
namespace {

// There is no desktop to ask, so the system's colours are those of its standard scheme, in the order of their numbers.
constexpr std::array<std::uint32_t, 31> kSystemColors = {
    0xC8D0D4, 0xA56E3A, 0x6A240A, 0x808080, 0xC8D0D4, 0xFFFFFF, 0x000000, 0x000000, 0x000000, 0xFFFFFF, 0xC8D0D4,
    0xC8D0D4, 0x808080, 0x6A240A, 0xFFFFFF, 0xC8D0D4, 0x808080, 0x808080, 0x000000, 0xC8D0D4, 0xFFFFFF, 0x404040,
    0xC8D0D4, 0x000000, 0xE1FFFF, 0xB5B5B5, 0x800000, 0xF0CAA6, 0xC0C0C0, 0x6A240A, 0xC8D0D4};

constexpr Rgb Channels(std::uint32_t value) noexcept {
  return {static_cast<std::uint8_t>(value), static_cast<std::uint8_t>(value >> 8),
          static_cast<std::uint8_t>(value >> 16)};
}

}  // namespace

std::optional<Rgb> TranslateColor(std::int32_t color) noexcept {
  constexpr std::uint32_t plain = 0x00, paletteRelative = 0x02, system = 0x80;
  const auto value = static_cast<std::uint32_t>(color);
  const auto index = value & 0xFFFFFF;
  switch (value >> 24) {
    case plain:
    case paletteRelative: return Channels(value);
    case system:
      if (index < kSystemColors.size()) return Channels(kSystemColors[index]);
      return std::nullopt;
    default: return std::nullopt;
  }
}

Rgb BlendColors(Rgb a, Rgb b, int weight) noexcept {
  // Halves round to even, as conversions of the object model do.
  const auto blend = [weight](std::uint8_t left, std::uint8_t right) {
    return static_cast<std::uint8_t>(std::nearbyint(left * weight / 255.0 + right * (255 - weight) / 255.0));
  };
  return {blend(a.red, b.red), blend(a.green, b.green), blend(a.blue, b.blue)};
}

}  // namespace quillbook
