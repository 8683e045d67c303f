// Loading, saving and looking up, each beside what it is measured against.
#include <filesystem>
#include <memory>
#include <pugixml.hpp>
#include <random>
#include <string>
#include <unordered_map>
#include <vector>

#include "bench/Corpus.h"
#include "bench/Measure.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/platform/LinuxFileStore.h"
#include "quillbook/platform/Platform.h"
#include "quillbook/project/QBProject.h"
#include "quillbook/topics/Topic.h"
#include "quillbook/topics/Topics.h"

namespace quillbook {
namespace {

using bench::Measure;

void NoteSize(benchmark::State& state, const std::filesystem::path& path) {
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(std::filesystem::file_size(path)));
}

// Loading and saving.

void PugixmlLoad(benchmark::State& state) {
  const auto path = bench::Corpus(state.range(0));
  for (auto _ : state) {
    pugi::xml_document document;
    Measure(state, [&] { benchmark::DoNotOptimize(document.load_file(path.c_str())); });
  }
  NoteSize(state, path);
}

void ProjectLoad(benchmark::State& state) {
  const auto path = bench::Corpus(state.range(0));
  for (auto _ : state) {
    const auto project = New<QBProject>();
    Measure(state, [&] { project->LoadFromFile(bench::Stored(path)); });
    if (project->Topics->Count() != static_cast<std::size_t>(state.range(0))) state.SkipWithError("not loaded");
  }
  NoteSize(state, path);
}

/// Writes as the disk does, without waiting until it has.
class UnflushedFileStore final : public FileStore {
 public:
  FileStatus GetStatus(const std::string& path) const override { return mDisk.GetStatus(path); }
  std::string ReadFile(const std::string& path) const override { return mDisk.ReadFile(path); }
  std::vector<DirectoryEntry> ListDirectory(const std::string& path) const override {
    return mDisk.ListDirectory(path);
  }
  void CreateDirectories(const std::string& path) override { mDisk.CreateDirectories(path); }
  std::unique_ptr<FileWriter> CreateFile(const std::string& path) override { return mDisk.CreateFile(path); }
  std::unique_ptr<FileWriter> ReplaceFile(const std::string& path, bool) override { return mDisk.CreateFile(path); }
  std::string CreateUniqueFile(const std::string& directory, std::string_view prefix,
                               std::string_view suffix) override {
    return mDisk.CreateUniqueFile(directory, prefix, suffix);
  }
  void RenameFile(const std::string& from, const std::string& to) override { mDisk.RenameFile(from, to); }
  void RemoveFile(const std::string& path) override { mDisk.RemoveFile(path); }
  void CopyFile(const std::string& from, const std::string& to) override { mDisk.CopyFile(from, to); }
  bool IsLocked(const std::string& path) const override { return mDisk.IsLocked(path); }
  std::unique_ptr<FileLock> WaitForLock(const std::string& path) override { return mDisk.WaitForLock(path); }

 private:
  LinuxFileStore mDisk;
};

std::filesystem::path Output() {
  auto path = std::filesystem::temp_directory_path() / "quillbook-bench" / "saved.qbp";
  std::filesystem::remove(path);
  return path;
}

void PugixmlSave(benchmark::State& state) {
  pugi::xml_document document;
  document.load_file(bench::Corpus(state.range(0)).c_str());
  for (auto _ : state) {
    const auto output = Output();
    Measure(state, [&] { document.save_file(output.c_str()); });
  }
  NoteSize(state, bench::Corpus(state.range(0)));
}

void ProjectSave(benchmark::State& state) {
  const PlatformOverride<FileStore> disk(std::make_shared<UnflushedFileStore>());
  const auto project = New<QBProject>();
  project->LoadFromFile(bench::Stored(bench::Corpus(state.range(0))));
  for (auto _ : state) {
    project->Filename->SetFullName(bench::Stored(Output()));
    Measure(state, [&] {
      if (!project->SaveToDisk()) state.SkipWithError("not saved");
    });
  }
  NoteSize(state, bench::Corpus(state.range(0)));
}

constexpr auto kSizes = {1000, 10000, 100000};

void Sized(benchmark::internal::Benchmark* benchmark) {
  for (const auto size : kSizes) benchmark->Arg(size);
  benchmark->UseManualTime()->Unit(benchmark::kMillisecond);
}
BENCHMARK(PugixmlLoad)->Apply(Sized);
BENCHMARK(ProjectLoad)->Apply(Sized);
BENCHMARK(PugixmlSave)->Apply(Sized);
BENCHMARK(ProjectSave)->Apply(Sized);

// Looking up.

constexpr std::int64_t kTopics = 10000;

/// A loaded project and its topics' names in an order that follows nothing.
struct Lookup {
  Lookup() {
    project->LoadFromFile(bench::Stored(bench::Corpus(kTopics)));
    for (const auto& topic : *project->Topics) Note(*topic);
    std::mt19937 random(1);
    std::shuffle(names.begin(), names.end(), random);
    std::shuffle(urls.begin(), urls.end(), random);
  }
  void Note(const Topic& topic) {
    names.push_back(topic.Name());
    urls.push_back(topic.QualifiedName() + ".html");
    hashed.emplace(topic.Name(), &topic);
  }
  void RenameAll() {
    names.clear();
    urls.clear();
    hashed.clear();
    for (const auto& topic : *project->Topics) {
      topic->SetName("renamed " + topic->Name());
      Note(*topic);
    }
  }

  Ref<QBProject> project = New<QBProject>();
  std::vector<std::string> names;
  std::vector<std::string> urls;
  std::unordered_map<std::string, const Topic*> hashed;
};

template <class Find>
void FindAll(benchmark::State& state, const std::vector<std::string>& names, Find&& find) {
  for (auto _ : state)
    for (const auto& name : names)
      if (!find(name)) state.SkipWithError("not found");
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(names.size()));
}

void HashLookup(benchmark::State& state) {
  const Lookup lookup;
  FindAll(state, lookup.names, [&](const std::string& name) { return lookup.hashed.find(name)->second; });
}

void TopicByName(benchmark::State& state) {
  const Lookup lookup;
  FindAll(state, lookup.names, [&](const std::string& name) { return bool(lookup.project->TopicByName(name)); });
}

void TopicByName_AfterRenames(benchmark::State& state) {
  Lookup lookup;
  (void)lookup.project->TopicByName("");
  lookup.RenameAll();
  FindAll(state, lookup.names, [&](const std::string& name) { return bool(lookup.project->TopicByName(name)); });
}

void TopicByQualifiedName(benchmark::State& state) {
  const Lookup lookup;
  FindAll(state, lookup.names,
          [&](const std::string& name) { return bool(lookup.project->TopicByQualifiedName(name)); });
}

void GetTopicFromURL(benchmark::State& state) {
  const Lookup lookup;
  FindAll(state, lookup.urls, [&](const std::string& url) { return bool(lookup.project->GetTopicFromURL(url)); });
}

BENCHMARK(HashLookup)->Unit(benchmark::kMillisecond);
BENCHMARK(TopicByName)->Unit(benchmark::kMillisecond);
BENCHMARK(TopicByName_AfterRenames)->Unit(benchmark::kMillisecond);
BENCHMARK(TopicByQualifiedName)->Unit(benchmark::kMillisecond);
BENCHMARK(GetTopicFromURL)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quillbook
