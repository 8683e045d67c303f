// What a full-text index has collected and memory shall no longer hold.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/compile/FileBytes.h"

namespace quillbook::compile {

/// Pieces of words' places in a file, in runs. Within each run the words stand in the order in which they are asked
/// for in the end, so that reading goes through every run once from front to back.
class WordRuns {
 public:
  /// The file arises in `folder` when the first run begins, and is gone with this.
  explicit WordRuns(std::string folder) : mFolder(std::move(folder)) {}

  void BeginRun();
  /// The next word of the run, with bytes that `Append` adds to.
  void BeginWord(std::uint32_t word, std::uint32_t length);
  void Append(std::string_view bytes);
  void EndRun();

  /// Gives the word's bytes from all runs, the oldest first. Ask for every word once, in the order of the runs.
  void Read(std::uint32_t word, const std::function<void(std::string_view)>& sink);

 private:
  /// A run that is being read.
  struct Run {
    std::uint64_t next = 0;  ///< place in the file of what isn't in `buffer` yet
    std::uint64_t end = 0;
    std::string buffer;
    std::size_t at = 0;  ///< in `buffer`
  };
  static constexpr std::size_t BufferSize = 1U << 15;
  static constexpr std::size_t PieceHeader = 8;  ///< the number of the word and the length of its bytes

  void Flush();
  /// Sees to it that the buffer holds `count` bytes behind `at`, or as many as the run still has.
  void Fill(Run& run, std::size_t count) const;

  std::string mFolder;
  std::unique_ptr<SpoolFile> mFile;
  std::vector<Run> mRuns;
  std::string mPending;  ///< of the run that is being written
};

}  // namespace quillbook::compile
