// What a build of pages takes beside the bare writing of the same files.
//
//     build_ratio [TOPICS] [ROUNDS]
//
// Each round loads a corpus, builds it into an empty folder, and writes the same bytes to the same number of new files
// in another one. Prints the medians; exits with 1 if the build took more than five times the writing.
#include <stdlib.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "bench/Corpus.h"
#include "quillbook/config/BuildProfile.h"
#include "quillbook/generation/BuildResult.h"
#include "quillbook/project/QBProject.h"

namespace {

namespace fs = std::filesystem;
using namespace quillbook;

constexpr double MaximumRatio = 5;

struct Page {
  fs::path path;  ///< relative to the output
  std::string bytes;
};

double Seconds(std::chrono::steady_clock::time_point since) {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - since).count();
}

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

/// Folders of this run. They go only at the end: file systems are slow at making files just after many have gone.
class Workspace {
 public:
  Workspace() : mRoot((fs::temp_directory_path() / "quillbook-ratio-XXXXXX").string()) {
    if (!mkdtemp(mRoot.data())) std::exit((std::perror("mkdtemp"), 2));
  }
  Workspace(const Workspace&) = delete;
  Workspace& operator=(const Workspace&) = delete;
  ~Workspace() { fs::remove_all(mRoot); }

  [[nodiscard]] fs::path NewFolder() {
    auto folder = fs::path(mRoot) / std::to_string(++mCount);
    fs::create_directories(folder);
    return folder;
  }

 private:
  std::string mRoot;
  int mCount = 0;
};

Ref<QBProject> Load(const fs::path& file, const fs::path& output) {
  auto project = New<QBProject>();
  project->Silent = true;
  project->LoadFromFile(bench::Stored(file));
  project->SetTemplateName("Quillbook Web");
  project->SetOutputDirectory(bench::Stored(output));
  return project;
}

double Build(QBProject& project) {
  const auto profile = project.NewBuildProfile("Web", "", false);
  profile->SetBuildProfiles(project.BuildProfiles);
  const auto start = std::chrono::steady_clock::now();
  const auto result = project.Build("", false, profile, false, false);
  const auto seconds = Seconds(start);
  if (!result || result->Cancelled) std::exit((std::fputs("the build failed\n", stderr), 2));
  return seconds;
}

std::vector<Page> Pages(const fs::path& folder) {
  std::vector<Page> pages;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    if (!entry.is_regular_file()) continue;
    std::ifstream file(entry.path(), std::ios::binary);
    pages.push_back({fs::relative(entry.path(), folder), {std::istreambuf_iterator<char>(file), {}}});
  }
  return pages;
}

double WriteBare(const std::vector<Page>& pages, const fs::path& folder) {
  for (const auto& page : pages) fs::create_directories((folder / page.path).parent_path());
  const auto start = std::chrono::steady_clock::now();
  for (const auto& page : pages) {
    auto* file = std::fopen((folder / page.path).c_str(), "wb");
    if (!file || std::fwrite(page.bytes.data(), 1, page.bytes.size(), file) != page.bytes.size())
      std::exit((std::perror("write"), 2));
    std::fclose(file);
  }
  return Seconds(start);
}

}  // namespace

int main(int argc, char** argv) {
  const long topics = argc > 1 ? std::atol(argv[1]) : 10000;
  const int rounds = argc > 2 ? std::atoi(argv[2]) : 5;
  const auto corpus = bench::Corpus(topics);
  Workspace workspace;
  std::vector<double> loads, builds, writes, ratios;
  std::size_t count = 0, bytes = 0;
  for (int round = 0; round < rounds; ++round) {
    const auto output = workspace.NewFolder();
    const auto start = std::chrono::steady_clock::now();
    const auto project = Load(corpus, output);
    loads.push_back(Seconds(start));
    builds.push_back(Build(*project));
    const auto pages = Pages(output);
    writes.push_back(WriteBare(pages, workspace.NewFolder()));
    ratios.push_back(builds.back() / writes.back());
    count = pages.size();
    bytes = 0;
    for (const auto& page : pages) bytes += page.bytes.size();
  }
  const auto ratio = Median(ratios);
  std::printf("%zu files, %.1f MB: load %.3f s, build %.3f s, bare write %.3f s, ratio %.2f (%d rounds, medians)\n",
              count, static_cast<double>(bytes) / 1e6, Median(loads), Median(builds), Median(writes), ratio, rounds);
  return ratio <= MaximumRatio ? 0 : 1;
}
