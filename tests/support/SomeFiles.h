// Trees of files that nobody would write, the same for the same seed.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <map>
#include <random>
#include <set>
#include <string>
#include <string_view>

namespace quillbook::support {

using NamedFiles = std::map<std::string, std::string>;

/// Bytes of so many kinds; of 256 kinds they are incompressible.
inline std::string RandomBytes(std::size_t size, unsigned kinds, unsigned seed) {
  std::mt19937 random(seed);
  std::string bytes(size, '\0');
  for (auto& byte : bytes) byte = static_cast<char>(random() % kinds);
  return bytes;
}

class SomeFiles {
 public:
  explicit SomeFiles(unsigned seed) : mRandom(seed) {}

  /// Files with names in several folders and scripts, and with contents of all kinds. Sizes go up to `largest`, small
  /// ones being as frequent as large ones on a scale of powers. No two names are the same but for ASCII letters' case.
  NamedFiles Tree(std::size_t count, std::size_t largest) {
    NamedFiles files;
    std::set<std::string> taken;
    while (files.size() < count) {
      auto name = Name();
      auto folded = name;
      std::transform(folded.begin(), folded.end(), folded.begin(),
                     [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c; });
      if (taken.insert(folded).second) files[name] = Content(Size(largest));
    }
    return files;
  }

  std::string Content(std::size_t size) {
    switch (Below(5)) {
      case 0: return RandomBytes(size, 256, Seed());
      case 1: return RandomBytes(size, 1 + Below(20), Seed());
      case 2: return std::string(size, static_cast<char>(Below(256)));
      default: return Text(size);
    }
  }

 private:
  unsigned Below(std::size_t limit) { return static_cast<unsigned>(mRandom() % limit); }
  unsigned Seed() { return static_cast<unsigned>(mRandom()); }

  std::size_t Size(std::size_t largest) {
    if (Below(12) == 0) return 0;
    const double share = static_cast<double>(Below(1'000'001)) / 1e6;
    return static_cast<std::size_t>(std::pow(static_cast<double>(largest), share));
  }

  /// Words that come again, as in pages.
  std::string Text(std::size_t size) {
    std::string text;
    while (text.size() < size) {
      const auto word = Below(1 + Below(4'000));
      text += "<p>" + std::to_string(word * 7919) + (word % 3 ? " the " : "</p>\r\n");
    }
    text.resize(size);
    return text;
  }

  std::string Name() {
    std::string name;
    for (auto folders = Below(4); folders > 0; --folders) name += "/" + Part();
    return name + "/f" + Part() + std::to_string(Below(100'000));
  }

  std::string Part() {
    static constexpr std::string_view pieces[] = {
        "page",      "PAGE", "a b", "Ü",     "é", "Печать", "印刷", "\xF0\x9F\x93\x98",
        "e\xCC\x81", "100%", "%41", "a+b&c", "'", "\"",     "#top", "$x",
        "[1]",       "{2}",  ";",   "=",     "~", "..",     ".htm", "-",
        "_",         "`",    "@",   "!",     ",", "\x01",   "\x7F"};
    std::string part(pieces[Below(std::size(pieces))]);
    for (auto more = Below(3); more > 0; --more) part += pieces[Below(std::size(pieces))];
    if (Below(60) == 0) part += std::string(Below(900), 'n');
    return part == ".." ? "dots" : part;
  }

  std::mt19937 mRandom;
};

}  // namespace quillbook::support
