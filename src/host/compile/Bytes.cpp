#include "host/compile/Bytes.h"

namespace quillbook::compile {

void PutEncInt(std::string& output, std::uint64_t value) {
  int groups = 1;
  while (groups < 10 && value >> (7 * groups)) ++groups;
  while (groups-- > 0) output += static_cast<char>(((value >> (7 * groups)) & 0x7F) | (groups ? 0x80 : 0));
}

bool GetEncInt(std::string_view bytes, std::size_t& at, std::uint64_t& value) {
  value = 0;
  for (int groups = 0; groups < 9 && at < bytes.size(); ++groups) {
    const auto byte = static_cast<unsigned char>(bytes[at++]);
    value = value << 7 | (byte & 0x7FU);
    if (byte < 0x80) return true;
  }
  return false;
}

std::string GuidBytes(std::string_view text) {
  const auto digit = [](char c) { return static_cast<unsigned>(c <= '9' ? c - '0' : (c | 0x20) - 'a' + 10); };
  std::string bytes;
  for (std::size_t i = 0; i + 1 < text.size();) {
    if (text[i] == '-') {
      ++i;
      continue;
    }
    bytes += static_cast<char>(digit(text[i]) << 4 | digit(text[i + 1]));
    i += 2;
  }
  // The first three groups are numbers and stand in little-endian order.
  std::swap(bytes[0], bytes[3]);
  std::swap(bytes[1], bytes[2]);
  std::swap(bytes[4], bytes[5]);
  std::swap(bytes[6], bytes[7]);
  return bytes;
}

}  // namespace quillbook::compile
