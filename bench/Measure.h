// Timing of benchmarks that prepare each round.
#pragma once

#include <benchmark/benchmark.h>

#include <chrono>

namespace quillbook::bench {

/// Sets the time of one round; the benchmark must use manual time.
template <class Work>
void Measure(benchmark::State& state, Work&& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
}

/// Notes how long one of the things took with which the benchmark worked.
inline void CountEach(benchmark::State& state, std::int64_t things) {
  state.SetItemsProcessed(state.iterations() * things);
}

}  // namespace quillbook::bench
