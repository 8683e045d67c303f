// Projects of any size for benchmarks.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace quillbook::bench {

/// Native path of the corpus of so many topics; made on first use and kept for the next run.
inline std::filesystem::path Corpus(std::int64_t topics) {
  const auto folder = std::filesystem::temp_directory_path() / "quillbook-bench";
  std::filesystem::create_directories(folder);
  auto path = folder / (std::to_string(topics) + ".qbp");
  if (!std::filesystem::exists(path)) {
    const auto command = std::string("python3 '" QUILLBOOK_SOURCE_DIR "/bench/make_corpus.py' ") +
                         std::to_string(topics) + " '" + path.string() + ".new'";
    if (std::system(command.c_str()) != 0) throw std::runtime_error("cannot make " + path.string());
    std::filesystem::rename(path.string() + ".new", path);
  }
  return path;
}

/// A native path in the form of stored paths.
inline std::string Stored(const std::filesystem::path& path) {
  auto text = path.string();
  std::replace(text.begin(), text.end(), '/', '\\');
  return text;
}

}  // namespace quillbook::bench
