// Runs a fuzz target without a fuzzer: over every seed, then over pieces and changes of it, the same at each run.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

constexpr int kChanges = 200;
constexpr std::size_t kCuts = 40;

void Try(const std::string& input) {
  // A copy of its very size, so that a sanitizer sees the first byte that is read behind it.
  const std::vector<std::uint8_t> bytes(input.begin(), input.end());
  LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
}

std::string Change(std::string text, std::mt19937& random) {
  const auto below = [&](std::size_t limit) { return static_cast<std::size_t>(random() % limit); };
  for (auto left = 1 + below(4); left > 0 && !text.empty(); --left) {
    const auto at = below(text.size());
    const auto length = std::min(text.size() - at, 1 + below(32));
    switch (below(4)) {
      case 0: text[at] = static_cast<char>(random()); break;
      case 1: text.erase(at, length); break;
      case 2: text.insert(below(text.size()), text.substr(at, length)); break;
      default: text.insert(at, 1 + below(8), "<>&\"%;:/\0\xff"[below(10)]);
    }
  }
  return text;
}

void Replay(const std::string& seed) {
  Try(seed);
  for (std::size_t cut = 1; cut < kCuts; ++cut) Try(seed.substr(0, seed.size() * cut / kCuts));
  std::mt19937 random(static_cast<std::mt19937::result_type>(seed.size()));
  for (int change = 0; change < kChanges; ++change) Try(Change(seed, random));
}

}  // namespace

int main(int argc, char** argv) {
  int seeds = 0;
  for (int i = 1; i < argc; ++i) {
    for (const auto& entry : std::filesystem::directory_iterator(argv[i])) {
      std::ifstream file(entry.path(), std::ios::binary);
      Replay(std::string(std::istreambuf_iterator<char>(file), {}));
      ++seeds;
    }
  }
  std::printf("%d seeds\n", seeds);
  return seeds > 0 ? 0 : 1;
}
