// Random operations on a project, each mirrored in a model in plain containers and compared with it.
//
// QUILLBOOK_MODEL_STEPS and QUILLBOOK_MODEL_SEED tell how many steps to take and which; see CONTRIBUTING.md.
#include <gtest/gtest.h>

#include <cstdlib>
#include <numeric>
#include <optional>

#include "World.h"

namespace quillbook::model {
namespace {

constexpr std::uint64_t UsualSteps = 4500;
constexpr std::uint64_t UsualSeed = 20;
constexpr std::size_t StepsOfAProject = 300;  ///< then a new one is begun; a fault is sought in so many steps
constexpr int MostRunsToShrink = 400;

std::uint64_t FromEnvironment(const char* name, std::uint64_t usual) {
  const auto* text = std::getenv(name);
  return text ? std::strtoull(text, nullptr, 10) : usual;
}

/// An operation with the seed of its dice: does the same wherever it stands, as far as there is what it needs.
struct Step {
  const Operation* operation;
  std::uint64_t seed;
};
using Steps = std::vector<Step>;

std::vector<const Operation*> WeightedOperations() {
  std::vector<const Operation*> all;
  for (const auto operations : {TopicOperations(), ContentsOperations(), ListOperations(), ProjectOperations()})
    for (const auto& operation : operations) all.insert(all.end(), operation.weight, &operation);
  return all;
}

Steps RandomSteps(std::uint64_t seed, std::size_t count) {
  static const auto operations = WeightedOperations();
  Dice dice(seed);
  Steps steps;
  for (std::size_t i = 0; i < count; ++i) {
    const auto* operation = dice.Of(operations);
    steps.push_back({operation, dice.Next()});
  }
  return steps;
}

/// What went wrong at the last of some steps, and what each of them did.
struct Fault {
  std::string what;
  std::vector<std::string> done;
};

/// Takes the steps from a new project on until one shows a fault.
std::optional<Fault> Take(const Steps& steps) {
  World world;
  Fault fault;
  for (const auto& step : steps) {
    fault.what = world.Do(step.operation->run, step.seed);
    fault.done.push_back(std::string(step.operation->name) + (world.Said().empty() ? "" : ": ") + world.Said());
    if (!fault.what.empty()) return fault;
  }
  return std::nullopt;
}

/// Leaves out what a fault doesn't need: halves first, then smaller and smaller pieces.
Fault Shrink(Steps steps, Fault fault) {
  steps.resize(fault.done.size());
  int runs = 0;
  for (auto piece = steps.size() / 2; piece > 0; piece /= 2) {
    for (std::size_t at = 0; at + piece < steps.size() && runs < MostRunsToShrink; ++runs) {
      auto fewer = steps;
      const auto from = fewer.begin() + static_cast<std::ptrdiff_t>(at);
      fewer.erase(from, from + static_cast<std::ptrdiff_t>(piece));
      if (auto same = Take(fewer)) {
        fewer.resize(same->done.size());
        steps = std::move(fewer);
        fault = std::move(*same);
      } else {
        at += piece;
      }
    }
  }
  return fault;
}

std::string Described(const Fault& fault) {
  std::string text = fault.what + "\nafter";
  for (const auto& done : fault.done) text += "\n  " + done;
  return text;
}

TEST(Model, AProject_AgreesWithItsModel_OverRandomOperations) {
  const auto first = FromEnvironment("QUILLBOOK_MODEL_SEED", UsualSeed);
  const auto count = FromEnvironment("QUILLBOOK_MODEL_STEPS", UsualSteps);
  for (std::uint64_t done = 0, seed = first; done < count; done += StepsOfAProject, ++seed) {
    const auto steps = RandomSteps(seed, StepsOfAProject);
    if (auto fault = Take(steps))
      FAIL() << "QUILLBOOK_MODEL_SEED=" << seed << ": " << Described(Shrink(steps, std::move(*fault)));
  }
}

}  // namespace
}  // namespace quillbook::model
