// Canonical Huffman codes of limited length.
#pragma once

#include <cstdint>
#include <span>

namespace quillbook::compile {

/// Code lengths that are optimal within `maximumLength`, by the symbols' frequencies. A symbol that never occurs gets
/// length 0. A code of a single symbol would not be complete, so a second one is given a length too.
/// Source: length-limited coding by Larmore and Hirschberg ("package-merge"), here only where the plain Huffman code
/// is too long; the plain code by Moffat and Katajainen's in-place method.
void BuildCodeLengths(std::span<const std::uint32_t> frequencies, int maximumLength, std::span<std::uint8_t> lengths);

/// Code words of canonical order (by length, then by symbol), most significant bit first.
void BuildCodeWords(std::span<const std::uint8_t> lengths, std::span<std::uint16_t> words);

}  // namespace quillbook::compile
