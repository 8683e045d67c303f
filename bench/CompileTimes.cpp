// What share of a compile goes into reading the result back: compile_times PROJECT OUTPUT [ROUNDS]
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "quillbook/host/HelpCompilation.h"

namespace {

using quillbook::compile::CompileReport;

struct Times {
  double whole = 0;
  double check = 0;
};

/// Of the round whose share is the middle one.
Times Median(std::vector<Times> rounds) {
  const auto middle = rounds.begin() + static_cast<std::ptrdiff_t>(rounds.size() / 2);
  const auto share = [](const Times& times) { return times.check / times.whole; };
  std::nth_element(rounds.begin(), middle, rounds.end(),
                   [&](const Times& left, const Times& right) { return share(left) < share(right); });
  return *middle;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) return 2;
  std::vector<Times> rounds;
  for (long left = argc > 3 ? std::max(1L, std::atol(argv[3])) : 3; left > 0; --left) {
    const auto start = std::chrono::steady_clock::now();
    const auto report = quillbook::compile::CompileHelp({argv[1], argv[2], false});
    const std::chrono::duration<double> whole = std::chrono::steady_clock::now() - start;
    if (report.outcome != CompileReport::Outcome::Made) return 1;
    rounds.push_back({whole.count(), report.checkSeconds});
  }
  const auto [whole, check] = Median(rounds);
  std::printf("%.3f s, of which reading back %.3f s: %.1f %%\n", whole, check, 100 * check / whole);
  return 0;
}
