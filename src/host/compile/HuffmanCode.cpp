#include "host/compile/HuffmanCode.h"

#include <algorithm>
#include <array>
#include <vector>

namespace quillbook::compile {

namespace {

struct Leaf {
  std::uint32_t frequency;
  std::uint16_t symbol;
};

/// Depths of a Huffman tree over ascending frequencies, in place: Moffat and Katajainen, "In-place calculation of
/// minimum-redundancy codes" (1995).
void MinimumRedundancyLengths(std::vector<std::uint32_t>& a) {
  const int n = static_cast<int>(a.size());
  int root = 0;
  int leaf = 2;
  a[0] += a[1];
  for (int next = 1; next < n - 1; ++next) {
    const auto take = [&]() -> std::uint32_t {
      if (leaf >= n || (root < next && a[root] < a[leaf])) {
        const auto weight = a[root];
        a[root++] = static_cast<std::uint32_t>(next);
        return weight;
      }
      return a[leaf++];
    };
    const auto first = take();
    const auto second = take();
    a[next] = first + second;
  }
  a[n - 2] = 0;
  for (int next = n - 3; next >= 0; --next) a[next] = a[a[next]] + 1;
  int available = 1;
  int used = 0;
  std::uint32_t depth = 0;
  root = n - 2;
  int next = n - 1;
  while (available > 0) {
    while (root >= 0 && a[root] == depth) {
      ++used;
      --root;
    }
    while (available > used) {
      a[next--] = depth;
      --available;
    }
    available = 2 * used;
    ++depth;
    used = 0;
  }
}

/// Shortens what is longer than the limit and lengthens the cheapest others until the code is complete again.
/// `lengths` descends as frequencies ascend.
void LimitLengths(std::vector<std::uint32_t>& lengths, std::uint32_t limit) {
  std::uint64_t used = 0;
  const auto share = [&](std::uint32_t length) { return std::uint64_t{1} << (limit - length); };
  for (auto& length : lengths) {
    length = std::min(length, limit);
    used += share(length);
  }
  const auto whole = std::uint64_t{1} << limit;
  for (std::size_t i = 0; used > whole; i = i + 1 < lengths.size() ? i + 1 : 0) {
    while (lengths[i] < limit && used > whole) {
      used -= share(lengths[i]) - share(lengths[i] + 1);
      ++lengths[i];
    }
  }
  for (std::size_t i = lengths.size(); i-- > 0;) {
    while (lengths[i] > 1 && used + share(lengths[i]) <= whole) {
      used += share(lengths[i]);
      --lengths[i];
    }
  }
}

}  // namespace

void BuildCodeLengths(std::span<const std::uint32_t> frequencies, int maximumLength, std::span<std::uint8_t> lengths) {
  std::fill(lengths.begin(), lengths.end(), std::uint8_t{0});
  std::vector<Leaf> leaves;
  for (std::size_t symbol = 0; symbol < frequencies.size(); ++symbol)
    if (frequencies[symbol] > 0) leaves.push_back({frequencies[symbol], static_cast<std::uint16_t>(symbol)});
  if (leaves.empty()) return;
  if (leaves.size() == 1) {
    const auto symbol = leaves.front().symbol;
    lengths[symbol] = 1;
    lengths[symbol == 0 ? 1 : 0] = 1;
    return;
  }
  std::sort(leaves.begin(), leaves.end(), [](const Leaf& left, const Leaf& right) {
    return left.frequency != right.frequency ? left.frequency < right.frequency : left.symbol < right.symbol;
  });
  std::vector<std::uint32_t> work(leaves.size());
  std::transform(leaves.begin(), leaves.end(), work.begin(), [](const Leaf& leaf) { return leaf.frequency; });
  MinimumRedundancyLengths(work);
  if (work.front() > static_cast<std::uint32_t>(maximumLength))
    LimitLengths(work, static_cast<std::uint32_t>(maximumLength));
  for (std::size_t i = 0; i < leaves.size(); ++i) lengths[leaves[i].symbol] = static_cast<std::uint8_t>(work[i]);
}

void BuildCodeWords(std::span<const std::uint8_t> lengths, std::span<std::uint16_t> words) {
  std::array<std::uint16_t, 17> count{};
  for (const auto length : lengths) ++count[length];
  count[0] = 0;
  std::array<std::uint16_t, 17> next{};
  std::uint16_t code = 0;
  for (std::size_t length = 1; length < next.size(); ++length) {
    code = static_cast<std::uint16_t>((code + count[length - 1]) << 1);
    next[length] = code;
  }
  for (std::size_t symbol = 0; symbol < lengths.size(); ++symbol)
    if (lengths[symbol] > 0) words[symbol] = next[lengths[symbol]]++;
}

}  // namespace quillbook::compile
