// What hangs from a project, many of it: each must cost the same however many there are. Items per second tell.
#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "bench/Measure.h"
#include "quillbook/frame/services/XMLDocument.h"
#include "quillbook/project/QBProject.h"
#include "quillbook/structure/GlossaryItem.h"
#include "quillbook/structure/GlossaryItems.h"
#include "quillbook/structure/OtherFile.h"
#include "quillbook/structure/OtherFiles.h"
#include "quillbook/structure/QBNode.h"
#include "quillbook/structure/QBNodes.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/TopicKeyword.h"
#include "quillbook/topics/Topics.h"

namespace quillbook {
namespace {

using bench::CountEach;
using bench::Measure;

/// Some ten thousand records still fit the processor's caches. The line that matters begins behind them.
void UpTo400k(benchmark::internal::Benchmark* benchmark) {
  benchmark->Arg(1'000)->Arg(10'000)->Arg(100'000)->Arg(400'000)->UseManualTime()->Unit(benchmark::kMillisecond);
}
void UpTo10k(benchmark::internal::Benchmark* benchmark) {
  benchmark->Arg(1'000)->Arg(10'000)->UseManualTime()->Unit(benchmark::kMillisecond);
}

// Projects.

void AddTopics(QBProject& project, std::int64_t count) {
  for (std::int64_t i = 0; i < count; ++i) {
    const auto topic = project.NewTopic();
    topic->SetName("Topic " + std::to_string(i));
    project.Topics->Add(topic, topic->Key);
  }
}

Ref<QBNode> AddNode(QBNodes& level, const Ref<QBNode>& parent, const std::string& caption) {
  auto node = level.NewNode(parent);
  node->SetCaptionText(caption);
  return node;
}

/// A hundred nodes on the top level and the others below them.
void AddNodes(QBProject& project, std::int64_t count) {
  std::vector<Ref<QBNode>> chapters;
  for (std::int64_t i = 0; i < count; ++i) {
    const auto caption = "Node " + std::to_string(i);
    if (i < 100) {
      chapters.push_back(AddNode(*project.QBNodes, {}, caption));
    } else {
      const auto& chapter = chapters[static_cast<std::size_t>(i % 100)];
      AddNode(*chapter->ChildNodes, chapter, caption);
    }
  }
}

/// A hundred keywords a topic.
void AddKeywords(QBProject& project, std::int64_t count) {
  AddTopics(project, count / 100);
  for (const auto& topic : *project.Topics)
    for (int i = 0; i < 100; ++i) topic->AddKeyword("Keyword " + std::to_string(i));
}

void AddTerms(QBProject& project, std::int64_t count) {
  for (std::int64_t i = 0; i < count; ++i) {
    const auto item = project.NewGlossaryItem("Term " + std::to_string(i), "What it means");
    project.GlossaryItems()->Add(item, item->Key);
  }
}

/// One node below the other.
void AddLevels(QBProject& project, std::int64_t count) {
  auto level = project.QBNodes;
  Ref<QBNode> parent;
  for (std::int64_t i = 0; i < count; ++i) {
    parent = AddNode(*level, parent, "Level");
    level = parent->ChildNodes;
  }
}

template <void (*Fill)(QBProject&, std::int64_t)>
Ref<QBProject> Filled(std::int64_t count) {
  auto project = New<QBProject>();
  Fill(*project, count);
  return project;
}

template <void (*Fill)(QBProject&, std::int64_t)>
void Load(benchmark::State& state) {
  const auto text = Filled<Fill>(state.range(0))->Save();
  for (auto _ : state) {
    const auto project = New<QBProject>();
    Measure(state, [&] { project->Load(text); });
  }
  CountEach(state, state.range(0));
}

template <void (*Fill)(QBProject&, std::int64_t)>
void Save(benchmark::State& state) {
  const auto project = Filled<Fill>(state.range(0));
  for (auto _ : state) Measure(state, [&] { benchmark::DoNotOptimize(project->Save()); });
  CountEach(state, state.range(0));
}

template <void (*Fill)(QBProject&, std::int64_t)>
void Destroy(benchmark::State& state) {
  for (auto _ : state) {
    auto project = Filled<Fill>(state.range(0));
    Measure(state, [&] { project = nullptr; });
  }
  CountEach(state, state.range(0));
}

BENCHMARK(Load<AddNodes>)->Apply(UpTo400k);
BENCHMARK(Save<AddNodes>)->Apply(UpTo400k);
BENCHMARK(Load<AddKeywords>)->Apply(UpTo400k);
BENCHMARK(Save<AddKeywords>)->Apply(UpTo400k);
BENCHMARK(Load<AddTerms>)->Apply(UpTo400k);
BENCHMARK(Save<AddTerms>)->Apply(UpTo400k);
BENCHMARK(Load<AddLevels>)->Apply(UpTo400k);
BENCHMARK(Save<AddLevels>)->Apply(UpTo400k);
BENCHMARK(Destroy<AddLevels>)->Apply(UpTo400k);

void CloneLevels(benchmark::State& state) {
  for (auto _ : state) {
    const auto project = Filled<AddLevels>(state.range(0));
    const auto top = project->QBNodes->Item(1);
    Measure(state, [&] { top->Clone(project); });
  }
  CountEach(state, state.range(0));
}
BENCHMARK(CloneLevels)->Apply(UpTo400k);

// Topics that go one after the other, each shown by a node.

/// The numbers of members in the order in which they are to go, from 0.
using Order = std::vector<std::size_t> (*)(std::size_t count);

std::vector<std::size_t> Forwards(std::size_t count) {
  std::vector<std::size_t> order(count);
  for (std::size_t i = 0; i < count; ++i) order[i] = i;
  return order;
}
std::vector<std::size_t> Backwards(std::size_t count) {
  auto order = Forwards(count);
  std::reverse(order.begin(), order.end());
  return order;
}
std::vector<std::size_t> AtRandom(std::size_t count) {
  auto order = Forwards(count);
  std::mt19937 random(1);
  std::shuffle(order.begin(), order.end(), random);
  return order;
}

template <Order Of>
void RemoveTopics(benchmark::State& state) {
  const auto order = Of(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    const auto project = Filled<AddTopics>(state.range(0));
    std::vector<std::string> keys;
    for (const auto& topic : *project->Topics) {
      keys.push_back(topic->Key);
      const auto node = AddNode(*project->QBNodes, {}, "Node");
      node->SetTopicID(topic->Key);
      node->SetQBNodeType(ntSingleTopic);
    }
    (void)project->TopicByName("");  // a project in use has its index
    Measure(state, [&] {
      for (const auto at : order) project->Topics->Remove(keys[at]);
    });
    if (project->QBNodes->NodesForTopic(project->NewTopic())->Count() != 0) state.SkipWithError("not removed");
  }
  CountEach(state, state.range(0));
}
BENCHMARK(RemoveTopics<Forwards>)->Apply(UpTo10k);
BENCHMARK(RemoveTopics<Backwards>)->Apply(UpTo10k);
BENCHMARK(RemoveTopics<AtRandom>)->Apply(UpTo10k);

// A collection by its keys.

/// Members named by their numbers.
struct Members {
  explicit Members(std::int64_t count) {
    for (std::int64_t i = 0; i < count; ++i) {
      keys.push_back("{" + std::to_string(i) + "}");
      values.push_back(New<TopicKeyword>());
    }
  }
  [[nodiscard]] Ref<Collection<Ref<TopicKeyword>>> List() const {
    auto list = New<Collection<Ref<TopicKeyword>>>();
    for (std::size_t i = 0; i < keys.size(); ++i) list->Add(values[i], keys[i]);
    return list;
  }
  std::vector<std::string> keys;
  std::vector<Ref<TopicKeyword>> values;
};

void CollectionAdd(benchmark::State& state) {
  const Members members(state.range(0));
  for (auto _ : state) Measure(state, [&] { benchmark::DoNotOptimize(members.List()); });
  CountEach(state, state.range(0));
}

void CollectionFind(benchmark::State& state) {
  const Members members(state.range(0));
  const auto list = members.List();
  const auto order = AtRandom(members.keys.size());
  for (auto _ : state)
    Measure(state, [&] {
      for (const auto at : order) benchmark::DoNotOptimize(list->Find(members.keys[at]));
    });
  CountEach(state, state.range(0));
}

/// A thousand members from anywhere to before another.
void CollectionMove(benchmark::State& state) {
  constexpr std::size_t moves = 1000;
  const Members members(state.range(0));
  const auto list = members.List();
  const auto order = AtRandom(members.keys.size());
  for (auto _ : state)
    Measure(state, [&] {
      for (std::size_t i = 0; i + 1 < std::min(moves, order.size()); ++i) {
        list->Remove(members.keys[order[i]]);
        list->Add(members.values[order[i]], members.keys[order[i]], members.keys[order[i + 1]]);
      }
    });
  CountEach(state, moves);
}

template <Order Of>
void CollectionRemove(benchmark::State& state) {
  const Members members(state.range(0));
  const auto order = Of(members.keys.size());
  for (auto _ : state) {
    const auto list = members.List();
    Measure(state, [&] {
      for (const auto at : order) list->Remove(members.keys[at]);
    });
  }
  CountEach(state, state.range(0));
}

BENCHMARK(CollectionAdd)->Apply(UpTo400k);
BENCHMARK(CollectionFind)->Apply(UpTo400k);
BENCHMARK(CollectionMove)->Apply(UpTo400k);
BENCHMARK(CollectionRemove<Forwards>)->Apply(UpTo400k);
BENCHMARK(CollectionRemove<Backwards>)->Apply(UpTo400k);
BENCHMARK(CollectionRemove<AtRandom>)->Apply(UpTo400k);

// Files by their names; half of the questions are for files that aren't there.

void AddFiles(QBProject& project, std::int64_t count) {
  for (std::int64_t i = 0; i < count; ++i) {
    const auto file = project.NewOtherFile("\\project\\images\\" + std::to_string(i) + ".png");
    project.OtherFiles->Add(file, file->LocalSpec());
  }
}

template <class Find>
void FindFiles(benchmark::State& state, Find find) {
  const auto project = Filled<AddFiles>(state.range(0));
  for (auto _ : state)
    Measure(state, [&] {
      for (std::int64_t i = 0; i < state.range(0); ++i) find(*project->OtherFiles, std::to_string(i * 2) + ".png");
    });
  CountEach(state, state.range(0));
}

void OtherFilesExists(benchmark::State& state) {
  FindFiles(state, [](OtherFiles& files, const std::string& name) {
    benchmark::DoNotOptimize(files.Exists("\\project\\images\\" + name));
  });
}

void OtherFilesByRelativeName(benchmark::State& state) {
  FindFiles(state, [](OtherFiles& files, const std::string& name) {
    benchmark::DoNotOptimize(files.ItemByRelativeFileName("\\project\\images\\" + name));
  });
}
BENCHMARK(OtherFilesExists)->Arg(100)->Apply(UpTo10k);
BENCHMARK(OtherFilesByRelativeName)->Arg(100)->Apply(UpTo10k);

}  // namespace
}  // namespace quillbook
