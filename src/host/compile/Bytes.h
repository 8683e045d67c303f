// Little-endian numbers and the other small encodings of the container formats.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace quillbook::compile {

template <int Size>
void PutLittleEndian(std::string& output, std::uint64_t value) {
  for (int i = 0; i < Size; ++i) output += static_cast<char>(value >> (8 * i));
}
inline void PutWord(std::string& output, std::uint64_t value) {
  PutLittleEndian<2>(output, value);
}
inline void PutDword(std::string& output, std::uint64_t value) {
  PutLittleEndian<4>(output, value);
}
inline void PutQword(std::string& output, std::uint64_t value) {
  PutLittleEndian<8>(output, value);
}

/// Overwrites bytes that are there already.
template <int Size>
void SetLittleEndian(std::string& bytes, std::size_t at, std::uint64_t value) {
  for (int i = 0; i < Size; ++i) bytes[at + static_cast<std::size_t>(i)] = static_cast<char>(value >> (8 * i));
}

/// A number of `Size` bytes; 0 where `bytes` ends before.
template <int Size>
[[nodiscard]] std::uint64_t GetLittleEndian(std::string_view bytes, std::size_t at) {
  if (at > bytes.size() || bytes.size() - at < static_cast<std::size_t>(Size)) return 0;
  std::uint64_t value = 0;
  for (int i = Size; i-- > 0;) value = value << 8 | static_cast<unsigned char>(bytes[at + static_cast<std::size_t>(i)]);
  return value;
}
[[nodiscard]] inline std::uint16_t GetWord(std::string_view bytes, std::size_t at) {
  return static_cast<std::uint16_t>(GetLittleEndian<2>(bytes, at));
}
[[nodiscard]] inline std::uint32_t GetDword(std::string_view bytes, std::size_t at) {
  return static_cast<std::uint32_t>(GetLittleEndian<4>(bytes, at));
}
[[nodiscard]] inline std::uint64_t GetQword(std::string_view bytes, std::size_t at) {
  return GetLittleEndian<8>(bytes, at);
}

/// A number in groups of seven bits, most significant first; all bytes but the last have the high bit set.
void PutEncInt(std::string& output, std::uint64_t value);
/// Reads such a number and moves behind it. False at the end of the bytes or for more than 63 bits.
[[nodiscard]] bool GetEncInt(std::string_view bytes, std::size_t& at, std::uint64_t& value);

/// A GUID given as "7C01FD10-7BAA-11D0-9E0C-00A0C922E6EC" in its 16 stored bytes.
[[nodiscard]] std::string GuidBytes(std::string_view text);

}  // namespace quillbook::compile
