// Looks into compiled help files, .chm and .hxs, of this system's making and of others'.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace quillbook {

/// A compiled help file, open for reading. Made for hostile input: what the file says about itself is checked before
/// it is believed, and memory stays bounded by its directory and its tables.
class CompiledHelp {
 public:
  enum class Format { HtmlHelp1, Help2 };
  struct File {
    std::string name;  ///< without "/" in front
    std::uint64_t size = 0;
    bool isTable = false;  ///< made by the compiler for the viewer
  };
  struct ContentsEntry {
    int level = 0;
    std::string title;
    std::string page;  ///< empty for a heading
  };
  struct Target {
    std::string title;
    std::string page;
  };
  struct IndexEntry {
    int level = 0;
    std::string keyword;
    std::string seeAlso;
    std::vector<Target> targets;
  };

  /// `path` is a native path. Failure 53, 70 or 75 for a file that can't be opened, 5 for one that is no compiled help
  /// or damaged beyond reading.
  explicit CompiledHelp(const std::string& path);
  ~CompiledHelp();
  CompiledHelp(const CompiledHelp&) = delete;
  CompiledHelp& operator=(const CompiledHelp&) = delete;

  [[nodiscard]] Format GetFormat() const noexcept;
  [[nodiscard]] const std::string& Title() const noexcept;
  [[nodiscard]] std::uint32_t LocaleId() const noexcept;
  [[nodiscard]] int CodePage() const noexcept;
  [[nodiscard]] const std::string& DefaultTopic() const noexcept;
  [[nodiscard]] bool HasFullTextSearch() const noexcept;
  /// In the order of the directory.
  [[nodiscard]] const std::vector<File>& Files() const noexcept;
  /// In document order.
  [[nodiscard]] const std::vector<ContentsEntry>& Contents() const noexcept;
  [[nodiscard]] const std::vector<IndexEntry>& Index() const noexcept;
  /// What is odd about the file, in words.
  [[nodiscard]] const std::vector<std::string>& Problems() const noexcept;

  /// Writes all files but the viewer's tables below a folder, which is made if it isn't there. Nothing is written
  /// outside of it: neither by names with ".." nor by links that stand there. Gives the number of files. Failure 5 for
  /// a name that leads outside, for damaged content, and for files that overlap to more bytes than the help file can
  /// hold; what was written before stays.
  [[nodiscard]] std::size_t Extract(const std::string& folder) const;

 private:
  struct State;
  std::unique_ptr<State> mState;
};

}  // namespace quillbook
