// How much memory a load and a save take at most: project_peak TOPICS
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "bench/Corpus.h"
#include "quillbook/frame/services/FileSystemObject.h"
#include "quillbook/project/QBProject.h"

namespace {

/// The greatest resident size of this process so far, in bytes.
double PeakBytes() {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;)
    if (word == "VmHWM:") {
      double kilobytes = 0;
      status >> kilobytes;
      return kilobytes * 1024;
    }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  using namespace quillbook;
  const auto path = bench::Corpus(argc > 1 ? std::atol(argv[1]) : 10000);
  const auto size = static_cast<double>(std::filesystem::file_size(path));
  const auto project = New<QBProject>();
  const auto report = [size](const char* what) {
    std::printf("%-12s peak %.1f MB, %.2f times the file of %.1f MB\n", what, PeakBytes() / 1e6, PeakBytes() / size,
                size / 1e6);
  };
  report("at start");
  project->LoadFromFile(bench::Stored(path));
  report("after load");
  project->Filename->SetFullName(bench::Stored(path.parent_path() / "peak.qbp"));
  const bool saved = project->SaveToDisk();
  report("after save");
  std::filesystem::remove(path.parent_path() / "peak.qbp");
  return saved && project->LastLoadResult().Ok() ? 0 : 1;
}
