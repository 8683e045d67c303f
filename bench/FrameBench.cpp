// What the frame of a procedure costs beside a bare call, and what collections cost beside the standard containers.
#include <benchmark/benchmark.h>

#include <string>
#include <unordered_map>
#include <vector>

#include "quillbook/base/Collection.h"
#include "quillbook/base/Date.h"
#include "quillbook/frame/Procedure.h"

namespace quillbook {
namespace {

/// The same small piece of work, once bare and once in the frame. Neither is inlined, as methods of a library aren't.
class Counter final : public Object {
 public:
  [[gnu::noinline]] int Bare(std::string_view text, int step) {
    mTotal += step + static_cast<int>(text.size());
    return mTotal;
  }
  [[gnu::noinline]] int Framed(std::string_view text, int step) {
    return Procedure(*this, "Framed",
                     [&](auto& p) {
                       p("text", text);
                       p("step", step);
                     })
        .Run([&] {
          mTotal += step + static_cast<int>(text.size());
          return mTotal;
        });
  }
  [[gnu::noinline]] std::string BareText(std::string_view text) { return std::string(text); }
  [[gnu::noinline]] std::string FramedText(std::string_view text) {
    return Procedure(*this, "FramedText", [&](auto& p) { p("text", text); }).Run([&] { return std::string(text); });
  }
  [[nodiscard]] int Total() const { return mTotal; }

  static const TypeInfo& StaticType() {
    static const TypeInfo type =
        Describe<Counter>("Counter").Field<&Counter::mTotal>("mTotal").ReadOnly<&Counter::Total>("Total").Done();
    return type;
  }
  [[nodiscard]] const TypeInfo& Type() const override { return StaticType(); }

 private:
  int mTotal = 0;
};

void BareCall(benchmark::State& state) {
  const auto counter = New<Counter>();
  for (auto _ : state) benchmark::DoNotOptimize(counter->Bare("text", 1));
}
BENCHMARK(BareCall);

void FramedCall(benchmark::State& state) {
  const auto counter = New<Counter>();
  for (auto _ : state) benchmark::DoNotOptimize(counter->Framed("text", 1));
}
BENCHMARK(FramedCall);

constexpr std::string_view longText = "a text of more than fifteen characters, so that it is allocated";

void BareCallWithText(benchmark::State& state) {
  const auto counter = New<Counter>();
  for (auto _ : state) benchmark::DoNotOptimize(counter->BareText(longText));
}
BENCHMARK(BareCallWithText);

void FramedCallWithText(benchmark::State& state) {
  const auto counter = New<Counter>();
  for (auto _ : state) benchmark::DoNotOptimize(counter->FramedText(longText));
}
BENCHMARK(FramedCallWithText);

void LateBoundRead(benchmark::State& state) {
  const auto counter = New<Counter>();
  for (auto _ : state) benchmark::DoNotOptimize(counter->Member("total"));
}
BENCHMARK(LateBoundRead);

std::vector<std::string> Keys(std::int64_t count) {
  std::vector<std::string> keys;
  for (std::int64_t i = 0; i < count; ++i) {
    const auto digits = std::to_string(i * 2'654'435'761 % 1'000'000'007'000 + 1'000'000'000'000);
    keys.push_back("{6B29FC40-CA47-1067-B31D-" + digits.substr(1) + "}");
  }
  return keys;
}

void CollectionAdd(benchmark::State& state) {
  const auto keys = Keys(state.range(0));
  for (auto _ : state) {
    Collection<int> list;
    for (const auto& key : keys) list.Add(1, key);
    benchmark::DoNotOptimize(list.Count());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(CollectionAdd)->Arg(1'000)->Arg(10'000)->Arg(100'000);

void CollectionItemByKey(benchmark::State& state) {
  const auto keys = Keys(state.range(0));
  Collection<int> list;
  for (const auto& key : keys) list.Add(1, key);
  for (auto _ : state)
    for (const auto& key : keys) benchmark::DoNotOptimize(list.Item(key));
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(CollectionItemByKey)->Arg(8)->Arg(1'000)->Arg(10'000)->Arg(100'000);

void HashMapByKey(benchmark::State& state) {
  const auto keys = Keys(state.range(0));
  std::unordered_map<std::string, int> map;
  for (const auto& key : keys) map.emplace(key, 1);
  for (auto _ : state)
    for (const auto& key : keys) benchmark::DoNotOptimize(map.find(key)->second);
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(HashMapByKey)->Arg(8)->Arg(1'000)->Arg(10'000)->Arg(100'000);

void CollectionItemByPosition(benchmark::State& state) {
  const auto count = state.range(0);
  Collection<int> list;
  for (std::int64_t i = 0; i < count; ++i) list.Add(1);
  for (auto _ : state)
    for (std::int64_t i = 1; i <= count; ++i) benchmark::DoNotOptimize(list.Item(i));
  state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK(CollectionItemByPosition)->Arg(1'000)->Arg(100'000);

void DateToFileText(benchmark::State& state) {
  const auto date = Date::FromParts({2024, 3, 5, 19, 8, 9}).value();
  for (auto _ : state) benchmark::DoNotOptimize(date.Format("dd-mm-yyyy hh:nn"));
}
BENCHMARK(DateToFileText);

}  // namespace
}  // namespace quillbook
